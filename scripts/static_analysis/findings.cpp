// Mistakes of each kind that the static analysis looks for; it must find what is named behind them.
// scripts/tidy runs over this file first, so that a change to what it leaves out cannot make it blind. It is
// never built.
#include "findings.h"

#include <cstring>
#include <string_view>
#include <vector>

int* freed(bool early)
{
    int* number = new int(3);
    if (early) {
        delete number;
    }
    return early ? new int(*number) : number; // finds clang-analyzer-cplusplus.NewDelete
}

int divide(int dividend)
{
    const int divisor = 0;
    return dividend / divisor; // finds clang-analyzer-core.DivideZero
}

std::string moved(std::string text)
{
    std::string taken = std::move(text);
    return text + taken; // finds bugprone-use-after-move
}

std::string_view nothing()
{
    return std::string_view(nullptr); // finds bugprone-stringview-nullptr
}

void loops(const std::vector<std::string>& texts)
{
    for (std::string text : texts) { // finds performance-for-range-copy
        (void)text.length();
    }
    for (std::size_t i = 0; i < texts.size(); ++i) { // finds modernize-loop-convert
        (void)texts[i].length();
    }
    int count = 0;
    while (count < 3) { // finds bugprone-infinite-loop
    }
}

int compare(const char* left, const char* right)
{
    if (strcmp(left, right)) { // finds bugprone-suspicious-string-compare
        return 1;
    }
    return left == NULL ? 1 : 0; // finds modernize-use-nullptr
}

long wide(int left, int right)
{
    return left * right; // finds bugprone-implicit-widening-of-multiplication-result
}

void throws() noexcept // finds bugprone-exception-escape
{
    throw 1;
}

bool twice(int number, int unused) // finds misc-unused-parameters
{
    return number == 1 && number == 1; // finds misc-redundant-expression
}
