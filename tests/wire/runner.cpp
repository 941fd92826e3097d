// Plays wire scripts against the shared library: it calls the exports and is the printer at the other end.
//
//     wire_runner [--work FOLDER] [--serial-name NAME --modem-lines FILE] SCRIPT-OR-FOLDER...
//
// With --serial-name, scripts for serial links are played (and only those): the runner prints "port N" and
// waits until a bridge between that port and the named serial line connects; FILE keeps the modem lines of
// that line. Without it, scripts for serial links run on a pseudo-terminal where the platform has them.
#include "tests/wire/checks.h"
#include "tests/wire/loopback.h"
#include "tests/wire/modem_lines.h"
#include "tests/wire/printer.h"

#include <algorithm>
#include <cstdio>
#include <stdexcept>

namespace wire {
namespace {

using namespace std::chrono_literals;
using telvofm::tools::Argument;
using telvofm::tools::CallContext;

namespace fs = std::filesystem;

struct Options
{
    fs::path work = "wire_work";
    std::string serialName;
    fs::path modemLines;
    std::vector<fs::path> paths;
};

void emptyFolder(const fs::path& folder)
{
    fs::remove_all(folder);
    fs::create_directories(folder);
}

[[noreturn]] void fail(const Call& call, const std::string& problem)
{
    throw std::runtime_error("line " + std::to_string(call.line) + ", " + call.name + ": " + problem);
}

// The connection and the session that one script is played on.
class Stage
{
public:
    Stage(bool isSerial, std::string serialName, Connection* bridge)
        : bridged(bridge), serial(isSerial), address(std::move(serialName))
    {
        if (!serial) {
            address = "127.0.0.1:" + std::to_string(listener.port());
        } else if (bridged == nullptr) {
            std::string path;
            own = openPseudoTerminal(path);
            address = "COM" + path;
        }
    }

    void open()
    {
        setLogginOff();
        if (openFM(address.c_str()) != 0) {
            throw std::runtime_error("openFM(" + address + ") failed");
        }
        acceptNew();
    }

    // An open export has succeeded: over TCP a new connection is waiting.
    void acceptNew()
    {
        if (!serial) {
            previous.push_back(std::move(own));
            own = listener.accept(10s);
        }
    }

    // What the library still sent, although no call was expected to. A bridge stays open for the next script.
    std::string restAfterClose()
    {
        constexpr std::size_t enough = 256;
        constexpr auto aReplacedSessionStaysOpen = 300ms;
        const bool ends = bridged == nullptr && own.isOpen();
        return ends ? own.receive(enough, aReplacedSessionStaysOpen).value_or("") : "";
    }

    Connection& connection() { return bridged != nullptr ? *bridged : own; }
    [[nodiscard]] const std::string& name() const { return address; }

private:
    Listener listener;
    Connection* bridged;
    Connection own;
    std::vector<Connection> previous; // of sessions that a second open replaced
    bool serial;
    std::string address;
};

std::string run(const Call& call, CallContext& context)
{
    const auto* exported = telvofm::tools::findExport(call.name);
    if (exported == nullptr) {
        fail(call, "there is no export of this name");
    }
    std::vector<Argument> arguments;
    for (const Word& word : call.arguments) {
        arguments.push_back({.text = word.text, .isWord = !word.isQuoted});
    }
    context.count = 0xAAAAAAAA;
    std::string result = exported->call(arguments, context);
    if (call.name == "destroyResultObject") {
        context.forgetResult();
    }
    return result;
}

void playCall(const Call& call, Stage& stage, CallContext& context, Printer::Look lookAtFirstRequest)
{
    Printer printer(stage.connection(), call.steps, std::move(lookAtFirstRequest));
    const std::string result = run(call, context);
    const std::string problem = printer.finish();
    if (!problem.empty()) {
        fail(call, problem);
    }
    if (const auto wrong = checkResult(call, result); !wrong.empty()) {
        fail(call, wrong);
    }
    if (call.name.starts_with("openFM") && result == "0") {
        stage.acceptNew();
    }
    std::string resultObject;
    if (call.resultObject) {
        resultObject.assign(getResultObjectString(context.result()),
                            static_cast<std::size_t>(getResultObjectLength(context.result())));
    }
    if (const auto wrong = checkOutputs(call, context, resultObject); !wrong.empty()) {
        fail(call, wrong);
    }
}

// One play of a script, on a stage and in a folder of its own.
struct Play
{
    fs::path script;
    Variables variables;
    fs::path folder;
    fs::path linesFile;
    bool isSerial;
    std::string serialName;
    Connection* bridge;
};

void play(const Play& setting, bool logIsOn)
{
    const fs::path& folder = setting.folder;
    emptyFolder(folder);
    Stage stage(setting.isSerial, setting.serialName, setting.bridge);
    if (setting.isSerial) {
        resetModemLines(setting.linesFile.string());
    }
    Variables variables = setting.variables;
    variables["address"] = stage.name();
    const Script script = readScript(setting.script, variables);
    CallContext context;
    LogFollower log(folder / "calls.log");
    if (!script.opensItself) {
        stage.open();
    }
    const std::string logPath = (folder / "calls.log").string();
    const auto switchLog = [&] { logIsOn ? setLogginOn(logPath.c_str()) : setLogginOff(); };
    switchLog();
    for (const Call& call : script.calls) {
        playCall(call, stage, context, [&] { return log.check(logIsOn ? call.log : ""); });
        if (const auto wrong = log.check(logIsOn ? call.log + call.logAfter : ""); !wrong.empty()) {
            fail(call, wrong);
        }
        log.callIsDone();
        if (const auto wrong = checkFiles(call, folder); !wrong.empty()) {
            fail(call, wrong);
        }
        if (call.reopensAfterwards) {
            setLogginOff();
            closeFM();
            stage.open();
            switchLog();
        }
    }
    setLogginOff();
    closeFM();
    if (const std::string rest = stage.restAfterClose(); !rest.empty()) {
        throw std::runtime_error("the library sent bytes that nobody expected\n      " + hexadecimal(rest));
    }
}

std::string folderVariable(const fs::path& folder)
{
    return folder.generic_string() + "/";
}

// The folder of the scripts themselves, where some keep files that calls read.
fs::path scriptRoot(const fs::path& script)
{
    fs::path folder = script.parent_path();
    while (folder.has_relative_path() && folder.filename() != "wire") {
        folder = folder.parent_path();
    }
    return folder;
}

class Runner
{
public:
    explicit Runner(Options given) : options(std::move(given)) {}

