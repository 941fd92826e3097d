// The fields of a request that has been found well formed, as values. The accessors give what `check` has
// made sure of: asking for another kind than the table says is a mistake of ours.
#pragma once

#include "virtual_printer/fiscal/moment.h"
#include "virtual_printer/fiscal/money.h"
#include "virtual_printer/fiscal/verdict.h"
#include "virtual_printer/language/commands.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace virtual_printer {

struct Rate
{
    std::int64_t tenThousandths = 0; // 0: none was given
    bool divides = false;            // it stood behind a "+"
};

class Fields
{
public:
    Fields(std::span<const Field> kindsOfAll, std::span<const std::string> all)
        : kinds(kindsOfAll), fields(all)
    {
    }

    // What is wrong with the first field that is not of its kind.
    static Verdict check(std::span<const Field> kinds, std::span<const std::string> fields);

    [[nodiscard]] std::size_t count() const { return fields.size(); }
    [[nodiscard]] int whole(std::size_t index) const;
    [[nodiscard]] Cents money(std::size_t index) const;
    [[nodiscard]] Thousandths quantity(std::size_t index) const;
    [[nodiscard]] Rate rate(std::size_t index) const;
    // 0 for an empty field and for a blank.
    [[nodiscard]] char letter(std::size_t index) const;
    // Without the blanks at its end.
    [[nodiscard]] std::string text(std::size_t index) const;
    // As it came.
    [[nodiscard]] const std::string& raw(std::size_t index) const { return fields[index]; }
    [[nodiscard]] Moment moment(std::size_t index, Edge edge) const;

    // A refusal that names the field and says what it takes: "1 to 9".
    [[nodiscard]] Verdict refused(Refusal refusal, std::size_t index, std::string_view takes) const;

private:
    std::span<const Field> kinds;
    std::span<const std::string> fields;
};

} // namespace virtual_printer
