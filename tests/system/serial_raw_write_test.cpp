// What rawWrite writes are the bytes of its beginning, whatever the caller makes of them while it waits.
#include "tests/system/serial_link_fixture.h"

#include <algorithm>
#include <future>

namespace telvofm::test {
namespace {

using namespace std::chrono_literals;

class SerialRawWrite : public SerialLinkTest
{
};

TEST_F(SerialRawWrite, WritesTheBytesOfItsBeginning)
{
    // Long enough that the line is dropped while they are being written.
    const std::string asTheyWere(20000, 'a');
    std::string bytes = asTheyWere;
    auto writing = std::async(std::launch::async, [&] {
        const auto* start = reinterpret_cast<const unsigned char*>(bytes.data());
        return rawWrite(start, static_cast<std::int64_t>(bytes.size()));
    });
    std::string received = receiveBytes(printer.line(), 100);
    printer.setLines(true, false);
    for (auto more = printer.line().receive(4096, 200ms); more && !more->empty();
         more = printer.line().receive(4096, 200ms)) {
        received += *more;
    }
    ASSERT_LT(received.size(), bytes.size());
    ASSERT_EQ(writing.wait_for(0ms), std::future_status::timeout) << "it waits for the printer";

    std::fill(bytes.begin(), bytes.end(), 'n');
    printer.setLines(true, true);
    received += receiveBytes(printer.line(), bytes.size() - received.size());
    EXPECT_EQ(writing.get(), 20000);
    EXPECT_TRUE(received == asTheyWere);
}

} // namespace
} // namespace telvofm::test
