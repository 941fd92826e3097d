// The virtual printer as a process, its memories in a folder: started when the object is made, which lasts
// until it listens, and ended with it.
#pragma once

#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <spawn.h>
#include <sstream>
#include <stdexcept>
#include <string>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

namespace bench {

class PrinterProcess
{
public:
    PrinterProcess(const std::string& program, const std::filesystem::path& folder,
                   const std::vector<std::string>& names)
    {
        const std::filesystem::path ready = folder / "ready.json";
        std::filesystem::remove(ready);
        std::vector<std::string> arguments = {program, "--data",    folder,       "--ready",
                                              ready,   "--control", "127.0.0.1:0"};
        for (const std::string& name : names) {
            arguments.emplace_back("--printer");
            arguments.push_back(name + "=127.0.0.1:0");
        }
        std::vector<char*> pointers;
        pointers.reserve(arguments.size() + 1);
        for (std::string& argument : arguments) {
            pointers.push_back(argument.data());
        }
        pointers.push_back(nullptr);
        posix_spawn_file_actions_t actions;
        ::posix_spawn_file_actions_init(&actions);
        ::posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
        if (::posix_spawn(&process, program.c_str(), &actions, nullptr, pointers.data(), environ) != 0) {
            throw std::runtime_error("cannot start " + program);
        }
        while (!std::filesystem::exists(ready)) {
            if (::waitpid(process, nullptr, WNOHANG) != 0) {
                throw std::runtime_error("the printers did not start");
            }
            std::this_thread::yield();
        }
        const auto content = nlohmann::json::parse(std::ifstream(ready));
        for (const auto& printer : content["printers"]) {
            addresses.push_back(printer["address"]);
        }
        control = content["control"];
    }
    PrinterProcess(const PrinterProcess&) = delete;
    PrinterProcess& operator=(const PrinterProcess&) = delete;
    ~PrinterProcess()
    {
        ::kill(process, SIGTERM);
        ::waitpid(process, nullptr, 0);
    }

    // Seconds of processor time, user's and system's.
    [[nodiscard]] double processorTime() const
    {
        std::ifstream file("/proc/" + std::to_string(process) + "/stat");
        const std::string text{std::istreambuf_iterator<char>(file), {}};
        std::istringstream fields(text.substr(text.rfind(')') + 2));
        std::string skipped;
        constexpr int fieldsBefore = 11;
        for (int field = 0; field < fieldsBefore; ++field) {
            fields >> skipped;
        }
        double user = 0;
        double system = 0;
        fields >> user >> system;
        return (user + system) / static_cast<double>(::sysconf(_SC_CLK_TCK));
    }

    [[nodiscard]] double residentMegabytes() const
    {
        std::ifstream file("/proc/" + std::to_string(process) + "/statm");
        double all = 0;
        double resident = 0;
        file >> all >> resident;
        constexpr double megabyte = 1024 * 1024;
        return resident * static_cast<double>(::sysconf(_SC_PAGESIZE)) / megabyte;
    }

    // The most that it has had so far.
    [[nodiscard]] double mostResidentMegabytes() const
    {
        std::ifstream status("/proc/" + std::to_string(process) + "/status");
        constexpr double kilobytesOfMegabyte = 1024;
        for (std::string word; status >> word;) {
            if (word == "VmHWM:") {
                double kilobytes = 0;
                status >> kilobytes;
                return kilobytes / kilobytesOfMegabyte;
            }
        }
        throw std::runtime_error("the system does not tell how much memory the printers have");
    }

    std::vector<std::string> addresses;
    std::string control;

private:
    pid_t process = 0;
};

} // namespace bench
