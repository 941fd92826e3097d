// A printer whose memory holds what a test has put there, and a till that asks it by the names of its
// commands.
#pragma once

#include "virtual_printer/answers/replies.h"
#include "virtual_printer/paper/layout.h"
#include "virtual_printer/printers/new_printer.h"
#include "virtual_printer/printers/printer.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace virtual_printer {

inline Moment at(std::string_view text)
{
    return parseMoment(text, Edge::first).value();
}

// A receipt of one item, as sales make it.
inline Document receiptOf(int number, int closure, std::string_view moment,
                          const std::string& name = "Chlieb", Cents sum = 1250)
{
    Document receipt;
    receipt.number = number;
    receipt.closure = closure;
    receipt.moment = at(moment);
    receipt.lines = {{.kind = Line::Kind::heading, .text = "TELVOFM"},
                     {.kind = Line::Kind::pair,
                      .text = "Receipt " + std::to_string(number),
                      .right = onPaper(receipt.moment)},
                     {.kind = Line::Kind::item,
                      .text = name,
                      .unit = "ks",
                      .vat = 'A',
                      .quantity = 1000,
                      .unitPrice = sum,
                      .sum = sum},
                     {.kind = Line::Kind::total, .text = "TOTAL EUR", .sum = sum},
                     {.kind = Line::Kind::cut}};
    receipt.total = sum;
    receipt.byVat = {{'A', sum}};
    return receipt;
}

inline Document closureDocument(int number, std::string_view moment)
{
    Document document;
    document.kind = Document::Kind::closure;
    document.number = number;
    document.closure = number;
    document.moment = at(moment);
    document.lines = {{.kind = Line::Kind::heading, .text = "DAILY CLOSURE " + std::to_string(number)},
                      {.kind = Line::Kind::cut}};
    return document;
}

// Its day had one receipt under the letter A.
inline Closure closureOf(int number, std::string_view moment, Cents sum)
{
    Closure closure;
    closure.number = number;
    closure.moment = at(moment);
    closure.sums.byVat = {{'A', sum}};
    closure.sums.receipts = 1;
    return closure;
}

class AskedPrinter : public testing::Test
{
protected:
    void keep(Document document) { keptDocuments.push_back(std::move(document)); }
    void keep(Closure closure) { keptClosures.push_back(std::move(closure)); }

    // A day of one receipt, sold at noon and closed at ten.
    void keepDay(int number, const std::string& date, Cents sum)
    {
        keep(receiptOf(number, number, date + " 12:00", "Chlieb", sum));
        keep(closureDocument(number, date + " 22:00"));
        keep(closureOf(number, date + " 22:00", sum));
    }

    // What is kept and set so far gets into the memory together.
    void commit()
    {
        Draft draft(committed, at(now));
        draft.standing() = standing;
        draft.settings() = settings;
        draft.pictures() = pictures;
        if (receipt) {
            draft.beginReceipt(*receipt);
        }
        for (Document& document : keptDocuments) {
            draft.keep(std::move(document));
        }
        for (Closure& closure : keptClosures) {
            draft.keep(std::move(closure));
        }
        keptDocuments.clear();
        keptClosures.clear();
        memory.commit(committed, draft);
        committed = draft.next;
    }

    // From the first question on the memory is the printer's.
    Printer& asked()
    {
        if (!printer) {
            commit();
            printer.emplace(std::move(memory), committed, [this] { return at(now); });
            printer->takeHappened();
        }
        return *printer;
    }

    Answer ask(std::string_view command, const std::vector<std::string>& fields = {})
    {
        for (const CommandRule& rule : commandRules()) {
            if (rule.name == command) {
                return asked().execute({1, static_cast<unsigned char>(rule.command), fields},
                                       CodePage::windows1250);
            }
        }
        ADD_FAILURE() << "There is no command " << command;
        return {};
    }

    // The same, but only why it is refused.
    Refusal refusalOf(std::string_view command, const std::vector<std::string>& fields = {})
    {
        return ask(command, fields).refusal;
    }

    // Nothing else is wrong with paper and cover.
    void let(bool Hardware::*beTrue)
    {
        Hardware hardware;
        hardware.*beTrue = true;
        asked().changeHardware(hardware);
    }

    // Of a request that is answered.
    std::string dataOf(std::string_view command, const std::vector<std::string>& fields = {})
    {
        Answer answer = ask(command, fields);
        EXPECT_EQ(answer.refusal, Refusal::none) << command;
        EXPECT_TRUE(answer.data.has_value()) << command;
        return wholeOf(answer.data.value_or(ReplyData("no answer")));
    }

    // As a till that reads it block by block.
    static std::string wholeOf(ReplyData data)
    {
        std::string whole;
        for (std::string_view block = data.takeBlock(); !block.empty(); block = data.takeBlock()) {
            whole += block;
            data.fetch();
        }
        return whole;
    }

    // What the printer prints upon a request that it accepts.
    std::vector<std::string> paperOf(std::string_view command, const std::vector<std::string>& fields = {})
    {
        takePaper();
        EXPECT_EQ(ask(command, fields).refusal, Refusal::none) << command;
        return takePaper();
    }

    // What has been printed since the last call.
    std::vector<std::string> takePaper()
    {
        std::vector<std::string> paper;
        for (const Happened& event : asked().takeHappened()) {
            for (const Shown& shown : event.shown) {
                if (const auto* printed = std::get_if<Printed>(&shown)) {
                    for (std::string& line : layout(printed->line, columns())) {
                        paper.push_back(std::move(line));
                    }
                }
            }
        }
        return paper;
    }

    [[nodiscard]] std::size_t columns() const { return static_cast<std::size_t>(settings.columns); }

    static std::vector<std::string> linesIn(std::string_view text)
    {
        std::vector<std::string> lines;
        while (!text.empty()) {
            const std::size_t size = std::min(text.find("\r\n"), text.size());
            lines.emplace_back(text.substr(0, size));
            text.remove_prefix(std::min(size + 2, text.size()));
        }
        return lines;
    }

    static std::string centred(const std::string& text)
    {
        constexpr std::size_t width = 40;
        return std::string((width - text.size()) / 2, ' ') + text;
    }

    // A line of the paper with its two parts at the edges.
    static std::string pair(const std::string& left, const std::string& right)
    {
        constexpr std::size_t width = 40;
        return left + std::string(width - left.size() - right.size(), ' ') + right;
    }

    std::string now = "2026-01-02 08:00";
    Standing standing = *readyToSell().standing;
    Settings settings = *readyToSell().settings;
    Pictures pictures;
    std::optional<Receipt> receipt;
    const std::string doubleRule = std::string(40, '=');

private:
    Memory memory;
    State committed;
    std::vector<Document> keptDocuments;
    std::vector<Closure> keptClosures;
    std::optional<Printer> printer;
};

} // namespace virtual_printer
