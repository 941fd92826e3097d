#include "tests/system/host_state.h"

#include <bit>
#include <clocale>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <cwchar>
#include <fcntl.h>
#include <locale.h>
#include <stdio_ext.h>
#include <sys/stat.h>
#include <unistd.h>

namespace telvofm::test {
namespace {

// All signals but those of the system's own.
long long firstOf(const sigset_t& signals)
{
    long long first = 0;
    std::memcpy(&first, &signals, sizeof first);
    return first;
}

} // namespace

void HostState::addWhatThePlatformHas()
{
    add("locale of C", std::setlocale(LC_ALL, nullptr));
    add("locale of the thread", {std::bit_cast<long long>(::uselocale(locale_t{}))});
    for (int signal = 1; signal < NSIG; ++signal) {
        constexpr int ofTheSystem = 0x04000000; // it is added to what a program has set
        struct sigaction action = {};
        if (::sigaction(signal, nullptr, &action) == 0) {
            add("handler of signal " + std::to_string(signal),
                {std::bit_cast<long long>(action.sa_sigaction), action.sa_flags & ~ofTheSystem,
                 firstOf(action.sa_mask)});
        }
    }
    sigset_t signals;
    ::pthread_sigmask(SIG_SETMASK, nullptr, &signals);
    add("blocked signals", {firstOf(signals)});
    ::sigpending(&signals);
    add("pending signals", {firstOf(signals)});
    stack_t stack = {};
    ::sigaltstack(nullptr, &stack);
    add("stack of signals", {std::bit_cast<long long>(stack.ss_sp), static_cast<long long>(stack.ss_size)});
    const mode_t mask = ::umask(0);
    ::umask(mask);
    add("mask of new files", {mask});
    for (std::FILE* const stream : {stdin, stdout, stderr}) {
        const int descriptor = ::fileno(stream);
        add("modes of standard streams",
            {::fcntl(descriptor, F_GETFL), ::fcntl(descriptor, F_GETFD), std::fwide(stream, 0),
             ::__flbf(stream), static_cast<long long>(::__fbufsize(stream))});
    }
}

} // namespace telvofm::test
