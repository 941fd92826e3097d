// The forms of the lines that the library writes to its call log, and how a line is taken apart by one.
#pragma once

#include "tools/export_table.h"

#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace telvofm::tools {

struct LineForm
{
    std::string_view function; // empty: the line says nothing of a call
    std::string_view form;
};

std::span<const LineForm> lineForms();

// What every line of the form begins with.
std::string_view headOf(const LineForm& form);

// Whether what came back stands at its end, which may go on over several lines.
bool endsWithResult(const LineForm& form);

struct LineValues
{
    std::map<std::string, std::string, std::less<>> parameters; // by name, as they are given to the function
    std::optional<std::string> result;
    bool isRounded = false; // a number has as many digits as the log holds at most
};

// Nothing when the line is not of this form. `function` is null where the form has none.
std::optional<LineValues> takeApart(const LineForm& form, const Export* function, std::string_view line);

} // namespace telvofm::tools
