// Documents as data, and what is kept of them: pages, searches, snapshots.
#include "tests/unit/control/controlled_till.h"
#include "tests/unit/own_folder.h"

namespace virtual_printer {
namespace {

using telvofm::test::OwnFolder;
using testing::HasSubstr;
using DocumentsUnderControl = ControlledTill;

TEST_F(DocumentsUnderControl, ShowItemsVatPaymentsAndText)
{
    beginDay();
    sell("12.50");
    const Json receipt = get(at("documents"))["documents"][0];
    EXPECT_EQ(receipt["kind"], "receipt");
    EXPECT_EQ(receipt["total"], "12.50");
    EXPECT_EQ(receipt["items"],
              Json::parse(R"([{"kind": "sale", "name": "Chlieb", "vat": "A", "sum": "12.50", "quantity": "1",
                               "unit": "ks", "unitPrice": "12.50", "voided": false}])"));
    EXPECT_EQ(receipt["vat"], (Json{{"A", "12.50"}}));
    EXPECT_EQ(receipt["payments"], Json::parse(R"([{"type": 2, "name": "Karta", "sum": "12.50"}])"));
    const auto text = receipt["text"].get<std::vector<std::string>>();
    EXPECT_THAT(text, testing::Contains("TOTAL EUR                          12.50"));
}

TEST_F(DocumentsUnderControl, ComeInPagesAndAreSearched)
{
    beginDay();
    sell("1.00");
    sell("2.00");
    printer.setClock(standingClock(parseMoment("2026-01-31 13:00", Edge::first).value()));
    sell("3.00");
    const Json first = get(at("documents?limit=2"));
    EXPECT_EQ(first["documents"].size(), 2U);
    EXPECT_EQ(first["next"], 2);
    const Json second = get(at("documents?limit=2&skip=2"));
    ASSERT_EQ(second["documents"].size(), 1U);
    EXPECT_EQ(second["documents"][0]["total"], "3.00");
    EXPECT_EQ(second["next"], nullptr);
    EXPECT_EQ(get(at("documents?number=2&kind=receipt"))["documents"][0]["total"], "2.00");
    EXPECT_EQ(get(at("documents?from=2026-01-31%2012:30"))["documents"].size(), 1U);
    EXPECT_EQ(get(at("documents?to=2026-01-30"))["documents"].size(), 0U);
    EXPECT_EQ(get(at("documents?kind=drawer"))["documents"].size(), 0U);
    EXPECT_THAT(refusedWith(400, ask("GET", at("documents?kind=bill"))),
                HasSubstr("of the kind \"bill\"; there are"));
    EXPECT_THAT(refusedWith(400, ask("GET", at("documents?limit=0"))),
                HasSubstr("\"limit\" is no whole number"));
    EXPECT_THAT(refusedWith(400, ask("GET", at("documents?from=noon"))), HasSubstr("\"from\" is no time"));
}

TEST_F(DocumentsUnderControl, HaveTheirClosures)
{
    beginDay();
    sell("1.00");
    ASSERT_EQ(tillSays(telvofm::test::request(0x50, {"Z", "0"})), "\x06");
    const Json closures = get(at("closures"))["closures"];
    ASSERT_EQ(closures.size(), 1U);
    EXPECT_EQ(closures[0]["number"], 1);
    EXPECT_EQ(closures[0]["sums"]["turnover"], "1.00");
    EXPECT_EQ(get(at("documents?closure=1"))["documents"].size(), 2U);
}

TEST_F(DocumentsUnderControl, AreGivenBackByASnapshot)
{
    beginDay();
    sell("1.00");
    beginReceipt();
    sellItem("2.00");
    EXPECT_EQ(post(at("snapshots"), R"({"name": "open"})").status, 201);
    payAndEnd("2.00");
    sell("3.00");
    const Json state = post(at("restore"), R"({"name": "open"})").json;
    EXPECT_EQ(state["situation"], "open");
    EXPECT_EQ(state["receipt"]["total"], "2.00");
    EXPECT_EQ(state["position"]["document"], 1);
    payAndEnd("2.00");
    EXPECT_EQ(get(at("documents"))["documents"][1]["number"], 2);
    EXPECT_EQ(get("/snapshots"),
              Json::parse(R"({"snapshots": [{"name": "open", "in": "memory", "printer": "printer"}]})"));
    EXPECT_EQ(ask("DELETE", "/snapshots/open").status, 200);
    EXPECT_THAT(refusedWith(404, post(at("restore"), R"({"name": "open"})")),
                HasSubstr("no snapshot \"open\""));
}

TEST_F(DocumentsUnderControl, HaveNoFilesWithoutADataFolder)
{
    EXPECT_THAT(refusedWith(409, post(at("snapshots"), R"({"name": "a", "in": "file"})")),
                HasSubstr("start the program with --data FOLDER"));
}

class SnapshotFiles : public ControlledTill
{
protected:
    SnapshotFiles()
    {
        std::filesystem::create_directory(data);
        inFolder.add(station);
    }
    Answered send(const std::string& method, const std::string& target, const std::string& body = "")
    {
        return noteDown(method, target, body,
                        std::get<HttpAnswer>(inFolder.answer(requestFor(method, target, body))));
    }

