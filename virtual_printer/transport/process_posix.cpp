#include "virtual_printer/transport/process.h"

#include <boost/asio/steady_timer.hpp>
#include <csignal>
#include <cstdlib>
#include <memory>
#include <unistd.h>
#include <utility>

namespace virtual_printer {
namespace {

// The first process adopts what has lost its parent. In a container it may be the parent itself, a test for
// example; then this process is of its group.
bool isAdopted(pid_t parent)
{
    return parent == 1 && ::getpgid(parent) != ::getpgrp();
}

// The parent's number changes when it goes: somebody else adopts this process.
class ParentWatch : public std::enable_shared_from_this<ParentWatch>
{
public:
    ParentWatch(boost::asio::io_context& context, std::function<void()> whenGone)
        : timer(context), parent(::getppid()), end(std::move(whenGone))
    {
    }

    void look()
    {
        constexpr std::chrono::milliseconds betweenLooks{200};
        if (::getppid() != parent || isAdopted(parent)) {
            end();
            return;
        }
        timer.expires_after(betweenLooks);
        timer.async_wait([self = shared_from_this()](const boost::system::error_code& failure) {
            if (!failure) {
                self->look();
            }
        });
    }

private:
    boost::asio::steady_timer timer;
    pid_t parent;
    std::function<void()> end;
};

} // namespace

void ignoreBrokenPipes()
{
    static_cast<void>(std::signal(SIGPIPE, SIG_IGN));
}

boost::asio::signal_set endingSignals(boost::asio::io_context& context)
{
    return {context, SIGINT, SIGTERM};
}

void endAtOnce()
{
    std::_Exit(EXIT_SUCCESS);
}

void watchParent(boost::asio::io_context& context, std::function<void()> end)
{
    std::make_shared<ParentWatch>(context, std::move(end))->look();
}

} // namespace virtual_printer
