#include "device/device.h"

#include "device/character_map.h"
#include "device/reply_file.h"

#include <chrono>
#include <mutex>
#include <utility>

namespace telvofm {

Device::Device(std::shared_ptr<LinkDriver> linkDriver)
    : lock(linkDriver->exchangeLock), driver(std::move(linkDriver))
{
}

void Device::open(bool convertsText)
{
    convertText = convertsText;
    const std::scoped_lock transport(driver->transportLock);
    driver->open();
}

void Device::close()
{
    std::unique_lock transport(driver->transportLock, std::try_to_lock);
    // A cut that comes just before a send blocks does not reach it: the next one does.
    constexpr std::chrono::milliseconds betweenCuts{100};
    while (!transport) {
        driver->cut();
        static_cast<void>(transport.try_lock_for(betweenCuts));
    }
    driver->close();
}

Request Device::request(int address, Command command)
{
    return {requestStorage, address, command, convertText ? &CharacterMap::outgoing : nullptr};
}

void Device::send(const Request& request)
{
    driver->sendCommand(request.bytes());
}

void Device::sendUnspecified(std::string_view request)
{
    driver->sendCommand(request);
}

std::string Device::query(const Request& request)
{
    std::string reply = driver->query(request.bytes());
    convertReply(reply);
    return reply;
}

void Device::queryToFile(const Request& request, std::string_view fileName)
{
    ReplyFile file(fileName);
    std::string reply = driver->queryStrict(request.bytes());
    convertReply(reply);
    file.writeWhole(reply);
}

void Device::queryThenWriteFile(const Request& request, std::string_view fileName)
{
    const std::string reply = query(request);
    ReplyFile file(fileName);
    file.writeWhole(reply);
}

void Device::upload(std::string_view data, bool isFinal)
{
    driver->sendBlocks(data, isFinal);
}

std::string Device::converted(std::string_view text) const
{
    std::string result(text);
    if (convertText) {
        CharacterMap::outgoing.convertAll(result);
    }
    return result;
}

std::size_t Device::itemNameWidth() const
{
    constexpr std::size_t twoLineItemWidth = 40;
    return autoTwoLineItem ? twoLineItemWidth : 0;
}

void Device::convertReply(std::string& reply) const
{
    if (convertText) {
        CharacterMap::incoming.convertAll(reply);
    }
}

} // namespace telvofm
