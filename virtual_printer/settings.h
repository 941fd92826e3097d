// The commands that the printer only has to remember: what each sets, and how many of its leading fields are
// passwords, which are neither printed nor kept.
#pragma once

#include "device/command.h"

#include <array>
#include <cstddef>
#include <string_view>

namespace virtual_printer {

struct Setting
{
    telvofm::Command command;
    std::string_view title;
    std::size_t passwords = 0;
    bool hasKey = false; // the first field behind the passwords tells which of several is set
};

constexpr std::array settings = {
    Setting{telvofm::Command::printJobCancel, "Printing cancelled"},
    Setting{telvofm::Command::confirmNote, "Note confirmed"},
    Setting{telvofm::Command::synchronizationToPPEKK, "Synchronized"},
    Setting{telvofm::Command::opravaDokladu, "Correction"},
    Setting{telvofm::Command::popis0DPH, "Exemption from VAT"},
    Setting{telvofm::Command::setV48, "V48", 1},
    Setting{telvofm::Command::printBC, "Bar code"},
    Setting{telvofm::Command::freeID, "Free identifier"},
    Setting{telvofm::Command::swReset, "Reset", 1},
    Setting{telvofm::Command::testTelvoFM, "Test", 1},
    Setting{telvofm::Command::getLastTransactionPackets, "Last transactions"},
    Setting{telvofm::Command::setAllVats, "VAT rates", 1},
    Setting{telvofm::Command::setVAT, "VAT rate", 1, true},
    Setting{telvofm::Command::setSubjectIDData, "Subject's data"},
    Setting{telvofm::Command::sendUnsentSFSpacket, "Unsent packets sent"},
    Setting{telvofm::Command::printUnsentSFSpackets, "Unsent packets printed"},
    Setting{telvofm::Command::setAutKey, "Authentication key", 1},
    Setting{telvofm::Command::setSMTP, "Mail server"},
    Setting{telvofm::Command::setEmail, "Mail address"},
    Setting{telvofm::Command::fiscalization, "Fiscalization", 1},
    Setting{telvofm::Command::defiscalizationFM, "Defiscalization", 1},
    Setting{telvofm::Command::setEuroExchangeRate, "Exchange rate"},
    Setting{telvofm::Command::setPRNBd, "Printer's speed"},
    Setting{telvofm::Command::setPrinterType, "Printer type", 1},
    Setting{telvofm::Command::setPassword, "Password", 2},
    Setting{telvofm::Command::setPaymentType, "Payment", 0, true},
    Setting{telvofm::Command::setPaymentType2, "Named payment", 0, true},
    Setting{telvofm::Command::setHeader, "Header line", 1, true},
    Setting{telvofm::Command::setParameter, "Parameter", 1, true},
    Setting{telvofm::Command::setPParameter, "Printer's parameter", 1, true},
    Setting{telvofm::Command::setDateTime, "Date and time"},
    Setting{telvofm::Command::setAdditionalHeader, "Additional header"},
    Setting{telvofm::Command::setAdditionalFooter, "Additional footer"},
    Setting{telvofm::Command::setSuperFooter, "Super footer"},
    Setting{telvofm::Command::setPreline, "Line before"},
    Setting{telvofm::Command::setPostline, "Line after"},
    Setting{telvofm::Command::printDisplay, "Display", 0, true},
    Setting{telvofm::Command::clearDisplay, "Display cleared"},
    Setting{telvofm::Command::setDispF, "Display format", 1},
    Setting{telvofm::Command::setEscapeSequence, "Escape sequence"},
    Setting{telvofm::Command::setLocation, "Location"},
    Setting{telvofm::Command::setPCHDU, "Interface"},
    Setting{telvofm::Command::setBCparm, "Bar code form"},
    Setting{telvofm::Command::setQRparm, "QR code form"},
    Setting{telvofm::Command::setPRNcolumns, "Printer's columns"},
    Setting{telvofm::Command::setDeltaSI, "Delta", 1},
    Setting{telvofm::Command::clearErrorStates, "Errors cleared"},
    Setting{telvofm::Command::initFP, "Printer initialized", 1},
    Setting{telvofm::Command::initELJ, "Journal initialized", 1},
    Setting{telvofm::Command::initFM, "Fiscal memory initialized", 1},
    Setting{telvofm::Command::verifyCRCELJ, "Journal verified"},
    Setting{telvofm::Command::inspectionEnabled, "Inspection enabled", 1},
    Setting{telvofm::Command::inspectionE1, "Inspection", 1},
    Setting{telvofm::Command::closeELJcard, "Journal card closed"},
    Setting{telvofm::Command::restoreBCKP, "Backup restored", 1},
    Setting{telvofm::Command::validateArchiveDb, "Archive validated"},
};

// Null for a command that sets nothing.
constexpr const Setting* findSetting(unsigned char command)
{
    for (const Setting& setting : settings) {
        if (static_cast<unsigned char>(setting.command) == command) {
            return &setting;
        }
    }
    return nullptr;
}

} // namespace virtual_printer
