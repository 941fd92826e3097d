// The pictures of the page that the documentation shows.
//
//     pictures.mjs FOLDER
import fs from "node:fs";
import path from "node:path";
import { drawLogo } from "./logo.mjs";
import { endAll, openPage, openTill, startPrinter } from "./shop.mjs";

const folder = process.argv[2];
fs.mkdirSync(folder, { recursive: true });
const save = (page, name, options = {}) => page.screenshot({ path: path.join(folder, `${name}.png`), animations: "disabled", ...options });

const printer = await startPrinter();
await printer.ask("PATCH", "clock", { mode: "stands" });
const till = await openTill(printer.addressOf());
const page = await openPage(printer);
const logo = path.join(folder, "logo.bmp");
await drawLogo(page, logo);
await till.call("prepareGraphicHeader", 1, logo);
await till.call("loadGHNV", 1, 1, 0, 0, 0, 0, 0, 0, 0);
fs.rmSync(logo);
await till.call("setHeader", 1, "0000", 1, "Pekáreň LIPA, s.r.o.");
await till.call("setHeader", 1, "0000", 2, "Hlavná 12, 040 01 Košice");
await till.call("setAdditionalFooter", 1, "Ďakujeme a tešíme sa na Vás!");
await printer.ask("PATCH", "settings", { printsLogo: true });

const goods = [["Chlieb šumavský", "2.49"], ["Rožok", "0.18"], ["Káva zrnková 250 g", "6.90"], ["Čaj zelený", "4.99"], ["Makovník", "1.60"], ["Mlieko 1 l", "1.19"]];
await till.call("sellingDayBegin", 1, 0);
let seed = 7;
const random = (limit) => (seed = (seed * 1103515245 + 12345) % 2147483648) % limit;
for (let hour = 9; hour < 17; hour += 1) {
    await printer.ask("PATCH", "clock", { now: `2026-01-31 ${String(hour).padStart(2, "0")}:${10 + random(40)}` });
    for (let receipt = 2 + random(5); receipt > 0; receipt -= 1) {
        await till.begin();
        let cents = 0;
        for (let item = 1 + random(3); item > 0; item -= 1) {
            const [name, price] = goods[random(goods.length)];
            cents += Math.round(Number(price) * 100);
            await till.item(name, price, name.startsWith("K") ? "A" : "B");
        }
        await till.pay(cents, ...(random(3) ? [2, "Karta"] : [1, "Hotovosť"]));
        await till.finish();
    }
}
await printer.ask("PATCH", "clock", { now: "2026-01-31 17:04" });
await till.begin();
await till.item("Chlieb šumavský", "2.49", "B");
await till.item("Káva zrnková 250 g", "6.90", "A");
await till.item("Makovník", "1.60", "B");
await till.call("printQRCode", 1, "https://example.com/receipt/O-7DBCDA8A56EE426DBCDA8A56EE426D1A");
await till.call("printDisplay", 1, 0, "", "SPOLU          10.99Ďakujeme");
await printer.ask("POST", "faults", { kind: "acknowledgeLost", command: "payment" });
await till.pay(1099, 2, "Karta");
await till.finish();
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
await till.end();
await printer.end();

const several = await startPrinter(...["bar", "kitchen", "terrace", "shop"].flatMap((name) => ["--printer", `${name}=127.0.0.1:0`]));
const view = await openPage(several, { until: ".overview" });
for (const [name, good, price] of [["bar", "Espresso", "1.90"], ["kitchen", "Halušky", "7.50"], ["terrace", "Limonáda", "3.20"]]) {
    const one = await openTill(several.addressOf(name));
    await one.sell(good, price);
    await one.sell(good, price);
    await one.end();
}
await several.ask("PATCH", "/printers/shop/hardware", { paper: "out" });
await view.locator(".situation[data-kind=bad]").waitFor();
await view.locator(".slip.isCut").nth(5).waitFor();
await save(view, "printers");
await several.end();
await endAll();
