// Files of snapshots that may not be touched: each request says what is wrong, and that of the folder.
#include "tests/unit/control/controlled_till.h"
#include "tests/unit/own_folder.h"

#include <unistd.h>

namespace virtual_printer {
namespace {

using testing::EndsWith;
using testing::StartsWith;

class SnapshotRights : public ControlledTill
{
protected:
    SnapshotRights()
    {
        std::filesystem::create_directory(data);
        inFolder.add(station);
        EXPECT_EQ(askAsOwner("POST", at("snapshots"), R"({"name": "day", "in": "file"})").status, 201);
    }
    void TearDown() override { allow(std::filesystem::perms::owner_all); }

    void allow(std::filesystem::perms rights) const
    {
        std::filesystem::permissions(data / "snapshots", rights);
    }

    Answered askAsOwner(const std::string& method, const std::string& target, const std::string& body = "")
    {
        return noteDown(method, target, body, answerTo(method, target, body));
    }

    // Run by the administrator, the test becomes another user for the moment: to the former nothing is
    // closed.
    Answered askAsSomebody(const std::string& method, const std::string& target, const std::string& body = "")
    {
        constexpr uid_t nobody = 65534;
        const uid_t self = ::geteuid();
        if (self == 0) {
            EXPECT_EQ(::seteuid(nobody), 0);
        }
        const HttpAnswer answer = answerTo(method, target, body);
        if (self == 0) {
            EXPECT_EQ(::seteuid(self), 0);
        }
        return noteDown(method, target, body, answer);
    }

    telvofm::test::OwnFolder folder;
    std::filesystem::path data = folder.path / "data";
    Control inFolder{readyToSell(), data, ""};

private:
    HttpAnswer answerTo(const std::string& method, const std::string& target, const std::string& body)
    {
        return std::get<HttpAnswer>(inFolder.answer(requestFor(method, target, body)));
    }
};

constexpr std::filesystem::perms reading{0555}; // for everybody, and no writing

TEST_F(SnapshotRights, AreNeededToRemoveOne)
{
    allow(reading);
    EXPECT_THAT(refusedWith(409, askAsSomebody("DELETE", "/snapshots/day?in=file")),
                testing::AllOf(StartsWith("The file of the snapshot \"day\" cannot be removed: "),
                               EndsWith("; allow it.")));
    EXPECT_TRUE(std::filesystem::exists(data / "snapshots/day.db"));
    refusedWith(404, askAsSomebody("DELETE", "/snapshots/night?in=file"));
}

TEST_F(SnapshotRights, AreNeededToListThem)
{
    allow(std::filesystem::perms::none);
    EXPECT_THAT(refusedWith(409, askAsSomebody("GET", "/snapshots")),
                testing::AllOf(StartsWith("The folder \"snapshots\" in the data folder cannot be read: "),
                               EndsWith("; allow it.")));
}

TEST_F(SnapshotRights, AreNeededForEachOfThem)
{
    allow(std::filesystem::perms::none);
    const std::string body = R"({"name": "day", "in": "file"})";
    for (const auto& [method, target] : std::vector<std::pair<std::string, std::string>>{
             {"POST", at("snapshots")}, {"POST", at("restore")}, {"DELETE", "/snapshots/day?in=file"}}) {
        EXPECT_THAT(refusedWith(409, askAsSomebody(method, target, method == "POST" ? body : "")),
                    testing::AllOf(StartsWith("The file of the snapshot \"day\" cannot be looked at: "),
                                   EndsWith("; allow it.")))
            << method << target;
    }
}

} // namespace
} // namespace virtual_printer
