#include "tools/raw_log_reader.h"

#include <charconv>

namespace telvofm::tools {
namespace {

class Reader
{
public:
    void readLine(std::string_view line, bool isLast)
    {
        constexpr std::size_t prefixSize = 3;
        ++number;
        if (line.ends_with('\r')) {
            line.remove_suffix(1);
        }
        const bool isFromTill = line.starts_with("C: ");
        if (isFromTill || line.starts_with("S: ")) {
            log.runs.push_back({number, isFromTill, {}});
            readPairs(line.substr(prefixSize), isLast);
        } else if (!line.empty()) {
            damage("not a line of a raw log");
        }
    }

    // What is written begins with its direction, and a byte behind it.
    void end()
    {
        const bool isCutOff = !log.runs.empty() && log.runs.back().bytes.empty() &&
                              (log.damages.empty() || log.damages.back().line < log.runs.back().line);
        if (isCutOff) {
            log.damages.push_back({log.runs.back().line, "the log is cut off in front of a byte"});
        }
    }

    RawLog log;

private:
    // A pair has a blank behind it, unless the log was cut off.
    void readPairs(std::string_view pairs, bool isLast)
    {
        while (!pairs.empty()) {
            const std::string_view pair = pairs.substr(0, pairs.find(' '));
            pairs.remove_prefix(std::min(pair.size() + 1, pairs.size()));
            unsigned value = 0;
            const char* const end = pair.data() + pair.size();
            const auto parsed = std::from_chars(pair.data(), end, value, 16);
            if (pair.size() == 2 && parsed.ec == std::errc() && parsed.ptr == end) {
                log.runs.back().bytes.push_back(static_cast<char>(value));
            } else if (isLast && pairs.empty()) {
                damage("the log is cut off in the middle of a byte");
            } else {
                damage("'" + std::string(pair) + "' is no byte");
            }
        }
    }

    void damage(std::string what) { log.damages.push_back({number, std::move(what)}); }

    int number = 0;
};

} // namespace

RawLog readRawLog(std::string_view text)
{
    Reader reader;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        reader.readLine(text.substr(0, end), end == text.size());
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    reader.end();
    return std::move(reader.log);
}

} // namespace telvofm::tools
