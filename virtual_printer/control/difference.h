// Whether something is as a test expects it, and in readable words where it is not. What is expected is a
// part: what it does not name may be anything.
#pragma once

#include "virtual_printer/control/message.h"

#include <string>
#include <vector>

namespace virtual_printer {

// In how many places `actual` is not as expected. Objects may have more members than expected, lists have as
// many entries, in the same order.
std::size_t distance(const Json& expected, const Json& actual);

// The same in words, one sentence for each place: `total is "12.50", "13.00" is expected; ...`.
std::string differenceFrom(const Json& expected, const Json& actual);

// As JSON, short enough for a sentence.
std::string shown(const Json& value);

// Refuses what nothing could ever fit: a member that `form` has not, or one of another kind than it has
// there. An entry of a list is held against the form's first one. `name` is that of the whole in sentences.
// Throws ControlRefusal.
void requireForm(const Json& expected, const Json& form, const std::string& name);

} // namespace virtual_printer
