// An assertion on its way through its parts: what is expected, of which printer and since when, and what has
// been found to be otherwise.
#pragma once

#include "virtual_printer/control/controlled_printer.h"

#include <string>
#include <vector>

namespace virtual_printer {

struct Expectation
{
    const Json& assertion;
    const ControlledPrinter& printer;
    Position since;
    std::vector<std::string> found{}; // a sentence for each difference
};

// The part of this name. Throws ControlRefusal when it is no list of objects.
const Json& listIn(const Json& assertion, const std::string& name);
// In one sentence.
std::string differenceFrom(const Json& expected, const Json& actual);

// expected_exchanges.cpp: received, executed, acknowledged, repeated
void checkExchanges(Expectation& expectation);
// expected_documents.cpp: committed
void checkDocuments(Expectation& expectation);

} // namespace virtual_printer
