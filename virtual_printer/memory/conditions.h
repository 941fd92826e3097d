// The conditions of a query of documents, as SQL and what stands for its question marks.
#pragma once

#include "virtual_printer/memory/database.h"
#include "virtual_printer/memory/memory.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace virtual_printer {

// As the database has it.
inline std::int64_t secondsOf(Moment moment)
{
    return moment.time_since_epoch().count();
}

class Conditions
{
public:
    // Everything but its text. The query must live as long.
    explicit Conditions(const DocumentQuery& query);

    // What follows the name of the table: conditions, order, page.
    [[nodiscard]] const std::string& text() const { return sql; }
    [[nodiscard]] std::span<const Parameter> parameters() const { return values; }
    // The conditions alone, of a query without a page.
    [[nodiscard]] std::string_view withoutOrder() const { return std::string_view(sql).substr(0, order); }

private:
    void add(std::string_view condition, Parameters parameters);
    void addKinds(const std::vector<Document::Kind>& kinds);

    std::string sql;
    std::size_t order = 0; // where it begins
    std::vector<Parameter> values;
};

} // namespace virtual_printer
