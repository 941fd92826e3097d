// Who may use the control interface, and what becomes of requests that mean nothing.
#include "tests/unit/control/controlled_till.h"

namespace virtual_printer {
namespace {

class AccessToControl : public ControlledTill
{
protected:
    static constexpr const char* token = "0123456789abcdef";

    static HttpRequest asking(const std::string& host, const std::string& origin = "")
    {
        HttpRequest request = requestFor("GET", "/printers", "");
        request.host = host;
        request.origin = origin;
        return request;
    }
    static int statusOf(Control& asked, const HttpRequest& request)
    {
        return std::get<HttpAnswer>(asked.answer(request)).status;
    }

    Control withToken{readyToSell(), "", token};
};

TEST_F(AccessToControl, IsForNamesOfThisMachineOnly)
{
    for (const char* host : {"127.0.0.1:9180", "localhost:9180", "localhost", "[::1]:9180", "[::1]",
                             "127.0.0.2:9180", "LOCALHOST:9180", "LocalHost", "127.255.255.254"}) {
        EXPECT_EQ(statusOf(control, asking(host)), 200) << host;
    }
    for (const char* host : {"", "evil.example", "127.0.0.1.evil.example:9180", "192.168.1.5:9180",
                             "localhost.:80", "evil.example:127.0.0.1", "[::2]:9180", "128.0.0.1", "127.0.0",
                             "127.0.0.1.", "127.0.0.256", "::1", "[127.0.0.1]", "[::1", "[localhost]"}) {
        EXPECT_EQ(statusOf(control, asking(host)), 403) << host;
    }
    EXPECT_EQ(Json::parse(std::get<HttpAnswer>(control.answer(asking("evil.example"))).body)["error"],
              "The host \"evil.example\" is no name of this machine itself; ask for 127.0.0.1 or localhost, "
              "or start "
              "the program with --token.");
}

TEST_F(AccessToControl, IsForPagesOfItsOwnOnly)
{
    EXPECT_EQ(statusOf(control, asking("localhost:9180", "http://localhost:9180")), 200);
    EXPECT_EQ(statusOf(control, asking("LOCALHOST:9180", "http://localhost:9180")), 200);
    for (const char* origin :
         {"http://evil.example", "http://localhost:3000", "https://localhost:9180", "null"}) {
        EXPECT_EQ(statusOf(control, asking("localhost:9180", origin)), 403) << origin;
        EXPECT_EQ(statusOf(withToken, asking("localhost:9180", origin)), 403) << origin;
    }
}

TEST_F(AccessToControl, NeedsTheTokenFromAnywhere)
{
    HttpRequest request = asking("till.example:9180");
    EXPECT_EQ(statusOf(withToken, request), 401);
    for (const char* wrong : {"Bearer ", "Bearer 0123456789abcdeg", "Bearer 0123456789abcde",
                              "Basic 0123456789abcdef", "Bearer 0123456789abcdef0", "0123456789abcdef"}) {
        request.authorization = wrong;
        EXPECT_EQ(statusOf(withToken, request), 401) << wrong;
    }
    request.authorization = std::string("Bearer ") + token;
    EXPECT_EQ(statusOf(withToken, request), 200);
    request.authorization.clear();
    request.cookie = std::string("a=b; telvofm_token_9180=") + token + "; c=d";
    EXPECT_EQ(statusOf(withToken, request), 200);
    request.cookie = std::string("xtelvofm_token_9180=") + token;
    EXPECT_EQ(statusOf(withToken, request), 401);
}

TEST_F(AccessToControl, NeedsTheTokenForEveryRoute)
{
    withToken.add(station);
    for (const Route& route : controlRoutes()) {
        std::string path(route.path);
        for (const auto& [part, name] :
             {std::pair{"{printer}", "printer"}, {"{fault}", "1"}, {"{snapshot}", "a"}}) {
            if (const auto place = path.find(part); place != std::string::npos) {
                path.replace(place, std::string(part).size(), name);
            }
        }
        HttpRequest request = requestFor(std::string(route.method), path, "");
        const Outcome outcome = withToken.answer(request);
        ASSERT_TRUE(std::holds_alternative<HttpAnswer>(outcome)) << path;
        EXPECT_EQ(std::get<HttpAnswer>(outcome).status, 401) << route.method << ' ' << path;
        request.authorization = std::string("Bearer ") + token;
        const Outcome permitted = withToken.answer(request);
        const auto* answer = std::get_if<HttpAnswer>(&permitted);
        EXPECT_TRUE(answer == nullptr || answer->status != 401) << route.method << ' ' << path;
    }
}

TEST_F(AccessToControl, GivesAPageTheTokenAsACookie)
{
    HttpRequest request = requestFor("POST", "/session", R"({"token": "0123456789abcdef"})");
    const auto answer = std::get<HttpAnswer>(withToken.answer(request));
    EXPECT_EQ(noteDown("POST", "/session", request.body, answer).status, 200);
    EXPECT_THAT(answer.headers,
                testing::ElementsAre(testing::Pair(
                    "Set-Cookie", "telvofm_token_9180=0123456789abcdef; Path=/; HttpOnly; SameSite=Strict")));
    request.body = R"({"token": "0123456789abcdeX"})";
    const auto refused = std::get<HttpAnswer>(withToken.answer(request));
    EXPECT_EQ(noteDown("POST", "/session", request.body, refused).status, 401);
    EXPECT_TRUE(refused.headers.empty());
}

// A browser sends the cookies of a host to all of its ports: two programs there have two tokens.
TEST_F(AccessToControl, KeepsTheTokensOfTwoPortsApart)
{
    HttpRequest request = requestFor("POST", "/session", R"({"token": "0123456789abcdef"})");
    for (const auto& [host, cookie] : {std::pair{"till.example:9181", "telvofm_token_9181"},
                                       {"[::1]:9182", "telvofm_token_9182"},
                                       {"till.example", "telvofm_token_80"},
                                       {"[::1]", "telvofm_token_80"},
                                       {"till.example:1; Domain=example", "telvofm_token_80"},
                                       {"till.example:99999", "telvofm_token_80"}}) {
        request.host = host;
        const auto answer = std::get<HttpAnswer>(withToken.answer(request));
        EXPECT_THAT(answer.headers, testing::ElementsAre(testing::Pair(
                                        "Set-Cookie", std::string(cookie) + "=" + token +
                                                          "; Path=/; HttpOnly; SameSite=Strict")))
            << host;
    }
    HttpRequest later = asking("till.example:9181");
    later.cookie = std::string("telvofm_token_9180=fedcba9876543210; telvofm_token_9181=") + token;
    EXPECT_EQ(statusOf(withToken, later), 200);
    later.host = "till.example:9180";
    EXPECT_EQ(statusOf(withToken, later), 401);
}

TEST_F(AccessToControl, RefusesUnknownPathsAndMethodsInASentence)
{
    EXPECT_EQ(refusedWith(404, ask("GET", "/nothing")),
              "There is no /nothing here; GET /openapi.json describes what there is.");
    EXPECT_EQ(refusedWith(404, ask("GET", "/printers/printer/nothing")),
              "There is no /printers/printer/nothing here; GET /openapi.json describes what there is.");
    const auto answer = std::get<HttpAnswer>(control.answer(requestFor("DELETE", at("clock"), "")));
    EXPECT_EQ(answer.status, 405);
    EXPECT_THAT(answer.headers, testing::ElementsAre(testing::Pair("Allow", "GET, PATCH")));
}

TEST_F(AccessToControl, TakesNoMemberTwice)
{
    EXPECT_EQ(refusedWith(400, post(at("faults"), R"({"kind": "silence", "kind": "paperOut"})")),
              "\"kind\" is there twice; give it once.");
    EXPECT_EQ(
        refusedWith(400, patch(at("settings"), R"({"vat": {"A": {"percent": 1}, "A": {"percent": 2}}})")),
        "\"A\" is there twice; give it once.");
    EXPECT_EQ(patch(at("settings"), R"({"vat": {"A": {"percent": 1}, "B": {"percent": 2}}})").status, 200);
}

TEST_F(AccessToControl, ServesItsDescription)
{
    const Json description = get("/openapi.json");
    EXPECT_EQ(description["openapi"], "3.1.0");
    // Every route is in it, and nothing else is.
    std::size_t methods = 0;
    for (const auto& [path, operations] : description["paths"].items()) {
        for (const auto& [method, operation] : operations.items()) {
            methods += method == "parameters" ? 0U : 1U;
        }
    }
    constexpr std::size_t logIn = 1; // is answered before the routes
    EXPECT_EQ(methods, controlRoutes().size() + logIn);
    for (const Route& route : controlRoutes()) {
        std::string method(route.method);
        std::transform(method.begin(), method.end(), method.begin(),
                       [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
        EXPECT_TRUE(description["paths"].value(std::string(route.path), Json::object()).contains(method))
            << route.path;
    }
}

} // namespace
} // namespace virtual_printer
