#include "bench/cores.h"

#include <pthread.h>
#include <sched.h>
#include <thread>

namespace bench {

bool pinToCore(unsigned int core)
{
    if (core >= std::thread::hardware_concurrency()) {
        return false;
    }
    cpu_set_t cores;
    CPU_ZERO(&cores);
    CPU_SET(core, &cores);
    return pthread_setaffinity_np(pthread_self(), sizeof cores, &cores) == 0;
}

} // namespace bench
