// The command-line tool `telvofm`.
#include "tools/call.h"
#include "tools/codes.h"
#include "tools/command_line.h"
#include "tools/completion.h"
#include "tools/console.h"
#include "tools/decode.h"
#include "tools/doctor.h"
#include "tools/exported_function.h"
#include "tools/replay.h"
#include "tools/windows_1250.h"

#include <algorithm>

namespace telvofm::tools {
namespace {

Ending carryOut(const Task& task, Output& output)
{
    switch (task.errand) {
    case Errand::call:
        return task.isList ? listFunctions(output) : callFunctions(task.printer, task.words, output);
    case Errand::codes:
        return showCodes(task.code, output);
    case Errand::completion:
        return writeBashCompletion(output);
    case Errand::decode:
        return decode(task.log, task.isSerial ? codePage852 : windows1250, output);
    case Errand::doctor:
        return examine(task.printer, output);
    case Errand::replay:
        return replay(task, output);
    case Errand::none:
        break;
    }
    output.line(task.said);
    output.document["said"] = task.said;
    return Ending::done;
}

// The sentence for people, and for programs that read the document as well.
Ending fail(Ending ending, const std::string& words, Output& output)
{
    const std::string sentence = onOneLine(words);
    std::fprintf(stderr, "telvofm: %s\n", sentence.c_str());
    output.document["error"] = {{"exitCode", static_cast<int>(ending)}, {"sentence", sentence}};
    output.end();
    return ending;
}

// What is said before a command is known is in JSON as well when it is asked for: help, the version, and why
// a command line cannot be understood.
bool asksForJson(const std::vector<std::string>& words)
{
    return std::find(words.begin(), words.end(), "--json") != words.end();
}

Ending run(const std::vector<std::string>& words, std::FILE* target)
{
    Output output(target, asksForJson(words));
    try {
        const Task task = readCommandLine(words);
        if (task.errand != Errand::none) {
            output = Output(target, task.isJson); // the word may be an argument of a call
        }
        const Ending ending = carryOut(task, output);
        output.end();
        return ending;
    } catch (const Failure& failure) {
        return fail(failure.ending, failure.what(), output);
    } catch (const MissingFunction& missing) {
        return fail(Ending::noLibrary, missing.what(), output);
    } catch (const std::exception& failure) {
        return fail(Ending::failed, failure.what(), output);
    }
}

} // namespace
} // namespace telvofm::tools

int main(int count, char** arguments)
{
    using namespace telvofm::tools;
    try {
        std::FILE* const target = takeStandardOutput();
        const Ending ending = run(commandLine(count, arguments), target);
        if (std::ferror(target) != 0 || std::fclose(target) != 0) {
            throw Failure(Ending::noFile, "standard output cannot be written to; make room for it");
        }
        return static_cast<int>(ending);
    } catch (const Failure& failure) {
        std::fprintf(stderr, "telvofm: %s\n", failure.what());
        return static_cast<int>(failure.ending);
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "telvofm: %s\n", failure.what());
        return static_cast<int>(Ending::failed);
    }
}
