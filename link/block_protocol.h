// The block protocol that printers speak on every link: requests and data blocks with checksum bytes,
// acknowledge bytes, negative replies and up to three tries. It is written once, over the five operations in
// which transports differ; where TCP and serial links obey different rules, the rules stand side by side in
// the table below.
#pragma once

#include "link/link_driver.h"
#include "link/telvo06fm_exception.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace telvofm {

// What the links do differently.
struct ProtocolRules
{
    // A negative reply ends the exchange with its code; otherwise it costs a try and the last code is thrown.
    bool negativeReplyEndsExchange;
    // Silence where the first answer byte was due costs a try; otherwise the transport's own failure ends
    // all.
    bool silenceCostsTry;
    // A request may be refused by any byte, and the error code follows it; otherwise only NAK refuses.
    bool anyByteRefusesRequest;
    // `query` skips bytes that stand before the answer; otherwise they are an error at once.
    bool querySkipsStrayBytes;
    // `query` prints a line when a block ends with an unknown terminator.
    bool queryReportsUnknownTerminator;
    // What three refused tries of an uploaded block come to.
    std::int32_t uploadFailure;
    // What becomes of an exception of the standard library in a command, and in the other exchanges; some
    // links print its text first.
    std::int32_t commandRuntimeFailure;
    std::int32_t runtimeFailure;
    bool printsRuntimeFailure;
    // What a call gets whose link is closed under it.
    std::int32_t closedLink;
};

inline constexpr ProtocolRules tcpRules = {
    .negativeReplyEndsExchange = true,
    .silenceCostsTry = true,
    .anyByteRefusesRequest = false,
    .querySkipsStrayBytes = false,
    .queryReportsUnknownTerminator = false,
    .uploadFailure = code::timeout,
    .commandRuntimeFailure = code::uploadRefusedOrRuntimeFailure,
    .runtimeFailure = code::runtimeFailure,
    .printsRuntimeFailure = false,
    .closedLink = code::transportFailure,
};

inline constexpr ProtocolRules serialRules = {
    .negativeReplyEndsExchange = false,
    .silenceCostsTry = false,
    .anyByteRefusesRequest = true,
    .querySkipsStrayBytes = true,
    .queryReportsUnknownTerminator = true,
    .uploadFailure = code::uploadRefusedOrRuntimeFailure,
    .commandRuntimeFailure = code::runtimeFailure,
    .runtimeFailure = code::runtimeFailure,
    .printsRuntimeFailure = true,
    .closedLink = code::portNotReady,
};

// The XOR of all bytes.
LinkDriver::Byte checksum(std::string_view bytes);

class BlockProtocol : public LinkDriver
{
public:
    BlockProtocol(std::string connectionText, const ProtocolRules& linkRules);

    Byte sendCommand(std::string_view request) override;
    void sendBlocks(std::string_view data, bool lastPart) override;
    std::string query(std::string_view request) override;
    std::string queryStrict(std::string_view request) override;

protected:
    enum class Exchange
    {
        command,
        upload,
        query,
        strictQuery
    };

    // Leaves nothing of earlier exchanges to be read, as far as the link wants that for this exchange.
    virtual void beginTry(Exchange exchange) = 0;
    virtual void writeProtocolByte(Byte byte) = 0;
    // A byte of the dialogue: the first answer, and what follows a block.
    virtual Byte readAnswerByte() = 0;
    // Bytes inside a block or after NAK, where every value is data.
    virtual void readData(char* target, std::size_t count) = 0;

    // Throws when the link is being closed.
    void endIfInterrupted() const;

private:
    template <typename Run>
    auto translated(std::int32_t runtimeFailureCode, Run run);
    Byte runCommand(std::string_view request);
    void runUpload(std::string_view data, bool lastPart);
    std::string runQuery(std::string_view request, Exchange exchange);
    bool sendBlock(std::string_view block);
    std::optional<Byte> ask(std::string_view unit, Byte unitChecksum, Exchange exchange, int attempt);
    Byte readErrorCode();
    std::string receiveBlocks(Exchange exchange);
    bool receiveBlock(std::string& reply, Exchange exchange);
    bool anotherBlockFollows();
    Byte readAnswerToDamage(int attempt);

    const ProtocolRules& rules;
};

} // namespace telvofm
