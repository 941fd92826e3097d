// Tries every way through something that now and then has a choice, one way after the other.
#pragma once

#include <cstddef>
#include <vector>

namespace telvofm::test::sweep {

class Choices
{
public:
    // Which of the options this way takes, from 0; the first way takes 0 everywhere.
    std::size_t among(std::size_t options)
    {
        if (options < 2) {
            return 0;
        }
        if (position == made.size()) {
            made.push_back({0, options});
        }
        return made[position++].taken;
    }

    // Goes on to the next way; false when there is none.
    bool next()
    {
        made.resize(position); // what this way has not come to
        position = 0;
        while (!made.empty() && ++made.back().taken == made.back().options) {
            made.pop_back();
        }
        return !made.empty();
    }

private:
    struct Choice
    {
        std::size_t taken;
        std::size_t options;
    };
    std::vector<Choice> made;
    std::size_t position = 0;
};

} // namespace telvofm::test::sweep
