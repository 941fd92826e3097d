// Calls exports at random, one after the other, in a session that is opened, closed and broken at random, and
// records each.
#pragma once

#include "tests/second_opinion/exported_calls.h"
#include "tests/second_opinion/playing_printer.h"
#include "tests/second_opinion/watched_files.h"

#include <cstdio>
#include <map>
#include <string_view>
#include <vector>

namespace telvofm::test {

class RandomCaller
{
public:
    // The pictures lie in the current folder.
    RandomCaller(std::uint64_t seed, std::vector<std::string> pictureNames);

    // The record of one more call.
    std::string call();

private:
    enum class Session
    {
        closed,
        overTcp,
        onTerminal,
        broken
    };

    const ExportedCall& drawCall();
    [[nodiscard]] const ExportedCall& named(std::string_view name) const;
    [[nodiscard]] bool isPossible(std::string_view name) const;
    void prepare(Occasion& occasion, std::string_view name);
    void prepareOpening(Occasion& occasion, std::string_view name);
    void prepareLog(Occasion& occasion, std::string_view name);
    void prepareObject(Occasion& occasion, std::string_view name);
    void prepareFile(Occasion& occasion, std::string_view name);
    void prepareReply(Occasion& occasion, std::string_view name);
    void prepareData(Occasion& occasion, std::string_view name);
    void carryOut(Occasion& occasion, const ExportedCall& chosen);
    void finish(Occasion& occasion, std::string_view name);
    void finishObject(Occasion& occasion, std::string_view name);

    Draw draw;
    std::vector<std::string> pictures;
    std::vector<const ExportedCall*> often; // each as often as it is to be drawn
    Output& output;
    PlayingPrinter printer;
    wire::Listener refusing{false};
    WatchedFiles files;
    Session session = Session::closed;
    std::map<int, ResultObject*> objects;
    int objectsMade = 0;

    // What is prepared for a call besides its arguments.
    struct Preparation
    {
        Session session{};     // when it succeeds
        bool opens = false;    // a printer is there
        bool connects = false; // to our socket
        bool ends = false;     // the process, for want of room
        bool hasBuffer = false;
        std::size_t size = 0; // of it that may be written to
        bool hasFile = false;
        std::string spoken; // by the printer, unasked
        Plan plan;
    } ahead;
};

} // namespace telvofm::test
