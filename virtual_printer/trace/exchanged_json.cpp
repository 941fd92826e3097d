#include "virtual_printer/trace/exchanged_json.h"

#include <array>
#include <nlohmann/json.hpp>

namespace virtual_printer {
namespace {

using Json = nlohmann::ordered_json;

constexpr unsigned bitsOfDigit = 4;
constexpr unsigned lowDigit = 0x0F;

// "1c 01 e0 04 f9".
std::string hexadecimal(std::string_view bytes)
{
    constexpr std::string_view digits = "0123456789abcdef";
    std::string text;
    text.reserve(bytes.size() * 3);
    for (const char byte : bytes) {
        const auto value = static_cast<unsigned char>(byte);
        text += text.empty() ? "" : " ";
        text += digits[value >> bitsOfDigit];
        text += digits[value & lowDigit];
    }
    return text;
}

// What is no UTF-8 must not keep the rest from being read.
Json readable(std::string_view text)
{
    return Json::parse(Json(text).dump(-1, ' ', false, Json::error_handler_t::replace));
}

Json fieldsOf(const Exchanged& exchanged)
{
    Json fields = Json::array();
    for (std::size_t index = 0; index < exchanged.fields.size(); ++index) {
        const Field* field = exchanged.rule == nullptr ? nullptr : &exchanged.rule->fields[index];
        const bool isSecret = field != nullptr && field->kind == FieldKind::secret;
        fields.push_back({{"name", field == nullptr ? "" : field->name},
                          {"value", isSecret ? Json("****") : readable(exchanged.fields[index])}});
    }
    return fields;
}

Json refusalOf(const Exchanged& exchanged)
{
    if (exchanged.refusal == Refusal::none) {
        return nullptr;
    }
    const RefusalText& text = textOf(exchanged.refusal);
    return {{"code", exchanged.code},
            {"name", text.name},
            {"sentence", sentenceOf(exchanged.refusal, exchanged.detail)}};
}

Json numberOrNull(std::uint64_t number)
{
    return number == 0 ? Json() : Json(number);
}

Json repeatedAfterOf(const Exchanged& exchanged)
{
    return exchanged.repeatOf == 0 ? Json() : Json(exchanged.repeatedAfter.count());
}

Json commandOf(const Exchanged& exchanged)
{
    return hexadecimal({reinterpret_cast<const char*>(&exchanged.command), 1});
}

Json durationsOf(const Exchanged& exchanged)
{
    return {{"decide", exchanged.decided.count()},
            {"commit", exchanged.committed.count()},
            {"answer", exchanged.answered.count()}};
}

constexpr std::array members = {
    ExchangedMember{"number", [](const Exchanged& e) { return Json(e.number); }},
    ExchangedMember{"till", [](const Exchanged& e) { return Json(e.till); }},
    ExchangedMember{"moment", [](const Exchanged& e) { return Json(toText(e.moment)); }},
    ExchangedMember{"name", [](const Exchanged& e) { return Json(e.name()); }},
    ExchangedMember{"command", commandOf},
    ExchangedMember{"address", [](const Exchanged& e) { return Json(e.address); }},
    ExchangedMember{"fields", fieldsOf, true},
    ExchangedMember{"fromTill", [](const Exchanged& e) { return Json(hexadecimal(e.fromTill)); }, true},
    ExchangedMember{"toTill", [](const Exchanged& e) { return Json(hexadecimal(e.toTill)); }, true},
    ExchangedMember{"cut", [](const Exchanged& e) { return Json(e.isCut); }},
    ExchangedMember{"repeatOf", [](const Exchanged& e) { return numberOrNull(e.repeatOf); }},
    ExchangedMember{"repeatedAfter", repeatedAfterOf},
    ExchangedMember{"attempt", [](const Exchanged& e) { return Json(e.attempt); }},
    ExchangedMember{"refusal", refusalOf},
    ExchangedMember{"executed", [](const Exchanged& e) { return Json(e.isExecuted); }},
    ExchangedMember{"committed", [](const Exchanged& e) { return Json(e.isCommitted); }},
    ExchangedMember{"acknowledged", [](const Exchanged& e) { return Json(e.isAcknowledged); }},
    ExchangedMember{"taken", [](const Exchanged& e) { return Json(e.isTaken); }},
    ExchangedMember{"answer", [](const Exchanged& e) { return readable(e.answer); }, true},
    ExchangedMember{"faults", [](const Exchanged& e) { return Json(e.faults); }},
    ExchangedMember{"microseconds", durationsOf},
};

} // namespace

std::span<const ExchangedMember> exchangedMembers()
{
    return members;
}

Json toJson(const Exchanged& exchanged)
{
    Json all = Json::object();
    for (const ExchangedMember& member : members) {
        all[std::string(member.name)] = member.of(exchanged);
    }
    return all;
}

} // namespace virtual_printer
