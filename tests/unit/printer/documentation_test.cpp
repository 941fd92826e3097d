// docs/virtual-printer.md against the tables of the printer: each refusal and each command has its row there,
// and no row says anything else.
#include "virtual_printer/faults/fault.h"
#include "virtual_printer/language/commands.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <fstream>
#include <iterator>
#include <regex>

namespace virtual_printer {
namespace {

std::string_view nameOf(FieldKind kind)
{
    switch (kind) {
    case FieldKind::whole:
        return "whole";
    case FieldKind::money:
        return "money";
    case FieldKind::quantity:
        return "quantity";
    case FieldKind::rate:
        return "rate";
    case FieldKind::degrees:
        return "degrees";
    case FieldKind::numberOrEmpty:
        return "number or empty";
    case FieldKind::letter:
        return "letter";
    case FieldKind::letterOrEmpty:
        return "letter or empty";
    case FieldKind::text:
        return "text";
    case FieldKind::secret:
        return "secret";
    case FieldKind::date:
        return "date";
    case FieldKind::dateOrEmpty:
        return "date or empty";
    case FieldKind::any:
        break;
    }
    return "any";
}

std::string fieldsOf(const CommandRule& rule)
{
    std::string text;
    for (const Field& field : rule.fields) {
        text += (text.empty() ? "" : ", ") + std::string(field.name) + " " + std::string(nameOf(field.kind));
    }
    return text.empty() ? "none" : text;
}

std::string situationsOf(const CommandRule& rule)
{
    constexpr std::array names = {
        std::pair{Situation::noDay, "noDay"},     std::pair{Situation::idle, "idle"},
        std::pair{Situation::open, "open"},       std::pair{Situation::paying, "paying"},
        std::pair{Situation::overdue, "overdue"}, std::pair{Situation::defiscalized, "defiscalized"}};
    std::string text;
    for (const auto& [situation, name] : names) {
        if (rule.legal.contain(situation)) {
            text += (text.empty() ? "" : ", ") + std::string(name);
        }
    }
    return text;
}

std::string hexOf(telvofm::Command command)
{
    constexpr std::string_view digits = "0123456789ABCDEF";
    const auto code = static_cast<unsigned char>(command);
    return {digits.at(code / digits.size()), digits.at(code % digits.size())};
}

std::vector<std::string> refusalRows()
{
    std::vector<std::string> rows;
    rows.reserve(std::size(refusalTexts));
    for (const RefusalText& text : refusalTexts) {
        rows.push_back("| " + std::to_string(static_cast<int>(text.refusal)) + " | " +
                       std::string(text.name) + " | " + std::string(text.sentence) + " |");
    }
    return rows;
}

std::vector<std::string> commandRows()
{
    std::vector<std::string> rows;
    for (const CommandRule& rule : commandRules()) {
        rows.push_back("| " + hexOf(rule.command) + " | " + std::string(rule.name) + " | " + fieldsOf(rule) +
                       " | " + situationsOf(rule) + " |");
    }
    return rows;
}

std::vector<std::string> rowsOfDocumentation(const std::string& form)
{
    std::ifstream file(TELVOFM_DOCS "/virtual-printer.md");
    std::vector<std::string> rows;
    const std::regex pattern(form);
    for (std::string line; std::getline(file, line);) {
        if (std::regex_match(line, pattern)) {
            rows.push_back(line);
        }
    }
    return rows;
}

// Says which rows are missing and which are none of the printer's.
void expectSameRows(std::vector<std::string> documented, std::vector<std::string> wanted)
{
    std::sort(documented.begin(), documented.end());
    std::sort(wanted.begin(), wanted.end());
    std::vector<std::string> missing;
    std::set_difference(wanted.begin(), wanted.end(), documented.begin(), documented.end(),
                        std::back_inserter(missing));
    for (const std::string& row : missing) {
        ADD_FAILURE() << "not documented:\n" << row;
    }
    std::vector<std::string> wrong;
    std::set_difference(documented.begin(), documented.end(), wanted.begin(), wanted.end(),
                        std::back_inserter(wrong));
    for (const std::string& row : wrong) {
        ADD_FAILURE() << "documented, but not so:\n" << row;
    }
}

TEST(PrinterDocumentation, HasEveryRefusal)
{
    expectSameRows(rowsOfDocumentation(R"(\| [0-9]+ \| [a-zA-Z]+ \| [A-Z][^|]+\. \|)"), refusalRows());
}

TEST(PrinterDocumentation, HasEveryCommand)
{
    expectSameRows(rowsOfDocumentation(R"(\| [0-9A-F]{2} \| \w+ \| [^|]+ \| [^|]+ \|)"), commandRows());
}

TEST(PrinterDocumentation, HasEveryKindOfField)
{
    static_assert(FieldKind::whole == FieldKind(0));
    for (int kind = 0; kind <= static_cast<int>(FieldKind::any); ++kind) {
        std::string name(nameOf(FieldKind(kind)));
        name = name.substr(0, name.find(" or empty")); // which a sentence says of all kinds
        EXPECT_EQ(rowsOfDocumentation(R"(\| )" + name + R"( \| [^|]+ \| (none|[0-9, ]+) \|)").size(), 1U)
            << name;
    }
}

TEST(PrinterDocumentation, HasEveryFault)
{
    std::string names;
    for (const std::string& row : rowsOfDocumentation(R"(\| (`[a-zA-Z]+`(, )?)+ \|.*\|.*\|)")) {
        names += row.substr(0, row.find('|', 1));
    }
    for (const FaultRule& rule : faultRules) {
        EXPECT_NE(names.find("`" + std::string(rule.name) + "`"), std::string::npos) << rule.name;
    }
}

// 0 would read as success; 17, 19 and 64 mean something on the link.
TEST(PrinterDocumentation, NumbersRefusalsWithoutTheOnesOfTheLink)
{
    std::vector<int> numbers;
    for (const RefusalText& text : refusalTexts) {
        const int number = static_cast<int>(text.refusal);
        EXPECT_THAT(number, ::testing::AllOf(::testing::Ge(1), ::testing::Le(63), ::testing::Ne(17),
                                             ::testing::Ne(19)));
        EXPECT_THAT(numbers, ::testing::Not(::testing::Contains(number)));
        numbers.push_back(number);
    }
}

} // namespace
} // namespace virtual_printer
