// The page for people with screen readers, as axe knows what they need.
import assert from "node:assert/strict";
import { after } from "node:test";
import { axeFindsNothing } from "./axe.mjs";
import { endAll } from "./shop.mjs";
import { sheets, withPage } from "./with_page.mjs";

after(endAll);

withPage("axe finds nothing", async ({ till, page, printer }) => {
    await till.sell("Chlieb", "1.00");
    await till.sell("Chlieb", "0.00"); // refused
    await printer.ask("POST", "faults", { kind: "acknowledgeLost", command: "payment" });
    await till.sell("Chlieb", "2.00");
    await printer.ask("POST", "faults", { kind: "refuse", command: "payment", code: 49 });
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

for (const [what, ...options] of [["a printer that has done nothing"], ["a new printer", "--factory-new"]]) {
    withPage(`axe finds nothing at ${what}`, async ({ page }) => {
        for (const sheet of sheets) {
            await page.evaluate((name) => { window.location.hash = `#/printer/${name}`; }, sheet);
            await page.locator(`#sheet-${sheet} > :not(:empty)`).first().waitFor();
            await axeFindsNothing(page, `${sheet} of ${what}`);
        }
    }, { options });
}
