#include "virtual_printer/answers/archives.h"

#include <algorithm>
#include <charconv>

namespace virtual_printer {
namespace {

constexpr std::size_t nameSize = 4;

std::optional<int> yearNamed(std::string_view name)
{
    int year = 0;
    const auto read = std::from_chars(name.data(), name.data() + name.size(), year);
    const bool isYear = name.size() == nameSize && read.ptr == name.data() + name.size() && year > 0;
    return isYear ? std::optional(year) : std::nullopt;
}

} // namespace

int yearOf(Moment moment)
{
    return static_cast<int>(
        std::chrono::year_month_day(std::chrono::floor<std::chrono::days>(moment)).year());
}

Period periodOf(int year)
{
    const auto beginning = [](int ofYear) {
        return Moment(std::chrono::local_days(std::chrono::year(ofYear) / std::chrono::January / 1));
    };
    return {beginning(year), beginning(year + 1) - std::chrono::seconds(1)};
}

Period shared(const Period& one, const Period& other)
{
    return {std::max(one.first, other.first), std::min(one.second, other.second)};
}

std::vector<std::string> archiveNames(const Memory& memory, Moment now)
{
    std::vector<std::string> names;
    const Period closedYears = {Moment::min(), periodOf(yearOf(now)).first - std::chrono::seconds(1)};
    for (const Closure& closure : memory.closures(std::nullopt, closedYears)) {
        std::string name = std::to_string(yearOf(closure.moment));
        if (names.empty() || names.back() != name) {
            names.push_back(std::move(name));
        }
    }
    return names;
}

std::optional<Period> findArchive(std::string_view name, const Memory& memory, Moment now)
{
    const auto year = yearNamed(name);
    if (!year || *year >= yearOf(now) || memory.closures(std::nullopt, periodOf(*year)).empty()) {
        return std::nullopt;
    }
    return periodOf(*year);
}

Refusal validateArchive(std::string_view name, const Memory& memory, Moment now)
{
    const auto archive = findArchive(name, memory, now);
    if (!archive) {
        return Refusal::noSuchArchive;
    }
    const std::vector<Closure> closures = memory.closures(std::nullopt, *archive);
    const bool isWhole = std::all_of(closures.begin(), closures.end(), [&](const Closure& closure) {
        return memory.isJournalWhole(closure.number);
    });
    return isWhole ? Refusal::none : Refusal::journalDamaged;
}

} // namespace virtual_printer
