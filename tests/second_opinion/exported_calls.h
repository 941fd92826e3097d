// Every export as a call whose arguments are drawn.
#pragma once

#include "tests/second_opinion/occasion.h"

#include <functional>
#include <span>
#include <string_view>

namespace telvofm::test {

struct ExportedCall
{
    std::string_view name;
    // Draws the arguments; what it returns makes the call, and keeps the result in the occasion.
    std::function<std::function<void()>(Occasion&)> drawArguments;
};

std::span<const ExportedCall> exportedCalls();

} // namespace telvofm::test
