#include "tools/replay_folder.h"

#include "tools/ending.h"
#include "tools/paths.h"

#include <random>

namespace telvofm::tools {

namespace fs = std::filesystem;

ReplayFolder::ReplayFolder(const std::string& name) : folder(pathOf(name)), isTemporary(name.empty())
{
    if (isTemporary) {
        std::random_device random;
        do {
            folder = fs::temp_directory_path() / ("telvofm-replay-" + std::to_string(random()));
        } while (!fs::create_directory(folder));
    } else if (std::error_code ignored; !fs::is_directory(folder, ignored)) {
        throw Failure(Ending::noFile, name + " is no folder; name one that is there for --files");
    }
}

ReplayFolder::~ReplayFolder()
{
    if (isTemporary) {
        std::error_code ignored;
        fs::remove_all(folder, ignored);
    }
}

std::string ReplayFolder::fileOfLine(int line) const
{
    return utf8(folder / ("line-" + std::to_string(line)));
}

} // namespace telvofm::tools
