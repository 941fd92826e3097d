// A wire script as the runner plays it; README.md in this folder describes the text form.
#pragma once

#include "tests/wire/bytes.h"

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace wire {

// One thing that the printer's end does, in order.
struct Step
{
    enum class Kind
    {
        expect,
        answer,
        quiet, // the library sends nothing for a moment
        lines, // the modem lines that are on from now on; at a call's beginning before the call is made
        close
    };

    Kind kind;
    int line;
    std::string bytes;         // of `lines`: their state as the file of the modem lines has it
    std::size_t pieceSize = 0; // 0: sent in one piece
};

// What a file must hold after a call.
struct FileCheck
{
    std::string name;
    std::optional<std::string> contents; // nothing: the file must not exist
    bool isText = false;                 // its lines may end as the platform ends them
};

struct Call
{
    int line = 0;
    std::string name;
    std::vector<Word> arguments;
    std::vector<Step> steps;
    std::optional<Word> result;
    std::string log;      // written before anything is sent
    std::string logAfter; // written after the reply
    std::optional<std::string> buffer;
    std::optional<std::string> resultObject;
    std::optional<unsigned int> count;
    std::vector<FileCheck> files;
    bool reopensAfterwards = false;
};

struct Script
{
    bool isSerial = false;
    bool opensItself = false;
    bool playsLogOn = true;
    bool playsLogOff = true;
    std::vector<Call> calls;
};

using Variables = std::map<std::string, std::string>;

// Throws std::runtime_error that names the line. `$name` is replaced by its variable, also inside quoted
// texts.
Script readScript(const std::filesystem::path& path, const Variables& variables);

} // namespace wire
