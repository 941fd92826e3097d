// What a script says about the outcome of a call, compared with what came out.
#pragma once

#include "tests/wire/script.h"
#include "tools/export_table.h"

#include <filesystem>
#include <string>

namespace wire {

// Each returns what is wrong, or an empty text.
std::string checkResult(const Call& call, const std::string& result);
std::string checkOutputs(const Call& call, const telvofm::tools::CallContext& context,
                         const std::string& resultObject);
std::string checkFiles(const Call& call, const std::filesystem::path& folder);

// Follows the log file: what each call has added to it since the last one that was done.
class LogFollower
{
public:
    explicit LogFollower(std::filesystem::path logFile) : path(std::move(logFile)) {}

    [[nodiscard]] std::string check(const std::string& expected) const;
    void callIsDone();

private:
    std::filesystem::path path;
    std::size_t seen = 0;
};

// The whole file, byte for byte; nothing when there is none. Its name may hold any bytes, as names do that
// are given to the library.
std::optional<std::string> readFile(const std::string& path);

} // namespace wire
