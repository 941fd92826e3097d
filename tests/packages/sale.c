/*
 * Sells one receipt at ADDRESS, which the tests fill in; ends with 0, or with which of its steps failed. It
 * uses nothing but telvofm.h: a toolchain without a C library of its own can build it.
 */
#include <telvofm.h>

#if defined(_MSC_VER)
int _fltused = 1; /* what this toolchain wants of programs that use floating point */
#endif

int main(void)
{
    if (getVersion() != 106) {
        return 1;
    }
    if (openFM("ADDRESS") != 0) {
        return 2;
    }
    if (sellingDayBegin(1, 0) < 0) { /* refused when the day is open already */
        return 3;
    }
    if (paragonBegin(1, 0, 1, 0, 0, 1, 0) != 0) {
        return 4;
    }
    if (itemSale(1, 0, "Chlieb", 12.50, 'A', 1.5, 8.33, "ks") != 0) {
        return 5;
    }
    if (payment(1, 0, 1, 12.50, 12.50, 0, "Hotovost") != 0) {
        return 6;
    }
    if (paragonEnd(1, 0, 0) != 0) {
        return 7;
    }
    closeFM();
    return 0;
}
