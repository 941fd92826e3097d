#include "virtual_printer/memory/journal.h"

#include "virtual_printer/memory/members.h"
#include "virtual_printer/memory/record.h"

#include <boost/crc.hpp>

#include <limits>

namespace virtual_printer {
namespace {

std::int64_t secondsOf(Moment moment)
{
    return moment.time_since_epoch().count();
}

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

// The conditions of a query and what stands for their question marks. The query must live as long.
class Conditions
{
public:
    explicit Conditions(const DocumentQuery& query)
    {
        if (!query.kinds.empty()) {
            addKinds(query.kinds);
        }
        if (query.numbers && query.numbers->first == query.numbers->second) {
            add("number = ?", {std::int64_t{query.numbers->first}}); // so that it comes before a wide period
        } else if (query.numbers) {
            add("number BETWEEN ? AND ?", {std::int64_t{query.numbers->first}, query.numbers->second});
        }
        if (query.moments) {
            add("moment BETWEEN ? AND ?",
                {secondsOf(query.moments->first), secondsOf(query.moments->second)});
        }
        if (query.closure) {
            add("closure = ?", {std::int64_t{*query.closure}});
        }
        if (query.invoice) {
            add("invoice = ?", {std::string_view(*query.invoice)});
        }
        if (query.transaction) {
            add("till_transaction = ?", {std::string_view(*query.transaction)});
        }
        if (query.position) {
            add("id = ?", {*query.position});
        }
        if (query.text) {
            add("EXISTS (SELECT 1 FROM contents WHERE contents.id = documents.id AND instr(content, ?))",
                {Bytes{*query.text}});
        }
        sql += query.onlyLast      ? " ORDER BY id DESC LIMIT 1"
               : query.newestFirst ? " ORDER BY id DESC"
                                   : " ORDER BY id";
        if (query.most || query.skip > 0) {
            constexpr std::int64_t all = -1;
            sql += " LIMIT ? OFFSET ?";
            values.insert(values.end(), {query.most.value_or(all), query.skip});
        }
    }

    [[nodiscard]] const std::string& text() const { return sql; }
    [[nodiscard]] std::span<const Parameter> parameters() const { return values; }

private:
    void add(std::string_view condition, Parameters parameters)
    {
        sql += values.empty() && sql.empty() ? " WHERE " : " AND ";
        sql += condition;
        values.insert(values.end(), parameters.begin(), parameters.end());
    }
    void addKinds(const std::vector<Document::Kind>& kinds)
    {
        std::string list;
        for (const Document::Kind kind : kinds) {
            list += (list.empty() ? "" : ", ") + std::to_string(static_cast<int>(kind));
        }
        add("kind IN (" + list + ")", {});
    }

    std::string sql;
    std::vector<Parameter> values;
};

Parameter textOrNone(const std::string& text)
{
    return text.empty() ? Parameter() : Parameter(std::string_view(text));
}

} // namespace

Journal::Journal(const Database& shared)
    : database(shared),
      writeDocument(database.prepare("INSERT INTO documents (kind, number, closure, moment, invoice, "
                                     "till_transaction, checksum) VALUES (?, ?, ?, ?, ?, ?, ?)")),
      writeContent(database.prepare("INSERT INTO contents VALUES (last_insert_rowid(), ?)")),
      readChecksum(
          database.prepare("SELECT checksum FROM documents WHERE closure = ? ORDER BY id DESC LIMIT 1")),
      writeClosure(database.prepare("INSERT INTO closures VALUES (?, ?, ?, ?)"))
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
}

void Journal::read(const DocumentQuery& query, const DocumentReader& reader) const
{
    const Conditions conditions(query);
    // The contents are looked up for a page only, not for all that is skipped in front of it.
    const Statement select = database.prepare(
        query.most
            ? "SELECT content, closure, id FROM (SELECT id, closure FROM documents" + conditions.text() +
                  ") JOIN contents USING (id) ORDER BY id" + (query.newestFirst ? " DESC" : "")
            : "SELECT content, closure, id FROM documents JOIN contents USING (id)" + conditions.text());
    Rows rows = select.rows(conditions.parameters());
    bool isWanted = true;
    while (isWanted && rows.next()) {
        auto document = fromBytes<Document>(rows.bytes(0));
        document.closure = static_cast<int>(rows.whole(1)); // the closure may have been cleared since
        isWanted = reader(document, rows.whole(2));
    }
}

std::vector<int> Journal::numbersOf(const DocumentQuery& query) const
{
    const Conditions conditions(query);
    const Statement select = database.prepare("SELECT number FROM documents" + conditions.text());
    std::vector<int> found;
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
