#include "virtual_printer/transport/ready_file.h"

#include <fstream>
#include <nlohmann/json.hpp>
#include <stdexcept>

namespace virtual_printer {

void forgetReadyFile(const std::filesystem::path& file)
{
    std::error_code ignored; // writing will tell
    std::filesystem::remove(file, ignored);
}

void writeReadyFile(const std::filesystem::path& file, const std::vector<ListeningPrinter>& printers,
                    const std::string& control, const std::string& web)
{
    nlohmann::json content = {{"version", TELVOFM_VERSION_TEXT}, {"printers", nlohmann::json::array()}};
    for (const ListeningPrinter& printer : printers) {
        content["printers"].push_back({{"name", printer.name}, {"address", printer.address}});
    }
    if (!control.empty()) {
        content["control"] = control;
    }
    if (!web.empty()) {
        content["web"] = web;
    }
    std::filesystem::path unfinished = file;
    unfinished += ".part";
    std::ofstream stream(unfinished);
    stream << content.dump(4) << '\n';
    stream.close();
    std::error_code failure;
    std::filesystem::rename(unfinished, file, failure);
    if (!stream || failure) {
        throw std::runtime_error("cannot write " + file.string() +
                                 "; name a file in a folder that you may write to");
    }
}

} // namespace virtual_printer
