// The values that a fault has as JSON. What reads one throws std::runtime_error with a sentence about what is
// wrong.
#pragma once

#include <array>
#include <cstdint>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace virtual_printer {

// In the order of the enumerations.
inline constexpr std::array<std::string_view, 4> momentNames = {"connection", "request", "answer",
                                                                "afterwards"};
inline constexpr std::array<std::string_view, 3> probesNames = {"ready", "busy", "ignored"};

[[noreturn]] void refuseFault(const std::string& sentence);
std::string inQuotes(std::string_view text);
std::string listOf(std::span<const std::string_view> names);

int wholeOf(const nlohmann::ordered_json& value, std::string_view key, int smallest, int largest);
// Which of these names it is.
std::size_t choiceOf(const nlohmann::ordered_json& value, std::string_view key,
                     std::span<const std::string_view> names);
// "15 31" or "1531"; nothing when it is no such text.
std::optional<std::string> bytesOf(const nlohmann::ordered_json& value);
std::string hexadecimal(std::string_view bytes);
// A whole number of 32 bits.
std::uint32_t seedOf(const nlohmann::ordered_json& value);

} // namespace virtual_printer
