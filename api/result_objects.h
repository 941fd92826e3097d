// What is behind the opaque pointer that callers create, hand to the `..._ResultObject` exports, read and
// destroy: a byte string of any length that may hold 0x00 bytes and always has one behind its last byte.
#pragma once

#include <string>

struct ResultObject
{
    std::string contents;
};
