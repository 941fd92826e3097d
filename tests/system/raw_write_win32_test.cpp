// More bytes for rawWrite than the platform's sockets can count.
#include "telvofm.h"
#include "tests/wire/loopback.h"

#include <gtest/gtest.h>

#include <windows.h>

namespace telvofm::test {
namespace {

using namespace std::chrono_literals;

TEST(RawWriteOnWindows, FourGigabytesAndAByteFailWithoutAByteSent)
{
    // Cut to 32 bits the count would be 1. Only the first byte is there, the rest is set aside.
    constexpr int64_t count = 0x1'0000'0001;
    void* const bytes = ::VirtualAlloc(nullptr, count, MEM_RESERVE, PAGE_NOACCESS);
    ASSERT_NE(bytes, nullptr);
    ASSERT_NE(::VirtualAlloc(bytes, 1, MEM_COMMIT, PAGE_READWRITE), nullptr);
    const wire::Listener listener;
    ASSERT_EQ(openFM(("127.0.0.1:" + std::to_string(listener.port())).c_str()), 0);
    const wire::Connection connection = listener.accept(10s);
    EXPECT_EQ(rawWrite(static_cast<const unsigned char*>(bytes), count), -1);
    const unsigned char next = 'n';
    EXPECT_EQ(rawWrite(&next, 1), 1);
    EXPECT_EQ(connection.receive(1, 10s), "n");
    closeFM();
    ::VirtualFree(bytes, 0, MEM_RELEASE);
}

} // namespace
} // namespace telvofm::test
