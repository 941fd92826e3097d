#include "tools/replay.h"

#include "tools/decode.h"
#include "tools/exchange_json.h"
#include "tools/paths.h"

namespace telvofm::tools {
namespace {

// A raw log is emptied when it is begun, and the calls of a call log would stand behind those of the shop.
void refuseItsOwnLog(const Task& task)
{
    for (const std::string& written : {task.printer.callLog, task.printer.rawLog}) {
        std::error_code isNew;
        if (!written.empty() && std::filesystem::equivalent(pathOf(written), pathOf(task.log), isNew)) {
            throw Failure(Ending::wrongUse,
                          written + " is the log that is replayed; name another file for the new one");
        }
    }
}

} // namespace

Ending replay(const Task& task, Output& output)
{
    const std::string log = readNamedFile(task.log);
    refuseItsOwnLog(task);
    const RawLog raw = readRawLog(log); // of a call log no line is understood
    return raw.runs.size() > raw.damages.size() ? replayRawLog(task, log, output)
                                                : replayCallLog(task, log, output);
}

Ending ReplayCount::end(std::string_view things, const std::vector<Damage>& damages, std::size_t all)
{
    for (const Damage& damage : damages) {
        output.line("line " + std::to_string(damage.line) + ": " + damage.what);
    }
    output.document["damages"] = jsonOf(damages);
    output.document["inLog"] = all;
    if (task.isDryRun) {
        output.line(std::to_string(all) + " " + std::string(things) + " in the log, nothing was sent");
    } else {
        output.document["repeated"] = repeated;
        output.document["different"] = different;
        output.line(std::to_string(repeated) + " of " + std::to_string(all) + " " + std::string(things) +
                    " repeated, " + std::to_string(different) + " different");
    }
    return different == 0 && damages.empty() ? Ending::done : Ending::trouble;
}

} // namespace telvofm::tools
