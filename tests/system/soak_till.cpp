// A till that sells whatever happens: random receipts, cancellations, drawer movements and days, and looks
// now and then whether the printer's sums are its own, until it has made so many calls of the library. After
// a call whose outcome is unknown it opens the session again and asks the printer, as docs/integration.md
// tells a till to do. At the end it prints its books as JSON, and by how much the memory and the handles of
// this process have grown since it was warm.
//
//     soak_till ADDRESS CALLS SEED
#include "telvofm.h"
#include "tests/system/soak_books.h"
#include "tests/system/soak_printer.h"

#include <cstdio>
#include <cstdlib>
#include <random>

namespace {

using telvofm::test::Carried;
using telvofm::test::SoakBooks;
using telvofm::test::SoakPrinter;

constexpr int device = 1;

class Till
{
public:
    Till(const char* address, long callsToMake, unsigned seed)
        : printer(address), most(callsToMake), random(seed)
    {
    }

    void run()
    {
        constexpr long warmingUp = 10; // a tenth
        while (printer.calls() < most) {
            if (!isWarm && printer.calls() >= most / warmingUp) {
                isWarm = true;
                books.noteProcess();
            }
            next();
        }
        if (isDayOpen) {
            closeDay();
        }
        books.print(printer);
    }

private:
    long upTo(long largest) { return std::uniform_int_distribution<long>(1, largest)(random); }

    void next()
    {
        constexpr long receiptsOfADay = 300;
        constexpr long drawerIn = 20;   // one of so many
        constexpr long comparisons = 5; // one of so many
        if (!isDayOpen) {
            isDayOpen = printer.has([] { return sellingDayBegin(device, 0); },
                                    [&] { return printer.answered("DAY", "open", "closed"); });
        } else if (upTo(receiptsOfADay) == 1 && receiptsToday > 0) {
            closeDay();
        } else if (upTo(drawerIn) == 1) {
            putIntoDrawer();
        } else if (upTo(comparisons) == 1) {
            printer.expect("TURNOVER_EVER", telvofm::test::amountOf(books.turnover));
            printer.expect("DRAWER", telvofm::test::amountOf(books.drawer));
        } else {
            sell();
        }
    }

    void closeDay()
    {
        const long before = books.closures;
        isDayOpen = !printer.has([] { return printReport(device, 'Z', 0); },
                                 [&] { return printer.counted("CLOSURES", before); });
        books.closures += isDayOpen ? 0 : 1;
        receiptsToday = isDayOpen ? receiptsToday : 0;
    }

    void putIntoDrawer()
    {
        const long cents = upTo(5000);
        const Carried outcome = printer.carry(
            [&] { return depositeInDrawer_int(device, 0, "vklad", 0, static_cast<int>(cents), 1); },
            [&] { return printer.moved("DRAWER", books.drawer, books.drawer + cents); });
        if (outcome == Carried::otherwise) { // twice, because its acknowledge was lost or late
            printer.expect("DRAWER", telvofm::test::amountOf(books.drawer + 2 * cents));
            books.drawer += cents;
        }
        books.drawer += outcome == Carried::no ? 0 : cents;
    }

    void sell()
    {
        constexpr long cancelled = 10; // one of so many
        if (!printer.has([] { return paragonBegin(device, 0, 1, 0, 0, 1, 0); },
                         [&] { return printer.answered("STATE", "open", "closed"); })) {
            return;
        }
        long total = 0;
        for (long items = upTo(5); items > 0; --items) {
            const long cents = upTo(9999);
            const Carried outcome =
                printer.carry([&] { return sellItem(cents); },
                              [&] { return printer.moved("TOTAL", total, total + cents); });
            if (outcome == Carried::otherwise) {
                return cancel(); // twice, because its acknowledge was lost or late
            }
            total += outcome == Carried::once ? cents : 0;
        }
        // A receipt with nothing on it is not paid.
        return total == 0 || upTo(cancelled) == 1 ? cancel() : pay(total);
    }

    int sellItem(long cents)
    {
        const int price = static_cast<int>(cents);
        if (cents % 2 == 0) {
            return itemSale_int(device, 0, "Chlieb", price, "A", 1000, price * 100, "ks");
        }
        const double sum = static_cast<double>(cents) / 100;
        return itemSale(device, 0, "Rozok", sum, 'B', 1, sum, "ks");
    }

    void cancel()
    {
        while (!printer.has([] { return destroyParagon(device, 0, "storno"); },
                            [&] { return printer.isNow("STATE", "closed"); })) {
        }
        ++books.cancelled;
        ++receiptsToday;
    }

    // Exactly, in cash or by card. A payment that was refused is tried again: the receipt has to end.
    void pay(long total)
    {
        const int cents = static_cast<int>(total);
        const int type = upTo(2) == 1 ? 1 : 2;
        while (!printer.has([&] { return payment_int(device, 0, type, cents, cents, 0, "platba"); },
                            [&] { return printer.isNow("DUE", "0.00"); })) {
        }
        while (!printer.has([] { return paragonEnd(device, 0, 0); },
                            [&] { return printer.answered("STATE", "closed", "paying"); })) {
        }
        ++books.receipts;
        ++receiptsToday;
        books.turnover += total;
        books.drawer += type == 1 ? total : 0;
    }

    SoakPrinter printer;
    long most;
    std::mt19937 random;
    SoakBooks books;
    bool isWarm = false;
    bool isDayOpen = false;
    long receiptsToday = 0;
};

} // namespace

int main(int count, char** arguments)
{
    if (count != 4) {
        std::fputs("soak_till: usage: soak_till ADDRESS CALLS SEED\n", stderr);
        return 2;
    }
    Till till(arguments[1], std::atol(arguments[2]), static_cast<unsigned>(std::atol(arguments[3])));
    till.run();
    return EXIT_SUCCESS;
}
