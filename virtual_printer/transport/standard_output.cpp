#include "virtual_printer/transport/standard_output.h"

#include <cstdio>
#include <thread>
#include <utility>

namespace virtual_printer {

StandardOutput::StandardOutput()
{
    std::thread([this] { write(); }).detach();
}

void StandardOutput::say(std::string line)
{
    {
        const std::scoped_lock lock(state);
        if (lines.size() == longestQueue) {
            lines.pop_front();
            ++lost;
        }
        lines.push_back(std::move(line));
    }
    changed.notify_all();
}

bool StandardOutput::flush(std::chrono::milliseconds limit)
{
    std::unique_lock lock(state);
    return changed.wait_for(lock, limit, [this] { return lines.empty() && !isWriting; });
}

void StandardOutput::write()
{
    std::unique_lock lock(state);
    for (;;) {
        changed.wait(lock, [this] { return !lines.empty(); });
        std::string text;
        if (lost > 0) {
            text = "... " + std::to_string(std::exchange(lost, 0)) +
                   " lines were not read in time and are lost\n";
        }
        for (std::string& line : lines) {
            text.append(line).push_back('\n');
        }
        lines.clear();
        isWriting = true;
        lock.unlock();
        std::fwrite(text.data(), 1, text.size(), stdout);
        std::fflush(stdout);
        lock.lock();
        isWriting = false;
        changed.notify_all();
    }
}

} // namespace virtual_printer
