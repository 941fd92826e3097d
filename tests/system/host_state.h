// What belongs to the host program, as it is at one moment: of the thread that asks, and of its process. The
// library promises to leave it alone. Nothing is computed with doubles here.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace telvofm::test {

class HostState
{
public:
    HostState();
    // What is other than it was before: its names, or nothing.
    [[nodiscard]] std::string differenceFrom(const HostState& before) const;

private:
    void add(std::string name, std::initializer_list<long long> values);
    void add(std::string name, std::string text) { parts.emplace_back(std::move(name), std::move(text)); }
    void addFloatingPoint();
    void addStreams();
    void addWhatThePlatformHas();

    std::vector<std::pair<std::string, std::string>> parts;
};

} // namespace telvofm::test
