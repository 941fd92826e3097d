// The printer as it stands on the desk: lamps, switches, drawer, and the head of the page.
import assert from "node:assert/strict";
import { after, test } from "node:test";
import { endAll, openTill } from "./shop.mjs";
import { becomes, pageModule, seesText, soon, withPage } from "./with_page.mjs";

after(endAll);

withPage("paper, cover, busy and drawer are switched by hand", async ({ till, page, printer }) => {
    const choose = (name, value) => page.locator(".switch", { hasText: name }).getByLabel(value).click({ force: true });
    const lamp = (name) => page.locator(".lamp", { hasText: name }).getAttribute("data-kind");
    assert.equal(await till.call("sellingDayBegin", 1, 0), 0);
    const begin = () => till.call("paragonBegin", 1, 0, 1, 0, 0, 1, 0);
    await choose("Paper", "Out");
    await becomes("bad", () => lamp("Paper"));
    assert.equal(await begin(), 49);
    await choose("Paper", "Full");
    await becomes("off", () => lamp("Paper"));
    await printer.ask("POST", "faults", { kind: "paperOut", command: "paragonBegin", requests: 2 });
    await becomes("warn", () => lamp("Paper"));
    assert.equal(await begin(), 49);
    await becomes("bad", () => lamp("Paper"));
    await becomes("bad", () => lamp("Ready"));
    assert.equal(await begin(), 49);
    await becomes("off", () => lamp("Paper"));
    await becomes("good", () => lamp("Ready"));
    await choose("Cover", "Open");
    await becomes("bad", () => lamp("Cover"));
    assert.equal(await begin(), 50);
    await choose("Cover", "Closed");
    await becomes("off", () => lamp("Cover"));
    await choose("Busy", "On");
    await becomes("warn", () => lamp("Busy"));
    let isAnswered = false;
    const waiting = till.call("printDisplay", 1, 0, "", "Vitajte").then((code) => { isAnswered = true; return code; });
    await seesText(page.locator(".exchange"), "printDisplay");
    assert.equal(isAnswered, false, "a busy printer lets the till wait");
    await choose("Busy", "Off");
    assert.equal(await waiting, 0);
    await till.sell("Chlieb", "1.00");
    await page.getByRole("button", { name: "Push it in" }).click();
    await seesText(page.locator(".drawer"), "Drawer closed");
});

withPage("who waits is told so, and the lamp is lit for so long", async ({ till, page, printer }) => {
    const lamp = () => page.locator(".lamp", { hasText: "Busy" }).getAttribute("data-kind");
    await printer.ask("POST", "faults", { kind: "busy", command: "printDisplay" }); // of one request, until it is disarmed
    await becomes("Busy: for a request to come, by a fault", () => page.locator(".lamp", { hasText: "Busy" }).getAttribute("title"));
    const waiting = till.call("printDisplay", 1, 0, "", "Vitajte");
    const row = page.locator(".exchange", { hasText: "printDisplay" });
    try {
        await seesText(row.locator(".outcome"), "waiting");
        assert.equal((await printer.ask("GET", "faults")).faults[0].ended, true);
        await becomes("warn", lamp);
    } finally {
        await printer.ask("DELETE", "faults");
        assert.equal(await waiting, 0);
    }
    await seesText(row.locator(".outcome"), "done");
    await becomes("off", lamp);
});

withPage("the busy lamp goes out when the till that waits gives up, and with another printer", async ({ till, page, printer }) => {
    const lamp = () => page.locator(".lamp", { hasText: "Busy" }).getAttribute("data-kind");
    const outcome = page.locator(".exchange", { hasText: "printDisplay" }).first().locator(".outcome");
    const waits = async (who) => {
        await printer.ask("POST", "faults", { kind: "busy", command: "printDisplay" });
        who.call("printDisplay", 1, 0, "", "Vitajte"); // is never answered
        await becomes("waiting", () => outcome.innerText());
        await becomes("warn", lamp);
    };
    await waits(till);
    await till.giveUp();
    await becomes("off", lamp);
    await becomes("done, till not told", () => outcome.innerText());
    await printer.ask("POST", "snapshots", { name: "now", in: "memory" });
    const another = await openTill(printer.addressOf());
    await waits(another);
    await printer.ask("POST", "restore", { name: "now", in: "memory" });
    await becomes("off", lamp);
    await another.giveUp();
});

withPage("the head tells day and life, and the trace a reply with its time", async ({ till, page }) => {
    await seesText(page.locator(".facts"), /Fiscal.*not begun/);
    assert.equal(await till.call("sellingDayBegin", 1, 0), 0);
    await seesText(page.locator(".facts"), "since 2026-01-31 09:12");
    assert.equal((await till.ask("getVariable", 1, "DUE"))[1], "0.00");
    const row = page.locator(".exchange", { hasText: "getVariable" });
    await row.getByRole("button").click();
    assert.match(await row.locator(".time").innerText(), /^\d\d:\d\d:\d\d/);
    assert.match(await row.locator(".took").innerText(), /^\d+(\.\d)? m?s$/);
    await seesText(page.locator(".detail .bytes", { hasText: "Reply" }).locator("code"), "0.00");
});

withPage("the operator's display is there for as long as it says something", async ({ till, page }) => {
    assert.equal(await till.call("printDisplay", 1, 0, "", "Vitajte"), 0);
    await seesText(page.locator(".glass.customer"), "Vitajte");
    assert.equal(await page.locator(".glass.operator").isVisible(), false);
    assert.equal(await till.call("printDisplay", 1, 1, "", "Zásuvka je otvorená Zavrite ju"), 0);
    const operator = page.getByRole("img", { name: "Operator display: Zásuvka je otvorená Zavrite ju" });
    await operator.waitFor(soon);
    assert.deepEqual(await operator.locator("div").allTextContents(), ["Zásuvka je otvorená ", "Zavrite ju          "]);
    await seesText(page.locator(".glass.customer"), "Vitajte");
    assert.equal(await till.call("printDisplay", 1, 1, "", ""), 0);
    await becomes(false, () => page.locator(".glass.operator").isVisible());
});

// A line end there would make a third row, and a real glass has none.
withPage("a control character is a blank on the display", async ({ till, page }) => {
    const glass = page.locator(".glass.customer");
    const height = () => glass.evaluate((whole) => whole.getBoundingClientRect().height);
    const before = await height();
    assert.equal(await till.call("printDisplay", 1, 0, "", "SPOLU\r\n1.00\r\n\r\nx\t\u007f"), 0);
    await becomes("Customer display: SPOLU 1.00 x", () => glass.getAttribute("aria-label"));
    assert.deepEqual(await glass.locator("> div").allTextContents(), ["SPOLU  1.00    x    ", " ".repeat(20)]);
    assert.equal(await height(), before);
});

test("a display is read as it stands there", async () => {
    const { onDisplay, spoken } = await pageModule("glass.js");
    for (const [text, rows, said] of [
        ["", ["", ""], "dark"],
        ["\u0000\u001b\u0080\u009f", ["", ""], "dark"],
        ["SPOLU          12.50Ďakujeme", ["SPOLU          12.50", "Ďakujeme"], "SPOLU 12.50 Ďakujeme"],
        ["a\nb", ["a b", ""], "a b"],
        ["x".repeat(41), ["x".repeat(20), "x".repeat(20)], `${"x".repeat(20)} ${"x".repeat(20)}`],
    ]) {
        assert.deepEqual(onDisplay(text), rows.map((row) => row.padEnd(20)), JSON.stringify(text));
        assert.equal(spoken(text), said, JSON.stringify(text));
    }
});
