#include "commands/reports/variables.h"

namespace telvofm::reports {
namespace {

// A reply of one or two bytes counts as empty, whatever it holds: this is meant.
void cutLineEnd(std::string& reply)
{
    constexpr std::size_t lineEnd = 2;
    if (reply.size() <= lineEnd) {
        reply.clear();
    } else if (reply.ends_with("\r\n") || reply.ends_with("\n\r")) {
        reply.resize(reply.size() - lineEnd);
    }
}

} // namespace

std::string variable(Device& printer, int address, std::string_view code)
{
    std::string reply = printer.query(printer.request(address, Command::getVariable).text(code));
    cutLineEnd(reply);
    return reply;
}

std::string lastParagon(Device& printer, int address)
{
    return printer.query(printer.request(address, Command::getLastParagon));
}

std::string intervalByDates(Device& printer, int address, int printType, std::string_view from,
                            std::string_view to)
{
    return printer.query(
        printer.request(address, Command::getIntervalFPD).number(printType).text(from).text(to));
}

std::string intervalByNumbers(Device& printer, int address, int printType, int from, int to)
{
    return printer.query(
        printer.request(address, Command::getIntervalFPC).number(printType).number(from).number(to));
}

} // namespace telvofm::reports
