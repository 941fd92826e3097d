// Any row of calls of all exports with any arguments, over either link, to a printer that answers with
// anything. Besides what the sanitizers see: no call reports a refusal that the printer has not sent, or a
// success for a request that it has not answered, no other codes come than the documented ones, and
// afterwards the library works as ever.
#include "tests/fuzz/fuzzed_arguments.h"
#include "tests/fuzz/hostile_link.h"
#include "tests/fuzz/hostile_printer.h"

#include <algorithm>
#include <initializer_list>
#include <stdexcept>

namespace {

using namespace telvofm::fuzz;
using telvofm::tools::Export;

constexpr int device = 1;

// Their results are no codes.
bool returnsCode(std::string_view function)
{
    for (const char* other : {"getVariableStr", "getResultObjectString", "getVersion",
                              "getResultObjectLength", "rawRead", "rawWrite"}) {
        if (function == other) {
            return false;
        }
    }
    return true;
}

bool isOneOf(int code, std::initializer_list<int> codes)
{
    return std::ranges::find(codes, code) != codes.end();
}

void judgeOverTcp(int code, const std::string& said)
{
    if (code == 0) {
        const bool isAnswered = said.find_first_of(std::string("\x06:\x04")) != std::string::npos ||
                                said.find(std::string("\x15\0", 2)) != std::string::npos;
        require(sendsOverTcp() == 0 || isAnswered);
    } else if (code > 0) {
        require(code <= 0xFF && said.find(std::string{'\x15', static_cast<char>(code)}) != std::string::npos);
    } else {
        require(isOneOf(code, {-1, -10000, -10001, -10002, -10104, -10201, -10202}));
    }
}

// There the byte behind any byte that is no acknowledge is a code, and 64 is the library's own, too.
void judgeOnSerial(int code, const std::string& said)
{
    if (code == 0) {
        const bool isAnswered = said.find_first_of(std::string("\x06:\x04\0", 4)) != std::string::npos;
        require(sendsOnSerial() == 0 || isAnswered);
    } else if (code > 0) {
        require(code == 64 || (code <= 0xFF && said.find(static_cast<char>(code)) != std::string::npos));
    } else {
        require(isOneOf(code, {-1, -10000, -10001, -10002, -10103, -10104, -10200, -10201, -10202}));
    }
}

void judge(const std::string& result, const std::string& said, bool isTcp)
{
    if (result.find_first_not_of("-0123456789") != std::string::npos) {
        return; // true, false, nothing, result
    }
    const int code = std::stoi(result);
    isTcp ? judgeOverTcp(code, said) : judgeOnSerial(code, said);
}

class Till
{
public:
    explicit Till(FuzzedBytes& bytes) : input(bytes)
    {
        setLogginOff();
        open(linkFrom(input));
    }
    Till(const Till&) = delete;
    Till& operator=(const Till&) = delete;
    ~Till()
    {
        closeFM();
        setLogginOff();
        seRawLogginOff();
    }

    void callAny()
    {
        const auto table = telvofm::tools::exportTable();
        const Export& function = table[input.byte() % table.size()];
        auto arguments = argumentsFrom(input, function);
        const std::string said = letThePrinterSay(input);
        if (function.name.starts_with("openFM")) {
            leaveTcp();
            isTcp = function.name == "openFM" && !namesSerialPort(arguments.front().text);
        }
        try {
            const std::string result = function.call(arguments, context);
            if (returnsCode(function.name)) {
                judge(result, said, isTcp);
            }
        } catch (const std::invalid_argument&) {
            return; // a negative number for a parameter that takes none
        }
        if (function.name == "destroyResultObject") {
            context.forgetResult();
        }
    }

private:
    void open(const std::string& name)
    {
        isTcp = !namesSerialPort(name);
        openFM(name.c_str());
    }

    static bool namesSerialPort(std::string_view name)
    {
        return name.starts_with("COM") || name.starts_with(R"(\\.\COM)");
    }

    // A second open leaves the first connection of TCP out of reach for ever, which costs memory each time.
    void leaveTcp() const
    {
        if (isTcp) {
            closeFM();
        }
    }

    FuzzedBytes& input;
    telvofm::tools::CallContext context;
    bool isTcp = false;
};

void expectThatAllWorks(const char* link)
{
    letThePrinterAccept();
    require(openFM(link) == 0);
    letThePrinterAccept();
    require(printJobCancel(device) == 0);
    closeFM();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    constexpr int mostCalls = 4; // so that more inputs are tried
    FuzzedBytes input(data, size);
    letThePrinterAccept();
    {
        Till till(input);
        for (int calls = 0; calls < mostCalls && !input.isAtEnd(); ++calls) {
            till.callAny();
        }
    }
    expectThatAllWorks(size % 2 == 0 ? "printer" : "COM1"); // both would take a quarter of all time
    return 0;
}
