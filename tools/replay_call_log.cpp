#include "tools/call_log_reader.h"
#include "tools/console.h"
#include "tools/given_arguments.h"
#include "tools/performed_call.h"
#include "tools/replay.h"
#include "tools/replay_folder.h"
#include "tools/windows_1250.h"

#include <algorithm>

namespace telvofm::tools {
namespace {

// A call of the log with everything that it needs, or with what it lacks.
struct RepeatedCall
{
    const LoggedCall* logged;
    std::vector<std::string> given; // in Windows-1250
    std::string lack;
};

bool isPassword(const Parameter& parameter)
{
    return parameter.name == "password" || parameter.name.ends_with("Password");
}

// Bitmaps are read; everything else that is named so is written.
bool isWritten(const Export& function, const Parameter& parameter)
{
    return (parameter.name == "fileName" || parameter.name == "journalFile") &&
           !function.name.starts_with("prepare");
}

class Completion
{
public:
    explicit Completion(const Task& of)
        : password(of.password), folder(of.isDryRun && of.folder.empty() ? "." : of.folder)
    {
    }

    [[nodiscard]] RepeatedCall complete(const LoggedCall& call)
    {
        RepeatedCall repeated{&call, {}, {}};
        const auto parameters = givenParameters(*call.function);
        for (std::size_t i = 0; i < parameters.size(); ++i) {
            const Parameter& parameter = parameters[i];
            if (isWritten(*call.function, parameter)) {
                repeated.given.push_back(nameForLibrary(folder.fileOfLine(call.line)));
            } else if (call.given[i]) {
                repeated.given.push_back(*call.given[i]);
            } else if (parameter.name == "device") {
                repeated.given.emplace_back("1"); // the only one, as a rule
            } else if (isPassword(parameter) && !password.empty()) {
                repeated.given.push_back(windows1250Of(password));
            } else {
                repeated.given.emplace_back();
                repeated.lack = "the log does not hold its " + std::string(parameter.name) +
                                (isPassword(parameter) ? "; give it with --password" : "");
            }
        }
        return repeated;
    }

private:
    std::string password;
    ReplayFolder folder;
};

std::string wordsOf(const RepeatedCall& call)
{
    std::string words =
        "line " + std::to_string(call.logged->line) + ": " + std::string(call.logged->function->name);
    for (const std::string& one : call.given) {
        const bool isPlain = !one.empty() && one.find_first_of(" \"'") == std::string::npos;
        const std::string text = readableOnOneLine(one, windows1250);
        words += isPlain ? " " + text : " \"" + text + "\"";
    }
    return words + (call.logged->isRounded ? " (rounded to the six digits that the log holds)" : "");
}

Json jsonOf(const RepeatedCall& call)
{
    Json json = {{"line", call.logged->line}, {"function", call.logged->function->name}};
    json["arguments"] = Json::array();
    for (const std::string& one : call.given) {
        json["arguments"].push_back(utf8Of(one, windows1250));
    }
    json["rounded"] = call.logged->isRounded;
    if (!call.lack.empty()) {
        json["lack"] = call.lack;
    }
    if (call.logged->result) {
        json["loggedResult"] = utf8Of(*call.logged->result, windows1250);
    }
    return json;
}

// What came back other than in the log; empty when it is the same. A log does not hold codes: its calls count
// as done.
std::string differenceOf(const LoggedCall& logged, const PerformedCall& performed)
{
    if (performed.code.value_or(0) != 0) {
        return "returned " + performed.returned + ", " + meaningOf(performed);
    }
    if (logged.result && performed.data && *logged.result != *performed.data) {
        return "the printer says \"" + readableOnOneLine(*performed.data, windows1250) +
               "\", in the log it said \"" + readableOnOneLine(*logged.result, windows1250) + "\"";
    }
    return {};
}

class CallLogReplay
{
public:
    explicit CallLogReplay(const PrinterOptions& printer) : session(printer) {}

    // What was different; empty when nothing was.
    std::string repeat(const RepeatedCall& call)
    {
        const std::string_view name = call.logged->function->name;
        if (name.starts_with("openFM")) {
            session.open(); // the printer of this command line, whatever the log says
            return {};
        }
        if (name == "closeFM") {
            session.close();
            return {};
        }
        if (!call.lack.empty()) {
            return "left out: " + call.lack;
        }
        if (!session.isOpen()) {
            session.open();
        }
        const PerformedCall performed =
            perform(*call.logged->function, withHidden(*call.logged->function, call.given), context);
        return differenceOf(*call.logged, performed);
    }

private:
    PrinterSession session;
    CallContext context;
};

} // namespace

Ending replayCallLog(const Task& task, std::string_view log, Output& output)
{
    const CallLogContents contents = readCallLog(log);
    if (contents.calls.empty()) {
        throw Failure(Ending::noFile, task.log + " holds no call; name a call log or a raw log");
    }
    if (task.isSerial || task.isTcp) {
        throw Failure(Ending::wrongUse, std::string(task.isSerial ? "--serial" : "--tcp") +
                                            " is for raw logs, and " + task.log +
                                            " is a call log; leave it out");
    }
    Completion completion(task);
    std::vector<RepeatedCall> calls; // all are looked at before the first is made
    for (const LoggedCall& logged : contents.calls) {
        calls.push_back(completion.complete(logged));
    }
    std::optional<CallLogReplay> replay;
    if (!task.isDryRun) {
        replay.emplace(task.printer);
    }
    ReplayCount count(task, output);
    for (const RepeatedCall& call : calls) {
        const std::string difference = replay ? replay->repeat(call) : "";
        const std::string& remark = replay ? difference : call.lack;
        output.line(wordsOf(call) + (remark.empty() ? "" : "\n    " + remark));
        Json json = jsonOf(call);
        if (replay) {
            json["difference"] = difference.empty() ? Json() : Json(difference);
        }
        output.document["calls"].push_back(json);
        if (replay && !count.add(!difference.empty())) {
            break;
        }
    }
    return count.end("calls", contents.damages, contents.calls.size());
}

} // namespace telvofm::tools
