// A reply's file on a file system that notices late, as one on a network does, that it cannot keep what it
// took.
#include "device/reply_file.h"
#include "link/telvo06fm_exception.h"
#include "tests/system/system_calls.h"
#include "tests/unit/own_folder.h"

#include <gtest/gtest.h>

namespace telvofm::test {
namespace {

TEST(ReplyFileCalls, WhatIsLostWithTheClosingIsAFailure)
{
    const OwnFolder folder;
    ReplyFile file(folder.file("reply"));
    SystemCalls calls;
    calls.filesToLose = 1;
    try {
        file.writeWhole("the reply");
        FAIL() << "the caller believes that the reply is there";
    } catch (const Telvo06FMException& failure) {
        EXPECT_EQ(failure.code, -10201);
    }
}

TEST(ReplyFileCalls, WhatIsClosedWellIsThere)
{
    const OwnFolder folder;
    const std::string name = folder.file("reply");
    const SystemCalls calls;
    ReplyFile(name).writeWhole("the reply");
    EXPECT_EQ(contentOf(name), "the reply");
}

} // namespace
} // namespace telvofm::test
