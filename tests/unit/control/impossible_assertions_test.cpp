// Assertions that no exchange or document could ever fit: with a count of 0 they would hold whatever happens.
#include "tests/unit/control/controlled_till.h"
#include "tests/unit/own_folder.h"

namespace virtual_printer {
namespace {

using testing::HasSubstr;

struct Impossible
{
    const char* assertion;
    const char* sentence;
};

class ImpossibleAssertions : public ControlledTill
{
};

TEST_F(ImpossibleAssertions, AreRefusedWithTheirPlace)
{
    const std::vector<Impossible> all = {
        {R"({"received": [{"name": "paymnt", "count": 0}]})",
         R"("received[0].name" is "paymnt", and no exchange is called so; give a name of the command table, or )"
         R"(block, damagedRequest, damagedBlock, probe or unknown.)"},
        {R"({"acknowledged": [{"nme": "payment", "count": 0}]})",
         R"(There is no "acknowledged[0].nme", and nothing would ever fit it; there are number, till, moment, )"},
        {R"({"executed": [{"name": "payment"}, {"name": "payment", "fields": {"totl": "1.00"}, "count": 0}]})",
         R"(There is no "executed[1].fields.totl", and nothing would ever fit it; there are row, )"},
        // The field of another command.
        {R"({"executed": [{"name": "payment", "fields": {"commodityName": "x"}, "count": 0}]})",
         R"(There is no "executed[0].fields.commodityName")"},
        {R"({"executed": [{"fields": {"nothing": "x"}, "count": 0}]})",
         R"(There is no "executed[0].fields.nothing")"},
        {R"({"executed": [{"fields": "x", "count": 0}]})", R"("executed[0].fields" is no JSON object)"},
        // Fields are texts.
        {R"({"received": [{"name": "payment", "fields": {"paymentNumber": 2}, "count": 0}]})",
         R"("received[0].fields.paymentNumber" is no text, and nothing would ever fit it; give one.)"},
        {R"({"received": [{"name": "setVAT", "fields": {"password": "0000"}, "count": 0}]})",
         R"("received[0].fields.password" is a password, which is only ever shown as "****"; leave it out.)"},
        {R"({"received": [{"acknowledged": "no", "count": 0}]})",
         R"("received[0].acknowledged" is no boolean)"},
        {R"({"received": [{"number": "1", "count": 0}]})", R"("received[0].number" is no number)"},
        {R"({"received": [{"name": 5, "count": 0}]})", R"("received[0].name" is no text)"},
        {R"({"received": [{"command": "0x30", "count": 0}]})", R"("received[0].command" is no code)"},
        {R"({"received": [{"refusal": {"nme": "alreadyPaid"}, "count": 0}]})",
         R"(There is no "received[0].refusal.nme")"},
        {R"({"received": [{"refusal": {"name": "alredyPaid"}, "count": 0}]})",
         R"("received[0].refusal.name" is "alredyPaid", and no refusal is called so)"},
        {R"({"received": [{"refusal": {"sentence": "nonsense"}, "count": 0}]})",
         R"(No refusal is {"sentence":"nonsense"}, as "received[0].refusal" wants it; )"
         R"(docs/virtual-printer.md lists them with their numbers.)"},
        {R"({"received": [{"refusal": {"name": "alreadyPaid", "code": 6}, "count": 0}]})",
         R"(No refusal is {"name":"alreadyPaid","code":6}, as "received[0].refusal" wants it)"},
        {R"({"received": [{"refusal": {"code": 200}, "count": 0}]})", R"(No refusal is {"code":200})"},
        {R"({"received": [{"refusal": {"code": 32, "sentence": "The selling day is open"}, "count": 0}]})",
         R"(No refusal is {"code":32,"sentence":"The selling day is open"})"},
        {R"({"received": [{"faults": [1], "count": 0}]})", R"("received[0].faults[0]" is no text)"},
        // Values that no exchange has.
        {R"({"received": [{"attempt": 4, "count": 0}]})",
         R"("received[0].attempt" is no whole number from 1 to 3; give one.)"},
        {R"({"received": [{"attempt": 0, "count": 0}]})", R"("received[0].attempt" is no whole number)"},
        {R"({"received": [{"number": 1.5, "count": 0}]})", R"("received[0].number" is no whole number)"},
        {R"({"received": [{"repeatOf": 0, "count": 0}]})", R"("received[0].repeatOf" is no whole number)"},
        {R"({"received": [{"repeatedAfter": -1, "count": 0}]})",
         R"("received[0].repeatedAfter" is no whole number)"},
        {R"({"received": [{"refusal": {"code": 256}, "count": 0}]})",
         R"("received[0].refusal.code" is no whole number from 1 to 255; give one.)"},
        {R"({"received": [{"moment": "noon", "count": 0}]})", R"("received[0].moment" is no time)"},
        {R"({"received": [{"moment": "2026-01-31 12:00", "count": 0}]})",
         R"("received[0].moment" has its seconds in an exchange; write it as "2026-01-31 12:00:00".)"},
        {R"({"received": [{"fromTill": "1C01", "count": 0}]})",
         R"("received[0].fromTill" is not written as bytes are; write them as "1c 01 e0 04 f9".)"},
        {R"({"received": [{"microseconds": {"decide": -1}, "count": 0}]})",
         R"("received[0].microseconds.decide" is no whole number from 0 to )"},
        {R"({"received": [{"microseconds": {"commit": -5}, "count": 0}]})",
         R"("received[0].microseconds.commit" is no whole number from 0 to )"},
        {R"({"received": [{"microseconds": {"answer": 1.5}, "count": 0}]})",
         R"("received[0].microseconds.answer" is no whole number from 0 to )"},
        // The trace tells what faults did in sentences.
        {R"({"received": [{"faults": ["acknowledgeLost"], "count": 0}]})",
         R"("received[0].faults[0]" is "acknowledgeLost", and the trace has sentences there; )"
         R"(give "the answer was lost", or "acknowledgeLost did nothing: " with why.)"},
        {R"({"executed": [{"faults": ["the answer was lost", "lost"], "count": 0}]})",
         R"("executed[0].faults[1]" is "lost", and no fault does that; give a sentence of the trace, )"
         R"(as "the answer was lost".)"},
        {R"({"received": [{"faults": ["busy did nothing: "], "count": 0}]})",
         R"("received[0].faults[0]" is "busy did nothing: ", and no fault does that)"},
        {R"({"received": [{"faults": ["bsy did nothing: there was no answer"], "count": 0}]})",
         R"("received[0].faults[0]" is "bsy did nothing: there was no answer", and no fault does that)"},
        // It acts on the port, and on no exchange.
        {R"({"received": [{"faults": ["connections were refused"], "count": 0}]})",
         R"("received[0].faults[0]" is "connections were refused", and no fault does that)"},
        {R"({"received": [{"faults": ["connectionRefused"], "count": 0}]})",
         R"("received[0].faults[0]" is "connectionRefused", and no fault does that)"},
        // What is damaged is never carried out, and a probe neither.
        {R"({"executed": [{"name": "probe", "count": 0}]})",
         R"(What is called probe is never executed; ask whether it is "received".)"},
        {R"({"acknowledged": [{"name": "damagedBlock", "count": 0}]})",
         R"(What is called damagedBlock is never acknowledged; ask whether it is "received".)"},
        {R"({"committed": [{"totl": "12.50"}]})", R"(There is no "committed[0].totl")"},
        {R"({"committed": [{"items": [{"nme": "Chlieb"}]}]})", R"(There is no "committed[0].items[0].nme")"},
        {R"({"committed": [{"vat": {"J": "1.00"}}]})", R"(There is no "committed[0].vat.J")"},
        {R"({"committed": [{"payments": [{"sum": 12.5}]}]})", R"("committed[0].payments[0].sum" is no text)"},
        {R"({"situation": "idel"})", R"("situation" is none of "noDay", "idle", )"},
    };
    for (const auto& [assertion, sentence] : all) {
        EXPECT_THAT(refusedWith(400, post(at("assert"), assertion)), HasSubstr(sentence)) << assertion;
        const std::string wait = std::string(R"({"until": )") + assertion + "}";
        EXPECT_THAT(refusedWith(400, post(at("wait"), wait)), HasSubstr(sentence)) << assertion;
    }
}

// Each part is possible by itself.
TEST_F(ImpossibleAssertions, AreThoseWhosePartsContradictEachOther)
{
    const std::string never = ", and no exchange is both; leave one of them out.";
    const std::vector<std::pair<std::string, std::string>> all = {
        {R"({"executed": [{"name": "payment", "refusal": {"name": "alreadyPaid"}, "count": 0}]})",
         R"("executed[0]" is executed and refused)" + never},
        {R"({"acknowledged": [{"refusal": {}, "count": 0}]})",
         R"("acknowledged[0]" is acknowledged and refused)" + never},
        {R"({"received": [{"executed": true, "refusal": {"code": 32}, "count": 0}]})",
         R"("received[0]" is executed and refused)" + never},
        {R"({"received": [{"committed": true, "refusal": {"code": 32}, "count": 0}]})",
         R"("received[0]" is committed and refused)" + never},
        {R"({"received": [{"acknowledged": true, "refusal": {"code": 32}, "count": 0}]})",
         R"("received[0]" is acknowledged and refused)" + never},
        {R"({"received": [{"committed": true, "executed": false, "count": 0}]})",
         R"("received[0]" is committed and not executed)" + never},
        {R"({"executed": [{"name": "payment", "executed": false, "count": 0}]})",
         R"("executed[0]" is executed and not executed)" + never},
        {R"({"acknowledged": [{"acknowledged": false, "count": 0}]})",
         R"("acknowledged[0]" is acknowledged and not acknowledged)" + never},
        {R"({"received": [{"name": "probe", "executed": true, "count": 0}]})",
         R"(What is called probe is never executed; ask whether it is "received".)"},
        {R"({"received": [{"name": "damagedBlock", "acknowledged": true, "count": 0}]})",
         R"(What is called damagedBlock is never acknowledged; ask whether it is "received".)"},
        {R"({"received": [{"name": "payment", "command": "24", "count": 0}]})",
         R"("received[0]" is called payment and has the code 24, and no exchange has both; it is 30.)"},
        {R"({"received": [{"name": "probe", "command": "30", "count": 0}]})",
         R"("received[0]" is called probe and has the code 30, and no exchange has both; it is 00.)"},
        {R"({"received": [{"name": "block", "command": "30", "count": 0}]})",
         R"(has the code 30, and no exchange has both; it is d0, d1, d2, de or ed.)"},
        {R"({"received": [{"repeatOf": null, "repeatedAfter": 5, "count": 0}]})",
         R"("received[0]" is a repeat and no repeat)" + never},
        {R"({"received": [{"repeatOf": 1, "repeatedAfter": null, "count": 0}]})",
         R"("received[0]" is a repeat and no repeat)" + never},
        {R"({"received": [{"repeatOf": null, "attempt": 2, "count": 0}]})",
         R"("received[0]" is a repeat and no repeat)" + never},
        {R"({"received": [{"name": "probe", "attempt": 2, "count": 0}]})",
         R"("received[0]" is a probe and a repeat)" + never},
        {R"({"received": [{"name": "probe", "refusal": {}, "count": 0}]})",
         R"("received[0]" is a probe and refused)" + never},
        {R"({"received": [{"name": "probe", "faults": ["the answer was lost"], "count": 0}]})",
         R"("received[0]" is a probe and hit by a fault)" + never},
        {R"({"received": [{"name": "damagedBlock", "faults": ["the answer was lost"], "count": 0}]})",
         R"("received[0]" is damaged and hit by a fault)" + never},
        {R"({"received": [{"name": "damagedRequest", "faults": ["the answer was lost"], "count": 0}]})",
         R"("received[0]" is damaged and hit by a fault)" + never},
        {R"({"received": [{"name": "payment", "taken": true, "count": 0}]})",
         R"("received[0]" is taken and no question)" + never},
        {R"({"received": [{"command": "d2", "taken": true, "count": 0}]})",
         R"("received[0]" is taken and no question)" + never},
        {R"({"acknowledged": [{"name": "probe", "taken": true, "count": 0}]})",
         R"("acknowledged[0]" is taken and no question)" + never},
        {R"({"executed": [{"name": "payment", "answer": "fiscal", "count": 0}]})",
         R"("executed[0]" is answered with data and no question)" + never},
        {R"({"received": [{"taken": true, "refusal": {}, "count": 0}]})",
         R"("received[0]" is taken and refused)" + never},
        {R"({"received": [{"taken": true, "executed": false, "count": 0}]})",
         R"("received[0]" is taken and not executed)" + never},
        {R"({"executed": [{"name": "getVariable", "committed": true, "count": 0}]})",
         R"("executed[0]" is committed and a question)" + never},
        {R"({"executed": [{"fields": {"paymentNumber": "1", "commodityName": "x"}, "count": 0}]})",
         R"("executed[0].fields" are those of several commands; name those of one.)"},
        {R"({"executed": [{"command": "24", "fields": {"paymentNumber": "1"}, "count": 0}]})",
         R"(There is no "executed[0].fields.paymentNumber")"},
        // What faults do to an exchange.
        {R"({"received": [{"executed": true, "faults": ["the request was neither carried out nor answered"],
                           "count": 0}]})",
         R"("received[0]" is executed and kept from it by a fault)" + never},
        {R"({"executed": [{"faults": ["the request was refused and not carried out"], "count": 0}]})",
         R"("executed[0]" is executed and kept from it by a fault)" + never},
        {R"({"received": [{"committed": true, "faults": ["the printer's disk was full"], "count": 0}]})",
         R"("received[0]" is committed and kept from it by a fault)" + never},
        {R"({"received": [{"taken": true, "count": 0, "faults":
                ["the request was neither carried out nor answered, nor were the probes after it"]}]})",
         R"("received[0]" is taken and kept from it by a fault)" + never},
        {R"({"received": [{"acknowledged": true, "faults": ["the answer was lost"], "count": 0}]})",
         R"("received[0]" is acknowledged and left without an acceptance by a fault)" + never},
        {R"({"acknowledged": [{"faults": ["CTS went off", "the printer lost its power"], "count": 0}]})",
         R"("acknowledged[0]" is acknowledged and left without an acceptance by a fault)" + never},
        {R"({"received": [{"executed": false, "count": 0,
                           "faults": ["the request was carried out and answered with a refusal"]}]})",
         R"("received[0]" is executed and not executed)" + never},
        {R"({"received": [{"refusal": {}, "faults": ["the request was accepted and not carried out"],
                           "count": 0}]})",
         R"("received[0]" is refused by the printer and not refused by it, as a fault says)" + never},
        {R"({"received": [{"refusal": null, "faults": ["the printer's disk was full"], "count": 0}]})",
         R"("received[0]" is not refused and refused because the disk was full)" + never},
        {R"({"received": [{"refusal": {"name": "alreadyPaid"}, "faults": ["the printer's disk was full"],
                           "count": 0}]})",
         R"("received[0]" is refused for another reason and refused because the disk was full)" + never},
        {R"({"received": [{"name": "getVariable", "faults": ["the printer's disk was full"], "count": 0}]})",
         R"("received[0]" is a question and hit by a fault of what is carried out)" + never},
        // No command has this code.
        {R"({"executed": [{"command": "3a", "count": 0}]})",
         R"(What is called unknown is never executed; ask whether it is "received".)"},
        {R"({"received": [{}]})",
         R"("received[0]" says nothing; name a part of an exchange, or "count" alone )"
         R"(for how many there are of any.)"},
        {R"({"executed": [{"name": "payment"}, {}]})", R"("executed[1]" says nothing; )"},
        {R"({"acknowledged": [{}]})", R"("acknowledged[0]" says nothing; )"},
        {R"({"committed": [{}]})", R"("committed[0]" says nothing; give a "kind" at least.)"},
    };
    for (const auto& [assertion, sentence] : all) {
        EXPECT_THAT(refusedWith(400, post(at("assert"), assertion)), HasSubstr(sentence)) << assertion;
    }
    for (
        const char* possible :
        {R"({"received": [{"name": "payment", "command": "30", "count": 0}]})",
         R"({"received": [{"command": "30", "fields": {"total": "1"}, "count": 0}]})",
         R"({"received": [{"executed": false, "refusal": {}, "count": 0}]})",
         R"({"received": [{"executed": true, "refusal": null, "count": 0}]})",
         R"({"received": [{"acknowledged": true, "executed": false, "count": 0}]})",
         R"({"received": [{"refusal": {"name": "alreadyPaid", "code": 32}, "count": 0}]})",
         R"({"received": [{"refusal": {"name": "dayIsOpen", "code": 6, "sentence":
            "The selling day is open already; sell, or close it with the daily closure (printReport Z)."},
            "count": 0}]})",
         R"({"received": [{"refusal": {"sentence":
            "No picture is kept under this number; upload it first. It is 3."}, "count": 0}]})",
         R"({"received": [{"command": "3a", "count": 0}]})",
         R"({"received": [{"executed": true, "faults": ["the answer was lost"], "count": 0}]})",
         R"({"acknowledged": [{"faults": ["the request was accepted and not carried out"], "count": 0}]})",
         R"({"received": [{"refusal": {"name": "diskFull"}, "faults": ["the printer's disk was full"],
                           "count": 0}]})",
         R"({"received": [{"name": "block", "command": "d2", "count": 0}]})",
         R"({"received": [{"name": "unknown", "command": "30", "count": 0}]})",
         R"({"received": [{"name": "probe", "command": "00", "repeatOf": null, "attempt": 1, "count": 0}]})",
         R"({"received": [{"repeatOf": 1, "repeatedAfter": 0, "attempt": 3, "count": 0}]})",
         R"({"received": [{"repeatOf": 1, "attempt": 1, "count": 0}]})",
         R"({"received": [{"name": "getVariable", "taken": true, "acknowledged": false, "count": 0}]})",
         R"({"received": [{"command": "92", "answer": "fiscal", "count": 0}]})",
         R"({"executed": [{"name": "payment", "taken": false, "answer": "", "committed": true, "count": 0}]})",
         R"({"received": [{"fromTill": "11", "toTill": "", "moment": "2026-01-31 12:00:00", "count": 0}]})",
         R"({"received": [{"fields": {"paymentNumber": "1", "total": "1.00"}, "count": 0}]})",
         R"({"received": [{"name": "block", "faults": ["the answer was lost", "CTS went off"], "count": 0}]})",
         R"({"received": [{"faults": ["ctsOff did nothing: TCP has no such line"], "count": 0}]})",
         R"({"received": [{"name": "probe", "faults": [], "count": 0}]})",
         R"({"received": [{"microseconds": {"decide": 0, "commit": 3, "answer": 9000000000}, "count": 0}]})",
         R"({"executed": [{"count": 0}]})"}) {
        EXPECT_EQ(post(at("assert"), possible).status, 200) << possible;
    }
}

