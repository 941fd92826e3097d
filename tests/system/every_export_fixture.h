// A printer that accepts everything, and each export in turn in a session of its own with it.
#pragma once

#include "tests/system/every_export.h"
#include "tests/system/recording_printer.h"
#include "tests/unit/bitmap_file.h"
#include "tests/unit/own_folder.h"

#include <gtest/gtest.h>

namespace telvofm::test {

class EveryExport : public ::testing::Test
{
protected:
    EveryExport() { setLogginOff(); }
    ~EveryExport() override
    {
        setLogginOff();
        seRawLogginOff();
    }

    // `around` gets the call, whose result is text, and makes it.
    template <typename Around>
    void inASessionOfItsOwn(const ExportedCall& called, Around around)
    {
        const std::string address = printer.address();
        writePicture(); // the calls that write files have made something else of it
        const bool opens = called.name.starts_with("openFM");
        if (!opens) {
            ASSERT_EQ(openFM(printer.address().c_str()), 0);
        }
        if (called.name == "rawRead") {                 // it would wait for an answer
            const std::string whole = request + "\xF9"; // with its checksum byte
            rawWrite(reinterpret_cast<const unsigned char*>(whole.data()),
                     static_cast<std::int64_t>(whole.size()));
        }
        const bool sendsText = called.name == "sendUnspecifiedData" || called.name == "rawWrite";
        given.text = (opens ? address : sendsText ? request : picture).c_str();
        given.object = createResultObject();
        around([&] { return called.make(given); });
        if (called.name != "destroyResultObject") {
            destroyResultObject(given.object);
        }
        closeFM();
    }

    const OwnFolder folder;
    const std::string picture = folder.file("picture.bmp");
    RecordingPrinter printer;

private:
    void writePicture() const
    {
        const auto bytes = graphics::BitmapFile{}.bytes();
        std::ofstream file(picture, std::ios::binary);
        file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    }

    const std::string request = "\x1C\x01\xE0\x04"; // printJobCancel
    GivenArguments given;
};

} // namespace telvofm::test
