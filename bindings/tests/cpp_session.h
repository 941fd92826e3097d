// A session of telvofm.hpp with a printer of its own, whose day is open.
#pragma once

#include "telvofm.hpp"

#include "tests/system/printer_process.h"

#include <gtest/gtest.h>
#include <string>

namespace telvofm::test {

class CppSession : public testing::Test
{
protected:
    CppSession()
        : printer_({"--listen", "127.0.0.1:0"}), address_(printer_.address()),
          session_(Session::open(address_))
    {
    }

    void SetUp() override
    {
        ASSERT_TRUE(session_) << session_.error().text();
        EXPECT_EQ(session_->beginDay().value_or(false), true);
    }

    // With one item of 4.00.
    Receipt begun()
    {
        Receipt receipt = session_->receipt();
        EXPECT_TRUE(receipt.begin() && receipt.sell("Med", 4, "A", 1, 4, "ks"));
        return receipt;
    }

    PrinterProcess printer_;
    std::string address_;
    Result<Session> session_;
};

} // namespace telvofm::test
