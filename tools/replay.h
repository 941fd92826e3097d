// `telvofm replay`: repeats on a printer what a log holds, so that the trouble of a shop happens again.
#pragma once

#include "tools/command_line.h"
#include "tools/ending.h"
#include "tools/output.h"
#include "tools/raw_log_reader.h"

#include <string_view>
#include <vector>

namespace telvofm::tools {

// Of a call log or a raw log, whichever it is.
Ending replay(const Task& task, Output& output);

Ending replayCallLog(const Task& task, std::string_view log, Output& output);
Ending replayRawLog(const Task& task, std::string_view log, Output& output);

// Counts what was repeated and what was different, and tells both.
class ReplayCount
{
public:
    ReplayCount(const Task& of, Output& to) : task(of), output(to) {}

    // Whether the replay goes on behind what was repeated.
    bool add(bool isDifferent)
    {
        ++repeated;
        different += isDifferent ? 1 : 0;
        return !isDifferent || task.goesOn;
    }

    // At the end, with what the log lacks. `things` are "calls" or "requests".
    Ending end(std::string_view things, const std::vector<Damage>& damages, std::size_t all);

private:
    const Task& task;
    Output& output;
    int repeated = 0;
    int different = 0;
};

} // namespace telvofm::tools
