#include "tools/doctor.h"

#include "tools/export_table.h"
#include "tools/exported_function.h"
#include "tools/output.h"
#include "tools/paths.h"
#include "tools/windows_1250.h"

#include <algorithm>
#include <numeric>

namespace telvofm::tools {
namespace {

std::string nameOf(Health health)
{
    switch (health) {
    case Health::good:
        return "good";
    case Health::bad:
        return "bad";
    case Health::unknown:
        break;
    }
    return "unknown";
}

std::string markOf(Health health)
{
    switch (health) {
    case Health::good:
        return "good     ";
    case Health::bad:
        return "BAD      ";
    case Health::unknown:
        break;
    }
    return "unknown  ";
}

Finding examineLibrary(const std::string& name)
{
    try {
        const LoadedLibrary library = loadLibrary(name);
        const auto table = exportTable();
        const auto missing = std::find_if(table.begin(), table.end(), [](const Export& one) {
            return exportedFunction(one.name) == nullptr;
        });
        if (missing != table.end()) {
            return {"library", Health::bad,
                    "The library " + utf8(library.file) + " has no function " + std::string(missing->name) +
                        ".",
                    "Install the library that came with this tool."};
        }
        return {"library",
                Health::good,
                "The library is " + utf8(library.file) + ", 64-bit like this tool, version " +
                    std::to_string(library.version) + " of the interface, with all " +
                    std::to_string(table.size()) + " functions.",
                {}};
    } catch (const Failure& failure) {
        const std::string sentence = failure.what();
        const std::size_t end = sentence.find("; ");
        return {"library", Health::bad, sentence.substr(0, end) + ".",
                end == std::string::npos ? "" : sentence.substr(end + 2) + "."};
    }
}

Finding examinePorts()
{
    const auto ports = serialPorts();
    if (ports.empty()) {
        return {"ports", Health::unknown, "There is no serial port here.",
                "Plug the printer's adapter in, or name a printer on the network with --printer HOST:PORT."};
    }
    const std::string all = std::accumulate(
        ports.begin() + 1, ports.end(), ports.front(),
        [](std::string words, const std::string& port) { return std::move(words) + ", " + port; });
    return {"ports", Health::unknown, "Serial ports here: " + all + ".",
            "Name the printer's with --printer, or one on the network with --printer HOST:PORT."};
}

// As a till does it.
Finding examineOpening(const PrinterOptions& printer)
{
    try {
        PrinterSession session(printer);
        session.open();
        return {"opening", Health::good, "The library opens the printer.", {}};
    } catch (const Failure& /*failure*/) {
        return {"opening", Health::bad,
                "The library cannot open the printer, although nothing else is wrong.",
                "Try again; when it stays so, end other programs that use the printer."};
    }
}

void append(Findings& all, Findings more)
{
    std::move(more.begin(), more.end(), std::back_inserter(all));
}

bool namesSerialPort(const std::string& address)
{
    return address.starts_with("COM") || address.starts_with(R"(\\.\COM)");
}

Findings findOut(const PrinterOptions& printer)
{
    Findings all = {examineLibrary(printer.library)};
    if (printer.address.empty()) {
        all.push_back(examinePorts());
        return all;
    }
    append(all, namesSerialPort(printer.address) ? examineSerialPort(printer.address)
                                                 : examineHost(printer.address));
    if (isHealthy(all)) {
        all.push_back(examineOpening(printer));
    }
    return all;
}

} // namespace

Ending examine(const PrinterOptions& printer, Output& output)
{
    const Findings findings = findOut(printer);
    for (const Finding& finding : findings) {
        output.line(onOneLine(markOf(finding.health) + finding.sentence +
                              (finding.advice.empty() ? "" : " " + finding.advice)));
        output.document["findings"].push_back({{"about", finding.about},
                                               {"health", nameOf(finding.health)},
                                               {"sentence", finding.sentence},
                                               {"advice", finding.advice}});
    }
    output.document["healthy"] = isHealthy(findings);
    return isHealthy(findings) ? Ending::done : Ending::trouble;
}

} // namespace telvofm::tools
