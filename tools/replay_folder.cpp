#include "tools/replay_folder.h"

#include "tools/ending.h"
#include "tools/paths.h"

#include <random>

namespace telvofm::tools {

namespace fs = std::filesystem;

namespace {

fs::path newTemporaryFolder()
{
    std::random_device random;
    std::error_code failure;
    const fs::path parent = fs::temp_directory_path(failure);
    fs::path folder;
    bool isNew = false;
    while (!isNew && !failure) {
        folder = parent / ("telvofm-replay-" + std::to_string(random()));
        isNew = fs::create_directory(folder, failure);
    }
    if (failure) {
        throw Failure(Ending::noFile,
                      "the calls of this log write files, and there is no folder for temporary "
                      "files; name a folder for them with --files");
    }
    return folder;
}

} // namespace

ReplayFolder::ReplayFolder(const std::string& name) : folder(pathOf(name)), isTemporary(name.empty())
{
    if (std::error_code ignored; !isTemporary && !fs::is_directory(folder, ignored)) {
        throw Failure(Ending::noFile, name + " is no folder; name one that is there for --files");
    }
}

ReplayFolder::~ReplayFolder()
{
    if (isTemporary && !folder.empty()) {
        std::error_code ignored;
        fs::remove_all(folder, ignored);
    }
}

std::string ReplayFolder::fileOfLine(int line)
{
    if (folder.empty()) {
        folder = newTemporaryFolder();
    }
    return utf8(folder / ("line-" + std::to_string(line)));
}

} // namespace telvofm::tools
