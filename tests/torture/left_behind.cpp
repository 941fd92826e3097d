#include "tests/torture/left_behind.h"

#include "tests/unit/limited_memory.h"

#include <chrono>
#include <filesystem>
#include <thread>

namespace telvofm::test::torture {
namespace {

std::size_t openFiles()
{
    const std::filesystem::directory_iterator all("/proc/self/fd");
    return static_cast<std::size_t>(std::distance(begin(all), end(all)));
}

// What they lead to.
std::string namesOfOpenFiles()
{
    std::string names;
    for (const auto& file : std::filesystem::directory_iterator("/proc/self/fd")) {
        std::error_code closedMeanwhile;
        names += " " + std::filesystem::read_symlink(file.path(), closedMeanwhile).string();
    }
    return names;
}

} // namespace

LeftBehind::LeftBehind() : files(openFiles()) {}

LeftBehind::Found LeftBehind::look(long piecesBefore, const std::function<void()>& renewPrinter)
{
    constexpr int patience = 5000;
    for (int looks = 0; (openFiles() > files || piecesHeld() > piecesBefore) && looks < patience; ++looks) {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
        renewPrinter();
    }
    Found found;
    if (const std::size_t now = openFiles(); now > files) {
        found.left.push_back(std::to_string(now - files) + " files are still open, of" + namesOfOpenFiles());
        files = now;
    }
    if (const long pieces = piecesHeld() - piecesBefore; pieces > 0 && found.left.empty()) {
        found.isMemory = true;
        found.left.push_back(std::to_string(pieces) + " pieces of memory are left");
    }
    return found;
}

} // namespace telvofm::test::torture
