#include "tools/raw_link.h"

#include "device/command.h"
#include "link/raw_log.h"
#include "link/serial_driver.h"
#include "link/tcp_driver.h"
#include "link/telvo06fm_exception.h"
#include "tools/console.h"
#include "tools/ending.h"

namespace telvofm::tools {
namespace {

// The others are only accepted or refused.
bool fetchesReply(const Unit& request)
{
    switch (static_cast<telvofm::Command>(static_cast<unsigned char>(request.bytes[2]))) {
    case telvofm::Command::getVariable:
    case telvofm::Command::getLastParagon:
    case telvofm::Command::getParagonIDs:
    case telvofm::Command::getJournal:
    case telvofm::Command::getJournalStructD:
    case telvofm::Command::getJournalStructZ:
    case telvofm::Command::getJournalStructU:
    case telvofm::Command::getJournalStructD1:
    case telvofm::Command::getJournalStructZ1:
    case telvofm::Command::getIntervalFPD:
    case telvofm::Command::getIntervalFPC:
    case telvofm::Command::getBCKP:
    case telvofm::Command::getRAMMP:
        return true;
    default:
        return false;
    }
}

std::string withoutChecksum(const Unit& request)
{
    const bool hasChecksum = request.checksum == Checksum::right || request.checksum == Checksum::wrong;
    return request.bytes.substr(0, request.bytes.size() - (hasChecksum ? 1 : 0));
}

} // namespace

std::unique_ptr<LinkDriver> openRawLink(const PrinterOptions& printer)
{
    constexpr unsigned standardBaud = 57600;
    requireWritable(printer.rawLog);
    if (!printer.rawLog.empty()) {
        rawLog().switchOn(nameForLibrary(printer.rawLog));
    }
    const bool isSerial = printer.address.starts_with("COM") || printer.address.starts_with(R"(\\.\COM)");
    std::unique_ptr<LinkDriver> link;
    if (isSerial) {
        link = std::make_unique<SerialDriver>(printer.address,
                                              printer.baud == 0 ? standardBaud : printer.baud, StopBits::one);
    } else {
        link = std::make_unique<TcpDriver>(printer.address);
    }
    try {
        link->open();
    } catch (const Telvo06FMException&) {
        throw Failure(Ending::noAnswer, "the printer at " + printer.address +
                                            " cannot be opened; 'telvofm doctor --printer " +
                                            printer.address + "' says why");
    }
    return link;
}

RepeatedExchange repeat(LinkDriver& link, const Exchange& exchange)
{
    const std::string request = withoutChecksum(exchange.request);
    try {
        if (fetchesReply(exchange.request)) {
            return {Outcome::reply, 0, link.query(request)};
        }
        link.sendCommand(request);
        for (const Unit& block : exchange.uploads) {
            link.sendBlocks(block.data, block.kind == UnitKind::lastBlock);
        }
        return {Outcome::accepted, 0, {}};
    } catch (const Telvo06FMException& failure) {
        return {failure.code >= 0 ? Outcome::refused : Outcome::none, failure.code, {}};
    }
}

} // namespace telvofm::tools
