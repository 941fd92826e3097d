#include "virtual_printer/answers/replies.h"

#include "virtual_printer/answers/archives.h"
#include "virtual_printer/answers/copies.h"
#include "virtual_printer/answers/extracts.h"
#include "virtual_printer/answers/images.h"
#include "virtual_printer/answers/look_up.h"
#include "virtual_printer/answers/question.h"
#include "virtual_printer/answers/variables.h"
#include "virtual_printer/answers/yearly_closure.h"

#include <algorithm>
#include <array>
#include <stdexcept>

namespace virtual_printer {
namespace {

Reply variable(const Question& question)
{
    auto text = variableText(question.fields.text(0), question);
    return text ? Reply{.data = *text + "\r\n"} : Reply{.verdict = Refusal::unknownVariable};
}

Reply verdictOnArchive(const Question& question)
{
    return {.verdict = validateArchive(question.fields.text(0), question.memory, question.now)};
}

Reply verdictOnJournal(const Question& question)
{
    const bool isWhole = question.memory.isJournalWhole(question.fields.whole(0));
    return {.verdict = isWhole ? Refusal::none : Refusal::journalDamaged};
}

// Who answers which command, by its name.
struct Answerer
{
    std::string_view command;
    Reply (*answer)(const Question&);
};

constexpr std::array answerers = {
    Answerer{"getVariable", variable},
    Answerer{"getLastParagon", lastReceipt},
    Answerer{"repeatParagon", copyOfLastReceipt},
    Answerer{"printIssuedParagon", copyOfIssuedReceipt},
    Answerer{"getParagonIDs", lookUpReceipts},
    Answerer{"getJournal", wholeJournal},
    Answerer{"saveJournalToFile", journalOfDay},
    Answerer{"printJournal", journalOfDay},
    Answerer{"getJournalStructD", documentsByDates},
    Answerer{"printJournalStructD", documentsByDates},
    Answerer{"getJournalStructD1", documentsByDates},
    Answerer{"printJournalStructD1", documentsByDates},
    Answerer{"getJournalStructZ", receiptsByNumbers},
    Answerer{"printJournalStructZ", receiptsByNumbers},
    Answerer{"getJournalStructZ1", documentsByNumbers},
    Answerer{"printJournalStructZ1", documentsByNumbers},
    Answerer{"getJournalStructU", receiptByNumber},
    Answerer{"printJournalStructU", receiptByNumber},
    Answerer{"getIntervalFPD", closuresByDates},
    Answerer{"printIntervalFPD", closuresByDates},
    Answerer{"getIntervalFPC", closuresByNumbers},
    Answerer{"printIntervalFPC", closuresByNumbers},
    Answerer{"printYearlyClosure", yearlyClosure},
    Answerer{"printJournalStructDArchive", archivedDocumentsByDates},
    Answerer{"printJournalStructUArchive", archivedReceipt},
    Answerer{"printIntervalFPDArchive", archivedClosuresByDates},
    Answerer{"validateArchiveDb", verdictOnArchive},
    Answerer{"verifyCRCELJ", verdictOnJournal},
    Answerer{"getBCKP", backupImage},
    Answerer{"getRAMMP", memoryImage},
};

} // namespace

Reply replyTo(const CommandRule& rule, const Fields& fields, const State& state, const Memory& memory,
              Moment now)
{
    const auto* const answerer = std::find_if(
        answerers.begin(), answerers.end(), [&](const Answerer& each) { return each.command == rule.name; });
    if (answerer == answerers.end()) {
        throw std::logic_error("Nobody answers " + std::string(rule.name));
    }
    return answerer->answer({rule, fields, state, memory, now});
}

} // namespace virtual_printer
