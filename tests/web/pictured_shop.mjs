// What the pictures of the page show: a bakery at the end of its day, and four printers side by side.
import { createHash } from "node:crypto";
import fs from "node:fs";
import path from "node:path";
import { fileURLToPath } from "node:url";
import { openTill, startPrinter } from "./shop.mjs";

const fileHere = (name) => fileURLToPath(new URL(name, import.meta.url));
export const logo = fileHere("logo.bmp");

// With the acknowledge of its last payment lost.
export async function openBakery() {
    const printer = await startPrinter();
    await printer.ask("PATCH", "clock", { mode: "stands" });
    const till = await openTill(printer.addressOf());
    await till.call("prepareGraphicHeader", 1, logo);
    await till.call("loadGHNV", 1, 1, 0, 0, 0, 0, 0, 0, 0);
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
    return { printer, till };
}

const four = ["bar", "kitchen", "terrace", "shop"];
export async function openFour() {
    const printer = await startPrinter(...four.flatMap((name) => ["--printer", `${name}=127.0.0.1:0`]));
    for (const name of four) {
        await printer.ask("PATCH", `/printers/${name}/clock`, { mode: "stands", now: "2026-01-31 09:12" });
    }
    for (const [name, good, price] of [["bar", "Espresso", "1.90"], ["kitchen", "Halušky", "7.50"], ["terrace", "Limonáda", "3.20"]]) {
        const till = await openTill(printer.addressOf(name));
        await till.sell(good, price);
        await till.sell(good, price);
        await till.end();
    }
    await printer.ask("PATCH", "/printers/shop/hardware", { paper: "out" });
    return printer;
}

// All that a page can show of a printer, but for what a busy machine changes: how long something took, and how often a
// till has asked meanwhile whether anybody is there.
const changing = new Set(["microseconds", "repeatedAfter", "repeatOf", "attempt", "exchange", "number"]);
async function shownOf(printer, name) {
    const ask = (what) => printer.ask("GET", `/printers/${name}/${what}`);
    const { state: { situation, life, hardware }, totals, paper, trace } = await ask("news");
    const exchanges = trace.filter((exchange) => exchange.name !== "probe");
    const shown = [situation, life, hardware, totals, await ask("totals/hours"), await ask("settings"), await ask("pictures"), paper, exchanges];
    return JSON.stringify(shown, (key, value) => (changing.has(key) ? undefined : value));
}

// Of everything that the pictures are made of: the page, those who sell and draw, and what the printers print and answer.
export async function sumOf(bakery, sideBySide) {
    const ofPage = fs.readdirSync(process.env.TELVOFM_PAGE).sort().map((name) => path.join(process.env.TELVOFM_PAGE, name));
    const ofPictures = ["pictures.mjs", "pictured_shop.mjs", "shop.mjs", "logo.bmp"].map(fileHere);
    const sum = createHash("sha256");
    [...ofPage, ...ofPictures].forEach((file) => sum.update(fs.readFileSync(file)));
    sum.update(await shownOf(bakery, "printer"));
    for (const name of four) {
        sum.update(await shownOf(sideBySide, name));
    }
    return `${sum.digest("hex")}\n`;
}
