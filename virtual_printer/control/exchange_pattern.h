// A part of an exchange as an assertion writes it: {"name": "payment", "fields": {"total": "12.50"}}.
#pragma once

#include "virtual_printer/control/possible_exchange.h"
#include "virtual_printer/trace/exchanged.h"

#include <string>
#include <utility>
#include <vector>

namespace virtual_printer {

// An exchange as assertions see it: as the trace shows it, with its fields by name. Of its members only those
// are made that somebody asks for.
class ExchangeView
{
public:
    explicit ExchangeView(const Exchanged& shown) : shownExchange(&shown) {}

    [[nodiscard]] const Exchanged& exchanged() const { return *shownExchange; }
    // By its place in exchangedMembers(), as the trace shows it.
    const Json& member(std::size_t place);
    // Their values by their names.
    [[nodiscard]] Json fields() const;

private:
    const Exchanged* shownExchange;
    std::vector<Json> members{}; // discarded: not yet made
};

class ExchangePattern
{
public:
    // Throws ControlRefusal when no exchange could ever fit: a member, name or field that there is not, or
    // one that never comes to this stage. `place` is that of the entry in sentences: "received[0]".
    ExchangePattern(Json entry, Stage wanted, const Codes& codes, const std::string& place);

    // Whether it counts at all. Requests do; blocks, probes and what is damaged where the pattern names them.
    [[nodiscard]] bool counts(const Exchanged& exchanged) const;
    [[nodiscard]] bool fits(ExchangeView& view) const;
    // In how many places it differs.
    std::size_t distanceTo(ExchangeView& view) const;
    // In words.
    [[nodiscard]] std::string differenceFrom(ExchangeView& view) const;
    // The pattern as it was written.
    [[nodiscard]] const Json& text() const { return expected; }

private:
    struct Part
    {
        std::size_t member; // its place in exchangedMembers()
        Json value;
        std::string text; // of one that is compared as text; otherwise empty
    };
    using FieldWanted = std::pair<std::string, std::string>;

    // In how many places one of the parts differs.
    static std::size_t placesIn(const Part& part, ExchangeView& view);
    [[nodiscard]] std::size_t fieldsThatDiffer(const Exchanged& exchanged) const;

    Stage stage;
    Json expected;
    std::string name;        // empty for any
    std::vector<Part> parts; // what takes long to make comes last; but for the fields
    std::vector<FieldWanted> fields;
    Exchanged::Kind wantedKind = Exchanged::Kind::request;
};

} // namespace virtual_printer
