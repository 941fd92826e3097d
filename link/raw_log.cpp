#include "link/raw_log.h"

#include "link/appended_file.h"
#include "link/open_file.h"

#include <new>

namespace telvofm {
namespace {

void appendHexadecimal(std::string& target, std::string_view bytes)
{
    constexpr std::string_view digits = "0123456789abcdef";
    for (const char byte : bytes) {
        const auto value = static_cast<unsigned char>(byte);
        target.push_back(digits[value >> 4U]);
        target.push_back(digits[value & 0x0FU]);
        target.push_back(' ');
    }
}

} // namespace

void RawLog::switchOn(std::string_view newPath)
{
    const std::scoped_lock lock(settings);
    if (!newPath.empty()) {
        path = newPath;
        const OpenFile emptied(std::fopen(path.c_str(), "w"));
    }
    if (!path.empty()) {
        enabled = true;
    }
}

void RawLog::switchOff()
{
    enabled = false;
}

void RawLog::append(std::string_view direction, std::string_view bytes)
{
    const std::scoped_lock lock(settings);
    const AppendedFile file(path);
    if (!file.isOpen()) {
        return;
    }
    std::string record;
    try {
        record.reserve(bytes.size() * 3 + direction.size() + 1);
    } catch (const std::bad_alloc&) {
        return; // as without a file: the exchange that it is a record of goes on
    }
    if (direction != lastDirection) {
        if (!lastDirection.empty()) {
            record.push_back('\n');
        }
        record.append(direction);
        lastDirection = direction;
    }
    appendHexadecimal(record, bytes);
    file.append(record);
}

RawLog& rawLog()
{
    static RawLog& log = *new RawLog;
    return log;
}

} // namespace telvofm
