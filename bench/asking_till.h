// A till that asks a printer over TCP and reads its reply block by block, as whoever measures replies wants
// it.
#pragma once

#include "bench/sale_requests.h"

#include <array>
#include <boost/asio.hpp>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

namespace bench {

class AskingTill
{
public:
    // HOST:PORT, as the ready file has it.
    explicit AskingTill(const std::string& address) : socket(context)
    {
        const std::size_t colon = address.rfind(':');
        socket.connect({boost::asio::ip::make_address(address.substr(0, colon)),
                        static_cast<std::uint16_t>(std::stoi(address.substr(colon + 1)))});
        socket.set_option(boost::asio::ip::tcp::no_delay(true));
    }

    // How much data comes, in at most so many blocks. Throws when the printer refuses.
    std::size_t ask(unsigned char command, const std::vector<std::string>& fields,
                    std::size_t mostBlocks = SIZE_MAX)
    {
        boost::asio::write(socket, boost::asio::buffer(request(command, fields)));
        std::size_t size = 0;
        for (std::size_t blocks = 1;; ++blocks) {
            read(1);
            if (bytes[0] == noData) {
                return size;
            }
            if (bytes[0] != blockStart) {
                throw std::runtime_error("the printer refuses what it is asked");
            }
            read(1);
            const std::size_t data = bytes[0] + std::size_t{1};
            read(data + 2); // the terminator and the checksum behind them
            size += data;
            const bool isLast = bytes.at(data) == lastBlock;
            if (!isLast && blocks == mostBlocks) {
                return size;
            }
            const std::array<unsigned char, 1> taken = {isLast ? lastBlock : accepted};
            boost::asio::write(socket, boost::asio::buffer(taken));
            if (isLast) {
                return size;
            }
        }
    }

private:
    static constexpr unsigned char blockStart = 0x3A;
    static constexpr unsigned char accepted = 0x06;
    static constexpr unsigned char lastBlock = 0x03;
    static constexpr unsigned char noData = 0x04;

    void read(std::size_t size) { boost::asio::read(socket, boost::asio::buffer(bytes, size)); }

    boost::asio::io_context context;
    boost::asio::ip::tcp::socket socket;
    std::array<unsigned char, 512> bytes{};
};

} // namespace bench
