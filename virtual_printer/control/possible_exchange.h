// Whether there can be an exchange as an entry of an assertion wants it: one that nothing could ever fit
// would hold with the count 0 whatever happens.
#pragma once

#include "virtual_printer/control/message.h"
#include "virtual_printer/printers/codes.h"
#include "virtual_printer/trace/exchanged.h"

#include <string>
#include <string_view>
#include <vector>

namespace virtual_printer {

// What an exchange has come to; each is asserted by itself.
enum class Stage
{
    received,
    executed,
    acknowledged
};

// What is no request of the command table, and what comes of it.
struct OtherExchange
{
    std::string_view name;
    Exchanged::Kind kind;
    bool isExecuted;
    bool isAcknowledged;
    std::string_view codes; // that its command may have; empty: any
};
// Null when nothing is called so.
const OtherExchange* otherCalled(std::string_view name);

// Those of the table; where one is empty it may be any.
std::vector<const CommandRule*> commandsCalled(std::string_view name, std::string_view code);

// Throws ControlRefusal for a member, name, code, field or value that there is not, for one that never comes
// to this stage, and for parts that no exchange has together. `codes` are those of refusals, `place` is that
// of the entry in sentences: "received[0]".
void requirePossible(const Json& expected, Stage stage, const Codes& codes, const std::string& place);

// With this sentence.
[[noreturn]] void refuseEntry(const std::string& sentence);

} // namespace virtual_printer
