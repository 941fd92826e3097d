// Measures itemSale over loopback TCP beside a bare loop that makes the same system calls, call by call in
// turn, with the call log off and on. Prints the medians and their ratio.
//
//     item_sale PORT              measures; sale_printer listens on the port for two connections
//     item_sale PORT --calls N [LOG-FILE]
//                                 only calls itemSale N times, for a profiler; for one connection
//     item_sale PORT --bare N [LOG-FILE]
//                                 the same of the bare loop
#include "bench/bare_loop.h"
#include "bench/cores.h"
#include "bench/in_turn.h"
#include "bench/sale_exchange.h"
#include "telvofm.h"

#include <atomic>
#include <charconv>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <new>
#include <string>
#include <string_view>

namespace {

std::atomic<std::size_t> allocations = 0;

constexpr const char* libraryLog = "item_sale_library.txt";
constexpr const char* bareLog = "item_sale_bare.txt";
constexpr std::string_view logLine =
    "itemSale Device 1, row 0, commodityName Chlieb, total price 12.5, vat A, "
    "amount 1.5, unit price 8.3333, unit ks\n";

void require(bool isTrue, const char* what)
{
    if (!isTrue) {
        std::fprintf(stderr, "item_sale: %s\n", what);
        std::exit(EXIT_FAILURE);
    }
}

void sell()
{
    require(itemSale(1, 0, "Chlieb", 12.5, 'A', 1.5, 8.3333, "ks") == 0, "the sale failed");
}

template <typename Library, typename Bare>
void compare(const char* title, Library library, Bare bare)
{
    const bench::InTurn medians = bench::callInTurn(library, bare);
    std::printf("%-8s  itemSale %7.2f us   bare loop %7.2f us   ratio %.3f\n", title, medians.first,
                medians.second, medians.first / medians.second);
}

void measure(std::uint16_t port)
{
    const bench::BareLoop bareLoop(port);
    const std::string request = bench::saleRequest();
    const char checksum = bench::checksumOf(request);
    const auto exchange = [&] { require(bareLoop.exchange(request, checksum), "the bare loop failed"); };

    compare("log off", sell, exchange);
    const std::size_t before = allocations;
    sell();
    std::printf("          heap allocations of one itemSale: %zu\n", allocations - before);

    setLogginOn(libraryLog);
    compare("log on", sell, [&] {
        bench::BareLoop::appendToFile(bareLog, logLine);
        exchange();
    });
    std::filesystem::remove(libraryLog);
    std::filesystem::remove(bareLog);
}

void exchangeOnly(std::uint16_t port, int calls, const std::string& log)
{
    const bench::BareLoop bareLoop(port);
    const std::string request = bench::saleRequest();
    for (int call = 0; call < calls; ++call) {
        if (!log.empty()) {
            bench::BareLoop::appendToFile(log, logLine);
        }
        require(bareLoop.exchange(request, bench::checksumOf(request)), "the bare loop failed");
    }
}

template <typename Number>
Number numberIn(std::string_view text)
{
    Number number = 0;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

} // namespace

// Counts what the library and this program allocate.
void* operator new(std::size_t size)
{
    ++allocations;
    void* memory = std::malloc(size);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return memory;
}

void operator delete(void* memory) noexcept
{
    std::free(memory);
}

void operator delete(void* memory, std::size_t /*size*/) noexcept
{
    std::free(memory);
}

int main(int count, char** arguments)
{
    if (count >= 4 && std::string_view(arguments[2]) == "--bare") {
        exchangeOnly(numberIn<std::uint16_t>(arguments[1]), numberIn<int>(arguments[3]),
                     count == 5 ? arguments[4] : "");
        return EXIT_SUCCESS;
    }
    const bool isForProfiler = count >= 4 && std::string_view(arguments[2]) == "--calls";
    require(count == 2 || isForProfiler, "usage: item_sale PORT [--calls|--bare N [LOG-FILE]]");
    setLogginOff();
    const std::string address = "127.0.0.1:" + std::string(arguments[1]);
    require(openFM(address.c_str()) == 0, "the library could not connect");
    if (isForProfiler) {
        if (count == 5) {
            setLogginOn(arguments[4]);
        }
        for (int call = numberIn<int>(arguments[3]); call > 0; --call) {
            sell();
        }
    } else {
        if (!bench::pinToCore(0)) {
            std::puts("one core: the scheduler decides the ratio");
        }
        measure(numberIn<std::uint16_t>(arguments[1]));
    }
    closeFM();
    return EXIT_SUCCESS;
}
