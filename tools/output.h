// What a command has to say: lines for people as it goes on, or one JSON document at the end. Standard output
// holds nothing else.
#pragma once

#include <cstdio>
#include <nlohmann/json.hpp>
#include <string_view>

namespace telvofm::tools {

using Json = nlohmann::ordered_json;

class Output
{
public:
    Output(std::FILE* target, bool inJson) : stream(target), isJson(inJson) {}

    // For people; nothing with --json.
    void line(std::string_view text)
    {
        if (!isJson) {
            std::fwrite(text.data(), 1, text.size(), stream);
            std::fputc('\n', stream);
            std::fflush(stream);
        }
    }

    // The document as it is now; nothing without --json.
    void end()
    {
        if (isJson) {
            const std::string text = document.dump(2, ' ', false, Json::error_handler_t::replace);
            std::fwrite(text.data(), 1, text.size(), stream);
            std::fputc('\n', stream);
            std::fflush(stream);
        }
    }

    Json document = Json::object();

private:
    std::FILE* stream;
    bool isJson;
};

} // namespace telvofm::tools
