#include "tools/loaded_library.h"

#include "api/telvofm.h"
#include "tools/console.h"
#include "tools/ending.h"
#include "tools/library_file.h"
#include "tools/paths.h"
#include "tools/shared_library.h"

#include <algorithm>

static_assert(sizeof(void*) == 8, "the library is for 64-bit processes only");

namespace telvofm::tools {
namespace {

namespace fs = std::filesystem;

constexpr int interfaceVersion = 106;

SharedLibrary& loaded()
{
    static SharedLibrary library;
    return library;
}

[[noreturn]] void fail(const std::string& sentence)
{
    throw Failure(Ending::noLibrary, sentence);
}

void requireLibrary(const fs::path& file)
{
    switch (kindOfLibrary(file)) {
    case LibraryFile::other32:
    case LibraryFile::own32:
        fail(utf8(file) +
             " is a 32-bit library, and the library and this tool are 64-bit; install the 64-bit one");
    case LibraryFile::other64:
        fail(utf8(file) + " is a library for another operating system; install the one for this system");
    case LibraryFile::cutOff:
        fail(utf8(file) + " is cut off; install the library again");
    case LibraryFile::none:
        fail(utf8(file) + " is no library; name " + libraryNames().back());
    case LibraryFile::own64:
        break;
    }
}

SharedLibrary loadNamed(const fs::path& file)
{
    std::error_code ignored;
    if (!fs::is_regular_file(file, ignored)) {
        fail("there is no library at " + utf8(file) + "; name the path of " + libraryNames().back());
    }
    requireLibrary(file);
    SharedLibrary library = loadSharedLibrary(fs::absolute(file)); // without a folder the system would search
    if (library.handle == nullptr) {
        fail(utf8(file) + " cannot be loaded (" + library.problem + "); install the library again");
    }
    return library;
}

SharedLibrary loadBesideOrFromSystem()
{
    std::error_code ignored;
    const fs::path folder = ownProgram().parent_path();
    const auto names = libraryNames();
    const auto beside = std::find_if(names.begin(), names.end(), [&](const char* name) {
        return fs::is_regular_file(folder / name, ignored);
    });
    if (beside != names.end()) {
        return loadNamed(folder / *beside);
    }
    SharedLibrary library;
    for (const char* name : names) {
        library = loadSharedLibrary(name);
        if (library.handle != nullptr) {
            return library;
        }
    }
    fail(std::string("the library ") + names.back() +
         " is neither beside this program nor where the system "
         "looks (" +
         library.problem + "); install it, or name it with --library");
}

} // namespace

ExportedFunction exportedFunction(std::string_view name)
{
    return loaded().handle == nullptr ? nullptr : functionIn(loaded(), std::string(name));
}

LoadedLibrary loadLibrary(const std::string& name)
{
    if (loaded().handle == nullptr) {
        loaded() = name.empty() ? loadBesideOrFromSystem() : loadNamed(pathOf(name));
    }
    const ExportedFunction getVersionFound = exportedFunction("getVersion");
    if (getVersionFound == nullptr) {
        fail((name.empty() ? libraryNames().back() : name) +
             " is not this library: it has no function getVersion; name " + libraryNames().back());
    }
    std::error_code unknown;
    LoadedLibrary library{fs::weakly_canonical(fileOf(getVersionFound), unknown),
                          exported<decltype(getVersion)>("getVersion")()};
    if (library.version != interfaceVersion) {
        fail(utf8(library.file) + " has version " + std::to_string(library.version) +
             " of the interface and this tool has " + std::to_string(interfaceVersion) +
             "; install the library that came with this tool");
    }
    return library;
}

} // namespace telvofm::tools
