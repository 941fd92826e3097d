// An upload and the command that announces it are one exchange: no other thread's call comes in between, and
// the caller's bytes are those of the call.
#include "telvofm.h"
#include "tests/system/printer_thread.h"

#include <gtest/gtest.h>

#include <chrono>
#include <future>
#include <string>
#include <thread>
#include <vector>

namespace telvofm::test {
namespace {

// Long enough for the other thread to send its request now, if it were allowed to.
constexpr std::chrono::milliseconds opportunity{50};

// A data block of `length` equal bytes as it must come, without its checksum byte.
std::string blockOf(std::size_t length, char byte, char terminator)
{
    std::string block = ":";
    block += static_cast<char>(length - 1);
    block.append(length, byte);
    block += terminator;
    return block;
}

void accept(wire::Connection& connection)
{
    std::this_thread::sleep_for(opportunity);
    connection.send("\x06");
}

TEST(UploadThreads, NoCallComesBetweenACommandAndItsUpload)
{
    std::vector<std::string> received;
    {
        std::promise<void> commandCame;
        PrinterThread printer([&](wire::Connection& connection) {
            received.push_back(receiveRequest(connection).value_or("nothing"));
            commandCame.set_value();
            accept(connection);
            for (const std::size_t length : {256U, 256U, 88U}) {
                std::string block = receiveBytes(connection, length + 4);
                block.resize(block.empty() ? 0 : block.size() - 1); // its checksum byte
                received.push_back(block);
                accept(connection);
            }
            received.push_back(receiveRequest(connection).value_or("nothing"));
            connection.send("\x06");
            receiveUntilClosed(connection);
        });
        setLogginOff();
        ASSERT_EQ(openFM(printer.address().c_str()), 0);
        const std::string text = std::string(256, 'a') + std::string(256, 'b') + std::string(88, 'c');
        auto code = std::async(std::launch::async, [&] { return printQRCode(1, text.c_str()); });
        commandCame.get_future().wait();
        auto line = std::async(std::launch::async, [] { return printAnnouncement(1, 2, "Otvorene"); });
        EXPECT_EQ(code.get(), 0);
        EXPECT_EQ(line.get(), 0);
        closeFM();
    }
    const std::string command = "\x1C\x01\xED\x04";
    const std::string announcement{"\x1C\x01\x31\x32\0Otvorene\0\x04", 15};
    const std::vector<std::string> expected{command, blockOf(256, 'a', '\x17'), blockOf(256, 'b', '\x17'),
                                            blockOf(88, 'c', '\x03'), announcement};
    EXPECT_EQ(received, expected);
}

TEST(UploadThreads, APictureThatChangesMeanwhileIsUploadedAsItWas)
{
    std::string picture(300, 'a');
    std::vector<std::string> received;
    {
        PrinterThread printer([&](wire::Connection& connection) {
            receiveRequest(connection);
            picture.assign(picture.size(), 'b');
            connection.send("\x06");
            for (const std::size_t length : {256U, 44U, 4U}) {
                std::string block = receiveBytes(connection, length + 4);
                block.resize(block.empty() ? 0 : block.size() - 1); // its checksum byte
                received.push_back(block);
                connection.send("\x06");
            }
            receiveUntilClosed(connection);
        });
        setLogginOff();
        ASSERT_EQ(openFM(printer.address().c_str()), 0);
        EXPECT_EQ(printGraphic(1, 2, 3, picture.data(), static_cast<int>(picture.size())), 0);
        closeFM();
    }
    const std::vector<std::string> expected{blockOf(256, 'a', '\x17'), blockOf(44, 'a', '\x03'),
                                            blockOf(4, '\0', '\x03')};
    EXPECT_EQ(received, expected);
}

} // namespace
} // namespace telvofm::test
