// A disk in memory for every database that is opened while it lives: it notes each operation, can refuse any
// of them, and can say what would be left when power is lost behind any of them.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace virtual_printer::test {

class SimulatedDisk
{
public:
    struct Operation
    {
        enum class Kind
        {
            write,
            truncate, // to `offset`
            synchronize,
            remove
        };

        Kind kind = Kind::write;
        std::string file;
        std::size_t offset = 0;
        std::string data;
    };
    using Files = std::map<std::string, std::string>; // contents by path

    SimulatedDisk();
    ~SimulatedDisk();
    SimulatedDisk(const SimulatedDisk&) = delete;
    SimulatedDisk& operator=(const SimulatedDisk&) = delete;

    // Carries the operation out and notes it, or gives the code of its failure.
    int carryOut(const Operation& operation);

    Files files; // as a process sees them
    std::vector<Operation> operations;
    // An SQLite result code for an operation that is to fail, 0 otherwise.
    std::function<int(const Operation&)> failureOf;
    bool isReadOnly = false;

private:
    struct Vfs;
    std::unique_ptr<Vfs> vfs;
};

// The files after the first `count` operations, as the end of the process leaves them.
SimulatedDisk::Files filesAfter(const std::vector<SimulatedDisk::Operation>& operations, std::size_t count);

// The files after a loss of power: what was written since a file was synchronised last is there or not,
// sector by sector.
class PowerLoss
{
public:
    void pass(const SimulatedDisk::Operation& operation);

    [[nodiscard]] const SimulatedDisk::Files& nothingUnsynchronized() const { return durable; }
    [[nodiscard]] SimulatedDisk::Files someUnsynchronized(std::mt19937& random) const;

private:
    SimulatedDisk::Files durable;
    std::vector<SimulatedDisk::Operation> pending;
};

} // namespace virtual_printer::test
