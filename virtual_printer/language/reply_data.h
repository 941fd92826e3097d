// The data of a reply in the code page of its link. A long one is made piece by piece as the till asks for
// its blocks: nobody else waits until all of it is there.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace virtual_printer {

class ReplyData
{
public:
    // One block has so much of it at most.
    static constexpr std::size_t mostOfABlock = 256;

    // The next piece; nothing behind the last one. Throws std::runtime_error when it cannot be had.
    using Pieces = std::function<std::optional<std::string>()>;

    ReplyData() = default;
    explicit ReplyData(std::string whole) : atHand(std::move(whole)) {}
    explicit ReplyData(Pieces further) : pieces(std::move(further)) {}

    // Fetches pieces until more than a block is at hand, or all that there is. Throws what they throw.
    void fetch()
    {
        while (pieces && atHand.size() - taken <= mostOfABlock) {
            if (const auto piece = pieces()) {
                atHand.erase(0, taken).append(*piece);
                taken = 0;
            } else {
                pieces = nullptr;
            }
        }
    }

    // What has been fetched and not been taken yet.
    [[nodiscard]] std::string_view fetched() const { return std::string_view(atHand).substr(taken); }
    [[nodiscard]] bool isAllFetched() const { return !pieces; }

    // The data of the next block; empty behind the last one. `fetch` comes before.
    std::string_view takeBlock()
    {
        const std::string_view block = fetched().substr(0, mostOfABlock);
        taken += block.size();
        return block;
    }

private:
    std::string atHand;
    std::size_t taken = 0;
    Pieces pieces;
};

} // namespace virtual_printer
