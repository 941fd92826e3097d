// A TCP driver on a scripted network, connected and with the calls of the connecting forgotten.
#pragma once

#include "link/tcp_driver.h"
#include "tests/unit/bytes.h"
#include "tests/unit/socket_scripted.h"

#include <gmock/gmock.h>

namespace telvofm::test {

class TcpDriverTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        resetNetwork();
        driver.open();
        network().calls.clear();
    }

    template <typename Call>
    static std::int32_t codeOf(Call call)
    {
        try {
            call();
        } catch (const Telvo06FMException& failure) {
            return failure.code;
        }
        return 0x7FFFFFFF;
    }

    TcpDriver driver{"printer"};
};

} // namespace telvofm::test
