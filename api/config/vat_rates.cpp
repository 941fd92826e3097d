// setVAT_str logs as setVAT, setAllVats2 and setAllVats3 log as setAllVats, which is meant.
#include "commands/config/vat_rates.h"

#include "api/call_log.h"
#include "api/frame.h"
#include "api/telvofm.h"
#include "device/floating_point.h"

#include <algorithm>
#include <array>

using namespace telvofm;

namespace {

constexpr std::size_t fivePairs = 10;
constexpr std::size_t eightPairs = 16;

// The sixth to eighth pair (F to H) are logged with the labels of E, which is meant.
constexpr std::array<std::string_view, eightPairs> pairLabels = {
    ", vatValueA ", ", reverseConstantA ", ", vatValueB ", ", reverseConstantB ",
    ", vatValueC ", ", reverseConstantC ", ", vatValueD ", ", reverseConstantD ",
    ", vatValueE ", ", reverseConstantE ", ", vatValueE ", ", reverseConstantE ",
    ", vatValueE ", ", reverseConstantE ", ", vatValueE ", ", reverseConstantE ",
};

NumberText asLogged(double value)
{
    return NumberText::general(value);
}

NumberText asLogged(int value)
{
    return NumberText::whole(value);
}

template <typename Values>
std::string labelled(const Values& values)
{
    std::string text;
    for (std::size_t i = 0; i < values.size(); ++i) {
        text.append(pairLabels[i]);
        text.append(asLogged(values[i]).view());
    }
    return text;
}

template <std::size_t count>
std::array<int, count> withoutFractions(const std::array<double, count>& values)
{
    std::array<int, count> wholes{};
    std::transform(values.begin(), values.end(), wholes.begin(), truncated);
    return wholes;
}

int setOne(std::string_view name, int device, const char* password, char vat, double vatValue,
           double reverseConstant)
{
    const Text ownPassword(password);
    logCall(name, "device ", device, ", password ", "*****", ", vat ", vat, ", vatValue ", number(vatValue),
            ", reverseConstant ", number(reverseConstant));
    return runCommand([&](Device& printer) {
        config::setVat(printer, device, ownPassword, vat, vatValue, reverseConstant);
    });
}

} // namespace

int setVAT(int device, const char* password, char vat, double vatValue, double reverseConstant)
{
    return setOne("setVAT", device, password, vat, vatValue, reverseConstant);
}

int setVAT_str(int device, const char* password, const char* vat, double vatValue, double reverseConstant)
{
    return setOne("setVAT", device, password, firstCharacter(vat), vatValue, reverseConstant);
}

int setVAT_int(int device, const char* password, const char* vat, int vatValue, int reverseConstant)
{
    return setOne("setVAT_int", device, password, firstCharacter(vat), quotient(vatValue, 100),
                  quotient(reverseConstant, 100));
}

int setAllVats(int device, const char* password, double vatValueA, double reverseConstantA, double vatValueB,
               double reverseConstantB, double vatValueC, double reverseConstantC, double vatValueD,
               double reverseConstantD, double vatValueE, double reverseConstantE)
{
    const Text ownPassword(password);
    const std::array<double, fivePairs> pairs = {vatValueA, reverseConstantA, vatValueB, reverseConstantB,
                                                 vatValueC, reverseConstantC, vatValueD, reverseConstantD,
                                                 vatValueE, reverseConstantE};
    logCall("setAllVats", "device ", device, ", password ", "*****", labelled(pairs));
    return runCommand(
        [&](Device& printer) { config::setAllVats(printer, device, ownPassword, withoutFractions(pairs)); });
}

int setAllVats2(int device, const char* password, double vatValueA, double reverseConstantA, double vatValueB,
                double reverseConstantB, double vatValueC, double reverseConstantC, double vatValueD,
                double reverseConstantD, double vatValueE, double reverseConstantE, double vatValueF,
                double reverseConstantF, double vatValueG, double reverseConstantG, double vatValueH,
                double reverseConstantH, const char* date)
{
    const Text ownPassword(password);
    const Text ownDate(date);
    const std::array<double, eightPairs> pairs = {vatValueA, reverseConstantA, vatValueB, reverseConstantB,
                                                  vatValueC, reverseConstantC, vatValueD, reverseConstantD,
                                                  vatValueE, reverseConstantE, vatValueF, reverseConstantF,
                                                  vatValueG, reverseConstantG, vatValueH, reverseConstantH};
    logCall("setAllVats", "device ", device, ", password ", "*****", labelled(pairs), ", date ", ownDate);
    return runCommand([&](Device& printer) {
        config::setAllVats(printer, device, ownPassword, withoutFractions(pairs), ownDate);
    });
}

int setAllVats3(int device, const char* password, int vatValueA, int reverseConstantA, int vatValueB,
                int reverseConstantB, int vatValueC, int reverseConstantC, int vatValueD,
                int reverseConstantD, int vatValueE, int reverseConstantE, int vatValueF,
                int reverseConstantF, int vatValueG, int reverseConstantG, int vatValueH,
                int reverseConstantH, const char* date)
{
    const Text ownPassword(password);
    const Text ownDate(date);
    const std::array<int, eightPairs> pairs = {vatValueA, reverseConstantA, vatValueB, reverseConstantB,
                                               vatValueC, reverseConstantC, vatValueD, reverseConstantD,
                                               vatValueE, reverseConstantE, vatValueF, reverseConstantF,
                                               vatValueG, reverseConstantG, vatValueH, reverseConstantH};
    logCall("setAllVats", "device ", device, ", password ", "*****", labelled(pairs), ", date ", ownDate);
    return runCommand(
        [&](Device& printer) { config::setAllVats(printer, device, ownPassword, pairs, ownDate); });
}
