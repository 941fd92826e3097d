// The arguments of sample calls as the table of exports takes them.
#pragma once

#include "tests/unit/printer/sample_calls.h"
#include "tools/export_table.h"

#include <string>
#include <vector>

namespace virtual_printer {

// Replies go to a buffer of this size, or to this file.
inline std::vector<telvofm::tools::Argument> argumentsOf(const SampleCall& sample, std::size_t bufferSize,
                                                         const std::string& file)
{
    std::vector<telvofm::tools::Argument> arguments;
    if (sample.name != "sendUnspecifiedData") {
        arguments.push_back({"1"}); // the printer's address
    }
    for (const std::string_view argument : sample.arguments) {
        if (argument == toBuffer) {
            arguments.insert(arguments.end(), 2, {std::to_string(bufferSize)}); // the buffer, and its size
        } else if (argument == toFile) {
            arguments.push_back({file});
        } else {
            arguments.push_back({std::string(argument), argument == toResult || argument == toCount});
        }
    }
    return arguments;
}

} // namespace virtual_printer
