// What a TCP link has received and nobody has taken yet, at most 256 bytes. Raw access may share it with a
// running exchange, so it is safe on its own; nothing waits for the network inside.
#pragma once

#include <algorithm>
#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <mutex>
#include <span>

namespace telvofm {

class InputBuffer
{
public:
    // Moves received bytes to the target, as many as there are and fit.
    std::size_t take(std::span<char> target)
    {
        const std::scoped_lock lock(state);
        const std::size_t taken = std::min(target.size(), count);
        std::copy_n(bytes.begin() + static_cast<std::ptrdiff_t>(position), taken, target.begin());
        position += taken;
        count -= taken;
        return taken;
    }

    void discard()
    {
        const std::scoped_lock lock(state);
        count = 0;
    }

    // How often it has been filled: who waits for the network notes it before the wait.
    [[nodiscard]] std::uint64_t fillings() const { return filled; }

    // Fills it through `receive`, which gets the room and returns the number of bytes. It is not called when
    // another thread has filled the buffer since `seen`: that thread has taken what the network had ready,
    // and receiving once more could block. Nor is it called while bytes are left, which it would overwrite.
    template <typename Receive>
    void fillOnceSince(std::uint64_t seen, Receive receive)
    {
        const std::scoped_lock lock(state);
        if (filled == seen && count == 0) {
            count = receive(std::span<char>(bytes));
            position = 0;
            ++filled;
        }
    }

private:
    std::mutex state;
    std::array<char, 256> bytes{};
    std::size_t position = 0;
    std::size_t count = 0;
    std::atomic<std::uint64_t> filled = 0;
};

} // namespace telvofm
