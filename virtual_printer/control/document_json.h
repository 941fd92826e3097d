// Documents and sums as the control interface shows them. Amounts are texts with two decimals ("12.50"): a
// JSON number is none that money can be kept in.
#pragma once

#include "virtual_printer/control/message.h"
#include "virtual_printer/fiscal/draft.h"

#include <optional>
#include <string_view>

namespace virtual_printer {

std::string_view nameOf(Document::Kind kind);
std::optional<Document::Kind> documentKindCalled(std::string_view name);

// Its items, VAT, payments, and its text as the paper has it. The settings give names and width, `position`
// is its place in the journal, 0 while it is open.
Json toJson(const Document& document, const Settings& settings, std::int64_t position);
Json toJson(const Sums& sums, const PaymentNames& names);
Json toJson(const Closure& closure);

Json paymentsToJson(const ByPayment& payments, const PaymentNames& names);
PaymentNames namesIn(const Settings& settings);

} // namespace virtual_printer
