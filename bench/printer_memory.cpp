// What the virtual printer's memory costs: commits with and without synchronisation, starting with 100,000
// receipts of five items, finding some of them again, and the memory that this takes; the same of the whole
// program when it is named, with a till that asks it and reads the whole journal. Databases lie in a folder
// below the current one: the disk there is what is measured. Fails when a start takes 100 ms, a look-up 50
// ms, a page 100 ms, or the program 60 MB.
//
//     printer_memory [RECEIPTS [PRINTER-PROGRAM]]
#include "bench/asking_till.h"
#include "bench/printer_process.h"
#include "bench/promises.h"
#include "virtual_printer/memory/text_search.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <numeric>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

using namespace virtual_printer;
using Clock = std::chrono::steady_clock;

constexpr int itemsOfReceipt = 5;
constexpr int receiptsOfDay = 200;
constexpr double mostOfAStart = 100; // milliseconds
constexpr double mostOfALookUp = 50;
constexpr double mostOfAPage = 100;
constexpr double mostMemory = 60; // megabytes
constexpr Moment firstMoment{std::chrono::sys_days(std::chrono::year(2026) / 1 / 1).time_since_epoch()};

double microsecondsSince(Clock::time_point start)
{
    return std::chrono::duration<double, std::micro>(Clock::now() - start).count();
}

