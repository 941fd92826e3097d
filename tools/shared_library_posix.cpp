#include "tools/shared_library.h"

#include <dlfcn.h>

namespace telvofm::tools {

SharedLibrary loadSharedLibrary(const std::filesystem::path& file)
{
    SharedLibrary library;
    library.handle = ::dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (library.handle == nullptr) {
        library.problem = ::dlerror();
    }
    return library;
}

ExportedFunction functionIn(const SharedLibrary& library, const std::string& name)
{
    return reinterpret_cast<ExportedFunction>(::dlsym(library.handle, name.c_str()));
}

std::filesystem::path fileOf(ExportedFunction function)
{
    Dl_info found{};
    const bool isKnown = ::dladdr(reinterpret_cast<const void*>(function), &found) != 0;
    return isKnown ? found.dli_fname : "";
}

std::span<const char* const> libraryNames()
{
    static constexpr std::array names = {"libtelvofm.so.1", "libtelvofm.so"};
    return names;
}

} // namespace telvofm::tools
