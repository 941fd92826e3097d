// What tills set and the printer keeps until it is set anew. Texts are UTF-8.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace virtual_printer {

inline constexpr std::size_t vatLetters = 8; // A to H

struct VatRate
{
    int percent = 0;
    std::optional<double> reverseConstant;

    bool operator==(const VatRate&) const = default;
};

struct PaymentType
{
    std::string name;
    std::int64_t minimum = 0; // in cents
    bool mayOverPay = false;  // and then gives change

    bool operator==(const PaymentType&) const = default;
};

struct CodeForm // of bar codes
{
    int textPosition = 0;
    int textFont = 0;
    int height = 50;
    int width = 2;

    bool operator==(const CodeForm&) const = default;
};

struct QrForm
{
    int model = 2;
    int moduleWidth = 4;
    int errorCorrectionLevel = 1;
    int leftMargin = 0;
    int viewMode = 0;

    bool operator==(const QrForm&) const = default;
};

struct Settings
{
    std::string password = "0000";
    std::string servicePassword = "9999";
    std::array<std::optional<VatRate>, vatLetters> vat; // a letter without a rate cannot be sold under
    std::map<int, PaymentType> payments;
    std::int64_t euroExchangeRate = 0; // in ten-thousandths; 0: none
    std::map<int, std::string> header; // by row
    std::string additionalHeader;
    std::string additionalFooter;
    std::string superFooter;
    std::vector<std::string> prelines;
    std::vector<std::string> postlines;
    std::map<int, int> parameters;             // setParameter
    std::map<int, int> printerParameters;      // setPParameter
    std::map<std::string, std::string> others; // what is only kept and shown: mail address, location ...
    CodeForm barCode;
    QrForm qrCode;
    int columns = 40;
    bool printsLogo = false; // in front of each receipt, picture 1

    bool operator==(const Settings&) const = default;
};

// Uploaded pictures by their number, as dots; see paper/picture.h.
struct Picture
{
    int width = 0;
    int height = 0;
    std::vector<bool> dots; // row by row from the top

    [[nodiscard]] bool at(int x, int y) const
    {
        return x >= 0 && y >= 0 && x < width && y < height &&
               dots[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                    static_cast<std::size_t>(x)];
    }
    bool operator==(const Picture&) const = default;
};
using Pictures = std::map<int, Picture>;

// As from the factory: no VAT rates, cash as the only payment type.
Settings factorySettings();
// Ready to sell: the VAT rates 23, 19, 5 and 0 under A to D, and the payment types of
// docs/virtual-printer.md.
Settings standardSettings();

} // namespace virtual_printer
