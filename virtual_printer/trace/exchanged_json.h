// An exchange as JSON, for the control interface and for files: one object, whose bytes are written as the
// raw log writes them, so that they can be played again.
#pragma once

#include "virtual_printer/trace/exchanged.h"

#include <nlohmann/json_fwd.hpp>
#include <span>
#include <string>
#include <string_view>

namespace virtual_printer {

// On one line. Fields that are passwords are shown as "****"; the bytes are as they came.
std::string toLine(const Exchanged& exchanged);
nlohmann::ordered_json toJson(const Exchanged& exchanged);

// The members of that object in their order, each by itself: whoever wants one of them need not make all.
struct ExchangedMember
{
    std::string_view name;
    void (*write)(std::string& text, const Exchanged& exchanged);
    bool isLong = false; // it may take long to make
};
std::span<const ExchangedMember> exchangedMembers();

// Whether it shows a field of this name with this value, without making any of it.
bool showsField(const Exchanged& exchanged, std::string_view name, std::string_view value);

} // namespace virtual_printer
