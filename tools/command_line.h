// The tool's command line: what is to be done, read from its words.
#pragma once

#include "tools/printer_session.h"

#include <string>
#include <vector>

namespace telvofm::tools {

enum class Errand
{
    none, // everything is said already: `said` holds a help text or the version
    call,
    codes,
    completion,
    decode,
    doctor,
    replay
};

struct Task
{
    Errand errand = Errand::none;
    std::string said;
    bool isJson = false;
    PrinterOptions printer;
    bool isList = false;
    std::vector<std::string> words; // of calls
    std::string code;
    std::string shell;
    std::string log;
    bool isSerial = false; // the raw log is of a serial link
    bool isDryRun = false;
    bool goesOn = false; // behind a difference
    std::string password;
    std::string folder; // for files that replayed calls write
};

// Throws a Failure with a sentence when it cannot be understood.
Task readCommandLine(const std::vector<std::string>& words);

// The options that each command takes, for shell completion.
struct CommandWords
{
    std::string name;
    std::vector<std::string> options;
};
std::vector<CommandWords> commandWords();

} // namespace telvofm::tools