double median(std::vector<double> values)
{
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

double sumOf(const std::vector<double>& values)
{
    return std::accumulate(values.begin(), values.end(), 0.0);
}

// Of this process, from the system.
double residentMegabytes()
{
    std::ifstream status("/proc/self/status");
    constexpr double kilobytesOfMegabyte = 1024;
    for (std::string word; status >> word;) {
        if (word == "VmRSS:") {
            double kilobytes = 0;
            status >> kilobytes;
            return kilobytes / kilobytesOfMegabyte;
        }
    }
    return 0;
}

Line itemLine(int number)
{
    Line line;
    line.kind = Line::Kind::item;
    line.text = "Mlieko polotucne " + std::to_string(number);
    line.unit = "ks";
    line.vat = 'A';
    line.quantity = 1000;
    line.unitPrice = line.sum = 129;
    return line;
}

Document receiptOf(int number)
{
    Document receipt;
    receipt.number = number;
    receipt.closure = number / receiptsOfDay + 1;
    receipt.moment = firstMoment + std::chrono::minutes(number);
    receipt.invoice = "2026/" + std::to_string(number);
    receipt.transaction = "T" + std::to_string(number);
    for (const char* const row : {"Potraviny s.r.o.", "Hlavna 1, Bratislava", "ICO 12345678"}) {
        receipt.lines.push_back({.kind = Line::Kind::heading, .text = row});
    }
    for (int item = 0; item < itemsOfReceipt; ++item) {
        receipt.lines.push_back(itemLine(item));
        receipt.total += receipt.lines.back().sum;
    }
    receipt.lines.push_back({.kind = Line::Kind::total, .text = "TOTAL", .sum = receipt.total});
    receipt.lines.push_back({.kind = Line::Kind::vatSum, .vat = 'A', .number = 23, .sum = receipt.total});
    receipt.lines.push_back(
        {.kind = Line::Kind::payment, .text = "Hotovost", .number = 1, .sum = receipt.total});
    receipt.lines.push_back({.kind = Line::Kind::cut});
    receipt.byVat['A'] = receipt.total;
    receipt.byPayment[1] = receipt.total;
    return receipt;
}

// What the disk takes by itself for about as much as a document writes.
class BareDisk
{
public:
    explicit BareDisk(const std::string& name) : file(open(name.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600))
    {
        for (std::size_t i = 0; i < writes; ++i) {
            synchronize();
        }
    }
    BareDisk(const BareDisk&) = delete;
    BareDisk& operator=(const BareDisk&) = delete;
    ~BareDisk() { close(file); }

    // Overwrites, as the log does once it has its size.
    void synchronize()
    {
        if (pwrite(file, data.data(), data.size(), static_cast<off_t>(data.size() * (next++ % writes))) < 0 ||
            fdatasync(file) != 0) {
            std::abort();
        }
    }

private:
    static constexpr std::size_t writes = 128;
    static constexpr std::size_t sizeOfADocument = 32'768;

    int file;
    std::size_t next = 0;
    std::string data = std::string(sizeOfADocument, 'x');
};

// Sells receipts line by line as a till does and prints what a commit takes.
void measureCommits(const char* title, Memory memory, BareDisk& disk)
{
    constexpr int receipts = 400;
    std::vector<double> ofLines;
    std::vector<double> ofDocuments;
    std::vector<double> ofDisk;
    State state;
    const auto commit = [&](const Draft& draft, std::vector<double>& durations) {
        const auto started = Clock::now();
        memory.commit(state, draft);
        durations.push_back(microsecondsSince(started));
        state = draft.next;
    };
    for (int number = 1; number <= receipts; ++number) {
        const Document whole = receiptOf(number);
        Draft begin(state, whole.moment);
        begin.beginReceipt(Receipt());
        commit(begin, ofLines);
        for (const Line& line : whole.lines) {
            Draft draft(state, whole.moment);
            draft.receipt().document.lines.push_back(line);
            commit(draft, ofLines);
        }
        Draft end(state, whole.moment);
        end.endReceipt();
        ++end.standing().documents;
        end.keep(whole);
        commit(end, ofDocuments);
        const auto started = Clock::now();
        disk.synchronize();
        ofDisk.push_back(microsecondsSince(started));
    }
    constexpr double microsecondsOfSecond = 1e6;
    const double seconds = (sumOf(ofLines) + sumOf(ofDocuments)) / microsecondsOfSecond;
    std::printf("%-10s  a line %6.1f us   a document %8.1f us (the disk alone %8.1f us)   receipts/s %6.0f   "
                "commits/s %7.0f\n",
                title, median(ofLines), median(ofDocuments), median(ofDisk), receipts / seconds,
                static_cast<double>(ofLines.size() + ofDocuments.size()) / seconds);
}

void fill(Memory& memory, int receipts)
{
    State state;
    constexpr int atOnce = 1000;
    for (int number = 1; number <= receipts;) {
        Draft draft(state, firstMoment);
        for (int i = 0; i < atOnce && number <= receipts; ++i, ++number) {
            draft.keep(receiptOf(number));
            if (number % receiptsOfDay == 0) {
                draft.keep(Closure{.number = number / receiptsOfDay,
                                   .moment = receiptOf(number).moment,
                                   .sums = {},
                                   .drawer = {}});
            }
        }
        draft.standing().documents = number;
        memory.commit(state, draft);
        state = draft.next;
    }
}

void measureStart(const char* title, const std::filesystem::path& file)
{
    const auto start = Clock::now();
    const Memory memory(file);
    const bool isLoaded = memory.load().has_value();
    std::printf("%s: %.2f ms%s\n", title, microsecondsSince(start) / 1000,
                isLoaded ? "" : " (nothing there)");
}

// Says the median, in milliseconds.
template <typename Search>
double measureSearch(const char* title, Search search)
{
    std::vector<double> durations;
    std::size_t found = 0;
    for (int round = 0; round < 9; ++round) {
        const auto start = Clock::now();
        found = search().size();
        durations.push_back(microsecondsSince(start));
    }
    std::printf("%-44s %8zu found   first %8.2f ms   median %8.2f ms\n", title, found,
                durations.front() / 1000, median(durations) / 1000);
    return median(durations) / 1000;
}

// From nothing until it listens, with the file as its memory.
void measureStartOfProgram(const std::string& program, const std::filesystem::path& file,
                           bench::Promises& promises)
{
    std::vector<double> durations;
    for (int round = 0; round < 9; ++round) {
        const auto start = Clock::now();
        const bench::PrinterProcess process(program, file.parent_path(), {file.stem().string()});
        durations.push_back(microsecondsSince(start));
    }
    std::printf("start of the program: first %.1f ms, median %.1f ms\n", durations.front() / 1000,
                median(durations) / 1000);
    promises.check("start of the program", median(durations) / 1000, mostOfAStart, "ms");
}

// What a till waits for its answers, and what the program takes for them and for the whole journal.
void measureProgram(const std::string& program, const std::filesystem::path& file, int receipts,
                    bench::Promises& promises)
{
    constexpr unsigned char lookUp = 0xAF;
    constexpr unsigned char byNumber = 0x99;
    constexpr unsigned char byNumbers = 0x98;
    constexpr unsigned char byDates = 0x97;
    constexpr unsigned char wholeJournal = 0x9F;
    struct Question
    {
        const char* title;
        unsigned char command;
        std::vector<std::string> fields;
        std::size_t blocks = SIZE_MAX;
    };
    const int middle = receipts / 2;
    const Document found = receiptOf(middle);
    const std::string date = toText(found.moment).substr(0, 10);
    const std::vector<Question> questions = {
        {"program: look-up by number", lookUp, {"N", std::to_string(middle)}},
        {"program: look-up by date", lookUp, {"D", date}},
        {"program: look-up by closure", lookUp, {"Z", std::to_string(middle / receiptsOfDay)}},
        {"program: look-up by invoice", lookUp, {"I", found.invoice}},
        {"program: look-up by transaction", lookUp, {"T", found.transaction}},
        {"program: receipt by number", byNumber, {std::to_string(middle)}},
        {"program: extract by numbers", byNumbers, {std::to_string(middle), std::to_string(middle + 99)}},
        {"program: extract by dates", byDates, {"P", date + " 10:00", date + " 11:59"}},
        {"program: first block of the whole journal", wholeJournal, {}, 1},
        {"program: first block of all receipts", byDates, {"P", "", ""}, 1},
        {"program: first block of all numbers", lookUp, {"N", ""}, 1}};
    const bench::PrinterProcess process(program, file.parent_path(), {file.stem().string()});
    bench::AskingTill till(process.addresses.front());
    for (const Question& question : questions) {
        const double duration = measureSearch(question.title, [&] {
            return std::string(till.ask(question.command, question.fields, question.blocks), ' ');
        });
        promises.check(question.title, duration, mostOfALookUp, "ms");
    }
    const auto start = Clock::now();
    const std::size_t journal = till.ask(wholeJournal, {});
    std::printf("program: a journal of %zu bytes read in %.0f ms\n", journal,
                microsecondsSince(start) / 1000);
    const double memory = process.mostResidentMegabytes();
    std::printf("program: resident %.1f MB, at most %.1f MB\n", process.residentMegabytes(), memory);
    promises.check("resident memory of the program", memory, mostMemory, "MB");
}

void measureSearches(const Memory& memory, int receipts, bench::Promises& promises)
{
    const auto measureLookUp = [&](const char* title, auto search) {
        promises.check(title, measureSearch(title, search), mostOfALookUp, "ms");
    };
    const auto measurePage = [&](const char* title, const DocumentQuery& query) {
        const double duration = measureSearch(title, [&] { return memory.documents(query); });
        promises.check(title, duration, mostOfAPage, "ms");
    };
    const std::vector<Document::Kind> onlyReceipts = {Document::Kind::receipt};
    const int middle = receipts / 2;
    const Moment day = receiptOf(middle).moment;
    measureLookUp("by number", [&] {
        return memory.documents({.kinds = onlyReceipts, .numbers = std::pair(middle, middle)});
    });
    measureLookUp("by numbers, an extract", [&] {
        return memory.documents({.kinds = onlyReceipts, .numbers = std::pair(middle, middle + 99)});
    });
    measureLookUp("by date, the numbers of a day", [&] {
        return memory.numbersOf({.moments = std::pair(day, day + std::chrono::hours(24))});
    });
    measureLookUp("by date, an extract",
                  [&] { return memory.documents({.moments = std::pair(day, day + std::chrono::hours(2))}); });
    measureLookUp("by closure, an extract",
                  [&] { return memory.documents({.closure = middle / receiptsOfDay}); });
    measureLookUp("by invoice", [&] { return memory.numbersOf({.invoice = receiptOf(middle).invoice}); });
    measureLookUp("by transaction",
                  [&] { return memory.documents({.transaction = receiptOf(middle).transaction}); });
    measureLookUp("by an invoice that there is none of",
                  [&] { return memory.documents({.invoice = "none"}); });
    measureLookUp("the last receipt",
                  [&] { return memory.documents({.kinds = onlyReceipts, .onlyLast = true}); });
    measureLookUp("the last of a kind that there is none of",
                  [&] { return memory.documents({.kinds = {Document::Kind::report}, .onlyLast = true}); });
    measureSearch("the numbers of all", [&] { return memory.numbersOf({.kinds = onlyReceipts}); });
    measureSearch("all closures", [&] { return memory.closures({}, {}); });
    // A page, as whoever looks for something gets it.
    constexpr int page = 25;
    const std::pair all(firstMoment, receiptOf(receipts).moment);
    measurePage("the last page of all days",
                {.moments = all, .newestFirst = true, .most = page, .skip = receipts - page});
    measurePage(
        "the same, of one kind",
        {.kinds = onlyReceipts, .moments = all, .newestFirst = true, .most = page, .skip = receipts - page});
    const std::string rare = "2026/" + std::to_string(middle);
    measurePage("a page by a text that few have", {.text = rare, .newestFirst = true, .most = page});
    measurePage("a page by a text that none has", {.text = "nowhere", .newestFirst = true, .most = page});
    measurePage("the last page by a text that all have",
                {.text = "mlieko", .newestFirst = true, .most = page, .skip = receipts - page});
    measurePage("the same, of one kind", {.kinds = onlyReceipts,
                                          .text = "mlieko",
                                          .newestFirst = true,
                                          .most = page,
                                          .skip = receipts - page});
    measureSearch("one step of a search", [&] {
        TextSearch search({.text = "nowhere", .newestFirst = true});
        memory.goOn(search);
        return search.found();
    });
    measureSearch("the check of a closure",
                  [&] { return std::vector<bool>(memory.isJournalWhole(middle / receiptsOfDay) ? 1 : 0); });
}

void measure(int receipts, const std::string& program, bench::Promises& promises)
{
    const std::filesystem::path folder = "printer_memory.folder";
    std::filesystem::remove_all(folder);
    std::filesystem::create_directories(folder);
    const auto file = folder / "printer.db";

    BareDisk disk(folder / "bare");
    measureCommits("on disk", Memory(folder / "commits.db"), disk);
    measureCommits("temporary", Memory(), disk);

    const double before = residentMegabytes();
    const auto killed = folder / "killed.db";
    {
        Memory memory(file);
        fill(memory, receipts);
        std::filesystem::copy(file, killed); // with the log, as the end of the process would leave them
        std::filesystem::copy(file.string() + "-wal", killed.string() + "-wal");
    }
    std::printf("%d receipts: %.0f bytes on disk each\n", receipts,
                static_cast<double>(std::filesystem::file_size(file)) / receipts);
    measureStart("start", file);
    measureStart("start after a kill", killed);
    if (!program.empty()) {
        measureStartOfProgram(program, file, promises);
        measureProgram(program, file, receipts, promises);
    }
    const Memory memory(file);
    measureSearches(memory, receipts, promises);
    std::printf("resident: %.1f MB, %.1f MB of it before\n", residentMegabytes(), before);

    Memory temporary;
    fill(temporary, receipts);
    std::printf("resident with as many in a temporary memory: %.1f MB\n", residentMegabytes());
    std::filesystem::remove_all(folder);
}

} // namespace

int main(int count, char** arguments)
{
    constexpr int usualReceipts = 100'000;
    try {
        bench::Promises promises;
        measure(count > 1 ? std::atoi(arguments[1]) : usualReceipts, count > 2 ? arguments[2] : "", promises);
        return promises.areKept() ? 0 : 1;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "printer_memory: %s\n", failure.what());
        return 1;
    }
}
