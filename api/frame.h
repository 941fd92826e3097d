// The frame of every export: it finds the open device, holds its lock while the command runs, and turns
// failures into codes. No export tries, locks or catches anything itself, but for getVariableStr, which
// throws nothing. What an export logs and runs are its own copies of the caller's texts (Text), made at its
// beginning: while it waits for the lock, the caller's may change.
#pragma once

#include "api/session.h"
#include "device/device.h"
#include "device/text.h"
#include "link/telvo06fm_exception.h"

#include <mutex>
#include <optional>
#include <string>
#include <utility>

namespace telvofm {

inline constexpr int succeeded = 0;
inline constexpr int noOpenDevice = -1;

// Runs a command on the open device: 0, the code of its failure, or -1 without an open device. Exceptions of
// other types pass to the caller of the export, which is meant.
template <typename Command>
int runCommand(Command command)
{
    const auto printer = openDevice();
    if (!printer) {
        return noOpenDevice;
    }
    try {
        const std::scoped_lock lock(printer->lock);
        command(*printer);
        return succeeded;
    } catch (const Telvo06FMException& failure) {
        return failure.code;
    }
}

// As `runCommand` for commands that fetch a reply; `deliver` gets it after the lock is released, and only
// when there is one: a refusal whose code is 0 returns 0 and delivers nothing, which is meant.
template <typename Query, typename Deliver>
int runQuery(Query query, Deliver deliver)
{
    std::optional<std::string> reply;
    const int result = runCommand([&](Device& printer) { reply = query(printer); });
    if (reply) {
        deliver(std::move(*reply));
    }
    return result;
}

} // namespace telvofm
