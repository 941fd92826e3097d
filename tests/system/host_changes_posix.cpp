#include "tests/system/host_changes.h"

#include <clocale>
#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace telvofm::test {
namespace {

void changeMask(int how)
{
    sigset_t signals;
    ::sigemptyset(&signals);
    ::sigaddset(&signals, SIGUSR1);
    ::pthread_sigmask(how, &signals, nullptr);
}

// Without the flags that the C function adds and leaves behind.
void setHandler(void (*handler)(int))
{
    struct sigaction action = {};
    action.sa_handler = handler;
    ::sigaction(SIGPIPE, &action, nullptr);
}

} // namespace

std::span<const HostChange> hostChangesOfThePlatform()
{
    static constexpr HostChange changes[] = {
        {"locale of C", [] { std::setlocale(LC_CTYPE, "C.UTF-8"); }, [] { std::setlocale(LC_CTYPE, "C"); }},
        {"handler of signal 13", [] { setHandler([](int /*signal*/) {}); }, [] { setHandler(SIG_DFL); }},
        {"blocked signals", [] { changeMask(SIG_BLOCK); }, [] { changeMask(SIG_UNBLOCK); }},
        {"mask of new files", [] { ::umask(0027); }, [] { ::umask(0022); }},
        {"modes of standard streams",
         [] { ::fcntl(STDERR_FILENO, F_SETFL, ::fcntl(STDERR_FILENO, F_GETFL) ^ O_APPEND); },
         [] { ::fcntl(STDERR_FILENO, F_SETFL, ::fcntl(STDERR_FILENO, F_GETFL) ^ O_APPEND); }},
    };
    return changes;
}

} // namespace telvofm::test
