#include "virtual_printer/memory/kept_state.h"

#include "virtual_printer/memory/members.h"
#include "virtual_printer/memory/record.h"

namespace virtual_printer {
namespace {

constexpr std::string_view standingName = "standing";
constexpr std::string_view settingsName = "settings";
constexpr std::string_view picturesName = "pictures";
constexpr std::string_view savedSettingsName = "backup of settings";
constexpr std::string_view savedPicturesName = "backup of pictures";

// Parts that were not touched are the same object; touched ones may still be of the same value.
template <typename Part>
bool differ(const std::shared_ptr<const Part>& before, const std::shared_ptr<const Part>& next)
{
    return before != next && (!before || !next || *before != *next);
}

std::string headToBytes(const Receipt& receipt)
{
    RecordWriter writer;
    writer.put(membersBesideLines(receipt.document));
    writer.put(membersBesideDocument(receipt));
    return writer.bytes();
}

} // namespace

ChangedParts::ChangedParts(const State& before, const State& next)
    : standing(differ(before.standing, next.standing)), settings(differ(before.settings, next.settings)),
      pictures(differ(before.pictures, next.pictures)), receipt(differ(before.receipt, next.receipt))
{
}

KeptState::KeptState(const Database& shared)
    : database(shared),
      writePart(database.prepare("INSERT INTO parts VALUES (?, ?) "
                                 "ON CONFLICT (name) DO UPDATE SET content = excluded.content")),
      readPart(database.prepare("SELECT content FROM parts WHERE name = ?")),
      copyPart(database.prepare("INSERT INTO parts SELECT ?2, content FROM parts WHERE name = ?1 "
                                "ON CONFLICT (name) DO UPDATE SET content = excluded.content")),
      removePart(database.prepare("DELETE FROM parts WHERE name = ?")),
      writeReceiptRow(database.prepare("INSERT INTO receipt VALUES (?, ?) "
                                       "ON CONFLICT (position) DO UPDATE SET content = excluded.content")),
      readReceipt(database.prepare("SELECT content FROM receipt ORDER BY position")),
      cutReceipt(database.prepare("DELETE FROM receipt WHERE position > ?"))
{
}

bool KeptState::isEmpty() const
{
    Rows rows = readPart.rows({standingName});
    return !rows.next();
}

std::optional<State> KeptState::load() const
{
    State state;
    state.standing = loadPart<Standing>(standingName);
    if (!state.standing) {
        return std::nullopt;
    }
    state.settings = loadPart<Settings>(settingsName);
    state.pictures = loadPart<Pictures>(picturesName);
    state.receipt = loadReceipt();
    if (!state.settings || !state.pictures) {
        throw DamagedRecord();
    }
    return state;
}

template <typename Part>
std::shared_ptr<const Part> KeptState::loadPart(std::string_view name) const
{
    const Parameter parameter = name;
    Rows rows = readPart.rows(std::span(&parameter, 1));
    return rows.next() ? std::make_shared<const Part>(fromBytes<Part>(rows.bytes(0))) : nullptr;
}

std::shared_ptr<const Receipt> KeptState::loadReceipt() const
{
    Rows rows = readReceipt.rows();
    if (!rows.next()) {
        return nullptr;
    }
    Receipt receipt;
    RecordReader head(rows.bytes(0));
    head.take(membersBesideLines(receipt.document));
    head.take(membersBesideDocument(receipt));
    while (rows.next()) {
        receipt.document.lines.push_back(fromBytes<Line>(rows.bytes(0)));
    }
    return std::make_shared<const Receipt>(std::move(receipt));
}

void KeptState::write(const ChangedParts& changed, const State& before, const State& next) const
{
    if (changed.standing) {
        writePart.run({standingName, Bytes{toBytes(*next.standing)}});
    }
    if (changed.settings) {
        writePart.run({settingsName, Bytes{toBytes(*next.settings)}});
    }
    if (changed.pictures) {
        writePart.run({picturesName, Bytes{toBytes(*next.pictures)}});
    }
    if (changed.receipt) {
        writeReceipt(before.receipt.get(), next.receipt.get());
    }
}

void KeptState::writeReceipt(const Receipt* before, const Receipt* next) const
{
    if (next == nullptr) {
        constexpr std::int64_t beforeTheHead = -1;
        cutReceipt.run({beforeTheHead});
        return;
    }
    writeReceiptRow.run({std::int64_t{0}, Bytes{headToBytes(*next)}}); // nearly always changed
    const std::vector<Line>& lines = next->document.lines;
    const std::size_t known = before == nullptr ? 0 : before->document.lines.size();
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (i >= known || before->document.lines[i] != lines[i]) {
            writeReceiptRow.run({static_cast<std::int64_t>(i) + 1, Bytes{toBytes(lines[i])}});
        }
    }
    if (lines.size() < known) {
        cutReceipt.run({static_cast<std::int64_t>(lines.size())});
    }
}

void KeptState::replace(const std::optional<State>& state, const std::optional<Backup>& backup) const
{
    database.run("DELETE FROM parts; DELETE FROM receipt");
    if (state) {
        ChangedParts all(State{}, *state);
        all.standing = all.settings = all.pictures = true; // also those that are as in a new one
        write(all, State{}, *state);
    }
    if (backup) {
        writePart.run({savedSettingsName, Bytes{toBytes(*backup->settings)}});
        writePart.run({savedPicturesName, Bytes{toBytes(*backup->pictures)}});
    }
}

void KeptState::backUp() const
{
    auto settings = *loadPart<Settings>(settingsName);
    settings.password.clear();
    settings.servicePassword.clear();
    writePart.run({savedSettingsName, Bytes{toBytes(settings)}});
    copyPart.run({picturesName, savedPicturesName});
}

void KeptState::forgetBackup() const
{
    removePart.run({savedSettingsName});
    removePart.run({savedPicturesName});
}

std::optional<Backup> KeptState::backup() const
{
    Backup backup = {loadPart<Settings>(savedSettingsName), loadPart<Pictures>(savedPicturesName)};
    return backup.settings && backup.pictures ? std::optional(std::move(backup)) : std::nullopt;
}

} // namespace virtual_printer
