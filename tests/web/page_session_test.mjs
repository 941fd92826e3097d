// What a tester does with a session: keeps it, goes back, moves the clock, takes it away.
import assert from "node:assert/strict";
import fs from "node:fs";
import { after } from "node:test";
import { endAll, openTill } from "./shop.mjs";
import { becomes, seesText, soon, withPage } from "./with_page.mjs";

after(endAll);

withPage("a session is kept, left and taken away", async ({ till, page, printer }) => {
    await till.sell("Chlieb", "1.00");
    await page.getByRole("tab", { name: "Session" }).click();
    await page.getByRole("button", { name: "Keep" }).click();
    await page.getByRole("button", { name: "Go back to printer-morning" }).waitFor(soon); // it is kept
    await till.sell("Rožok", "2.00");
    await becomes(2, () => page.locator(".paper .slip").count());
    const waiting = page.waitForEvent("download");
    await page.getByRole("button", { name: "Export the session" }).click();
    const session = JSON.parse(fs.readFileSync(await (await waiting).path(), "utf8"));
    assert.deepEqual(session.documents.map(({ total }) => total), ["1.00", "2.00"]);
    assert.equal(session.trace.length, 10); // five each; the day is begun twice, once in vain
    const questions = [];
    page.on("dialog", (dialog) => {
        questions.push(dialog.message());
        return questions.length === 2 ? dialog.dismiss() : dialog.accept();
    });
    await page.getByRole("button", { name: "Go back to printer-morning" }).click();
    await becomes(1, () => page.locator(".paper .slip").count());
    await page.getByRole("button", { name: "As a new printer" }).click();
    assert.equal((await printer.ask("GET", "state")).position.document, 1, "it asks once");
    await page.getByRole("button", { name: "As a new printer" }).click();
    assert.equal(questions.length, 3);
    await seesText(page.locator(".facts"), "No day is open");
    await becomes(0, () => page.locator(".paper .slip").count());
    await page.getByRole("button", { name: "An hour on" }).click();
    await seesText(page.locator(".clock"), "2026-01-31 10:12");
    assert.equal((await printer.ask("GET", "state")).position.document, 0);
});

withPage("the trace is taken away as lines that can be played again", async ({ till, page }) => {
    await till.sell("Chlieb", "1.00");
    await page.getByRole("tab", { name: "Session" }).click();
    const waiting = page.waitForEvent("download");
    await page.getByRole("button", { name: "Export the trace" }).click();
    const download = await waiting;
    assert.equal(download.suggestedFilename(), "printer-trace.jsonl");
    const lines = fs.readFileSync(await download.path(), "utf8").trimEnd().split("\n").map((line) => JSON.parse(line));
    assert.deepEqual(lines.map(({ number, name }) => [number, name]),
        ["sellingDayBegin", "paragonBegin", "itemSale", "payment", "paragonEnd"].map((name, index) => [index + 1, name]));
    // A request begins with its start byte, the address and the code of the day's begin, and is accepted.
    assert.match(lines[0].fromTill, /^1c 01 29 /);
    assert.equal(lines[0].toTill, "06");
    await seesText(page.locator(".session > [role=status]"), "The trace is saved as a file.");
});

withPage("the clock stands, runs, runs fast and is set", async ({ page, printer }) => {
    await page.getByRole("tab", { name: "Session" }).click();
    const shown = page.locator(".clock");
    const clock = () => printer.ask("GET", "clock");
    const press = (name) => page.getByRole("button", { name, exact: true }).click();
    await press("Stand");
    await seesText(shown, "standing");
    const { now } = await clock();
    await press("A day on");
    await seesText(shown, now.replace("2026-01-31", "2026-02-01"));
    assert.deepEqual(await clock(), { now: now.replace("2026-01-31", "2026-02-01"), mode: "stands", speed: 1 });
    await page.getByLabel("Moment").fill("2026-02-03T04:05");
    await press("Set");
    await seesText(shown, "2026-02-03 04:05:00, standing");
    assert.deepEqual(await clock(), { now: "2026-02-03 04:05:00", mode: "stands", speed: 1 });
    await press("60 times as fast");
    await seesText(shown, "60 times as fast");
    await seesText(shown, /04:(0[6-9]|[1-5]\d):/); // a minute a second
    assert.deepEqual((({ mode, speed }) => [mode, speed])(await clock()), ["runs", 60]);
    await press("Run");
    await seesText(shown, "running");
    assert.deepEqual((({ mode, speed }) => [mode, speed])(await clock()), ["runs", 1]);
});

