#include "tests/system/soak_printer.h"

#include "telvofm.h"

#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>

namespace telvofm::test {
namespace {

using Clock = std::chrono::steady_clock;

constexpr int device = 1;
constexpr std::chrono::seconds longest{60};

[[noreturn]] void giveUp(const std::string& why)
{
    std::fprintf(stderr, "soak_till: %s\n", why.c_str());
    std::exit(EXIT_FAILURE);
}

} // namespace

std::string amountOf(long cents)
{
    const std::string digits = std::to_string(cents % 100);
    return std::to_string(cents / 100) + (digits.size() == 1 ? ".0" : ".") + digits;
}

SoakPrinter::SoakPrinter(const char* printersAddress) : address(printersAddress)
{
    setLogginOff();
    reopen();
}

SoakPrinter::~SoakPrinter()
{
    closeFM();
}

Carried SoakPrinter::carry(const std::function<int()>& call, const std::function<Carried()>& found)
{
    constexpr std::chrono::milliseconds slow{2500}; // it may have been sent again
    constexpr int largestRefusal = 255;
    const auto began = Clock::now();
    const int code = call();
    ++allCalls;
    if (Clock::now() - began < slow && code >= 0 && code <= largestRefusal) {
        refused += code == 0 ? 0 : 1;
        return code == 0 ? Carried::once : Carried::no;
    }
    ++unknown;
    reopen();
    const Carried outcome = found();
    unknownDone += outcome == Carried::no ? 0 : 1;
    return outcome;
}

bool SoakPrinter::has(const std::function<int()>& call, const std::function<Carried()>& found)
{
    const Carried outcome = carry(call, found);
    if (outcome == Carried::otherwise) {
        giveUp(lastQuestion + ", which is neither what it was before the call nor what the call makes of it");
    }
    return outcome == Carried::once;
}

Carried SoakPrinter::answered(const char* variable, const char* after, const char* before)
{
    const std::string now = ask(variable);
    if (now == after) {
        return Carried::once;
    }
    return now == before ? Carried::no : Carried::otherwise;
}

Carried SoakPrinter::isNow(const char* variable, const char* after)
{
    return ask(variable) == after ? Carried::once : Carried::no;
}

Carried SoakPrinter::moved(const char* variable, long centsBefore, long centsAfter)
{
    return answered(variable, amountOf(centsAfter).c_str(), amountOf(centsBefore).c_str());
}

Carried SoakPrinter::counted(const char* variable, long before)
{
    return answered(variable, std::to_string(before + 1).c_str(), std::to_string(before).c_str());
}

void SoakPrinter::expect(const char* variable, const std::string& value)
{
    if (ask(variable) != value) {
        giveUp(lastQuestion + ", and the till has " + value);
    }
}

void SoakPrinter::reopen()
{
    const auto began = Clock::now();
    int code = 0;
    do {
        closeFM();
        code = openFM(address.c_str());
        allCalls += 2;
        if (Clock::now() - began > longest) {
            giveUp("the printer cannot be opened any more");
        }
    } while (code != 0);
    ++opened;
}

// Until it is answered.
std::string SoakPrinter::ask(const char* variable)
{
    const auto began = Clock::now();
    std::array<char, 256> text{};
    for (;;) {
        const int code = getVariable(device, variable, text.data(), static_cast<int>(text.size()));
        ++allCalls;
        if (code == 0) {
            lastQuestion = std::string(variable) + " is " + text.data();
            return text.data();
        }
        ++askedAgain;
        if (code < 0) {
            reopen();
        }
        if (Clock::now() - began > longest) {
            giveUp(std::string(variable) + " is not answered any more: " + std::to_string(code));
        }
    }
}

} // namespace telvofm::test
