// The printer's life from factory new to read only, its clock, and what its service does.
#include "virtual_printer/fiscal/deciders.h"
#include "virtual_printer/fiscal/documents.h"
#include "virtual_printer/fiscal/ranges.h"

#include <algorithm>

namespace virtual_printer {
namespace {

// A document about the printer itself; it is no fiscal one, and wants paper and room in the journal as all
// do.
Verdict printProtocol(Draft& draft, std::string title)
{
    if (const Refusal refusal = mayBeginDocument(draft.state()); refusal != Refusal::none) {
        return refusal;
    }
    const Standing& standing = *draft.state().standing;
    Document document = newDocument(draft, Document::Kind::report);
    document.lines = {Line{.kind = Line::Kind::heading, .text = std::move(title)},
                      Line{.kind = Line::Kind::notFiscal},
                      pairOf("Time", onPaper(draft.now)),
                      pairOf("Registration code", standing.dkp),
                      pairOf("Closures", std::to_string(standing.closures)),
                      pairOf("Receipts", std::to_string(standing.receipts)),
                      pairOf("Turnover ever EUR", formatCents(standing.ever.turnover())),
                      Line{.kind = Line::Kind::cut}};
    for (const Line& line : document.lines) {
        draft.print(line);
    }
    keepDocument(draft, std::move(document));
    return {};
}

bool isRegistrationCode(std::string_view text)
{
    constexpr std::size_t digits = 17;
    return text.size() == digits && text.find_first_not_of("0123456789") == std::string_view::npos;
}

} // namespace

// All settings and pictures are those of the factory again; the memories stay.
Verdict initFiscalPrinter(Draft& draft, const Fields& /*fields*/)
{
    draft.settings() = factorySettings();
    draft.pictures().clear();
    return Refusal::none;
}

// The printer is factory new again. Receipts go on with their numbers, so that none of the journal comes
// twice, until it is fiscalized.
Verdict initFiscalMemory(Draft& draft, const Fields& /*fields*/)
{
    if (draft.state().standing->life == Life::fiscal) {
        return Refusal::alreadyFiscalized;
    }
    Standing& standing = draft.standing();
    standing.life = Life::training;
    standing.dkp.clear();
    standing.closures = 0;
    standing.day = Sums();
    standing.ever = Sums();
    standing.drawer.clear();
    draft.settings() = factorySettings();
    draft.pictures().clear();
    draft.service = Draft::Service::clearClosures;
    return Refusal::none;
}

Verdict initJournal(Draft& draft, const Fields& /*fields*/)
{
    draft.standing().documents = 0;
    draft.service = Draft::Service::clearJournal;
    return Refusal::none;
}

// What was tried in training is forgotten.
Verdict fiscalize(Draft& draft, const Fields& fields)
{
    const std::string dkp = fields.text(1);
    const bool isTraining = draft.state().standing->life == Life::training;
    Verdict verdict =
        firstOf({isTraining ? Refusal::none : Refusal::alreadyFiscalized,
                 isRegistrationCode(dkp) ? Verdict() : fields.refused(Refusal::badText, 1, "17 digits")});
    if (verdict != Refusal::none) {
        return verdict;
    }
    Standing& standing = draft.standing();
    standing.life = Life::fiscal;
    standing.dkp = dkp;
    standing.receipts = 0;
    standing.documents = 0;
    standing.ever = Sums();
    standing.drawer.clear();
    draft.service = Draft::Service::clearJournal;
    return printProtocol(draft, "FISCALIZATION");
}

Verdict defiscalize(Draft& draft, const Fields& /*fields*/)
{
    if (draft.state().standing->life != Life::fiscal) {
        return Refusal::notFiscalized;
    }
    draft.standing().life = Life::defiscalized;
    return printProtocol(draft, "DEFISCALIZATION");
}

Verdict enableInspection(Draft& draft, const Fields& /*fields*/)
{
    draft.settings().others["Inspection"] = "enabled " + toText(draft.now);
    return Refusal::none;
}

Verdict inspect(Draft& draft, const Fields& fields)
{
    Verdict verdict = setDeltaSi(draft, fields);
    return verdict == Refusal::none ? printProtocol(draft, "INSPECTION") : verdict;
}

// Whether the closure's documents are whole, the journal itself says.
Verdict verifyJournal(Draft& draft, const Fields& fields)
{
    const int closure = fields.whole(0);
    const bool exists = closure >= 1 && closure <= draft.state().standing->closures;
    return exists ? Refusal::none : Refusal::noSuchReceipt;
}

Verdict closeJournalCard(Draft& draft, const Fields& /*fields*/)
{
    draft.settings().others["Journal card"] = "closed " + toText(draft.now);
    return Refusal::none;
}

Verdict setDateTime(Draft& draft, const Fields& fields)
{
    const Moment wanted = fields.moment(0, Edge::first);
    if (wanted < draft.state().standing->lastDocument) {
        return Refusal::clockWouldGoBack;
    }
    draft.standing().clockOffset += wanted - draft.now;
    return Refusal::none;
}

// The receipt that is open goes on; displays are dark again.
Verdict resetSoftware(Draft& draft, const Fields& /*fields*/)
{
    draft.hardware().operatorDisplay.clear();
    draft.hardware().display.clear();
    draft.show(DisplayShows{});
    return Refusal::none;
}

Verdict testPrinter(Draft& draft, const Fields& fields)
{
    constexpr std::string_view pattern = "0123456789 ABCDEFGHIJKLMNOPQRSTUVWXYZ";
    switch (fields.whole(1)) {
    case 0:
        draft.print({.kind = Line::Kind::heading, .text = "TEST"});
        draft.print({.text = std::string(pattern)});
        return Refusal::none;
    case 1:
        draft.show(DisplayShows{std::string(pattern)});
        return Refusal::none;
    case 2:
        draft.show(DrawerOpens{});
        return Refusal::none;
    default:
        return fields.refused(Refusal::valueOutOfRange, 1, "0 to 2");
    }
}

// Paper and cover are no errors that a command could take away: a person does.
Verdict clearErrorStates(Draft& /*draft*/, const Fields& /*fields*/)
{
    return Refusal::none;
}

// The memory brings the backup.
Verdict restoreBackup(Draft& draft, const Fields& /*fields*/)
{
    if (draft.state().standing->closures == 0) {
        return Refusal::nothingToRestore;
    }
    draft.service = Draft::Service::restore;
    return Refusal::none;
}

} // namespace virtual_printer
