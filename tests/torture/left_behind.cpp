#include "tests/torture/left_behind.h"

#include "tests/unit/limited_memory.h"

#include <chrono>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <thread>

namespace telvofm::test::torture {
namespace {

std::size_t openFiles()
{
    const std::filesystem::directory_iterator all("/proc/self/fd");
    return static_cast<std::size_t>(std::distance(begin(all), end(all)));
}

std::uint64_t blockedSignals()
{
    sigset_t blocked;
    ::pthread_sigmask(SIG_SETMASK, nullptr, &blocked);
    std::uint64_t first = 0; // all but those of the system's own
    std::memcpy(&first, &blocked, sizeof first);
    return first;
}

} // namespace

LeftBehind::LeftBehind() : files(openFiles()), signals(blockedSignals()) {}

LeftBehind::Found LeftBehind::look(long piecesBefore, const std::function<void()>& renewPrinter)
{
    constexpr int patience = 5000;
    for (int looks = 0; (openFiles() > files || piecesHeld() > piecesBefore) && looks < patience; ++looks) {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
        renewPrinter();
    }
    Found found;
    if (const std::size_t now = openFiles(); now > files) {
        found.left.push_back(std::to_string(now - files) + " files are still open");
        files = now;
    }
    if (const long pieces = piecesHeld() - piecesBefore; pieces > 0 && found.left.empty()) {
        found.isMemory = true;
        found.left.push_back(std::to_string(pieces) + " pieces of memory are left");
    }
    if (const std::uint64_t now = blockedSignals(); now != signals) {
        found.left.emplace_back("other signals are blocked than before");
        signals = now;
    }
    return found;
}

} // namespace telvofm::test::torture
