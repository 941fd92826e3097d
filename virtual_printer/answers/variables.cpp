#include "virtual_printer/answers/variables.h"

#include "virtual_printer/answers/archives.h"
#include "virtual_printer/answers/settings_lines.h"
#include "virtual_printer/fiscal/cash.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace virtual_printer {
namespace {

std::string stateText(const State& state)
{
    if (!state.receipt) {
        return "closed";
    }
    return state.receipt->isBeingPaid ? "paying" : "open";
}

std::string paperText(const Hardware& hardware)
{
    if (hardware.paperIsOut) {
        return "out";
    }
    return hardware.paperIsLow ? "low" : "ok";
}

// Both are those of the journal: a journal that was initialized has none.
const DocumentQuery lastReceiptQuery{.kinds = {Document::Kind::receipt}, .onlyLast = true};

int numberOfLastReceipt(const Memory& memory)
{
    const auto last = memory.numbersOf(lastReceiptQuery);
    return last.empty() ? 0 : last.front();
}

Cents totalOfLastReceipt(const Memory& memory)
{
    const auto last = memory.documents(lastReceiptQuery);
    return last.empty() ? 0 : last.front().total;
}

std::string joined(const std::vector<std::string>& texts)
{
    std::string whole;
    for (const std::string& text : texts) {
        whole += (whole.empty() ? "" : " ") + text;
    }
    return whole;
}

// Without an open receipt there is nothing to add up: 0.
std::string sumOfReceipt(const State& state, Cents (*sum)(const Receipt&))
{
    return formatCents(state.receipt ? sum(*state.receipt) : 0);
}

struct Variable
{
    std::string_view name;
    std::string (*text)(const Question&);
};

constexpr std::array variables = {
    Variable{"STATE", [](const Question& asked) { return stateText(asked.state); }},
    Variable{"TOTAL",
             [](const Question& asked) {
                 return sumOfReceipt(asked.state, [](const Receipt& open) { return open.document.total; });
             }},
    Variable{"DUE",
             [](const Question& asked) {
                 return sumOfReceipt(asked.state, [](const Receipt& open) { return open.due(); });
             }},
    Variable{"PAID",
             [](const Question& asked) {
                 return sumOfReceipt(asked.state, [](const Receipt& open) { return open.paid; });
             }},
    Variable{"LAST_RECEIPT",
             [](const Question& asked) { return std::to_string(numberOfLastReceipt(asked.memory)); }},
    Variable{"LAST_TOTAL",
             [](const Question& asked) { return formatCents(totalOfLastReceipt(asked.memory)); }},
    Variable{"DAY",
             [](const Question& asked) {
                 return std::string(asked.state.standing->dayIsOpen ? "open" : "closed");
             }},
    Variable{"RECEIPTS",
             [](const Question& asked) { return std::to_string(asked.state.standing->day.receipts); }},
    Variable{"TURNOVER",
             [](const Question& asked) { return formatCents(asked.state.standing->day.turnover()); }},
    Variable{"RECEIPTS_EVER",
             [](const Question& asked) {
                 const Standing& standing = *asked.state.standing;
                 return std::to_string(standing.ever.receipts + standing.day.receipts);
             }},
    Variable{"TURNOVER_EVER",
             [](const Question& asked) {
                 const Standing& standing = *asked.state.standing;
                 return formatCents(standing.ever.turnover() + standing.day.turnover());
             }},
    Variable{
        "DRAWER",
        [](const Question& asked) { return formatCents(contentOf(asked.state.standing->drawer, cash)); }},
    Variable{"CLOSURES",
             [](const Question& asked) { return std::to_string(asked.state.standing->closures); }},
    Variable{
        "CLOSURES_LEFT",
        [](const Question& asked) { return std::to_string(mostClosures - asked.state.standing->closures); }},
    Variable{"DOCUMENTS",
             [](const Question& asked) { return std::to_string(asked.state.standing->documents); }},
    Variable{"ARCHIVES", [](const Question& asked) { return joined(archiveNames(asked.memory, asked.now)); }},
    Variable{"CLOCK", [](const Question& asked) { return toText(asked.now); }},
    Variable{"LIFE", [](const Question& asked) { return nameOf(asked.state.standing->life); }},
    Variable{"DKP", [](const Question& asked) { return asked.state.standing->dkp; }},
    Variable{"PAPER", [](const Question& asked) { return paperText(*asked.state.hardware); }},
    Variable{"COVER",
             [](const Question& asked) {
                 return std::string(asked.state.hardware->coverIsOpen ? "open" : "closed");
             }},
    Variable{"VERSION", [](const Question&) { return std::string(TELVOFM_VERSION_TEXT); }},
};

// DRAWER_2: what lies in the drawer of this payment type.
std::optional<std::string> drawerText(std::string_view number, const State& state)
{
    int type = 0;
    const auto read = std::from_chars(number.data(), number.data() + number.size(), type);
    const bool isNumber = read.ec == std::errc() && read.ptr == number.data() + number.size();
    const ByPayment& drawer = state.standing->drawer;
    if (!isNumber || (!state.settings->payments.contains(type) && !drawer.contains(type))) {
        return std::nullopt;
    }
    return formatCents(contentOf(drawer, type));
}

// VAT_A: the rate in percent, empty when none is set.
std::optional<std::string> vatText(std::string_view letter, const State& state)
{
    const std::size_t index =
        letter.size() == 1 ? static_cast<std::size_t>(letter.front() - 'A') : vatLetters;
    if (index >= vatLetters) {
        return std::nullopt;
    }
    const auto& rate = state.settings->vat.at(index);
    return rate ? std::to_string(rate->percent) : "";
}

} // namespace

std::optional<std::string> variableText(std::string_view name, const Question& question)
{
    constexpr std::string_view ofDrawer = "DRAWER_";
    constexpr std::string_view ofVat = "VAT_";
    const auto* const found = std::find_if(variables.begin(), variables.end(),
                                           [&](const Variable& variable) { return variable.name == name; });
    if (found != variables.end()) {
        return found->text(question);
    }
    if (name.starts_with(ofDrawer)) {
        return drawerText(name.substr(ofDrawer.size()), question.state);
    }
    return name.starts_with(ofVat) ? vatText(name.substr(ofVat.size()), question.state) : std::nullopt;
}

} // namespace virtual_printer
