// The exports that send no command, as they are tortured: the opens, raw access, the logs, pictures, result
// objects.
#pragma once

#include "tests/sweep/fault.h"

#include <functional>
#include <set>
#include <string>
#include <vector>

namespace telvofm::test::torture {

// What it may return, and what it returns when nothing fails.
struct FreeCall
{
    std::string name;          // of the export
    bool opensItself;          // otherwise within a session
    bool mayThrow;             // when memory ends
    std::function<int()> call; // nothing is allocated around the export
    std::set<int> results;
    int undisturbed;
    std::function<void()> before = [] {}; // undisturbed as well
    std::string sends = {}; // the request that the printer has heard when it returns `undisturbed`
};

// `folder` has the picture and gets files; `awaitAnswer` returns when what the printer says can be read.
std::vector<FreeCall> freeCalls(const std::string& port, sweep::Link link, const std::string& folder,
                                const std::function<void()>& awaitAnswer);

} // namespace telvofm::test::torture
