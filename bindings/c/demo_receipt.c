/*
 * Sells the demo receipt (../demo_receipt.md) in plain C, and finds out what happened when a call fails.
 *
 *     demo_receipt ADDRESS
 *
 * Its last line begins with "sold: ", "not sold: " or "ask a person: ", and it ends with 0, 1 or 3; with 2
 * when it is called wrongly, or the library is of another version. Texts are in Windows-1250, as the library
 * takes them: here as escapes, in your sources perhaps as they are, if the sources are in Windows-1250
 * themselves.
 */
#include "telvofm.h"

#include <stdio.h>
#include <string.h>

enum
{
    device = 1,
    interfaceVersion = 106, /* what getVersion returns */
    sold = 0,
    notSold = 1,
    askAPerson = 3
};

static const char* const total = "23.59";

/* Name, total, VAT, quantity, unit price, unit. */
typedef struct Line
{
    const char *name, *sum, *vat, *quantity, *price, *unit;
} Line;

static const Line lines[] = {
    {"Chlieb \232umavsk\375", "12.50", "A", "1.500", "8.33", "kg"}, /* Chlieb šumavský, kg */
    {"\310u\350oriedkov\341 \232\235ava", "3.90", "B", "2.000", "1.95",
     "f\276a"},                                           /* Čučoriedková šťava, fľa */
    {"\216em\276a", "2.50", "A", "10.000", "0.25", "ks"}, /* Žemľa, ks */
    {"Hor\372ca \350okol\341da", "2.40", "B", "2.000", "1.20", "\232\341l"},   /* Horúca čokoláda, šál */
    {"Med", "1.20", "C", "3.000", "0.40", "ly\236"},                           /* Med, lyž */
    {"Jogurt", "0.89", "C", "1.000", "0.89", "\350a\232"},                     /* Jogurt, čaš */
    {"\215ahan\341 \232tr\372d\276a", "3.00", "A", "4.000", "0.75", "\235ah"}, /* Ťahaná štrúdľa, ťah */
};
static const Line zemla = {"\216em\276a", "2.50", "A", "10.000", "0.25", "ks"}; /* Žemľa */
static const char* const discount = "Z\276ava st\341lym z\341kazn\355kom"; /* Zľava stálym zákazníkom */

typedef struct Payment
{
    int type;
    const char *amount, *due, *description; /* due: afterwards */
} Payment;

static const Payment payments[] = {
    {4, "5.00", "18.59", "\212a\276a"},    /* Šaľa */
    {2, "5.00", "13.59", "\310ip. karta"}, /* Čip. karta */
    {3, "4.00", "9.59", "Pouk\341\236ka"}, /* Poukážka */
    {1, "20.00", "0.00", "Hotovos\235"},   /* Hotovosť */
};

/* What the printer says; empty when it cannot be asked. */
typedef struct Answer
{
    char text[256];
} Answer;

static Answer ask(const char* variable)
{
    Answer answer = {""};
    if (getVariable(device, variable, answer.text, sizeof answer.text) != 0) {
        answer.text[0] = '\0';
    }
    return answer;
}

static int is(const char* variable, const char* expected)
{
    return strcmp(ask(variable).text, expected) == 0;
}

/* Says which call failed; nothing is sold into the receipt after a failure. */
static int failed(const char* call, int code)
{
    if (code != 0) {
        printf("failed: %s: code %d\n", call, code);
    }
    return code != 0;
}

static int sale(const Line* line)
{
    return failed("itemSale_str", itemSale_str(device, 0, line->name, line->sum, line->vat, line->quantity,
                                               line->price, line->unit));
}

static int itsVoid(const Line* line)
{
    return failed("itemVoid_str", itemVoid_str(device, 0, line->name, line->sum, line->vat, line->quantity,
                                               line->price, line->unit, ""));
}

static int pay(const Payment* payment)
{
    return failed("payment_str",
                  payment_str(device, 0, payment->type, total, payment->amount, "0", payment->description));
}

/*
 * Before the first payment and behind each: what was sent again because its acknowledge was lost is carried
 * out twice, and its call returns 0.
 */
static int isAnother(const char* variable, const char* expected)
{
    const Answer answer = ask(variable);
    if (strcmp(answer.text, expected) != 0) {
        printf("failed: for the printer %s is \"%s\" and not %s\n", variable, answer.text, expected);
        return 1;
    }
    return 0;
}

static int sellLines(void)
{
    for (size_t i = 0; i < sizeof lines / sizeof *lines; ++i) {
        if (sale(&lines[i])) {
            return 1;
        }
    }
    return failed("itemDiscount_str", itemDiscount_str(device, 0, discount, 0, "0.30", "A")) ||
           itsVoid(&zemla);
}

static int takePayments(int* isFinished)
{
    const size_t count = sizeof payments / sizeof *payments;
    for (size_t i = 0; i < count; ++i) {
        *isFinished = i + 1 == count;
        if (pay(&payments[i]) || isAnother("DUE", payments[i].due)) {
            return 1;
        }
    }
    return 0;
}

