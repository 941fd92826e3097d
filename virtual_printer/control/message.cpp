#include "virtual_printer/control/message.h"

#include <charconv>
#include <string_view>

namespace virtual_printer {
namespace {

std::string decoded(std::string_view text)
{
    constexpr int hexadecimal = 16;
    std::string plain;
    for (std::size_t at = 0; at < text.size(); ++at) {
        unsigned char byte = 0;
        if (text[at] == '%' && at + 2 < text.size() &&
            std::from_chars(text.data() + at + 1, text.data() + at + 3, byte, hexadecimal).ptr ==
                text.data() + at + 3) {
            plain += static_cast<char>(byte);
            at += 2;
        } else {
            plain += text[at] == '+' ? ' ' : text[at];
        }
    }
    return plain;
}

// Calls `take` with each part of the text.
template <typename Take>
void split(std::string_view text, char separator, Take take)
{
    while (!text.empty()) {
        const std::size_t size = std::min(text.find(separator), text.size());
        if (size > 0) {
            take(text.substr(0, size));
        }
        text.remove_prefix(std::min(size + 1, text.size()));
    }
}

} // namespace

HttpAnswer jsonAnswer(const Json& content, int status)
{
    constexpr int indent = 2;
    return {status, content.dump(indent, ' ', false, Json::error_handler_t::replace) + "\n"};
}

HttpAnswer errorAnswer(int status, const std::string& sentence)
{
    return jsonAnswer({{"error", sentence}}, status);
}

Target::Target(const std::string& text)
{
    const std::string_view whole = text;
    const std::size_t question = std::min(whole.find('?'), whole.size());
    split(whole.substr(0, question), '/', [this](std::string_view part) { path.push_back(decoded(part)); });
    split(whole.substr(std::min(question + 1, whole.size())), '&', [this](std::string_view part) {
        const std::size_t equals = std::min(part.find('='), part.size());
        const std::string name = decoded(part.substr(0, equals));
        if (!query.emplace(name, decoded(part.substr(std::min(equals + 1, part.size())))).second) {
            repeated = name;
        }
    });
}

} // namespace virtual_printer
