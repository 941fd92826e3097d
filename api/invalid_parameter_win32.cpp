#include "api/invalid_parameter.h"

#include <cstdlib>
#include <windows.h>

namespace telvofm {

// The handlers of today's host programs live in the universal C runtime, which is not the one that this
// library is built with: the failure is raised there.
void raiseInvalidParameter()
{
    using Raise = void (*)();
    if (HMODULE const runtime = ::LoadLibraryA("ucrtbase.dll"); runtime != nullptr) {
        const auto raise = reinterpret_cast<Raise>(
            reinterpret_cast<void*>(::GetProcAddress(runtime, "_invalid_parameter_noinfo")));
        if (raise != nullptr) {
            raise();
            return;
        }
    }
    std::abort();
}

} // namespace telvofm
