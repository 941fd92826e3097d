// The page in the course of events: tills that wait, faults that end, printers that become other ones, small screens.
import assert from "node:assert/strict";
import path from "node:path";
import { after, test } from "node:test";
import { endAll, openPage, openTill, startPrinter } from "./shop.mjs";
import { becomes, seesText, soon, withPage } from "./with_page.mjs";

after(endAll);

const pageModule = (name) => import(path.join(process.env.TELVOFM_PAGE, name));

withPage("an exchange that is tapped on a narrow screen stays where it is", async ({ till, page }) => {
    await till.sell("Chlieb", "1.00");
    const row = page.locator(".exchange", { hasText: "payment" });
    await row.waitFor(soon);
    await row.scrollIntoViewIfNeeded();
    await row.locator(".name").click();
    await page.locator(".line.marked").first().waitFor({ ...soon, state: "attached" });
    const [top, height] = await page.locator(".detail").evaluate((detail) => [detail.getBoundingClientRect().top, window.innerHeight]);
    assert.ok(top >= 0 && top < height, `the detail is at ${top} of ${height}`);
}, { page: { viewport: { width: 390, height: 800 } } });

withPage("who waits is told so, and the lamp is lit for so long", async ({ till, page, printer }) => {
    const lamp = () => page.locator(".lamp", { hasText: "Busy" }).getAttribute("data-kind");
    await printer.ask("POST", "faults", { kind: "busy", command: "printDisplay" }); // of one request, until it is disarmed
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

test("only an answer that may still come is waited for", async () => {
    const { outcomeOf } = await pageModule("exchange.js");
    const newest = { name: "payment", executed: true, acknowledged: false, refusal: null, isOver: false, toTill: "" };
    for (const [expected, ...faults] of [
        ["answering"],
        ["waiting", "the printer was busy before it answered"],
        ["waiting", "the answer came late"],
        ["waiting", "the answer came late", "refuse did nothing: another fault came before it"],
        ["done, till not told", "the answer was lost"],
        ["done, till not told", "the printer was busy before it answered", "the printer closed the link"],
    ]) {
        assert.equal(outcomeOf({ ...newest, faults }).text, expected, faults.join(", "));
        assert.equal(outcomeOf({ ...newest, faults, isOver: true }).text, "done, till not told", faults.join(", "));
    }
});

withPage("the journal of another printer shows none of its papers", async ({ till, page, printer }) => {
    for (let receipt = 1; receipt <= 26; receipt += 1) {
        await till.sell(`Ware ${receipt}`, "1.00");
    }
    await page.getByRole("tab", { name: "Journal" }).click();
    await page.getByRole("button", { name: "Older" }).click();
    const documents = page.locator(".documents tbody tr");
    await becomes(1, () => documents.count());
    await documents.getByRole("button", { name: "Receipt 1" }).click();
    await seesText(page.locator(".preview .slip"), "Ware 1");
    await printer.ask("POST", "reset", {});
    await till.sell("Makovník", "2.00");
    await seesText(documents, "2.00");
    await becomes(false, () => page.locator(".preview").isVisible());
    await seesText(page.locator(".pages"), "1 to 1");
});

test("each command that is suggested is one of the table", async () => {
    const { usualCommands } = await pageModule("fault_kinds.js");
    const printer = await startPrinter();
    for (const command of usualCommands) {
        assert.equal((await printer.ask("POST", "faults", { kind: "acknowledgeLost", command })).error, undefined, command);
    }
    await printer.end();
});

test("another program with another token is asked for, and nothing of the old one stays open", async () => {
    const first = await startPrinter();
    const page = await openPage(first);
    const till = await openTill(first.addressOf());
    await till.sell("Chlieb", "1.00");
    await page.locator(".slip .item").click();
    await becomes("3", () => page.locator(".exchange.chosen").getAttribute("data-number"));
    await till.end();
    await first.end();
    await seesText(page.locator(".link-state"), "Not connected");
    await page.locator(".switch", { hasText: "Paper" }).getByLabel("Out").click({ force: true });
    await seesText(page.locator(".device .failure"), "The printer does not answer.");
    const second = await startPrinter("--token", "0123456789abcdef", "--web", first.web.replace("http://", ""));
    await page.locator("#login").getByRole("textbox").fill("0123456789abcdef");
    await page.getByRole("button", { name: "Open", exact: true }).click();
    await seesText(page.locator(".link-state"), "Live");
    const another = await openTill(second.addressOf());
    await another.sell("Rožok", "2.00");
    await seesText(page.locator(".exchange"), "paragonEnd");
    assert.equal(await page.locator(".exchange.chosen").count(), 0);
    await another.end();
    await page.context().close();
    await second.end();
});

withPage("what is armed from the end of the sheet is seen, and its sentence goes when it has ended", async ({ till, page }) => {
    await page.getByRole("tab", { name: "Faults" }).click();
    const scenarios = page.locator(".scenarios button");
    await scenarios.last().click();
    const armed = page.locator(".armed li").last();
    await seesText(armed, "Armed.");
    const isSeen = () => armed.evaluate((item) => {
        const [{ top, bottom }, sheet] = [item, item.closest(".sheet")].map((part) => part.getBoundingClientRect());
        return top >= sheet.top && bottom <= sheet.bottom;
    });
    await becomes(true, isSeen);
    await page.getByRole("button", { name: "Disarm all" }).click();
    await page.getByRole("button", { name: "Paper out in the next receipt" }).click();
    const said = page.locator(".faults > [role=status]");
    await seesText(said, "Armed: paperOut of paragonBegin");
    assert.deepEqual(await till.begin(), [0, 49]);
    await seesText(page.locator(".armed"), "Ended.");
    await becomes("", () => said.innerText());
});

withPage("an exchange that is closed leaves the paper to what comes", async ({ till, page }) => {
    for (let receipt = 0; receipt < 5; receipt += 1) {
        await till.sell(`Item ${receipt}`, "1.00");
    }
    await page.locator(".exchange", { hasText: "Item 0" }).locator(".name").click();
    await page.locator(".line.marked").first().waitFor(soon);
    await page.locator(".exchange.chosen .name").click();
    await becomes(0, () => page.locator(".line.marked").count());
    const isAtEnd = () => page.locator(".paper").evaluate((paper) => paper.scrollTop + paper.clientHeight >= paper.scrollHeight - 2);
    await becomes(true, isAtEnd);
    await till.sell("One more", "1.00");
    await seesText(page.locator(".slip .item"), "One more");
    await becomes(true, isAtEnd);
});

withPage("snapshots of others are listed", async ({ page, printer }) => {
    await page.getByRole("tab", { name: "Session" }).click();
    await page.getByRole("tab", { name: "Trace" }).click();
    await printer.ask("POST", "snapshots", { name: "evening", in: "memory" });
    await page.getByRole("tab", { name: "Session" }).click();
    await page.getByRole("button", { name: "Go back to evening" }).waitFor(soon);
});
