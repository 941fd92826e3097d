// Names of files in telvofm.hpp.
#include "telvofm/file_name.hpp"

#include "tests/unit/own_folder.h"

#include <cstdio>
#include <gtest/gtest.h>

namespace telvofm {
namespace {

TEST(CppFileName, IsThatOfTheSystem)
{
    const test::OwnFolder folder;
    const std::filesystem::path file = std::filesystem::path(folder.file("")) / u8"žurnál.txt";
    const Result<std::string> name = encodeFileName(file);
    ASSERT_TRUE(name) << name.error().text();
    std::FILE* const written = std::fopen((*name).c_str(), "w"); // as the library opens it
    ASSERT_NE(written, nullptr) << *name;
    EXPECT_EQ(std::fclose(written), 0);
    EXPECT_TRUE(std::filesystem::exists(file));
}

TEST(CppFileName, HoldsNoNul)
{
    const Result<std::string> name = encodeFileName(std::filesystem::path(std::string("a\0.txt", 6)));
    ASSERT_FALSE(name);
    EXPECT_EQ(name.error().kind, Kind::textError);
    EXPECT_EQ(name.error().text().find("a NUL stands at position 1"), 0U) << name.error().text();
}

#ifdef _WIN32
TEST(CppFileName, HoldsNothingThatTheCodePageLacks)
{
    const Result<std::string> name = encodeFileName(L"a\xD83D.txt"); // half of a character is in none
    ASSERT_FALSE(name);
    EXPECT_NE(name.error().text().find("code page lacks stands at position 1"), std::string::npos)
        << name.error().text();
}
#endif

} // namespace
} // namespace telvofm
