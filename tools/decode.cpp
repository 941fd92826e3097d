#include "tools/decode.h"

#include "tools/command_names.h"

#include <charconv>
#include <cstdio>

namespace telvofm::tools {
namespace {

constexpr char requestStart = 0x1C;
constexpr char blockStart = 0x3A;

std::string hexadecimal(std::string_view bytes)
{
    std::string text;
    for (const char byte : bytes) {
        char pair[4];
        std::snprintf(pair, sizeof pair, "%02x ", static_cast<unsigned>(static_cast<unsigned char>(byte)));
        text += pair;
    }
    return text;
}

char checksumOf(std::string_view bytes)
{
    char sum = 0;
    for (const char byte : bytes) {
        sum = static_cast<char>(sum ^ byte);
    }
    return sum;
}

// A text in quotes, with everything that is no character in hexadecimal escapes.
std::string quoted(std::string_view text, const CodePage& codePage)
{
    std::string result = "\"";
    for (const char byte : text) {
        const auto value = static_cast<unsigned char>(byte);
        if (value < 0x20 || value == 0x7F) {
            char escape[5];
            std::snprintf(escape, sizeof escape, "\\x%02X", static_cast<unsigned>(value));
            result += escape;
        } else {
            result += utf8Of(value, codePage);
        }
    }
    return result + "\"";
}

// The bytes of one direction, read piece by piece.
class Decoder
{
public:
    Decoder(std::string_view allBytes, bool isFromTill, const CodePage& texts)
        : rest(allBytes), fromTill(isFromTill), codePage(texts)
    {
    }

    std::string lines()
    {
        std::string text;
        while (!rest.empty()) {
            text += fromTill ? "till     " : "printer  ";
            text += next() + "\n";
        }
        return text;
    }

private:
    std::string next()
    {
        if (rest.front() == requestStart && fromTill) {
            return request();
        }
        if (rest.front() == blockStart) {
            return block();
        }
        const char byte = take(1).front();
        if (byte == 0x15 && !fromTill) {
            return rest.empty()
                       ? "refused, the error code is missing"
                       : "refused with error " + std::to_string(static_cast<unsigned char>(take(1).front()));
        }
        return single(byte);
    }

    [[nodiscard]] std::string single(char byte) const
    {
        switch (byte) {
        case 0x06:
            return fromTill ? "block received, go on" : "accepted";
        case 0x03:
            return fromTill ? "last block received" : "enough";
        case 0x04:
            return "no more data";
        case 0x15:
            return "block damaged, once more";
        case 0x11:
            return fromTill ? "are you there?" : "ready";
        case 0x13:
            return "busy";
        default:
            return "unknown byte " + hexadecimal({&byte, 1});
        }
    }

    std::string request()
    {
        constexpr std::size_t headSize = 3;
        constexpr char requestEnd = 0x04;
        std::size_t end = headSize;
        std::string fields;
        while (end < rest.size() && rest[end] != requestEnd) {
            const std::size_t fieldEnd = rest.find('\0', end);
            if (fieldEnd == std::string_view::npos) {
                break;
            }
            fields += " " + quoted(rest.substr(end, fieldEnd - end), codePage);
            end = fieldEnd + 1;
        }
        if (end >= rest.size() || rest[end] != requestEnd) {
            return "a request that is broken off: " + hexadecimal(take(rest.size()));
        }
        const std::string_view unit = take(end + 1);
        const auto code = static_cast<unsigned char>(unit[2]);
        std::string name(commandName(code));
        if (name.empty()) {
            name = "unknown command " + hexadecimal(unit.substr(2, 1));
        }
        return name + " to device " + std::to_string(static_cast<unsigned char>(unit[1])) + fields +
               checksum(unit);
    }

    std::string block()
    {
        const std::size_t dataSize =
            rest.size() < 2 ? 0 : static_cast<unsigned char>(rest[1]) + std::size_t{1};
        const std::size_t unitSize = 2 + dataSize + 1;
        if (dataSize == 0 || rest.size() < unitSize) {
            return "a block that is broken off: " + hexadecimal(take(rest.size()));
        }
        const std::string_view unit = take(unitSize);
        const char terminator = unit.back();
        return std::string(terminator == 0x03 ? "last block " : "block ") +
               quoted(unit.substr(2, dataSize), codePage) + checksum(unit);
    }

    // Reads the checksum byte behind a unit and judges it.
    std::string checksum(std::string_view unit)
    {
        if (rest.empty()) {
            return ", the checksum is missing";
        }
        const char expected = checksumOf(unit);
        return take(1).front() == expected ? ", checksum ok"
                                           : ", checksum wrong, " + hexadecimal({&expected, 1}) + "expected";
    }

    std::string_view take(std::size_t count)
    {
        const std::string_view taken = rest.substr(0, count);
        rest.remove_prefix(taken.size());
        return taken;
    }

    std::string_view rest;
    bool fromTill;
    const CodePage& codePage;
};

std::string bytesOf(std::string_view pairs)
{
    constexpr std::size_t pairSize = 3;
    std::string bytes;
    for (; pairs.size() >= 2; pairs.remove_prefix(std::min(pairSize, pairs.size()))) {
        unsigned value = 0;
        std::from_chars(pairs.data(), pairs.data() + 2, value, 16);
        bytes.push_back(static_cast<char>(value));
    }
    return bytes;
}

} // namespace

std::string decodeRawLog(std::string_view rawLog, const CodePage& codePage)
{
    constexpr std::string_view fromTill = "C: ";
    constexpr std::string_view fromPrinter = "S: ";
    std::string text;
    while (!rawLog.empty()) {
        const std::size_t end = std::min(rawLog.find('\n'), rawLog.size());
        std::string_view line = rawLog.substr(0, end);
        rawLog.remove_prefix(std::min(end + 1, rawLog.size()));
        if (line.ends_with('\r')) {
            line.remove_suffix(1);
        }
        if (line.starts_with(fromTill) || line.starts_with(fromPrinter)) {
            const std::string bytes = bytesOf(line.substr(fromTill.size()));
            text += Decoder(bytes, line.starts_with(fromTill), codePage).lines();
        } else if (!line.empty()) {
            text += "?        not a line of a raw log\n";
        }
    }
    return text;
}

} // namespace telvofm::tools
