// What every woven file is compiled with: which mutant is on is read from the environment once. It asks the
// system directly, as some tests stand between the library and the functions of the C library.
#pragma once

#include <algorithm>
#include <array>
#include <atomic>
#include <bit>
#include <cerrno>
#include <charconv>
#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <filesystem>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <shared_mutex>
#include <span>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <variant>
#include <vector>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace telvofm_mutation {

inline constexpr std::size_t mostMutants = 65536;

class Switch
{
public:
    Switch()
    {
        if (const char* number = std::getenv("TELVOFM_MUTANT")) {
            active = std::atoi(number);
        }
        if (const char* file = std::getenv("TELVOFM_MUTANTS_REACHED")) {
            const long opened = ::syscall(SYS_openat, AT_FDCWD, file, O_RDWR | O_CLOEXEC);
            const long mapped =
                ::syscall(SYS_mmap, nullptr, mostMutants, PROT_READ | PROT_WRITE, MAP_SHARED, opened, 0L);
            ::syscall(SYS_close, opened);
            reached = mapped == -1 ? nullptr : reinterpret_cast<unsigned char*>(mapped);
        }
    }

    int active = -1;
    unsigned char* reached = nullptr; // one byte for each mutant, shared with whoever asks
};

} // namespace telvofm_mutation

// The thread sanitizer is not to see it: threads note what they reach beside each other.
[[clang::no_sanitize("thread")]] inline bool telvofm_mutant(int number)
{
    static const telvofm_mutation::Switch setting;
    if (setting.reached != nullptr) {
        setting.reached[number] = 1;
    }
    return setting.active == number;
}
