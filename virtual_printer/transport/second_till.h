// What becomes of a second till that comes to a printer while it serves one.
#pragma once

namespace virtual_printer {

enum class SecondTill
{
    busy,    // its connection is closed at once
    wait,    // it is served when the first one has gone
    takeover // the first one's connection is closed
};

} // namespace virtual_printer
