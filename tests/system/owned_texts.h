// Calls that wait for the device while another thread changes their texts: what is sent, logged and written
// to files must be the texts of the beginning.
#pragma once

#include "telvofm.h"
#include "tests/system/recording_printer.h"
#include "tests/unit/bitmap_file.h"
#include "tests/unit/own_folder.h"

#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <chrono>
#include <future>
#include <map>
#include <memory>
#include <span>
#include <thread>
#include <type_traits>

namespace telvofm::test {

// The arguments of one call; texts are handed out in the order of the parameters.
struct CallArguments
{
    std::vector<std::string> texts;
    std::size_t nextText = 0;
    std::array<char, 16> buffer{};
    std::unique_ptr<ResultObject, decltype(&destroyResultObject)> result{createResultObject(),
                                                                         &destroyResultObject};

    template <typename Parameter>
    Parameter next()
    {
        if constexpr (std::is_same_v<Parameter, const char*>) {
            return texts.at(nextText++).c_str();
        } else if constexpr (std::is_same_v<Parameter, char*>) {
            return buffer.data();
        } else if constexpr (std::is_same_v<Parameter, ResultObject*>) {
            return result.get();
        } else if constexpr (std::is_same_v<Parameter, int>) {
            return static_cast<int>(buffer.size());
        } else {
            return Parameter{};
        }
    }
};

// An export, called with such arguments; what it returns, as text.
struct TextExport
{
    std::string_view name;
    std::size_t textCount;
    std::string (*call)(CallArguments&);
};

// Of every export.
std::span<const TextExport> allExports();

// The parameter is the length of the texts.
class OwnedTexts : public ::testing::TestWithParam<std::size_t>
{
protected:
    // Everything that shows what a call took its texts for.
    struct Outcome
    {
        std::string result;
        std::vector<std::string> sent;
        std::string log;
        std::map<std::string, std::string> files;

        bool operator==(const Outcome&) const = default;
    };

    void SetUp() override
    {
        ASSERT_EQ(openFM(printer.address().c_str()), 0);
        std::filesystem::create_directory(files);
        std::filesystem::current_path(files); // a text may be the name of a file
    }
    void TearDown() override
    {
        setLogginOff();
        closeFM();
        std::filesystem::current_path(before);
    }

    // A text for each parameter, told apart by their first characters.
    static std::vector<std::string> texts(const TextExport& called, char first)
    {
        std::vector<std::string> all;
        for (std::size_t i = 0; i < called.textCount; ++i) {
            all.emplace_back(GetParam(), static_cast<char>(first + static_cast<int>(i)));
            if (called.name == "sendUnspecifiedData") {
                all.back() = "\x1C\x01" + all.back() + "\x04";
            }
        }
        return all;
    }

    Outcome undisturbed(const TextExport& called, const std::vector<std::string>& given)
    {
        prepare(called);
        CallArguments arguments{given};
        return outcome(called.call(arguments));
    }

    // The texts change while the call waits; `waitUntilItWaits` returns when it does.
    template <typename Wait>
    Outcome disturbed(const TextExport& called, Wait waitUntilItWaits)
    {
        setLogginOff();
        auto held = printer.holdAnswers();
        auto other = std::async(std::launch::async, printJobCancel, 1);
        waitUntil([this] { return !printer.takeReceived().empty(); });
        prepare(called);
        CallArguments arguments{texts(called, 'a')};
        std::promise<std::string> result;
        hasBegun = false;
        std::thread calling([&] {
            hasBegun = true;
            result.set_value(called.call(arguments));
        });
        waitUntilItWaits(calling);
        const auto changed = texts(called, 'n');
        for (std::size_t i = 0; i < called.textCount; ++i) {
            std::copy(changed[i].begin(), changed[i].end(), arguments.texts[i].begin());
        }
        held.unlock();
        calling.join();
        EXPECT_EQ(other.get(), 0);
        return outcome(result.get_future().get());
    }

    // The call must have been given its texts at its beginning, and each of them must show.
    template <typename Wait>
    void expectTextsOfTheBeginning(const TextExport& called, Wait waitUntilItWaits)
    {
        SCOPED_TRACE(called.name);
        const Outcome usual = undisturbed(called, texts(called, 'a'));
        for (std::size_t i = 0; i < called.textCount; ++i) {
            auto otherwise = texts(called, 'a');
            otherwise[i] = texts(called, 'n')[i];
            EXPECT_FALSE(undisturbed(called, otherwise) == usual) << "text " << i << " shows nowhere";
        }
        const Outcome changed =
            disturbed(called, [&](std::thread& calling) { waitUntilItWaits(calling, usual.log); });
        EXPECT_EQ(changed.result, usual.result);
        EXPECT_EQ(changed.sent, usual.sent);
        EXPECT_EQ(changed.log, usual.log);
        EXPECT_EQ(changed.files, usual.files);
    }

    template <typename Condition>
    static void waitUntil(Condition condition)
    {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
        while (!condition() && std::chrono::steady_clock::now() < end) {
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
    }

    OwnFolder folder;
    const std::string log = folder.file("calls.log");
    std::atomic<bool> hasBegun = false; // the call that is going to wait
    RecordingPrinter printer;

private:
    void prepare(const TextExport& called)
    {
        std::filesystem::remove(log);
        for (const auto& file : std::filesystem::directory_iterator(files)) {
            std::filesystem::remove(file.path());
        }
        if (called.name.starts_with("prepareGraphicHeader")) {
            const auto picture = graphics::BitmapFile{}.bytes();
            std::ofstream(texts(called, 'a').front(), std::ios::binary)
                .write(reinterpret_cast<const char*>(picture.data()),
                       static_cast<std::streamsize>(picture.size()));
        }
        printer.takeReceived();
        setLogginOn(log.c_str());
    }

    Outcome outcome(std::string result)
    {
        Outcome all{std::move(result), printer.takeReceived(), contentOf(log), {}};
        for (const auto& file : std::filesystem::directory_iterator(files)) {
            all.files[file.path().filename().string()] = contentOf(file.path());
        }
        return all;
    }

    const std::filesystem::path files = folder.path / "files";
    const std::filesystem::path before = std::filesystem::current_path();
};

// Texts that lie in the call itself, and texts that do not.
inline auto shortAndLongTexts()
{
    return ::testing::Values(5, 80);
}

} // namespace telvofm::test
