// The trace: every exchange with what became of it, and the paper that it printed.
import assert from "node:assert/strict";
import { after, test } from "node:test";
import { endAll, openTill } from "./shop.mjs";
import { becomes, pageModule, seesText, soon, waitOfLibrary, withPage } from "./with_page.mjs";

after(endAll);

withPage("an exchange shows the paper that it printed, and paper its exchange", async ({ till, page }) => {
    await till.sell("Rožok", "0.18");
    await page.locator(".slip .item").click();
    const detail = page.locator(".detail");
    await seesText(detail, "The printer carried it out and keeps it.");
    await seesText(detail.locator("td"), "Rožok");
    assert.match(await detail.locator("code").first().innerText(), /^1c 01 24 /);
    await page.locator(".exchange", { hasText: "payment" }).locator("button").click();
    await seesText(page.locator(".line.marked"), "Hotovosť");
    assert.deepEqual(await page.locator(".line.marked").allInnerTexts().then((all) => all.map((text) => text.trim().slice(0, 5))),
        ["-----", "TOTAL", "Hotov"]);
});

withPage("an exchange that the list no longer has is shown all the same, and stays", async ({ till, page }) => {
    await till.begin();
    for (let item = 0; item < 410; item += 1) {
        assert.equal(await till.item(`Item ${item}`, "0.01"), 0);
    }
    await seesText(page.locator(".exchange"), "Item 409");
    await page.locator(".slip .item", { hasText: /Item 0\b/ }).first().click(soon); // older paper comes after the newest
    const chosen = page.locator(".exchange.chosen");
    await becomes("3", () => chosen.getAttribute("data-number"));
    await seesText(page.locator(".detail td"), "Item 0");
    assert.equal(await till.item("One more", "0.01"), 0);
    await seesText(page.locator(".exchange"), "One more");
    assert.equal(await chosen.getAttribute("data-number"), "3");
    assert.equal(await page.locator(".tools").getByRole("button", { name: /^Open / }).count(), 0, "the journal has it at its end");
    await till.pay(411);
    await till.finish();
    await page.locator(".tools").getByRole("button", { name: "Open document 1" }).click();
    await seesText(page.locator(".preview .slip"), "One more");
});

withPage("the time to a repeat and the blocks of an upload are told", async ({ till, page, printer }) => {
    await till.begin();
    await till.item("Chlieb", "1.00");
    await printer.ask("POST", "faults", { kind: "acknowledgeLost", command: "printQRCode" });
    assert.equal(await till.call("printQRCode", 1, "a".repeat(300)), 0); // its request comes twice
    const blocks = page.locator(".exchange", { has: page.getByRole("button", { name: "block", exact: true }) });
    await becomes(2, () => blocks.count());
    await seesText(blocks.last(), "printQRCode · block 1 · 256 bytes · more follow");
    await seesText(blocks.first(), "printQRCode · block 2 · 44 bytes · the last");
    const repeat = page.locator(".exchange", { hasText: new RegExp(`repeats \\d+ after ${waitOfLibrary}`) });
    await repeat.getByRole("button").click();
    await seesText(page.locator(".story"), new RegExp(`again by itself after ${waitOfLibrary} \\(attempt 2\\)`));
    await page.locator(".exchange.warn").getByRole("button").click();
    await seesText(page.locator(".story"), new RegExp(`repeats it after ${waitOfLibrary}`));
    // Before it asked again it has asked whether anybody is there.
    const probes = page.locator(".exchange", { has: page.getByRole("button", { name: "probe", exact: true }) });
    assert.equal(await probes.count(), 0);
    await page.getByLabel("Probes").check();
    await seesText(probes.locator(".outcome"), "probe");
    assert.match(await probes.last().locator(".number").innerText(), /^\d+$/);
    await page.getByLabel("Probes").uncheck();
    await becomes(0, () => probes.count());
});

withPage("the list holds still while somebody reads it", async ({ till, page }) => {
    await till.sell("Chlieb", "1.00"); // five exchanges
    const numbers = () => page.locator(".exchange .number").allTextContents().then((all) => all.join(" "));
    await becomes("5 4 3 2 1", numbers);
    await page.getByLabel("Hold still").check();
    await till.sell("Rožok", "2.00"); // and five more: the day is begun in vain
    await seesText(page.locator(".facts"), "2 receipts, 3.00 EUR");
    await seesText(page.locator(".slip .item"), "Rožok");
    assert.equal(await numbers(), "5 4 3 2 1");
    await page.getByLabel("Hold still").uncheck();
    await becomes("10 9 8 7 6 5 4 3 2 1", numbers);
});

