#include "tools/wrong_line.h"

#include "tools/ending.h"
#include "tools/nearest_name.h"

#include <CLI/CLI.hpp>
#include <algorithm>

namespace telvofm::tools {
namespace {

constexpr const char* noCommand = "no command is named; 'telvofm --help' lists them";

bool isOption(const std::string& word)
{
    return word.starts_with('-') && word.size() > 1;
}

// "printer" in "--printer=COM7", "p" in "-pCOM7".
std::string nameIn(const std::string& option)
{
    return option.starts_with("--") ? option.substr(2, option.find('=') - 2) : option.substr(1, 1);
}

bool takes(const CLI::App& command, const std::string& name)
{
    const auto options = command.get_options();
    return std::any_of(options.begin(), options.end(), [&name](const CLI::Option* option) {
        return option->check_lname(name) || option->check_sname(name);
    });
}

std::string helpOf(const CLI::App& command)
{
    const std::string& name = command.get_name();
    return "'telvofm " + (name == "telvofm" ? "" : name + " ") + "--help'";
}

std::string sayUnknownOption(const CLI::App& command, const std::string& word)
{
    std::vector<std::string_view> names;
    for (const CLI::Option* option : command.get_options()) {
        names.insert(names.end(), option->get_lnames().begin(), option->get_lnames().end());
    }
    const std::string option = word.substr(0, word.find('='));
    const std::string_view nearest =
        word.starts_with("--") ? nearestName(nameIn(word), names) : std::string_view();
    return "there is no option " + option +
           (nearest.empty() ? "; " + helpOf(command) + " lists them"
                            : "; did you mean --" + std::string(nearest) + "?");
}

// What the parser itself would call unexpected, or take for something else.
void refuseWhatStandsBefore(const std::string& word, const CLI::App& app)
{
    const auto commands = app.get_subcommands({});
    const bool isBehind = std::any_of(commands.begin(), commands.end(), [&word](const CLI::App* command) {
        return takes(*command, nameIn(word));
    });
    throw Failure(Ending::wrongUse, isBehind ? word + " stands in front of the command; write it behind it"
                                             : sayUnknownOption(app, word));
}

// An option of one value that was given several times, or with none: then it is the last word.
std::string sayWrongCount(const CLI::App& command, const std::vector<std::string>& words)
{
    for (const CLI::Option* option : command.get_options()) {
        if (option->count() > 1 && option->get_items_expected_max() == 1) {
            return option->get_name() + " is given " + std::to_string(option->count()) +
                   " times; give it once";
        }
    }
    return "nothing stands behind " + words.back() + "; write its value there";
}

std::string sayMissingWord(const CLI::App& command)
{
    const auto options = command.get_options();
    const auto missing = std::find_if(options.begin(), options.end(), [](const CLI::Option* option) {
        return option->get_required() && option->count() == 0;
    });
    const std::string name = missing == options.end() ? "word" : (*missing)->get_single_name();
    return "no " + name + " is named; write: telvofm " + command.get_name() + " " + name;
}

std::string sayUnexpected(const CLI::App& command, const std::vector<std::string>& unexpected)
{
    const std::string word = unexpected.empty() ? "" : unexpected.front();
    return isOption(word)
               ? sayUnknownOption(command, word)
               : "'" + word + "' is a word too many; " + helpOf(command) + " shows what can be written";
}

// Of a flag with something behind "=".
std::string sayWrongFlag(const CLI::App& command, const std::vector<std::string>& words)
{
    const auto flag = std::find_if(words.begin(), words.end(), [&command](const std::string& word) {
        const CLI::Option* const option =
            word.find('=') == std::string::npos ? nullptr : command.get_option_no_throw("--" + nameIn(word));
        return option != nullptr && option->get_items_expected_max() == 0;
    });
    return (flag == words.end() ? "a flag" : *flag) + ": this option takes no value; write it alone";
}

} // namespace

void refuseUnknownCommand(const CLI::App& app, const std::vector<std::string>& words)
{
    const auto word = std::find_if(words.begin(), words.end(), [&app](const std::string& one) {
        return !isOption(one) || !takes(app, nameIn(one));
    });
    if (word == words.end()) {
        return;
    }
    if (word->empty()) {
        throw Failure(Ending::wrongUse, noCommand);
    }
    if (isOption(*word)) {
        refuseWhatStandsBefore(*word, app);
    }
    std::vector<std::string_view> names;
    for (const CLI::App* command : app.get_subcommands({})) {
        names.emplace_back(command->get_name());
    }
    if (std::find(names.begin(), names.end(), *word) == names.end()) {
        const std::string_view nearest = nearestName(*word, names);
        throw Failure(Ending::wrongUse,
                      "there is no command " + *word +
                          (nearest.empty() ? "; 'telvofm --help' lists them"
                                           : "; did you mean " + std::string(nearest) + "?"));
    }
}

void parse(CLI::App& app, const std::vector<std::string>& words)
{
    std::string sentence;
    try {
        app.parse(std::vector<std::string>(words.rbegin(), words.rend())); // as the parser takes them
        if (&chosenCommand(app) != &app) {
            return;
        }
        sentence = noCommand;
    } catch (const CLI::ArgumentMismatch& /*wrong*/) {
        sentence = sayWrongCount(chosenCommand(app), words);
    } catch (const CLI::RequiredError& /*wrong*/) {
        sentence = sayMissingWord(chosenCommand(app));
    } catch (const CLI::ExtrasError& /*wrong*/) {
        sentence = sayUnexpected(chosenCommand(app), app.remaining(true));
    } catch (const CLI::ConversionError& /*wrong*/) {
        sentence = sayWrongFlag(chosenCommand(app), words);
    } catch (const CLI::Success& /*help or version*/) {
        throw;
    } catch (const CLI::ParseError& wrong) {
        sentence =
            std::string(wrong.what()) + "; " + helpOf(chosenCommand(app)) + " shows what can be written";
    }
    throw Failure(Ending::wrongUse, sentence);
}

const CLI::App& chosenCommand(const CLI::App& app)
{
    const auto commands = app.get_subcommands();
    return commands.empty() ? app : *commands.front();
}

void refuseUnknownOptions(const CLI::App& command, const std::vector<std::string>& words)
{
    if (!words.empty() && isOption(words.front()) && words.front() != "--then") {
        throw Failure(Ending::wrongUse, sayUnknownOption(command, words.front()));
    }
}

} // namespace telvofm::tools
