#include "tests/system/host_state.h"
#include "tests/system/universal_runtime_win32.h"

#include <bit>
#include <clocale>
#include <csignal>
#include <fcntl.h>

namespace telvofm::test {
namespace {

using Handler = void(int);

// The runtime tells what was there before only to who puts something else in its place.
long long handlerOf(int signal)
{
    const auto install = ofUniversalRuntime<Handler*(int, Handler*)>("signal");
    Handler* const before = install(signal, SIG_DFL);
    install(signal, before);
    return std::bit_cast<long long>(before);
}

int modeOf(int descriptor)
{
    const auto change = ofUniversalRuntime<int(int, int)>("_setmode");
    const int before = change(descriptor, _O_BINARY);
    change(descriptor, before);
    return before;
}

} // namespace

// Of the runtime that the library shares with a host program that is built as usual.
void HostState::addWhatThePlatformHas()
{
    add("locale of C", ofUniversalRuntime<char*(int, const char*)>("setlocale")(LC_ALL, nullptr));
    for (const int signal : {SIGINT, SIGILL, SIGFPE, SIGSEGV, SIGTERM, SIGBREAK, SIGABRT}) {
        add("handler of signal " + std::to_string(signal), {handlerOf(signal)});
    }
    const auto invalidParameter = installInvalidParameterHandler(nullptr);
    installInvalidParameterHandler(invalidParameter);
    const auto unhandledException = ::SetUnhandledExceptionFilter(nullptr);
    ::SetUnhandledExceptionFilter(unhandledException);
    add("handlers of failures", {std::bit_cast<long long>(invalidParameter),
                                 std::bit_cast<long long>(unhandledException), ::GetErrorMode()});
    add("modes of standard streams",
        {modeOf(0), modeOf(1), modeOf(2), ::GetConsoleCP(), ::GetConsoleOutputCP()});
}

} // namespace telvofm::test
