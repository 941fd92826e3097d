// Makes the same call so many times, for a profiler: a journal of sixteen blocks over TCP, or a sale on a
// serial line. item_sale makes those over TCP.
//
//     counted_calls journal|serial CALLS
#include "bench/journal_printer.h"
#include "bench/reply_block.h"
#include "bench/sale_exchange.h"
#include "telvofm.h"
#include "tests/wire/loopback.h"

#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace bench {
namespace {

using namespace std::chrono_literals;

void require(bool isTrue, const char* what)
{
    if (!isTrue) {
        std::fprintf(stderr, "counted_calls: %s\n", what);
        std::exit(EXIT_FAILURE);
    }
}

// What the printer does when it has heard so many bytes.
struct Answer
{
    std::size_t behind;
    std::string bytes;
};

std::vector<Answer> journalOfSixteenBlocks()
{
    constexpr int blocks = 16;
    std::vector<Answer> answers;
    for (int block = 1; block <= blocks; ++block) {
        answers.push_back(
            {block == 1 ? journalRequest.size() : 1, replyBlock(largestPiece, block == blocks)});
    }
    answers.push_back({1, ""});
    return answers;
}

void serve(const wire::Connection& till, const std::vector<Answer>& answers, int calls)
{
    for (int call = 0; call < calls; ++call) {
        for (const Answer& answer : answers) {
            for (std::size_t missing = answer.behind; missing > 0;) {
                const auto bytes = till.receive(missing, 60s).value_or("");
                require(!bytes.empty(), "the printer heard no request");
                missing -= bytes.size();
            }
            if (!answer.bytes.empty()) {
                till.send(answer.bytes);
            }
        }
    }
}

void fetchJournals(int calls)
{
    wire::Listener listener;
    std::thread printer([&] { serve(listener.accept(60s), journalOfSixteenBlocks(), calls); });
    require(openFM(("127.0.0.1:" + std::to_string(listener.port())).c_str()) == 0, "no connection");
    for (int call = 0; call < calls; ++call) {
        ResultObject* const journal = createResultObject();
        require(getJournal_ResultObject(1, journal) == 0, "the journal did not come");
        destroyResultObject(journal);
    }
    printer.join();
}

void sellOnSerialLine(int calls)
{
    std::string path;
    const wire::Connection line = wire::openPseudoTerminal(path);
    require(line.isOpen(), "no pseudo-terminal could be opened");
    require(openFMBaud(("COM" + path).c_str(), 115200) == 0, "the line could not be opened");
    const std::vector<Answer> accepted = {{saleRequest().size() + 1, "\x06"}};
    std::thread printer([&] { serve(line, accepted, calls); });
    for (int call = 0; call < calls; ++call) {
        require(itemSale(1, 0, "Chlieb", 12.5, 'A', 1.5, 8.3333, "ks") == 0, "the sale failed");
    }
    printer.join();
}

} // namespace
} // namespace bench

int main(int count, char** arguments)
{
    const std::string_view kind = count == 3 ? arguments[1] : "";
    bench::require(kind == "journal" || kind == "serial", "usage: counted_calls journal|serial CALLS");
    setLogginOff();
    const int calls = std::atoi(arguments[2]);
    kind == "journal" ? bench::fetchJournals(calls) : bench::sellOnSerialLine(calls);
    closeFM();
    return EXIT_SUCCESS;
}
