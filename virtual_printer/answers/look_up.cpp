#include "virtual_printer/answers/look_up.h"

#include <algorithm>
#include <limits>

namespace virtual_printer {
namespace {

// What receipts are identified by.
enum class Identifier : char
{
    number = 'N',
    date = 'D',
    closure = 'Z',
    invoice = 'I',
    transaction = 'T'
};

// Beyond the range of all numbers there are no receipts and closures either.
std::optional<int> wholeNumber(std::string_view text)
{
    using Limits = std::numeric_limits<int>;
    const auto number = parseDecimal(text, 0);
    if (!number || number->decimals != 0) {
        return std::nullopt;
    }
    return static_cast<int>(std::clamp<std::int64_t>(number->units, Limits::min(), Limits::max()));
}

Refusal restrictToNumber(DocumentQuery& query, Identifier identifier, std::string_view input)
{
    const auto number = wholeNumber(input);
    if (!number) {
        return Refusal::badNumber;
    }
    if (identifier == Identifier::number) {
        query.numbers = {*number, *number};
    } else {
        query.closure = *number;
    }
    return Refusal::none;
}

Refusal restrictToDate(DocumentQuery& query, std::string_view input)
{
    const auto from = parseMoment(input, Edge::first);
    const auto to = parseMoment(input, Edge::last);
    if (!from || !to) {
        return Refusal::badDate;
    }
    query.moments = {*from, *to};
    return Refusal::none;
}

// Restricts the query to what the input identifies; an empty input selects all.
Refusal restrict(DocumentQuery& query, Identifier identifier, const std::string& input)
{
    switch (identifier) {
    case Identifier::number:
    case Identifier::closure:
        return input.empty() ? Refusal::none : restrictToNumber(query, identifier, input);
    case Identifier::date:
        return input.empty() ? Refusal::none : restrictToDate(query, input);
    case Identifier::invoice:
        query.invoice = input.empty() ? std::nullopt : std::optional(input);
        return Refusal::none;
    case Identifier::transaction:
        query.transaction = input.empty() ? std::nullopt : std::optional(input);
        return Refusal::none;
    }
    return Refusal::unknownIdentifier;
}

} // namespace

Reply lookUpReceipts(const Question& question)
{
    DocumentQuery query;
    query.kinds = {Document::Kind::receipt};
    Reply reply;
    reply.refusal =
        restrict(query, static_cast<Identifier>(question.fields.letter(0)), question.fields.text(1));
    if (reply.refusal != Refusal::none) {
        return reply;
    }
    for (const int number : question.memory.numbersOf(query)) {
        reply.data += std::to_string(number) + "\r\n";
    }
    return reply;
}

} // namespace virtual_printer
