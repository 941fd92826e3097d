// Every export while no printer is open, with zeros and null pointers for arguments: before the first session
// and after one.
#include "telvofm.h"
#include "tests/system/printer_thread.h"
#include "tests/unit/own_folder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <memory>
#include <set>
#include <type_traits>

namespace telvofm::test {
namespace {

constexpr std::string_view nothing = "nothing";

std::string textOf(bool flag)
{
    return flag ? "true" : "false";
}
std::string textOf(const char* text)
{
    return text;
}
std::string textOf(ResultObject* object)
{
    destroyResultObject(object);
    return object == nullptr ? "null" : "object";
}
template <typename Number>
std::string textOf(Number number)
{
    return std::to_string(number);
}

// Result objects are the only pointers that may not be null; each call gets a new one.
template <typename Parameter>
Parameter emptyArgument()
{
    if constexpr (std::is_convertible_v<Parameter, const ResultObject*>) {
        static std::unique_ptr<ResultObject, decltype(&destroyResultObject)> object(nullptr,
                                                                                    &destroyResultObject);
        object.reset(createResultObject());
        return object.get();
    } else {
        return Parameter{};
    }
}

template <typename Result, typename... Parameters>
std::string resultOf(Result (*function)(Parameters...))
{
    if constexpr (std::is_void_v<Result>) {
        function(emptyArgument<Parameters>()...);
        return std::string(nothing);
    } else {
        return textOf(function(emptyArgument<Parameters>()...));
    }
}

// The one whose object is gone afterwards.
std::string resultOf(void (*function)(ResultObject*))
{
    function(createResultObject());
    return std::string(nothing);
}

struct Export
{
    std::string_view name;
    std::string (*call)();
};

constexpr Export exports[] = {
#define TELVOFM_ENTRY(name, parameters) {#name, [] { return resultOf(&(name)); }},
#include "tools/export_table_entries.inc"
#undef TELVOFM_ENTRY
};

std::string expectedResult(std::string_view name)
{
    // All others have a status, which is -1 without a printer.
    static const std::map<std::string_view, std::string_view> others = {
        {"closeFM", nothing},
        {"createResultObject", "object"},
        {"destroyResultObject", nothing},
        {"getResultObjectLength", "0"},
        {"getResultObjectString", ""},
        {"getVariableStr", "Error"},
        {"getVersion", "106"},
        {"isAutoTwoLineItem", "false"},
        {"seRawLogginOff", nothing},
        {"setAutoTwoLineItem", nothing},
        {"setLogginOff", nothing},
        {"setLogginOn", nothing},
        {"setRawLogginOn", nothing},
        {"setTcpTimeout", nothing},
    };
    const auto other = others.find(name);
    return std::string(other == others.end() ? "-1" : other->second);
}

// How many lines it writes to the call log.
std::ptrdiff_t expectedLines(std::string_view name)
{
    static const std::set<std::string_view> withoutLine = {
        "createResultObject", "destroyResultObject", "getResultObjectLength", "getResultObjectString",
        "getVersion", "isAutoTwoLineItem", "rawRead", "rawWrite", "seRawLogginOff", "setAutoTwoLineItem",
        "setLogginOff", "setLogginOn", "setPreline", "setRawLogginOn", "setTcpTimeout",
        // These write theirs after a reply.
        "getJournal_ResultObject", "getLastParagon", "getLastParagonResultObject", "getVariable",
        "getVariableResultObject", "getVariableStr"};
    if (name == "itemDiscount_int") {
        return 2; // its name alone, and the usual line
    }
    return withoutLine.contains(name) ? 0 : 1;
}

class ClosedExports : public ::testing::Test
{
protected:
    void TearDown() override { setLogginOff(); }

    // openFM fails too, but leaves a session that is put away here.
    void expectNoPrinterFromEach()
    {
        for (const Export& tried : exports) {
            std::filesystem::remove(log);
            setLogginOn(log.c_str());
            EXPECT_EQ(tried.call(), expectedResult(tried.name)) << tried.name;
            const std::string lines = contentOf(log);
            EXPECT_EQ(std::count(lines.begin(), lines.end(), '\n'), expectedLines(tried.name)) << tried.name;
            setLogginOff();
            closeFM();
        }
    }

    OwnFolder folder;
    const std::string log = folder.file("calls.log");
};

TEST_F(ClosedExports, FindNoPrinterBeforeTheFirstSessionAndAfterIt)
{
    {
        SCOPED_TRACE("before the first session");
        expectNoPrinterFromEach();
    }
    PrinterThread printer(acceptAll);
    ASSERT_EQ(openFM(printer.address().c_str()), 0);
    ASSERT_EQ(printJobCancel(1), 0);
    closeFM();
    SCOPED_TRACE("after the session");
    expectNoPrinterFromEach();
}

} // namespace
} // namespace telvofm::test
