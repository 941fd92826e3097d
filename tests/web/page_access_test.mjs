// The page for people with screen readers, as axe knows what they need.
import assert from "node:assert/strict";
import { after } from "node:test";
import { axeFindsNothing } from "./axe.mjs";
import { endAll } from "./shop.mjs";
import { sheets, withPage } from "./with_page.mjs";

after(endAll);

const wide = { width: 1440, height: 900 };
const narrow = { width: 360, height: 740 };

// Of each sheet, with something opened on it.
async function lookAtSheets(page, where, options = {}) {
    for (const sheet of sheets) {
        await page.evaluate((name) => { window.location.hash = `#/printer/${name}`; }, sheet);
        await page.locator(`#sheet-${sheet} > :not(:empty)`).first().waitFor();
        if (sheet === "trace" && await page.locator(".exchange.chosen").count() === 0) {
            await page.locator(".exchange .name").first().click();
        } else if (sheet === "journal") {
            await page.locator(".documents .name").first().click();
            await page.locator(".preview .slip").waitFor();
        }
        await axeFindsNothing(page, `${sheet}, ${where}`, options);
    }
}

withPage("axe finds nothing, on wide screens and on narrow ones", async ({ till, page, printer }) => {
    await till.sell("Chlieb", "1.00");
    await till.sell("Chlieb", "0.00"); // refused
    await printer.ask("POST", "faults", { kind: "acknowledgeLost", command: "payment" });
    await till.sell("Chlieb", "2.00");
    await printer.ask("POST", "faults", { kind: "refuse", command: "payment", code: 49 });
    await lookAtSheets(page, "light");
    await page.emulateMedia({ colorScheme: "dark" });
    await lookAtSheets(page, "dark", { runOnly: ["color-contrast"] }); // nothing but the colours is different
    await page.emulateMedia({ colorScheme: "light" });
    await page.setViewportSize(narrow);
    await lookAtSheets(page, "narrow", { rules: { "target-size": { enabled: true } } }); // fingers
});

for (const [what, ...options] of [["a printer that has done nothing"], ["a new printer", "--factory-new"]]) {
    withPage(`axe finds nothing at ${what}`, async ({ page }) => {
        for (const sheet of sheets) {
            await page.evaluate((name) => { window.location.hash = `#/printer/${name}`; }, sheet);
            await page.locator(`#sheet-${sheet} > :not(:empty)`).first().waitFor();
            await page.setViewportSize(wide);
            await axeFindsNothing(page, `${sheet} of ${what}`);
            await page.setViewportSize(narrow);
            await axeFindsNothing(page, `${sheet} of ${what}, narrow`);
        }
    }, { options });
}