TEST_F(ImpossibleAssertions, AreNotThoseOfEverythingThatAnExchangeHas)
{
    beginDay();
    sell("12.50");
    const Json exchange = get(at("trace?after=3&limit=1")); // the payment: one line
    Json part = exchange;
    part["fields"] = Json::object();
    for (const Json& field : exchange["fields"]) {
        part["fields"][field["name"].get<std::string>()] = field["value"];
    }
    EXPECT_EQ(post(at("assert"), Json{{"acknowledged", Json::array({part})}}.dump()).status, 200);
    const Json receipt = get(at("documents"))["documents"][0];
    EXPECT_EQ(post(at("assert"), Json{{"committed", Json::array({receipt})}}.dump()).status, 200);
}

TEST_F(ImpossibleAssertions, AreNotThoseOfWhatFaultsDid)
{
    for (const char* fault : {R"({"kind": "acknowledgeLost"})", R"({"kind": "ctsOff", "milliseconds": 1})"}) {
        ASSERT_EQ(post(at("faults"), fault).status, 201);
    }
    tillSays(telvofm::test::request(0xE0));
    const Json exchange = get(at("trace"));
    EXPECT_EQ(exchange["faults"].size(), 2U);
    const Json entry = {{"faults", exchange["faults"]}, {"microseconds", exchange["microseconds"]}};
    EXPECT_EQ(post(at("assert"), Json{{"executed", Json::array({entry})}}.dump()).status, 200);
}

