// The page in a browser, beside a printer and a till that uses the library.
import assert from "node:assert/strict";
import { execFileSync } from "node:child_process";
import fs from "node:fs";
import { createRequire } from "node:module";
import os from "node:os";
import path from "node:path";
import { after, test } from "node:test";
import { drawLogo } from "./logo.mjs";
import { endAll, openBrowser, openPage, openTill, startPrinter } from "./shop.mjs";
import { becomes, seesText, soon, withPage } from "./with_page.mjs";

after(endAll);

const sheets = ["trace", "journal", "totals", "faults", "settings", "session"];

withPage("a sale appears on the paper while it happens", async ({ till, page }) => {
    const slip = page.locator(".slip");
    await till.begin();
    await seesText(slip, "Receipt 1");
    await seesText(page.locator(".facts"), "Receipt is open");
    assert.equal(await till.item("Chlieb šumavský", "12.50"), 0);
    await seesText(slip.locator(".item"), "Chlieb šumavský");
    assert.equal(await slip.locator(".total").count(), 0, "nothing is paid yet");
    assert.equal(await till.pay(1250), 0);
    await seesText(slip.locator(".total"), "TOTAL EUR                          12.50");
    assert.equal(await slip.locator(".cut").count(), 0, "the receipt is not ended yet");
    assert.equal(await till.finish(), 0);
    await seesText(slip.locator(".cut"), "VIRTUAL PRINTER, NO FISCAL DOCUMENT");
    await seesText(page.locator(".facts"), "1 receipt, 12.50 EUR");
    await seesText(page.locator(".drawer"), "Drawer open");
    assert.equal(await till.call("printDisplay", 1, 0, "", "SPOLU          12.50Dakujeme"), 0);
    await seesText(page.locator(".glass"), "SPOLU          12.50");
});

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

withPage("what happens while nobody looks is there when somebody does", async ({ till, page }) => {
    const hide = (isHidden) => page.evaluate((value) => {
        Object.defineProperty(document, "hidden", { value, configurable: true });
        document.dispatchEvent(new Event("visibilitychange"));
    }, isHidden);
    await till.begin();
    await till.item("Item before", "0.01");
    await seesText(page.locator(".slip .item"), "Item before");
    await hide(true);
    for (let item = 0; item < 250; item += 1) {
        assert.equal(await till.item(`Item ${item}`, "0.01"), 0);
    }
    await hide(false);
    await becomes(251, () => page.locator(".slip .item").count());
    await becomes(253, () => page.locator(".exchange").count());
    const numbers = await page.locator(".exchange .number").allTextContents();
    assert.deepEqual(numbers.map(Number), Array.from({ length: 253 }, (_, index) => 253 - index));
});

withPage("going back to as many documents as before is seen everywhere", async ({ till, page, printer }) => {
    await page.getByRole("tab", { name: "Journal" }).click();
    await till.sell("Chlieb", "1.00");
    await seesText(page.locator(".facts"), "1 receipt, 1.00 EUR");
    await printer.ask("POST", "snapshots", { name: "one", in: "memory" });
    await printer.ask("POST", "reset", {});
    await till.sell("Rožok", "7.00");
    await seesText(page.locator(".facts"), "1 receipt, 7.00 EUR");
    await printer.ask("POST", "restore", { name: "one", in: "memory" });
    await seesText(page.locator(".facts"), "1 receipt, 1.00 EUR");
    await seesText(page.locator(".documents .sum"), "1.00");
});

withPage("the focus stays where it is while the till goes on", async ({ till, page }) => {
    await page.getByRole("tab", { name: "Faults" }).click();
    await page.getByRole("button", { name: "Lose the acknowledge of a payment" }).click();
    await page.getByRole("button", { name: "Disarm fault 1" }).focus();
    await till.sell("Chlieb", "1.00");
    await seesText(page.locator(".armed"), "Ended. Met 1 request,");
    const focused = () => page.evaluate(() => document.activeElement.getAttribute("aria-label") ?? document.activeElement.textContent);
    assert.equal(await focused(), "Remove fault 1");
    await page.getByRole("tab", { name: "Journal" }).click();
    await page.locator(".documents").getByRole("button", { name: "Receipt 1" }).focus();
    await till.sell("Rožok", "2.00");
    await seesText(page.locator(".documents"), "Receipt 2");
    assert.equal(await focused(), "Receipt 1");
    await page.locator(".paper").focus();
    await page.keyboard.press("ArrowUp"); // the end of the receipt
    await page.keyboard.press("ArrowUp");
    await seesText(page.locator(".line.marked"), "Hotovosť");
    await page.keyboard.press("Enter");
    await seesText(page.locator(".exchange.chosen"), "payment");
});

