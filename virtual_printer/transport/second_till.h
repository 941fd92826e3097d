// What becomes of a till that comes while another one is served.
#pragma once

namespace virtual_printer {

enum class SecondTill
{
    busy,    // its connection is closed at once
    wait,    // it is served when the first one has gone
    takeover // the first one's connection is closed
};

} // namespace virtual_printer
