// Who releases the result objects of telvofm.hpp, whatever fails; counting_telvofm.c stands in front of the
// library.
#include "telvofm.hpp"

#include "tests/system/printer_process.h"
#include "tests/unit/own_folder.h"

#include <array>
#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>

namespace telvofm {
namespace {

TEST(CppResultObjects, AreReleasedOnceEach)
{
    const test::PrinterProcess printer({"--listen", "127.0.0.1:0"});
    auto session = Session::open(printer.address());
    ASSERT_TRUE(session) << session.error().text();
    const test::OwnFolder folder;
    const auto counted = [file = folder.file("result_objects")] {
        int created = 0;
        int released = 0;
        int wrong = -1;
        std::string word;
        std::ifstream(file) >> word >> created >> word >> released >> word >> wrong;
        return std::array{created, released, wrong};
    };
    ASSERT_EQ(setenv("TELVOFM_RESULT_OBJECTS", folder.file("result_objects").c_str(), 1), 0);
    EXPECT_TRUE(session->variable("STATE"));
    const auto [before, releasedBefore, wrongBefore] = counted();
    EXPECT_EQ(before, releasedBefore);
    EXPECT_TRUE(session->journal());
    EXPECT_FALSE(session->variable("NOTHING_LIKE_THAT"));
    EXPECT_FALSE(session->variable("ñ")); // refused with the object at hand
    Session elsewhere = std::move(*session);
    EXPECT_FALSE(session->lastReceipt()); // NOLINT(bugprone-use-after-move): it is closed, and says so
    EXPECT_EQ(counted(), (std::array{before + 4, before + 4, 0}));
    ASSERT_EQ(unsetenv("TELVOFM_RESULT_OBJECTS"), 0);
}

} // namespace
} // namespace telvofm
