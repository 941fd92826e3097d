#include "virtual_printer/transport/put_off_steps.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace virtual_printer {
namespace {

bool isPutOffBy(const Step& step, std::uint64_t fault)
{
    return std::any_of(step.putOff.begin(), step.putOff.end(),
                       [fault](const PutOff& one) { return one.fault == fault; });
}

} // namespace

void PutOffSteps::add(Step step)
{
    boost::asio::steady_timer timer(executor, step.after);
    pending.emplace(following, Later{std::move(step), presentPrinter(), std::move(timer)});
    await(following++);
}

void PutOffSteps::endFault(std::uint64_t number)
{
    std::vector<std::uint64_t> putOff; // going on with one may end them all
    for (const auto& [place, later] : pending) {
        if (isPutOffBy(later.step, number)) {
            putOff.push_back(place);
        }
    }
    for (const std::uint64_t place : putOff) {
        hurry(place, number);
    }
}

void PutOffSteps::forget(const std::function<bool(const Step&)>& stays)
{
    std::vector<std::uint64_t> gone;
    for (const auto& [place, later] : pending) {
        if (!stays(later.step)) {
            gone.push_back(place);
        }
    }
    for (const std::uint64_t place : gone) {
        lose(place);
    }
}

void PutOffSteps::lose(std::uint64_t place)
{
    if (const auto node = pending.extract(place); !node.empty()) {
        drop(node.mapped().step);
    }
}

void PutOffSteps::await(std::uint64_t place)
{
    pending.at(place).timer.async_wait(
        [weak = weak_from_this(), place](const boost::system::error_code& failure) {
            if (const auto self = weak.lock(); self && !failure) {
                self->performNow(place);
            }
        });
}

// Of another printer than the one that it is of, only the lines are still to come back.
void PutOffSteps::performNow(std::uint64_t place)
{
    const auto node = pending.extract(place);
    if (node.empty()) {
        return;
    }
    const Later& later = node.mapped();
    if (later.printer == presentPrinter() || std::holds_alternative<SetLines>(later.step.action)) {
        take(later.step);
    } else {
        drop(later.step);
    }
}

// The fault that has put it off has gone: it is due so much earlier, or never.
void PutOffSteps::hurry(std::uint64_t place, std::uint64_t fault)
{
    const auto found = pending.find(place);
    if (found == pending.end()) {
        return;
    }
    Step& step = found->second.step;
    std::chrono::milliseconds earlier{0};
    bool isGone = false;
    for (const PutOff& one : step.putOff) {
        if (one.fault == fault) {
            isGone = isGone || one.goesAlong;
            earlier += one.by;
        }
    }
    std::erase_if(step.putOff, [fault](const PutOff& one) { return one.fault == fault; });
    const auto* lines = std::get_if<SetLines>(&step.action);
    const bool letsGo =
        lines != nullptr && lines->fault == fault && lines->clearToSend && lines->dataSetReady;
    if (letsGo || (!isGone && step.putOff.empty())) {
        performNow(place);
    } else if (isGone) {
        lose(place);
    } else {
        found->second.timer.expires_at(found->second.timer.expiry() - earlier);
        await(place);
    }
}

} // namespace virtual_printer
