// What printers kept at some moment, by name: in memory until the program ends, or as files in a folder of
// the data folder and nowhere else.
#pragma once

#include "virtual_printer/control/message.h"
#include "virtual_printer/memory/memory.h"

#include <filesystem>
#include <functional>
#include <map>
#include <string>

namespace virtual_printer {

class Snapshots
{
public:
    enum class Place
    {
        memory,
        file
    };

    static constexpr std::size_t mostInMemory = 32;
    static constexpr std::size_t mostFiles = 1000;

    // Without a data folder there are no files.
    explicit Snapshots(std::filesystem::path dataFolder) : data(std::move(dataFolder)) {}

    // In the place of one of the same name, whole or not at all. All throw ControlRefusal.
    void keep(const std::string& name, Place place, const std::string& printer, Memory memory);
    void read(const std::string& name, Place place, const std::function<void(const Memory&)>& reader);
    void forget(const std::string& name, Place place);
    // Those in memory with the printer that was kept, which files outlive.
    [[nodiscard]] Json list() const;

private:
    struct Kept
    {
        std::string printer;
        Memory memory;
    };

    [[nodiscard]] std::filesystem::path folder() const;
    [[nodiscard]] std::filesystem::path fileOf(const std::string& name) const;

    std::filesystem::path data;
    std::map<std::string, Kept> inMemory;
};

} // namespace virtual_printer
