// Measures itemSale over loopback TCP beside a write of the same size by libmodbus, a well-kept library for
// another protocol of requests and short answers: both send 37 bytes, call by call in turn.
//
//     modbus_write PORT           sale_printer listens on the port for one connection
#include "bench/cores.h"
#include "bench/in_turn.h"
#include "bench/sale_exchange.h"
#include "telvofm.h"

#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <modbus.h>
#include <netinet/in.h>
#include <string>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>

namespace {

constexpr std::size_t headSize = 13; // of a request that writes registers
constexpr std::size_t answerSize = 12;
constexpr int registers = 12;
constexpr std::size_t requestSize = headSize + std::size_t{2} * registers;

void require(bool isTrue, const char* what)
{
    if (!isTrue) {
        std::fprintf(stderr, "modbus_write: %s\n", what);
        std::exit(EXIT_FAILURE);
    }
}

int listenOnLoopback(std::uint16_t& port)
{
    const int listener = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof address;
    auto* any = reinterpret_cast<sockaddr*>(&address);
    require(::bind(listener, any, size) == 0 && ::listen(listener, 1) == 0 &&
                ::getsockname(listener, any, &size) == 0,
            "no port could be opened on the loopback address");
    port = ntohs(address.sin_port);
    return listener;
}

// Confirms every write: the answer is the request's head with the length of what is left of it.
void confirmWrites(int listener)
{
    constexpr std::size_t lengthAt = 5;
    const int connection = ::accept4(listener, nullptr, nullptr, SOCK_CLOEXEC);
    for (std::array<char, requestSize> request{};
         ::recv(connection, request.data(), request.size(), MSG_WAITALL) == requestSize;) {
        request[lengthAt] = static_cast<char>(answerSize - (lengthAt + 1));
        if (::send(connection, request.data(), answerSize, MSG_NOSIGNAL) != answerSize) {
            break;
        }
    }
    ::close(connection);
    ::close(listener);
}

void compare(modbus_t* modbus)
{
    const std::array<std::uint16_t, registers> values{};
    const auto sell = [] {
        require(itemSale(1, 0, "Chlieb", 12.5, 'A', 1.5, 8.3333, "ks") == 0, "the sale failed");
    };
    const auto write = [&] {
        require(modbus_write_registers(modbus, 0, registers, values.data()) == registers, "the write failed");
    };
    const bench::InTurn medians = bench::callInTurn(sell, write);
    std::printf("itemSale %7.2f us   libmodbus %7.2f us   ratio %.3f\n", medians.first, medians.second,
                medians.first / medians.second);
}

} // namespace

int main(int count, char** arguments)
{
    require(count == 2, "usage: modbus_write PORT");
    require(bench::saleRequest().size() + 1 == requestSize, "a sale is no longer as long as the write");
    setLogginOff();
    require(openFM(("127.0.0.1:" + std::string(arguments[1])).c_str()) == 0, "the library could not connect");
    std::uint16_t port = 0;
    const int listener = listenOnLoopback(port);
    std::thread answering([listener] {
        bench::pinToCore(1);
        confirmWrites(listener);
    });
    bench::pinToCore(0);
    {
        const std::unique_ptr<modbus_t, decltype(&::modbus_free)> modbus(::modbus_new_tcp("127.0.0.1", port),
                                                                         &::modbus_free);
        require(modbus && ::modbus_connect(modbus.get()) == 0, "libmodbus could not connect");
        compare(modbus.get());
        ::modbus_close(modbus.get());
    }
    answering.join();
    closeFM();
    return EXIT_SUCCESS;
}
