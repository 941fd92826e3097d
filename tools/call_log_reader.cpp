#include "tools/call_log_reader.h"

#include "tools/call_log_forms.h"
#include "tools/given_arguments.h"

#include <algorithm>

namespace telvofm::tools {
namespace {

// A line, or several where a result goes on.
struct Record
{
    int line;
    std::string text;
    bool isWhole = true; // it ends with a line end, as all do
};

bool beginsRecord(std::string_view line)
{
    const auto forms = lineForms();
    return std::any_of(forms.begin(), forms.end(),
                       [&](const LineForm& form) { return line.starts_with(headOf(form)); });
}

bool mayGoOn(const Record& record)
{
    const auto forms = lineForms();
    return std::any_of(forms.begin(), forms.end(), [&](const LineForm& form) {
        return endsWithResult(form) && record.text.starts_with(headOf(form));
    });
}

// Windows ends every line with two bytes; where a printer's answer has such line ends, others are plain.
std::string withPlainLineEnds(std::string_view text)
{
    std::string plain;
    bool isOfWindows = true;
    for (const char byte : text) {
        const bool isLineEnd = byte == '\n';
        isOfWindows = isOfWindows && (!isLineEnd || plain.ends_with('\r'));
        if (isLineEnd && isOfWindows) {
            plain.pop_back();
        }
        plain.push_back(byte);
    }
    return isOfWindows ? plain : std::string(text);
}

std::vector<Record> recordsIn(std::string_view text)
{
    std::vector<Record> records;
    for (int number = 1; !text.empty(); ++number) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        const std::string_view line = text.substr(0, end);
        const bool isWhole = end < text.size();
        text.remove_prefix(std::min(end + 1, text.size()));
        if (!records.empty() && mayGoOn(records.back()) && !beginsRecord(line)) {
            records.back().text += "\n" + std::string(line);
            records.back().isWhole = isWhole;
        } else {
            records.push_back({number, std::string(line), isWhole});
        }
    }
    return records;
}

LoggedCall callOf(const Record& record, const Export& function, LineValues values)
{
    LoggedCall call{record.line, &function, {}, std::move(values.result), values.isRounded};
    for (const Parameter& parameter : givenParameters(function)) {
        const auto found = values.parameters.find(parameter.name);
        const bool isKnown = found != values.parameters.end() && found->second != "*****";
        call.given.push_back(isKnown ? std::optional(found->second) : std::nullopt);
    }
    return call;
}

class Reader
{
public:
    void read(const Record& record)
    {
        if (record.text.empty() && record.isWhole) {
            return;
        }
        if (!record.isWhole) {
            contents.damages.push_back({record.line, "the log is cut off here"});
        } else if (!recognise(record)) {
            contents.damages.push_back({record.line, "not a line of a call log"});
        }
    }

    CallLogContents contents;

private:
    bool recognise(const Record& record)
    {
        for (const LineForm& form : lineForms()) {
            if (!record.text.starts_with(headOf(form))) {
                continue;
            }
            const Export* const function = form.function.empty() ? nullptr : findExport(form.function);
            if (auto values = takeApart(form, function, record.text)) {
                if (function != nullptr) {
                    contents.calls.push_back(callOf(record, *function, std::move(*values)));
                }
                return true;
            }
        }
        return false;
    }
};

} // namespace

CallLogContents readCallLog(std::string_view text)
{
    Reader reader;
    for (const Record& record : recordsIn(withPlainLineEnds(text))) {
        reader.read(record);
    }
    return std::move(reader.contents);
}

} // namespace telvofm::tools
