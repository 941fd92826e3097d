// A folder of the running test's own, in the current one, gone when the test is over.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

namespace telvofm::test {

class OwnFolder
{
public:
    OwnFolder() : path(std::filesystem::current_path() / nameOfTest())
    {
        std::filesystem::remove_all(path);
        std::filesystem::create_directories(path);
    }
    ~OwnFolder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(path, ignored);
    }
    OwnFolder(const OwnFolder&) = delete;
    OwnFolder& operator=(const OwnFolder&) = delete;

    [[nodiscard]] std::string file(const std::string& name) const { return (path / name).string(); }

    const std::filesystem::path path;

private:
    static std::string nameOfTest()
    {
        const auto* test = ::testing::UnitTest::GetInstance()->current_test_info();
        return std::string(test->test_suite_name()) + "." + test->name() + ".folder";
    }
};

// The bytes of a file; "(no file)" when there is none.
inline std::string contentOf(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        return "(no file)";
    }
    std::ostringstream content;
    content << file.rdbuf();
    return content.str();
}

} // namespace telvofm::test
