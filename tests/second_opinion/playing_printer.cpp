#include "tests/second_opinion/playing_printer.h"

#include <fcntl.h>
#include <stdexcept>
#include <sys/ioctl.h>
#include <unistd.h>
#include <utility>

namespace telvofm::test {
namespace {

constexpr char requestStart = '\x1C';
constexpr char blockStart = ':';
constexpr char requestEnd = '\x04';
constexpr char ack = '\x06';
constexpr std::chrono::milliseconds patience{60'000}; // on a busy machine

char checksum(std::string_view bytes)
{
    char sum = 0;
    for (const char byte : bytes) {
        sum = static_cast<char>(sum ^ byte);
    }
    return sum;
}

} // namespace

PlayingPrinter::~PlayingPrinter()
{
    isEnding = true;
    for (std::thread& thread : threads) {
        thread.join();
    }
}

std::string PlayingPrinter::address() const
{
    return "127.0.0.1:" + std::to_string(listener.port());
}

void PlayingPrinter::acceptConnection()
{
    begin(listener.accept(patience));
    terminal.clear();
}

std::string PlayingPrinter::openTerminal()
{
    begin(wire::openPseudoTerminal(terminal));
    return "COM" + terminal;
}

void PlayingPrinter::begin(wire::Connection connection)
{
    if (!connection.isOpen()) {
        throw std::runtime_error("the printer of the second opinion has no connection");
    }
    {
        const std::scoped_lock held(lock);
        current = nullptr;
        incoming.clear();
    }
    threads.emplace_back([this, held = std::move(connection)]() mutable { serve(std::move(held)); });
    std::unique_lock held(lock);
    heardAll.wait(held, [this] { return current != nullptr; });
}

void PlayingPrinter::serve(wire::Connection connection)
{
    {
        const std::scoped_lock held(lock);
        current = &connection;
    }
    heardAll.notify_all();
    constexpr std::chrono::milliseconds glance{100};
    constexpr std::size_t most = 65'536;
    while (!isEnding) {
        const auto bytes = connection.receive(most, glance);
        const std::scoped_lock held(lock);
        if (!bytes) {
            if (current == &connection) {
                current = nullptr;
            }
            return;
        }
        if (current == &connection && !bytes->empty()) {
            hear(*bytes);
        }
    }
}

void PlayingPrinter::play(Plan next, bool onSerialLine)
{
    const std::scoped_lock held(lock);
    plan = std::move(next);
    isSerial = onSerialLine;
    isOwed = plan.listensOnly && plan.givenLength != 0;
    isSilent = false;
    heard = 0;
}

void PlayingPrinter::say(const std::string& bytes)
{
    {
        const std::scoped_lock held(lock);
        note('S', bytes);
        current->send(bytes);
    }
    if (!terminal.empty()) { // it may deliver late
        const int other = ::open(terminal.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
        for (int delivered = 0; other != -1 && delivered < static_cast<int>(bytes.size());
             std::this_thread::yield()) {
            if (::ioctl(other, FIONREAD, &delivered) != 0) {
                break;
            }
        }
        ::close(other);
    }
}

std::string PlayingPrinter::takeTranscript()
{
    std::unique_lock held(lock);
    heardAll.wait_for(held, patience, [this] { return !isOwed; });
    side = '\0';
    return std::exchange(transcript, {});
}

bool PlayingPrinter::isWaitedForInVain(std::size_t sentByLibrary)
{
    const std::scoped_lock held(lock);
    if (!isSilent || heard != sentByLibrary) {
        return false;
    }
    note('T', {});
    return true;
}

void PlayingPrinter::hear(const std::string& bytes)
{
    note('C', bytes);
    heard += bytes.size();
    incoming += bytes;
    for (std::size_t length = unitLength(); length != 0 && length <= incoming.size(); length = unitLength()) {
        answer(std::string_view(incoming).substr(0, length));
        incoming.erase(0, length);
    }
}

std::size_t PlayingPrinter::unitLength() const
{
    if (plan.givenLength != 0) {
        return plan.givenLength;
    }
    if (incoming.empty()) {
        return 0;
    }
    if (incoming.front() == blockStart) {
        constexpr std::size_t around = 4; // its start, length, end and checksum
        return incoming.size() == 1 ? 0 : static_cast<unsigned char>(incoming[1]) + 1 + around;
    }
    if (incoming.front() != requestStart) {
        return 1;
    }
    if (isSerial) { // comes byte by byte, and its texts hold no 0x04
        constexpr std::size_t behindCode = 3;
        const auto end = incoming.find(requestEnd, behindCode);
        return end == std::string::npos ? 0 : end + 2;
    }
    // Comes whole, or without its checksum byte: its texts may hold everything.
    constexpr std::size_t shortest = 5;
    const bool isWhole =
        incoming.size() >= shortest && incoming[incoming.size() - 2] == requestEnd && checksum(incoming) == 0;
    return isWhole ? incoming.size() : 0;
}

void PlayingPrinter::answer(std::string_view unit)
{
    const bool wantsAnswer =
        plan.givenLength != 0 || unit.front() == requestStart || unit.front() == blockStart;
    Step step{wantsAnswer && !plan.listensOnly ? std::string(1, ack) : std::string()};
    if (!plan.steps.empty()) {
        step = std::move(plan.steps.front());
        plan.steps.pop_front();
    }
    isOwed = step.isBlock;
    isSilent = step.bytes.empty() || step.staysSilent;
    if (!step.bytes.empty()) {
        note('S', step.bytes);
        current->send(step.bytes);
    }
    heardAll.notify_all();
}

void PlayingPrinter::note(char from, std::string_view bytes)
{
    constexpr std::string_view digits = "0123456789abcdef";
    if (from != side || from == 'T') {
        transcript += from;
        side = from;
    }
    for (const char byte : bytes) {
        transcript += digits[static_cast<unsigned char>(byte) >> 4];
        transcript += digits[static_cast<unsigned char>(byte) & 0xF];
    }
}

} // namespace telvofm::test
