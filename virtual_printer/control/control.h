// The control interface without its socket: a request in, what comes of it out. It runs on the printers'
// thread, so that a request happens between two exchanges and the next one sees all of it.
#pragma once

#include "virtual_printer/control/access.h"
#include "virtual_printer/control/routes.h"

#include <chrono>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>

namespace virtual_printer {

class Control
{
public:
    // `whenNew` is what a printer is reset to; files lie in `dataFolder`, which may be empty for none;
    // `refusalCodes` are the numbers that refusals have on the wire.
    Control(State whenNew, std::filesystem::path dataFolder, std::string token,
            const Codes& refusalCodes = Codes())
        : access(std::move(token)), snapshots(std::move(dataFolder)), stateWhenNew(std::move(whenNew)),
          codes(refusalCodes)
    {
    }

    // It must live as long. `clockWhenNew` is the one that it has after a reset to a new printer, where its
    // own makes up for an offset that its memory keeps.
    void add(Station& station, const std::optional<Clock>& clockWhenNew = {});
    // Called after everything that may end a wait or lengthen a stream.
    void notify(std::function<void()> listener) { changed = std::move(listener); }

    // Throws nothing of its own: what cannot be done is an answer, too.
    Outcome answer(const HttpRequest& request);

private:
    Outcome find(const HttpRequest& request);
    Outcome call(const Route& route, const HttpRequest& request, const Target& target);
    [[nodiscard]] ControlledPrinter* printerCalled(const std::string& name) const;

    Access access;
    Snapshots snapshots;
    State stateWhenNew;
    Codes codes;
    std::string run = std::to_string(std::chrono::system_clock::now().time_since_epoch().count());
    ControlledPrinters printers;
    std::function<void()> changed = [] {};
};

} // namespace virtual_printer
