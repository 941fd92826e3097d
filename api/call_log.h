// The call log: one text line per exported call, for the technician who wants to know what the till did. It
// is on from the start, in "fmlog.txt" in the current directory. The file is opened, appended to and closed
// for every line; a file that cannot be written loses the line and changes nothing else.
#pragma once

#include "device/amount.h"

#include <atomic>
#include <mutex>
#include <new>
#include <string>
#include <string_view>
#include <type_traits>

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

// How each kind of value appears in a line.
inline void appendToLine(std::string& line, std::string_view text)
{
    line.append(text);
}
inline void appendToLine(std::string& line, const char* label)
{
    line.append(label);
}
inline void appendToLine(std::string& line, char character)
{
    line.push_back(character);
}
inline void appendToLine(std::string& line, bool flag)
{
    line.push_back(flag ? '1' : '0');
}
inline void appendToLine(std::string& line, int number)
{
    line.append(NumberText::whole(number).view());
}
inline void appendToLine(std::string& line, unsigned int number)
{
    line.append(NumberText::whole(number).view());
}
inline void appendToLine(std::string& line, std::size_t number)
{
    line.append(NumberText::whole(static_cast<long long>(number)).view());
}
inline void appendToLine(std::string& line, const Amount& amount)
{
    amount.writeGeneral([&line](std::string_view digits) { line.append(digits); });
}

// The room that a value wants in any case; journals are long, and a line should be built in one piece.
template <typename Part>
std::size_t roomInLine(const Part& part)
{
    constexpr std::size_t numberRoom = 16;
    if constexpr (std::is_convertible_v<const Part&, std::string_view> && !std::is_pointer_v<Part>) {
        return std::string_view(part).size();
    } else {
        return numberRoom;
    }
}

template <typename... Parts>
std::string logLine(const Parts&... parts)
{
    static_assert((!std::is_same_v<Parts, const char*> && ...), "a caller's text is logged from its copy");
    std::string line;
    line.reserve((roomInLine(parts) + ... + 1));
    (appendToLine(line, parts), ...);
    line.push_back('\n');
    return line;
}

// Writes one line made of literal labels and the values behind them, exactly as they stand in the call.
template <typename... Parts>
void logCall(const Parts&... parts)
{
    if (callLog().isOn()) {
        callLog().append(logLine(parts...));
    }
}

// Appends a line about what the printer has answered, whether the log is on or not. One that there is no
// memory for is lost, as one whose file cannot be opened: the caller gets the answer all the same.
template <typename... Parts>
void appendOutcome(const Parts&... parts)
{
    try {
        callLog().append(logLine(parts...));
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
