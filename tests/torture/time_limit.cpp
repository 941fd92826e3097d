#include "tests/torture/time_limit.h"

#include <csignal>
#include <cstring>
#include <unistd.h>

namespace telvofm::test::torture {
namespace {

constexpr unsigned seconds = 300; // the longest waits of the library are a minute

char named[256] = "";

void giveUp(int /*signal*/)
{
    constexpr std::string_view words = " does not return\n";
    for (const std::string_view text : {std::string_view(named), words}) {
        static_cast<void>(!::write(STDERR_FILENO, text.data(), text.size()));
    }
    ::_exit(1);
}

} // namespace

void TimeLimit::install()
{
    struct sigaction action = {};
    action.sa_handler = giveUp;
    ::sigaction(SIGALRM, &action, nullptr);
}

TimeLimit::TimeLimit(const std::string& what)
{
    const std::size_t length = what.copy(named, sizeof named - 1);
    named[length] = '\0';
    ::alarm(seconds);
}

TimeLimit::~TimeLimit()
{
    ::alarm(0);
}

} // namespace telvofm::test::torture
