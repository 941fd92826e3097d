// A serial driver on a scripted port, open and with the calls of the opening forgotten.
#pragma once

#include "link/serial_driver.h"
#include "tests/unit/bytes.h"
#include "tests/unit/serial_port_scripted.h"

#include <gmock/gmock.h>

namespace telvofm::test {

class SerialDriverTest : public ::testing::Test
{
protected:
    SerialDriverTest() { resetPort(); }
    void SetUp() override
    {
        driver.open();
        port().calls.clear();
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

    static constexpr std::uint32_t baud = 57600;
    SerialDriver driver{"COM3", baud, StopBits::one};
};

} // namespace telvofm::test
