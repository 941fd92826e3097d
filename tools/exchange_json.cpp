#include "tools/exchange_json.h"

#include "tools/hexadecimal.h"
#include "tools/unit_words.h"
#include "tools/windows_1250.h"

namespace telvofm::tools {
namespace {

Json jsonOf(const Unit& unit, const CodePage& codePage)
{
    return {{"line", unit.line},
            {"from", unit.isFromTill ? "till" : "printer"},
            {"what", wordsOf(unit, codePage)},
            {"bytes", hexadecimal(unit.bytes)}};
}

std::string nameOf(Checksum checksum)
{
    switch (checksum) {
    case Checksum::right:
        return "right";
    case Checksum::wrong:
        return "wrong";
    default:
        return "missing";
    }
}

Json jsonOfRequest(const Unit& request, const CodePage& codePage)
{
    Json json = {{"line", request.line}, {"bytes", hexadecimal(request.bytes)}, {"whole", request.isWhole}};
    if (request.isWhole) {
        json["command"] = commandOf(request);
        json["device"] = static_cast<unsigned char>(request.bytes[1]);
        json["fields"] = Json::array();
        for (const std::string& field : request.fields) {
            json["fields"].push_back(utf8Of(field, codePage));
        }
        json["checksum"] = nameOf(request.checksum);
    }
    return json;
}

void addOutcome(Json& json, const Exchange& exchange, const CodePage& codePage)
{
    switch (exchange.outcome) {
    case Outcome::none:
        json["outcome"] = "none";
        break;
    case Outcome::accepted:
        json["outcome"] = "accepted";
        break;
    case Outcome::refused:
        json["outcome"] = "refused";
        json["refusal"] = exchange.refusal;
        break;
    case Outcome::reply:
        json["outcome"] = "reply";
        json["reply"] = {{"text", utf8Of(exchange.reply, codePage)}, {"bytes", hexadecimal(exchange.reply)}};
        break;
    }
}

} // namespace

Json jsonOf(const std::vector<Exchange>& exchanges, const CodePage& codePage)
{
    Json all = Json::array();
    for (const Exchange& exchange : exchanges) {
        Json json = {{"request", jsonOfRequest(exchange.request, codePage)}};
        addOutcome(json, exchange, codePage);
        json["units"] = Json::array();
        for (const Unit& unit : exchange.units) {
            json["units"].push_back(jsonOf(unit, codePage));
        }
        all.push_back(json);
    }
    return all;
}

Json jsonOf(const std::vector<Damage>& damages)
{
    Json all = Json::array();
    for (const Damage& damage : damages) {
        all.push_back({{"line", damage.line}, {"what", damage.what}});
    }
    return all;
}

} // namespace telvofm::tools
