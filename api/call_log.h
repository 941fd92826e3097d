// The call log: one text line per exported call, for the technician who wants to know what the till did. It
// is on from the start, in "fmlog.txt" in the current directory. The file is opened, appended to and closed
// for every line; a file that cannot be written loses the line and changes nothing else.
#pragma once

#include "api/log_line.h"

#include <atomic>
#include <mutex>
#include <new>
#include <string>
#include <string_view>

namespace telvofm {

class CallLog
{
public:
    void switchOn(std::string_view path);
    // Keeps the path.
    void switchOff();
    [[nodiscard]] bool isOn() const { return enabled.load(std::memory_order_relaxed); }

    // Appends a line in one write, whether the log is on or not.
    void append(std::string_view line);

private:
    std::atomic<bool> enabled = true;
    std::mutex settings;
    std::string path = "fmlog.txt";
};

// The library's one call log. It is never destroyed, so that a thread that outlives main() can still use it.
CallLog& callLog();

template <typename... Parts>
void appendLine(const Parts&... parts)
{
    LogLine line((LogLine::roomFor(parts) + ... + 1));
    (line.add(parts), ...);
    line.add('\n');
    callLog().append(line.view());
}

// Writes one line made of literal labels and the values behind them, exactly as they stand in the call.
template <typename... Parts>
void logCall(const Parts&... parts)
{
    if (callLog().isOn()) {
        appendLine(parts...);
    }
}

// Appends a line about what the printer has answered, whether the log is on or not. One that there is no
// memory for is lost, as one whose file cannot be opened: the caller gets the answer all the same.
template <typename... Parts>
void appendOutcome(const Parts&... parts)
{
    try {
        appendLine(parts...);
    } catch (const std::bad_alloc&) {
        return;
    }
}

// The same while the log is on.
template <typename... Parts>
void logOutcome(const Parts&... parts)
{
    if (callLog().isOn()) {
        appendOutcome(parts...);
    }
}

} // namespace telvofm
