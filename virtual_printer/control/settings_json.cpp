#include "virtual_printer/control/settings_json.h"

#include "virtual_printer/control/body.h"
#include "virtual_printer/fiscal/cash.h"
#include "virtual_printer/fiscal/ranges.h"

#include <charconv>

namespace virtual_printer {
namespace {

constexpr int rateDecimals = 4;
constexpr std::int64_t tenThousand = 10'000;

std::string rateText(std::int64_t tenThousandths)
{
    const std::string decimals = std::to_string(tenThousand + tenThousandths % tenThousand).substr(1);
    return std::to_string(tenThousandths / tenThousand) + "." + decimals;
}

Json vatToJson(const Settings& settings)
{
    Json vat = Json::object();
    for (std::size_t index = 0; index < settings.vat.size(); ++index) {
        if (const auto& rate = settings.vat.at(index)) {
            vat[std::string(1, static_cast<char>('A' + index))] = {
                {"percent", rate->percent},
                {"reverseConstant", rate->reverseConstant ? Json(*rate->reverseConstant) : Json()}};
        }
    }
    return vat;
}

Json paymentTypesToJson(const Settings& settings)
{
    Json types = Json::object();
    for (const auto& [number, type] : settings.payments) {
        types[std::to_string(number)] = {
            {"name", type.name}, {"minimum", formatCents(type.minimum)}, {"mayOverPay", type.mayOverPay}};
    }
    return types;
}

template <typename Value>
Json byNumber(const std::map<int, Value>& values)
{
    Json object = Json::object();
    for (const auto& [number, value] : values) {
        object[std::to_string(number)] = value;
    }
    return object;
}

// Of an entry of a list by numbers, as "payments.3".
int numberOf(const std::string& member, std::string_view list, int smallest, int largest)
{
    int number = -1;
    const char* end = member.data() + member.size();
    const auto parsed = std::from_chars(member.data(), end, number);
    if (parsed.ec != std::errc() || parsed.ptr != end || number < smallest || number > largest) {
        throw ControlRefusal(status::badRequest, "\"" + std::string(list) + "." + member +
                                                     "\" is no number from " + std::to_string(smallest) +
                                                     " to " + std::to_string(largest) +
                                                     "; name the entry by one.");
    }
    return number;
}

void takeVat(Settings& settings, const Json& vat)
{
    constexpr int largestPercent = 99;
    settings.vat = {};
    static_cast<void>(Members(vat, "vat")); // refuses what is no object
    for (const auto& [letter, entry] : vat.items()) {
        if (letter.size() != 1 || letter[0] < 'A' || letter[0] >= static_cast<char>('A' + vatLetters)) {
            throw ControlRefusal(status::badRequest,
                                 "\"vat." + letter + "\" is no VAT letter; there are A to H.");
        }
        const Members rate(entry, "vat." + letter);
        rate.allow({"percent", "reverseConstant"});
        VatRate taken{static_cast<int>(rate.whole("percent", 0, 0, largestPercent)), std::nullopt};
        if (const Json* constant = rate.find("reverseConstant");
            constant != nullptr && !constant->is_null()) {
            if (!constant->is_number()) {
                throw ControlRefusal(status::badRequest,
                                     "\"vat." + letter + ".reverseConstant\" is no number; give one.");
            }
            taken.reverseConstant = constant->get<double>();
        }
        settings.vat.at(static_cast<std::size_t>(letter[0] - 'A')) = taken;
    }
}

void takePayments(Settings& settings, const Json& payments)
{
    constexpr int mostTypes = 20;
    constexpr std::size_t longestName = 20;
    settings.payments.clear();
    static_cast<void>(Members(payments, "payments")); // refuses what is no object
    for (const auto& [number, entry] : payments.items()) {
        const Members type(entry, "payments." + number);
        type.allow({"name", "minimum", "mayOverPay"});
        settings.payments[numberOf(number, "payments", 1, mostTypes)] = {
            type.text("name", "", 1, longestName), type.decimal("minimum", 0, 2),
            type.flag("mayOverPay", false)};
    }
    if (!settings.payments.contains(cash)) {
        throw ControlRefusal(status::badRequest,
                             "\"payments.1\" is cash and cannot be taken away; leave it there.");
    }
}

std::map<int, std::string> textsByNumber(const Json& texts, std::string_view list)
{
    constexpr int largestRow = 99;
    std::map<int, std::string> taken;
    const Members rows(texts, std::string(list));
    for (const auto& [number, text] : texts.items()) {
        taken[numberOf(number, list, 0, largestRow)] = rows.text(number, "", 0, longestSettingText);
    }
    return taken;
}

std::map<int, int> numbersByNumber(const Json& numbers, std::string_view list)
{
    constexpr int largestNumber = 99;
    constexpr int largestValue = 9999;
    std::map<int, int> taken;
    const Members values(numbers, std::string(list));
    for (const auto& [number, value] : numbers.items()) {
        taken[numberOf(number, list, 0, largestNumber)] =
            static_cast<int>(values.whole(number, 0, 0, largestValue));
    }
    return taken;
}

std::vector<std::string> listOfTexts(const Json& texts, const std::string& list)
{
    constexpr std::size_t most = 100;
    if (!texts.is_array() || texts.size() > most) {
        throw ControlRefusal(status::badRequest,
                             "\"" + list + "\" is no list of at most 100 texts; give one.");
    }
    std::vector<std::string> taken;
    for (const Json& text : texts) {
        taken.push_back(Members({{list, text}}, "").text(list, "", 0, longestSettingText));
    }
    return taken;
}

} // namespace

Json toJson(const Settings& settings)
{
    return {{"vat", vatToJson(settings)},
            {"payments", paymentTypesToJson(settings)},
            {"euroExchangeRate", rateText(settings.euroExchangeRate)},
            {"header", byNumber(settings.header)},
            {"additionalHeader", settings.additionalHeader},
            {"additionalFooter", settings.additionalFooter},
            {"superFooter", settings.superFooter},
            {"prelines", settings.prelines},
            {"postlines", settings.postlines},
            {"parameters", byNumber(settings.parameters)},
            {"printerParameters", byNumber(settings.printerParameters)},
            {"columns", settings.columns},
            {"printsLogo", settings.printsLogo}};
}

Settings changed(const Settings& before, const Json& changes)
{
    constexpr std::size_t shortestPassword = 4;
    constexpr std::size_t longestPassword = 16;
    constexpr int fewestColumns = 32;
    constexpr int mostColumns = 48;
    Members(changes, "")
        .allow({"vat", "payments", "euroExchangeRate", "header", "additionalHeader", "additionalFooter",
                "superFooter", "prelines", "postlines", "parameters", "printerParameters", "columns",
                "printsLogo", "password", "servicePassword"});
    Json all = toJson(before);
    all.merge_patch(changes);
    const Members members(all, "");
    Settings next = before;
    const Json none = Json::object();
    const auto part = [&](std::string_view name) -> const Json& {
        const Json* found = members.find(name);
        return found == nullptr ? none : *found;
    };
    takeVat(next, part("vat"));
    takePayments(next, part("payments"));
    next.euroExchangeRate = members.decimal("euroExchangeRate", 0, rateDecimals);
    next.header = textsByNumber(part("header"), "header");
    next.additionalHeader = members.text("additionalHeader", "", 0, longestSettingText);
    next.additionalFooter = members.text("additionalFooter", "", 0, longestSettingText);
    next.superFooter = members.text("superFooter", "", 0, longestSettingText);
    next.prelines = listOfTexts(all.value("prelines", Json::array()), "prelines");
    next.postlines = listOfTexts(all.value("postlines", Json::array()), "postlines");
    next.parameters = numbersByNumber(part("parameters"), "parameters");
    next.printerParameters = numbersByNumber(part("printerParameters"), "printerParameters");
    next.columns = static_cast<int>(members.whole("columns", before.columns, fewestColumns, mostColumns));
    next.printsLogo = members.flag("printsLogo", false);
    next.password = members.text("password", before.password, shortestPassword, longestPassword);
    next.servicePassword =
        members.text("servicePassword", before.servicePassword, shortestPassword, longestPassword);
    return next;
}

} // namespace virtual_printer
