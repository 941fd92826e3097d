// TelvoFM for C++20, header only: sells on a fiscal printer, and says after a failure whether it was sold.
//
//     auto session = telvofm::Session::open("192.168.1.10:9100");
//     if (!session) { std::cerr << session.error().text(); return 1; }
//     session->beginDay();
//     telvofm::Receipt receipt = session->receipt();
//     if (receipt.begin() && receipt.sell("Chlieb šumavský", 12.50_d, "A", 1.5_d, 8.33_d, "kg") &&
//         receipt.pay(1, 12.50_d, "Hotovosť") && receipt.end()) {
//         std::cout << "sold: receipt " << receipt.number();
//     } else {
//         std::cout << receipt.failure()->text() << receipt.recover().text();
//     }
//
// Texts are UTF-8 on your side and go to the printer in Windows-1250; what does not fit is refused before
// anything is sent. Amounts are decimal: 12.50_d with `using namespace telvofm::literals`, or Decimal::parse.
// Nothing throws but what the standard library throws when memory runs out, and it compiles with
// -fno-exceptions. bindings/README.md says what stands behind it. Link the library, as for telvofm.h.
#pragma once

#include "telvofm/decimal.hpp"
#include "telvofm/failure.hpp"
#include "telvofm/file_name.hpp"
#include "telvofm/receipt.hpp"
#include "telvofm/recovery.hpp"
#include "telvofm/result.hpp"
#include "telvofm/session.hpp"
#include "telvofm/text.hpp"
