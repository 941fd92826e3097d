#include "tools/command_line.h"

#include "api/telvofm.h"
#include "tools/ending.h"
#include "tools/possible_task.h"
#include "tools/wrong_line.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <map>

namespace telvofm::tools {
namespace {

void addCommon(CLI::App& command, Task& task)
{
    command.allow_windows_style_options(false); // a path may begin with "/"
    command.add_flag("--json", task.isJson, "Write one JSON document and nothing else to standard output");
}

// The parser takes an option for the value that is missing in front of it, and no word for a value.
void addName(CLI::App& command, const std::string& names, std::string& name, const std::string& description)
{
    const std::string option = names.substr(names.find("--"));
    command.add_option_function<std::string>(
        names,
        [option, &name](const std::string& given) {
            if (given.empty()) {
                throw Failure(Ending::wrongUse, option + " is empty; write its value behind it");
            }
            if (given.starts_with('-') && given.size() > 1) {
                throw Failure(Ending::wrongUse, option + ": '" + given +
                                                    "' reads like an option; write a value in front of it");
            }
            name = given;
        },
        description);
}

// One of a few numbers, told apart as they are written.
void addNumber(CLI::App& command, const std::string& option, unsigned& number, const std::string& description,
               const std::map<std::string, unsigned>& numbers, const std::string& isNone)
{
    command.add_option_function<std::string>(
        option,
        [option, &number, numbers, isNone](const std::string& given) {
            const auto found = numbers.find(given);
            if (found == numbers.end()) {
                throw Failure(Ending::wrongUse, option + ": '" + given + "' is " + isNone);
            }
            number = found->second;
        },
        description);
}

void addLibrary(CLI::App& command, Task& task)
{
    addName(command, "--library", task.printer.library,
            "The library's file; without it the one beside this tool or the system's");
}

void addPrinter(CLI::App& command, Task& task)
{
    addName(command, "-p,--printer", task.printer.address,
            "HOST, HOST:PORT, COM7 or, on Linux, COM/dev/ttyUSB0");
    addNumber(command, "--baud", task.printer.baud, "The speed of a serial port: 57600 or 115200",
              {{"57600", 57600}, {"115200", 115200}}, "neither 57600 nor 115200");
}

void addLogs(CLI::App& command, Task& task)
{
    addName(command, "--call-log", task.printer.callLog, "Append the calls to this file");
    addName(command, "--raw-log", task.printer.rawLog, "Write every byte on the link into this file");
}

void addCall(CLI::App& app, Task& task)
{
    auto& call = *app.add_subcommand("call", "Call functions of the library by their names");
    addCommon(call, task);
    addLibrary(call, task);
    addPrinter(call, task);
    addNumber(call, "--stop-bits", task.printer.stopBits, "1, 2, or 15 for one and a half",
              {{"1", 1}, {"2", 2}, {"15", 15}}, "none of 1, 2 and 15, which is one and a half");
    addLogs(call, task);
    call.add_flag("--list", task.isList, "List the functions with their arguments");
    call.prefix_command();
    call.footer(
        "Behind the options: FUNCTION [ARGUMENT...] [--then FUNCTION [ARGUMENT...]]...\n\n"
        "Buffers, result objects and sizes are left out; texts are in UTF-8, bytes hexadecimal pairs\n"
        "or @FILE.\n\nExamples:\n"
        "  telvofm call getVersion\n"
        "  telvofm call -p 192.168.1.10:9100 getVariable 1 TOTAL\n"
        "  telvofm call -p COM7 --json printReport 1 X 0\n"
        "  telvofm call -p 192.168.1.10 prepareGraphicHeader 1 logo.bmp --then loadGHMMC 1 1 0");
}

void addDecode(CLI::App& app, Task& task)
{
    auto& decode = *app.add_subcommand("decode", "Show a raw log as exchanges");
    addCommon(decode, task);
    decode.add_option("RAWLOG", task.log, "A file that setRawLogginOn has made")->required();
    decode.add_flag("--serial", task.isSerial, "The log is of a serial link: texts are in code page 852");
    decode.footer("Damaged places are named, and the decoding goes on behind them.\n\nExamples:\n"
                  "  telvofm decode raw.log\n"
                  "  telvofm decode --serial --json raw.log");
}

void addReplay(CLI::App& app, Task& task)
{
    auto& replay = *app.add_subcommand(
        "replay", "Repeat the calls of a call log, or the requests of a raw log, on a printer");
    addCommon(replay, task);
    addLibrary(replay, task);
    addPrinter(replay, task);
    addLogs(replay, task);
    replay.add_option("LOG", task.log, "A call log or a raw log")->required();
    replay.add_flag("--dry-run", task.isDryRun, "Show what would be done; no printer is needed");
    replay.add_flag("--go-on", task.goesOn, "Go on behind a difference instead of stopping");
    replay.add_option("--password", task.password, "Take this for passwords that the call log hides");
    addName(replay, "--files", task.folder, "Keep the files that replayed calls write in this folder");
    replay.footer("Use a printer for tests: whatever the log sold is sold again.\n\nExamples:\n"
                  "  telvofm replay --dry-run fmlog.txt\n"
                  "  telvofm replay -p 127.0.0.1:9100 fmlog.txt\n"
                  "  telvofm replay -p 127.0.0.1:9100 --go-on --json raw.log");
}

void addDoctor(CLI::App& app, Task& task)
{
    auto& doctor = *app.add_subcommand("doctor", "Look for what keeps a till from its printer");
    addCommon(doctor, task);
    addLibrary(doctor, task);
    addPrinter(doctor, task);
    doctor.footer("Prints nothing on the printer and sends it no command.\n\nExamples:\n"
                  "  telvofm doctor\n"
                  "  telvofm doctor -p COM/dev/ttyUSB0\n"
                  "  telvofm doctor -p 192.168.1.10:9100 --json");
}

void addCodes(CLI::App& app, Task& task)
{
    auto& codes = *app.add_subcommand("codes", "Say what a returned code means, and what to do");
    addCommon(codes, task);
    codes.add_option("CODE", task.code, "The code; without it all are shown");
    codes.footer("Examples:\n"
                 "  telvofm codes -10202\n"
                 "  telvofm codes --json");
}

void addCompletion(CLI::App& app, Task& task)
{
    auto& completion = *app.add_subcommand("completion", "Write what completes this tool's words in a shell");
    addCommon(completion, task);
    completion.add_option("SHELL", task.shell, "bash")->required();
    completion.footer("Examples:\n"
                      "  telvofm completion bash > /etc/bash_completion.d/telvofm\n"
                      "  source <(telvofm completion bash)");
}

void describe(CLI::App& app, Task& task)
{
    addCommon(app, task);
    app.set_version_flag("--version", "telvofm " TELVOFM_VERSION);
    app.require_subcommand(0, 1); // what is missing is said in words of our own
    app.footer("Exit codes:\n"
               "  0  done\n"
               "  1  the printer refused a call\n"
               "  2  the command line is wrong\n"
               "  3  the library is missing or the wrong one\n"
               "  4  a file cannot be read or written\n"
               "  5  the link failed: a negative code\n"
               "  6  something was found: damage, a difference, something to mend\n"
               "  7  the tool itself failed\n\n"
               "Examples:\n"
               "  telvofm doctor -p 192.168.1.10:9100\n"
               "  telvofm call -p 192.168.1.10:9100 getVariable 1 TOTAL\n"
               "  telvofm codes -10202\n"
               "  telvofm decode raw.log");
    addCall(app, task);
    addCodes(app, task);
    addCompletion(app, task);
    addDecode(app, task);
    addDoctor(app, task);
    addReplay(app, task);
}

Errand errandNamed(const std::string& name)
{
    static const std::map<std::string, Errand> commands = {
        {"call", Errand::call},     {"codes", Errand::codes},   {"completion", Errand::completion},
        {"decode", Errand::decode}, {"doctor", Errand::doctor}, {"replay", Errand::replay}};
    return commands.at(name);
}

} // namespace

Task readCommandLine(const std::vector<std::string>& words)
{
    Task task;
    CLI::App app("The tool beside the TelvoFM library", "telvofm");
    describe(app, task);
    refuseUnknownCommand(app, words);
    try {
        parse(app, words);
    } catch (const CLI::CallForVersion& version) {
        task.said = version.what();
        return task;
    } catch (const CLI::Success& /*help*/) {
        const CLI::App& command = chosenCommand(app);
        task.said = &command == &app ? app.help() : command.help("telvofm");
        return task;
    }
    const CLI::App& command = chosenCommand(app);
    task.errand = errandNamed(command.get_name());
    task.words = command.remaining();
    refuseUnknownOptions(command, task.words);
    requirePossible(task);
    return task;
}

std::vector<CommandWords> commandWords()
{
    Task unused;
    CLI::App app("", "telvofm");
    describe(app, unused);
    std::vector<CommandWords> all;
    for (const CLI::App* command : std::as_const(app).get_subcommands({})) {
        all.push_back({command->get_name(), {}});
        for (const CLI::Option* option : command->get_options()) {
            for (const std::string& name : option->get_lnames()) {
                all.back().options.push_back("--" + name);
            }
        }
    }
    return all;
}

} // namespace telvofm::tools