withPage("what a row at the edge of a screen tells is seen", async ({ till, page }) => {
    for (const name of ["Chlieb", "Rožok", "Makovník", "Čaj", "Káva", "Mlieko"]) {
        await till.sell(name, "1.00");
    }
    await becomes(30, () => page.locator(".exchange").count());
    for (const [width, height] of [[390, 800], [1440, 500]]) {
        await page.setViewportSize({ width, height });
        const number = await page.evaluate(() => {
            const list = document.querySelector(".trace .scroll");
            window.scrollTo(0, document.documentElement.scrollHeight);
            list.scrollTop = 0;
            const seenTo = Math.min(list.getBoundingClientRect().bottom, window.innerHeight);
            const rows = [...list.querySelectorAll(".exchange")];
            return rows.findLast((row) => row.getBoundingClientRect().bottom <= seenTo).dataset.number;
        });
        const row = page.locator(`.exchange[data-number="${number}"]`);
        await row.locator(".name").click();
        const [from, to, start, end] = await row.evaluate((each) => { // where the list is now: the paper above it may have grown
            const list = each.closest(".scroll").getBoundingClientRect();
            return [each.getBoundingClientRect().top, each.nextElementSibling.getBoundingClientRect().bottom,
                Math.max(list.top, 0), Math.min(list.bottom, window.innerHeight)];
        });
        assert.ok(from >= start - 1, `the row is at ${from}, the list begins at ${start}`);
        assert.ok(to <= end + 1 || from < start + 60, `exchange ${number} tells down to ${to}, and is seen from ${start} to ${end}`);
        await row.locator(".name").click();
    }
});

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

test("what the till has taken is told, and only what counts is warned of", async () => {
    const { outcomeOf, storyOf } = await pageModule("exchange.js");
    const question = {
        name: "getVariable", executed: true, committed: false, acknowledged: true, taken: true, answer: "0.00", refusal: null, isOver: true, toTill: "3a", faults: [],
    };
    for (const [expected, told] of [
        ["done", {}],
        ["done", { acknowledged: false, faults: ["the checksum of a block was wrong"] }], // it came again
        ["done", { taken: false, answer: "" }],
        ["answering", { taken: false, isOver: false }],
        ["done, till not told", { taken: false }],
        ["done, till not told", { taken: false, acknowledged: false }],
    ]) {
        const exchange = { ...question, ...told };
        assert.equal(outcomeOf(exchange).text, expected, JSON.stringify(told));
        const isTold = storyOf(exchange).some((sentence) => sentence === "The till was not told all of the answer.");
        assert.equal(isTold, expected === "done, till not told", JSON.stringify(told));
        assert.doesNotMatch(storyOf(exchange).join(" "), /whether this counts|twice/);
    }
    const command = { ...question, answer: "", taken: false, acknowledged: false };
    assert.match(storyOf({ ...command, committed: true }).join(" "), /keeps it\. The till was not told: it cannot know whether this counts\./);
    assert.match(storyOf(command).join(" "), /nothing to keep\. The till was not told\.$/);
});

withPage("a reply that comes again after a damaged block is done", async ({ till, page, printer }) => {
    await printer.ask("POST", "faults", { kind: "wrongChecksum", command: "getVariable" });
    assert.deepEqual(await till.ask("getVariable", 1, "DUE"), [0, "0.00"]);
    const row = page.locator(".exchange", { hasText: "getVariable" });
    await seesText(row.locator(".outcome"), /^done$/);
    await seesText(row.locator(".fault"), "checksum");
    await row.getByRole("button").click();
    await seesText(page.locator(".detail"), "Decided in");
    assert.doesNotMatch(await page.locator(".detail").innerText(), /not answered/);
});

withPage("the same payment of the next customer is no repeat of one whose acknowledge was lost", async ({ till, page, printer }) => {
    await printer.ask("POST", "faults", { kind: "connectionClosed", command: "payment" });
    await till.begin();
    await till.item("Chlieb", "1.00");
    assert.equal(await till.pay(100), -10201);
    await till.end();
    const another = await openTill(printer.addressOf());
    assert.equal(await another.finish(), 0);
    assert.deepEqual(await another.sell("Chlieb", "1.00"), [0, 0, 0]);
    await becomes(2, () => page.locator(".exchange", { hasText: "Hotovosť" }).count());
    assert.equal(await page.locator(".chip.repeat").count(), 0);
    await page.locator(".exchange", { hasText: "done, till not told" }).getByRole("button").click();
    await seesText(page.locator(".story"), "The till was not told");
    assert.doesNotMatch(await page.locator(".story").innerText(), /repeats it/);
    await another.end();
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