withPage("snapshots of others are listed", async ({ page, printer }) => {
    await page.getByRole("tab", { name: "Session" }).click();
    await page.getByRole("tab", { name: "Trace" }).click();
    await printer.ask("POST", "snapshots", { name: "evening", in: "memory" });
    await page.getByRole("tab", { name: "Session" }).click();
    await page.getByRole("button", { name: "Go back to evening" }).waitFor(soon);
});

const two = ["--printer", "bar=127.0.0.1:0", "--printer", "shop=127.0.0.1:0"];
withPage("a snapshot has a name of its own, and nothing is lost without a question", async ({ page, printer }) => {
    const bar = await openTill(printer.addressOf("bar"));
    const shop = await openTill(printer.addressOf("shop"));
    await bar.sell("Espresso", "1.90");
    await shop.sell("Chlieb", "2.49");
    const questions = [];
    let answer = "accept";
    page.on("dialog", (dialog) => {
        questions.push(dialog.message());
        return dialog[answer]();
    });
    const keep = page.getByRole("button", { name: "Keep" });
    const kept = page.locator(".session .armed li");
    let restored = 0;
    page.on("request", (request) => { restored += Number(request.url().endsWith("/restore")); });
    const total = async (name) => (await printer.ask("GET", `/printers/${name}/documents`)).documents.map((each) => each.total).join();
    await page.goto(`${printer.web}/#/bar/session`);
    await keep.click();
    await seesText(kept, /bar-morning.*of bar, in memory/);
    await page.goto(`${printer.web}/#/shop/session`);
    await keep.click();
    await seesText(kept, /shop-morning.*of shop, in memory/);
    await seesText(page.locator(".session [role=status]"), "Kept as \"shop-morning\".");
    await keep.click();
    await seesText(kept, "shop-morning-2");
    assert.deepEqual(questions, [], "each had a name of its own");

    answer = "dismiss";
    await page.getByLabel("Name").fill("bar-morning");
    await keep.click();
    await becomes(1, async () => questions.length);
    assert.equal(questions[0], "There is \"bar-morning\" already, of bar, in memory. Put this one in its place?");
    await page.getByRole("button", { name: "Go back to bar-morning" }).click();
    await becomes(2, async () => questions.length);
    assert.match(questions[1], /^"bar-morning" is what bar has kept\. What shop is now is lost, .* Go back to "bar-morning"\?$/);
    assert.equal(await total("shop"), "2.49");
    assert.equal(restored, 0);

    answer = "accept";
    await page.getByRole("button", { name: "Go back to bar-morning" }).click();
    await seesText(page.locator(".session [role=status]"), "It is as it was at \"bar-morning\".");
    assert.equal(await total("shop"), "1.90", "and bar's was not replaced");
    assert.equal(restored, 1);
    await page.getByLabel("Name").fill("shop-morning");
    await keep.click();
    await seesText(page.locator(".session [role=status]"), "Kept as \"shop-morning\".");
    await shop.sell("Chlieb", "2.49");
    await page.getByRole("button", { name: "Go back to shop-morning", exact: true }).click();
    await becomes("1.90", () => total("shop"));
    assert.deepEqual(questions.slice(3).map((question) => question.slice(0, 30)), ["There is \"shop-morning\" alread", "What shop is now is lost, unle"]);
    await bar.end();
    await shop.end();
}, { options: two, page: { until: ".overview" } });