    int runAll()
    {
        connectBridge();
        for (const fs::path& script : scripts()) {
            runOne(script);
        }
        std::printf("%d passed, %d failed, %d skipped\n", passed, failed, skipped);
        return failed == 0 && passed + skipped > 0 ? 0 : 1;
    }

private:
    [[nodiscard]] std::vector<fs::path> scripts() const
    {
        std::vector<fs::path> all;
        for (const fs::path& path : options.paths) {
            if (!fs::is_directory(path)) {
                all.push_back(path);
                continue;
            }
            for (const auto& entry : fs::recursive_directory_iterator(path)) {
                if (entry.path().extension() == ".wire") {
                    all.push_back(entry.path());
                }
            }
        }
        std::sort(all.begin(), all.end());
        return all;
    }

    void connectBridge()
    {
        if (options.serialName.empty()) {
            return;
        }
        std::printf("port %d\n", bridgeListener.port());
        std::fflush(stdout);
        bridge = bridgeListener.accept(60s);
        if (!bridge.isOpen()) {
            throw std::runtime_error("no bridge to the serial line connected within a minute");
        }
    }

    // On a bridge only serial scripts are played, without one those that the platform has a line for.
    [[nodiscard]] bool canPlay(const Script& script) const
    {
        if (bridge.isOpen() || !script.isSerial) {
            return bridge.isOpen() == script.isSerial;
        }
        std::string terminal;
        return openPseudoTerminal(terminal).isOpen();
    }

    void runOne(const fs::path& path)
    {
        const fs::path root = scriptRoot(fs::absolute(path));
        const fs::path folder =
            fs::absolute(options.work) / fs::relative(fs::absolute(path), root).replace_extension("");
        try {
            const Variables variables = {{"folder", folderVariable(folder)},
                                         {"scripts", root.generic_string()}};
            const Script script = readScript(path, variables);
            if (!canPlay(script)) {
                ++skipped;
                return;
            }
            const Play setting = {path,
                                  variables,
                                  folder,
                                  options.modemLines.empty() ? folder / "modem_lines" : options.modemLines,
                                  script.isSerial,
                                  options.serialName,
                                  bridge.isOpen() ? &bridge : nullptr};
            if (script.playsLogOn) {
                play(setting, true);
            }
            if (script.playsLogOff) {
                play(setting, false);
            }
            ++passed;
        } catch (const std::exception& failure) {
            ++failed;
            setLogginOff();
            closeFM();
            std::printf("FAILED %s\n    %s\n", path.string().c_str(), failure.what());
        }
        std::fflush(stdout);
    }

    Options options;
    Listener bridgeListener;
    Connection bridge;
    int passed = 0;
    int failed = 0;
    int skipped = 0;
};

Options parse(const std::vector<std::string>& arguments)
{
    Options options;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const bool hasValue = i + 1 < arguments.size();
        if (arguments[i] == "--work" && hasValue) {
            options.work = arguments[++i];
        } else if (arguments[i] == "--serial-name" && hasValue) {
            options.serialName = arguments[++i];
        } else if (arguments[i] == "--modem-lines" && hasValue) {
            options.modemLines = arguments[++i];
        } else {
            options.paths.emplace_back(arguments[i]);
        }
    }
    return options;
}

} // namespace
} // namespace wire

int main(int count, char** arguments)
{
    try {
        return wire::Runner(wire::parse({arguments + 1, arguments + count})).runAll();
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "wire_runner: %s\n", failure.what());
        return 1;
    }
}
