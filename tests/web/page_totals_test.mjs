// The totals of the day.
import assert from "node:assert/strict";
import { after } from "node:test";
import { endAll } from "./shop.mjs";
import { becomes, seesText, withPage } from "./with_page.mjs";

after(endAll);

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

withPage("payments are summed up as the till was given them", async ({ till, page }) => {
    const taken = { Hotovost: 0, Karta: 0, Poukaz: 0 }; // by the names of the types 1, 2 and 4
    const receipt = async (total, ...payments) => {
        assert.equal((await till.begin()).at(-1), 0);
        assert.equal(await till.item("Chlieb", (total / 100).toFixed(2)), 0);
        let due = total;
        for (const [name, type, given] of payments) {
            assert.equal(await till.call("payment_int", 1, 0, type, due, given, 0, name), 0);
            taken[name] += Math.min(due, given); // what is too much is given back
            due -= given;
        }
        assert.equal(await till.finish(), 0);
    };
    await page.getByRole("tab", { name: "Totals" }).click();
    await receipt(1250, ["Hotovost", 1, 1250]);
    await receipt(699, ["Karta", 2, 699]);
    await receipt(2000, ["Poukaz", 4, 500], ["Karta", 2, 1001], ["Hotovost", 1, 1000]); // 5.01 of change
    await receipt(1, ["Hotovost", 1, 1]);
    assert.equal(await till.call("depositeInDrawer_int", 1, 0, "Vklad", 0, 10_000, 1), 0);
    assert.deepEqual(taken, { Hotovost: 1750, Karta: 1700, Poukaz: 500 });
    const drawer = { ...taken, Hotovost: taken.Hotovost + 10_000 };
    const rows = (title) => page.locator(".bars", { hasText: title }).locator("tr").evaluateAll((all) =>
        Object.fromEntries(all.map((row) => [row.querySelector("th").textContent, Math.round(100 * Number(row.querySelector(".sum").textContent))])));
    await becomes(JSON.stringify(drawer), async () => JSON.stringify(await rows("In the drawer")));
    assert.deepEqual(await rows("By payment"), taken);
    await seesText(page.locator(".tile", { hasText: "Turnover" }), "39.50 EUR");
    await seesText(page.locator(".tile", { hasText: "Receipts" }), "4");
    await seesText(page.locator(".tile", { hasText: "Drawer moved" }), "1");
    // The longest bar is the largest sum, and the others are as long as they are to it.
    const lengths = await page.locator(".bars", { hasText: "By payment" }).locator("rect").evaluateAll((all) => all.map((bar) => Number(bar.getAttribute("width"))));
    assert.deepEqual(lengths.map(Math.round), [100, Math.round(170_000 / 1750), Math.round(50_000 / 1750)]);
});