withPage("the journal is searched, turned over and opened", async ({ till, page, printer }) => {
    for (let receipt = 0; receipt < 27; receipt += 1) {
        await till.sell(receipt === 3 ? "Makovník 250 g" : "Rožok", "1.00");
    }
    await page.getByRole("tab", { name: "Journal" }).click();
    const rows = page.locator(".documents tbody tr");
    await becomes(25, () => rows.count());
    assert.match(await rows.first().innerText(), /Receipt 27/);
    await page.getByRole("button", { name: "Older" }).click();
    await becomes(2, () => rows.count());
    const search = page.locator(".journal input[type=search]");
    await search.fill("Makovn");
    await becomes(1, () => rows.count());
    await seesText(rows, "Receipt 4");
    await search.fill("26");
    await seesText(rows, "Receipt 26");
    for (const text of ["MAKOVNÍK", "makovník 250 g 1,00", "Makovník 250 g 1.00", "receipt 4 "]) {
        await search.fill("2026-02-01");
        await becomes(0, () => rows.count());
        await search.fill(text);
        await seesText(rows, "Receipt 4");
        assert.equal(await rows.count(), 1, text);
    }
    await search.fill("1,00");
    await becomes(25, () => rows.count());
    await search.fill("250"); // no document has this number
    await becomes(1, () => rows.count());
    await seesText(rows, "Receipt 4");
    await search.fill("2026-02-01");
    await seesText(page.locator(".journal .hint"), "no such document");
    await search.fill("26");
    await rows.getByRole("button", { name: "Receipt 26" }).click();
    await becomes("Receipt 26", () => page.locator(".documents [aria-current]").innerText());
    await seesText(page.locator(".preview .slip"), "TOTAL EUR                           1.00");
    for (const [name, pattern] of [["Text", /TOTAL EUR +1\.00/], ["SVG", /^<svg .*NO FISCAL DOCUMENT/s]]) {
        const waiting = page.waitForEvent("download");
        await page.locator(".preview").getByRole("button", { name, exact: true }).click();
        assert.match(fs.readFileSync(await (await waiting).path(), "utf8"), pattern);
    }
    await page.emulateMedia({ media: "print" }); // as it becomes a PDF
    assert.equal(await page.locator(".preview .slip").isVisible(), true);
    for (const hidden of ["#header", ".device", ".list", ".paper"]) {
        assert.equal(await page.locator(hidden).isVisible(), false, hidden);
    }
    await page.emulateMedia({ media: "screen" });
    await page.getByRole("tab", { name: "Trace" }).click();
    await page.emulateMedia({ media: "print" }); // elsewhere the roll is printed, whatever the journal has open
    await page.locator(".paper .slip").last().waitFor();
    assert.equal(await page.locator(".preview .slip").isVisible(), false);
    const pdf = await page.pdf();
    assert.equal(pdf.subarray(0, 5).toString(), "%PDF-");
    assert.equal((await printer.ask("GET", "state")).position.document, 27);
});

withPage("a fault that is armed on the page is met by the till", async ({ till, page }) => {
    await page.getByRole("tab", { name: "Faults" }).click();
    await page.getByRole("button", { name: "Lose the acknowledge of a payment" }).click();
    const armed = page.locator(".faults .armed");
    await seesText(armed, "acknowledgeLost of payment");
    await till.begin();
    await till.item("Chlieb", "12.50");
    // The library sends what has met silence again; the printer has the payment and refuses a second one.
    assert.equal(await till.pay(1250), 32);
    assert.equal((await till.ask("getVariable", 1, "DUE"))[1], "0.00");
    assert.equal(await till.finish(), 0);
    await seesText(armed, "Ended. Met 1 request, hit 1 in 1 call.");
    await armed.getByRole("button", { name: /^Exchange / }).click();
    await seesText(page.locator(".exchange.chosen"), "done, till not told");
    await seesText(page.locator(".story"), "The till was not told");
    await seesText(page.locator(".story"), /Exchange \d+ repeats it after [3-9]\.\d s: refused 32, alreadyPaid\./);
    await seesText(page.locator(".exchange", { hasText: "repeats" }), "refused 32");
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
    // The library waits for three seconds.
    const repeat = page.locator(".exchange", { hasText: /repeats \d+ after [3-9]\.\d s/ });
    await repeat.getByRole("button").click();
    await seesText(page.locator(".story"), /again by itself after [3-9]\.\d s \(attempt 2\)/);
    await page.locator(".exchange.warn").getByRole("button").click();
    await seesText(page.locator(".story"), /repeats it after [3-9]\.\d s/);
});

