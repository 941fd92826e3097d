// Buffers that are too small: the delivery kinds themselves, and each export that promises the
// invalid-parameter failure. The buffer is emptied first, and then the process ends.
#include "tests/system/small_buffer.h"

#include "api/delivery.h"
#include "tests/system/process_ending.h"
#include "tests/unit/own_folder.h"

#include <filesystem>

namespace telvofm::test {
namespace {

using SmallBufferDeathTest = SmallBuffer;

void copyAndEnd(void (*copy)(std::string_view, char*, int), char* memory, int size)
{
    EXPECT_EXIT(copy(smallBufferReply, memory, size), isInvalidParameterEnding, invalidParameterMessage);
}

TEST(NoBufferDeathTest, EndsTheProcess)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    char byte = 0;
    for (const auto copy : {copyExactly, copyText}) {
        copyAndEnd(copy, nullptr, 8);
        copyAndEnd(copy, &byte, 0);
        copyAndEnd(copy, &byte, -1);
    }
    // A text of no length wants room for its end, an exact copy of nothing wants none.
    EXPECT_EXIT(copyText("", &byte, 0), isInvalidParameterEnding, invalidParameterMessage);
}

TEST(BufferOfOneByteDeathTest, IsEmptiedBefore)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const auto copyIntoIt = [] {
        smallBuffer.fill(untouchedByte);
        sizeGiven = 1;
        judgeAtInvalidParameter(isEmptied);
        copyText(smallBufferReply, smallBuffer.data(), 1);
    };
    EXPECT_EXIT(copyIntoIt(), ::testing::ExitedWithCode(judgedGood), "");
}

TEST_P(SmallBufferDeathTest, EndsTheProcess)
{
    EXPECT_EXIT(static_cast<void>(callWithSmallBuffer()), isInvalidParameterEnding, invalidParameterMessage);
}

TEST_P(SmallBufferDeathTest, IsEmptiedBefore)
{
    EXPECT_EXIT(
        {
            judgeAtInvalidParameter(GetParam().isTextual ? isEmptied : isZeroed);
            static_cast<void>(callWithSmallBuffer());
        },
        ::testing::ExitedWithCode(judgedGood), "");
}

TEST_P(SmallBufferDeathTest, ThatIsOneByteLargerSuffices)
{
    EXPECT_EQ(call(tooSmall() + 1), 0);
    EXPECT_EQ(std::string_view(smallBuffer.data(), smallBufferReply.size()), smallBufferReply);
}

// Variables are logged with what the caller has got.
TEST(SmallBufferOfAVariableDeathTest, EndsTheProcessBeforeTheLineOfTheCall)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    setLogginOff();
    const OwnFolder folder;
    static const std::filesystem::path log = folder.file("till.txt");
    const auto callWithLog = [] {
        PrinterThread printer(replyingWith(std::string(smallBufferReply)));
        openFM(printer.address().c_str());
        setLogginOn(log.string().c_str());
        judgeAtInvalidParameter([] { // within a signal: without memory
            std::error_code ignored;
            return !std::filesystem::exists(log, ignored);
        });
        getVariable(1, "7", smallBuffer.data(), static_cast<int>(smallBufferReply.size()));
    };
    EXPECT_EXIT(callWithLog(), ::testing::ExitedWithCode(judgedGood), "");
}

INSTANTIATE_TEST_SUITE_P(Of, SmallBufferDeathTest, ::testing::ValuesIn(bufferExports), nameOfExport);

} // namespace
} // namespace telvofm::test
