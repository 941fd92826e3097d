// The connected printer: one object per session, between the commands and the link. It owns the lock that
// makes each exchange whole, the flags that change how texts are prepared, and the pictures of the graphics
// commands.
//
// A command builds its request here and runs one exchange; the caller (api/frame.h) holds the lock meanwhile.
#pragma once

#include "device/request.h"
#include "link/link_driver.h"

#include <array>
#include <atomic>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>

namespace telvofm {

class Device
{
public:
    explicit Device(std::shared_ptr<LinkDriver> linkDriver);

    // Opens the link. Texts are converted between code pages on serial links and not on TCP links.
    void open(bool convertsText);
    // Waits for raw access to end, which is cut off.
    void close();

    // An empty request; valid until the next one is begun.
    Request request(int address, Command command);

    // Sends a request that only wants the printer's acceptance.
    void send(const Request& request);
    // As `send`, for a request that the caller has built whole.
    void sendUnspecified(std::string_view request);
    // Sends a request and returns the reply, converted when conversion is on.
    std::string query(const Request& request);
    // As `query`, but the reply goes into the file, which is created or emptied before anything is sent; a
    // reply that breaks off leaves it there.
    void queryToFile(const Request& request, std::string_view fileName);
    // As `query`, and then writes the reply into the file, which a failed exchange leaves alone.
    void queryThenWriteFile(const Request& request, std::string_view fileName);
    // Uploads data after the request that announced it; `isFinal` ends the upload.
    void upload(std::string_view data, bool isFinal);

    // Text as an upload carries it: converted when conversion is on.
    [[nodiscard]] std::string converted(std::string_view text) const;
    // The width that item names are padded to: 0, or 40 while `autoTwoLineItem` is set.
    [[nodiscard]] std::size_t itemNameWidth() const;

    // Of the link: whoever works with it, one exchange is whole.
    ExchangeLock& lock;
    // The prepared pictures by index, in the printer's layouts. The graphics commands fill and read them.
    std::map<int, std::string> rasterImages;
    std::map<int, std::string> bandImages;
    std::map<int, std::string> columnImages;
    std::map<int, std::string> secondColumnImages;
    std::atomic<bool> autoTwoLineItem = false; // set and read without the lock

private:
    void convertReply(std::string& reply) const;

    std::shared_ptr<LinkDriver> driver;
    bool convertText = true;
    std::string requestStorage;
};

} // namespace telvofm
