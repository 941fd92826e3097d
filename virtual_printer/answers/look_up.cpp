#include "virtual_printer/answers/look_up.h"

#include <algorithm>
#include <limits>

namespace virtual_printer {
namespace {

enum LookUpField : std::size_t
{
    inputType,
    input
};

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

Verdict restrictToNumber(DocumentQuery& query, Identifier identifier, const Fields& fields)
{
    const auto number = wholeNumber(fields.text(input));
    if (!number) {
        return fields.refused(Refusal::badNumber, input, "a whole number");
    }
    if (identifier == Identifier::number) {
        query.numbers = {*number, *number};
    } else {
        query.closure = *number;
    }
    return Refusal::none;
}

Verdict restrictToDate(DocumentQuery& query, const Fields& fields)
{
    const auto from = parseMoment(fields.text(input), Edge::first);
    const auto to = parseMoment(fields.text(input), Edge::last);
    if (!from || !to) {
        return fields.refused(Refusal::badDate, input,
                              "a date as 2026-01-31 or 31.01.2026, with or without 12:00");
    }
    query.moments = {*from, *to};
    return Refusal::none;
}

// Restricts the query to what the input identifies; an empty input selects all.
Verdict restrict(DocumentQuery& query, const Fields& fields)
{
    const auto identifier = static_cast<Identifier>(fields.letter(inputType));
    const std::string text = fields.text(input);
    switch (identifier) {
    case Identifier::number:
    case Identifier::closure:
        return text.empty() ? Verdict() : restrictToNumber(query, identifier, fields);
    case Identifier::date:
        return text.empty() ? Verdict() : restrictToDate(query, fields);
    case Identifier::invoice:
        query.invoice = text.empty() ? std::nullopt : std::optional(text);
        return Refusal::none;
    case Identifier::transaction:
        query.transaction = text.empty() ? std::nullopt : std::optional(text);
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
    reply.verdict = restrict(query, question.fields);
    if (reply.verdict != Refusal::none) {
        return reply;
    }
    reply.further = [numbers = question.memory.numbersOf(query), next = std::size_t{0}]() mutable {
        return next < numbers.size() ? std::optional(std::to_string(numbers[next++]) + "\r\n") : std::nullopt;
    };
    return reply;
}

} // namespace virtual_printer
