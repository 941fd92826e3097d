#include "tools/link_texts.h"

#include "device/character_map.h"
#include "device/command.h"

#include <algorithm>

namespace telvofm::tools {
namespace {

bool isBeyondAscii(char byte)
{
    return static_cast<unsigned char>(byte) > 0x7F;
}

bool holdsText(const std::string& text)
{
    return std::any_of(text.begin(), text.end(), isBeyondAscii);
}

// Of all uploads only this one is a text; the others are dots.
bool uploadsText(const Unit& request)
{
    return static_cast<unsigned char>(request.bytes[2]) ==
           static_cast<unsigned char>(telvofm::Command::printQRCode);
}

void convert(std::string& text, bool isFromSerial, bool isToSerial)
{
    if (isFromSerial != isToSerial) {
        (isToSerial ? CharacterMap::outgoing : CharacterMap::incoming).convertAll(text);
    }
}

} // namespace

bool dependsOnLink(const Exchange& exchange)
{
    const auto isInBlock = [](const Unit& block) { return holdsText(block.data); };
    return std::any_of(exchange.request.fields.begin(), exchange.request.fields.end(), holdsText) ||
           holdsText(exchange.reply) ||
           (uploadsText(exchange.request) &&
            std::any_of(exchange.uploads.begin(), exchange.uploads.end(), isInBlock));
}

Exchange LinkTexts::forPrinter(Exchange logged) const
{
    constexpr std::size_t headSize = 3; // address and command are no text
    std::string fields = logged.request.bytes.substr(headSize);
    convert(fields, isFromSerial, isToSerial);
    logged.request.bytes.replace(headSize, std::string::npos, fields);
    if (uploadsText(logged.request)) {
        for (Unit& block : logged.uploads) {
            convert(block.data, isFromSerial, isToSerial);
        }
    }
    return logged;
}

std::string LinkTexts::asInLog(std::string reply) const
{
    convert(reply, isToSerial, isFromSerial);
    return reply;
}

} // namespace telvofm::tools
