#include "api/call_log.h"

#include "api/telvofm.h"
#include "device/text.h"
#include "link/appended_file.h"

namespace telvofm {
namespace {

// How each kind of value appears in a line.
class Appending
{
public:
    explicit Appending(std::string& target) : line(target) {}

    void operator()(std::string_view text) const { line.append(text); }
    void operator()(char character) const { line.push_back(character); }
    void operator()(bool flag) const { line.push_back(flag ? '1' : '0'); }
    void operator()(long long number) const { line.append(NumberText::whole(number).view()); }
    void operator()(const Amount* amount) const
    {
        amount->writeGeneral([this](std::string_view digits) { line.append(digits); });
    }

private:
    std::string& line;
};

// The room that a value wants in any case; journals are long, and a line should be built in one piece.
std::size_t roomInLine(const LogPart& part)
{
    constexpr std::size_t numberRoom = 16;
    const auto* text = std::get_if<std::string_view>(&part);
    return text == nullptr ? numberRoom : text->size();
}

std::string lineOf(std::span<const LogPart> parts)
{
    std::size_t room = 1;
    for (const LogPart& part : parts) {
        room += roomInLine(part);
    }
    std::string line;
    line.reserve(room);
    for (const LogPart& part : parts) {
        appendToLine(line, part);
    }
    line.push_back('\n');
    return line;
}

} // namespace

void appendToLine(std::string& line, const LogPart& part)
{
    std::visit(Appending(line), part);
}

void CallLog::switchOn(std::string_view newPath)
{
    const std::scoped_lock lock(settings);
    path = newPath;
    enabled = true;
}

void CallLog::switchOff()
{
    enabled = false;
}

void CallLog::append(std::span<const LogPart> parts)
{
    const std::string line = lineOf(parts);
    const std::scoped_lock lock(settings);
    const AppendedFile file(path);
    if (file.isOpen()) {
        file.append(line);
    }
}

CallLog& callLog()
{
    static CallLog& log = *new CallLog;
    return log;
}

} // namespace telvofm

using namespace telvofm;

void setLogginOn(const char* path)
{
    callLog().switchOn(Text(path));
}

void setLogginOff(void)
{
    callLog().switchOff();
}
