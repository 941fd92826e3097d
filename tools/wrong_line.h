// What is wrong with a command line, in the tool's own words: those of the parser are for who wrote the tool.
#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace telvofm::tools {

// Throws a Failure when the first word that is no option of the tool itself is no command.
void refuseUnknownCommand(const CLI::App& app, const std::vector<std::string>& words);

// Throws a Failure when the words cannot be understood or name no command; help and version pass as what the
// parser throws for them.
void parse(CLI::App& app, const std::vector<std::string>& words);

// The command that was named; without one the tool itself.
const CLI::App& chosenCommand(const CLI::App& app);

// Of a command that takes any words: throws a Failure when they begin with an option that it has not.
void refuseUnknownOptions(const CLI::App& command, const std::vector<std::string>& words);

} // namespace telvofm::tools
