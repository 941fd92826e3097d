#include "tests/sweep/call_plan.h"

namespace telvofm::test::sweep {
namespace {

constexpr std::size_t blockFrame = 3; // ":", the length and the terminator

std::size_t lengthOfBlock(std::string_view bytes)
{
    return blockFrame + static_cast<Byte>(bytes[1]) + 1;
}

// Only a full block that ends with "more follows" is not the last one of its upload.
bool isContinued(const std::string& block)
{
    constexpr std::size_t fullBlock = 256 + blockFrame;
    return block.size() == fullBlock && block.back() == '\x17';
}

} // namespace

std::vector<std::string> CallPlan::blocks() const
{
    std::vector<std::string> all;
    for (const Exchange& exchange : exchanges) {
        if (exchange.kind == Exchange::Kind::upload) {
            all.insert(all.end(), exchange.units.begin(), exchange.units.end());
        }
    }
    return all;
}

// Behind a request that fetches stand the bytes with which its blocks were answered.
CallPlan planOf(std::string_view sentBytes, Exchange::Kind first)
{
    std::size_t end = 4;
    while (sentBytes[end - 1] != '\x04' || (end > 4 && sentBytes[end - 2] != '\0')) {
        ++end;
    }
    const std::string request(sentBytes.substr(0, end));
    sentBytes.remove_prefix(end + 1);
    std::vector<std::string> blocks;
    while (first == Exchange::Kind::command && !sentBytes.empty()) {
        blocks.emplace_back(sentBytes.substr(0, lengthOfBlock(sentBytes)));
        sentBytes.remove_prefix(blocks.back().size() + 1);
    }
    return planOf(request, blocks, first);
}

CallPlan planOf(const std::string& request, std::span<const std::string> blocks, Exchange::Kind first)
{
    CallPlan plan;
    plan.exchanges.push_back({first, {request}});
    bool continues = false;
    for (const std::string& block : blocks) {
        if (!continues) {
            plan.exchanges.push_back({Exchange::Kind::upload, {}});
        }
        plan.exchanges.back().units.push_back(block);
        continues = isContinued(block);
    }
    return plan;
}

} // namespace telvofm::test::sweep
