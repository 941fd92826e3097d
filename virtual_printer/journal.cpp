#include "virtual_printer/journal.h"

#include <algorithm>

namespace virtual_printer {

int Journal::nextReceipt() const
{
    const Document* last = lastReceipt();
    return last == nullptr ? 1 : last->number + 1;
}

const Document* Journal::lastReceipt() const
{
    const auto last = std::find_if(documents.rbegin(), documents.rend(), [](const Document& document) {
        return document.kind == Document::Kind::receipt;
    });
    return last == documents.rend() ? nullptr : &*last;
}

std::vector<const Document*> Journal::all(const Wanted& isWanted) const
{
    std::vector<const Document*> wanted;
    for (const Document& document : documents) {
        if (isWanted(document)) {
            wanted.push_back(&document);
        }
    }
    return wanted;
}

std::string Journal::text(const Wanted& isWanted) const
{
    std::string whole;
    for (const Document* document : all(isWanted)) {
        whole += document->text;
    }
    return whole;
}

} // namespace virtual_printer
