#include "virtual_printer/answers/settings_lines.h"

#include <utility>

namespace virtual_printer {
namespace {

class NamedValues
{
public:
    void add(const std::string& name, const std::string& value)
    {
        if (!value.empty()) {
            lines.push_back(name + "=" + value);
        }
    }
    void add(const std::string& name, int value) { add(name, std::to_string(value)); }
    // Several of a name, each under its number.
    template <typename Value>
    void add(const std::string& name, const std::map<int, Value>& values)
    {
        for (const auto& [number, value] : values) {
            add(name + " " + std::to_string(number), value);
        }
    }
    void add(const std::string& name, const std::vector<std::string>& values)
    {
        for (std::size_t index = 0; index < values.size(); ++index) {
            add(name + " " + std::to_string(index + 1), values[index]);
        }
    }
    void add(const std::string& name, const ByPayment& sums)
    {
        for (const auto& [type, sum] : sums) {
            add(name + " " + std::to_string(type), formatCents(sum));
        }
    }

    std::vector<std::string> take() { return std::move(lines); }

private:
    std::vector<std::string> lines;
};

void addVatRates(NamedValues& values, const Settings& settings)
{
    char letter = 'A';
    for (const auto& rate : settings.vat) {
        values.add(std::string("VAT ") + letter, rate ? std::to_string(rate->percent) + " %" : "");
        ++letter;
    }
}

void addPaymentTypes(NamedValues& values, const Settings& settings)
{
    for (const auto& [number, type] : settings.payments) {
        values.add("Payment " + std::to_string(number), type.name + ", at least " +
                                                            formatCents(type.minimum) +
                                                            (type.mayOverPay ? ", gives change" : ""));
    }
}

// Four decimals of which the last ones may be zeros.
std::string rateText(std::int64_t tenThousandths)
{
    constexpr std::int64_t whole = 10'000;
    const std::string fraction = std::to_string(whole + tenThousandths % whole).substr(1);
    return tenThousandths == 0 ? "" : std::to_string(tenThousandths / whole) + "." + fraction;
}

void addSums(NamedValues& values, const std::string& name, const Sums& sums)
{
    for (const auto& [letter, sum] : sums.byVat) {
        values.add(name + " VAT " + letter, formatCents(sum));
    }
    values.add(name + " payment", sums.byPayment);
    values.add(name + " receipts", sums.receipts);
    values.add(name + " cancelled receipts", sums.cancelled);
    values.add(name + " discounts", formatCents(sums.discounts));
    values.add(name + " returns", formatCents(sums.returns));
    values.add(name + " drawer movements", sums.drawerMovements);
}

} // namespace

std::vector<std::string> settingsLines(const Settings& settings)
{
    NamedValues values;
    addVatRates(values, settings);
    addPaymentTypes(values, settings);
    values.add("Euro exchange rate", rateText(settings.euroExchangeRate));
    values.add("Header", settings.header);
    values.add("Additional header", settings.additionalHeader);
    values.add("Additional footer", settings.additionalFooter);
    values.add("Super footer", settings.superFooter);
    values.add("Preline", settings.prelines);
    values.add("Postline", settings.postlines);
    values.add("Parameter", settings.parameters);
    values.add("Printer parameter", settings.printerParameters);
    for (const auto& [name, value] : settings.others) {
        values.add(name, value);
    }
    values.add("Columns", settings.columns);
    return values.take();
}

std::vector<std::string> standingLines(const Standing& standing)
{
    NamedValues values;
    values.add("Life", nameOf(standing.life));
    values.add("Registration code", standing.dkp);
    values.add("Selling day", standing.dayIsOpen ? "since " + toText(standing.dayBegan) : "closed");
    values.add("Last document", toText(standing.lastDocument));
    values.add("Sale mode", standing.saleMode);
    addSums(values, "Day", standing.day);
    addSums(values, "Ever", standing.ever);
    values.add("Drawer", standing.drawer);
    values.add("Last receipt", standing.receipts);
    values.add("Last closure", standing.closures);
    values.add("Documents", standing.documents);
    values.add("Clock offset", std::to_string(standing.clockOffset.count()) + " s");
    return values.take();
}

} // namespace virtual_printer
