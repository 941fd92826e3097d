// One call of the second opinion as a line of JSON. Bytes are hexadecimal digits, doubles the digits of their
// bits.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>

namespace telvofm::test {

std::string hexadecimal(std::string_view bytes);
// "null", or the digits in quotation marks.
std::string jsonBytes(const char* text);
inline std::string jsonBytes(std::string_view bytes)
{
    return '"' + hexadecimal(bytes) + '"';
}
std::string jsonBits(double number);

class Record
{
public:
    explicit Record(std::string_view call) : line(R"({"call":")" + std::string(call) + '"') {}

    void argument(std::string_view json)
    {
        arguments += arguments.empty() ? "" : ",";
        arguments += json;
    }
    void member(std::string_view name, std::string_view json)
    {
        line.append(",\"").append(name).append("\":").append(json);
    }
    std::string finish() { return line + R"(,"args":[)" + arguments + "]}\n"; }

private:
    std::string line;
    std::string arguments;
};

} // namespace telvofm::test
