/*
 * A small till: sells one receipt through the library, in the plain, whole-number and text variants of its
 * calls. When one of them fails, and at the end, it asks the printer what it has; troubles it tells on the
 * error stream.
 *
 *     telvofm-till ADDRESS CALL-LOG RAW-LOG
 *     telvofm-till --version
 *
 * It sells 12.50 + 3.20 + 4.99 and takes the 3.20 back: 17.49, paid with 10.00 in cash and 7.49 by card. Its
 * texts are in Windows-1250, as the library takes them. It is the only one at its printer: a receipt that is
 * open is its own, and it cancels it and sells again. It ends with 0 when the receipt is sold, with 1 when it
 * is not, and with 3 when nobody knows.
 */
#include "telvofm.h"

#include <stdio.h>
#include <string.h>
#include <unistd.h>

enum
{
    device = 1,
    sold = 0,
    notSold = 1,
    unknown = 3,
    silent = 64, /* the printer said nothing, on a serial line */
    portMissing = -10200,
    transportFailure = -10201
};

static const char* const total = "17.49";

static struct
{
    const char* address;
    int isDoubtful; /* an answer may be under way that belongs to a call that has failed */
    int isAway;     /* the printer did not answer a question, and is not waited for again */
} printer;

/* A serial port that has gone may be another printer's when one of its name is there again. */
static int isGone(int code)
{
    return strncmp(printer.address, "COM", 3) == 0 && (code == portMissing || code == transportFailure);
}

/* Says which call failed, and why; behind a failure the printer is asked. */
static int failed(const char* call, int code)
{
    if (code == 0) {
        return 0;
    }
    fprintf(stderr, "till: %s failed with code %d (%s)\n", call, code,
            code > 0 && code != silent ? "the printer refused it" : "the link failed: it may be done or not");
    printer.isDoubtful = 1;
    printer.isAway = printer.isAway || isGone(code);
    return 1;
}

/* The printer may have lost its power for a moment. */
static int isOpenedAgain(void)
{
    enum
    {
        tries = 5
    };
    for (int left = tries; left > 0; --left) {
        closeFM();
        if (openFM(printer.address) == 0) {
            return 1;
        }
        sleep(1);
    }
    return 0;
}

/* What the printer says; empty when it does not tell. */
typedef struct Answer
{
    char text[256];
} Answer;

static Answer ask(const char* variable)
{
    Answer answer = {""};
    printer.isAway = printer.isAway || (printer.isDoubtful && !isOpenedAgain());
    printer.isDoubtful = 0;
    if (!printer.isAway && getVariable(device, variable, answer.text, sizeof answer.text) != 0) {
        printer.isAway = 1;
        answer.text[0] = '\0';
    }
    return answer;
}

static int is(const char* variable, const char* expected)
{
    return strcmp(ask(variable).text, expected) == 0;
}

/* The printer refuses a day that is open already: then it goes on. */
static int beganDay(int code)
{
    return code > 0 && code != silent ? 0 : code;
}

static int beginReceipt(void)
{
    return failed("paragonBegin", paragonBegin(device, 0, 1, 0, 0, 1, 0));
}

static int cancelReceipt(void)
{
    return failed("destroyParagon", destroyParagon(device, 0, ""));
}

static int isOpen(Answer state)
{
    return strcmp(state.text, "open") == 0 || strcmp(state.text, "paying") == 0;
}

/* One may be open that was begun when the printer could not be asked any more. */
static int begin(void)
{
    if (!beginReceipt()) {
        return 0;
    }
    if (!isOpen(ask("STATE"))) {
        return 1;
    }
    fputs("till: a receipt is open already; it is cancelled, and the sale begins again\n", stderr);
    return cancelReceipt() || beginReceipt();
}

/* Of a payment that failed perhaps only the answer was lost: the printer knows what is due. */
static int failedToPay(const char* call, int code, const char* dueAfterwards)
{
    if (!failed(call, code)) {
        return 0;
    }
    if (!is("STATE", "paying") || !is("DUE", dueAfterwards)) { /* without a receipt 0.00 is due, too */
        return 1;
    }
    fprintf(stderr, "till: but the printer says that %s is due, as it should be: the sale goes on\n",
            dueAfterwards);
    return 0;
}

static int sellLinesAndPay(void)
{
    /* chlieb, rozok and caj with their accents */
    return failed("itemSale", itemSale(device, 0, "Chlieb \x9Aumavsk\xFD", 12.50, 'A', 1.5, 8.33, "kg")) ||
           failed("itemSale_int", itemSale_int(device, 0, "Ro\x9Eok", 320, "A", 8000, 4000, "ks")) ||
           failed("itemSale_str", itemSale_str(device, 0,
                                               "\xC8"
                                               "aj zelen\xFD",
                                               "4.99", "B", "1.000", "4.99", "ks")) ||
           failed("itemVoid_int", itemVoid_int(device, 0, "Ro\x9Eok", 320, "A", 8000, 4000, "ks", "")) ||
           failedToPay("payment", payment(device, 0, 1, 17.49, 10.00, 0, "Hotovos\x9D"), "7.49") ||
           failedToPay("payment_int", payment_int(device, 0, 2, 1749, 749, 0, "Karta"), "0.00");
}

static int said(const char* sentence, int result)
{
    fprintf(stderr, "till: %s\n", sentence);
    return result;
}

static int cancelled(void)
{
    return cancelReceipt() ? said("the receipt could not be cancelled; it is not sold", notSold)
                           : said("the receipt is cancelled and not sold", notSold);
}

/* Of a sale that has failed before its end. */
static int giveUp(void)
{
    const Answer state = ask("STATE");
    if (isOpen(state)) {
        return cancelled();
    }
    return strcmp(state.text, "closed") == 0
               ? said("no receipt is open, and nothing is sold", notSold)
               : said("the printer does not tell; nothing is sold, and the next sale cancels what is open",
                      notSold);
}

/* Every receipt here has the same total: only another number than before tells that this one is ended. */
static int hasEnded(Answer lastBefore)
{
    const Answer last = ask("LAST_RECEIPT");
    return last.text[0] != '\0' && strcmp(last.text, lastBefore.text) != 0 && is("LAST_TOTAL", total);
}

static int end(Answer lastBefore)
{
    const int hasFailed = failed("paragonEnd", paragonEnd(device, 0, 0));
    if (hasEnded(lastBefore)) {
        return hasFailed ? said("but the printer has ended the receipt: it is sold", sold) : sold;
    }
    if (!hasFailed) {
        said("paragonEnd returned 0, but the printer tells of no new receipt", unknown);
    }
    return isOpen(ask("STATE"))
               ? cancelled()
               : said("the printer does not tell; its paper shows whether the receipt is sold", unknown);
}

static int sell(void)
{
    if (failed("sellingDayBegin", beganDay(sellingDayBegin(device, 0)))) {
        return giveUp();
    }
    const Answer lastBefore = ask("LAST_RECEIPT");
    if (lastBefore.text[0] == '\0' || begin() || sellLinesAndPay()) {
        return giveUp();
    }
    return end(lastBefore);
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
    printer.address = arguments[1];
    setLogginOn(arguments[2]);
    setRawLogginOn(arguments[3]);
    if (openFM(printer.address) != 0) {
        fprintf(stderr, "till: no printer answers at %s; start one or check the address\n", printer.address);
        closeFM();
        return 1;
    }
    const int result = sell();
    closeFM();
    return result;
}
