// The number of handles that this process has open.
#pragma once

#include <cstdint>
#include <windows.h>

namespace telvofm::test {

// Each possible handle is asked for, because Wine does not answer GetProcessHandleCount. Handles are
// multiples of 4, and the lowest free one is given out.
inline int openHandles()
{
    constexpr std::uintptr_t end = 0x4000;
    int count = 0;
    for (std::uintptr_t value = 4; value < end; value += 4) {
        DWORD flags = 0;
        count += ::GetHandleInformation(reinterpret_cast<HANDLE>(value), &flags) != 0 ? 1 : 0;
    }
    return count;
}

} // namespace telvofm::test
