#include "virtual_printer/printers/new_printer.h"

#include <utility>

namespace virtual_printer {
namespace {

State stateOf(Standing standing, Settings settings)
{
    State state;
    state.standing = std::make_shared<const Standing>(std::move(standing));
    state.settings = std::make_shared<const Settings>(std::move(settings));
    return state;
}

} // namespace

State readyToSell()
{
    Standing standing;
    standing.life = Life::fiscal;
    standing.dkp = "88812345678900001";
    return stateOf(std::move(standing), standardSettings());
}

State factoryNew()
{
    Standing standing;
    standing.life = Life::training;
    return stateOf(std::move(standing), factorySettings());
}

} // namespace virtual_printer
