#include "api/delivery.h"

#include "api/invalid_parameter.h"

#include <algorithm>
#include <cstddef>

namespace telvofm {
namespace {

// A negative size is no room at all.
std::size_t room(const char* buffer, int bufferSize)
{
    return buffer == nullptr || bufferSize < 0 ? 0 : static_cast<std::size_t>(bufferSize);
}

} // namespace

void copyExactly(std::string_view reply, char* buffer, int bufferSize)
{
    const std::size_t size = room(buffer, bufferSize);
    if (reply.size() <= size) {
        std::copy(reply.begin(), reply.end(), buffer);
        return;
    }
    std::fill_n(buffer, size, '\0');
    raiseInvalidParameter();
}

void copyBlanked(std::string_view reply, char* buffer, int bufferSize)
{
    copyBlankedWithoutTerminator(reply, buffer, bufferSize);
    if (buffer != nullptr) {
        buffer[reply.size()] = '\0';
    }
}

void copyBlankedWithoutTerminator(std::string_view reply, char* buffer, int bufferSize)
{
    const std::string_view copied = reply.substr(0, room(buffer, bufferSize));
    std::replace_copy(copied.begin(), copied.end(), buffer, '\0', ' ');
}

void copyText(std::string_view reply, char* buffer, int bufferSize)
{
    const std::size_t size = room(buffer, bufferSize);
    const std::string_view text = reply.substr(0, reply.find('\0'));
    if (text.size() < size) {
        *std::copy(text.begin(), text.end(), buffer) = '\0';
        return;
    }
    if (size > 0) {
        buffer[0] = '\0';
    }
    raiseInvalidParameter();
}

} // namespace telvofm
