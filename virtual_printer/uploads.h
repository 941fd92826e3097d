// What tills upload behind a request: logos, which are kept by their number and printed, the picture of a
// print command, and the text of a QR code.
#pragma once

#include "virtual_printer/device_language.h"
#include "virtual_printer/logo.h"
#include "virtual_printer/paper.h"

#include <map>
#include <string>
#include <utility>

namespace virtual_printer {

class Uploads
{
public:
    explicit Uploads(Paper& printedOn) : paper(printedOn) {}

    // Writes every uploaded logo as logo-N.png into the folder.
    void writeLogosTo(std::string folder) { logoFolder = std::move(folder); }

    // Every request that has been carried out comes here; those without an upload end the one before.
    void begin(const Request& request);
    void forbid() { announced.command = 0; }
    [[nodiscard]] bool areExpected() const;
    // A block of the announced upload.
    void take(const std::string& data, bool isLast);

private:
    void keepLogo(const std::string& data);
    void printGraphic(const std::string& data);
    void print(const Logo& logo);
    [[nodiscard]] int numberOfNextLogo() const;

    Paper& paper;
    Request announced;
    std::string received;
    int picturesReceived = 0; // of the announced request
    std::map<int, Logo> logos;
    std::string logoFolder;
    int filesWritten = 0;
};

} // namespace virtual_printer
