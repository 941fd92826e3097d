#include "tools/completion.h"

#include "tools/code_meanings.h"
#include "tools/command_line.h"
#include "tools/export_table.h"

#include <numeric>

namespace telvofm::tools {
namespace {

template <typename Things, typename NameOf>
std::string joined(const Things& things, NameOf nameOf)
{
    return std::accumulate(things.begin(), things.end(), std::string{},
                           [&](std::string all, const auto& thing) {
                               return std::move(all) + (all.empty() ? "" : " ") + std::string(nameOf(thing));
                           });
}

// What can stand behind a command, beside its options; files where nothing is listed.
std::string wordsBehind(const std::string& command)
{
    if (command == "call") {
        return joined(exportTable(), [](const Export& function) { return function.name; });
    }
    if (command == "codes") {
        return joined(codeMeanings(),
                      [](const CodeMeaning& meaning) { return std::to_string(meaning.first); });
    }
    return command == "completion" ? "bash" : "";
}

} // namespace

Ending writeBashCompletion(Output& output)
{
    const auto commands = commandWords();
    std::string script = "# Completes the words of telvofm; written by 'telvofm completion bash'.\n"
                         "_telvofm()\n{\n"
                         "    local word=${COMP_WORDS[COMP_CWORD]} command=1 options words\n"
                         "    COMPREPLY=()\n"
                         "    if [[ ${COMP_WORDS[1]} == --json && $COMP_CWORD -gt 1 ]]; then command=2; fi\n"
                         "    if [[ $COMP_CWORD -eq $command ]]; then\n"
                         "        mapfile -t COMPREPLY < <(compgen -W \"" +
                         joined(commands, [](const CommandWords& command) { return command.name; }) +
                         " --help --json --version\" -- \"$word\")\n"
                         "        return\n    fi\n"
                         "    case ${COMP_WORDS[command]} in\n";
    for (const CommandWords& command : commands) {
        script += "    " + command.name + ")\n        options=\"" +
                  joined(command.options, [](const std::string& option) { return option; }) +
                  "\"\n        words=\"" + wordsBehind(command.name) + "\"\n        ;;\n";
    }
    script += "    esac\n"
              "    case ${COMP_WORDS[COMP_CWORD - 1]} in\n"
              "    --library | --call-log | --raw-log | --files)\n"
              "        mapfile -t COMPREPLY < <(compgen -f -- \"$word\")\n        return\n        ;;\n"
              "    esac\n"
              "    if [[ $word == --* ]]; then\n"
              "        words=$options\n"
              "    fi\n"
              "    if [[ -n $words ]]; then\n"
              "        mapfile -t COMPREPLY < <(compgen -W \"$words\" -- \"$word\")\n"
              "    else\n"
              "        mapfile -t COMPREPLY < <(compgen -f -- \"$word\")\n"
              "    fi\n}\n"
              "complete -o filenames -F _telvofm telvofm";
    output.line(script);
    output.document["completion"] = script;
    return Ending::done;
}

} // namespace telvofm::tools
