// The settings and logos, as tills have made them.
import assert from "node:assert/strict";
import { after } from "node:test";
import { fileURLToPath } from "node:url";
import { endAll } from "./shop.mjs";
import { becomes, seesText, soon, withPage } from "./with_page.mjs";

after(endAll);

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
    assert.equal(await till.call("prepareGraphicHeader", 1, fileURLToPath(new URL("logo.bmp", import.meta.url))), 0);
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
});
