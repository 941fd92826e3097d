// A serial line for programs that know only a TCP port: makes a pseudo-terminal, puts a link to it at the
// given path, connects to the port, and copies bytes both ways until the port closes. So a printer that
// listens on TCP, a program for Windows under Wine too, stands at the end of a COM port.
//
//     pty_bridge [HOST:]PORT LINK [SETTINGS]
//
// Into the file SETTINGS it writes how the line is set, as in "57600 8N1 RTS/CTS", each time before it
// carries bytes on to the printer: who has received them can read what they were sent with.
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <netdb.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <string>
#include <sys/socket.h>
#include <termios.h>
#include <unistd.h>
#include <utility>

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

std::string speedOf(const termios& line)
{
    constexpr std::array<std::pair<speed_t, const char*>, 3> speeds = {
        {{B9600, "9600"}, {B57600, "57600"}, {B115200, "115200"}}};
    for (const auto& [speed, text] : speeds) {
        if (::cfgetospeed(&line) == speed) {
            return text;
        }
    }
    return "?";
}

void writeSettings(int controller, const char* path)
{
    termios line{};
    if (path == nullptr || ::tcgetattr(controller, &line) != 0) {
        return;
    }
    const auto is = [](tcflag_t flags, tcflag_t wanted) { return (flags & wanted) != 0; };
    std::ofstream(path) << speedOf(line) << " baud"
                        << (is(line.c_cflag, CSTOPB) ? " 2 stop bits" : " 1 stop bit")
                        << (is(line.c_cflag, CRTSCTS) ? " RTS/CTS" : "")
                        << (is(line.c_iflag, IXON | IXOFF) ? " XON/XOFF" : "");
}

void copyBothWays(int connection, int controller, const char* settings)
{
    std::array<pollfd, 2> ends{{{.fd = connection, .events = POLLIN, .revents = 0},
                                {.fd = controller, .events = POLLIN, .revents = 0}}};
    while (::poll(ends.data(), ends.size(), -1) > 0 || errno == EINTR) {
        if (ends[0].revents != 0 && !copyOnce(connection, controller)) {
            return;
        }
        if (ends[1].revents != 0) {
            writeSettings(controller, settings);
        }
        if (ends[1].revents != 0 && !copyOnce(controller, connection)) {
            return;
        }
    }
}

} // namespace

int main(int count, char** arguments)
{
    if (count != 3 && count != 4) {
        std::fputs("usage: pty_bridge [HOST:]PORT LINK [SETTINGS]\n", stderr);
        return 2;
    }
    const int controller = openTerminal(arguments[2]);
    const int connection = connectTo(arguments[1]);
    copyBothWays(connection, controller, count == 4 ? arguments[3] : nullptr);
    ::unlink(arguments[2]);
}
