// The one exception type of the library. Every failure inside travels as a Telvo06FMException; the frame of
// the exports (api/frame.h) turns it into the code that the caller gets. Everything includes this header, so
// it includes nothing of ours.
#pragma once

#include <array>
#include <cstdint>
#include <stdexcept>

namespace telvofm {

// The library's own codes. 0 to 255 are the printer's error bytes and have no names here.
namespace code {
inline constexpr std::int32_t silentWithClearToSend = 64; // shares its value with a printer's error code
inline constexpr std::int32_t runtimeFailure = -10000;
inline constexpr std::int32_t uploadRefusedOrRuntimeFailure = -10001;
inline constexpr std::int32_t unexpectedAnswer = -10002;
inline constexpr std::int32_t portNotReady = -10103;
inline constexpr std::int32_t bitmapNotMonochrome = -10104;
inline constexpr std::int32_t portMissing = -10200;
inline constexpr std::int32_t transportFailure = -10201;
inline constexpr std::int32_t timeout = -10202;
} // namespace code

// Holds its text itself: it has to be made, too, when it stands for memory that has run out.
class Telvo06FMException : public std::runtime_error
{
public:
    explicit Telvo06FMException(std::int32_t failureCode);
    [[nodiscard]] const char* what() const noexcept override { return text.data(); }

    std::int32_t code;

private:
    std::array<char, sizeof "Telvo error -2147483648"> text{};
};

} // namespace telvofm
