// An answer that comes late, to a till that asks meanwhile again and again whether anybody is there.
import assert from "node:assert/strict";
import net from "node:net";
import { after } from "node:test";
import { request } from "./raw_till.mjs";
import { endAll } from "./shop.mjs";
import { becomes, seesText, soon, withPage } from "./with_page.mjs";

after(endAll);

const noTill = { options: ["--printer", "printer=127.0.0.1:0"] }; // of the library: it would not ask so often
const dayBegin = request(0x29, 0);
const atOnce = 100; // fewer than news tell
const outcome = (page) => page.locator(".exchange", { hasText: "sellingDayBegin" }).locator(".outcome");
const busyLamp = (page) => page.locator(".lamp", { hasText: "Busy" }).getAttribute("data-kind");

// Asks for the day, and behind it so often whether anybody is there; the page hears of it piece by piece.
async function askAndProbe({ page, printer }, probes) {
    await printer.ask("POST", "faults", { kind: "busy", command: "sellingDayBegin" });
    const colon = printer.addressOf().lastIndexOf(":");
    const till = net.connect({ host: printer.addressOf().slice(0, colon), port: Number(printer.addressOf().slice(colon + 1)) });
    till.resume();
    till.write(dayBegin);
    await seesText(outcome(page), "waiting");
    for (let last = 1; last <= probes; last += atOnce) {
        const isHeard = page.waitForResponse(async (response) => response.url().includes("/news?") &&
            (await response.json()).trace.at(-1)?.number === last + atOnce, soon);
        till.write(Buffer.alloc(atOnce, 0x11));
        await isHeard;
    }
    return till;
}

withPage("an answer that comes behind hundreds of probes is told on the page that is open", async (all) => {
    const { page, printer } = all;
    const till = await askAndProbe(all, 600);
    await seesText(outcome(page), "waiting");
    assert.equal(await busyLamp(page), "warn");
    await printer.ask("DELETE", "faults");
    await becomes("done", () => outcome(page).innerText());
    await becomes("off", () => busyLamp(page));
    await page.locator(".exchange .name").first().click();
    await seesText(page.locator(".detail"), "The printer carried it out and keeps it.");
    till.destroy();
}, noTill);

withPage("and on a page that is opened meanwhile", async (all) => {
    const { page, printer } = all;
    const till = await askAndProbe(all, 200);
    await page.reload();
    await seesText(outcome(page), "waiting");
    await printer.ask("DELETE", "faults");
    await becomes("done", () => outcome(page).innerText());
    till.destroy();
}, noTill);

withPage("it is the last row when probes are shown, however many they are", async (all) => {
    const { page, printer } = all;
    const till = await askAndProbe(all, 400);
    await page.getByLabel("Probes").check();
    const rows = () => page.locator(".exchange .number").allTextContents().then(([first, ...all]) => `${first} to ${all.at(-1)}`);
    await becomes("401 to 1", rows);
    await printer.ask("DELETE", "faults");
    await becomes("401 to 102", rows); // as any that so many are behind
    till.destroy();
}, noTill);
