#include "tests/sweep/reference_till.h"

#include "tests/sweep/event_reader.h"

#include <functional>

namespace telvofm::test::sweep {
namespace {

constexpr int tries = 3;
constexpr int timedOut = -10202;
constexpr int unexpected = -10002;
constexpr int uploadRefused = -10001;

Byte sumOfUnit(std::string_view unit)
{
    Byte sum = 0;
    for (const char byte : unit) {
        sum = static_cast<Byte>(sum ^ static_cast<Byte>(byte));
    }
    return sum;
}

class ReferenceTill
{
public:
    ReferenceTill(LivedWire& livedWire, Link kindOfLink) : wire(livedWire), link(kindOfLink) {}

    std::string run(const CallPlan& plan)
    {
        std::string reply;
        for (const Exchange& exchange : plan.exchanges) {
            if (exchange.kind == Exchange::Kind::command) {
                command(exchange.units.front());
            } else if (exchange.kind == Exchange::Kind::upload) {
                upload(exchange.units);
            } else {
                reply = query(exchange.units.front(), exchange.kind);
            }
        }
        wire.expectEnd();
        return reply;
    }

    // The call has returned by then.
    void expectEnd() { wire.expectEnd(); }

private:
    [[nodiscard]] bool isSerial() const { return link == Link::serial; }

    // The first byte of the answer; nothing when silence costs a try.
    std::optional<Byte> ask(const std::string& unit, Exchange::Kind kind, int attempt)
    {
        if (isSerial() && kind == Exchange::Kind::query) {
            wire.expectPause(Milliseconds(50));
        }
        if (isSerial() && kind != Exchange::Kind::strictQuery) {
            wire.expectPurge();
        }
        wire.beginTry();
        wire.expectUnit(unit);
        wire.expectByte(sumOfUnit(unit));
        try {
            return wire.answerByte();
        } catch (const CallEnds& end) {
            if (isSerial() || end.code != timedOut || attempt + 1 == tries) {
                throw;
            }
            return std::nullopt;
        }
    }

    void command(const std::string& request)
    {
        int code = 0;
        for (int attempt = 0; attempt < tries; ++attempt) {
            const auto answer = ask(request, Exchange::Kind::command, attempt);
            if (!answer) {
                continue;
            }
            if (*answer == 0x06) {
                return;
            }
            if (!isSerial() && *answer != 0x15) {
                throw CallEnds{unexpected};
            }
            code = errorCode();
        }
        throw CallEnds{code};
    }

    // Over TCP it ends the call.
    int errorCode()
    {
        const int code = wire.dataByte();
        if (!isSerial()) {
            throw CallEnds{code};
        }
        return code;
    }

    void upload(const std::vector<std::string>& blocks)
    {
        for (const std::string& block : blocks) {
            if (!sendBlock(block)) {
                return;
            }
        }
    }

    bool sendBlock(const std::string& block)
    {
        for (int attempt = 0; attempt < tries; ++attempt) {
            const auto answer = ask(block, Exchange::Kind::upload, attempt);
            if (!answer) {
                continue;
            }
            if (*answer == 0x06) {
                return true;
            }
            if (*answer == 0x03 || *answer == 0x04) {
                return false;
            }
            if (isSerial() || *answer == 0x15) {
                errorCode();
            }
        }
        throw CallEnds{isSerial() ? uploadRefused : timedOut};
    }

    std::string query(const std::string& request, Exchange::Kind kind)
    {
        int code = 0;
        for (int attempt = 0; attempt < tries; ++attempt) {
            const auto first = ask(request, kind, attempt);
            if (!first) {
                continue;
            }
            Byte answer = *first;
            while (answer != 0x3A && answer != 0x04 && answer != 0x15) {
                if (!isSerial() || kind == Exchange::Kind::strictQuery) {
                    throw CallEnds{unexpected};
                }
                answer = wire.answerByte();
            }
            if (answer == 0x3A) {
                return receive();
            }
            if (answer == 0x04) {
                return {};
            }
            code = errorCode();
        }
        throw CallEnds{code};
    }

    std::string receive()
    {
        std::string reply;
        int bad = 0;
        for (;;) {
            const std::string body = blockBody();
            const char terminator = body[body.size() - 2];
            const bool isGood = sumOfUnit(":" + body) == 0; // with its checksum byte
            if (isGood) {
                reply.append(body, 1, body.size() - 3);
            }
            if (isGood && terminator == '\x03') {
                wire.expectByte(0x03);
                return reply;
            }
            if (isGood && terminator == '\x17') {
                bad = 0;
                wire.expectByte(0x06);
                Byte next = wire.answerByte();
                while (next != 0x3A && next != 0x04) {
                    next = wire.answerByte();
                }
                if (next == 0x04) {
                    return reply;
                }
                continue;
            }
            wire.expectByte(0x15);
            if (answerToDamage(++bad) == 0x04) {
                return reply;
            }
            if (bad == tries) {
                throw CallEnds{unexpected};
            }
        }
    }

    // The length, the data, the terminator and the checksum byte.
    std::string blockBody()
    {
        std::string body(1, static_cast<char>(wire.dataByte()));
        const std::size_t size = static_cast<Byte>(body.front()) + std::size_t{4};
        while (body.size() < size) {
            body.push_back(static_cast<char>(wire.dataByte()));
        }
        return body;
    }

    // A block that was damaged three times has decided the call, whatever comes then.
    Byte answerToDamage(int bad)
    {
        Byte answer = 0;
        try {
            answer = wire.answerByte();
        } catch (const CallEnds&) {
            if (bad == tries) {
                throw CallEnds{unexpected};
            }
            throw;
        }
        if (answer != 0x3A && answer != 0x04) {
            throw CallEnds{unexpected};
        }
        return answer;
    }

    LivedWire& wire;
    Link link;
};

} // namespace

Conduct conductOf(const CallPlan& plan, LivedWire& wire, Link link)
{
    Conduct conduct;
    ReferenceTill till(wire, link);
    try {
        try {
            conduct.reply = till.run(plan);
        } catch (const CallEnds& end) {
            conduct.result = end.code;
            conduct.delivers = false;
            till.expectEnd();
        }
    } catch (const Deviation& deviation) {
        conduct.deviation = deviation.what;
    }
    return conduct;
}

Conduct conductOf(const CallPlan& plan, std::span<const WireEvent> events, Link link)
{
    EventReader wire(events, link);
    return conductOf(plan, wire, link);
}

} // namespace telvofm::test::sweep
