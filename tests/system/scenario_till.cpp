// A till that sells one receipt of two items and then asks for a variable. It stops at the first call that
// does not return 0, as a careful till does, and prints that call with its result; before it each call as it
// is made, and at last how many seconds all of them took.
//
//     scenario_till ADDRESS
#include "telvofm.h"

#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>

namespace {

template <typename Call>
bool isDone(const char* name, Call call)
{
    std::fprintf(stderr, "calls %s\n", name); // it may never return
    const int result = call();
    if (result != 0) {
        std::fprintf(stderr, "%s %d\n", name, result);
    }
    return result == 0;
}

// The text of the variable in the end.
bool sell(std::array<char, 256>& life)
{
    const int size = static_cast<int>(life.size());
    return isDone("sellingDayBegin", [] { return sellingDayBegin(1, 0); }) &&
           isDone("paragonBegin", [] { return paragonBegin(1, 0, 1, 0, 0, 1, 0); }) &&
           isDone("itemSale", [] { return itemSale(1, 0, "Chlieb", 2.00, 'A', 1.0, 2.00, "ks"); }) &&
           isDone("itemSale", [] { return itemSale(1, 0, "Maslo", 3.00, 'A', 1.0, 3.00, "ks"); }) &&
           isDone("payment", [] { return payment(1, 0, 2, 5.00, 5.00, 0, "Karta"); }) &&
           isDone("paragonEnd", [] { return paragonEnd(1, 0, 0); }) &&
           isDone("getVariable", [&] { return getVariable(1, "LIFE", life.data(), size); });
}

} // namespace

int main(int count, char** arguments)
{
    if (count != 2) {
        std::fputs("scenario_till: usage: scenario_till ADDRESS\n", stderr);
        return 2;
    }
    setLogginOff();
    std::array<char, 256> life{};
    const auto began = std::chrono::steady_clock::now();
    if (isDone("openFM", [&] { return openFM(arguments[1]); }) && sell(life)) {
        std::fprintf(stderr, "all calls 0, LIFE is \"%s\"\n", life.data());
    }
    closeFM();
    const std::chrono::duration<double> took = std::chrono::steady_clock::now() - began;
    std::fprintf(stderr, "took %.3f\n", took.count());
    return EXIT_SUCCESS;
}
