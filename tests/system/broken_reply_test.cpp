// The TCP driver on real sockets: replies that a closing printer cuts at each byte.
#include "link/tcp_driver.h"
#include "link/telvo06fm_exception.h"
#include "tests/system/printer_thread.h"
#include "tests/unit/bytes.h"

#include <gtest/gtest.h>

namespace telvofm::test {
namespace {

const std::string request = bytes({0x1C, 0x01, 0x93, 0x04});
const std::string reply = block("first ", etb) + block("second", etx);

// The result of a query whose printer sends that much of the reply and closes once it is answered.
std::string fetchCutReply(std::size_t sent)
{
    PrinterThread printer([sent](wire::Connection& connection) {
        receiveRequest(connection);
        connection.send(std::string_view(reply).substr(0, sent));
        connection.close();
    });
    TcpDriver driver(printer.address());
    driver.open();
    std::string result;
    try {
        result = driver.query(request);
    } catch (const Telvo06FMException& failure) {
        result = std::to_string(failure.code);
    }
    driver.close();
    return result;
}

TEST(BrokenReply, AtEachByteIsATransportFailure)
{
    for (std::size_t sent = 0; sent < reply.size(); ++sent) {
        EXPECT_EQ(fetchCutReply(sent), "-10201") << sent << " bytes sent";
    }
}

TEST(BrokenReply, AWholeReplyArrives)
{
    PrinterThread printer([](wire::Connection& connection) {
        receiveRequest(connection);
        connection.send(reply);
        receiveUntilClosed(connection);
    });
    TcpDriver driver(printer.address());
    driver.open();
    EXPECT_EQ(driver.queryStrict(request), "first second");
    driver.close();
}

} // namespace
} // namespace telvofm::test
