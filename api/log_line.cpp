#include "api/log_line.h"

#include <cstring>

namespace telvofm {

LogLine::LogLine(std::size_t room)
{
    if (room > usualRoom) {
        longer = std::make_unique_for_overwrite<char[]>(room);
    }
    begin = end = longer ? longer.get() : usual.data();
}

void LogLine::add(std::string_view text)
{
    std::memcpy(end, text.data(), text.size());
    end += text.size();
}

void LogLine::add(char character)
{
    *end++ = character;
}

void LogLine::add(const Amount& amount)
{
    amount.writeGeneral([this](std::string_view digits) { add(digits); });
}

void LogLine::addWhole(long long number)
{
    add(NumberText::whole(number).view());
}

} // namespace telvofm
