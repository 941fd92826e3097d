#include "virtual_printer/service.h"

#include "virtual_printer/control/control.h"
#include "virtual_printer/faults/scenario.h"
#include "virtual_printer/paper/picture.h"
#include "virtual_printer/printers/new_printer.h"
#include "virtual_printer/printers/output_lines.h"
#include "virtual_printer/printers/station.h"
#include "virtual_printer/transport/http_server.h"
#include "virtual_printer/transport/process.h"
#include "virtual_printer/transport/ready_file.h"
#include "virtual_printer/transport/serial_link.h"
#include "virtual_printer/transport/standard_output.h"
#include "virtual_printer/transport/tcp_link.h"
#include "virtual_printer/web/page.h"

#include <boost/asio/io_context.hpp>
#include <boost/asio/signal_set.hpp>
#include <cstdlib>
#include <map>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace virtual_printer {
namespace {

// Everything runs on one thread, in turn: there are no locks.
class Service
{
public:
    Service(const Options& chosen, StandardOutput& paper)
        : options(chosen), output(paper), codes(chosen.codesFile.empty() ? Codes() : Codes(chosen.codesFile)),
          scenario(chosen.scenarioFile.empty() ? Scenario() : readScenario(chosen.scenarioFile))
    {
        if (!options.logoFolder.empty() && !canWritePng) {
            throw std::runtime_error(
                "pictures cannot be written as PNG files on Windows; leave --logo-png out");
        }
    }

    void open()
    {
        if (!options.readyFile.empty()) {
            forgetReadyFile(options.readyFile);
        }
        for (const auto& http : {options.control, options.web}) {
            if (http && options.token.empty()) {
                requireLoopback(context, *http);
            }
        }
        // Before anybody can know that the printers are there.
        ending.async_wait([this](const boost::system::error_code& failure, int /*signal*/) {
            if (!failure) {
                context.stop();
            }
        });
        for (const NetworkPrinter& printer : options.network) {
            Station& station = newStation(printer.name);
            network.push_back(
                std::make_unique<TcpLink>(context, printer.address, station, codes, options.secondTill));
            announce(station, "listening on ", network.back()->address());
        }
        if (options.hasPseudoTerminal) {
            Station& station = newStation(nameOnPseudoTerminal);
            servePseudoTerminal(context, station, codes, [this, &station](const std::string& path) {
                announce(station, "serial line ", path);
            });
        }
        if (!options.serialPort.empty()) {
            Station& station = newStation(nameOnSerialPort);
            servePort(context, options.serialPort, options.baud, station, codes);
            announce(station, "serial line ", options.serialPort);
        }
        for (const auto& station : stations) {
            station->show();
        }
        if (options.control || options.web) {
            openControl();
        }
        isReady = true;
        writeAddresses();
    }

    void run()
    {
        if (options.endsWithParent) {
            watchParent(context, [this] { context.stop(); });
        }
        context.run();
    }

private:
    Station& newStation(const std::string& name)
    {
        Memory memory = options.dataFolder.empty() ? Memory() : Memory(options.dataFolder / (name + ".db"));
        const auto kept = memory.load();
        Clock clock = startedClock(kept ? kept->standing->clockOffset : std::chrono::seconds(0));
        Printer printer(std::move(memory), whenNew(), std::move(clock));
        stations.push_back(std::make_unique<Station>(name, std::move(printer)));
        stations.back()->watch(
            [this](const Station& station, const Happened& event) { print(station, event); });
        for (const Fault& fault : scenario.faults) {
            stations.back()->faults.arm(fault); // before anybody can connect
        }
        return *stations.back();
    }

