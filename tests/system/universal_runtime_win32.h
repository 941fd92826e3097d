// Functions of the universal C runtime, which the DLL is built with. Test programs are built with another
// one, so they are looked up.
#pragma once

#include <cstdint>
#include <windows.h>

namespace telvofm::test {

template <typename Function>
Function* ofUniversalRuntime(const char* name)
{
    return reinterpret_cast<Function*>(
        reinterpret_cast<void*>(::GetProcAddress(::LoadLibraryA("ucrtbase.dll"), name)));
}

using InvalidParameterHandler = void (*)(const wchar_t*, const wchar_t*, const wchar_t*, unsigned int,
                                         std::uintptr_t);

// Returns the handler before.
inline InvalidParameterHandler installInvalidParameterHandler(InvalidParameterHandler handler)
{
    using Install = InvalidParameterHandler(InvalidParameterHandler);
    return ofUniversalRuntime<Install>("_set_invalid_parameter_handler")(handler);
}

} // namespace telvofm::test
