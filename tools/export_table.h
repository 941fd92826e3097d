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

// What calls write to: the output buffer (filled with 0xAA before each call), the count, and the result
// object, which is made at its first use and stays for later calls.
class CallContext
{
public:
    CallContext() = default;
    CallContext(const CallContext&) = delete;
    CallContext& operator=(const CallContext&) = delete;
    ~CallContext() { destroyResultObject(resultObject); }

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
    std::size_t parameterCount;
    // Returns the result as text: a number, `true` or `false`, the text itself, `null`, `result`, or
    // `nothing`. Throws std::invalid_argument when an argument does not fit its parameter.
    std::function<std::string(std::span<const Argument>, CallContext&)> call;
};

std::span<const Export> exportTable();
// Null when there is no export of this name.
const Export* findExport(std::string_view name);

} // namespace telvofm::tools
