// What a call wants of the wire: its exchanges, one after the other, as a call without a fault has sent them.
#pragma once

#include "tests/sweep/fault.h"
#include "tests/sweep/wire_event.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace telvofm::test::sweep {

struct Exchange
{
    enum class Kind
    {
        command,
        query,
        strictQuery,
        upload
    };

    Kind kind;
    // A request, or the blocks of one upload, without their checksum bytes.
    std::vector<std::string> units;
};

struct CallPlan
{
    std::vector<Exchange> exchanges;

    [[nodiscard]] const std::string& request() const { return exchanges.front().units.front(); }
    [[nodiscard]] bool fetches() const { return exchanges.front().kind != Exchange::Kind::command; }
    // All uploaded blocks in their order.
    [[nodiscard]] std::vector<std::string> blocks() const;
};

// From the bytes that a call without a fault has sent; `first` is what its request wants.
CallPlan planOf(std::string_view sentBytes, Exchange::Kind first);
// From its request and the blocks of all its uploads.
CallPlan planOf(const std::string& request, std::span<const std::string> blocks, Exchange::Kind first);

} // namespace telvofm::test::sweep
