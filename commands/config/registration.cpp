#include "commands/config/registration.h"

namespace telvofm::config {
namespace {

// The first field of the command that all kinds of location share.
constexpr char positionKind = '0';
constexpr char addressKind = '1';
constexpr char otherKind = '2';

constexpr int coordinateDecimals = 10;

} // namespace

void setPosition(Device& printer, int address, const Amount& vertX, const Amount& vertY)
{
    printer.send(printer.request(address, Command::setLocation)
                     .character(positionKind)
                     .amount(vertX, coordinateDecimals)
                     .amount(vertY, coordinateDecimals));
}

void setPostalAddress(Device& printer, int address, const PostalAddress& postalAddress)
{
    printer.send(printer.request(address, Command::setLocation)
                     .character(addressKind)
                     .raw(postalAddress.municipality)
                     .raw(postalAddress.street)
                     .raw(postalAddress.number)
                     .raw(postalAddress.subNumber)
                     .raw(postalAddress.zip));
}

void setOtherLocation(Device& printer, int address, std::string_view description)
{
    printer.send(printer.request(address, Command::setLocation).character(otherKind).raw(description));
}

void setEmail(Device& printer, int address, std::string_view email)
{
    printer.send(printer.request(address, Command::setEmail).raw(email));
}

void setMailServer(Device& printer, int address, const MailServer& server)
{
    printer.send(printer.request(address, Command::setSMTP)
                     .character(server.type)
                     .raw(server.ipAddress)
                     .number(server.port)
                     .raw(server.localDirectory));
}

void setAuthenticationKey(Device& printer, int address, std::string_view password, std::string_view filePath)
{
    printer.send(printer.request(address, Command::setAutKey).raw(password).raw(filePath));
}

void setSubjectIdentification(Device& printer, int address, std::string_view filePath)
{
    printer.send(printer.request(address, Command::setSubjectIDData).raw(filePath));
}

void setChdu(Device& printer, int address, char interfaceType, std::string_view interfaceTitle)
{
    printer.send(printer.request(address, Command::setPCHDU).character(interfaceType).raw(interfaceTitle));
}

void sendUnsentPacket(Device& printer, int address)
{
    printer.send(printer.request(address, Command::sendUnsentSFSpacket));
}

void printUnsentPackets(Device& printer, int address)
{
    printer.send(printer.request(address, Command::printUnsentSFSpackets));
}

void requestLastTransactionPackets(Device& printer, int address, int transactionCount)
{
    printer.send(printer.request(address, Command::getLastTransactionPackets).number(transactionCount));
}

} // namespace telvofm::config
