#include "virtual_printer/web/page.h"

#include "virtual_printer/web/page_files.h"

#include <algorithm>
#include <array>

namespace virtual_printer {
namespace {

constexpr std::string_view folder = "/page/";
constexpr std::string_view placeOfSum = "{sum}"; // in index.html

struct ContentType
{
    std::string_view ending;
    std::string_view name;
};

constexpr std::array contentTypes = {
    ContentType{".html", "text/html; charset=utf-8"}, ContentType{".css", "text/css; charset=utf-8"},
    ContentType{".js", "text/javascript; charset=utf-8"}, ContentType{".svg", "image/svg+xml"},
    ContentType{".json", "application/json"}};

// Only what comes from this program, and nothing that stands in the document itself: whatever a till sends,
// no text of it can run.
constexpr std::string_view policy =
    "default-src 'none'; script-src 'self'; style-src 'self'; img-src 'self'; connect-src "
    "'self'; "
    "worker-src 'self'; base-uri 'none'; form-action 'none'; frame-ancestors 'none'; "
    "require-trusted-types-for 'script'; trusted-types telvofm";

const PageFile* fileCalled(std::string_view name)
{
    const auto files = pageFiles();
    const auto found =
        std::find_if(files.begin(), files.end(), [name](const PageFile& file) { return file.name == name; });
    return found == files.end() ? nullptr : &*found;
}

HttpAnswer answerWith(const PageFile& file, const char* howLong)
{
    const auto* const type =
        std::find_if(contentTypes.begin(), contentTypes.end(),
                     [&](const ContentType& known) { return file.name.ends_with(known.ending); });
    HttpAnswer answer{.status = 200,
                      .body = std::string(file.content),
                      .contentType = std::string(type == contentTypes.end() ? "text/plain" : type->name)};
    answer.headers = {
        {"Content-Security-Policy", std::string(policy)}, {"Referrer-Policy", "no-referrer"},
        {"Cross-Origin-Opener-Policy", "same-origin"},    {"Cross-Origin-Resource-Policy", "same-origin"},
        {"ETag", "\"" + std::string(sumOfPage()) + "\""}, {"Cache-Control", howLong}};
    return answer;
}

HttpAnswer startPage()
{
    HttpAnswer answer = answerWith(*fileCalled("index.html"), "no-cache");
    for (std::size_t at = answer.body.find(placeOfSum); at != std::string::npos;
         at = answer.body.find(placeOfSum, at)) {
        answer.body.replace(at, placeOfSum.size(), sumOfPage());
    }
    return answer;
}

} // namespace

std::optional<HttpAnswer> pageAnswer(const HttpRequest& request)
{
    const std::string_view path = std::string_view(request.target).substr(0, request.target.find('?'));
    if (request.method != "GET" && request.method != "HEAD") {
        return std::nullopt;
    }
    if (path == "/" || path == "/index.html") {
        return startPage();
    }
    if (!path.starts_with(folder)) {
        return std::nullopt;
    }
    const std::string_view rest = path.substr(folder.size());
    const std::size_t slash = std::min(rest.find('/'), rest.size());
    const PageFile* file = fileCalled(rest.substr(std::min(slash + 1, rest.size())));
    if (file == nullptr || rest.substr(0, slash) != sumOfPage()) {
        return errorAnswer(status::notFound, "This page is of another version of the program; load / again.");
    }
    return answerWith(*file, "public, max-age=31536000, immutable");
}

} // namespace virtual_printer