/* isFinished: whether the last payment was sent, whatever became of it. */
static int sell(int* isFinished)
{
    return failed("paragonBegin", paragonBegin(device, 0, 1, 0, 0, 1, 0)) || sellLines() ||
           isAnother("TOTAL", total) || takePayments(isFinished) ||
           failed("paragonEnd", paragonEnd(device, 0, 0));
}

/* The number is believed only when it comes twice: of an answer that is damaged nothing else may tell. */
static int isSold(const char* lastBefore)
{
    const Answer last = ask("LAST_RECEIPT");
    return last.text[0] != '\0' && strcmp(last.text, lastBefore) != 0 && is("LAST_TOTAL", total) &&
           is("STATE", "closed") && is("LAST_RECEIPT", last.text);
}

static int isNotSold(const char* lastBefore)
{
    return is("LAST_RECEIPT", lastBefore) && is("STATE", "closed") && is("LAST_RECEIPT", lastBefore);
}

static int saidSold(void)
{
    printf("sold: receipt %s, total %s\n", ask("LAST_RECEIPT").text, total);
    return sold;
}

static int saidAskAPerson(const char* why)
{
    printf("ask a person: %s\n", why);
    return askAPerson;
}

/* None was open before, so that one that is open is ours. Without all answers it is left as it is. */
static void finish(const char* lastBefore, int isFinished)
{
    const Answer last = ask("LAST_RECEIPT"), state = ask("STATE"), sum = ask("TOTAL"), due = ask("DUE");
    if (state.text[0] == '\0' || sum.text[0] == '\0' || due.text[0] == '\0' ||
        strcmp(last.text, lastBefore) != 0 || strcmp(state.text, "closed") == 0) {
        return;
    }
    if (isFinished && strcmp(sum.text, total) == 0 && strcmp(due.text, "0.00") == 0) {
        paragonEnd(device, 0, 0);
    } else {
        destroyParagon(device, 0, "");
    }
}

/*
 * Asks the printer what it has, also after a refusal: it may have carried out the first of several requests
 * and refused its repetition. A receipt that is still open is ended when it is paid as it should be, and
 * cancelled otherwise: then it can be sold again.
 */
static int recover(const char* address, const char* lastBefore, int isFinished)
{
    closeFM(); /* an answer that comes late must not be taken for that of a question */
    if (openFM(address) == 0) {
        finish(lastBefore, isFinished);
        if (isFinished && isSold(lastBefore)) {
            return saidSold();
        }
        if (isNotSold(lastBefore)) {
            printf("not sold: receipt %s is still the last one, and none is open\n", lastBefore);
            return notSold;
        }
    }
    return saidAskAPerson("look at the printer's paper before this receipt is sold again");
}

typedef struct Standing
{
    Answer last, state, lastAgain;
} Standing;

static Standing standing(void)
{
    const Answer last = ask("LAST_RECEIPT"), state = ask("STATE");
    const Standing now = {last, state, ask("LAST_RECEIPT")};
    return now;
}

static int isAnswered(const Standing* now)
{
    return now->last.text[0] != '\0' && now->state.text[0] != '\0' &&
           strcmp(now->last.text, now->lastAgain.text) == 0;
}

static int isClosed(const Standing* now)
{
    return strcmp(now->state.text, "closed") == 0;
}

/* One wrong answer is not believed, and a connection that is dead or has shifted is opened again. */
static Standing standingBefore(const char* address)
{
    const Standing now = standing();
    if (isAnswered(&now) && isClosed(&now)) {
        return now;
    }
    closeFM();
    openFM(address); /* if that fails the questions are not answered */
    return standing();
}

static int sellOrRecover(const char* address)
{
    const Standing before = standingBefore(address);
    if (!isAnswered(&before)) {
        puts("not sold: the printer does not say whether a receipt is open");
        return notSold;
    }
    if (!isClosed(&before)) { /* it is not ours: never ended, never cancelled */
        return saidAskAPerson("another receipt is open; end or cancel it before this one is sold");
    }
    int isFinished = 0;
    if (sell(&isFinished) == 0 && isSold(before.last.text)) {
        return saidSold();
    }
    return recover(address, before.last.text, isFinished);
}

int main(int count, char** arguments)
{
    if (count != 2) {
        fputs("usage: demo_receipt ADDRESS\n", stderr);
        return 2;
    }
    if (getVersion() != interfaceVersion) {
        fprintf(stderr,
                "the library that was found has version %d of the interface, and this program needs %d\n",
                getVersion(), interfaceVersion);
        return 2;
    }
    if (openFM(arguments[1]) != 0) {
        closeFM();
        printf("not sold: no printer answers at %s\n", arguments[1]);
        return notSold;
    }
    sellingDayBegin(device, 0); /* refused when the day is open already: then go on */
    const int result = sellOrRecover(arguments[1]);
    closeFM();
    return result;
}
