// What a benchmark promises of its figures: those that are missed make it fail.
#pragma once

#include <cstdio>
#include <string>
#include <vector>

namespace bench {

class Promises
{
public:
    // At most so much.
    void check(const std::string& what, double figure, double most, const std::string& unit)
    {
        if (figure > most) {
            missed.push_back(what + ": at most " + std::to_string(most) + " " + unit + " are promised, " +
                             std::to_string(figure) + " were seen");
        }
    }

    // Says on standard error which are missed; whether none is.
    [[nodiscard]] bool areKept() const
    {
        for (const std::string& sentence : missed) {
            std::fprintf(stderr, "%s\n", sentence.c_str());
        }
        return missed.empty();
    }

private:
    std::vector<std::string> missed;
};

} // namespace bench
