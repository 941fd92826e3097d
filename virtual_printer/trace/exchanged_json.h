// An exchange as JSON, for the control interface and for files: one object, whose bytes are written as the
// raw log writes them, so that they can be played again.
#pragma once

#include "virtual_printer/trace/exchanged.h"

#include <nlohmann/json_fwd.hpp>
#include <span>
#include <string_view>

namespace virtual_printer {

// Fields that are passwords are shown as "****"; the bytes are as they came.
nlohmann::ordered_json toJson(const Exchanged& exchanged);

// The members of that object in their order, each by itself: whoever wants one of them need not make all.
struct ExchangedMember
{
    std::string_view name;
    nlohmann::ordered_json (*of)(const Exchanged&);
    bool isLong = false; // it may take long to make
};
std::span<const ExchangedMember> exchangedMembers();

} // namespace virtual_printer
