#include "tests/torture/trapped_system_calls.h"

#include "tests/unit/limited_memory.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstring>
#include <fcntl.h>
#include <linux/audit.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <map>
#include <stdexcept>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <ucontext.h>
#include <unistd.h>

// The one place whose system calls the kernel lets through.
asm(R"(
.text
.globl telvofm_untrapped_call
.hidden telvofm_untrapped_call
.globl telvofm_untrapped_call_end
.hidden telvofm_untrapped_call_end
telvofm_untrapped_call:
    mov %rdi, %rax
    mov %rsi, %rdi
    mov %rdx, %rsi
    mov %rcx, %rdx
    mov %r8, %r10
    mov %r9, %r8
    mov 8(%rsp), %r9
    syscall
telvofm_untrapped_call_end:
    ret
)");

extern "C" {
// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name)
long telvofm_untrapped_call(long number, long a, long b, long c, long d, long e, long f);
extern const char telvofm_untrapped_call_end[];
}

namespace telvofm::test::torture {
namespace {

constexpr std::size_t mostCalls = 4096;
constexpr std::size_t never = ~std::size_t{0};

// What the handler writes: no memory may be asked for there.
struct Trap
{
    bool watches = false;
    bool failed = false;
    std::size_t failsBehind = never;
    Way way = Way::error;
    std::size_t count = 0;
    std::array<TrappedCall, mostCalls> calls{};
    int logDescriptor = -1;
};

thread_local Trap trap;

long untrapped(long number, long a = 0, long b = 0, long c = 0, long d = 0, long e = 0, long f = 0)
{
    return telvofm_untrapped_call(number, a, b, c, d, e, f);
}

bool isLink(int descriptor)
{
    struct stat status
    {
    };
    return untrapped(SYS_fstat, descriptor, reinterpret_cast<long>(&status)) == 0 &&
           (S_ISSOCK(status.st_mode) || S_ISCHR(status.st_mode));
}

bool isAbout(long number, std::initializer_list<long> numbers)
{
    return std::find(numbers.begin(), numbers.end(), number) != numbers.end();
}

TrappedCall described(long number, long first, long second)
{
    TrappedCall call{number, -1, false, false, allocationsMade()};
    if (number == SYS_openat) {
        const auto* path = std::bit_cast<const char*>(second);
        const std::size_t length = std::strlen(path);
        call.isLog = length > 4 && std::memcmp(path + length - 4, ".log", 4) == 0;
    } else if (isAbout(number, {SYS_read, SYS_write, SYS_close, SYS_fstat, SYS_newfstatat, SYS_ioctl,
                                SYS_lseek, SYS_connect, SYS_sendto, SYS_recvfrom, SYS_fcntl})) {
        call.descriptor = static_cast<int>(first);
        call.isLog = call.descriptor != -1 && call.descriptor == trap.logDescriptor;
    }
    if (isAbout(number, {SYS_poll, SYS_clock_nanosleep})) {
        call.blocks = true;
    } else if (isAbout(number, {SYS_connect, SYS_sendto, SYS_recvfrom, SYS_read, SYS_write})) {
        call.blocks = isLink(call.descriptor);
    }
    return call;
}

// A failed close has closed, and an interrupted connect goes on.
long failed(long number, const greg_t* registers, Way way)
{
    const auto argument = [&](int index) { return static_cast<long>(registers[index]); };
    if (number == SYS_close) {
        untrapped(number, argument(REG_RDI));
        return -EIO;
    }
    if (number == SYS_connect && way == Way::interrupted) {
        const long flags = untrapped(SYS_fcntl, argument(REG_RDI), F_GETFL);
        untrapped(SYS_fcntl, argument(REG_RDI), F_SETFL, flags | O_NONBLOCK);
        untrapped(number, argument(REG_RDI), argument(REG_RSI), argument(REG_RDX));
        untrapped(SYS_fcntl, argument(REG_RDI), F_SETFL, flags);
        return -EINTR;
    }
    if (number == SYS_brk) {
        return untrapped(number, 0); // where it was
    }
    if (way == Way::interrupted) {
        return -EINTR;
    }
    if (isAbout(number, {SYS_mmap, SYS_mremap, SYS_poll})) {
        return -ENOMEM;
    }
    return isAbout(number, {SYS_openat, SYS_socket}) ? -EMFILE : -EIO;
}

// The mask belongs to what the signal interrupted.
long changeMask(ucontext_t* context, long how, long set, long old)
{
    std::uint64_t mask = 0;
    std::memcpy(&mask, &context->uc_sigmask, sizeof mask);
    if (old != 0) {
        std::memcpy(std::bit_cast<void*>(old), &mask, sizeof mask);
    }
    if (set != 0) {
        std::uint64_t given = 0;
        std::memcpy(&given, std::bit_cast<const void*>(set), sizeof given);
        mask = how == SIG_BLOCK ? mask | given : how == SIG_UNBLOCK ? mask & ~given : given;
        mask &= ~(std::uint64_t{1} << (SIGSYS - 1U)); // without it the next system call would end the process
        std::memcpy(&context->uc_sigmask, &mask, sizeof mask);
    }
    return 0;
}

void onSystemCall(int /*signal*/, siginfo_t* info, void* where)
{
    auto* context = static_cast<ucontext_t*>(where);
    greg_t* const registers = context->uc_mcontext.gregs;
    const long number = info->si_syscall;
    const auto argument = [&](int index) { return static_cast<long>(registers[index]); };
    TrappedCall call{};
    if (trap.watches && number != SYS_rt_sigprocmask) { // which cannot fail
        call = described(number, argument(REG_RDI), argument(REG_RSI));
        if (trap.count < mostCalls) {
            trap.calls[trap.count] = call;
        }
        const bool isDue = trap.count++ == trap.failsBehind;
        if (isDue) {
            trap.failed = true;
            trap.logDescriptor = number == SYS_close && call.isLog ? -1 : trap.logDescriptor;
            registers[REG_RAX] = failed(number, registers, trap.way);
            return;
        }
    }
    if (trap.watches && number == SYS_close && call.isLog) {
        trap.logDescriptor = -1;
    }
    const long result = number == SYS_rt_sigprocmask
                            ? changeMask(context, argument(REG_RDI), argument(REG_RSI), argument(REG_RDX))
                            : untrapped(number, argument(REG_RDI), argument(REG_RSI), argument(REG_RDX),
                                        argument(REG_R10), argument(REG_R8), argument(REG_R9));
    if (trap.watches && number == SYS_openat && call.isLog) {
        trap.logDescriptor = static_cast<int>(result);
    }
    registers[REG_RAX] = result;
}

void begin(std::size_t before, Way way)
{
    trap.count = 0;
    trap.failed = false;
    trap.failsBehind = before;
    trap.way = way;
    trap.logDescriptor = -1;
    trap.watches = true;
}

} // namespace

bool trapSystemCalls()
{
    struct sigaction action
    {
    };
    action.sa_sigaction = &onSystemCall;
    action.sa_flags = SA_SIGINFO | SA_NODEFER;
    if (::sigaction(SIGSYS, &action, nullptr) != 0) {
        return false;
    }
    const auto end = reinterpret_cast<std::uintptr_t>(&telvofm_untrapped_call_end);
    const auto low = static_cast<std::uint32_t>(end);
    const auto high = static_cast<std::uint32_t>(end >> 32U);
    constexpr auto free =
        std::to_array<std::uint32_t>({SYS_rt_sigreturn, SYS_gettid, SYS_exit, SYS_exit_group, SYS_futex,
                                      SYS_munmap, SYS_clone, SYS_clone3, SYS_vfork, SYS_fork, SYS_execve});
    std::vector<sock_filter> program = {
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, 8), // the place, its lower half first
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, low, 0, 3),  BPF_STMT(BPF_LD | BPF_W | BPF_ABS, 12),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, high, 0, 1), BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, 0), // the number
    };
    for (const std::uint32_t number : free) {
        program.push_back(BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, number, 0, 1));
        program.push_back(BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW));
    }
    program.push_back(BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_TRAP));
    const sock_fprog filter = {static_cast<unsigned short>(program.size()), program.data()};
    return ::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
           ::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &filter) == 0;
}

