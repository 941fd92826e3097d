#include "tools/replay.h"

#include "tools/decode.h"
#include "tools/exchange_json.h"

namespace telvofm::tools {

Ending replay(const Task& task, Output& output)
{
    const std::string log = readNamedFile(task.log);
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
