// A wire as a till has to live it, step by step: each is held against what is known of the wire. What ends
// the call is thrown, and so is a step that the wire does not bear out.
#pragma once

#include "tests/sweep/fault.h"

#include <string>
#include <string_view>

namespace telvofm::test::sweep {

// The rules end the call here, with this code.
struct CallEnds
{
    int code;
};

// What is known leaves the rules.
struct Deviation
{
    std::string what;
};

class LivedWire
{
public:
    explicit LivedWire(Link kindOfLink) : link(kindOfLink) {}
    LivedWire(const LivedWire&) = delete;
    LivedWire& operator=(const LivedWire&) = delete;
    virtual ~LivedWire() = default;

    virtual void expectPause(Milliseconds time) = 0;
    virtual void expectPurge() = 0;
    // Over TCP what was received before and not used is dropped.
    virtual void beginTry() = 0;
    // In one piece over TCP, byte by byte on a serial line.
    virtual void expectUnit(std::string_view unit) = 0;
    virtual void expectByte(Byte byte) = 0;
    virtual void expectEnd() const = 0;

    // A byte of the dialogue, and one inside a block or behind a refusal, where every value is data.
    Byte answerByte() { return link == Link::tcp ? tcpByte(false) : serialByte(); }
    Byte dataByte() { return link == Link::tcp ? tcpByte(true) : serialByte(); }

protected:
    static constexpr int transportFailed = -10201;
    static constexpr int timedOut = -10202;
    static constexpr int notReady = -10103;
    static constexpr int silentAlthoughReady = 64;
    static constexpr Milliseconds tcpStep{3000};
    static constexpr Milliseconds serialStep{15000};

    // Whether a step of a wait over TCP brings nothing; none is waited when a byte lies ready.
    virtual bool isSilentStep() = 0;
    virtual Byte takeReceived() = 0;
    virtual Byte serialByte() = 0;

    const Link link;

private:
    Byte tcpByte(bool passThrough);
};

} // namespace telvofm::test::sweep
