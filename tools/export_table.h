// The one typed table of all exports: a name and a callable that takes its arguments as text. The wire
// runner, the command-line tool and the fuzzers call the library through it.
#pragma once

#include "api/telvofm.h"

#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace telvofm::tools {

// An argument as text. A word names something that has no text: `null`, `result`, `count`, `marker`.
struct Argument
{
    std::string text;
    bool isWord = false;
};

// What a parameter takes.
enum class Kind
{
    text,
    character,
    whole,
    number,
    truth,
    bytes,  // a text that may hold 0x00; its size follows
    buffer, // given as its size, which follows again
    count,
    result,
    marker
};

struct Parameter
{
    std::string_view name;
    Kind kind;
};

// What calls write to: the output buffer (filled with 0xAA before each call), the count, and the result
// object, which is made at its first use and stays for later calls.
class CallContext
{
public:
    CallContext() = default;
    CallContext(const CallContext&) = delete;
    CallContext& operator=(const CallContext&) = delete;
    ~CallContext();

    char* newBuffer(std::size_t size);
    ResultObject* result();
    // The caller has destroyed it.
    void forgetResult() { resultObject = nullptr; }

    std::vector<char> buffer;
    unsigned int count = 0;

private:
    ResultObject* resultObject = nullptr;
};

struct Export
{
    std::string_view name;
    std::vector<Parameter> parameters;
    // Returns the result as text: a number, `true` or `false`, the text itself, `null`, `result`, or
    // `nothing`. Throws std::invalid_argument when an argument does not fit its parameter, and names that.
    std::function<std::string(std::span<const Argument>, CallContext&)> call;
};

std::span<const Export> exportTable();
// Null when the table has no export of this name.
const Export* findExport(std::string_view name);

} // namespace telvofm::tools
