// Lines as deciders make them; kinds that carry more than a text or a sum are filled in by who sells them.
#pragma once

#include "virtual_printer/fiscal/document.h"

#include <string>
#include <utility>

namespace virtual_printer {

inline Line textLine(Line::Kind kind, std::string text, std::string right = {})
{
    Line line;
    line.kind = kind;
    line.text = std::move(text);
    line.right = std::move(right);
    return line;
}

inline Line sumLine(Line::Kind kind, std::string text, Cents sum)
{
    Line line;
    line.kind = kind;
    line.text = std::move(text);
    line.sum = sum;
    return line;
}

} // namespace virtual_printer
