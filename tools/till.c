/*
 * A small till: sells one receipt through the library, in the plain, whole-number and text variants of its
 * calls.
 *
 *     telvofm-till ADDRESS CALL-LOG RAW-LOG
 *     telvofm-till --version
 *
 * It sells 12.50 + 3.20 + 4.99 and takes the 3.20 back: 17.49, paid with 10.00 in cash and 7.49 by card. Its
 * texts are in Windows-1250, as the library takes them.
 */
#include "telvofm.h"

#include <stdio.h>
#include <string.h>

/* Says which call failed and why; nothing follows a failure. */
static int failed(const char* call, int code)
{
    if (code == 0) {
        return 0;
    }
    fprintf(stderr, "till: %s failed with code %d (%s); the receipt is not sold\n", call, code,
            code > 0 ? "the printer refused it" : "the printer could not be reached");
    return 1;
}

/* The printer refuses a day that is open already: then it goes on. */
static int beganDay(int code)
{
    return code > 0 ? 0 : code;
}

/* A payment that failed may count all the same, when only its answer was lost: the printer knows what is due.
 */
static int failedToPay(const char* call, int code, const char* dueAfterwards)
{
    char due[256];
    if (code != 0 && getVariable(1, "DUE", due, sizeof due) == 0 &&
        strncmp(due, dueAfterwards, strlen(dueAfterwards)) == 0) {
        printf("till: %s failed with code %d, but the printer says that %s is due: it counts\n", call, code,
               dueAfterwards);
        return 0;
    }
    return failed(call, code);
}

static int sell(void)
{
    const int device = 1;
    return failed("sellingDayBegin", beganDay(sellingDayBegin(device, 0))) ||
           failed("paragonBegin", paragonBegin(device, 0, 1, 0, 0, 1, 0)) ||
           /* chlieb, rozok and caj with their accents */
           failed("itemSale", itemSale(device, 0, "Chlieb \x9Aumavsk\xFD", 12.50, 'A', 1.5, 8.33, "kg")) ||
           failed("itemSale_int", itemSale_int(device, 0, "Ro\x9Eok", 320, "A", 8000, 4000, "ks")) ||
           failed("itemSale_str", itemSale_str(device, 0,
                                               "\xC8"
                                               "aj zelen\xFD",
                                               "4.99", "B", "1.000", "4.99", "ks")) ||
           failed("itemVoid_int", itemVoid_int(device, 0, "Ro\x9Eok", 320, "A", 8000, 4000, "ks", "")) ||
           failedToPay("payment", payment(device, 0, 1, 17.49, 10.00, 0, "Hotovos\x9D"), "7.49") ||
           failedToPay("payment_int", payment_int(device, 0, 2, 1749, 749, 0, "Karta"), "0.00") ||
           failed("paragonEnd", paragonEnd(device, 0, 0));
}

int main(int count, char** arguments)
{
    if (count == 2 && strcmp(arguments[1], "--version") == 0) {
        puts("telvofm-till " TELVOFM_VERSION);
        return 0;
    }
    if (count != 4) {
        fputs("till: usage: telvofm-till ADDRESS CALL-LOG RAW-LOG\n", stderr);
        return 2;
    }
    setLogginOn(arguments[2]);
    setRawLogginOn(arguments[3]);
    if (openFM(arguments[1]) != 0) {
        fprintf(stderr, "till: no printer answers at %s; start one or check the address\n", arguments[1]);
        closeFM();
        return 1;
    }
    const int result = sell();
    closeFM();
    return result;
}
