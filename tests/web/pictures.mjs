// The pictures of the page that the documentation shows, and beside them a sum of what they are made of.
//
//     pictures.mjs FOLDER
import fs from "node:fs";
import path from "node:path";
import { openBakery, openFour, sumOf } from "./pictured_shop.mjs";
import { endAll, openPage } from "./shop.mjs";

const folder = process.argv[2];
fs.mkdirSync(folder, { recursive: true });
const save = (page, name, options = {}) => page.screenshot({ path: path.join(folder, `${name}.png`), animations: "disabled", ...options });

const { printer, till } = await openBakery();
const four = await openFour();
fs.writeFileSync(path.join(folder, "page.sum"), await sumOf(printer, four));

const page = await openPage(printer);
await page.locator(".exchange.warn .name").first().click();
await page.waitForFunction(() => document.querySelectorAll(".line.marked").length > 0);
await page.locator(".paper").evaluate((paper) => { paper.scrollTop = paper.scrollHeight; });
await save(page, "page");
await page.goto(`${printer.web}/#/printer/journal`);
await page.locator(".documents .name").first().click();
await page.locator(".preview .slip").waitFor();
await save(page, "journal");
await page.emulateMedia({ colorScheme: "dark" });
await page.goto(`${printer.web}/#/printer/totals`);
await page.locator(".hours").waitFor();
await save(page, "dark");
await page.goto(`${printer.web}/#/printer/trace`);
await page.setViewportSize({ width: 390, height: 844 });
await page.emulateMedia({ colorScheme: "light" });
await page.waitForFunction(() => document.querySelector(".paper").scrollTop + document.querySelector(".paper").clientHeight >= document.querySelector(".paper").scrollHeight - 2);
await save(page, "narrow");

const view = await openPage(four, { until: ".overview" });
await view.locator(".situation[data-kind=bad]").waitFor();
await view.locator(".slip.isCut").nth(5).waitFor();
await save(view, "printers");

await till.end();
await printer.end();
await four.end();
await endAll();
