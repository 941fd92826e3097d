// What a call may leave behind in its process: nothing. Open files and memory are as before.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace telvofm::test::torture {

class LeftBehind
{
public:
    LeftBehind();

    struct Found
    {
        std::vector<std::string> left;
        bool isMemory =
            false; // the printer's end is in this process too: it may be a buffer of its that has grown
    };

    // What there is more of than at the beginning, or than `piecesBefore` of memory; each is told once. The
    // printer's end lets go a moment later: `renewPrinter` lets it forget.
    Found look(long piecesBefore, const std::function<void()>& renewPrinter);

private:
    std::size_t files;
};

} // namespace telvofm::test::torture
