#include "tools/exchanges.h"

namespace telvofm::tools {
namespace {

void addBlock(Exchange& exchange, const Unit& block)
{
    if (!block.isFromTill) {
        if (block.checksum == Checksum::right) {
            exchange.reply += block.data;
        }
        exchange.outcome = Outcome::reply;
        return;
    }
    // A block that was refused is sent again.
    if (block.isWhole && (exchange.uploads.empty() || exchange.uploads.back().bytes != block.bytes ||
                          exchange.units.back().kind == UnitKind::accepted)) {
        exchange.uploads.push_back(block);
    }
}

// What a unit of the printer makes of an exchange that it has not answered yet.
void answer(Exchange& exchange, const Unit& unit)
{
    switch (unit.kind) {
    case UnitKind::accepted:
        exchange.outcome = Outcome::accepted;
        break;
    case UnitKind::noMoreData:
        exchange.outcome = Outcome::reply;
        break;
    case UnitKind::refused:
        if (unit.isWhole) {
            exchange.outcome = Outcome::refused;
            exchange.refusal = static_cast<unsigned char>(unit.data.front());
        }
        break;
    default:
        break;
    }
}

void add(Exchange& exchange, const Unit& unit)
{
    const bool isBlock = unit.kind == UnitKind::block || unit.kind == UnitKind::lastBlock;
    if (isBlock) {
        addBlock(exchange, unit);
    } else if (!unit.isFromTill && exchange.outcome == Outcome::none) {
        answer(exchange, unit);
    }
    exchange.units.push_back(unit);
}

} // namespace

std::vector<Exchange> exchangesOf(const std::vector<Unit>& units)
{
    std::vector<Exchange> exchanges;
    for (const Unit& unit : units) {
        if (unit.kind == UnitKind::request) {
            exchanges.push_back({unit, {}, {}, Outcome::none, 0, {}});
        } else if (!exchanges.empty()) {
            add(exchanges.back(), unit);
        }
    }
    return exchanges;
}

} // namespace telvofm::tools