    void openControl()
    {
        control.emplace(whenNew(), options.dataFolder, options.token, codes);
        for (const auto& station : stations) {
            control->add(*station, startedClock());
        }
        if (options.control) {
            server.emplace(context, *options.control,
                           [this](const HttpRequest& request) { return control->answer(request); });
            output.say("control on http://" + server->address());
        }
        if (options.web) {
            web.emplace(context, *options.web, [this](const HttpRequest& request) -> Outcome {
                if (auto page = pageAnswer(request)) {
                    return std::move(*page);
                }
                return control->answer(request);
            });
            output.say("web http://" + web->address() + "/");
        }
        control->notify([this] {
            for (auto* listener : {&server, &web}) {
                if (*listener) {
                    (*listener)->lookAgain();
                }
            }
        });
    }

    [[nodiscard]] State whenNew() const { return options.isFactoryNew ? factoryNew() : readyToSell(); }

    // A clock that starts at a moment shows it, whatever the one of the last time was set to, which the
    // printer's memory keeps as an offset.
    [[nodiscard]] Clock startedClock(std::chrono::seconds offset = {}) const
    {
        return options.start ? clockFrom(*options.start - offset, 1, lastMoment - offset) : systemClock();
    }

    // A line that has hung up comes again at another address.
    void announce(const Station& station, const std::string& what, const std::string& address)
    {
        std::erase_if(listening, [&](const ListeningPrinter& one) { return one.name == station.name; });
        listening.push_back({station.name, address});
        if (isReady) {
            writeAddresses();
        }
        output.say(prefixOf(station) + what + address);
    }

    void writeAddresses() const
    {
        if (!options.readyFile.empty()) {
            writeReadyFile(options.readyFile, listening, server ? server->address() : "",
                           web ? web->address() : "");
        }
    }

    void print(const Station& station, const Happened& event)
    {
        const auto columns = static_cast<std::size_t>(station.printer.state().settings->columns);
        for (const std::string& line : linesFor(event, columns, codes)) {
            output.say(prefixOf(station) + line);
        }
        writePictures(station);
    }

    // Those that have come since the last time.
    void writePictures(const Station& station)
    {
        const auto& pictures = station.printer.state().pictures;
        if (options.logoFolder.empty() || written[station.name] == pictures) {
            return;
        }
        for (const auto& [number, picture] : *pictures) {
            const std::string name = "logo-" + std::to_string(number) + ".png";
            if (!writePictureAsPng(picture, (options.logoFolder / name).string())) {
                output.say("! cannot write " + name + " into " + options.logoFolder.string());
            }
        }
        written[station.name] = pictures;
    }

    // Several printers share the paper: each line says whose it is.
    [[nodiscard]] std::string prefixOf(const Station& station) const
    {
        const std::size_t printers = options.network.size() + (options.hasPseudoTerminal ? 1U : 0U) +
                                     (options.serialPort.empty() ? 0U : 1U);
        return printers == 1 ? "" : station.name + ": ";
    }

    const Options& options;
    StandardOutput& output;
    Codes codes;
    Scenario scenario;
    boost::asio::io_context context{1};
    boost::asio::signal_set ending = endingSignals(context);
    std::vector<std::unique_ptr<Station>> stations;
    std::vector<std::unique_ptr<TcpLink>> network;
    std::vector<ListeningPrinter> listening;
    bool isReady = false;
    std::map<std::string, std::shared_ptr<const Pictures>> written;
    std::optional<Control> control;
    std::optional<HttpServer> server; // of the control interface
    std::optional<HttpServer> web;    // the same and the page
};

} // namespace

int serve(const Options& options)
{
    ignoreBrokenPipes();
    StandardOutput& output = *new StandardOutput; // never destroyed: its thread goes with the process
    Service service(options, output);
    constexpr std::chrono::milliseconds lastWords{500};
    service.open();
    try {
        service.run();
    } catch (const std::exception&) {
        output.flush(lastWords);
        throw;
    }
    if (!output.flush(lastWords)) {
        endAtOnce(); // a reader that does not read must not hold up the end
    }
    return EXIT_SUCCESS;
}

} // namespace virtual_printer
