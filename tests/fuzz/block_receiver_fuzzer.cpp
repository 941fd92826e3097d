// Replies in blocks out of any bytes, under the rules of both links, with checksums as they come or, so that
// the fuzzer gets behind them, all made right on the way. Beside the library, which pulls its bytes, stands a
// machine that is fed with them: code, reply, what is said back and how often is asked must be the same.
#include "tests/fuzz/fed_receiver.h"
#include "tests/fuzz/fuzzed_bytes.h"

#include <utility>

namespace {

using namespace telvofm;
using namespace telvofm::fuzz;

constexpr std::string_view question = "\x1C\x01\x93\x04";

class FuzzedLink final : public BlockProtocol
{
public:
    FuzzedLink(const ProtocolRules& linkRules, Answers answersToTries, bool makesChecksumsRight)
        : BlockProtocol("fuzzed", linkRules), answers(answersToTries), repairs(makesChecksumsRight)
    {
    }

    void open() override {}
    void close() override {}
    std::size_t writeRaw(std::string_view bytes) override
    {
        require(bytes == question);
        return bytes.size();
    }
    Byte readByte(bool /*passThrough*/, std::int64_t /*waitMs*/) override
    {
        if (unread.empty()) {
            throw Telvo06FMException(code::timeout);
        }
        const auto byte = static_cast<Byte>(unread.front());
        unread.remove_prefix(1);
        return byte;
    }

    std::size_t tries = 0;
    std::string said;

private:
    void beginTry(Exchange /*exchange*/) override
    {
        require(tries < answers.size());
        unread = answers[tries++];
        saysChecksum = true;
    }
    void writeProtocolByte(Byte byte) override
    {
        if (!std::exchange(saysChecksum, false)) {
            said.push_back(static_cast<char>(byte));
        }
    }
    Byte readAnswerByte() override { return readByte(false, 0); }
    void readData(char* target, std::size_t count) override
    {
        for (std::size_t index = 0; index < count; ++index) {
            target[index] = static_cast<char>(readByte(true, 0));
        }
        // The data of a block with its terminator and checksum byte; whatever else is read is one byte.
        if (repairs && count > 2) {
            const std::string head = {':', static_cast<char>(count - 3)};
            target[count - 1] = static_cast<char>(checksum(head) ^ checksum({target, count - 1}));
        }
    }

    Answers answers;
    bool repairs;
    std::string_view unread;
    bool saysChecksum = false;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    FuzzedBytes input(data, size);
    const unsigned flags = input.byte();
    const bool isSerial = (flags & 1U) != 0;
    const bool isStrict = (flags & 2U) != 0;
    const bool repairs = (flags & 4U) != 0;
    const std::string_view second = input.text();
    const std::string_view third = input.text();
    const Answers answers = {input.rest(), second, third};

    FuzzedLink link(isSerial ? serialRules : tcpRules, answers, repairs);
    std::string reply;
    std::int32_t result = 0;
    try {
        reply = isStrict ? link.queryStrict(question) : link.query(question);
    } catch (const Telvo06FMException& failure) {
        result = failure.code;
    }
    const FedReceiver expected(answers, isSerial, isStrict, repairs);
    require(result == expected.result);
    require(result != 0 || reply == expected.reply);
    require(link.said == expected.said);
    require(link.tries == expected.tries);
    return 0;
}
