// Archives: every year that is over and in which a daily closure was made is one, named by its four digits.
// Its documents and closures stay where they are; an archive says which of them are its own.
#pragma once

#include "virtual_printer/fiscal/refusal.h"
#include "virtual_printer/memory/memory.h"

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace virtual_printer {

// Both ends are within.
using Period = std::pair<Moment, Moment>;

int yearOf(Moment moment);
// The first and the last second of a year.
Period periodOf(int year);
// What lies in both; nothing lies between ends in the wrong order.
Period shared(const Period& one, const Period& other);

// In the order of the years.
std::vector<std::string> archiveNames(const Memory& memory, Moment now);
// Nothing when there is no such archive.
std::optional<Period> findArchive(std::string_view name, const Memory& memory, Moment now);
// Whether there is such an archive, and the journal of all its closures fits their checksums.
Refusal validateArchive(std::string_view name, const Memory& memory, Moment now);

} // namespace virtual_printer
