#include "tests/second_opinion/random_caller.h"

#include "tests/second_opinion/passing_time.h"

#include <fcntl.h>
#include <new>
#include <stdexcept>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

namespace telvofm::test {
namespace {

constexpr char filler = '\xAA';
constexpr unsigned int untouchedCount = 0xAAAAAAAA;

Output& sharedOutput()
{
    void* place = ::mmap(nullptr, sizeof(Output), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    if (place == MAP_FAILED) {
        throw std::bad_alloc();
    }
    return *new (place) Output;
}

// The signal that ends a process of its own that makes the call; 0 when the call returns. Ours goes on with
// the connection.
int signalThatEnds(const std::function<void()>& call, Occasion& occasion)
{
    occasion.output.result = {'n', 'u', 'l', 'l'};
    const pid_t child = ::fork();
    if (child == 0) {
        ::dup2(::open("/dev/null", O_WRONLY | O_CLOEXEC), STDERR_FILENO);
        call();
        const auto length =
            occasion.result.copy(occasion.output.result.data(), occasion.output.result.size() - 1);
        occasion.output.result.at(length) = '\0';
        ::_exit(0);
    }
    int status = 0;
    ::waitpid(child, &status, 0);
    occasion.result = occasion.output.result.data();
    return WIFSIGNALED(status) ? WTERMSIG(status) : 0;
}

// How often an export is drawn; most change nothing that stays.
int weightOf(std::string_view name)
{
    if (name.find("prepareGraphicHeader") == 0) {
        return 60;
    }
    if (name == "seRawLogginOff") { // what is logged byte by byte takes time
        return 30;
    }
    const bool opens = name.find("open") == 0; // a second time, most often
    return opens || name == "setLogginOff" ? 3 : 10;
}

} // namespace

RandomCaller::RandomCaller(std::uint64_t seed, std::vector<std::string> pictureNames)
    : draw(seed), pictures(std::move(pictureNames)), output(sharedOutput())
{
    for (const ExportedCall& call : exportedCalls()) {
        often.insert(often.end(), static_cast<std::size_t>(weightOf(call.name)), &call);
    }
}

std::string RandomCaller::call()
{
    const ExportedCall& chosen = drawCall();
    Occasion occasion(draw, output, chosen.name);
    output.buffer.fill(filler);
    output.count = untouchedCount;
    prepare(occasion, chosen.name);
    carryOut(occasion, chosen);
    finish(occasion, chosen.name);
    return occasion.record.finish();
}

const ExportedCall& RandomCaller::named(std::string_view name) const
{
    for (const ExportedCall& call : exportedCalls()) {
        if (call.name == name) {
            return call;
        }
    }
    throw std::invalid_argument("no export is called " + std::string(name));
}

const ExportedCall& RandomCaller::drawCall()
{
    if (session == Session::closed && !draw.oneIn(3)) {
        return named(draw.oneOf({"openFM", "openFM", "openFM", "openFM", "openFMBaud", "openFMStopBit"}));
    }
    if (session == Session::onTerminal && draw.oneIn(100)) { // nothing else ends it
        return named("closeFM");
    }
    const ExportedCall* chosen = nullptr;
    do {
        chosen = often[draw.below(often.size())];
    } while (!isPossible(chosen->name));
    return *chosen;
}

bool RandomCaller::isPossible(std::string_view name) const
{
    if (name.find("AutoTwoLineItem") != std::string_view::npos) {
        return session != Session::closed;
    }
    if (name.find("open") == 0) { // a port is opened once only
        return session != Session::onTerminal;
    }
    if (name == "createResultObject") {
        constexpr std::size_t most = 5;
        return objects.size() < most;
    }
    if (name.find("esultObject") != std::string_view::npos) {
        return !objects.empty();
    }
    return true;
}

void RandomCaller::carryOut(Occasion& occasion, const ExportedCall& chosen)
{
    const auto call = chosen.drawArguments(occasion);
    printer.play(std::move(ahead.plan), session == Session::onTerminal);
    if (!ahead.spoken.empty()) {
        printer.say(ahead.spoken);
    }
    if (!ahead.ends) {
        const PassingTime time(printer);
        call();
        if (time.pauses != 0) {
            occasion.record.member("pauses", std::to_string(time.pauses));
        }
    } else {
        occasion.record.member("ended", std::to_string(signalThatEnds(call, occasion)));
    }
    if (ahead.connects) {
        printer.acceptConnection();
    }
}

void RandomCaller::finish(Occasion& occasion, std::string_view name)
{
    Record& record = occasion.record;
    finishObject(occasion, name);
    record.member("result", occasion.result);
    record.member("wire", '"' + printer.takeTranscript() + '"');
    if (name.find("open") == 0) {
        record.member("opens", ahead.opens ? "true" : "false");
    }
    if (ahead.hasBuffer) {
        const std::string_view buffer(output.buffer.data(), ahead.size);
        record.member("size", std::to_string(ahead.size));
        record.member("buffer", jsonBytes(buffer.substr(0, buffer.find_last_not_of(filler) + 1)));
    }
    if (name == "getJournal_str_count") {
        record.member("count", std::to_string(output.count));
        record.member("count_before", std::to_string(untouchedCount));
    }
    if (ahead.hasFile) {
        const auto content = contentOf(occasion.path);
        record.member("file", content ? jsonBytes(std::string_view(*content)) : "null");
    }
    files.report(record);
    session = ahead.session;
}

void RandomCaller::finishObject(Occasion& occasion, std::string_view name)
{
    if (name == "createResultObject") {
        objects[occasion.object] = occasion.resultObject;
    } else if (name == "destroyResultObject") {
        objects.erase(occasion.object);
    } else if (occasion.object != -1) {
        const auto* const text = getResultObjectString(occasion.resultObject);
        const std::string_view content(
            text, static_cast<std::size_t>(getResultObjectLength(occasion.resultObject)));
        if (name == "getResultObjectString") {
            occasion.result = jsonBytes(std::string_view(text, content.size() + 1)); // its end too
        }
        occasion.record.member("object",
                               "[" + std::to_string(occasion.object) + "," + jsonBytes(content) + "]");
    }
}

} // namespace telvofm::test
