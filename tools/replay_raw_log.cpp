#include "tools/decoded_lines.h"
#include "tools/hexadecimal.h"
#include "tools/raw_link.h"
#include "tools/replay.h"
#include "tools/unit_words.h"
#include "tools/windows_1250.h"

#include <algorithm>
#include <utility>

namespace telvofm::tools {
namespace {

std::string wordsOf(Outcome outcome, int code, const std::string& reply, const CodePage& codePage)
{
    switch (outcome) {
    case Outcome::accepted:
        return "accepted";
    case Outcome::refused:
        return "refused with error " + std::to_string(code);
    case Outcome::reply:
        return "answered \"" + readableOnOneLine(reply, codePage) + "\"";
    case Outcome::none:
        break;
    }
    return code == 0 ? "not answered" : "failed with " + std::to_string(code);
}

// Empty when the printer has answered as it did in the log, or the log has no answer.
std::string differenceOf(const Exchange& logged, const RepeatedExchange& now, const CodePage& codePage)
{
    const bool isSame = logged.outcome == now.outcome && logged.reply == now.reply &&
                        (now.outcome != Outcome::refused || logged.refusal == now.code);
    if (isSame || (logged.outcome == Outcome::none && now.code >= 0)) {
        return {};
    }
    return wordsOf(now.outcome, now.code, now.reply, codePage) + " now, " +
           wordsOf(logged.outcome, logged.refusal, logged.reply, codePage) + " in the log";
}

std::string wordsOf(const Exchange& exchange, const CodePage& codePage)
{
    return "line " + std::to_string(exchange.request.line) + ": " + wordsOf(exchange.request, codePage);
}

std::vector<Exchange> wholeOnes(const std::vector<Unit>& units)
{
    std::vector<Exchange> exchanges = exchangesOf(units);
    std::erase_if(exchanges, [](const Exchange& exchange) { return !exchange.request.isWhole; });
    return exchanges;
}

// No call is made of the library, whose options these are.
void refuseOptionsOfCallLogs(const Task& task)
{
    const std::pair<const char*, const std::string*> options[] = {{"--call-log", &task.printer.callLog},
                                                                  {"--library", &task.printer.library},
                                                                  {"--password", &task.password},
                                                                  {"--files", &task.folder}};
    for (const auto& [name, given] : options) {
        if (!given->empty()) {
            throw Failure(Ending::wrongUse, std::string(name) + " is for call logs, and " + task.log +
                                                " is a raw log; leave it out");
        }
    }
}

} // namespace

Ending replayRawLog(const Task& task, std::string_view log, Output& output)
{
    refuseOptionsOfCallLogs(task);
    const CodePage& codePage = task.printer.address.starts_with("COM") ? codePage852 : windows1250;
    const RawLog raw = readRawLog(log);
    const std::vector<Unit> units = unitsOf(raw.runs);
    const std::vector<Exchange> exchanges = wholeOnes(units);
    const auto link = task.isDryRun ? nullptr : openRawLink(task.printer);
    ReplayCount count(task, output);
    for (const Exchange& exchange : exchanges) {
        Json json = {{"line", exchange.request.line},
                     {"command", commandOf(exchange.request)},
                     {"request", hexadecimal(exchange.request.bytes)}};
        std::string difference;
        if (link) {
            difference = differenceOf(exchange, repeat(*link, exchange), codePage);
            json["difference"] = difference.empty() ? Json() : Json(difference);
        }
        output.line(wordsOf(exchange, codePage) + (difference.empty() ? "" : "\n    " + difference));
        output.document["requests"].push_back(json);
        if (link && !count.add(!difference.empty())) {
            break;
        }
    }
    if (link) {
        link->close();
    }
    return count.end("requests", damagesOf(raw, units), exchanges.size());
}

} // namespace telvofm::tools
