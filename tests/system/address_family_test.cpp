// A printer that is reached at the address ::1 only.
#include "link/tcp_driver.h"

#include <gtest/gtest.h>

#include <netdb.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

namespace telvofm::test {
namespace {

constexpr in6_addr loopback = IN6ADDR_LOOPBACK_INIT;

bool resolvesToLoopback(const char* name)
{
    addrinfo hints{};
    hints.ai_family = AF_INET6;
    addrinfo* found = nullptr;
    if (::getaddrinfo(name, nullptr, &hints, &found) != 0) {
        return false;
    }
    const auto* address = reinterpret_cast<const sockaddr_in6*>(found->ai_addr);
    const bool isLoopback = IN6_ARE_ADDR_EQUAL(&address->sin6_addr, &loopback) != 0;
    ::freeaddrinfo(found);
    return isLoopback;
}

class AddressFamily : public ::testing::Test
{
protected:
    void SetUp() override
    {
        sockaddr_in6 address{};
        address.sin6_family = AF_INET6;
        address.sin6_addr = loopback;
        socklen_t size = sizeof address;
        auto* any = reinterpret_cast<sockaddr*>(&address);
        if (::bind(listener, any, size) != 0) {
            GTEST_SKIP() << "this machine has no address ::1";
        }
        ASSERT_EQ(::listen(listener, 1), 0);
        ASSERT_EQ(::getsockname(listener, any, &size), 0);
        port = std::to_string(ntohs(address.sin6_port));
    }
    void TearDown() override { ::close(listener); }

    const int listener = ::socket(AF_INET6, SOCK_STREAM | SOCK_CLOEXEC, 0);
    std::string port;
};

TEST_F(AddressFamily, ASocketConnectsToWhateverItsAddressIs)
{
    const auto addresses = Socket::resolve("::1", port);
    ASSERT_TRUE(addresses);
    ASSERT_EQ(addresses->size(), 1U);
    Socket socket;
    ASSERT_TRUE(socket.create(addresses->front()));
    EXPECT_TRUE(socket.connect(addresses->front()));
    socket.close();
}

TEST_F(AddressFamily, ADriverFindsItByName)
{
    if (!resolvesToLoopback("localhost")) {
        GTEST_SKIP() << "localhost does not resolve to ::1 on this machine";
    }
    TcpDriver driver("localhost:" + port);
    EXPECT_NO_THROW(driver.open());
    driver.close();
}

} // namespace
} // namespace telvofm::test
