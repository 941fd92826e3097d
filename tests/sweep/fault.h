// One fault on a wire: what happens to the byte of one direction at one place of a call's exchange.
#pragma once

#include "tests/sweep/simulated_printer.h"

#include <array>
#include <cstddef>
#include <string>
#include <vector>

namespace telvofm::test::sweep {

enum class Link
{
    tcp,
    serial
};

enum class Direction
{
    toPrinter,
    toTill
};

struct Fault
{
    enum class Kind
    {
        none,
        closed, // the connection ends, or the port goes away, in front of the byte
        lost,   // nothing comes through any more, in either direction
        flipped,
        inserted, // in front of the byte; at the end behind the last one
        deleted,
        doubled,
        delayed, // and all that follows it
        busy     // delayed, and the printer says meanwhile that it is busy
    };

    Kind kind = Kind::none;
    Direction direction = Direction::toTill;
    std::size_t position = 0;
    Byte value = 0; // the bits that are flipped, or the byte that is inserted
    Milliseconds delay{0};
    bool isAtEnd = false; // behind the last byte
};

// For people, "the byte 12 to the printer, bit 3 flipped" say.
std::string textOf(const Fault& fault);

// The bytes of a call without a fault.
struct Extent
{
    std::size_t toPrinter;
    std::vector<Role> toTill;
};

// Every fault of such a call.
std::vector<Fault> allFaults(const Extent& extent, Link link);

} // namespace telvofm::test::sweep
