#include "tools/call_log_forms.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace telvofm::tools {
namespace {

constexpr std::array forms = std::to_array<LineForm>({
#include "tools/call_log_lines.inc"
});

constexpr int digitsInLog = 6;

// A number as the log writes it; a text that only looks like one ("12.50") is none.
std::optional<double> loggedNumber(std::string_view text)
{
    double value = 0;
    const auto parsed = std::from_chars(text.data(), text.data() + text.size(), value);
    std::array<char, 32> again{};
    const auto written = std::to_chars(again.data(), again.data() + again.size(), value,
                                       std::chars_format::general, digitsInLog);
    const bool isSame =
        parsed.ec == std::errc() &&
        text == std::string_view(again.data(), static_cast<std::size_t>(written.ptr - again.data()));
    return isSame ? std::optional(value) : std::nullopt;
}

bool isWhole(std::string_view text)
{
    const std::string_view digits = text.starts_with('-') ? text.substr(1) : text;
    return !digits.empty() && digits.find_first_not_of("0123456789") == std::string_view::npos;
}

bool mayBeRounded(std::string_view text)
{
    const auto digits = std::count_if(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
    return text.find('e') != std::string_view::npos || (!isWhole(text) && digits >= digitsInLog) ||
           digits > digitsInLog;
}

// "unitPrice*10000".
struct Placeholder
{
    std::string_view name;
    double scale = 0; // 0: given as it was logged
};

Placeholder placeholderIn(std::string_view text)
{
    const std::size_t star = text.find('*');
    if (star == std::string_view::npos) {
        return {text};
    }
    int scale = 0;
    std::from_chars(text.data() + star + 1, text.data() + text.size(), scale);
    return {text.substr(0, star), static_cast<double>(scale)};
}

class Matcher
{
public:
    explicit Matcher(const Export* of) : function(of) {}

    // Texts may hold what looks like the next label: then the next place of it is tried.
    bool matches(std::string_view form, std::string_view text)
    {
        const std::size_t open = form.find('{');
        const std::string_view literal = form.substr(0, open);
        if (!text.starts_with(literal)) {
            return false;
        }
        text.remove_prefix(literal.size());
        if (open == std::string_view::npos) {
            return text.empty();
        }
        const std::size_t close = form.find('}');
        const Placeholder placeholder = placeholderIn(form.substr(open + 1, close - open - 1));
        const std::string_view rest = form.substr(close + 1);
        if (rest.empty()) {
            return take(placeholder, text);
        }
        const std::string_view next = rest.substr(0, rest.find('{'));
        for (std::size_t end = text.find(next); end != std::string_view::npos;
             end = text.find(next, end + 1)) {
            if (take(placeholder, text.substr(0, end)) && matches(rest, text.substr(end))) {
                return true;
            }
        }
        return false;
    }

    LineValues values;

private:
    bool take(const Placeholder& placeholder, std::string_view text)
    {
        if (placeholder.name == "#") {
            return isWhole(text);
        }
        if (placeholder.name == "=") {
            values.result = text;
            return true;
        }
        const auto given = givenValue(placeholder, text);
        if (given) {
            values.parameters.insert_or_assign(std::string(placeholder.name), *given);
        }
        return given.has_value();
    }

    std::optional<std::string> givenValue(const Placeholder& placeholder, std::string_view text)
    {
        switch (kindOf(placeholder.name)) {
        case Kind::whole:
            return placeholder.scale == 0 ? wholeValue(text) : scaledValue(text, placeholder.scale);
        case Kind::number:
            return loggedNumber(text) ? std::optional(noted(text)) : std::nullopt;
        case Kind::character:
            return text.size() == 1 ? std::optional(std::string(text)) : std::nullopt;
        case Kind::truth:
            return text == "0" || text == "1" ? std::optional(std::string(text)) : std::nullopt;
        default:
            return std::string(text);
        }
    }

    static std::optional<std::string> wholeValue(std::string_view text)
    {
        return isWhole(text) ? std::optional(std::string(text)) : std::nullopt;
    }

    std::optional<std::string> scaledValue(std::string_view text, double scale)
    {
        const auto value = loggedNumber(text);
        if (!value) {
            return std::nullopt;
        }
        noted(text);
        return std::to_string(std::llround(*value * scale));
    }

    std::string noted(std::string_view text)
    {
        values.isRounded = values.isRounded || mayBeRounded(text);
        return std::string(text);
    }

    [[nodiscard]] Kind kindOf(std::string_view name) const
    {
        const auto& parameters = function->parameters;
        return std::find_if(parameters.begin(), parameters.end(),
                            [&](const Parameter& p) { return p.name == name; })
            ->kind;
    }

    const Export* function;
};

} // namespace

std::span<const LineForm> lineForms()
{
    return forms;
}

std::string_view headOf(const LineForm& form)
{
    return form.form.substr(0, form.form.find('{'));
}

bool endsWithResult(const LineForm& form)
{
    return form.form.ends_with("{=}");
}

std::optional<LineValues> takeApart(const LineForm& form, const Export* function, std::string_view line)
{
    Matcher matcher(function);
    return matcher.matches(form.form, line) ? std::optional(std::move(matcher.values)) : std::nullopt;
}

} // namespace telvofm::tools
