#include "tests/system/host_state.h"

#include "tests/unit/hostile_floating_point.h"

#include <bit>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <iostream>
#include <new>

namespace telvofm::test {

HostState::HostState()
{
    addFloatingPoint();
    addStreams();
    add("locale of C++", std::locale().name());
    add("working folder", std::filesystem::current_path().string());
    add("handlers of C++",
        {std::bit_cast<long long>(std::get_terminate()), std::bit_cast<long long>(std::get_new_handler())});
    addWhatThePlatformHas();
}

std::string HostState::differenceFrom(const HostState& before) const
{
    std::string names;
    for (std::size_t index = 0; index < parts.size(); ++index) {
        const bool isTold = names.find(parts[index].first) != std::string::npos;
        if (parts[index] != before.parts.at(index) && !isTold) {
            names += (names.empty() ? "" : ", ") + parts[index].first;
        }
    }
    return names;
}

void HostState::add(std::string name, std::initializer_list<long long> values)
{
    std::string text;
    for (const long long value : values) {
        text += std::to_string(value) + " ";
    }
    add(std::move(name), std::move(text));
}

// Rounding, masks, and the exceptions that have been noted.
void HostState::addFloatingPoint()
{
    add("floating point", {_mm_getcsr(), controlWord(), statusFlags()});
}

void HostState::addStreams()
{
    for (std::ios* const stream : {static_cast<std::ios*>(&std::cin), static_cast<std::ios*>(&std::cout),
                                   static_cast<std::ios*>(&std::cerr), static_cast<std::ios*>(&std::clog)}) {
        add("streams of C++",
            {static_cast<long long>(stream->rdstate()), static_cast<long long>(stream->flags()),
             stream->precision(), stream->width(), stream->fill(),
             static_cast<long long>(stream->exceptions()), std::bit_cast<long long>(stream->rdbuf()),
             std::bit_cast<long long>(stream->tie())});
        add("streams of C++", stream->getloc().name());
    }
    for (std::FILE* const stream : {stdin, stdout, stderr}) {
        add("streams of C", {std::ferror(stream), std::feof(stream)});
    }
}

} // namespace telvofm::test
