// Sells the demo receipt (../demo_receipt.md), and finds out what happened when something fails.
//
//     demo_receipt ADDRESS
#include "telvofm.hpp"

#include <iostream>

using namespace telvofm::literals;

namespace {

bool sell(telvofm::Receipt& receipt)
{
    return receipt.begin() && receipt.sell("Chlieb šumavský", 12.50_d, "A", 1.5_d, 8.33_d, "kg") &&
           receipt.sell("Čučoriedková šťava", 3.90_d, "B", 2, 1.95_d, "fľa") &&
           receipt.sell("Žemľa", 2.50_d, "A", 10, 0.25_d, "ks") &&
           receipt.sell("Horúca čokoláda", 2.40_d, "B", 2, 1.20_d, "šál") &&
           receipt.sell("Med", 1.20_d, "C", 3, 0.40_d, "lyž") &&
           receipt.sell("Jogurt", 0.89_d, "C", 1, 0.89_d, "čaš") &&
           receipt.sell("Ťahaná štrúdľa", 3.00_d, "A", 4, 0.75_d, "ťah") &&
           receipt.discount("Zľava stálym zákazníkom", 0.30_d, "A") &&
           receipt.takeBack("Žemľa", 2.50_d, "A", 10, 0.25_d, "ks") && receipt.pay(4, 5.00_d, "Šaľa") &&
           receipt.pay(2, 5.00_d, "Čip. karta") && receipt.pay(3, 4.00_d, "Poukážka") &&
           receipt.pay(1, 20.00_d, "Hotovosť") && receipt.end();
}

// Sells the receipt and returns what has become of it.
telvofm::Recovery sellAndRecover(telvofm::Session& session)
{
    telvofm::Receipt receipt = session.receipt();
    if (sell(receipt)) {
        return {telvofm::Verdict::sold, "receipt " + receipt.number() + ", total " + *receipt.total().text(2),
                receipt.number()};
    }
    std::cout << "failed: " << receipt.failure()->text() << '\n';
    return receipt.recover();
}

} // namespace

int main(int count, char** arguments)
{
    if (count != 2) {
        std::cerr << "usage: demo_receipt ADDRESS\n";
        return 2;
    }
    telvofm::Result<telvofm::Session> session = telvofm::Session::open(arguments[1]);
    if (!session && session.error().kind == telvofm::Kind::libraryError) {
        std::cerr << session.error().text() << '\n';
        return 2;
    }
    if (!session) {
        std::cout << "not sold: " << session.error().text() << '\n';
        return 1;
    }
    if (const telvofm::Result<bool> day = session->beginDay(); !day) {
        std::cout << "not sold: " << day.error().text() << '\n';
        return 1;
    }
    const telvofm::Recovery outcome = sellAndRecover(*session);
    std::cout << outcome.text() << '\n';
    return outcome.verdict == telvofm::Verdict::sold      ? 0
           : outcome.verdict == telvofm::Verdict::notSold ? 1
                                                          : 3;
}
