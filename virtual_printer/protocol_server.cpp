#include "virtual_printer/protocol_server.h"

#include <numeric>

namespace virtual_printer {
namespace {

constexpr unsigned char requestStart = 0x1C;
constexpr unsigned char blockStart = 0x3A;
constexpr unsigned char accepted = 0x06;
constexpr unsigned char refused = 0x15;
constexpr unsigned char lastBlock = 0x03;
constexpr unsigned char moreBlocks = 0x17;
constexpr unsigned char noData = 0x04;
constexpr unsigned char ready = 0x11;
constexpr std::size_t largestPiece = 256;

unsigned char checksumOf(std::string_view bytes)
{
    return std::accumulate(bytes.begin(), bytes.end(), static_cast<unsigned char>(0),
                           [](unsigned char sum, char byte) {
                               return static_cast<unsigned char>(sum ^ static_cast<unsigned char>(byte));
                           });
}

} // namespace

void ProtocolServer::serve()
{
    while (const auto byte = stream.read()) {
        if (*byte == requestStart && !takeRequest()) {
            return;
        }
        if (*byte == blockStart && printer.uploads().areExpected() && !takeBlock()) {
            return;
        }
        if (*byte == ready) {
            writeByte(ready); // the till asks whether somebody is there
        }
    }
}

bool ProtocolServer::takeRequest()
{
    RequestReader reader;
    for (;;) {
        const auto byte = stream.read();
        if (!byte) {
            return false;
        }
        if (reader.take(*byte)) {
            break;
        }
        if (reader.isTooLong()) {
            return true; // noise
        }
    }
    const auto checksum = stream.read();
    if (!checksum) {
        return false;
    }
    if (*checksum != reader.checksum()) {
        refuse(Refusal::wrongChecksum);
        return true;
    }
    const Answer answer = printer.execute(reader.request());
    if (answer.refusal != Refusal::none) {
        refuse(answer.refusal);
        return true;
    }
    if (!answer.data) {
        writeByte(accepted);
        return true;
    }
    return sendData(*answer.data);
}

bool ProtocolServer::takeBlock()
{
    const auto length = stream.read();
    if (!length) {
        return false;
    }
    std::string block = {static_cast<char>(blockStart), static_cast<char>(*length)};
    for (std::size_t i = 0; i < *length + std::size_t{2}; ++i) { // the data and the terminator
        const auto byte = stream.read();
        if (!byte) {
            return false;
        }
        block.push_back(static_cast<char>(*byte));
    }
    const auto checksum = stream.read();
    if (!checksum) {
        return false;
    }
    if (*checksum != checksumOf(block)) {
        refuse(Refusal::wrongChecksum);
        return true;
    }
    const bool isLast = static_cast<unsigned char>(block.back()) == lastBlock;
    printer.uploads().take(block.substr(2, *length + std::size_t{1}), isLast);
    writeByte(accepted);
    return true;
}

bool ProtocolServer::sendData(const std::string& data)
{
    std::string_view rest = data;
    if (rest.empty()) {
        writeByte(noData);
        return true;
    }
    while (!rest.empty()) {
        const std::string_view piece = rest.substr(0, largestPiece);
        rest.remove_prefix(piece.size());
        if (!sendBlock(piece, rest.empty())) {
            return false;
        }
    }
    return true;
}

bool ProtocolServer::sendBlock(std::string_view piece, bool isLast)
{
    std::string block = {static_cast<char>(blockStart), static_cast<char>(piece.size() - 1)};
    block.append(piece).push_back(static_cast<char>(isLast ? lastBlock : moreBlocks));
    block.push_back(static_cast<char>(checksumOf(block)));
    constexpr int tries = 3;
    for (int attempt = 0; attempt < tries; ++attempt) {
        stream.write(block);
        auto answer = stream.read();
        while (answer && *answer == ready) { // a probe of an impatient till
            answer = stream.read();
        }
        if (!answer) {
            return false;
        }
        if (*answer == accepted || *answer == lastBlock) {
            return true;
        }
    }
    writeByte(noData);
    return true;
}

void ProtocolServer::refuse(Refusal refusal)
{
    const std::string answer = {static_cast<char>(refused), static_cast<char>(refusal)};
    stream.write(answer);
}

void ProtocolServer::writeByte(unsigned char byte)
{
    const char single = static_cast<char>(byte);
    stream.write({&single, 1});
}

} // namespace virtual_printer
