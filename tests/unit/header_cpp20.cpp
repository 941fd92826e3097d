// The header serves C++ as it stands: nothing is included before it.
#include "telvofm.h"

#include <type_traits>

// What the library takes as a byte is a bool to its callers.
static_assert(std::is_same_v<decltype(&freeID), int (*)(int, bool, const char*)>);
static_assert(std::is_same_v<decltype(&setPaymentType), int (*)(int, int, double, bool)>);
static_assert(std::is_same_v<decltype(&setPaymentType2), int (*)(int, const char*, int, double, bool)>);
static_assert(std::is_same_v<decltype(&setAutoTwoLineItem), void (*)(bool)>);

int main()
{
    return getVersion() == 106 ? 0 : 1;
}
