// Where replayed calls write the files that they fetch: never where the shop's till had them.
#pragma once

#include <filesystem>
#include <string>

namespace telvofm::tools {

class ReplayFolder
{
public:
    // Without a name a folder that is made for the first file, and goes when this goes.
    explicit ReplayFolder(const std::string& name);
    ReplayFolder(const ReplayFolder&) = delete;
    ReplayFolder& operator=(const ReplayFolder&) = delete;
    ~ReplayFolder();

    // The file for what the call of this line of the log fetches, in UTF-8. Throws a Failure when no folder
    // can be made for it.
    [[nodiscard]] std::string fileOfLine(int line);

private:
    std::filesystem::path folder;
    bool isTemporary;
};

} // namespace telvofm::tools
