#include "tests/sweep/swept_call.h"

#include "tests/unit/printer/sample_calls.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <fstream>
#include <sstream>

namespace telvofm::test::sweep {
namespace {

using tools::Argument;
using virtual_printer::SampleCall;

constexpr std::size_t bufferSize = 4096;
constexpr char untouched = '\xAA';

template <typename Names>
bool isAmong(const Names& names, std::string_view name)
{
    return std::find(names.begin(), names.end(), name) != names.end();
}

// The file is there before the printer is asked.
constexpr auto intoFileWhileReading = std::to_array<std::string_view>(
    {"getJournalStructZ1_tofile", "saveJournalToFile", "saveJournalToFile_str", "saveBCKP", "saveRAMMP"});
// Their replies end with the first 0x00, and a 0x00 stands behind them.
constexpr auto asText = std::to_array<std::string_view>({"getVariable", "getIntervalFPD", "getIntervalFPC"});
// Each 0x00 is a blank, and a 0x00 stands behind the reply.
constexpr auto blankedWithEnd = std::to_array<std::string_view>(
    {"getJournalStructD", "getJournalStructD_str", "getParagonIDs", "getParagonIDs_str"});

bool fetchesReply(std::string_view name)
{
    return (name.starts_with("get") && name != "getLastTransactionPackets") || name.starts_with("save");
}

Exchange::Kind kindOf(std::string_view name)
{
    if (isAmong(intoFileWhileReading, name)) {
        return Exchange::Kind::strictQuery;
    }
    return fetchesReply(name) ? Exchange::Kind::query : Exchange::Kind::command;
}

SweptCall sweptOf(const SampleCall& sample, const std::string& file, int address)
{
    SweptCall call{sample.name, {}, kindOf(sample.name), sample.name.starts_with("load"), {}};
    if (sample.name != "sendUnspecifiedData") {
        call.arguments.push_back({std::to_string(address)});
    }
    for (const std::string_view argument : sample.arguments) {
        if (argument == virtual_printer::toBuffer) {
            call.arguments.insert(call.arguments.end(), 2, {std::to_string(bufferSize)});
        } else if (argument == virtual_printer::toFile) {
            call.arguments.push_back({file});
            call.file = file;
        } else {
            const bool isWord = argument == virtual_printer::toResult || argument == virtual_printer::toCount;
            call.arguments.push_back({std::string(argument), isWord});
        }
    }
    return call;
}

std::string contentOfFile(const std::string& path)
{
    std::ifstream stream(path, std::ios::binary);
    std::ostringstream content;
    content << stream.rdbuf();
    return content.str();
}

// What a variable's line end leaves.
std::string_view withoutLineEnd(std::string_view reply)
{
    if (reply.size() <= 2) {
        return {};
    }
    return reply.ends_with("\r\n") || reply.ends_with("\n\r") ? reply.substr(0, reply.size() - 2) : reply;
}

} // namespace

std::vector<SweptCall> everyCall(const std::string& file, int address)
{
    constexpr std::size_t twoBlocks = 300;
    std::vector<SweptCall> calls;
    for (const SampleCall& sample : virtual_printer::sampleCalls()) {
        calls.push_back(sweptOf(sample, file, address));
    }
    SweptCall longCode = callOf("printQRCode", file, address);
    longCode.arguments.back().text = std::string(twoBlocks, 'q');
    calls.push_back(longCode);
    return calls;
}

SweptCall callOf(std::string_view name, const std::string& file, int address)
{
    const auto samples = virtual_printer::sampleCalls();
    const auto found =
        std::find_if(samples.begin(), samples.end(), [&](const SampleCall& s) { return s.name == name; });
    return sweptOf(*found, file, address);
}

// Eight black dots in one row.
void writePicture(const std::string& path)
{
    constexpr auto bitmap = std::to_array<unsigned char>(
        {'B', 'M', 66, 0, 0, 0, 0, 0, 0, 0, 62, 0, 0, 0, 40,  0,   0,   0, 8, 0, 0, 0,
         1,   0,   0,  0, 1, 0, 1, 0, 0, 0, 0,  0, 4, 0, 0,   0,   0,   0, 0, 0, 0, 0,
         0,   0,   0,  0, 0, 0, 0, 0, 0, 0, 0,  0, 0, 0, 255, 255, 255, 0, 0, 0, 0, 0});
    std::ofstream file(path, std::ios::binary);
    for (const unsigned char byte : bitmap) {
        file.put(static_cast<char>(byte));
    }
}

void preparePictures(const std::string& path)
{
    constexpr int memoryBitmap = 9;
    for (const int index : {1, 2, memoryBitmap}) {
        prepareGraphicHeader(index, path.c_str());
    }
}

bool Outcome::deliveredNothing() const
{
    if (name == "getVariableStr") {
        return returnedText == "Error";
    }
    return intoBuffer ? data.find_first_not_of(untouched) == std::string::npos : data == dataBefore;
}

bool Outcome::delivered(std::string_view reply) const
{
    const std::string_view kept = name.starts_with("getVariable") ? withoutLineEnd(reply) : reply;
    if (name == "getVariableStr") {
        return returnedText == kept.substr(0, kept.find('\0'));
    }
    if (!intoBuffer) {
        return data == kept;
    }
    std::string expected(kept);
    if (isAmong(asText, name)) {
        expected = expected.substr(0, expected.find('\0')) + '\0';
    } else if (isAmong(blankedWithEnd, name) || name == "getLastParagon") {
        std::replace(expected.begin(), expected.end(), '\0', ' ');
        expected += isAmong(blankedWithEnd, name) ? std::string(1, '\0') : "";
    }
    const bool isCounted = name != "getJournal_str_count" || count == reply.size();
    return isCounted && data.starts_with(expected) &&
           data.find_first_not_of(untouched, expected.size()) == std::string::npos;
}

namespace {

bool takesObject(const SweptCall& call)
{
    return std::any_of(call.arguments.begin(), call.arguments.end(), [](const Argument& one) {
        return one.isWord && one.text == virtual_printer::toResult;
    });
}

std::string contentsOf(const ResultObject* object)
{
    return {getResultObjectString(object), static_cast<std::size_t>(getResultObjectLength(object))};
}

class Surrounded
{
public:
    explicit Surrounded(Around& one) : around(one) { around.begin(); }
    Surrounded(const Surrounded&) = delete;
    Surrounded& operator=(const Surrounded&) = delete;
    ~Surrounded() { around.end(); }

private:
    Around& around;
};

// The text itself, as the table would need memory for it.
void performText(const SweptCall& call, Around& around, Outcome& outcome)
{
    const std::string code = call.arguments.back().text;
    const int address = std::stoi(call.arguments.front().text);
    const char* text = nullptr;
    {
        const Surrounded surrounded(around);
        text = getVariableStr(address, code.c_str());
    }
    outcome.returnedText = text;
    outcome.result = outcome.returnedText == "Error" ? -1 : 0;
}

void performByTable(const SweptCall& call, tools::CallContext& context, Around& around, Outcome& outcome)
{
    const auto* const exported = tools::findExport(call.name);
    context.buffer.reserve(bufferSize); // so that it is not made during the call
    context.buffer.clear();
    context.count = 0;
    std::string returned;
    {
        const Surrounded surrounded(around);
        returned = exported->call(call.arguments, context);
    }
    outcome.result = std::stoi(returned);
}

} // namespace

Outcome perform(const SweptCall& call, tools::CallContext& context)
{
    Around nothing;
    return perform(call, context, nothing);
}

Outcome perform(const SweptCall& call, tools::CallContext& context, Around& around)
{
    Outcome outcome;
    outcome.name = call.name;
    if (!call.file.empty()) {
        std::remove(call.file.c_str());
    }
    const bool isText = call.name == "getVariableStr";
    const bool intoObject = takesObject(call);
    if (intoObject) {
        outcome.dataBefore = contentsOf(context.result());
    }
    try {
        isText ? performText(call, around, outcome) : performByTable(call, context, around, outcome);
    } catch (const std::exception& failure) {
        outcome.thrown = failure.what();
    }
    outcome.intoBuffer = !context.buffer.empty();
    outcome.count = context.count;
    if (outcome.intoBuffer) {
        outcome.data.assign(context.buffer.begin(), context.buffer.end());
    } else if (!call.file.empty()) {
        outcome.data = outcome.result == 0 ? contentOfFile(call.file) : std::string();
    } else if (intoObject) {
        outcome.data = contentsOf(context.result());
    }
    return outcome;
}

} // namespace telvofm::test::sweep
