#include "link/link_driver.h"

#include "link/telvo06fm_exception.h"

#include <utility>

namespace telvofm {

LinkDriver::LinkDriver(std::string connectionText) : portName(std::move(connectionText)) {}

std::int64_t LinkDriver::readRaw(Byte* buffer, std::int64_t count, const void* marker)
{
    if (marker == nullptr) {
        return 0;
    }
    std::int64_t stored = 0;
    try {
        while (stored < count) {
            buffer[stored] = readByte(false, 0);
            ++stored;
            if (mustEnd()) { // a printer that never stops must not hold up who closes the link
                break;
            }
        }
    } catch (const Telvo06FMException& failure) {
        if (failure.code != code::timeout) {
            throw;
        }
    }
    return stored;
}

} // namespace telvofm
