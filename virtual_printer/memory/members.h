// What the memory keeps of each structure: its members, in the order in which records have them. A member
// that is added to a structure and not here does not compile. New ones go to the end, so that older records
// can still be read; any other change is another version of the schema (memory_file.cpp).
#pragma once

#include "virtual_printer/fiscal/draft.h"

#include <concepts>
#include <tuple>
#include <type_traits>

namespace virtual_printer {

// A structure that is read from, or one that is written to.
template <typename Type, typename Structure>
concept Some = std::same_as<std::remove_const_t<Type>, Structure>;

// Records have kinds as numbers.
static_assert(static_cast<int>(Line::Kind::item) == 4 && static_cast<int>(Line::Kind::payment) == 13 &&
                  static_cast<int>(Line::Kind::cut) == 22 && static_cast<int>(Document::Kind::report) == 4 &&
                  static_cast<int>(Life::defiscalized) == 2,
              "new kinds go to the end; any other change is another version of the schema");

auto members(Some<Line> auto& line)
{
    auto& [kind, text, right, unit, vat, number, quantity, unitPrice, sum, base, foreign, isVoided] = line;
    return std::tie(kind, text, right, unit, vat, number, quantity, unitPrice, sum, base, foreign, isVoided);
}

// Of an open receipt the lines have records of their own.
auto membersBesideLines(Some<Document> auto& document)
{
    auto& [kind, number, closure, isTraining, moment, lines, total, byVat, byPayment, invoice, transaction] =
        document;
    return std::tie(kind, number, closure, isTraining, moment, total, byVat, byPayment, invoice, transaction);
}

auto members(Some<Document> auto& document)
{
    return std::tuple_cat(std::tie(document.lines), membersBesideLines(document));
}

auto membersBesideDocument(Some<Receipt> auto& receipt)
{
    auto& [document, isBeingPaid, paid, lastItem, printsVatTable] = receipt;
    return std::tie(isBeingPaid, paid, lastItem, printsVatTable);
}

auto members(Some<Sums> auto& sums)
{
    auto& [byVat, byPayment, receipts, cancelled, discounts, returns, drawerMovements] = sums;
    return std::tie(byVat, byPayment, receipts, cancelled, discounts, returns, drawerMovements);
}

auto members(Some<Standing> auto& standing)
{
    auto& [life, dkp, dayIsOpen, dayBegan, lastDocument, saleMode, day, ever, drawer, receipts, closures,
           documents, clockOffset] = standing;
    return std::tie(life, dkp, dayIsOpen, dayBegan, lastDocument, saleMode, day, ever, drawer, receipts,
                    closures, documents, clockOffset);
}

auto members(Some<Closure> auto& closure)
{
    auto& [number, moment, sums, drawer, paymentNames] = closure;
    return std::tie(number, moment, sums, drawer, paymentNames);
}

auto members(Some<VatRate> auto& rate)
{
    auto& [percent, reverseConstant] = rate;
    return std::tie(percent, reverseConstant);
}

auto members(Some<PaymentType> auto& type)
{
    auto& [name, minimum, mayOverPay] = type;
    return std::tie(name, minimum, mayOverPay);
}

auto members(Some<CodeForm> auto& form)
{
    auto& [textPosition, textFont, height, width] = form;
    return std::tie(textPosition, textFont, height, width);
}

auto members(Some<QrForm> auto& form)
{
    auto& [model, moduleWidth, errorCorrectionLevel, leftMargin, viewMode] = form;
    return std::tie(model, moduleWidth, errorCorrectionLevel, leftMargin, viewMode);
}

auto members(Some<Settings> auto& settings)
{
    auto& [password, servicePassword, vat, payments, euroExchangeRate, header, additionalHeader,
           additionalFooter, superFooter, prelines, postlines, parameters, printerParameters, others, barCode,
           qrCode, columns, printsLogo] = settings;
    return std::tie(password, servicePassword, vat, payments, euroExchangeRate, header, additionalHeader,
                    additionalFooter, superFooter, prelines, postlines, parameters, printerParameters, others,
                    barCode, qrCode, columns, printsLogo);
}

auto members(Some<Picture> auto& picture)
{
    auto& [width, height, dots] = picture;
    return std::tie(width, height, dots);
}

} // namespace virtual_printer