    OwnFolder folder;
    std::filesystem::path data = folder.path / "data";
    Control inFolder{readyToSell(), data, ""};
};

TEST_F(SnapshotFiles, LieInTheDataFolder)
{
    beginDay();
    sell("1.00");
    EXPECT_EQ(send("POST", at("snapshots"), R"({"name": "day", "in": "file"})").status, 201);
    EXPECT_TRUE(std::filesystem::is_regular_file(data / "snapshots/day.db"));
    sell("2.00");
    EXPECT_EQ(send("POST", at("snapshots"), R"({"name": "day", "in": "file"})").status, 201);
    sell("3.00");
    EXPECT_EQ(send("POST", at("restore"), R"({"name": "day", "in": "file"})").json["position"]["document"],
              2);
    EXPECT_EQ(send("GET", "/snapshots").json,
              Json::parse(R"({"snapshots": [{"name": "day", "in": "file"}]})"));
    EXPECT_EQ(send("DELETE", "/snapshots/day?in=file").status, 200);
    EXPECT_TRUE(std::filesystem::is_empty(data / "snapshots"));
}

TEST_F(SnapshotFiles, AreReplacedWhenThereAreAsManyAsAreKept)
{
    EXPECT_EQ(send("POST", at("snapshots"), R"({"name": "day", "in": "file"})").status, 201);
    for (int number = 1; number < 1000; ++number) {
        std::ofstream(data / "snapshots" / (std::to_string(number) + ".db"));
    }
    EXPECT_THAT(refusedWith(409, send("POST", at("snapshots"), R"({"name": "more", "in": "file"})")),
                HasSubstr("There are 1000 files"));
    EXPECT_EQ(send("POST", at("snapshots"), R"({"name": "day", "in": "file"})").status, 201);
}

TEST_F(SnapshotFiles, LieNowhereElse)
{
    for (const char* name : {"../day", "..", "/tmp/day", "a/b", "", "a.db", "day\\u0000"}) {
        EXPECT_EQ(
            send("POST", at("snapshots"), std::string(R"({"in": "file", "name": ")") + name + "\"}").status,
            400)
            << name;
    }
    EXPECT_EQ(send("DELETE", "/snapshots/%2e%2e%2fdata?in=file").status, 400);
    EXPECT_FALSE(std::filesystem::exists(folder.path / "day.db"));
}

// By such a name Windows opens a device, in any folder.
TEST_F(SnapshotFiles, AreNotCalledAsDevices)
{
    for (const char* name : {"con", "NUL", "aux", "Prn", "com1", "COM9", "lpt0"}) {
        for (const char* place : {"file", "memory"}) {
            const std::string body = std::string(R"({"name": ")") + name + R"(", "in": ")" + place + "\"}";
            EXPECT_EQ(refusedWith(400, send("POST", at("snapshots"), body)),
                      "\"" + std::string(name) +
                          "\" is the name of a device on Windows and of no file; give another name.");
        }
    }
    for (const char* name : {"con1", "com", "com10", "conto", "lpt"}) {
        EXPECT_EQ(send("POST", at("snapshots"), std::string(R"({"name": ")") + name + "\"}").status, 201)
            << name;
    }
}

TEST_F(SnapshotFiles, FollowNoSymbolicLinks)
{
    std::ofstream(folder.file("mine")) << "untouched";
    std::filesystem::create_directory(data / "snapshots");
    std::filesystem::create_symlink(folder.path / "mine", data / "snapshots/link.db");
    std::filesystem::create_symlink(folder.path / "mine", data / "snapshots/day.db-unfinished");
    const std::string keep = R"({"in": "file", "name": "link"})";
    EXPECT_THAT(refusedWith(409, send("POST", at("snapshots"), keep)),
                HasSubstr("nothing outside the data folder"));
    EXPECT_THAT(refusedWith(409, send("POST", at("restore"), keep)),
                HasSubstr("nothing outside the data folder"));
    EXPECT_EQ(send("POST", at("snapshots"), R"({"in": "file", "name": "day"})").status, 201);
    EXPECT_EQ(telvofm::test::contentOf(folder.path / "mine"), "untouched");

    std::filesystem::remove_all(data / "snapshots");
    std::filesystem::create_directory(folder.path / "elsewhere");
    std::filesystem::create_directory_symlink(folder.path / "elsewhere", data / "snapshots");
    EXPECT_THAT(refusedWith(409, send("POST", at("snapshots"), R"({"in": "file", "name": "day"})")),
                HasSubstr("nothing outside the data folder"));
    EXPECT_TRUE(std::filesystem::is_empty(folder.path / "elsewhere"));
}

TEST_F(SnapshotFiles, ThatAreNoneChangeNothing)
{
    beginDay();
    sell("1.00");
    std::filesystem::create_directory(data / "snapshots");
    std::ofstream(data / "snapshots/text.db") << std::string(5000, 'x');
    EXPECT_THAT(refusedWith(409, send("POST", at("restore"), R"({"in": "file", "name": "text"})")),
                HasSubstr("is no such memory"));
    EXPECT_EQ(get(at("documents"))["documents"].size(), 1U);
    sell("2.00");
}

} // namespace
} // namespace virtual_printer
