#include "tools/possible_task.h"

#include "tools/ending.h"

#include <charconv>

namespace telvofm::tools {
namespace {

[[noreturn]] void refuseTask(const std::string& sentence)
{
    throw Failure(Ending::wrongUse, sentence);
}

// As the library reads it: at the first colon, with a port of its own when there is none. The name of a port
// is for the system to know.
void requirePossibleAddress(const std::string& address)
{
    if (address.empty() || address.starts_with("COM") || address.starts_with(R"(\\.\COM)")) {
        return;
    }
    const std::size_t colon = address.find(':');
    if (colon == 0) {
        refuseTask(address + " names no host; write HOST or HOST:PORT");
    }
    const std::string port = colon == std::string::npos ? "" : address.substr(colon + 1);
    const std::size_t sign = port.starts_with('-') ? 1 : 0;
    const bool isNumber =
        port.size() > sign && port.find_first_not_of("0123456789", sign) == std::string::npos;
    unsigned value = 0;
    const auto parsed = std::from_chars(port.data(), port.data() + port.size(), value);
    if (isNumber && (parsed.ec != std::errc() || value < 1 || value > 65535)) {
        refuseTask(address + ": " + port + " is no port; 1 to 65535");
    }
}

void requirePossiblePrinter(const PrinterOptions& printer)
{
    if (printer.baud != 0 && printer.stopBits != 0) {
        refuseTask("a port is opened with --baud or with --stop-bits; leave one of them out");
    }
    if (printer.baud != 0 && printer.address.empty()) {
        refuseTask("--baud is the speed of a printer's port; name it with --printer");
    }
    if (printer.stopBits != 0 && printer.address.empty()) {
        refuseTask("--stop-bits are those of a printer's port; name it with --printer");
    }
    requirePossibleAddress(printer.address);
}

void requirePossibleReplay(const Task& task)
{
    if (task.log.empty()) {
        refuseTask("no LOG is named; write: telvofm replay LOG");
    }
    if (!task.isDryRun && task.printer.address.empty()) {
        refuseTask("no printer is named; name one with --printer, or add --dry-run");
    }
    if (task.isDryRun && (!task.printer.callLog.empty() || !task.printer.rawLog.empty())) {
        refuseTask("nothing is sent with --dry-run, and no log is written; leave out --dry-run or the log");
    }
}

} // namespace

void requirePossible(const Task& task)
{
    if (task.errand == Errand::call && !task.isList && task.words.empty()) {
        refuseTask("no function is named; write: telvofm call FUNCTION ARGUMENT...");
    }
    if (task.errand == Errand::completion && task.shell != "bash") {
        refuseTask("there is no completion for '" + task.shell + "'; write: telvofm completion bash");
    }
    if (task.errand == Errand::decode && task.log.empty()) {
        refuseTask("no RAWLOG is named; write: telvofm decode RAWLOG");
    }
    if (task.errand == Errand::replay) {
        requirePossibleReplay(task);
    }
    requirePossiblePrinter(task.printer);
}

} // namespace telvofm::tools
