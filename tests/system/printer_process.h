// The virtual printer as a process of its own.
#pragma once

#include "tests/system/child_process.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <vector>

namespace telvofm::test {

class PrinterProcess : public ChildProcess
{
public:
    explicit PrinterProcess(std::vector<std::string> options) : ChildProcess(withProgram(std::move(options)))
    {
    }

    // Where its next line says that it can be reached, behind `start`.
    [[nodiscard]] std::string address(const std::string& start = "listening on ") const
    {
        const std::string greeting = line();
        EXPECT_EQ(greeting.substr(0, start.size()), start);
        return greeting.substr(std::min(start.size(), greeting.size()));
    }

    // Of its greeting, when it listens on this machine; 0 when it greets otherwise.
    [[nodiscard]] int port() const { return std::stoi("0" + address("listening on 127.0.0.1:")); }

private:
    static std::vector<std::string> withProgram(std::vector<std::string> options)
    {
        options.insert(options.begin(), TELVOFM_PRINTER);
        return options;
    }
};

} // namespace telvofm::test
