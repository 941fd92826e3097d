// Two calls measured in turn, each of them first in every second round: what the machine does meanwhile meets
// both. The medians count.
#pragma once

#include <algorithm>
#include <chrono>
#include <vector>

namespace bench {

struct InTurn // in microseconds
{
    double first = 0;
    double second = 0;
};

template <typename Call>
double microseconds(Call& call)
{
    const auto started = std::chrono::steady_clock::now();
    call();
    return std::chrono::duration<double, std::micro>(std::chrono::steady_clock::now() - started).count();
}

inline double median(std::vector<double> values)
{
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

template <typename First, typename Second>
InTurn callInTurn(First first, Second second)
{
    constexpr int warmUpCalls = 2000;
    constexpr int measuredCalls = 20000;
    std::vector<double> ofFirst;
    std::vector<double> ofSecond;
    for (int call = -warmUpCalls; call < measuredCalls; ++call) {
        double before = 0;
        double time = 0;
        if (call % 2 == 0) {
            before = microseconds(first);
            time = microseconds(second);
        } else {
            time = microseconds(second);
            before = microseconds(first);
        }
        if (call >= 0) {
            ofFirst.push_back(before);
            ofSecond.push_back(time);
        }
    }
    return {median(std::move(ofFirst)), median(std::move(ofSecond))};
}

} // namespace bench
