#include "tests/system/process_ending.h"

#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

namespace telvofm::test {
namespace {

bool (*judgeOfMemory)() = nullptr;

} // namespace

bool isInvalidParameterEnding(int exitStatus)
{
    return WIFSIGNALED(exitStatus) && WTERMSIG(exitStatus) == SIGABRT;
}

const char* const invalidParameterMessage = "telvofm: .*buffer is too small";

void judgeAtInvalidParameter(bool (*judge)())
{
    judgeOfMemory = judge;
    std::signal(SIGABRT, [](int /*signal*/) { _exit(judgeOfMemory() ? judgedGood : judgedBad); });
}

} // namespace telvofm::test
