// A printer as far as its wire goes, written from the protocol alone: it decodes what it hears with its own
// code, answers, and keeps a record of what it received, executed and said. By this record a call is judged.
// It knows no clock and no link: who carries the bytes tells it the time.
#pragma once

#include <chrono>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace telvofm::test::sweep {

using Byte = unsigned char;
using Milliseconds = std::chrono::milliseconds;

// What a byte of the printer's is for.
enum class Role
{
    answer, // the first byte of an answer, and what follows a block
    errorCode,
    blockStart,
    blockLength,
    blockData,
    blockTerminator,
    blockChecksum,
    flow // the answer to a probe
};

struct SaidByte
{
    Byte value;
    Role role;
    int unit; // which of the requests and blocks that it has heard this answers, from 1; 0 for none
};

// A request that came to its end.
struct HeardRequest
{
    int number;
    std::string bytes;                 // without the checksum byte
    std::optional<int> refusal;        // the code that went back; nothing when it was executed
    std::string reply;                 // what it fetched
    std::vector<std::string> uploaded; // accepted blocks behind it, without their checksum bytes
    Milliseconds at;
};

class SimulatedPrinter
{
public:
    static constexpr int damagedUnit = 99; // the code for a wrong checksum byte

    // Requests to this address are refused with this code.
    void refuse(Byte address, int code) { refusals[address] = code; }
    enum class Probes
    {
        unknown,  // on a serial line
        whenIdle, // it is silent while it has something else to do
        answersAlways
    };
    void setProbes(Probes habit) { probes = habit; }
    // A unit that pauses for longer is given up.
    void giveUpAfter(Milliseconds pause) { longestPause = pause; }
    // Until then it is busy, and says so to every probe.
    void beBusyUntil(Milliseconds moment) { busyUntil = moment; }

    void hear(Byte byte, Milliseconds now);
    // The codes of all refusals that it has said, of requests and of blocks.
    [[nodiscard]] const std::vector<int>& refused() const { return refusalsSaid; }
    // Requests and blocks that came to their end.
    [[nodiscard]] std::size_t unitsHeard() const { return units; }
    // What it wants to say, once.
    std::vector<SaidByte> takeSaid() { return std::exchange(said, {}); }

    [[nodiscard]] const std::vector<HeardRequest>& heard() const { return requests; }
    // What it would reply to the request of this number, in pieces.
    static std::vector<std::string> replyOf(int number, Byte command);

private:
    enum class State
    {
        idle,
        request,
        requestChecksum,
        block,
        blockChecksum
    };

    void hearBetweenUnits(Byte byte, Milliseconds now);
    void endRequest(Byte checksum, Milliseconds now);
    void endUploadedBlock(Byte checksum);
    void sendPiece();
    void say(int value, Role role);
    void sayRefusal(int code);

    State state = State::idle;
    std::string unit;
    Milliseconds lastHeard{0};
    Milliseconds longestPause{1000};
    Milliseconds busyUntil{0};
    Probes probes = Probes::whenIdle;
    std::size_t units = 0;
    bool takesUpload = false;
    std::map<Byte, int> refusals;
    std::vector<HeardRequest> requests;
    std::vector<int> refusalsSaid;
    std::vector<std::string> pieces; // of the reply that is being sent
    std::size_t piece = 0;
    bool awaitsBlockAnswer = false;
    std::vector<SaidByte> said;
};

} // namespace telvofm::test::sweep
