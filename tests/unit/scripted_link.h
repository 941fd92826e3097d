// A link without a transport: the bytes that the printer answers stand ready, try by try, and what is sent is
// kept, try by try. When the bytes of a try are used up, the printer is silent.
#pragma once

#include "link/block_protocol.h"

#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace telvofm::test {

class ScriptedLink final : public BlockProtocol
{
public:
    // `answersToTries` are the bytes that follow each sending of a request or block.
    ScriptedLink(const ProtocolRules& linkRules, std::vector<std::string> answersToTries)
        : BlockProtocol("scripted", linkRules), answers(std::move(answersToTries))
    {
    }
    // A link keeps a reference to its rules, so they have to outlive it.
    ScriptedLink(ProtocolRules&& linkRules, std::vector<std::string> answersToTries) = delete;

    void open() override {}
    void close() override {}

    std::size_t writeRaw(std::string_view bytes) override
    {
        sent.back().append(bytes);
        return bytes.size();
    }

    Byte readByte(bool /*passThrough*/, std::int64_t /*waitMs*/) override
    {
        if (unread.empty()) {
            throw Telvo06FMException(code::timeout);
        }
        const auto byte = static_cast<Byte>(unread.front());
        unread.erase(0, 1);
        return byte;
    }

    // One text for each try, in order.
    std::vector<std::string> sent;
    std::string unread;
    std::string trouble; // what the standard library throws in each try, when it is not empty

private:
    void beginTry(Exchange /*exchange*/) override
    {
        unread = sent.size() < answers.size() ? answers[sent.size()] : std::string();
        sent.emplace_back();
        if (!trouble.empty()) {
            throw std::runtime_error(trouble);
        }
    }
    void writeProtocolByte(Byte byte) override { sent.back().push_back(static_cast<char>(byte)); }
    Byte readAnswerByte() override { return readByte(false, 0); }
    void readData(char* target, std::size_t count) override
    {
        for (std::size_t index = 0; index < count; ++index) {
            target[index] = static_cast<char>(readByte(true, 0));
        }
    }

    std::vector<std::string> answers;
};

// The code that the call throws; 0x7FFFFFFF when it throws nothing.
template <typename Call>
std::int32_t codeOf(Call call)
{
    try {
        call();
    } catch (const Telvo06FMException& failure) {
        return failure.code;
    }
    return 0x7FFFFFFF;
}

} // namespace telvofm::test
