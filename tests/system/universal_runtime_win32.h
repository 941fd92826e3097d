// The invalid-parameter handler of the universal C runtime. Test programs are built with another one, so it
// is looked up.
#pragma once

#include <cstdint>
#include <windows.h>

namespace telvofm::test {

using InvalidParameterHandler = void (*)(const wchar_t*, const wchar_t*, const wchar_t*, unsigned int,
                                         std::uintptr_t);

// Returns the handler before.
inline InvalidParameterHandler installInvalidParameterHandler(InvalidParameterHandler handler)
{
    using Install = InvalidParameterHandler (*)(InvalidParameterHandler);
    const auto install = reinterpret_cast<Install>(reinterpret_cast<void*>(
        ::GetProcAddress(::LoadLibraryA("ucrtbase.dll"), "_set_invalid_parameter_handler")));
    return install(handler);
}

} // namespace telvofm::test
