// A byte stream to one till: a TCP connection or a serial line.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace virtual_printer {

class ByteStream
{
public:
    virtual ~ByteStream() = default;
    // The next byte; nothing when the till has gone.
    virtual std::optional<unsigned char> read() = 0;
    virtual void write(std::string_view bytes) = 0;
};

// A stream on an open descriptor, which it closes. TCP acknowledges at once: a till that sends a request and
// its checksum in two pieces must not wait for the timer of the acknowledgements.
class DescriptorStream : public ByteStream
{
public:
    DescriptorStream(int openDescriptor, bool isTcp);
    DescriptorStream(const DescriptorStream&) = delete;
    DescriptorStream& operator=(const DescriptorStream&) = delete;
    ~DescriptorStream() override;

    std::optional<unsigned char> read() override;
    void write(std::string_view bytes) override;

private:
    int descriptor;
    bool tcp;
    std::string received;
    std::size_t next = 0;
};

// Each returns a descriptor, or throws std::runtime_error with a sentence for the user.
int listenOn(const std::string& host, const std::string& port);
int acceptOn(int listener);
int openTerminal(const std::string& path);
// The controlling end of a new pseudo-terminal, whose own end stays open so that tills may come and go.
int openPseudoTerminal(std::string& path);

// "127.0.0.1:4711".
std::string addressOf(int listener);

} // namespace virtual_printer
