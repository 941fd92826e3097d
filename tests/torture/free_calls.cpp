#include "tests/torture/free_calls.h"

#include "telvofm.h"

#include <memory>

namespace telvofm::test::torture {
namespace {

constexpr int noSession = -1;
constexpr int transportFailure = -10201;
constexpr int untrue = 1000; // what no export returns

const std::string request = "\x1C\x01\xE0\x04"; // printJobCancel
const std::string sentRequest = request + "\xF9";

int writeRequest()
{
    return static_cast<int>(rawWrite(reinterpret_cast<const unsigned char*>(sentRequest.data()),
                                     static_cast<std::int64_t>(sentRequest.size())));
}

int readAcknowledge()
{
    constexpr unsigned char acknowledge = 0x06;
    unsigned char read = 0;
    const auto count = rawRead(&read, 1, &read);
    return count == 1 && read != acknowledge ? untrue : static_cast<int>(count);
}

using Calls = std::vector<FreeCall>;

void addOpens(Calls& calls, const std::string& port, sweep::Link link)
{
    // A name that is no serial port's is refused.
    const bool isSerial = link == sweep::Link::serial;
    const std::set<int> results = isSerial ? std::set{0, noSession} : std::set{noSession};
    const int undisturbed = isSerial ? 0 : noSession;
    calls.push_back({"openFM", true, false, [=] { return openFM(port.c_str()); }, {0, noSession}, 0});
    calls.push_back(
        {"openFMBaud", true, false, [=] { return openFMBaud(port.c_str(), 115200); }, results, undisturbed});
    calls.push_back(
        {"openFMStopBit", true, false, [=] { return openFMStopBit(port.c_str(), 2); }, results, undisturbed});
    // The link that is held, again.
    calls.push_back({"openFMBaud", false, false, [] { return openFMBaud("COM1", 9600); }, {0, noSession}, 0});
    calls.push_back({"closeFM", false, false, [] { return closeFM(), 0; }, {0}, 0});
}

void addRawAccess(Calls& calls, const std::function<void()>& awaitAnswer)
{
    const int size = static_cast<int>(sentRequest.size());
    calls.push_back({"rawWrite", false, false, writeRequest, {size, noSession}, size, [] {}, request});
    const auto ask = [=] {
        writeRequest();
        awaitAnswer();
    };
    calls.push_back({"rawRead", false, false, readAcknowledge, {1, noSession}, 1, ask});
}

void addSettings(Calls& calls, const std::string& log)
{
    const auto add = [&](const char* name, bool mayThrow, auto call) {
        calls.push_back({name, false, mayThrow, [=] { return call(), 0; }, {0}, 0});
    };
    add("setLogginOn", true, [=] { setLogginOn(log.c_str()); });
    add("setLogginOff", false, [] { setLogginOff(); });
    add("setRawLogginOn", true, [=] { setRawLogginOn(log.c_str()); });
    add("seRawLogginOff", false, [] { seRawLogginOff(); });
    add("setTcpTimeout", false, [] { setTcpTimeout(1); });
    add("setAutoTwoLineItem", false, [] { setAutoTwoLineItem(true); });
    calls.push_back({"isAutoTwoLineItem",
                     false,
                     false,
                     [] { return isAutoTwoLineItem() ? 1 : 0; },
                     {1},
                     1,
                     [] { setAutoTwoLineItem(true); }});
    constexpr int version = 106;
    calls.push_back({"getVersion", false, false, getVersion, {version}, version});
}

void addPictures(Calls& calls, const std::string& picture)
{
    const auto add = [&](const char* name, std::function<int()> call) {
        calls.push_back({name, false, true, std::move(call), {0, transportFailure}, 0});
    };
    add("prepareGraphicHeader", [=] { return prepareGraphicHeader(5, picture.c_str()); });
    add("prepareGraphicHeader_inverse", [=] { return prepareGraphicHeader_inverse(5, picture.c_str(), 1); });
}

void addResultObjects(Calls& calls)
{
    const std::shared_ptr<ResultObject> kept(createResultObject(), destroyResultObject);
    const auto fill = [=] { getJournal_ResultObject(1, kept.get()); };
    const auto passing = std::make_shared<ResultObject*>(nullptr);
    calls.push_back({"createResultObject",
                     false,
                     false,
                     [] {
                         ResultObject* const object = createResultObject();
                         destroyResultObject(object);
                         return object == nullptr ? 1 : 0;
                     },
                     {0, 1},
                     0});
    calls.push_back({"destroyResultObject",
                     false,
                     false,
                     [=] { return destroyResultObject(*passing), 0; },
                     {0},
                     0,
                     [=] { *passing = createResultObject(); }});
    calls.push_back({"getResultObjectLength",
                     false,
                     false,
                     [=] { return getResultObjectLength(kept.get()) > 0 ? 0 : untrue; },
                     {0},
                     0,
                     fill});
    calls.push_back({"getResultObjectString",
                     false,
                     false,
                     [=] { return *getResultObjectString(kept.get()) == '#' ? 0 : untrue; },
                     {0},
                     0,
                     fill});
}

} // namespace

Calls freeCalls(const std::string& port, sweep::Link link, const std::string& folder,
                const std::function<void()>& awaitAnswer)
{
    Calls calls;
    addOpens(calls, port, link);
    addRawAccess(calls, awaitAnswer);
    addSettings(calls, folder + "/two.log"); // no longer than those before, which have made room
    addPictures(calls, folder + "/picture.bmp");
    addResultObjects(calls);
    return calls;
}

} // namespace telvofm::test::torture
