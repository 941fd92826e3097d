// The command-line tool `telvofm`.
#include "api/telvofm.h"
#include "tools/decode.h"

#include <CLI/CLI.hpp>
#include <cstdio>
#include <fstream>
#include <iterator>

namespace {

int decode(const std::string& path, bool isSerial)
{
    std::ifstream file(path, std::ios::binary);
    const std::string rawLog{std::istreambuf_iterator<char>(file), {}};
    if (!file.is_open() || file.bad()) {
        std::fprintf(stderr, "telvofm: %s cannot be read; name a raw log as setRawLogginOn writes it\n",
                     path.c_str());
        return 1;
    }
    std::fputs(telvofm::tools::decodeRawLog(rawLog, isSerial ? telvofm::tools::codePage852
                                                             : telvofm::tools::windows1250)
                   .c_str(),
               stdout);
    return 0;
}

int run(int count, char** arguments)
{
    CLI::App app("Tools around the TelvoFM library");
    app.set_version_flag("--version", "telvofm " TELVOFM_VERSION);
    app.require_subcommand(1);
    std::string path;
    bool isSerial = false;
    auto* decoding = app.add_subcommand("decode", "Show a raw log as an exchange, line by line");
    decoding->add_option("RAWLOG", path, "A file that setRawLogginOn has made")
        ->required()
        ->check(CLI::ExistingFile);
    decoding->add_flag("--serial", isSerial, "The log is of a serial link: texts are in code page 852");
    CLI11_PARSE(app, count, arguments);
    return decode(path, isSerial);
}

} // namespace

int main(int count, char** arguments)
{
    try {
        return run(count, arguments);
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "telvofm: %s\n", failure.what());
        return 1;
    }
}
