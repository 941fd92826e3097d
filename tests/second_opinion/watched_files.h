// The logs and replies that calls write to the current folder, and what the library prints: what each call
// has added.
#pragma once

#include "tests/second_opinion/record.h"

#include <map>
#include <optional>
#include <string>

namespace telvofm::test {

// The bytes of a file behind its first so many; nothing when there is no file.
std::optional<std::string> contentOf(const std::string& path, std::size_t from = 0);

class WatchedFiles
{
public:
    // Standard output goes to a file of its own from now on.
    WatchedFiles();

    // Whether a log holds anything.
    [[nodiscard]] bool holdsAnything(const std::string& path) const;
    // Adds what has been appended to, emptied and printed since the last time.
    void report(Record& record);

private:
    void shorten();

    std::map<std::string, std::size_t> sizes;
    std::size_t printed = 0;
};

} // namespace telvofm::test
