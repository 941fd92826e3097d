#include "bench/cores.h"

#include <thread>
#include <windows.h>

namespace bench {

bool pinToCore(unsigned int core)
{
    return core < std::thread::hardware_concurrency() &&
           ::SetThreadAffinityMask(::GetCurrentThread(), DWORD_PTR{1} << core) != 0;
}

} // namespace bench
