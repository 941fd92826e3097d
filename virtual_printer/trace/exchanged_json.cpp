#include "virtual_printer/trace/exchanged_json.h"

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

} // namespace

Json toJson(const Exchanged& exchanged)
{
    return {{"number", exchanged.number},
            {"till", exchanged.till},
            {"moment", toText(exchanged.moment)},
            {"name", exchanged.name()},
            {"command", hexadecimal({reinterpret_cast<const char*>(&exchanged.command), 1})},
            {"address", exchanged.address},
            {"fields", fieldsOf(exchanged)},
            {"fromTill", hexadecimal(exchanged.fromTill)},
            {"toTill", hexadecimal(exchanged.toTill)},
            {"cut", exchanged.isCut},
            {"repeatOf", numberOrNull(exchanged.repeatOf)},
            {"attempt", exchanged.attempt},
            {"refusal", refusalOf(exchanged)},
            {"executed", exchanged.isExecuted},
            {"committed", exchanged.isCommitted},
            {"acknowledged", exchanged.isAcknowledged},
            {"taken", exchanged.isTaken},
            {"answer", readable(exchanged.answer)},
            {"faults", exchanged.faults},
            {"microseconds",
             {{"decide", exchanged.decided.count()},
              {"commit", exchanged.committed.count()},
              {"answer", exchanged.answered.count()}}}};
}

} // namespace virtual_printer
