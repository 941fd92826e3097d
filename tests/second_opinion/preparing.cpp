// What is prepared for each kind of call.
#include "tests/second_opinion/random_caller.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>

namespace telvofm::test {
namespace {

constexpr std::string_view serialName = "COM/missing/terminal";

template <std::size_t Count>
bool isOneOf(std::string_view name, const std::array<std::string_view, Count>& names)
{
    return std::find(names.begin(), names.end(), name) != names.end();
}

constexpr std::array<std::string_view, 5> strictQueries = {"getJournalStructZ1_tofile", "saveJournalToFile",
                                                           "saveJournalToFile_str", "saveBCKP", "saveRAMMP"};
constexpr std::array<std::string_view, 7> uploads = {
    "printQRCode", "loadGHMMC", "loadGHMMC1", "loadGHNV", "loadGHNV2", "loadRAMBitMap", "printGraphic"};

// Of the replies that go to the caller: into which buffers one of any length may go.
constexpr std::array<std::string_view, 3> takeAnySize = {"getJournalStructD", "getJournalStructD_str",
                                                         "getLastParagon"};
constexpr std::array<std::string_view, 8> exactCopies = {"getJournal",
                                                         "getJournal_str_count",
                                                         "getJournalStructD1",
                                                         "getJournalStructZ",
                                                         "getJournalStructZ1",
                                                         "getJournalStructU",
                                                         "getBCKP",
                                                         "getRAMMP"};
constexpr std::array<std::string_view, 5> textCopies = {"getVariable", "getIntervalFPD", "getIntervalFPC",
                                                        "getParagonIDs", "getParagonIDs_str"};

Exchange exchangeOf(std::string_view name)
{
    if (isOneOf(name, strictQueries)) {
        return Exchange::strictQuery;
    }
    if (isOneOf(name, uploads)) {
        return Exchange::upload;
    }
    const bool isQuestion = name.find("get") == 0 && name != "getLastTransactionPackets";
    return isQuestion ? Exchange::query : Exchange::command;
}

} // namespace

void RandomCaller::prepare(Occasion& occasion, std::string_view name)
{
    ahead = {};
    ahead.session = session;
    occasion.isSerial = session == Session::onTerminal;
    if (session == Session::overTcp || session == Session::onTerminal) {
        ahead.plan = drawPlan(draw, exchangeOf(name), occasion.isSerial);
    }
    if (name == "closeFM") {
        ahead.session = Session::closed;
    }
    prepareOpening(occasion, name);
    prepareLog(occasion, name);
    prepareObject(occasion, name);
    prepareFile(occasion, name);
    prepareReply(occasion, name);
    prepareData(occasion, name);
}

void RandomCaller::prepareOpening(Occasion& occasion, std::string_view name)
{
    if (name.find("open") != 0) {
        return;
    }
    occasion.setting = draw.oneOf<std::uint32_t>({1, 2, 15, 0, 3, 16, 4'294'967'295});
    const bool takesRate = name == "openFMBaud";
    if (takesRate) {
        occasion.setting = draw.oneOf<std::uint32_t>({57'600, 115'200});
        // Another rate: the link that there is gets another device, and is opened again. Without one nothing
        // happens.
        if (session == Session::overTcp ? !draw.oneIn(4) : session == Session::closed && draw.oneIn(3)) {
            occasion.setting = draw.oneOf<std::uint32_t>({0, 9600, 57'601, 4'294'967'295});
            occasion.port = serialName;
            ahead.opens = ahead.connects = session == Session::overTcp;
            return;
        }
    }
    if (draw.oneIn(8)) {
        if (name != "openFM" && draw.oneIn(2)) {
            occasion.port =
                draw.oneOf({"10.0.0.5", "com4", "", R"(\\.\CON)", "CO", " COM1"}); // no serial ports
            return;
        }
        occasion.port = name == "openFM" && draw.oneIn(2) ? "127.0.0.1:" + std::to_string(refusing.port())
                                                          : std::string(serialName);
        ahead.session = Session::broken;
        return;
    }
    ahead.opens = true;
    if (name == "openFM" && !draw.oneIn(5)) {
        occasion.port = printer.address();
        ahead.connects = true;
        ahead.session = Session::overTcp;
    } else {
        occasion.port = (draw.oneIn(4) ? R"(\\.\)" : "") + printer.openTerminal();
        ahead.session = Session::onTerminal;
    }
}

void RandomCaller::prepareLog(Occasion& occasion, std::string_view name)
{
    if (name == "setLogginOn") {
        occasion.path =
            draw.oneIn(6) ? draw.oneOf({"", "missing/c.log"}) : draw.oneOf({"fmlog.txt", "a.log", "b.log"});
    } else if (name == "setRawLogginOn") {
        occasion.path = draw.oneOf({"", "raw.log", "other.raw"});
        const bool held = files.holdsAnything(occasion.path);
        occasion.record.member("had", held ? "{\"" + occasion.path + "\":true}" : "{}");
    }
}

void RandomCaller::prepareObject(Occasion& occasion, std::string_view name)
{
    if (name == "createResultObject") {
        occasion.object = objectsMade++;
    } else if (name.find("esultObject") != std::string_view::npos &&
               !(name == "destroyResultObject" && draw.oneIn(8))) {
        const auto chosen =
            std::next(objects.begin(), static_cast<std::ptrdiff_t>(draw.below(objects.size())));
        occasion.object = chosen->first;
        occasion.resultObject = chosen->second;
    }
}

void RandomCaller::prepareFile(Occasion& occasion, std::string_view name)
{
    if (name.find("prepareGraphicHeader") == 0) {
        occasion.path = draw.oneIn(10) ? draw.oneOf({"missing.bmp", "", "fmlog.txt"})
                                       : pictures[draw.below(pictures.size())];
        return;
    }
    if (name.find("_tofile") == std::string_view::npos && !isOneOf(name, strictQueries)) {
        return;
    }
    if (draw.oneIn(8)) {
        occasion.path = draw.oneOf({"missing/reply.bin", "", "."});
        return;
    }
    occasion.path = draw.oneOf({"reply.bin", "reply 2.bin", "reply,3.bin"});
    ahead.hasFile = true;
    std::filesystem::remove(occasion.path);
    if (draw.oneIn(2)) {
        std::ofstream(occasion.path) << "what was there before";
    }
    const auto before = contentOf(occasion.path);
    occasion.record.member("file_before", before ? jsonBytes(std::string_view(*before)) : "null");
}

void RandomCaller::prepareReply(Occasion& occasion, std::string_view name)
{
    const std::size_t length = ahead.plan.replyLength;
    const bool isText = isOneOf(name, textCopies);
    const bool isExact = isOneOf(name, exactCopies);
    if (isOneOf(name, takeAnySize)) {
        occasion.size = draw.oneIn(4) ? draw.between(-2, 2) : static_cast<int>(length) + draw.between(-3, 40);
    } else if (isText || isExact) {
        occasion.size =
            static_cast<int>(length + (isText ? 1 : 0)) + (draw.oneIn(2) ? 0 : draw.between(0, 300));
        // Too short: the process ends, if the call succeeds.
        ahead.ends =
            session == Session::overTcp && length > 1 && !ahead.plan.isSilentAtTimes && draw.oneIn(20);
        if (ahead.ends) {
            occasion.size = draw.between(1, static_cast<int>(length) - 1);
        }
    } else {
        return;
    }
    ahead.hasBuffer = true;
    ahead.size = std::max(length + 1, static_cast<std::size_t>(std::max(occasion.size, 0))) + 8;
}

void RandomCaller::prepareData(Occasion& occasion, std::string_view name)
{
    const bool isReached = session == Session::overTcp || session == Session::onTerminal;
    if (name == "rawRead") {
        occasion.hasData = !draw.oneIn(8);
        occasion.hasMarker = !draw.oneIn(8);
        occasion.size = draw.oneIn(8) ? draw.between(-2, 0) : draw.between(1, 40);
        ahead.hasBuffer = true;
        ahead.size = 64;
        for (int count = 0; isReached && occasion.hasData && occasion.hasMarker && count < occasion.size;
             ++count) {
            char byte = static_cast<char>(draw.below(256));
            if (session == Session::overTcp && (byte == '\x11' || byte == '\x13')) { // dropped
                ahead.spoken += byte;
                byte = '\x12';
            }
            ahead.spoken += byte;
        }
        if (session == Session::onTerminal && draw.oneIn(3)) { // fewer than are asked for
            ahead.spoken.resize(ahead.spoken.size() / 2);
        }
    } else if (name == "rawWrite") {
        occasion.hasData = !draw.oneIn(8);
        occasion.data = draw.bytes(draw.oneIn(8) ? 0 : draw.below(300));
        occasion.size = static_cast<int>(occasion.data.size());
        ahead.plan = {};
        ahead.plan.listensOnly = isReached && occasion.hasData;
        ahead.plan.givenLength = occasion.data.size();
    } else if (name == "sendUnspecifiedData") {
        occasion.data = draw.oneIn(3) ? draw.text() : "\x1C\x01" + draw.text() + "\x04";
        while (ahead.plan.isSilentAtTimes) { // a question would not be known from what the caller sends
            ahead.plan = drawPlan(draw, Exchange::command, occasion.isSerial);
        }
        ahead.plan.givenLength = occasion.data.size() + 1;
    } else if (name == "printGraphic") {
        occasion.data = draw.bytes(draw.below(700));
        occasion.size = static_cast<int>(occasion.data.size());
        if (draw.oneIn(4)) { // no data, whatever stands there
            occasion.size = draw.oneOf({0, -1, -300});
            occasion.hasData = draw.oneIn(2);
            occasion.data.clear();
        }
    } else if (name.find("loadGHNV") == 0) {
        const bool isLimited = name == "loadGHNV";
        occasion.size =
            draw.oneIn(8) ? draw.oneOf({-1, 7, 11, isLimited ? 1 << 30 : 12}) : draw.between(0, 6);
    }
}

} // namespace telvofm::test
