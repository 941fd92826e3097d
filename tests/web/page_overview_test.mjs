// Many printers side by side in a browser: nothing is squeezed, and from each the way leads on.
import assert from "node:assert/strict";
import { after } from "node:test";
import { endAll, openTill } from "./shop.mjs";
import { becomes, seesText, withPage } from "./with_page.mjs";

after(endAll);

const eight = Array.from({ length: 8 }, (_, index) => ["--printer", `p${index + 1}=127.0.0.1:0`]).flat();

withPage("eight printers have whole cards with two rows of display, and a printed line leads to its exchange", async ({ page, printer }) => {
    const till = await openTill(printer.addressOf("p8"));
    await till.sell("Espresso", "1.90");
    await till.call("printDisplay", 1, 0, "", "SPOLU           1.90Dakujeme");
    await till.end();
    const last = page.getByRole("region", { name: "p8" });
    await seesText(last.locator(".cut"), "NO FISCAL DOCUMENT");
    const [cut, card] = await last.evaluate((all) => [all.querySelector(".cut"), all].map((part) => part.getBoundingClientRect().bottom));
    assert.ok(cut <= card, `the paper ends at ${cut}, its card at ${card}`);
    await seesText(last.locator(".glass > div").nth(0), /^SPOLU           1\.90$/);
    await seesText(last.locator(".glass > div").nth(1), /^Dakujeme {12}$/);
    await last.locator(".slip .item").click();
    await seesText(page.locator(".detail td"), "Espresso");
    await page.goBack();
    await page.locator(".overview").waitFor();
    await becomes(0, () => page.locator(".detail").count());
}, { options: eight, page: { until: ".overview" } });
