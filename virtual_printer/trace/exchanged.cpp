#include "virtual_printer/trace/exchanged.h"

#include <algorithm>

namespace virtual_printer {

std::string_view Exchanged::name() const
{
    switch (kind) {
    case Kind::request:
        return rule == nullptr ? "unknown" : rule->name;
    case Kind::damagedRequest:
        return "damagedRequest";
    case Kind::block:
        return "block";
    case Kind::damagedBlock:
        return "damagedBlock";
    case Kind::probe:
        break;
    }
    return "probe";
}

std::size_t Exchanged::size() const
{
    std::size_t bytes = sizeof(*this) + fromTill.size() + toTill.size() + answer.size();
    for (const std::string& field : fields) {
        bytes += sizeof(std::string) + field.size();
    }
    for (const std::string& fault : faults) {
        bytes += sizeof(std::string) + fault.size();
    }
    return bytes;
}

void Exchanged::append(std::string& all, std::string_view more)
{
    const std::size_t room = mostBytes - std::min(mostBytes, all.size());
    isCut = isCut || more.size() > room;
    all.append(more.substr(0, room));
}

} // namespace virtual_printer