withPage("a scenario is armed, and a fault by its form", async ({ page, printer }) => {
    await page.getByRole("tab", { name: "Faults" }).click();
    await page.locator(".scenarios").getByRole("button", { name: "Arm power fails after the end" }).click();
    await seesText(page.locator(".armed"), "powerLoss of paragonEnd");
    await page.getByRole("button", { name: "Disarm all" }).click();
    await seesText(page.locator(".armed"), "No fault is armed");
    const form = page.locator("form.card");
    await form.getByLabel("Kind").selectOption("refuse");
    await form.getByLabel("Command").fill("itemSale");
    await form.getByLabel("For so many requests").fill("2");
    await form.getByLabel("Code").fill("49");
    await form.getByRole("button", { name: "Arm" }).click();
    await seesText(page.locator(".armed"), "refuse of itemSale, requests 2, code 49");
    assert.deepEqual((await printer.ask("GET", "faults")).faults.map(({ fault }) => fault), [{ kind: "refuse", command: "itemSale", requests: 2, code: 49 }]);
    await form.getByLabel("Command").fill("itemSail");
    await form.getByRole("button", { name: "Arm" }).click();
    await seesText(page.locator(".faults .failure"), "is a name or a code of the command table");
    page.complaints.length = 0; // the browser reports a request that was refused
});

test("every kind of fault is on the page with what it takes", async () => {
    const { faultKinds, parameterForms } = await import(path.join(process.env.TELVOFM_PAGE, "fault_kinds.js"));
    const printer = await startPrinter();
    const { error } = await printer.ask("POST", "faults", { kind: "none of them" });
    assert.deepEqual(Object.keys(faultKinds).sort(), error.match(/one of (.*)\./)[1].split(", ").sort());
    const valueFor = (name) => ({ bytes: "15 31", at: "request", probes: "busy" })[name] ?? parameterForms[name].min;
    for (const [kind, { takes }] of Object.entries(faultKinds)) {
        const all = Object.fromEntries(takes.map((name) => name.replace("!", "")).map((name) => [name, valueFor(name)]));
        assert.equal((await printer.ask("POST", "faults", { kind, ...all })).error, undefined, kind);
        for (const name of Object.keys(parameterForms)) {
            if (!(name in all)) {
                assert.match((await printer.ask("POST", "faults", { kind, ...all, [name]: valueFor(name) })).error ?? "", /takes no/, `${kind} ${name}`);
            }
        }
        for (const needed of takes.filter((name) => name.endsWith("!")).map((name) => name.slice(0, -1))) {
            const { [needed]: left, ...others } = all;
            assert.match((await printer.ask("POST", "faults", { kind, ...others })).error ?? "", /wants/, `${kind} ${needed}`);
        }
        await printer.ask("DELETE", "faults");
    }
    await printer.end();
});

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

withPage("what others change is seen", async ({ page, printer }) => {
    await printer.ask("PATCH", "hardware", { paper: "low", display: "Hello" });
    await seesText(page.locator(".glass"), "Hello");
    await becomes("warn", () => page.locator(".lamp", { hasText: "Paper" }).getAttribute("data-kind"));
    await page.getByRole("tab", { name: "Settings" }).click();
    await printer.ask("PATCH", "settings", { vat: { B: { percent: 11 } }, header: { 1: "Pekáreň" }, columns: 48 });
    await seesText(page.locator(".settings td"), "11 %");
    await seesText(page.locator(".settings td"), "Pekáreň");
});

