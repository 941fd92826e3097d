// What the printer remembers: its journal of printed receipts, the sums of the day, and its settings.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace virtual_printer {

struct Receipt
{
    int number = 0;
    std::int64_t total = 0; // cents
    std::string text;       // as printed, in the code page of the link
};

class Storage
{
public:
    void add(Receipt receipt, const std::map<char, std::int64_t>& totalsByVat);
    void remember(const std::string& setting, const std::string& value) { settings[setting] = value; }

    [[nodiscard]] int nextNumber() const { return static_cast<int>(receipts.size()) + 1; }
    [[nodiscard]] const std::vector<Receipt>& all() const { return receipts; }
    [[nodiscard]] const std::map<char, std::int64_t>& turnover() const { return turnoverByVat; }
    [[nodiscard]] std::int64_t total() const;
    // The texts of the receipts from number to number, in order.
    [[nodiscard]] std::string journal(int from, int to) const;
    // The settings, one a line.
    [[nodiscard]] std::string settingsText() const;

private:
    std::vector<Receipt> receipts;
    std::map<char, std::int64_t> turnoverByVat;
    std::map<std::string, std::string> settings;
};

} // namespace virtual_printer
