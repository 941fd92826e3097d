// How long closeFM takes beside running calls. It promises one step of their wait; the margin is for a
// machine with much else to do.
#pragma once

#include "telvofm.h"

#include <chrono>

namespace telvofm::test {

inline constexpr std::chrono::seconds margin{5};

inline std::chrono::steady_clock::duration closingTime()
{
    const auto started = std::chrono::steady_clock::now();
    closeFM();
    return std::chrono::steady_clock::now() - started;
}

} // namespace telvofm::test
