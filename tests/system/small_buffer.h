// A buffer that is one byte too small, and every export that must not write beyond it but raise the
// invalid-parameter failure.
#pragma once

#include "telvofm.h"
#include "tests/system/replying_printer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>

namespace telvofm::test {

struct BufferExport
{
    const char* name;
    bool isTextual; // a terminator must fit too, and only the first byte is emptied
    int (*call)(char* buffer, int size);
};

inline constexpr std::array bufferExports = {
    BufferExport{"getJournal", false, [](char* buffer, int size) { return getJournal(1, buffer, size); }},
    BufferExport{"getJournal_str_count", false,
                 [](char* buffer, int size) {
                     unsigned int count = 0;
                     return getJournal_str_count(1, buffer, size, &count);
                 }},
    BufferExport{"getJournalStructD1", false,
                 [](char* buffer, int size) { return getJournalStructD1(1, "F", "", "", buffer, size); }},
    BufferExport{"getJournalStructZ", false,
                 [](char* buffer, int size) { return getJournalStructZ(1, 1, 2, buffer, size); }},
    BufferExport{"getJournalStructZ1", false,
                 [](char* buffer, int size) { return getJournalStructZ1(1, "P", 1, 2, buffer, size); }},
    BufferExport{"getJournalStructU", false,
                 [](char* buffer, int size) { return getJournalStructU(1, "7", buffer, size); }},
    BufferExport{"getBCKP", false, [](char* buffer, int size) { return getBCKP(1, "p", 1, buffer, size); }},
    BufferExport{"getRAMMP", false, [](char* buffer, int size) { return getRAMMP(1, "p", buffer, size); }},
    BufferExport{"getVariable", true,
                 [](char* buffer, int size) { return getVariable(1, "7", buffer, size); }},
    BufferExport{"getIntervalFPD", true,
                 [](char* buffer, int size) { return getIntervalFPD(1, 0, "", "", buffer, size); }},
    BufferExport{"getIntervalFPC", true,
                 [](char* buffer, int size) { return getIntervalFPC(1, 0, 1, 2, buffer, size); }},
    BufferExport{"getParagonIDs", true,
                 [](char* buffer, int size) { return getParagonIDs(1, 'A', "", buffer, size); }},
    BufferExport{"getParagonIDs_str", true,
                 [](char* buffer, int size) { return getParagonIDs_str(1, "A", "", buffer, size); }},
};

inline std::string nameOfExport(const ::testing::TestParamInfo<BufferExport>& info)
{
    return info.param.name;
}

inline constexpr std::string_view smallBufferReply = "ABCDEF";
inline constexpr char untouchedByte = '#';
inline std::array<char, 8> smallBuffer;

// How much of the buffer the failing call was told of.
inline std::size_t sizeGiven = 0;

inline bool restIsUntouched(std::size_t first)
{
    return std::all_of(smallBuffer.begin() + static_cast<std::ptrdiff_t>(first), smallBuffer.end(),
                       [](char byte) { return byte == untouchedByte; });
}

// Every byte that the call was told of is 0x00.
inline bool isZeroed()
{
    return std::all_of(smallBuffer.begin(), smallBuffer.begin() + static_cast<std::ptrdiff_t>(sizeGiven),
                       [](char byte) { return byte == '\0'; }) &&
           restIsUntouched(sizeGiven);
}

// An empty text.
inline bool isEmptied()
{
    return smallBuffer.front() == '\0' && restIsUntouched(sizeGiven);
}

class SmallBuffer : public ::testing::TestWithParam<BufferExport>
{
protected:
    void SetUp() override
    {
        GTEST_FLAG_SET(death_test_style, "threadsafe");
        setLogginOff();
        smallBuffer.fill(untouchedByte);
    }

    // The largest size that does not suffice.
    [[nodiscard]] int tooSmall() const
    {
        return static_cast<int>(smallBufferReply.size()) - (GetParam().isTextual ? 0 : 1);
    }

    // The result of the export against a printer of this call's own.
    [[nodiscard]] int call(int size) const
    {
        sizeGiven = static_cast<std::size_t>(size);
        PrinterThread printer(replyingWith(std::string(smallBufferReply)));
        if (openFM(printer.address().c_str()) != 0) {
            return -1;
        }
        const int result = GetParam().call(smallBuffer.data(), size);
        closeFM();
        return result;
    }

    [[nodiscard]] int callWithSmallBuffer() const { return call(tooSmall()); }
};

} // namespace telvofm::test
