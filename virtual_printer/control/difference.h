// Whether something is as a test expects it, and in readable words where it is not. What is expected is a
// part: what it does not name may be anything.
#pragma once

#include "virtual_printer/control/message.h"

#include <string>
#include <vector>

namespace virtual_printer {

// One sentence for each place in which `actual` is not as expected; none when it is. Objects may have more
// members than expected, lists have as many entries, in the same order.
std::vector<std::string> differences(const Json& expected, const Json& actual);

// Which of these differs least; -1 when there is none.
int nearest(const Json& expected, const std::vector<Json>& actual);

// "payment {"name": "Karta"}", short enough for a sentence.
std::string shown(const Json& value);

} // namespace virtual_printer
