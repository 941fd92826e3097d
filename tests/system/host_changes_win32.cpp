#include "tests/system/host_changes.h"
#include "tests/system/universal_runtime_win32.h"

#include <clocale>
#include <csignal>
#include <fcntl.h>

namespace telvofm::test {
namespace {

using Handler = void(int);

void setHandler(Handler* handler)
{
    ofUniversalRuntime<Handler*(int, Handler*)>("signal")(SIGTERM, handler);
}

void setLocale(const char* name)
{
    ofUniversalRuntime<char*(int, const char*)>("setlocale")(LC_ALL, name);
}

void setMode(int mode)
{
    ofUniversalRuntime<int(int, int)>("_setmode")(1, mode);
}

// There and back.
void changeErrorMode()
{
    ::SetErrorMode(::GetErrorMode() ^ SEM_NOOPENFILEERRORBOX);
}

} // namespace

std::span<const HostChange> hostChangesOfThePlatform()
{
    static constexpr HostChange changes[] = {
        {"locale of C", [] { setLocale("German_Germany.1252"); }, [] { setLocale("C"); }},
        {"handler of signal 15", [] { setHandler([](int /*signal*/) {}); }, [] { setHandler(SIG_DFL); }},
        {"handlers of failures", changeErrorMode, changeErrorMode},
        {"modes of standard streams", [] { setMode(_O_BINARY); }, [] { setMode(_O_TEXT); }},
    };
    return changes;
}

} // namespace telvofm::test
