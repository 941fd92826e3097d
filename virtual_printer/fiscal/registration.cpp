// Data of the online registration. The virtual printer keeps it and sends nothing to anybody.
#include "virtual_printer/fiscal/deciders.h"
#include "virtual_printer/fiscal/ranges.h"

#include <algorithm>

namespace virtual_printer {
namespace {

constexpr std::size_t longestPath = 255;

Verdict keepOther(Draft& draft, const std::string& title, std::string value, Verdict verdict)
{
    if (verdict == Refusal::none) {
        draft.settings().others[title] = std::move(value);
    }
    return verdict;
}

// The three ways to say where the till stands have one code and a number in front that tells them apart.
Verdict checkWay(const Fields& fields, int way)
{
    return fields.whole(0) == way ? Verdict()
                                  : Verdict(Refusal::unknownOperation,
                                            "The first of these fields is " + std::to_string(way) + ".");
}

bool isMailAddress(std::string_view text)
{
    const std::size_t at = text.find('@');
    return at != std::string_view::npos && at > 0 && at + 1 < text.size() &&
           text.find('@', at + 1) == std::string_view::npos && text.find(' ') == std::string_view::npos;
}

Verdict checkLetter(const Fields& fields, std::size_t index)
{
    const char letter = fields.letter(index);
    const bool isLetter = (letter >= 'A' && letter <= 'Z') || (letter >= 'a' && letter <= 'z') ||
                          (letter >= '0' && letter <= '9');
    return isLetter ? Verdict() : fields.refused(Refusal::badText, index, "a letter or a digit");
}

} // namespace

Verdict setPosition(Draft& draft, const Fields& fields)
{
    return keepOther(draft, "Location", fields.raw(1) + " " + fields.raw(2), checkWay(fields, 0));
}

Verdict setAddress(Draft& draft, const Fields& fields)
{
    constexpr std::size_t municipality = 1;
    Verdict verdict =
        firstOf({checkWay(fields, 1), checkLength(fields, municipality, 1, longestSettingText)});
    std::string address = fields.text(municipality);
    for (std::size_t part = municipality + 1; part < fields.count(); ++part) {
        verdict = firstOf({verdict, checkLength(fields, part, 0, longestSettingText)});
        address += fields.text(part).empty() ? "" : ", " + fields.text(part);
    }
    return keepOther(draft, "Location", address, verdict);
}

Verdict setPlace(Draft& draft, const Fields& fields)
{
    const std::string place = fields.text(1);
    return keepOther(draft, "Location", place,
                     firstOf({checkWay(fields, 2), checkLength(fields, 1, 1, longestSettingText)}));
}

Verdict setEmail(Draft& draft, const Fields& fields)
{
    const std::string email = fields.text(0);
    return keepOther(draft, "Mail address", email,
                     firstOf({checkLength(fields, 0, 1, longestSettingText),
                              isMailAddress(email)
                                  ? Verdict()
                                  : fields.refused(Refusal::badText, 0, "an address as shop@example.com")}));
}

Verdict setMailServer(Draft& draft, const Fields& fields)
{
    constexpr int largestPort = 65535;
    // The library writes ports from 32768 on as numbers below zero, 65536 less: this is meant.
    const int port = fields.whole(2) < 0 ? fields.whole(2) + largestPort + 1 : fields.whole(2);
    const std::string host = fields.text(1);
    const std::string folder = fields.text(3);
    Verdict verdict =
        firstOf({checkLetter(fields, 0), checkLength(fields, 1, 1, longestSettingText),
                 port >= 1 && port <= largestPort
                     ? Verdict()
                     : fields.refused(Refusal::valueOutOfRange, 2, "1 to 65535, from 32768 on 65536 less"),
                 checkLength(fields, 3, 0, longestSettingText)});
    return keepOther(draft, "Mail server",
                     fields.raw(0) + " " + host + ":" + std::to_string(port) + " " + folder, verdict);
}

Verdict setAuthenticationKey(Draft& draft, const Fields& fields)
{
    const std::string path = fields.text(1);
    return keepOther(draft, "Authentication key", path, checkLength(fields, 1, 1, longestPath));
}

Verdict setInterface(Draft& draft, const Fields& fields)
{
    const std::string title = fields.text(1);
    return keepOther(draft, "Interface", fields.raw(0) + " " + title,
                     firstOf({checkLetter(fields, 0), checkLength(fields, 1, 0, longestSettingText)}));
}

Verdict setSubjectData(Draft& draft, const Fields& fields)
{
    const std::string path = fields.text(0);
    return keepOther(draft, "Subject's data", path, checkLength(fields, 0, 1, longestPath));
}

// Nothing is ever unsent: there is nobody to send to.
Verdict printUnsentPackets(Draft& draft, const Fields& /*fields*/)
{
    draft.print({.kind = Line::Kind::heading, .text = "UNSENT PACKETS"});
    draft.print({.text = "None"});
    return Refusal::none;
}

Verdict sendUnsentPacket(Draft& /*draft*/, const Fields& /*fields*/)
{
    return Refusal::none;
}

Verdict printLastTransactions(Draft& draft, const Fields& fields)
{
    constexpr int mostTransactions = 100;
    const int count = fields.whole(0);
    Verdict verdict = checkRange(fields, 0, 1, mostTransactions);
    if (verdict != Refusal::none) {
        return verdict;
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

Verdict synchronize(Draft& /*draft*/, const Fields& /*fields*/)
{
    return Refusal::none;
}

} // namespace virtual_printer
