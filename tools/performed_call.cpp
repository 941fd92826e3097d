#include "tools/performed_call.h"

#include "tools/codes.h"
#include "tools/exported_function.h"
#include "tools/hexadecimal.h"
#include "tools/windows_1250.h"

#include <algorithm>
#include <array>

namespace telvofm::tools {
namespace {

// What these return are no codes.
constexpr std::array withText = {"getVariableStr", "getResultObjectString"};
constexpr std::array withNumber = {"getVersion", "getResultObjectLength", "rawRead", "rawWrite"};

// These have no code, and tell a failure in what they return.
struct FailureValue
{
    std::string_view function;
    std::string_view returned;
    std::string_view happened;
};
constexpr std::array failureValues = std::to_array<FailureValue>({
    {"getVariableStr", "Error", "The text could not be had; getVariable says why, with a code."},
    {"rawRead", "-1", "No printer is open, or the link failed."},
    {"rawWrite", "-1", "No printer is open, or the link failed; a part of the bytes may have gone out."},
});

// Null when it has not failed, or has a code.
const FailureValue* failureOf(const PerformedCall& call)
{
    const auto* const found =
        std::find_if(failureValues.begin(), failureValues.end(), [&](const FailureValue& value) {
            return value.function == call.name && value.returned == call.returned;
        });
    return found == failureValues.end() ? nullptr : found;
}

// Their texts end with a 0x00 in the buffer; of what others put there, nothing shows the end.
constexpr std::array withTerminator = {"getVariable",          "getParagonIDs",  "getParagonIDs_str",
                                       "getIntervalFPD",       "getIntervalFPC", "getJournalStructD",
                                       "getJournalStructD_str"};

template <typename Names>
bool isOneOf(const Names& names, std::string_view name)
{
    return std::find(names.begin(), names.end(), name) != names.end();
}

bool takes(const Export& function, Kind kind)
{
    const auto& parameters = function.parameters;
    return std::any_of(parameters.begin(), parameters.end(),
                       [&](const Parameter& p) { return p.kind == kind; });
}

bool isWhole(const std::string& text)
{
    return text.find_first_not_of("-0123456789") == std::string::npos && !text.empty();
}

// The bytes up to the last that the call has changed, or as many as it says.
std::string written(const Export& function, const CallContext& context, const std::string& returned)
{
    constexpr char untouched = '\xAA';
    const std::string_view all(context.buffer.data(), context.buffer.size());
    if (takes(function, Kind::count)) {
        return std::string(all.substr(0, context.count));
    }
    if (takes(function, Kind::marker)) {
        return std::string(all.substr(0, returned.starts_with('-') ? 0 : std::stoul(returned)));
    }
    const std::string_view data = all.substr(0, all.find_last_not_of(untouched) + 1);
    return std::string(isOneOf(withTerminator, function.name) ? data.substr(0, data.find('\0')) : data);
}

std::string contentsOf(ResultObject* object)
{
    const char* const text = exported<decltype(getResultObjectString)>("getResultObjectString")(object);
    return {text, static_cast<std::size_t>(
                      exported<decltype(getResultObjectLength)>("getResultObjectLength")(object))};
}

} // namespace

PerformedCall perform(const Export& function, std::span<const Argument> arguments, CallContext& context)
{
    PerformedCall call{std::string(function.name), {}, {}, {}};
    context.count = 0;
    try {
        call.returned = function.call(arguments, context);
    } catch (const std::invalid_argument& wrong) {
        throw Failure(Ending::wrongUse, wrong.what());
    }
    if (isWhole(call.returned) && !isOneOf(withText, function.name) && !isOneOf(withNumber, function.name)) {
        call.code = std::stoi(call.returned);
    }
    if (function.name == "destroyResultObject") {
        context.forgetResult();
    } else if (takes(function, Kind::result) && call.code == 0) {
        call.data = contentsOf(context.result());
    } else if (takes(function, Kind::buffer) && !call.hasFailed()) {
        call.data = written(function, context, call.returned);
    }
    return call;
}

bool PerformedCall::hasFailed() const
{
    return code.value_or(0) != 0 || failureOf(*this) != nullptr;
}

std::string meaningOf(const PerformedCall& call)
{
    if (const FailureValue* const failure = failureOf(call); failure != nullptr) {
        return "failed: " + std::string(failure->happened);
    }
    const CodeMeaning* const meaning = call.code ? meaningOf(*call.code) : nullptr;
    if (meaning == nullptr) {
        return {};
    }
    if (*call.code == 0) {
        return std::string(meaning->name);
    }
    return std::string(meaning->name) + ": " + std::string(meaning->happened) + " " +
           std::string(sentenceOf(meaning->executed)) + " " + std::string(meaning->advice);
}

Json jsonOf(const PerformedCall& call)
{
    Json json = {{"function", call.name}};
    if (isOneOf(withText, call.name)) {
        json["returned"] = utf8Of(call.returned, windows1250);
    } else if (call.returned == "true" || call.returned == "false") {
        json["returned"] = call.returned == "true";
    } else if (isWhole(call.returned)) {
        json["returned"] = std::stoll(call.returned);
    } else {
        json["returned"] = nullptr; // nothing, or an object that is gone
    }
    if (const CodeMeaning* const meaning = call.code ? meaningOf(*call.code) : nullptr; meaning != nullptr) {
        json["meaning"] = jsonOf(*call.code, *meaning);
    }
    if (const FailureValue* const failure = failureOf(call); failure != nullptr) {
        json["failure"] = failure->happened;
    }
    if (call.data) {
        json["data"] = {{"text", utf8Of(*call.data, windows1250)}, {"bytes", hexadecimal(*call.data)}};
    }
    return json;
}

} // namespace telvofm::tools
