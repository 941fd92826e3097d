// A serial line for programs that know only a TCP port: makes a pseudo-terminal, puts a link to it at the
// given path, connects to the port, and copies bytes both ways until the port closes. So a printer that
// listens on TCP, a program for Windows under Wine too, stands at the end of a COM port.
//
//     pty_bridge [HOST:]PORT LINK
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <netdb.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <string>
#include <sys/socket.h>
#include <termios.h>
#include <unistd.h>

namespace {

[[noreturn]] void stop(const char* failed)
{
    std::perror(failed);
    std::exit(1);
}

int connectTo(const std::string& address)
{
    const auto colon = address.rfind(':');
    const std::string host = colon == std::string::npos ? "127.0.0.1" : address.substr(0, colon);
    const std::string port = colon == std::string::npos ? address : address.substr(colon + 1);
    addrinfo hints{};
    hints.ai_socktype = SOCK_STREAM;
    addrinfo* found = nullptr;
    if (::getaddrinfo(host.c_str(), port.c_str(), &hints, &found) != 0) {
        std::fputs("pty_bridge: the address does not resolve\n", stderr);
        std::exit(1);
    }
    const int connection = ::socket(found->ai_family, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (connection == -1 || ::connect(connection, found->ai_addr, found->ai_addrlen) != 0) {
        stop("connect");
    }
    ::freeaddrinfo(found);
    const int on = 1;
    ::setsockopt(connection, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
    return connection;
}

// The controlling end. The terminal itself is held open as well, so that its users may come and go.
int openTerminal(const char* link)
{
    const int controller = ::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
    if (controller == -1 || ::grantpt(controller) != 0 || ::unlockpt(controller) != 0) {
        stop("posix_openpt");
    }
    const int terminal = ::open(::ptsname(controller), O_RDWR | O_NOCTTY | O_CLOEXEC);
    termios raw{};
    if (terminal == -1 || ::tcgetattr(terminal, &raw) != 0) {
        stop("open");
    }
    ::cfmakeraw(&raw);
    ::tcsetattr(terminal, TCSANOW, &raw);
    ::unlink(link);
    if (::symlink(::ptsname(controller), link) != 0) {
        stop("symlink");
    }
    return controller;
}

// False when the source has ended.
bool copyOnce(int from, int to)
{
    std::array<char, 4096> buffer;
    const ssize_t count = ::read(from, buffer.data(), buffer.size());
    if (count <= 0) {
        return count < 0 && errno == EINTR;
    }
    for (ssize_t done = 0; done < count;) {
        const ssize_t written = ::write(to, buffer.data() + done, static_cast<std::size_t>(count - done));
        if (written <= 0) {
            return false;
        }
        done += written;
    }
    return true;
}

void copyBothWays(int connection, int controller)
{
    std::array<pollfd, 2> ends{{{.fd = connection, .events = POLLIN, .revents = 0},
                                {.fd = controller, .events = POLLIN, .revents = 0}}};
    while (::poll(ends.data(), ends.size(), -1) > 0 || errno == EINTR) {
        if (ends[0].revents != 0 && !copyOnce(connection, controller)) {
            return;
        }
        if (ends[1].revents != 0 && !copyOnce(controller, connection)) {
            return;
        }
    }
}

} // namespace

int main(int count, char** arguments)
{
    if (count != 3) {
        std::fputs("usage: pty_bridge [HOST:]PORT LINK\n", stderr);
        return 2;
    }
    const int controller = openTerminal(arguments[2]);
    const int connection = connectTo(arguments[1]);
    copyBothWays(connection, controller);
    ::unlink(arguments[2]);
}
