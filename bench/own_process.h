// A measurement in a process of its own on the first core, so that its peak of memory is its own.
#pragma once

#include "bench/cores.h"

#include <array>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace bench {

struct Outcome
{
    double processorSeconds = 0; // of the fetching side, the kernel's too
    double peakBytes = 0;        // above what the process held before the journal came
};

// Measures this process from its construction on.
class Meter
{
public:
    [[nodiscard]] Outcome outcome() const
    {
        const rusage now = usage();
        return {.processorSeconds = secondsOf(now) - secondsOf(before),
                .peakBytes = static_cast<double>(now.ru_maxrss - before.ru_maxrss) * 1024};
    }

private:
    static rusage usage()
    {
        rusage used{};
        getrusage(RUSAGE_SELF, &used);
        return used;
    }
    static double secondsOf(const rusage& used)
    {
        constexpr double microsecond = 1e-6;
        return static_cast<double>(used.ru_utime.tv_sec + used.ru_stime.tv_sec) +
               static_cast<double>(used.ru_utime.tv_usec + used.ru_stime.tv_usec) * microsecond;
    }

    rusage before = usage();
};

class OwnProcess
{
public:
    explicit OwnProcess(const std::function<Outcome()>& measure)
    {
        if (pipe(ends.data()) != 0) {
            std::abort();
        }
        std::fflush(stdout); // the child must not write it again
        child = fork();
        if (child == 0) {
            pinToCore(0);
            const Outcome outcome = measure();
            const bool isWritten = write(ends[1], &outcome, sizeof outcome) == sizeof outcome;
            _exit(isWritten ? 0 : 1);
        }
        close(ends[1]);
    }

    // Waits for it; once.
    Outcome outcome()
    {
        Outcome outcome;
        const bool isRead = read(ends[0], &outcome, sizeof outcome) == sizeof outcome;
        int status = 0;
        waitpid(child, &status, 0);
        close(ends[0]);
        if (!isRead || status != 0) {
            std::fputs("a measurement failed\n", stderr);
            std::exit(1);
        }
        return outcome;
    }

private:
    std::array<int, 2> ends{};
    pid_t child = -1;
};

} // namespace bench
