// Chance, with a liking for edges: what the second opinion's calls are made of. The same seed draws the same.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <random>
#include <string>

namespace telvofm::test {

class Draw
{
public:
    explicit Draw(std::uint64_t seed) : engine(seed) {}

    // From 0 to one below the limit.
    std::uint64_t below(std::uint64_t limit) { return engine() % limit; }
    bool oneIn(std::uint64_t count) { return below(count) == 0; }
    // Both ends included.
    int between(int least, int most)
    {
        return least + static_cast<int>(below(static_cast<unsigned>(most - least) + 1));
    }

    template <typename Value>
    Value oneOf(std::initializer_list<Value> values)
    {
        return values.begin()[below(values.size())];
    }

    int whole();
    double number();
    char character();
    // Without 0x00, as every text of the interface is.
    std::string text();
    // Any bytes of a printer's: short mostly, and around the sizes of blocks.
    std::string reply();
    std::string bytes(std::size_t count);

private:
    std::string textOf(std::size_t length);

    std::mt19937_64 engine;
};

} // namespace telvofm::test
