#include "virtual_printer/trace/exchanged_json.h"

#include <algorithm>
#include <array>
#include <nlohmann/json.hpp>

namespace virtual_printer {
namespace {

using Json = nlohmann::ordered_json;

constexpr std::string_view hiddenPassword = "****";

bool isPlain(std::string_view text)
{
    return std::all_of(text.begin(), text.end(),
                       [](char each) { return each >= ' ' && each <= '~' && each != '"' && each != '\\'; });
}

// What is no UTF-8 must not keep the rest from being read.
void writeText(std::string& text, std::string_view value)
{
    if (isPlain(value)) {
        text.append("\"").append(value).append("\"");
    } else {
        text += Json(value).dump(-1, ' ', false, Json::error_handler_t::replace);
    }
}

// "1c 01 e0 04 f9".
void writeBytes(std::string& text, std::string_view bytes)
{
    constexpr std::string_view digits = "0123456789abcdef";
    text += '"';
    for (std::size_t index = 0; index < bytes.size(); ++index) {
        const auto byte = static_cast<unsigned char>(bytes[index]);
        if (index > 0) {
            text += ' ';
        }
        text += digits[byte / digits.size()];
        text += digits[byte % digits.size()];
    }
    text += '"';
}

void writeFlag(std::string& text, bool flag)
{
    text += flag ? "true" : "false";
}

std::string_view shownField(const Exchanged& exchanged, std::size_t index)
{
    const bool isSecret =
        exchanged.rule != nullptr && exchanged.rule->fields[index].kind == FieldKind::secret;
    return isSecret ? hiddenPassword : std::string_view(exchanged.fields[index]);
}

void writeFields(std::string& text, const Exchanged& exchanged)
{
    text += '[';
    for (std::size_t index = 0; index < exchanged.fields.size(); ++index) {
        text += index == 0 ? R"({"name":)" : R"(,{"name":)";
        writeText(text, exchanged.rule == nullptr ? "" : exchanged.rule->fields[index].name);
        text += R"(,"value":)";
        writeText(text, shownField(exchanged, index));
        text += '}';
    }
    text += ']';
}

void writeRefusal(std::string& text, const Exchanged& exchanged)
{
    if (exchanged.refusal == Refusal::none) {
        text += "null";
        return;
    }
    text += R"({"code":)" + std::to_string(exchanged.code) + R"(,"name":)";
    writeText(text, textOf(exchanged.refusal).name);
    text += R"(,"sentence":)";
    writeText(text, sentenceOf(exchanged.refusal, exchanged.detail));
    text += '}';
}

void writeFaults(std::string& text, const Exchanged& exchanged)
{
    text += '[';
    for (const std::string& fault : exchanged.faults) {
        text += &fault == &exchanged.faults.front() ? "" : ",";
        writeText(text, fault);
    }
    text += ']';
}

void writeDurations(std::string& text, const Exchanged& exchanged)
{
    text += R"({"decide":)" + std::to_string(exchanged.decided.count());
    text += R"(,"commit":)" + std::to_string(exchanged.committed.count());
    text += R"(,"answer":)" + std::to_string(exchanged.answered.count()) + '}';
}

void writeNumberOrNull(std::string& text, std::uint64_t number)
{
    text += number == 0 ? "null" : std::to_string(number);
}

void writeRepeatedAfter(std::string& text, const Exchanged& exchanged)
{
    text += exchanged.repeatOf == 0 ? "null" : std::to_string(exchanged.repeatedAfter.count());
}

using Of = const Exchanged&;

constexpr std::array members = {
    ExchangedMember{"number", [](std::string& text, Of e) { text += std::to_string(e.number); }},
    ExchangedMember{"till", [](std::string& text, Of e) { text += std::to_string(e.till); }},
    ExchangedMember{"moment", [](std::string& text, Of e) { writeText(text, toText(e.moment)); }},
    ExchangedMember{"name", [](std::string& text, Of e) { writeText(text, e.name()); }},
    ExchangedMember{"command",
                    [](std::string& text, Of e) {
                        writeBytes(text, {reinterpret_cast<const char*>(&e.command), 1});
                    }},
    ExchangedMember{"address", [](std::string& text, Of e) { text += std::to_string(e.address); }},
    ExchangedMember{"fields", writeFields, true},
    ExchangedMember{"fromTill", [](std::string& text, Of e) { writeBytes(text, e.fromTill); }, true},
    ExchangedMember{"toTill", [](std::string& text, Of e) { writeBytes(text, e.toTill); }, true},
    ExchangedMember{"cut", [](std::string& text, Of e) { writeFlag(text, e.isCut); }},
    ExchangedMember{"repeatOf", [](std::string& text, Of e) { writeNumberOrNull(text, e.repeatOf); }},
    ExchangedMember{"repeatedAfter", writeRepeatedAfter},
    ExchangedMember{"attempt", [](std::string& text, Of e) { text += std::to_string(e.attempt); }},
    ExchangedMember{"refusal", writeRefusal},
    ExchangedMember{"executed", [](std::string& text, Of e) { writeFlag(text, e.isExecuted); }},
    ExchangedMember{"committed", [](std::string& text, Of e) { writeFlag(text, e.isCommitted); }},
    ExchangedMember{"acknowledged", [](std::string& text, Of e) { writeFlag(text, e.isAcknowledged); }},
    ExchangedMember{"taken", [](std::string& text, Of e) { writeFlag(text, e.isTaken); }},
    ExchangedMember{"answer", [](std::string& text, Of e) { writeText(text, e.answer); }, true},
    ExchangedMember{"faults", writeFaults},
    ExchangedMember{"microseconds", writeDurations},
};

} // namespace

std::span<const ExchangedMember> exchangedMembers()
{
    return members;
}

std::string toLine(const Exchanged& exchanged)
{
    std::string text = "{";
    for (const ExchangedMember& member : members) {
        text.append(text.size() == 1 ? "\"" : ",\"").append(member.name).append("\":");
        member.write(text, exchanged);
    }
    return text + "}";
}

Json toJson(const Exchanged& exchanged)
{
    return Json::parse(toLine(exchanged));
}

// Of several fields of one name the last one counts, as in an object.
bool showsField(const Exchanged& exchanged, std::string_view name, std::string_view value)
{
    for (std::size_t index = exchanged.rule == nullptr ? 0 : exchanged.fields.size(); index > 0; --index) {
        if (exchanged.rule->fields[index - 1].name == name) {
            const std::string_view shown = shownField(exchanged, index - 1);
            std::string text;
            if (shown != value && !isPlain(shown)) {
                writeText(text, shown);
                return Json::parse(text) == value;
            }
            return shown == value;
        }
    }
    return false;
}

} // namespace virtual_printer
