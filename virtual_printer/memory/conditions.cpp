#include "virtual_printer/memory/conditions.h"

namespace virtual_printer {

Conditions::Conditions(const DocumentQuery& query)
{
    if (!query.kinds.empty()) {
        addKinds(query.kinds);
    }
    if (query.numbers && query.numbers->first == query.numbers->second) {
        add("number = ?", {std::int64_t{query.numbers->first}}); // so that it comes before a wide period
    } else if (query.numbers) {
        add("number BETWEEN ? AND ?", {std::int64_t{query.numbers->first}, query.numbers->second});
    }
    if (query.moments) {
        add("moment BETWEEN ? AND ?", {secondsOf(query.moments->first), secondsOf(query.moments->second)});
    }
    if (query.closure) {
        add("closure = ?", {std::int64_t{*query.closure}});
    }
    if (query.invoice) {
        add("invoice = ?", {std::string_view(*query.invoice)});
    }
    if (query.transaction) {
        add("till_transaction = ?", {std::string_view(*query.transaction)});
    }
    if (query.positions) {
        add("id BETWEEN ? AND ?", {query.positions->first, query.positions->second});
    }
    order = sql.size();
    sql += query.onlyLast      ? " ORDER BY id DESC LIMIT 1"
           : query.newestFirst ? " ORDER BY id DESC"
                               : " ORDER BY id";
    if (query.most || query.skip > 0) {
        constexpr std::int64_t all = -1;
        sql += " LIMIT ? OFFSET ?";
        values.insert(values.end(), {query.most.value_or(all), query.skip});
    }
}

void Conditions::add(std::string_view condition, Parameters parameters)
{
    sql += values.empty() && sql.empty() ? " WHERE " : " AND ";
    sql += condition;
    values.insert(values.end(), parameters.begin(), parameters.end());
}

void Conditions::addKinds(const std::vector<Document::Kind>& kinds)
{
    std::string list;
    for (const Document::Kind kind : kinds) {
        list += (list.empty() ? "" : ", ") + std::to_string(static_cast<int>(kind));
    }
    add("kind IN (" + list + ")", {});
}

} // namespace virtual_printer
