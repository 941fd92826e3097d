#include "tests/system/host_changes.h"

#include <cfenv>
#include <filesystem>
#include <iostream>
#include <locale>
#include <new>

namespace telvofm::test {
namespace {

std::filesystem::path& folderBefore()
{
    static std::filesystem::path folder;
    return folder;
}

void goUp()
{
    folderBefore() = std::filesystem::current_path();
    std::filesystem::current_path("..");
}

struct CommaForPoint : std::numpunct<char>
{
    [[nodiscard]] char do_decimal_point() const override { return ','; }
};

} // namespace

std::vector<HostChange> everyHostChange()
{
    std::vector<HostChange> changes = {
        {"floating point", [] { std::fesetround(FE_UPWARD); }, [] { std::fesetround(FE_TONEAREST); }},
        {"floating point", [] { std::feraiseexcept(FE_INEXACT); }, [] { std::feclearexcept(FE_INEXACT); }},
        {"streams of C++", [] { std::cout.precision(9); }, [] { std::cout.precision(6); }},
        {"streams of C++", [] { std::cerr.setstate(std::ios::failbit); }, [] { std::cerr.clear(); }},
        {"locale of C++", [] { std::locale::global(std::locale(std::locale::classic(), new CommaForPoint)); },
         [] { std::locale::global(std::locale::classic()); }},
        {"working folder", goUp, [] { std::filesystem::current_path(folderBefore()); }},
        {"handlers of C++", [] { std::set_new_handler([] {}); }, [] { std::set_new_handler(nullptr); }},
    };
    const auto more = hostChangesOfThePlatform();
    changes.insert(changes.end(), more.begin(), more.end());
    return changes;
}

} // namespace telvofm::test
