#include "virtual_printer/answers/images.h"

#include "virtual_printer/answers/settings_lines.h"
#include "virtual_printer/paper/text_lines.h"

#include <algorithm>

namespace virtual_printer {
namespace {

constexpr std::size_t linesOfPage = 20;

Reply imageOf(std::span<const std::string> lines)
{
    Reply reply;
    for (const std::string& line : lines) {
        reply.data.append(withoutControls(line)).append("\r\n"); // a text must not be another line
    }
    return reply;
}

std::vector<std::string> linesOf(const Settings& settings, const Pictures& pictures)
{
    std::vector<std::string> lines = settingsLines(settings);
    for (const auto& [number, picture] : pictures) {
        lines.push_back("Picture " + std::to_string(number) + "=" + std::to_string(picture.width) + " x " +
                        std::to_string(picture.height));
    }
    return lines;
}

} // namespace

Reply backupImage(const Question& question)
{
    const int page = question.fields.whole(1);
    if (page < 0) {
        return {.verdict = question.fields.refused(Refusal::valueOutOfRange, 1, "0 or more")};
    }
    const auto backup = question.memory.backup();
    if (!backup) {
        return {.verdict = Refusal::nothingToRestore};
    }
    const std::vector<std::string> lines = linesOf(*backup->settings, *backup->pictures);
    const std::span<const std::string> all = lines;
    if (page == 0) {
        return imageOf(all);
    }
    const std::size_t first = std::min((static_cast<std::size_t>(page) - 1) * linesOfPage, all.size());
    return imageOf(all.subspan(first, std::min(linesOfPage, all.size() - first)));
}

Reply memoryImage(const Question& question)
{
    std::vector<std::string> lines = linesOf(*question.state.settings, *question.state.pictures);
    for (std::string& line : standingLines(*question.state.standing)) {
        lines.push_back(std::move(line));
    }
    return imageOf(lines);
}

} // namespace virtual_printer
