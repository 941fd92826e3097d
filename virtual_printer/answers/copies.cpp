#include "virtual_printer/answers/copies.h"

#include "virtual_printer/paper/layout.h"

#include <iterator>

namespace virtual_printer {
namespace {

std::vector<Document> newestReceipt(const Question& question, DocumentQuery query = {})
{
    query.kinds = {Document::Kind::receipt};
    query.onlyLast = true;
    return question.memory.documents(query);
}

Reply copyOf(std::vector<Document> found, Refusal otherwise)
{
    if (found.empty()) {
        return {.verdict = otherwise};
    }
    Reply reply;
    reply.lines = {{.kind = Line::Kind::heading, .text = "COPY"}};
    std::vector<Line>& receipt = found.front().lines;
    reply.lines.insert(reply.lines.end(), std::make_move_iterator(receipt.begin()),
                       std::make_move_iterator(receipt.end()));
    return reply;
}

} // namespace

Reply lastReceipt(const Question& question)
{
    const auto last = newestReceipt(question);
    return {.data = last.empty() ? "" : textOf(last.front(), question.columns())};
}

Reply copyOfLastReceipt(const Question& question)
{
    return copyOf(newestReceipt(question), Refusal::nothingSold);
}

Reply copyOfIssuedReceipt(const Question& question)
{
    enum IssuedField : std::size_t
    {
        orderNumber,
        dateTime
    };
    const Fields& fields = question.fields;
    const int number = fields.whole(orderNumber);
    return copyOf(newestReceipt(question, {.numbers = {{number, number}},
                                           .moments = {{fields.moment(dateTime, Edge::first),
                                                        fields.moment(dateTime, Edge::last)}}}),
                  Refusal::noSuchReceipt);
}

} // namespace virtual_printer
