#include "tests/second_opinion/plan.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace telvofm::test {
namespace {

constexpr char accepted = '\x06';
constexpr char nak = '\x15';
constexpr char eot = '\x04';
constexpr char etx = '\x03';
constexpr char etb = '\x17';
constexpr int tries = 3;

// A byte that is none of those.
char anyBut(Draw& draw, std::string_view excluded)
{
    char byte{};
    do {
        byte = static_cast<char>(draw.below(256));
    } while (excluded.find(byte) != std::string_view::npos);
    return byte;
}

// A TCP printer's sign that it is busy or ready again, now and then, before what it says.
std::string maybeFlowControl(Draw& draw, bool isSerial)
{
    std::string bytes;
    while (!isSerial && draw.oneIn(20)) {
        bytes += draw.oneOf({'\x11', '\x13'});
    }
    return bytes;
}

std::string block(std::string_view data, char end, bool isDamaged)
{
    std::string bytes = ":";
    bytes += static_cast<char>(data.size() - 1);
    bytes += data;
    bytes += end;
    char sum = 0;
    for (const char byte : bytes) {
        sum = static_cast<char>(sum ^ byte);
    }
    return bytes += static_cast<char>(isDamaged ? sum ^ 0x20 : sum);
}

class Planning
{
public:
    Planning(Draw& source, bool serial) : draw(source), isSerial(serial) {}

    // True when the request will have been accepted.
    bool acknowledge()
    {
        for (int refused = 0; draw.oneIn(8); ++refused) {
            if (refused == tries || !refuse(!draw.oneIn(4))) {
                return false;
            }
        }
        return answer({std::string(1, accepted)});
    }

    void reply(bool isStrict)
    {
        for (int refused = 0; draw.oneIn(10); ++refused) {
            if (refused == tries || !refuse(true)) {
                return;
            }
        }
        std::string stray;
        if (draw.oneIn(40)) {
            stray = anyBut(draw, ":\x04\x15\x11\x13");
            if (!isSerial || isStrict) {
                answer({stray});
                return;
            }
        }
        if (draw.oneIn(10)) {
            answer({stray + eot});
            return;
        }
        blocks(draw.reply(), stray);
    }

    void upload()
    {
        constexpr int blocks = 12;
        bool isRefused = false;
        for (int count = acknowledge() ? 0 : blocks; count < blocks; ++count) {
            std::string bytes(1, accepted);
            isRefused = draw.oneIn(isRefused ? 2 : 20);
            if (draw.oneIn(40)) {
                bytes = draw.oneOf({eot, etx});
            } else if (draw.oneIn(40)) {
                bytes = refusal();
            } else if (isRefused) {
                bytes = isSerial
                            ? std::string{anyBut(draw, "\x06\x03\x04"), static_cast<char>(draw.below(256))}
                            : std::string(1, anyBut(draw, "\x06\x03\x04\x15\x11\x13"));
            }
            if (!answer({bytes})) {
                return;
            }
        }
    }

    Plan take() { return std::move(plan); }

private:
    // What is said to a request or a block; false when it is not, in any of three tries.
    bool answer(Step step)
    {
        for (int silent = 0; !isSerial && draw.oneIn(silent == 0 ? 80 : 2); ++silent) {
            if (silent == tries) {
                return false;
            }
            beSilent();
            add({draw.oneOf({"", "\x11"}), false, true}); // idle
        }
        if (!isSerial && draw.oneIn(80)) {
            beSilent();
            while (draw.oneIn(3)) {
                add({"\x13", false, true}); // busy
            }
        } else { // behind a question "ready" is the whole answer
            step.bytes.insert(0, maybeFlowControl(draw, isSerial));
        }
        add(std::move(step));
        return true;
    }

    // Until the library asks.
    void beSilent()
    {
        add({});
        plan.isSilentAtTimes = true;
    }

    void add(Step step) { plan.steps.push_back(std::move(step)); }

    std::string refusal()
    {
        return {nak, draw.oneIn(8) ? draw.oneOf({'\x11', '\x13'}) : static_cast<char>(draw.below(256))};
    }

    // With a negative reply, or with what is none. True when the request will come again.
    bool refuse(bool isProper)
    {
        if (!isSerial && draw.oneIn(20)) { // its code comes when it is asked for, or never
            plan.isSilentAtTimes = true;
            if (answer({std::string(1, nak), false, true})) {
                add(draw.oneIn(3) ? Step{} : Step{refusal().substr(1)});
            }
            return false;
        }
        std::string bytes = refusal();
        if (!isProper) {
            bytes = isSerial ? std::string{anyBut(draw, "\x06"), bytes.back()}
                             : std::string(1, anyBut(draw, "\x06\x15\x11\x13"));
        }
        return answer({bytes}) && isSerial;
    }

    void blocks(std::string_view data, std::string before)
    {
        while (!data.empty()) {
            const std::size_t most = std::min<std::size_t>(data.size(), 256);
            const std::string_view piece = data.substr(0, draw.oneIn(4) ? 1 + draw.below(most) : most);
            data.remove_prefix(piece.size());
            const char end = data.empty() && !draw.oneIn(8) ? etx : etb;
            if (!pieceInTries(std::move(before), piece, end)) {
                return;
            }
            before = strayBytes();
            if (data.empty() && end == etb) {
                add({before + eot});
            }
        }
    }

    // False when the reply ends with this block, however it does.
    bool pieceInTries(std::string before, std::string_view piece, char end)
    {
        for (int failed = 0; draw.oneIn(40) || (failed > 0 && draw.oneIn(2));) {
            // Damaged, or whole but with an end that no block has.
            const bool isDamaged = !draw.oneIn(4);
            addBlock(before, block(piece, isDamaged ? end : anyBut(draw, "\x03\x17"), isDamaged),
                     piece.size());
            before = maybeFlowControl(draw, isSerial);
            if (++failed == tries || draw.oneIn(8)) {
                add({draw.oneOf({std::string(1, eot), std::string(1, anyBut(draw, ":\x04\x11\x13")),
                                 std::string(failed == tries ? ":" : "\x04")})});
                return false;
            }
        }
        addBlock(before, block(piece, end, false), piece.size());
        return true;
    }

    void addBlock(const std::string& before, const std::string& bytes, std::size_t data)
    {
        plan.replyLength += data;
        if (isSerial || !draw.oneIn(60)) {
            add({before + bytes, true});
            return;
        }
        // It stops somewhere in the block, and goes on when it is asked, or does not.
        const std::size_t half = 1 + draw.below(bytes.size() - 1);
        add({before + bytes.substr(0, half), false, true});
        plan.isSilentAtTimes = true;
        add(draw.oneIn(4) ? Step{} : Step{bytes.substr(half), true});
    }

    std::string strayBytes()
    {
        std::string bytes;
        while (draw.oneIn(20)) {
            bytes += anyBut(draw, ":\x04");
        }
        return bytes;
    }

    Draw& draw;
    Plan plan;
    bool isSerial;
};

} // namespace

Plan drawPlan(Draw& draw, Exchange exchange, bool isSerial)
{
    Planning planning(draw, isSerial);
    if (exchange == Exchange::command) {
        planning.acknowledge();
    } else if (exchange == Exchange::upload) {
        planning.upload();
    } else {
        planning.reply(exchange == Exchange::strictQuery);
    }
    return planning.take();
}

} // namespace telvofm::test
