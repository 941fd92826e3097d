#include "virtual_printer/memory/journal.h"

#include "virtual_printer/memory/conditions.h"
#include "virtual_printer/memory/fitting_documents.h"
#include "virtual_printer/memory/members.h"
#include "virtual_printer/memory/record.h"

#include <boost/crc.hpp>

#include <algorithm>
#include <limits>

namespace virtual_printer {
namespace {

// The checksum of everything before and of one more document; what it is looked up by counts too.
std::uint32_t continued(std::int64_t before, std::int64_t kind, std::int64_t number, std::int64_t moment,
                        std::string_view content)
{
    boost::crc_32_type checksum(static_cast<std::uint32_t>(before));
    const std::string head = wholeToBytes(kind) + wholeToBytes(number) + wholeToBytes(moment);
    checksum.process_bytes(head.data(), head.size());
    checksum.process_bytes(content.data(), content.size());
    return checksum.checksum();
}

Document documentIn(const Rows& rows)
{
    auto document = fromBytes<Document>(rows.bytes(0));
    document.closure = static_cast<int>(rows.whole(1)); // the closure may have been cleared since
    return document;
}

bool isPageOfPeriod(const DocumentQuery& query)
{
    return query.most && query.moments && !query.numbers && !query.closure && !query.invoice &&
           !query.transaction && !query.positions;
}

Parameter textOrNone(const std::string& text)
{
    return text.empty() ? Parameter() : Parameter(std::string_view(text));
}

void addPlace(std::vector<PlacesInARow>& rows, std::int64_t place)
{
    if (!rows.empty() && rows.back().second + 1 == place) {
        rows.back().second = place;
    } else {
        rows.emplace_back(place, place);
    }
}

} // namespace

Journal::Journal(const Database& shared)
    : database(shared),
      writeDocument(database.prepare("INSERT INTO documents (kind, number, closure, moment, invoice, "
                                     "till_transaction, checksum) VALUES (?, ?, ?, ?, ?, ?, ?)")),
      writeContent(database.prepare("INSERT INTO contents VALUES (last_insert_rowid(), ?)")),
      readChecksum(
          database.prepare("SELECT checksum FROM documents WHERE closure = ? ORDER BY id DESC LIMIT 1")),
      readDocument(database.prepare(
          "SELECT content, closure FROM documents JOIN contents USING (id) WHERE documents.id = ?")),
      writeClosure(database.prepare("INSERT INTO closures VALUES (?, ?, ?, ?)")), index(database)
{
}

void Journal::keep(const Document& document) const
{
    const std::string content = toBytes(document);
    const auto kind = static_cast<std::int64_t>(document.kind);
    const std::int64_t moment = secondsOf(document.moment);
    const std::int64_t checksum =
        continued(checksumOfDay(document.closure), kind, document.number, moment, content);
    writeDocument.run({kind, std::int64_t{document.number}, std::int64_t{document.closure}, moment,
                       textOrNone(document.invoice), textOrNone(document.transaction), checksum});
    writeContent.run({Bytes{content}});
    index.add(database.lastRow());
}

void Journal::keep(const Closure& closure) const
{
    writeClosure.run({std::int64_t{closure.number}, secondsOf(closure.moment), checksumOfDay(closure.number),
                      Bytes{toBytes(closure)}});
}

std::int64_t Journal::checksumOfDay(int closure) const
{
    const Parameter number = std::int64_t{closure};
    Rows rows = readChecksum.rows(std::span(&number, 1));
    return rows.next() ? rows.whole(0) : 0;
}

void Journal::clearDocuments() const
{
    database.run("DELETE FROM documents; DELETE FROM contents; UPDATE closures SET checksum = NULL");
    index.clear();
}

void Journal::clearClosures() const
{
    database.run("DELETE FROM closures; UPDATE documents SET closure = 0");
}

Journal::Ends Journal::ends() const
{
    return {database.whole("SELECT max(id) FROM documents"),
            database.whole("SELECT max(number) FROM closures")};
}

void Journal::cutBehind(const Ends& last) const
{
    for (const char* table : {"documents", "contents"}) {
        database.prepare(std::string("DELETE FROM ") + table + " WHERE id > ?").run({last.document});
    }
    database.prepare("DELETE FROM closures WHERE number > ?").run({last.closure});
    index.cutBehind(last.document);
}

void Journal::read(const DocumentQuery& query, const DocumentReader& reader) const
{
    if (query.text) {
        readFound(query, reader);
        return;
    }
    // By the index of the moments they would be sorted for each page.
    const std::string documents =
        isPageOfPeriod(query) && hasMany(*query.moments) ? "documents NOT INDEXED" : "documents";
    const Conditions conditions(query);
    // The contents are looked up for a page only, not for all that is skipped in front of it.
    const Statement select = database.prepare(
        query.most
            ? "SELECT content, closure, id FROM (SELECT id, closure FROM " + documents + conditions.text() +
                  ") JOIN contents USING (id) ORDER BY id" + (query.newestFirst ? " DESC" : "")
            : "SELECT content, closure, id FROM documents JOIN contents USING (id)" + conditions.text());
    Rows rows = select.rows(conditions.parameters());
    bool isWanted = true;
    while (isWanted && rows.next()) {
        isWanted = reader(documentIn(rows), rows.whole(2));
    }
}

// So many of all documents that to go through all of them in their order costs less than to sort these.
bool Journal::hasMany(const std::pair<Moment, Moment>& period) const
{
    constexpr std::int64_t share = 4;
    const Statement count = database.prepare("SELECT count(*) FROM documents WHERE moment BETWEEN ? AND ?");
    Rows rows = count.rows({secondsOf(period.first), secondsOf(period.second)});
    return rows.next() && rows.whole(0) * share >= ends().document;
}

// Of many, these are found long before all, as long as nobody wants them in order.
std::optional<std::vector<PlacesInARow>> Journal::fewPlacesOf(const DocumentQuery& query,
                                                              std::size_t most) const
{
    const Conditions conditions(query);
    const Statement select =
        database.prepare("SELECT id FROM documents" + std::string(conditions.withoutOrder()) + " LIMIT " +
                         std::to_string(most + 1));
    std::vector<std::int64_t> places;
    for (Rows rows = select.rows(conditions.parameters()); rows.next();) {
        places.push_back(rows.whole(0));
    }
    if (places.size() > most) {
        return std::nullopt;
    }
    std::sort(places.begin(), places.end());
    std::vector<PlacesInARow> found;
    for (const std::int64_t place : places) {
        addPlace(found, place);
    }
    return found;
}

// An index would have to be sorted for each page.
std::vector<PlacesInARow> Journal::nextPlacesOf(const DocumentQuery& query) const
{
    const Conditions conditions(query);
    const Statement select = database.prepare("SELECT id FROM documents NOT INDEXED" + conditions.text());
    std::vector<PlacesInARow> found;
    for (Rows rows = select.rows(conditions.parameters()); rows.next();) {
        addPlace(found, rows.whole(0));
    }
    return found;
}

std::optional<Document> Journal::documentAt(std::int64_t place) const
{
    const Parameter id = place;
    Rows rows = readDocument.rows(std::span(&id, 1));
    return rows.next() ? std::optional(documentIn(rows)) : std::nullopt;
}

void Journal::readFound(const DocumentQuery& query, const DocumentReader& reader) const
{
    TextSearch search(query);
    while (!goOn(search)) {
    }
    bool isWanted = true;
    for (auto found = search.found().begin(); isWanted && found != search.found().end(); ++found) {
        read({.positions = std::pair(*found, *found)}, [&](const Document& document, std::int64_t position) {
            return isWanted = reader(document, position);
        });
    }
}

bool Journal::goOn(TextSearch& search) const
{
    search.beginAt(database.whole("SELECT max(id) FROM documents"));
    constexpr auto blocksOfAStep = TextSearch::documentsOfAStep / SearchIndex::documentsOfABlock;
    std::optional<FittingDocuments> fitting;
    for (std::int64_t done = 0; done < blocksOfAStep; ++done) {
        const auto block = search.nextBlock();
        if (!block) {
            return true;
        }
        std::uint64_t found = index.find(*block, search.text());
        if (found != 0 && search.others()) {
            if (!fitting) {
                fitting.emplace(database, *search.others(), *block, blocksOfAStep - done);
            }
            found &= fitting->of(*block);
        }
        search.take(found);
    }
    return !search.nextBlock();
}

std::vector<int> Journal::numbersOf(const DocumentQuery& query) const
{
    std::vector<int> found;
    if (query.text) {
        readFound(query, [&](const Document& document, std::int64_t /*position*/) {
            found.push_back(document.number);
            return true;
        });
        return found;
    }
    const Conditions conditions(query);
    const Statement select = database.prepare("SELECT number FROM documents" + conditions.text());
    Rows rows = select.rows(conditions.parameters());
    while (rows.next()) {
        found.push_back(static_cast<int>(rows.whole(0)));
    }
    return found;
}

std::vector<Closure> Journal::closures(std::optional<std::pair<int, int>> numbers,
                                       std::optional<std::pair<Moment, Moment>> moments) const
{
    const auto [firstNumber, lastNumber] =
        numbers.value_or(std::pair(std::numeric_limits<int>::min(), std::numeric_limits<int>::max()));
    const auto [firstMoment, lastMoment] = moments.value_or(std::pair(Moment::min(), Moment::max()));
    const Statement select = database.prepare("SELECT content FROM closures WHERE number BETWEEN ? AND ? "
                                              "AND moment BETWEEN ? AND ? ORDER BY number");
    std::vector<Closure> found;
    Rows rows = select.rows(
        {std::int64_t{firstNumber}, std::int64_t{lastNumber}, secondsOf(firstMoment), secondsOf(lastMoment)});
    while (rows.next()) {
        found.push_back(fromBytes<Closure>(rows.bytes(0)));
    }
    return found;
}

bool Journal::isWhole(int closure) const
{
    const Statement selectClosure = database.prepare("SELECT checksum FROM closures WHERE number = ?");
    Rows kept = selectClosure.rows({std::int64_t{closure}});
    if (!kept.next()) {
        return false;
    }
    if (kept.isNull(0)) {
        return true;
    }
    const Statement selectDocuments =
        database.prepare("SELECT kind, number, moment, content FROM documents LEFT JOIN contents USING (id) "
                         "WHERE closure = ? ORDER BY id");
    Rows rows = selectDocuments.rows({std::int64_t{closure}});
    std::int64_t checksum = 0;
    while (rows.next()) {
        checksum = continued(checksum, rows.whole(0), rows.whole(1), rows.whole(2), rows.bytes(3));
    }
    return checksum == kept.whole(0);
}

} // namespace virtual_printer
