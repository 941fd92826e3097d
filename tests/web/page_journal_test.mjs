// The journal: documents that are searched, turned over, opened and saved.
import assert from "node:assert/strict";
import fs from "node:fs";
import { after } from "node:test";
import { endAll } from "./shop.mjs";
import { becomes, seesText, withPage } from "./with_page.mjs";

after(endAll);

withPage("the journal is searched, turned over and opened", async ({ till, page, printer }) => {
    for (let receipt = 0; receipt < 27; receipt += 1) {
        await till.sell(receipt === 3 ? "Makovník 250 g" : "Rožok", "1.00");
    }
    await page.getByRole("tab", { name: "Journal" }).click();
    const rows = page.locator(".documents tbody tr");
    await becomes(25, () => rows.count());
    assert.match(await rows.first().innerText(), /Receipt 27/);
    const [newer, older] = ["Newer", "Older"].map((name) => page.getByRole("button", { name }));
    const pages = page.locator(".pages [role=status]");
    assert.deepEqual([await newer.isEnabled(), await older.isEnabled(), await pages.innerText()], [false, true, "1 to 25"]);
    await older.click();
    await becomes(2, () => rows.count());
    assert.match(await rows.first().innerText(), /Receipt 2\b/);
    assert.deepEqual([await newer.isEnabled(), await older.isEnabled(), await pages.innerText()], [true, false, "26 to 27"]);
    await newer.click();
    await becomes(25, () => rows.count());
    assert.match(await rows.first().innerText(), /Receipt 27/);
    assert.deepEqual([await newer.isEnabled(), await older.isEnabled(), await pages.innerText()], [false, true, "1 to 25"]);
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

withPage("the journal shows the documents of one kind", async ({ till, page }) => {
    await till.sell("Chlieb", "1.00");
    await till.begin();
    await till.item("Rožok", "2.00");
    assert.equal(await till.call("destroyParagon", 1, 0, ""), 0);
    assert.equal(await till.call("depositeInDrawer_int", 1, 0, "Vklad", 0, 5000, 1), 0);
    assert.equal(await till.call("printReport", 1, { letter: "X" }, 0), 0);
    await till.sell("Makovník", "4.00");
    assert.equal(await till.call("printReport", 1, { letter: "Z" }, 0), 0);
    await page.getByRole("tab", { name: "Journal" }).click();
    const rows = page.locator(".documents tbody tr");
    await becomes(6, () => rows.count());
    const titles = () => rows.getByRole("button").allInnerTexts().then((all) => all.join(", "));
    for (const [kind, expected] of [
        ["Receipt", "Receipt 2, Receipt 1"], ["Cancelled", "Cancelled"], ["Drawer", "Drawer"], ["Closure", "Closure 1"], ["Report", "Report"],
        ["All", "Closure 1, Receipt 2, Report, Drawer, Cancelled, Receipt 1"],
    ]) {
        await page.getByLabel("Kind").selectOption(kind);
        await becomes(expected, titles);
    }
    // Both at once.
    await page.getByLabel("Kind").selectOption("Receipt");
    await page.locator(".journal input[type=search]").fill("Rožok");
    await seesText(page.locator(".journal .hint"), "no such document");
    await page.getByLabel("Kind").selectOption("Cancelled");
    await becomes("Cancelled", titles);
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

withPage("the journal is searched by days that have documents", async ({ till, page, printer }) => {
    const clock = (now) => printer.ask("PATCH", "clock", { now });
    await till.sell("Chlieb", "1.00");
    assert.equal(await till.call("printReport", 1, { letter: "Z" }, 0), 0);
    await clock("2026-02-01 23:59:59");
    await printer.ask("PATCH", "clock", { mode: "stands" });
    await till.sell("Rožok", "2.00");
    await clock("2026-02-02 00:00:00");
    await till.sell("Makovník", "3.00");
    await page.getByRole("tab", { name: "Journal" }).click();
    const found = async (day) => {
        await page.locator(".journal input[type=search]").fill(day);
        await page.locator(".journal input[type=search]").press("Enter");
        return page.locator(".documents .name").allInnerTexts();
    };
    const becomesFound = (day, expected) => becomes(expected, async () => (await found(day)).join());
    await becomesFound("2026-01-31", "Closure 1,Receipt 1");
    await becomesFound("2026-02-01", "Receipt 2");
    await becomesFound("2026-02-02", "Receipt 3");
    await becomesFound("2026-02-03", "");
});
