// How the tool ends: its exit codes, which docs/tool.md lists, and the failure that carries one with a
// sentence for whoever called.
#pragma once

#include <stdexcept>
#include <string>

namespace telvofm::tools {

enum class Ending
{
    done = 0,
    refused = 1,   // the printer refused a call
    wrongUse = 2,  // of the command line
    noLibrary = 3, // it is missing or the wrong one
    noFile = 4,    // one that cannot be read or written
    noAnswer = 5,  // the link failed
    trouble = 6,   // found by the command that looks for it: damage, a difference, something to mend
    failed = 7     // the tool itself
};

class Failure : public std::runtime_error
{
public:
    Failure(Ending how, const std::string& sentence) : std::runtime_error(sentence), ending(how) {}

    Ending ending;
};

} // namespace telvofm::tools
