// The one table of the printer's commands: code, name, fields with their kinds, the situations in which each
// is legal, and who decides it. Commands that share a code are told apart by the number of their fields.
#pragma once

#include "device/command.h"
#include "virtual_printer/fiscal/verdict.h"

#include <cstdint>
#include <initializer_list>
#include <span>
#include <string_view>

namespace virtual_printer {

class Draft;
class Fields;

// What a field may hold. Numbers never have more decimals than said.
enum class FieldKind
{
    whole,         // a whole number
    money,         // two decimals at most
    quantity,      // three
    rate,          // four, "+" in front of it says that it divides
    degrees,       // ten
    numberOrEmpty, // any decimals: a reverse constant
    letter,        // one byte
    letterOrEmpty,
    text,   // printed or kept; converted between code pages
    secret, // never shown and never kept, but as a password; fiscal/passwords.h
    date,
    dateOrEmpty, // empty for no bound
    any          // not looked at
};

struct Field
{
    FieldKind kind;
    std::string_view name;
};

// Where the printer stands, as far as commands care.
enum class Situation : unsigned
{
    noDay = 1U << 0U,       // between the closure and the next selling day
    idle = 1U << 1U,        // the day is open, no receipt is
    open = 1U << 2U,        // a receipt is open
    paying = 1U << 3U,      // and being paid
    overdue = 1U << 4U,     // the day is longer than 24 hours, no receipt is open
    defiscalized = 1U << 5U // read only
};

class Situations
{
public:
    constexpr Situations(std::initializer_list<Situation> list)
    {
        for (const Situation situation : list) {
            bits |= static_cast<unsigned>(situation);
        }
    }
    [[nodiscard]] constexpr bool contain(Situation situation) const
    {
        return (bits & static_cast<unsigned>(situation)) != 0;
    }

private:
    unsigned bits = 0;
};

// Decides a request whose fields are well formed and that is legal in the situation: changes the draft, or
// says why not; what a refused draft holds is thrown away.
using Decider = Verdict (*)(Draft&, const Fields&);

// What answers a request beyond acceptance.
enum class Wants
{
    nothing,
    verdict, // only whether the memories allow it
    reply,   // data that comes out of the memories (answers/replies.h)
    printing // the same, onto the paper
};

struct CommandRule
{
    telvofm::Command command;
    std::string_view name;
    std::span<const Field> fields;
    Situations legal;
    Decider decide; // null: being legal is enough
    Wants wants = Wants::nothing;
};

std::span<const CommandRule> commandRules();

// The rule for a request with this code and this many fields; null when there is none.
const CommandRule* findRule(unsigned char command, std::size_t fieldCount);
bool isKnown(unsigned char command);

} // namespace virtual_printer
