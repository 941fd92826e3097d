// The page and its program: one that comes back, another one, many tabs, and what is asked for.
import assert from "node:assert/strict";
import { execFileSync } from "node:child_process";
import fs from "node:fs";
import os from "node:os";
import path from "node:path";
import { after, test } from "node:test";
import { build, endAll, openBrowser, openPage, openTill, startPrinter } from "./shop.mjs";
import { becomes, seesText, soon, withPage } from "./with_page.mjs";

after(endAll);

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

test("a receipt that was open when the power failed is still there, and goes on", async () => {
    const data = fs.mkdtempSync(path.join(os.tmpdir(), "page-test-data-"));
    const first = await startPrinter("--data", data);
    const page = await openPage(first);
    const till = await openTill(first.addressOf());
    await till.begin();
    await till.item("Chlieb", "1.00");
    await seesText(page.locator(".slip .item"), "Chlieb");
    await till.end();
    process.kill(first.pid, "SIGKILL");
    await first.end();
    await seesText(page.locator(".link-state"), "Not connected");
    const second = await startPrinter("--data", data, "--web", first.web.replace("http://", ""));
    await seesText(page.locator(".link-state"), "Live");
    await seesText(page.locator(".facts"), "Receipt is open");
    await seesText(page.locator(".slip .item"), "Chlieb");
    const another = await openTill(second.addressOf());
    assert.equal(await another.item("Rožok", "2.00"), 0);
    assert.equal(await another.pay(300), 0);
    assert.equal(await another.finish(), 0);
    await seesText(page.locator(".slip .cut"), "NO FISCAL DOCUMENT");
    assert.equal(await page.locator(".slip").count(), 1);
    assert.deepEqual((await page.locator(".slip .item > div:first-child").allInnerTexts()).map((text) => text.trim()), ["Chlieb", "Rožok"]);
    await seesText(page.locator(".slip .total"), /TOTAL EUR +3\.00/);
    await seesText(page.locator(".facts"), "1 receipt, 3.00 EUR");
    await another.end();
    await page.context().close();
    await second.end();
    fs.rmSync(data, { recursive: true });
});

// A pseudo-terminal has no modem lines of its own.
test("a sale over a serial line is on the page as one over TCP is", async () => {
    const printer = await startPrinter("--pty");
    const page = await openPage(printer);
    execFileSync(path.join(build, "telvofm-till"), [`COM${printer.addressOf("pty")}`, os.devNull, os.devNull],
        { env: { ...process.env, LD_PRELOAD: path.join(build, "libmodem_lines.so") } });
    await seesText(page.locator(".slip .cut"), "NO FISCAL DOCUMENT");
    await seesText(page.locator(".slip .item"), "Chlieb šumavský");
    await seesText(page.locator(".exchange"), "paragonEnd");
    await seesText(page.locator(".exchange.good"), "Hotovosť");
    await page.context().close();
    await printer.end();
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

test("the tab that opened the stream closes, and the others follow on", async () => {
    const printer = await startPrinter();
    const context = await (await openBrowser()).newContext();
    const first = await openPage(printer, {}, context);
    const second = await openPage(printer, {}, context);
    const till = await openTill(printer.addressOf());
    await first.close();
    await till.sell("Chlieb", "1.00");
    await seesText(second.locator(".slip .item"), "Chlieb");
    const third = await openPage(printer, {}, context);
    await second.reload();
    await till.sell("Rožok", "2.00");
    await seesText(second.locator(".slip .item"), "Rožok");
    await seesText(third.locator(".slip .item"), "Rožok");
    assert.deepEqual([...second.complaints, ...third.complaints], []);
    await till.end();
    await context.close();
    await printer.end();
});

withPage("an address that says nothing shows the printer", async ({ page, printer }) => {
    for (const address of ["#/%/trace", "#/printer/%E0", "#%", "#main"]) {
        await page.goto("about:blank");
        await page.goto(`${printer.web}/${address}`);
        await page.locator(".device").waitFor(soon);
        assert.equal(await page.getByRole("tab", { selected: true }).innerText(), "Trace", address);
    }
    await page.evaluate(() => { window.location.hash = "#/printer/totals"; });
    await becomes("Totals", () => page.getByRole("tab", { selected: true }).innerText());
    await page.evaluate(() => { window.location.hash = "#/printer/%"; });
    await becomes("Trace", () => page.getByRole("tab", { selected: true }).innerText());
});
