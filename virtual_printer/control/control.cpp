#include "virtual_printer/control/control.h"

#include "virtual_printer/control/body.h"

namespace virtual_printer {
namespace {

std::vector<std::string_view> partsOf(std::string_view path)
{
    std::vector<std::string_view> parts;
    while (!path.empty()) {
        path.remove_prefix(1);
        const std::size_t size = std::min(path.find('/'), path.size());
        parts.push_back(path.substr(0, size));
        path.remove_prefix(size);
    }
    return parts;
}

bool matches(const Route& route, const std::vector<std::string>& path)
{
    const auto parts = partsOf(route.path);
    return std::equal(parts.begin(), parts.end(), path.begin(), path.end(),
                      [](std::string_view part, const std::string& given) {
                          return part.starts_with('{') || part == given;
                      });
}

// What would be passed over would be taken for done.
void requireQuery(const Route& route, const Target& target)
{
    if (!target.repeated.empty()) {
        throw ControlRefusal(status::badRequest,
                             "\"" + target.repeated.substr(0, 100) + "\" is there twice; give it once.");
    }
    if (!route.takesQuery && !target.query.empty()) {
        throw ControlRefusal(status::badRequest, "There is no \"" +
                                                     target.query.begin()->first.substr(0, 100) +
                                                     "\" here: nothing belongs behind a question mark.");
    }
}

} // namespace

void Control::add(Station& station, const std::optional<Clock>& clockWhenNew)
{
    printers.push_back(
        std::make_unique<ControlledPrinter>(station, clockWhenNew.value_or(station.printer.currentClock())));
    ControlledPrinter& printer = *printers.back();
    station.watch([this, &printer](const Station&, const Happened& event) {
        printer.take(event);
        changed();
    });
    station.trace.watch([this, &printer](const Exchanged&) {
        printer.hasChanged();
        changed();
    });
    station.faults.watch([this, &printer](const Armed&, Faults::Event) {
        printer.hasChanged();
        changed();
    });
}

Outcome Control::answer(const HttpRequest& request)
{
    try {
        if (auto refused = access.refuse(request)) {
            return *refused;
        }
        return find(request);
    } catch (const ControlRefusal& refusal) {
        return errorAnswer(refusal.status, refusal.what());
    } catch (const DiskFull& failure) {
        return errorAnswer(status::conflict, failure.what());
    } catch (const std::exception& failure) {
        return errorAnswer(status::internalError, std::string(failure.what()));
    }
}

Outcome Control::find(const HttpRequest& request)
{
    const Target target(request.target);
    if (request.method == "POST" && target.path == std::vector<std::string>{"session"}) {
        const Json body = parseBody(request.body);
        constexpr std::size_t longestToken = 1000;
        return access.logIn(Members(body, "").text("token", "", 0, longestToken), request.host);
    }
    std::string allowed;
    for (const Route& route : controlRoutes()) {
        if (!matches(route, target.path)) {
            continue;
        }
        if (route.method == request.method) {
            return call(route, request, target);
        }
        allowed += (allowed.empty() ? "" : ", ") + std::string(route.method);
    }
    if (allowed.empty()) {
        throw ControlRefusal(status::notFound, "There is no " + request.target.substr(0, 200) +
                                                   " here; GET /openapi.json describes what there is.");
    }
    HttpAnswer answer = errorAnswer(status::wrongMethod,
                                    request.method + " is no method of this path; it takes " + allowed + ".");
    answer.headers.emplace_back("Allow", allowed);
    return answer;
}

Outcome Control::call(const Route& route, const HttpRequest& request, const Target& target)
{
    requireQuery(route, target);
    const bool namesPrinter = route.path.starts_with("/printers/");
    ControlledPrinter* printer = namesPrinter ? printerCalled(target.path.at(1)) : nullptr;
    const Json body = parseBody(request.body);
    // What a till's request has done belongs to the printer as it was, also while the till waits for its
    // answer.
    for (const auto& each : printers) {
        each->station.show();
    }
    Outcome outcome = route.handle(
        {request, target, body, printers, snapshots, stateWhenNew, codes, run, changed, printer});
    if (route.method != "GET") {
        if (printer != nullptr) {
            printer->hasChanged();
        }
        changed();
    }
    return outcome;
}

ControlledPrinter* Control::printerCalled(const std::string& name) const
{
    std::string names;
    for (const auto& printer : printers) {
        if (printer->station.name == name) {
            return printer.get();
        }
        names += (names.empty() ? "" : ", ") + printer->station.name;
    }
    throw ControlRefusal(status::notFound,
                         "There is no printer \"" + name.substr(0, 100) + "\"; there are: " + names + ".");
}

} // namespace virtual_printer
