// The fiscal memory: the sums of the day that runs, and one entry for every daily closure, which nothing
// takes away again. Money is in whole cents.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace virtual_printer {

struct Sums
{
    std::map<char, std::int64_t> byVat;
    int receipts = 0;
    int cancelled = 0; // receipts that were begun and not sold
    std::int64_t drawer = 0;

    [[nodiscard]] std::int64_t turnover() const;
    void add(const Sums& other);
};

struct Closure
{
    int number = 0;
    std::string moment;
    Sums sums;
};

class FiscalMemory
{
public:
    void addReceipt(const std::map<char, std::int64_t>& totalsByVat);
    void addCancelled() { ++today.cancelled; }
    void addToDrawer(std::int64_t cents) { today.drawer += cents; }
    // Makes an entry of the day; the next one begins with zeros.
    void closeDay(const std::string& moment);

    // The number that ends the day that runs.
    [[nodiscard]] int nextClosure() const { return static_cast<int>(closed.size()) + 1; }
    [[nodiscard]] const std::vector<Closure>& closures() const { return closed; }
    [[nodiscard]] const Sums& day() const { return today; }
    // All days, the one that runs included.
    [[nodiscard]] Sums ever() const;

private:
    Sums today;
    std::vector<Closure> closed;
};

} // namespace virtual_printer
