// Host programs that install a handler which returns: the export goes on, and its buffer is empty.
#include "tests/system/small_buffer.h"
#include "tests/system/universal_runtime_win32.h"

namespace telvofm::test {
namespace {

int failuresSeen = 0;

void countAndReturn(const wchar_t* /*expression*/, const wchar_t* /*function*/, const wchar_t* /*file*/,
                    unsigned int /*line*/, std::uintptr_t /*reserved*/)
{
    ++failuresSeen;
}

using SmallBufferWithHandler = SmallBuffer;

TEST_P(SmallBufferWithHandler, ComesBackEmptied)
{
    failuresSeen = 0;
    const auto before = installInvalidParameterHandler(countAndReturn);
    const int result = callWithSmallBuffer();
    installInvalidParameterHandler(before);
    EXPECT_EQ(result, 0);
    EXPECT_EQ(failuresSeen, 1);
    EXPECT_TRUE(GetParam().isTextual ? isEmptied() : isZeroed());
}

INSTANTIATE_TEST_SUITE_P(Of, SmallBufferWithHandler, ::testing::ValuesIn(bufferExports), nameOfExport);

} // namespace
} // namespace telvofm::test
