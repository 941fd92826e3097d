// What a tester does with a session: keeps it, goes back, moves the clock, takes it away.
import assert from "node:assert/strict";
import fs from "node:fs";
import { after } from "node:test";
import { endAll } from "./shop.mjs";
import { becomes, seesText, soon, withPage } from "./with_page.mjs";

after(endAll);

withPage("a session is kept, left and taken away", async ({ till, page, printer }) => {
    await till.sell("Chlieb", "1.00");
    await page.getByRole("tab", { name: "Session" }).click();
    await page.getByRole("button", { name: "Keep" }).click();
    await till.sell("Rožok", "2.00");
    await becomes(2, () => page.locator(".paper .slip").count());
    const waiting = page.waitForEvent("download");
    await page.getByRole("button", { name: "Export the session" }).click();
    const session = JSON.parse(fs.readFileSync(await (await waiting).path(), "utf8"));
    assert.deepEqual(session.documents.map(({ total }) => total), ["1.00", "2.00"]);
    assert.equal(session.trace.length, 10); // five each; the day is begun twice, once in vain
    await page.getByRole("button", { name: "Go back to morning" }).click();
    await becomes(1, () => page.locator(".paper .slip").count());
    const questions = [];
    page.on("dialog", (dialog) => {
        questions.push(dialog.message());
        return questions.length === 1 ? dialog.dismiss() : dialog.accept();
    });
    await page.getByRole("button", { name: "As a new printer" }).click();
    assert.equal((await printer.ask("GET", "state")).position.document, 1, "it asks once");
    await page.getByRole("button", { name: "As a new printer" }).click();
    assert.equal(questions.length, 2);
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
