// The raw log: every byte that passes a link, as "C: " (sent by the library) and "S: " (received) lines of
// two-digit hexadecimal bytes. It is shared by the whole library, off until it is switched on, and opens its
// file anew for every record. A file that cannot be written, or memory that is not to be had, loses the
// record and changes nothing else.
#pragma once

#include <atomic>
#include <mutex>
#include <string>
#include <string_view>

namespace telvofm {

class RawLog
{
public:
    static constexpr std::string_view sent = "C: ";
    static constexpr std::string_view received = "S: ";

    // Empties the file at `path`; an empty path means the one of an earlier call, and without one nothing
    // changes.
    void switchOn(std::string_view path);
    // Keeps the path.
    void switchOff();

    void record(std::string_view direction, std::string_view bytes)
    {
        if (enabled.load(std::memory_order_relaxed)) {
            append(direction, bytes);
        }
    }

private:
    void append(std::string_view direction, std::string_view bytes);

    std::atomic<bool> enabled = false;
    std::mutex settings;
    std::string path;
    // Of the last record written; it survives switching, so a new file may begin in the middle of a line or
    // with a line end: this is meant.
    std::string_view lastDirection;
};

// The library's one raw log. It is never destroyed, so that a thread that outlives main() can still use it.
RawLog& rawLog();

} // namespace telvofm
