// A virtual printer, a till that talks to it in bytes, and a clock that tests set.
#pragma once

#include "virtual_printer/protocol_server.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

namespace virtual_printer {

// A till that has said everything beforehand and then hangs up.
class ScriptedTill : public ByteStream
{
public:
    std::optional<unsigned char> read() override
    {
        if (next == said.size()) {
            return std::nullopt;
        }
        return static_cast<unsigned char>(said[next++]);
    }

    void write(std::string_view bytes) override { heard += bytes; }

    std::string said;
    std::string heard;

private:
    std::size_t next = 0;
};

inline std::string withChecksum(const std::string& unit)
{
    char sum = 0;
    for (const char byte : unit) {
        sum = static_cast<char>(sum ^ byte);
    }
    return unit + sum;
}

inline std::string request(unsigned char command, const std::vector<std::string>& fields = {})
{
    std::string unit = {'\x1C', '\x01', static_cast<char>(command)};
    for (const std::string& field : fields) {
        unit += field + '\0';
    }
    return withChecksum(unit + '\x04');
}

inline std::string blockOf(const std::string& data, char terminator)
{
    return withChecksum(std::string(":") + static_cast<char>(data.size() - 1) + data + terminator);
}

inline const std::string accepted = "\x06";

inline std::string refused(Refusal refusal)
{
    return {'\x15', static_cast<char>(refusal)};
}

inline std::string item(unsigned char command, const std::string& name, const std::string& total,
                        const std::string& vat = "A")
{
    return request(command, {"0", name, total, vat, "1.000", total, "ks "});
}

// A line of the paper with its two parts at the edges.
inline std::string line(const std::string& left, const std::string& right)
{
    return left + std::string(Paper::columns - left.size() - right.size(), ' ') + right;
}

class VirtualPrinter : public testing::Test
{
protected:
    // What the printer answers to these bytes; the connection ends behind them.
    std::string answerTo(const std::string& bytes)
    {
        ScriptedTill till;
        till.said = bytes;
        ProtocolServer(till, printer).serve();
        return till.heard;
    }

    // The data of all blocks that answer the request; each is acknowledged.
    std::string dataOf(const std::string& bytes)
    {
        constexpr std::size_t mostBlocks = 64;
        const std::string reply = answerTo(bytes + std::string(mostBlocks, '\x06'));
        std::string data;
        std::size_t next = 0;
        while (next + 1 < reply.size() && reply[next] == ':') {
            const std::size_t size = static_cast<unsigned char>(reply[next + 1]) + std::size_t{1};
            data += reply.substr(next + 2, size);
            next += size + 4; // its start, its size, the terminator and the checksum
        }
        EXPECT_TRUE(next == reply.size() || (data.empty() && reply == "\x04")) << reply;
        return data;
    }

    void openReceipt()
    {
        ASSERT_EQ(answerTo(request(0x29, {"0"}) + request(0x20, {"0", "1", "0", "0", "1", "0"})),
                  accepted + accepted);
    }

    void closeReceipt()
    {
        ASSERT_EQ(
            answerTo(request(0x30, {"0", "1", "0", "0", "0", "Hotovost  "}) + request(0x22, {"0", "0"})),
            accepted + accepted);
    }

    // A whole receipt of one item.
    void sell(const std::string& name, const std::string& total, const std::string& vat = "A")
    {
        openReceipt();
        ASSERT_EQ(answerTo(item(0x24, name, total, vat)), accepted);
        closeReceipt();
    }

    void closeDay() { ASSERT_EQ(answerTo(request(0x50, {"Z", "0"})), accepted); }

    // What a request prints.
    std::vector<std::string> paperOf(const std::string& bytes)
    {
        paper.clear();
        EXPECT_EQ(answerTo(bytes), accepted);
        return paper;
    }

    std::string time = "2026-01-01 12:00";
    std::vector<std::string> paper;
    Printer printer{CodePage::windows1250, [this](std::string_view text) { paper.emplace_back(text); },
                    [this] { return time; }};
};

} // namespace virtual_printer
