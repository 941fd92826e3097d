// Data of the online registration. The virtual printer keeps it and sends nothing to anybody.
#include "virtual_printer/fiscal/deciders.h"
#include "virtual_printer/fiscal/ranges.h"

#include <algorithm>

namespace virtual_printer {
namespace {

constexpr std::size_t longestPath = 255;

Refusal keepOther(Draft& draft, const std::string& title, std::string value, Refusal refusal)
{
    if (refusal == Refusal::none) {
        draft.settings().others[title] = std::move(value);
    }
    return refusal;
}

// The three ways to say where the till stands have one code and a number in front that tells them apart.
Refusal checkWay(const Fields& fields, int way)
{
    return fields.whole(0) == way ? Refusal::none : Refusal::unknownOperation;
}

bool isMailAddress(std::string_view text)
{
    const std::size_t at = text.find('@');
    return at != std::string_view::npos && at > 0 && at + 1 < text.size() &&
           text.find('@', at + 1) == std::string_view::npos && text.find(' ') == std::string_view::npos;
}

Refusal checkLetter(char letter)
{
    const bool isLetter = (letter >= 'A' && letter <= 'Z') || (letter >= 'a' && letter <= 'z') ||
                          (letter >= '0' && letter <= '9');
    return isLetter ? Refusal::none : Refusal::badText;
}

} // namespace

Refusal setPosition(Draft& draft, const Fields& fields)
{
    return keepOther(draft, "Location", fields.raw(1) + " " + fields.raw(2), checkWay(fields, 0));
}

Refusal setAddress(Draft& draft, const Fields& fields)
{
    constexpr std::size_t municipality = 1;
    Refusal refusal =
        firstOf({checkWay(fields, 1), checkLength(fields.text(municipality), 1, longestSettingText)});
    std::string address = fields.text(municipality);
    for (std::size_t part = municipality + 1; part < fields.count(); ++part) {
        refusal = firstOf({refusal, checkLength(fields.text(part), 0, longestSettingText)});
        address += fields.text(part).empty() ? "" : ", " + fields.text(part);
    }
    return keepOther(draft, "Location", address, refusal);
}

Refusal setPlace(Draft& draft, const Fields& fields)
{
    const std::string place = fields.text(1);
    return keepOther(draft, "Location", place,
                     firstOf({checkWay(fields, 2), checkLength(place, 1, longestSettingText)}));
}

Refusal setEmail(Draft& draft, const Fields& fields)
{
    const std::string email = fields.text(0);
    return keepOther(draft, "Mail address", email,
                     firstOf({checkLength(email, 1, longestSettingText),
                              isMailAddress(email) ? Refusal::none : Refusal::badText}));
}

Refusal setMailServer(Draft& draft, const Fields& fields)
{
    constexpr int largestPort = 65535;
    // The library writes ports from 32768 on as numbers below zero, 65536 less: this is meant.
    const int port = fields.whole(2) < 0 ? fields.whole(2) + largestPort + 1 : fields.whole(2);
    const std::string host = fields.text(1);
    const std::string folder = fields.text(3);
    const Refusal refusal =
        firstOf({checkLetter(fields.letter(0)), checkLength(host, 1, longestSettingText),
                 checkRange(port, 1, largestPort), checkLength(folder, 0, longestSettingText)});
    return keepOther(draft, "Mail server",
                     fields.raw(0) + " " + host + ":" + std::to_string(port) + " " + folder, refusal);
}

Refusal setAuthenticationKey(Draft& draft, const Fields& fields)
{
    const std::string path = fields.text(1);
    return keepOther(draft, "Authentication key", path, checkLength(path, 1, longestPath));
}

Refusal setInterface(Draft& draft, const Fields& fields)
{
    const std::string title = fields.text(1);
    return keepOther(draft, "Interface", fields.raw(0) + " " + title,
                     firstOf({checkLetter(fields.letter(0)), checkLength(title, 0, longestSettingText)}));
}

Refusal setSubjectData(Draft& draft, const Fields& fields)
{
    const std::string path = fields.text(0);
    return keepOther(draft, "Subject's data", path, checkLength(path, 1, longestPath));
}

// Nothing is ever unsent: there is nobody to send to.
Refusal printUnsentPackets(Draft& draft, const Fields& /*fields*/)
{
    draft.print({.kind = Line::Kind::heading, .text = "UNSENT PACKETS"});
    draft.print({.text = "None"});
    return Refusal::none;
}

Refusal sendUnsentPacket(Draft& /*draft*/, const Fields& /*fields*/)
{
    return Refusal::none;
}

Refusal printLastTransactions(Draft& draft, const Fields& fields)
{
    constexpr int mostTransactions = 100;
    const int count = fields.whole(0);
    const Refusal refusal = checkRange(count, 1, mostTransactions);
    if (refusal != Refusal::none) {
        return refusal;
    }
    const int last = draft.state().standing->receipts;
    draft.print({.kind = Line::Kind::heading, .text = "LAST TRANSACTIONS"});
    for (int receipt = std::max(1, last - count + 1); receipt <= last; ++receipt) {
        draft.print({.kind = Line::Kind::pair,
                     .text = "Receipt " + std::to_string(receipt),
                     .right = "not sent: no server"});
    }
    return Refusal::none;
}

Refusal synchronize(Draft& /*draft*/, const Fields& /*fields*/)
{
    return Refusal::none;
}

} // namespace virtual_printer
