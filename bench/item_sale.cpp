// Measures itemSale over loopback TCP beside a bare loop that makes the same system calls, call by call in
// turn, with the call log off and on. Prints the medians and their ratio; at most 1.05 is wanted of both.
//
//     item_sale              measures
//     item_sale --calls N    only calls itemSale N times with the log off, for a profiler
#include "bench/bare_loop.h"
#include "bench/loopback_printer.h"
#include "telvofm.h"

#include <algorithm>
#include <atomic>
#include <charconv>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <new>
#include <numeric>
#include <optional>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

std::atomic<std::size_t> allocations = 0;

constexpr int warmUpCalls = 2000;
constexpr int measuredCalls = 20000;
constexpr const char* libraryLog = "item_sale_library.txt";
constexpr const char* bareLog = "item_sale_bare.txt";
constexpr std::string_view logLine =
    "itemSale Device 1, row 0, commodityName Chlieb, total price 12.5, vat A, "
    "amount 1.5, unit price 8.3333, unit ks\n";

std::string saleRequest()
{
    const std::string end(1, '\0');
    return "\x1C\x01\x24" + ("0" + end) + "Chlieb" + end + "12.50" + end + "A" + end + "1.500" + end +
           "8.33" + end + "ks " + end + "\x04";
}

char checksumOf(std::string_view request)
{
    return std::accumulate(request.begin(), request.end(), '\0',
                           [](char sum, char byte) { return static_cast<char>(sum ^ byte); });
}

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

template <typename Call>
double microseconds(Call call)
{
    const auto started = Clock::now();
    call();
    return std::chrono::duration<double, std::micro>(Clock::now() - started).count();
}

double median(std::vector<double> values)
{
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

// Calls both in turn, each of them first in every second round.
template <typename Library, typename Bare>
void compare(const char* title, Library library, Bare bare)
{
    std::vector<double> ofLibrary;
    std::vector<double> ofBare;
    for (int call = -warmUpCalls; call < measuredCalls; ++call) {
        const bool libraryFirst = call % 2 == 0;
        const double first = libraryFirst ? microseconds(library) : microseconds(bare);
        const double second = libraryFirst ? microseconds(bare) : microseconds(library);
        if (call >= 0) {
            ofLibrary.push_back(libraryFirst ? first : second);
            ofBare.push_back(libraryFirst ? second : first);
        }
    }
    const double libraryMedian = median(ofLibrary);
    const double bareMedian = median(ofBare);
    std::printf("%-8s  itemSale %7.2f us   bare loop %7.2f us   ratio %.3f\n", title, libraryMedian,
                bareMedian, libraryMedian / bareMedian);
}

void measure(bench::LoopbackPrinter& printer, const std::string& request)
{
    const char checksum = checksumOf(request);
    const bench::BareLoop bareLoop(printer.port());
    printer.serve(2, request.size() + 1);
    const auto exchange = [&] { require(bareLoop.exchange(request, checksum), "the bare loop failed"); };

    setLogginOff();
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
    closeFM(); // before the bare loop's connection, so that the printer ends
}

void callOnly(bench::LoopbackPrinter& printer, const std::string& request, int calls)
{
    printer.serve(1, request.size() + 1);
    for (int call = 0; call < calls; ++call) {
        sell();
    }
    closeFM();
}

std::optional<int> callsAskedFor(int count, char** arguments)
{
    int calls = 0;
    if (count != 3 || std::string_view(arguments[1]) != "--calls") {
        return std::nullopt;
    }
    const std::string_view number = arguments[2];
    std::from_chars(number.data(), number.data() + number.size(), calls);
    return calls;
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
    const std::string request = saleRequest();
    setLogginOff();
    bench::LoopbackPrinter printer;
    const std::string address = "127.0.0.1:" + std::to_string(printer.port());
    require(openFM(address.c_str()) == 0, "the library could not connect");
    if (const auto calls = callsAskedFor(count, arguments)) {
        callOnly(printer, request, *calls);
        return EXIT_SUCCESS;
    }
    if (!bench::pinToCore(0) || std::thread::hardware_concurrency() < 2) {
        std::puts("fewer than two cores: the scheduler decides the ratio");
    }
    measure(printer, request);
    return EXIT_SUCCESS;
}