// A team gives refusals the numbers of its own device.
TEST_F(ImpossibleAssertions, KnowTheNumbersThatRefusalsHave)
{
    const telvofm::test::OwnFolder folder;
    std::ofstream(folder.file("codes.json")) << R"({"alreadyPaid": 77})";
    Control renumbered(readyToSell(), "", "", Codes(folder.file("codes.json")));
    renumbered.add(station);
    const auto statusOf = [&](const std::string& refusal) {
        const std::string body = R"({"received": [{"refusal": )" + refusal + R"(, "count": 0}]})";
        return std::get<HttpAnswer>(renumbered.answer(requestFor("POST", at("assert"), body))).status;
    };
    EXPECT_EQ(statusOf(R"({"name": "alreadyPaid", "code": 77})"), 200);
    EXPECT_EQ(statusOf(R"({"code": 77})"), 200);
    EXPECT_EQ(statusOf(R"({"name": "alreadyPaid", "code": 32})"), 400);
    EXPECT_EQ(statusOf(R"({"code": 32})"), 400);
}

TEST_F(ImpossibleAssertions, AreNotThoseOfWhatIsNoSoundRequest)
{
    beginDay();
    tillSays("\x11");
    std::string damaged = telvofm::test::request(0x22, {"0", "0"});
    damaged.back() = static_cast<char>(damaged.back() ^ 1);
    tillSays(damaged);
    tillSays(telvofm::test::request(0x07));
    EXPECT_EQ(post(at("assert"),
                   R"({"received": [{"name": "probe"}, {"name": "damagedRequest"}, {"name": "unknown"},
                                                  {"name": "block", "count": 0}, {"count": 2}],
                                     "acknowledged": [{"name": "probe"}, {"refusal": null, "count": 1}]})")
                  .status,
              200);
}

TEST_F(ImpossibleAssertions, BeginWhereTheTraceHasNotComeYet)
{
    EXPECT_EQ(refusedWith(410, post(at("assert"), R"({"since": {"exchange": 99999}, "repeated": 0})")),
              "The assertion begins at exchange 99999, and the next one is 1; give an earlier \"since\".");
    EXPECT_EQ(post(at("assert"), R"({"since": {"exchange": 1}, "repeated": 0})").status, 200);
}

TEST_F(ImpossibleAssertions, AreThoseOfMoreEntriesThanAnybodyReads)
{
    Json entries = Json::array();
    for (int count = 0; count < 100; ++count) {
        entries.push_back({{"name", "payment"}, {"count", 0}});
    }
    Json assertion = {{"received", entries}};
    EXPECT_EQ(post(at("assert"), assertion.dump()).status, 200);
    assertion["executed"] = Json::parse(R"([{"name": "payment", "count": 0}])");
    EXPECT_EQ(
        refusedWith(400, post(at("assert"), assertion.dump())),
        "An assertion has at most 100 entries, and this one has 101; divide it into several, each with its "
        "\"since\".");
}

} // namespace
} // namespace virtual_printer
