#include "virtual_printer/control/snapshots.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <system_error>
#include <vector>

namespace virtual_printer {
namespace {

constexpr const char* ending = ".db";

// Windows opens a device by such a name in any folder and with any ending. Refused everywhere: what was kept
// on one system is restored on another.
bool isDevice(std::string name)
{
    std::transform(name.begin(), name.end(), name.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    constexpr std::array<std::string_view, 4> devices = {"con", "prn", "aux", "nul"};
    constexpr std::size_t numbered = 4; // com1, lpt1
    return std::find(devices.begin(), devices.end(), name) != devices.end() ||
           (name.size() == numbered && (name.starts_with("com") || name.starts_with("lpt")) &&
            name.back() >= '0' && name.back() <= '9');
}

// A name of this kind leads nowhere but into the folder.
void requireName(const std::string& name)
{
    constexpr std::size_t longest = 64;
    const bool isName =
        !name.empty() && name.size() <= longest && std::all_of(name.begin(), name.end(), [](char c) {
            return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' ||
                   c == '_';
        });
    if (!isName) {
        throw ControlRefusal(status::badRequest,
                             "A snapshot's name has 1 to 64 letters, digits, - and _; give such a name.");
    }
    if (isDevice(name)) {
        throw ControlRefusal(status::badRequest, "\"" + name +
                                                     "\" is the name of a device on Windows and of no file; "
                                                     "give another name.");
    }
}

ControlRefusal noSuchSnapshot(const std::string& name)
{
    return {status::notFound, "There is no snapshot \"" + name + "\" there; GET /snapshots lists them."};
}

// What the system refuses is for the user to allow.
void requireDone(const std::error_code& failure, const std::string& whatCannotBeDone)
{
    if (failure) {
        throw ControlRefusal(status::conflict, whatCannotBeDone + ": " + failure.message() + "; allow it.");
    }
}

std::string fileCalled(const std::string& name)
{
    return "The file of the snapshot \"" + name + "\"";
}

std::vector<std::filesystem::path> filesIn(const std::filesystem::path& folder)
{
    std::error_code failure;
    std::vector<std::filesystem::path> files;
    std::filesystem::directory_iterator file(folder, failure);
    while (!failure && file != std::filesystem::directory_iterator()) {
        files.push_back(file->path());
        file.increment(failure);
    }
    requireDone(failure, "The folder \"snapshots\" in the data folder cannot be read");
    return files;
}

} // namespace

std::filesystem::path Snapshots::folder() const
{
    if (data.empty()) {
        throw ControlRefusal(status::conflict,
                             "There is no data folder for files; start the program with --data FOLDER, "
                             "or keep the snapshot in memory.");
    }
    std::filesystem::path own = data / "snapshots";
    std::error_code failure;
    const auto kind = std::filesystem::symlink_status(own, failure).type();
    if (kind == std::filesystem::file_type::not_found) {
        std::filesystem::create_directory(own, failure);
        requireDone(failure, "The folder \"snapshots\" in the data folder cannot be made");
    } else if (kind != std::filesystem::file_type::directory) {
        throw ControlRefusal(status::conflict,
                             "\"snapshots\" in the data folder is no folder of its own, and nothing "
                             "outside the data folder is used; take it away.");
    }
    return own;
}

std::filesystem::path Snapshots::fileOf(const std::string& name) const
{
    std::filesystem::path file = folder() / (name + ending);
    std::error_code failure;
    const auto kind = std::filesystem::symlink_status(file, failure).type();
    if (kind == std::filesystem::file_type::none) {
        requireDone(failure, fileCalled(name) + " cannot be looked at");
    }
    if (kind != std::filesystem::file_type::not_found && kind != std::filesystem::file_type::regular) {
        throw ControlRefusal(status::conflict, "\"" + name +
                                                   "\" is no file of its own, and nothing outside the data "
                                                   "folder is used; take it away.");
    }
    return file;
}

void Snapshots::keep(const std::string& name, Place place, const std::string& printer, Memory memory)
{
    requireName(name);
    if (place == Place::memory) {
        if (!inMemory.contains(name) && inMemory.size() == mostInMemory) {
            throw ControlRefusal(status::conflict,
                                 "There are " + std::to_string(mostInMemory) +
                                     " snapshots in memory, more are not kept; delete one first.");
        }
        inMemory.insert_or_assign(name, Kept{printer, std::move(memory)});
        return;
    }
    const std::filesystem::path file = fileOf(name);
    if (!std::filesystem::exists(file) && filesIn(folder()).size() >= mostFiles) {
        throw ControlRefusal(status::conflict,
                             "There are " + std::to_string(mostFiles) +
                                 " files of snapshots, more are not kept; delete one first.");
    }
    std::filesystem::path unfinished = file;
    unfinished += "-unfinished";
    // Removes a link itself, and never what it leads to.
    std::error_code failure;
    std::filesystem::remove(unfinished, failure);
    try {
        Memory(unfinished).copyFrom(memory);
        std::filesystem::rename(unfinished, file);
    } catch (const std::runtime_error& reason) {
        std::filesystem::remove(unfinished, failure);
        throw ControlRefusal(status::conflict, reason.what());
    }
}

void Snapshots::read(const std::string& name, Place place, const std::function<void(const Memory&)>& reader)
{
    requireName(name);
    try {
        if (place == Place::memory) {
            const auto found = inMemory.find(name);
            if (found == inMemory.end()) {
                throw noSuchSnapshot(name);
            }
            reader(found->second.memory);
            return;
        }
        const std::filesystem::path file = fileOf(name);
        if (!std::filesystem::exists(file)) {
            throw noSuchSnapshot(name);
        }
        reader(Memory(file));
    } catch (const ControlRefusal&) {
        throw;
    } catch (const std::runtime_error& reason) {
        throw ControlRefusal(status::conflict, reason.what());
    }
}

void Snapshots::forget(const std::string& name, Place place)
{
    requireName(name);
    std::error_code failure;
    const bool wasThere =
        place == Place::memory ? inMemory.erase(name) > 0 : std::filesystem::remove(fileOf(name), failure);
    requireDone(failure, fileCalled(name) + " cannot be removed");
    if (!wasThere) {
        throw noSuchSnapshot(name);
    }
}

Json Snapshots::list() const
{
    Json all = Json::array();
    for (const auto& [name, kept] : inMemory) {
        all.push_back({{"name", name}, {"in", "memory"}, {"printer", kept.printer}});
    }
    if (!data.empty()) {
        std::vector<std::string> names;
        for (const std::filesystem::path& file : filesIn(folder())) {
            if (file.extension() == ending) {
                names.push_back(file.stem().string());
            }
        }
        std::sort(names.begin(), names.end());
        for (const std::string& name : names) {
            all.push_back({{"name", name}, {"in", "file"}});
        }
    }
    return all;
}

} // namespace virtual_printer
