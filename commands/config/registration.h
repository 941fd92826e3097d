// What the printer needs to register sales online: where the cash register stands, its mail, keys and
// identification, and the packets that it has not sent yet. No text of this family is converted between code
// pages, which is meant.
#pragma once

#include "device/device.h"

#include <cstdint>

namespace telvofm::config {

struct PostalAddress
{
    Text municipality;
    Text street;
    Text number;
    Text subNumber;
    Text zip;
};

struct MailServer
{
    char type;
    Text ipAddress;
    std::int16_t port; // from 32768 on a port is the negative number of the same 16 bits, which is meant
    Text localDirectory;
};

void setPosition(Device& printer, int address, const Amount& vertX, const Amount& vertY);
void setPostalAddress(Device& printer, int address, const PostalAddress& postalAddress);
void setOtherLocation(Device& printer, int address, std::string_view description);
void setEmail(Device& printer, int address, std::string_view email);
void setMailServer(Device& printer, int address, const MailServer& server);
// The printer reads the files; only their paths are sent.
void setAuthenticationKey(Device& printer, int address, std::string_view password, std::string_view filePath);
void setSubjectIdentification(Device& printer, int address, std::string_view filePath);
// The CHDU interface of the printer.
void setChdu(Device& printer, int address, char interfaceType, std::string_view interfaceTitle);
void sendUnsentPacket(Device& printer, int address);
void printUnsentPackets(Device& printer, int address);
// Asks for the packets; no reply is read.
void requestLastTransactionPackets(Device& printer, int address, int transactionCount);

} // namespace telvofm::config