void failSystemCall(std::size_t before, Way way)
{
    begin(before, way);
}

void watchSystemCalls()
{
    begin(never, Way::error);
}

std::vector<TrappedCall> endOfSystemCalls()
{
    trap.watches = false;
    if (trap.count > mostCalls) {
        throw std::length_error("a call makes more system calls than can be kept");
    }
    return {trap.calls.begin(), trap.calls.begin() + static_cast<std::ptrdiff_t>(trap.count)};
}

bool hasFailed()
{
    return trap.failed;
}

std::string nameOf(const TrappedCall& call)
{
    static const std::map<long, std::string_view> names = {
        {SYS_openat, "openat"},   {SYS_read, "read"},        {SYS_write, "write"},   {SYS_close, "close"},
        {SYS_fstat, "fstat"},     {SYS_ioctl, "ioctl"},      {SYS_poll, "poll"},     {SYS_sendto, "send"},
        {SYS_recvfrom, "recv"},   {SYS_connect, "connect"},  {SYS_socket, "socket"}, {SYS_mmap, "mmap"},
        {SYS_brk, "brk"},         {SYS_fcntl, "fcntl"},      {SYS_bind, "bind"},     {SYS_lseek, "lseek"},
        {SYS_newfstatat, "stat"}, {SYS_readlink, "readlink"}};
    const auto found = names.find(call.number);
    const std::string name =
        found == names.end() ? "system call " + std::to_string(call.number) : std::string(found->second);
    return name + (call.isLog ? " of the log" : "");
}

} // namespace telvofm::test::torture
