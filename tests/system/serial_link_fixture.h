// The shared library with an open session on a serial printer.
#pragma once

#include "telvofm.h"
#include "tests/system/serial_printer.h"
#include "tests/unit/own_folder.h"

#include <gtest/gtest.h>

namespace telvofm::test {

class SerialLinkTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        setLogginOff();
        ASSERT_EQ(openFM(printer.name().c_str()), 0);
    }
    void TearDown() override { closeFM(); }

    // A call that the printer accepts.
    void expectThatTheNextCallWorks()
    {
        const auto playing = printer.play([](wire::Connection& line) {
            receiveRequest(line);
            line.send("\x06");
        });
        EXPECT_EQ(printJobCancel(1), 0);
    }

    OwnFolder folder;
    SerialPrinter printer{folder.file("lines")};
};

} // namespace telvofm::test
