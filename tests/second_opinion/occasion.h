// The occasion of one random call: what its arguments are drawn from, and where its results go.
#pragma once

#include "tests/second_opinion/draw.h"
#include "tests/second_opinion/plan.h"
#include "tests/second_opinion/record.h"

#include "telvofm.h"

#include <array>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

namespace telvofm::test {

// What calls write to. It is shared with the processes that calls end.
struct Output
{
    static constexpr std::size_t mostBytes = 1 << 16;
    std::array<char, mostBytes> buffer;
    unsigned int count;
    std::array<char, 32> result; // of a call that was made elsewhere, as JSON
};

class Occasion
{
public:
    Occasion(Draw& source, Output& target, std::string_view call) : draw(source), output(target), record(call)
    {
    }

    // One of each type of parameter; `name` says what it is for. Each goes into the record.
    int drawn(std::string_view name, int* type);
    std::int16_t drawn(std::string_view name, std::int16_t* type);
    std::uint32_t drawn(std::string_view name, std::uint32_t* type);
    std::int64_t drawn(std::string_view name, std::int64_t* type);
    double drawn(std::string_view name, double* type);
    char drawn(std::string_view name, char* type);
    unsigned char drawn(std::string_view name, unsigned char* type); // for a bool
    const char* drawn(std::string_view name, const char** type);
    const unsigned char* drawn(std::string_view name, const unsigned char** type);
    const void* drawn(std::string_view name, const void** type);
    char* drawn(std::string_view name, char** type);
    unsigned char* drawn(std::string_view name, unsigned char** type);
    unsigned int* drawn(std::string_view name, unsigned int** type);
    ResultObject* drawn(std::string_view name, ResultObject** type);
    const ResultObject* drawn(std::string_view name, const ResultObject** type);

    Draw& draw;
    Output& output;
    Record record;

    // Chosen before the arguments are drawn.
    bool isSerial = false;
    std::string port;          // for the open exports
    std::uint32_t setting = 0; // their second argument
    std::string path;          // of a file
    std::string data;          // raw bytes, a picture's, and those of sendUnspecifiedData
    bool hasData = true;       // null otherwise
    bool hasMarker = true;
    int size = 0;    // said of the buffer or the data
    int object = -1; // none: null
    ResultObject* resultObject = nullptr;

    std::string result = "null"; // as JSON

private:
    const char* kept(std::string text);

    std::deque<std::string> texts;
};

} // namespace telvofm::test
