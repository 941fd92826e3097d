#include "virtual_printer/fiscal/subtotal_shares.h"

#include <algorithm>
#include <cstdlib>
#include <utility>
#include <vector>

namespace virtual_printer {
namespace {

using LetterSum = std::pair<char, Cents>;

// Those above zero, the largest first; of equal ones the first letter.
std::vector<LetterSum> largestFirst(const ByVat& sums)
{
    std::vector<LetterSum> list;
    std::copy_if(sums.begin(), sums.end(), std::back_inserter(list),
                 [](const auto& sum) { return sum.second > 0; });
    std::stable_sort(list.begin(), list.end(),
                     [](const LetterSum& one, const LetterSum& other) { return one.second > other.second; });
    return list;
}

} // namespace

ByVat shareOut(Cents amount, const ByVat& sums)
{
    const std::vector<LetterSum> list = largestFirst(sums);
    Cents whole = 0;
    for (const auto& [letter, sum] : list) {
        whole += sum;
    }
    ByVat shares;
    Cents rest = amount;
    for (const auto& [letter, sum] : list) {
        shares[letter] = amount * sum / whole; // towards zero, so that the rest is of the sign of the amount
        rest -= shares[letter];
    }
    for (const auto& [letter, sum] : list) {
        const Cents more = std::max(rest, -sum - shares[letter]);
        shares[letter] += more;
        rest -= more;
    }
    std::erase_if(shares, [&](const auto& share) {
        return share.second == 0 &&
               share.first != list.front().first; // which stands for an amount of nothing
    });
    return shares;
}

} // namespace virtual_printer
