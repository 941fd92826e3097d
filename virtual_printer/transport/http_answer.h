// An answer as the bytes that a client gets.
#pragma once

#include "virtual_printer/control/http_exchange.h"

#include <string>

namespace virtual_printer {

enum class BehindAnswer
{
    connectionStays,
    connectionEnds
};

std::string headOf(const HttpAnswer& answer, BehindAnswer behind);
// Its pieces follow as chunks, of which the last one says that it is the last.
std::string headOf(const Pieces& pieces, BehindAnswer behind);
std::string chunkOf(const Piece& piece);
// Its pieces follow until the connection ends.
std::string headOf(const Stream& stream);

} // namespace virtual_printer
