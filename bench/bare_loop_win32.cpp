#include "bench/bare_loop.h"

#include <array>
#include <stdexcept>
#include <winsock2.h>

namespace bench {

BareLoop::BareLoop(std::uint16_t port)
{
    WSADATA data;
    ::WSAStartup(MAKEWORD(2, 2), &data);
    handle = ::WSASocketW(AF_INET, SOCK_STREAM, IPPROTO_TCP, nullptr, 0,
                          WSA_FLAG_OVERLAPPED | WSA_FLAG_NO_HANDLE_INHERIT);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = ::htonl(INADDR_LOOPBACK);
    address.sin_port = ::htons(port);
    if (::connect(handle, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
        throw std::runtime_error("the bare loop could not connect");
    }
}

BareLoop::~BareLoop()
{
    ::closesocket(handle);
    ::WSACleanup();
}

bool BareLoop::exchange(std::string_view request, char checksum) const
{
    timeval patience = {.tv_sec = 3, .tv_usec = 0};
    constexpr char accepted = 0x06;
    std::array<char, 256> buffer;
    fd_set readable;
    FD_ZERO(&readable);
    FD_SET(handle, &readable);
    return ::send(handle, request.data(), static_cast<int>(request.size()), 0) > 0 &&
           ::send(handle, &checksum, 1, 0) == 1 && ::select(0, &readable, nullptr, nullptr, &patience) == 1 &&
           ::recv(handle, buffer.data(), static_cast<int>(buffer.size()), 0) == 1 && buffer[0] == accepted;
}

void BareLoop::appendToFile(const std::string& path, std::string_view line)
{
    const HANDLE file =
        ::CreateFileA(path.c_str(), FILE_APPEND_DATA | SYNCHRONIZE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                      nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    DWORD written = 0;
    if (file == INVALID_HANDLE_VALUE ||
        ::WriteFile(file, line.data(), static_cast<DWORD>(line.size()), &written, nullptr) == 0) {
        throw std::runtime_error("the bare loop could not write " + path);
    }
    ::CloseHandle(file);
}

} // namespace bench
