// What is behind the opaque pointer that callers create, hand to the `..._ResultObject` exports, read and
// destroy: a byte string of any length that may hold 0x00 bytes and always has one behind its last byte.
#pragma once

#include "api/frame.h"

#include <string>
#include <utility>

struct ResultObject
{
    std::string contents;
};

namespace telvofm {

// As `runQuery`; the reply replaces what the object held, and `afterwards` sees it there. A failure leaves
// the object as it was, and a missing object is refused before anything is sent.
template <typename Query, typename Afterwards>
int fillResult(ResultObject* result, Query query, Afterwards afterwards)
{
    if (result == nullptr) {
        return -1;
    }
    return runQuery(query, [&](std::string reply) {
        result->contents = std::move(reply);
        afterwards(std::as_const(result->contents));
    });
}

template <typename Query>
int fillResult(ResultObject* result, Query query)
{
    return fillResult(result, query, [](const std::string& /*contents*/) {});
}

} // namespace telvofm
