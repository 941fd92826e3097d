// The call log: one text line per exported call, for the technician who wants to know what the till did. It
// is on from the start, in "fmlog.txt" in the current directory. The file is opened, appended to and closed
// for every line; a file that cannot be written loses the line and changes nothing else.
#pragma once

#include "device/amount.h"

#include <array>
#include <atomic>
#include <mutex>
#include <new>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <variant>

namespace telvofm {

// A label or a value of a line. It refers to what stands in the call that is logged: a caller's text from its
// copy.
using LogPart = std::variant<std::string_view, char, bool, long long, const Amount*>;

inline LogPart logPart(std::string_view text)
{
    return text;
}
inline LogPart logPart(const char* label)
{
    return std::string_view(label);
}
inline LogPart logPart(char character)
{
    return character;
}
inline LogPart logPart(bool flag)
{
    return flag;
}
inline LogPart logPart(int number)
{
    return static_cast<long long>(number);
}
inline LogPart logPart(unsigned int number)
{
    return static_cast<long long>(number);
}
inline LogPart logPart(std::size_t number)
{
    return static_cast<long long>(number);
}
inline LogPart logPart(const Amount& amount)
{
    return &amount;
}

void appendToLine(std::string& line, const LogPart& part);

class CallLog
{
public:
    void switchOn(std::string_view path);
    // Keeps the path.
    void switchOff();
    [[nodiscard]] bool isOn() const { return enabled.load(std::memory_order_relaxed); }

    // Appends a line of these parts in one write, whether the log is on or not.
    void append(std::span<const LogPart> parts);

private:
    std::atomic<bool> enabled = true;
    std::mutex settings;
    std::string path = "fmlog.txt";
};

// The library's one call log. It is never destroyed, so that a thread that outlives main() can still use it.
CallLog& callLog();

// Writes one line made of literal labels and the values behind them, exactly as they stand in the call.
template <typename... Parts>
void logCall(const Parts&... parts)
{
    static_assert((!std::is_same_v<Parts, const char*> && ...), "a caller's text is logged from its copy");
    if (callLog().isOn()) {
        callLog().append(std::array{logPart(parts)...});
    }
}

// Appends a line about what the printer has answered, whether the log is on or not. One that there is no
// memory for is lost, as one whose file cannot be opened: the caller gets the answer all the same.
template <typename... Parts>
void appendOutcome(const Parts&... parts)
{
    try {
        callLog().append(std::array{logPart(parts)...});
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
