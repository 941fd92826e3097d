// A call of every export that sends a command, with arguments that make sense where the command is legal, and
// what the printer must say to it in each situation. The numbers are written down by hand from the rules of
// docs/virtual-printer.md, not taken from the command table.
#pragma once

#include <array>
#include <span>
#include <string_view>
#include <vector>

namespace virtual_printer {

// The refusal, or 0, in the order of `situations`: no day, idle, open, paying, overdue, defiscalized.
using Answers = std::array<int, 6>;

inline constexpr Answers always = {0, 0, 0, 0, 0, 0};
inline constexpr Answers betweenDays = {0, 38, 11, 11, 36, 41};
inline constexpr Answers onceFiscalized = {40, 38, 11, 11, 36, 41};
inline constexpr Answers onceDefiscalized = {40, 38, 11, 11, 36, 0};
inline constexpr Answers beginsDay = {0, 6, 11, 11, 36, 41};
inline constexpr Answers inTheDay = {10, 0, 11, 11, 36, 41};
inline constexpr Answers closesDay = {10, 0, 11, 11, 0, 41};
inline constexpr Answers inReceipt = {12, 12, 0, 13, 12, 41};
inline constexpr Answers inPayment = {12, 12, 0, 0, 12, 41};
inline constexpr Answers endsReceipt = {12, 12, 15, 15, 12, 41}; // 10.00 or 6.00 are still due
inline constexpr Answers withoutReceipt = {0, 0, 11, 11, 36, 41};
inline constexpr Answers aroundReceipt = {0, 0, 0, 0, 36, 41};
inline constexpr Answers forReading = {0, 0, 11, 11, 0, 0};

struct SampleCall
{
    std::string_view name;
    std::vector<std::string_view> arguments; // behind the printer's address, but for sendUnspecifiedData
    Answers answers;
};

// What comes in place of arguments that the request does not show.
inline constexpr std::string_view toBuffer = "buffer";
inline constexpr std::string_view toResult = "result";
inline constexpr std::string_view toCount = "count";
inline constexpr std::string_view toFile = "file";

std::span<const SampleCall> sampleCalls();
// The exports that send no command.
std::span<const std::string_view> otherExports();

} // namespace virtual_printer
