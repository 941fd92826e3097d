// The electronic journal: the text of every receipt and every daily closure, in the order of their printing.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace virtual_printer {

struct Document
{
    enum class Kind
    {
        receipt,
        closure
    };

    Kind kind = Kind::receipt;
    int number = 0; // of its kind
    int day = 0;    // the number of the closure that ends its day
    std::string moment;
    std::string text; // as printed, in the code page of the link, lines ended by 0D 0A
    std::string invoice;
    std::string transaction;
};

class Journal
{
public:
    using Wanted = std::function<bool(const Document&)>;

    void add(Document document) { documents.push_back(std::move(document)); }

    [[nodiscard]] int nextReceipt() const;
    // Null before the first one.
    [[nodiscard]] const Document* lastReceipt() const;
    [[nodiscard]] std::vector<const Document*> all(const Wanted& isWanted) const;
    [[nodiscard]] std::string text(const Wanted& isWanted) const;

private:
    std::vector<Document> documents;
};

} // namespace virtual_printer
