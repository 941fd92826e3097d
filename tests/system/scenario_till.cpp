// A till that sells one receipt of two items and then asks for a variable. It stops at the first call that
// does not return 0, as a careful till does, and prints that call with its result.
//
//     scenario_till ADDRESS
#include "telvofm.h"

#include <array>
#include <cstdio>
#include <cstdlib>

namespace {

bool isDone(const char* call, int result)
{
    if (result != 0) {
        std::fprintf(stderr, "%s %d\n", call, result);
    }
    return result == 0;
}

// The text of the variable in the end.
bool sell(std::array<char, 256>& life)
{
    return isDone("sellingDayBegin", sellingDayBegin(1, 0)) &&
           isDone("paragonBegin", paragonBegin(1, 0, 1, 0, 0, 1, 0)) &&
           isDone("itemSale", itemSale(1, 0, "Chlieb", 2.00, 'A', 1.0, 2.00, "ks")) &&
           isDone("itemSale", itemSale(1, 0, "Maslo", 3.00, 'A', 1.0, 3.00, "ks")) &&
           isDone("payment", payment(1, 0, 2, 5.00, 5.00, 0, "Karta")) &&
           isDone("paragonEnd", paragonEnd(1, 0, 0)) &&
           isDone("getVariable", getVariable(1, "LIFE", life.data(), static_cast<int>(life.size())));
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
    if (isDone("openFM", openFM(arguments[1])) && sell(life)) {
        std::fprintf(stderr, "all calls 0, LIFE is \"%s\"\n", life.data());
    }
    closeFM();
    return EXIT_SUCCESS;
}
