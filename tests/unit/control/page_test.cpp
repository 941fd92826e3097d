// The page, as a browser gets it: what it may load and run, and how large it is.
#include "virtual_printer/web/page.h"
#include "virtual_printer/web/page_files.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <numeric>

namespace virtual_printer {
namespace {

using testing::HasSubstr;
using testing::Not;

HttpAnswer fetchPage(const std::string& target)
{
    HttpRequest request;
    request.method = "GET";
    request.target = target;
    return pageAnswer(request).value_or(errorAnswer(0, ""));
}

std::string headerOf(const HttpAnswer& answer, std::string_view wanted)
{
    for (const auto& [name, value] : answer.headers) {
        if (name == wanted) {
            return value;
        }
    }
    return {};
}

TEST(Page, RunsOnlyWhatComesFromThisProgram)
{
    const HttpAnswer start = fetchPage("/");
    EXPECT_EQ(start.contentType, "text/html; charset=utf-8");
    const std::string policy = headerOf(start, "Content-Security-Policy");
    EXPECT_THAT(policy, HasSubstr("default-src 'none'; script-src 'self'; style-src 'self';"));
    EXPECT_THAT(policy, HasSubstr("frame-ancestors 'none'"));
    EXPECT_THAT(policy, Not(HasSubstr("unsafe")));
    EXPECT_THAT(start.body, Not(HasSubstr("<style")));
    EXPECT_THAT(start.body, Not(HasSubstr(" style=")));
    EXPECT_THAT(start.body, Not(HasSubstr("{sum}")));
}

TEST(Page, NamesNoOtherHostAndMakesNoMarkupOfTexts)
{
    for (const PageFile& file : pageFiles()) {
        const std::string content(file.content);
        for (std::size_t at = content.find("://"); at != std::string::npos;
             at = content.find("://", at + 1)) {
            EXPECT_THAT(content.substr(at, 17), testing::StartsWith("://www.w3.org/")) << file.name;
        }
        for (const char* way : {"innerHTML", "outerHTML", "insertAdjacentHTML", "document.write", "eval("}) {
            EXPECT_THAT(content, Not(HasSubstr(way))) << file.name;
        }
    }
}

TEST(Page, HasLessThan200Kilobytes)
{
    const auto files = pageFiles();
    EXPECT_LT(
        std::accumulate(files.begin(), files.end(), std::size_t{0},
                        [](std::size_t sum, const PageFile& file) { return sum + file.content.size(); }),
        200'000U);
}

TEST(Page, IsKeptByTheBrowserUntilItIsAnotherOne)
{
    const std::string folder = "/page/" + std::string(sumOfPage()) + "/";
    const HttpAnswer start = fetchPage("/?x");
    EXPECT_EQ(headerOf(start, "Cache-Control"), "no-cache");
    EXPECT_THAT(start.body, HasSubstr(folder + "main.js"));
    const HttpAnswer script = fetchPage(folder + "main.js");
    EXPECT_EQ(script.contentType, "text/javascript; charset=utf-8");
    EXPECT_THAT(headerOf(script, "Cache-Control"), HasSubstr("immutable"));
    EXPECT_EQ(fetchPage("/page/000000000000/main.js").status, 404);
    EXPECT_EQ(fetchPage(folder + "../main.js").status, 404);
    EXPECT_EQ(fetchPage("/page/").status, 404);
}

TEST(Page, LeavesEverythingElseToTheControlInterface)
{
    EXPECT_EQ(fetchPage("/printers").status, 0);
    HttpRequest request;
    request.method = "POST";
    request.target = "/";
    EXPECT_FALSE(pageAnswer(request).has_value());
}

} // namespace
} // namespace virtual_printer
