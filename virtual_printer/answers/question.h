// A request that asks for something, and everything that answers are made of. Users: the files of this room.
#pragma once

#include "virtual_printer/fiscal/state.h"
#include "virtual_printer/language/commands.h"
#include "virtual_printer/language/fields.h"
#include "virtual_printer/memory/memory.h"

namespace virtual_printer {

struct Question
{
    const CommandRule& rule;
    const Fields& fields;
    const State& state;
    const Memory& memory;
    Moment now;

    [[nodiscard]] std::size_t columns() const { return static_cast<std::size_t>(state.settings->columns); }
};

} // namespace virtual_printer
