#include "tests/system/process_ending.h"

#include "tests/system/universal_runtime_win32.h"

namespace telvofm::test {
namespace {

bool (*judgeOfMemory)() = nullptr;

void endWithJudgement(const wchar_t* /*expression*/, const wchar_t* /*function*/, const wchar_t* /*file*/,
                      unsigned int /*line*/, std::uintptr_t /*reserved*/)
{
    ::ExitProcess(judgeOfMemory() ? judgedGood : judgedBad);
}

} // namespace

bool isInvalidParameterEnding(int exitStatus)
{
    constexpr unsigned int invalidRuntimeParameter = 0xC0000417;
    return static_cast<unsigned int>(exitStatus) == invalidRuntimeParameter;
}

// The runtime ends the process in silence.
const char* const invalidParameterMessage = "";

void judgeAtInvalidParameter(bool (*judge)())
{
    judgeOfMemory = judge;
    installInvalidParameterHandler(endWithJudgement);
}

} // namespace telvofm::test
