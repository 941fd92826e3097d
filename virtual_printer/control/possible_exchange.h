// Whether there can be an exchange as an entry of an assertion wants it: one that nothing could ever fit
// would hold with the count 0 whatever happens.
#pragma once

#include "virtual_printer/control/message.h"
#include "virtual_printer/trace/exchanged.h"

#include <string>
#include <string_view>

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
};
// Null when nothing is called so.
const OtherExchange* otherCalled(std::string_view name);

// Throws ControlRefusal for a member, name, code or field that there is not, for one that never comes to this
// stage, and for parts that no exchange has together. `place` is that of the entry in sentences:
// "received[0]".
void requirePossible(const Json& expected, Stage stage, const std::string& place);

} // namespace virtual_printer