withPage("a logo is printed and shown as the till has set it", async ({ till, page, printer }) => {
    const folder = fs.mkdtempSync(path.join(os.tmpdir(), "page-test-logo-"));
    const file = path.join(folder, "logo.bmp");
    await drawLogo(page, file);
    assert.equal(await till.call("prepareGraphicHeader", 1, file), 0);
    assert.equal(await till.call("loadGHNV", 1, 1, 0, 0, 0, 0, 0, 0, 0), 0);
    await printer.ask("PATCH", "settings", { printsLogo: true });
    assert.equal(await till.call("setHeader", 1, "0000", 1, "Pekáreň LIPA"), 0);
    await till.sell("Chlieb", "1.00");
    const printed = page.locator(".paper .slip", { hasText: "Chlieb" }).locator(".line.picture svg");
    await printed.waitFor(soon);
    assert.ok(await printed.evaluate((drawn) => drawn.getBoundingClientRect().width > 100 && drawn.querySelector("path").getAttribute("d").length > 1000));
    await seesText(page.locator(".paper .slip .heading"), "Pekáreň LIPA");
    await page.getByRole("tab", { name: "Settings" }).click();
    await seesText(page.locator(".logos figcaption"), /^1: 384 × 128 dots$/);
    await seesText(page.locator(".settings td"), "Pekáreň LIPA");
    const dots = (locator) => locator.locator("path").getAttribute("d");
    assert.equal(await dots(page.locator(".logos svg")), await dots(printed), "the same dots");
    fs.rmSync(folder, { recursive: true });
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

withPage("the day is summed up, by hour, letter and payment", async ({ till, page, printer }) => {
    await page.getByRole("tab", { name: "Totals" }).click();
    await till.sell("Chlieb", "10.00", "A");
    await printer.ask("PATCH", "clock", { now: "2026-01-31 11:30" });
    await till.sell("Rožok", "2.50", "B");
    await seesText(page.locator(".tile"), "12.50 EUR");
    await seesText(page.locator(".bars", { hasText: "VAT" }), /A10\.00B2\.50/);
    await becomes("Turnover by hour. 09h: 10.00, 11h: 2.50", () => page.locator(".hours").getAttribute("aria-label"));
    assert.equal(await till.call("printReport", 1, { letter: "Z" }, 0), 0);
    await seesText(page.locator(".tile"), "0.00 EUR");
    await seesText(page.locator(".totals"), "Before today: 12.50 EUR in 2 receipts");
});

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

test("the page comes back by itself after a restart", async () => {
    const data = fs.mkdtempSync(path.join(os.tmpdir(), "page-test-data-"));
    const first = await startPrinter("--data", data);
    const page = await openPage(first);
    const till = await openTill(first.addressOf());
    await till.sell("Chlieb", "1.00");
    await seesText(page.locator(".slip"), "Chlieb");
    await till.end();
    await first.end();
    await seesText(page.locator(".link-state"), "Not connected");
    const second = await startPrinter("--data", data, "--web", first.web.replace("http://", ""));
    await seesText(page.locator(".link-state"), "Live");
    await becomes(0, () => page.locator(".exchange").count());
    await becomes(1, () => page.locator(".paper .slip").count()); // what the journal has
    const another = await openTill(second.addressOf());
    await another.sell("Rožok", "2.00");
    await seesText(page.locator(".slip"), "Rožok");
    await another.end();
    await page.context().close();
    await second.end();
    fs.rmSync(data, { recursive: true });
});

test("the page of another program is loaded where the old one was, and stays where it was", async () => {
    const first = await startPrinter();
    const page = await openPage(first, { at: "#/printer/totals" });
    await seesText(page.locator(".link-state"), "Live");
    let loads = 0;
    page.on("load", () => { loads += 1; });
    const start = async () => startPrinter("--web", first.web.replace("http://", ""));
    await first.end();
    await seesText(page.locator(".link-state"), "Not connected");
    const same = await start();
    await seesText(page.locator(".link-state"), "Live");
    await same.end();
    await seesText(page.locator(".link-state"), "Not connected");
    assert.equal(loads, 0, "the same program has the same page");
    // As another build: its files are in another folder.
    const folder = await page.evaluate(() => document.querySelector("script").src.match(/page\/\w+/)[0]);
    await page.route("**/*", async (route) => {
        const address = new URL(route.request().url());
        const answer = await route.fetch({ url: address.href.replace("page/another", folder) });
        const isStart = address.pathname === "/";
        await route.fulfill(isStart ? { response: answer, body: (await answer.text()).replaceAll(folder, "page/another") } : { response: answer });
    });
    const other = await start();
    await becomes(1, () => loads);
    await seesText(page.locator(".link-state"), "Live");
    assert.match(await page.evaluate(() => document.querySelector("script").src), /page\/another/);
    assert.equal(await page.getByRole("tab", { selected: true }).innerText(), "Totals");
    await page.unrouteAll({ behavior: "ignoreErrors" });
    await page.context().close();
    await other.end();
});

withPage("its files are fetched once, and a change is one question", async ({ till, page, printer }) => {
    await seesText(page.locator(".link-state"), "Live");
    await page.reload();
    await page.locator(".device").waitFor();
    const files = await page.evaluate(() => performance.getEntriesByType("resource").filter(({ name }) => name.includes("/page/")).map(({ name, transferSize }) => [name.split("/").at(-1), transferSize]));
    assert.deepEqual(files.filter(([, size]) => size > 0), [], "the browser has kept them");
    assert.ok(files.length <= 4, String(files));
    const asked = [];
    page.on("request", (request) => asked.push(new URL(request.url())));
    await seesText(page.locator(".link-state"), "Live");
    await till.begin();
    await seesText(page.locator(".slip"), "Receipt 1");
    asked.length = 0;
    assert.equal(await till.item("Chlieb", "1.00"), 0);
    await seesText(page.locator(".slip .item"), "Chlieb");
    await seesText(page.locator(".exchange.good"), "Chlieb");
    assert.deepEqual([...new Set(asked.map(({ pathname }) => pathname))], ["/printers/printer/news"]);
    assert.ok(asked.length <= 3, `${asked.length} questions`);
    // A sheet that nobody looks at asks nothing, and shows what there is when somebody does.
    await page.getByRole("tab", { name: "Journal" }).click();
    await becomes("The journal has no such document.", () => page.locator(".journal .hint").innerText());
    await page.getByRole("tab", { name: "Faults" }).click();
    await page.locator(".scenarios li").first().waitFor(soon);
    asked.length = 0;
    await till.pay(100);
    await till.finish();
    await seesText(page.locator(".slip .cut"), "NO FISCAL DOCUMENT");
    await seesText(page.locator(".facts"), "1 receipt, 1.00 EUR");
    assert.deepEqual([...new Set(asked.map(({ pathname }) => pathname))], ["/printers/printer/news"]);
    await page.getByRole("tab", { name: "Journal" }).click();
    await seesText(page.locator(".documents"), "Receipt 1");
    assert.deepEqual([...new Set(asked.map(({ origin }) => origin))], [printer.web], "no other host");
});

// A browser opens six connections to one host: eight streams would leave none for anything else.
test("eight tabs follow a sale at once", async () => {
    const printer = await startPrinter();
    const context = await (await openBrowser()).newContext();
    const pages = await Promise.all(Array.from({ length: 8 }, () => openPage(printer, {}, context)));
    const till = await openTill(printer.addressOf());
    await till.begin();
    await till.item("Chlieb", "1.00");
    await Promise.all(pages.map((page) => seesText(page.locator(".slip .item"), "Chlieb")));
    await till.pay(100);
    await till.finish();
    await Promise.all(pages.map((page) => seesText(page.locator(".slip"), "NO FISCAL DOCUMENT")));
    await pages[0].locator(".switch", { hasText: "Cover" }).getByLabel("Open").click({ force: true });
    const lamp = (page) => page.locator(".lamp", { hasText: "Cover" }).getAttribute("data-kind");
    await Promise.all(pages.map((page) => becomes("bad", () => lamp(page))));
    assert.deepEqual(pages.flatMap((page) => page.complaints), []);
    await till.end();
    await context.close();
    await printer.end();
});

test("a tab follows alone where there are no shared workers", async () => {
    const printer = await startPrinter();
    const context = await (await openBrowser()).newContext();
    await context.addInitScript(() => { delete window.SharedWorker; });
    const page = await openPage(printer, {}, context);
    const till = await openTill(printer.addressOf());
    await till.sell("Chlieb", "1.00");
    await seesText(page.locator(".slip .item"), "Chlieb");
    await till.end();
    await context.close();
    await printer.end();
});

withPage("everything is reached by the keyboard alone", async ({ page, printer }) => {
    const press = async (key, times = 1) => {
        for (let time = 0; time < times; time += 1) {
            await page.keyboard.press(key);
        }
    };
    const tabUntil = async (isThere) => {
        for (let step = 0; step < 60; step += 1) {
            await page.keyboard.press("Tab");
            if (await page.evaluate(isThere)) {
                return;
            }
        }
        assert.fail(`never reached: ${isThere}`);
    };
    await tabUntil(() => document.activeElement.type === "radio" && document.activeElement.name.endsWith("paper"));
    const outline = await page.evaluate(() => getComputedStyle(document.activeElement.nextElementSibling).outlineStyle);
    assert.equal(outline, "solid", "it is seen where one is");
    await press("ArrowRight", 2);
    await becomes("out", async () => (await printer.ask("GET", "hardware")).paper);
    await tabUntil(() => document.activeElement.role === "tab");
    await press("ArrowRight", 3);
    assert.equal(await page.evaluate(() => document.activeElement.textContent), "Faults");
    await tabUntil(() => document.activeElement.textContent === "Busy for 5 seconds");
    await press("Enter");
    await seesText(page.locator(".armed"), "busy, milliseconds 5000");
    await tabUntil(() => document.activeElement.textContent === "Disarm");
    await press("Space");
    await seesText(page.locator(".armed"), "No fault is armed");
});

withPage("it is dark in the dark, and nothing is cut off on a narrow screen", async ({ till, page, printer }) => {
    await printer.ask("PATCH", "settings", { columns: 48 });
    await till.sell("Chlieb so slnečnicovými semienkami a veľmi dlhým názvom", "1234.50");
    const brightness = () => page.evaluate(() => {
        const [red, green, blue] = getComputedStyle(document.querySelector("#header")).backgroundColor.match(/\d+/g).map(Number);
        return (red + green + blue) / 3;
    });
    assert.ok(await brightness() > 200);
    await page.emulateMedia({ colorScheme: "dark", reducedMotion: "reduce" });
    assert.ok(await brightness() < 60);
    await page.getByRole("button", { name: /^Colours/ }).click(); // light, whatever the system says
    assert.ok(await brightness() > 200);
    await till.sell("Rožok", "1.00");
    await seesText(page.locator(".fresh"), "Rožok");
    assert.equal(await page.locator(".fresh").first().evaluate((line) => getComputedStyle(line).animationName), "none");
    for (const width of [360, 768, 1024]) {
        await page.setViewportSize({ width, height: 800 });
        for (const sheet of sheets) {
            await page.goto(`${printer.web}/#/printer/${sheet}`);
            await page.locator(`#sheet-${sheet}`).waitFor();
            const [all, seen] = await page.evaluate(() => [document.documentElement.scrollWidth, window.innerWidth]);
            assert.ok(all <= seen, `${sheet} is ${all} wide on a screen of ${seen}`);
            const cutOff = await page.evaluate((id) => {
                const outside = document.getElementById(id).getBoundingClientRect();
                return [...document.querySelectorAll(`#${id} .scroll`)].filter((part) => {
                    const { left, right } = part.getBoundingClientRect();
                    return left < outside.left || right > outside.right || part.scrollWidth > part.clientWidth;
                }).map(({ innerText }) => innerText);
            }, `sheet-${sheet}`);
            assert.deepEqual(cutOff, [], `${sheet} on a screen of ${seen}`);
            if (sheet === "totals") {
                const tall = await page.locator(".hours text").first().evaluate((text) => text.getBoundingClientRect().height);
                assert.ok(tall >= 12, `the hours are ${tall} tall on a screen of ${seen}`);
            }
        }
    }
});

const axe = fs.readFileSync(createRequire(import.meta.url).resolve("axe-core/axe.min.js"), "utf8");
async function axeFindsNothing(page, where, options = {}) {
    const { violations } = await page.evaluate((all) => window.axe.run(document, { preload: false, resultTypes: ["violations"], ...all }), options);
    assert.deepEqual(violations.map(({ id, nodes }) => [id, nodes.map(({ html }) => html)]), [], where);
}

withPage("axe finds nothing", async ({ till, page, printer }) => {
    await till.sell("Chlieb", "1.00");
    await till.sell("Chlieb", "0.00"); // refused
    await printer.ask("POST", "faults", { kind: "acknowledgeLost", command: "payment" });
    await till.sell("Chlieb", "2.00");
    await printer.ask("POST", "faults", { kind: "refuse", command: "payment", code: 49 });
    await page.evaluate(axe);
    for (const colorScheme of ["light", "dark"]) {
        await page.emulateMedia({ colorScheme });
        for (const sheet of sheets) {
            await page.evaluate((name) => { window.location.hash = `#/printer/${name}`; }, sheet);
            await page.locator(`#sheet-${sheet} > :not(:empty)`).first().waitFor();
            if (sheet === "trace") {
                await page.locator(".exchange .name").first().click();
            } else if (sheet === "journal") {
                await page.locator(".documents .name").first().click();
                await page.locator(".preview .slip").waitFor();
            }
            // In the dark nothing but the colours is different.
            await axeFindsNothing(page, `${sheet}, ${colorScheme}`, colorScheme === "dark" ? { runOnly: ["color-contrast"] } : {});
        }
    }
});

const hostile = [
    "<img src=x onerror=hacked()>", "<script>hacked()</script>", "\"><svg onload=hacked()>", "</div><b>bold</b>", "javascript:hacked()",
    "${hacked()}", "&lt;b&gt;&amp;", "<a href=\"/printers\">x</a>", "<!--", "]]><script>hacked()//",
];
withPage("texts of receipts never run and are shown as they are", async ({ till, page, printer }) => {
    await page.evaluate(() => {
        window.hacks = 0;
        window.hacked = () => { window.hacks += 1; };
        window.violations = 0;
        document.addEventListener("securitypolicyviolation", () => { window.violations += 1; });
    });
    await till.begin();
    for (const name of hostile) {
        assert.equal(await till.item(name, "1.00"), 0, name);
    }
    await till.call("printDisplay", 1, 0, "", hostile[0]);
    await till.pay(100 * hostile.length, 1, hostile[1]);
    await till.finish();
    await seesText(page.locator(".slip"), "NO FISCAL DOCUMENT");
    const shown = await page.locator(".slip .item > div:first-child").allInnerTexts();
    assert.deepEqual(shown, hostile);
    for (const sheet of sheets) {
        await page.evaluate((name) => { window.location.hash = `#/printer/${name}`; }, sheet);
        await page.locator(`#sheet-${sheet} > :not(:empty)`).first().waitFor();
    }
    await page.evaluate(() => { window.location.hash = "#/printer/journal"; });
    await page.locator(".documents .name").first().click();
    await seesText(page.locator(".preview .slip"), hostile[1]);
    const found = await page.evaluate(() => ({
        hacks: window.hacks,
        violations: window.violations,
        strangers: document.querySelectorAll("main img, main script, main [onload], main [onerror], main .slip b, main .slip a").length,
    }));
    assert.deepEqual(found, { hacks: 0, violations: 0, strangers: 0 });
    const drawing = await page.context().newPage();
    await drawing.goto(`${printer.web}/printers/printer/documents/1/paper.svg`);
    assert.equal(await drawing.evaluate(() => document.querySelectorAll("script, img, [onload], [onerror]").length), 0);
    assert.ok((await drawing.evaluate(() => document.documentElement.textContent)).includes(hostile[1]));
    // The policy of the page refuses what would get into it all the same.
    const isRefused = await page.evaluate(() => {
        try {
            document.querySelector(".slip").innerHTML = "<img src=x onerror=hacked()>";
            return false;
        } catch {
            return true;
        }
    });
    assert.equal(isRefused, true);
    page.complaints.length = 0; // of that attempt
});

withPage("codes on the screen are read to what was sent", async ({ till, page }) => {
    const texts = ["https://example.com/receipt/O-7DBCDA8A56EE426DBCDA8A56EE426D1A", "ľščťžýáíé 12.50 €"];
    await till.begin();
    await till.item("Chlieb", "1.00");
    assert.equal(await till.call("printQRCode", 1, texts[0]), 0);
    assert.equal(await till.call("printQRCode", 1, texts[1]), 0);
    assert.equal(await till.call("printBC", 1, 0, "5901234123457"), 0);
    await till.pay(100);
    await till.finish();
    await seesText(page.locator(".slip"), "NO FISCAL DOCUMENT");
    const folder = fs.mkdtempSync(path.join(os.tmpdir(), "page-test-code-"));
    const read = async (locator) => {
        const file = path.join(folder, "code.png");
        await locator.scrollIntoViewIfNeeded();
        await locator.screenshot({ path: file });
        return execFileSync("zbarimg", ["--quiet", "--raw", file], { encoding: "utf8" }).trimEnd();
    };
    assert.equal(await read(page.locator(".line.qrCode").nth(0)), texts[0]);
    assert.equal(await read(page.locator(".line.qrCode").nth(1)), texts[1]);
    assert.equal(await read(page.locator(".line.barCode")), "5901234123457");
    await page.getByRole("tab", { name: "Journal" }).click();
    await page.locator(".documents .name").first().click();
    assert.equal(await read(page.locator(".preview .line.qrCode").nth(0)), texts[0]);
    fs.rmSync(folder, { recursive: true });
});

test("an address that others can reach needs a token", async () => {
    const failure = await startPrinter("--web", "0.0.0.0:0").then((printer) => printer.end(), ({ message }) => message);
    assert.match(failure ?? "it was started", /others can reach 0\.0\.0\.0:0; .* --token/);
});

test("the token is asked for once", async () => {
    const token = "0123456789abcdef";
    const printer = await startPrinter("--token", token);
    const page = await openPage(printer, { until: "#login" });
    await page.evaluate(axe);
    await axeFindsNothing(page, "the question for the token");
    await page.getByRole("textbox").fill("0123456789abcdeX");
    await page.getByRole("button", { name: "Open" }).click();
    await seesText(page.locator("#login .failure"), "The token is wrong");
    assert.equal(await page.locator(".device").count(), 0);
    await page.getByRole("textbox").fill(token);
    await page.getByRole("button", { name: "Open" }).click();
    await page.locator(".device").waitFor(soon);
    await seesText(page.locator(".link-state"), "Live");
    await page.reload();
    await page.locator(".device").waitFor(soon);
    assert.equal(await page.locator("#login").count(), 0);
    const [cookie] = await page.context().cookies();
    assert.deepEqual([cookie.httpOnly, cookie.sameSite], [true, "Strict"]);
    await page.context().close();
    await printer.end();
});

const two = ["--printer", "bar=127.0.0.1:0", "--printer", "shop=127.0.0.1:0"];
withPage("several printers are seen side by side", async ({ page, printer }) => {
    const bar = await openTill(printer.addressOf("bar"));
    const shop = await openTill(printer.addressOf("shop"));
    await bar.sell("Espresso", "1.90");
    await shop.sell("Chlieb", "2.49");
    await seesText(page.getByRole("region", { name: "bar" }), "Espresso");
    await seesText(page.getByRole("region", { name: "shop" }), "Chlieb");
    await printer.ask("PATCH", "/printers/shop/hardware", { cover: "open" });
    await seesText(page.getByRole("region", { name: "shop" }), "Cover is open");
    await page.evaluate(axe);
    await axeFindsNothing(page, "several printers");
    await printer.ask("PATCH", "/printers/shop/hardware", { cover: "closed" });
    await seesText(page.getByRole("region", { name: "shop" }), "Ready to sell");
    await printer.ask("POST", "/printers/shop/faults", { kind: "paperOut", command: "paragonBegin", requests: 2 });
    assert.equal(await shop.call("paragonBegin", 1, 0, 1, 0, 0, 1, 0), 49);
    await seesText(page.getByRole("region", { name: "shop" }), "Paper is out");
    assert.equal(await shop.call("paragonBegin", 1, 0, 1, 0, 0, 1, 0), 49);
    await seesText(page.getByRole("region", { name: "shop" }), "Ready to sell");
    for (let sale = 0; sale < 3; sale += 1) {
        await bar.sell("Espresso", "1.90");
    }
    await becomes(4, () => page.getByRole("region", { name: "bar" }).locator(".slip.isCut").count());
    await page.emulateMedia({ media: "print" });
    const [all, printed] = await page.getByRole("region", { name: "bar" }).evaluate((card) => [card.querySelector(".paper").scrollHeight, card.clientHeight]);
    assert.ok(printed >= all, `${printed} of ${all} are printed`);
    assert.equal(await page.locator(".printer .slot").first().isVisible(), false);
    await page.emulateMedia({ media: "screen" });
    await page.getByRole("navigation").getByRole("link", { name: "bar" }).click();
    await seesText(page.locator(".exchange"), "paragonEnd");
    assert.equal(await page.locator(".slip", { hasText: "Chlieb" }).count(), 0);
    await bar.end();
    await shop.end();
}, { options: two, page: { until: ".overview" } });
