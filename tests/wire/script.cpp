#include "tests/wire/script.h"

#include "tests/wire/modem_lines.h"

#include <fstream>
#include <functional>
#include <stdexcept>

namespace wire {
namespace {

constexpr char requestStart = 0x1C;
constexpr char blockStart = 0x3A;

void replaceVariables(std::string& text, const Variables& variables)
{
    for (const auto& [name, value] : variables) {
        for (auto at = text.find("$" + name); at != std::string::npos;
             at = text.find("$" + name, at + value.size())) {
            text.replace(at, name.size() + 1, value);
        }
    }
}

// A unit of the protocol gets the checksum byte that the script left out.
std::string withChecksum(std::string bytes, char damage)
{
    if (!bytes.empty() && (bytes.front() == requestStart || bytes.front() == blockStart)) {
        bytes.push_back(static_cast<char>(checksumOf(bytes) ^ damage));
    }
    return bytes;
}

std::string expectedBytes(std::vector<Word> words)
{
    constexpr std::size_t tail = 2;
    if (words.size() > tail && words[words.size() - tail].text == "checksum") {
        words.erase(words.end() - tail);
        return bytesOf(words, 1);
    }
    return withChecksum(bytesOf(words, 1), 0);
}

class Reader
{
public:
    explicit Reader(const Variables& replacements) : variables(replacements) {}

    void readLine(std::string_view text, int line)
    {
        auto words = splitWords(text);
        if (words.empty()) {
            return;
        }
        for (Word& word : words) {
            replaceVariables(word.text, variables);
        }
        const std::string statement = words.front().text;
        if (statement == "call") {
            begin(words, line);
        } else if (script.calls.empty()) {
            readSetting(words);
        } else if (!readStep(words, line)) {
            readCheck(words);
        }
    }

    Script script;

private:
    void begin(const std::vector<Word>& words, int line)
    {
        Call call;
        call.line = line;
        call.name = wordAt(words, 1).text;
        call.arguments.assign(words.begin() + 2, words.end());
        script.calls.push_back(std::move(call));
        pieceSize = 0;
    }

    void readSetting(const std::vector<Word>& words)
    {
        const std::string setting = words[0].text + (words.size() > 1 ? " " + words[1].text : "");
        if (setting == "link serial") {
            script.isSerial = true;
        } else if (setting == "session manual") {
            script.opensItself = true;
        } else if (setting == "logging on" || setting == "once") {
            script.playsLogOff = false;
        } else if (setting != "link tcp") {
            throw std::runtime_error("unknown setting: " + setting);
        }
    }

    bool readStep(const std::vector<Word>& words, int line)
    {
        const std::string& statement = words[0].text;
        if (statement == "expect") {
            add(Step::Kind::expect, line, expectedBytes(words));
        } else if (statement == "expect-raw") {
            add(Step::Kind::expect, line, bytesOf(words, 1));
        } else if (statement == "answer") {
            add(Step::Kind::answer, line, withChecksum(bytesOf(words, 1), 0));
        } else if (statement == "answer-raw") {
            add(Step::Kind::answer, line, bytesOf(words, 1));
        } else if (statement == "bad-checksum") {
            add(Step::Kind::answer, line, withChecksum(bytesOf(words, 1), 0x55));
        } else if (statement == "nak") {
            add(Step::Kind::answer, line, {'\x15', static_cast<char>(std::stoi(wordAt(words, 1).text))});
        } else if (statement == "garbage") {
            add(Step::Kind::answer, line, std::string(std::stoul(wordAt(words, 1).text), '\x5A'));
        } else if (statement == "quiet") {
            add(Step::Kind::quiet, line, {});
        } else if (statement == "lines") {
            add(Step::Kind::lines, line, linesOf(words));
        } else if (statement == "close") {
            add(Step::Kind::close, line, {});
        } else if (statement == "split") {
            pieceSize = std::stoul(wordAt(words, 1).text);
        } else if (statement == "times") {
            repeat(std::stoul(wordAt(words, 1).text));
        } else {
            return statement == "silence";
        }
        return true;
    }

    void readCheck(const std::vector<Word>& words)
    {
        Call& call = script.calls.back();
        const std::string& statement = words[0].text;
        if (statement == "return") {
            call.result = wordAt(words, 1);
        } else if (statement == "log") {
            call.log += wordAt(words, 1).text + "\n";
        } else if (statement == "log-after") {
            call.logAfter += wordAt(words, 1).text + "\n";
        } else if (statement == "buffer") {
            call.buffer = bytesOf(words, 1);
        } else if (statement == "result") {
            call.resultObject = bytesOf(words, 1);
        } else if (statement == "count") {
            call.count = static_cast<unsigned int>(std::stoul(wordAt(words, 1).text));
        } else if (statement == "file" || statement == "text-file") {
            call.files.push_back({.name = wordAt(words, 1).text,
                                  .contents = bytesOf(words, 2),
                                  .isText = statement == "text-file"});
        } else if (statement == "no-file") {
            call.files.push_back({.name = wordAt(words, 1).text, .contents = std::nullopt});
        } else if (statement == "reopen") {
            call.reopensAfterwards = true;
        } else {
            throw std::runtime_error("unknown statement: " + statement);
        }
    }

    void add(Step::Kind kind, int line, std::string bytes)
    {
        script.calls.back().steps.push_back(
            {.kind = kind, .line = line, .bytes = std::move(bytes), .pieceSize = pieceSize});
    }

    static std::string linesOf(const std::vector<Word>& words)
    {
        char state = 0;
        for (std::size_t i = 1; i < words.size(); ++i) {
            if (words[i].text != "cts" && words[i].text != "dsr") {
                throw std::runtime_error("unknown line: " + words[i].text);
            }
            state = static_cast<char>(state | (words[i].text == "cts" ? clearToSend : dataSetReady));
        }
        return {state};
    }

    void repeat(std::size_t times)
    {
        std::vector<Step>& steps = script.calls.back().steps;
        const std::vector<Step> once = steps;
        for (std::size_t played = 1; played < times; ++played) {
            steps.insert(steps.end(), once.begin(), once.end());
        }
    }

    static const Word& wordAt(const std::vector<Word>& words, std::size_t index)
    {
        if (index >= words.size()) {
            throw std::runtime_error(words[0].text + " wants something behind it");
        }
        return words[index];
    }

    const Variables& variables;
    std::size_t pieceSize = 0;
};

} // namespace

Script readScript(const std::filesystem::path& path, const Variables& variables)
{
    std::ifstream file(path);
    if (!file) {
        throw std::runtime_error("the file cannot be read");
    }
    Reader reader(variables);
    std::string text;
    for (int line = 1; std::getline(file, text); ++line) {
        try {
            reader.readLine(text, line);
        } catch (const std::exception& failure) {
            throw std::runtime_error("line " + std::to_string(line) + ": " + failure.what());
        }
    }
    return std::move(reader.script);
}

} // namespace wire
