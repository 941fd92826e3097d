// The page by the keyboard alone: every part is reached, and the focus is never lost.
import assert from "node:assert/strict";
import { after } from "node:test";
import { endAll, openTill } from "./shop.mjs";
import { becomes, seesText, withPage } from "./with_page.mjs";

after(endAll);

const focused = (page) => page.evaluate(() => {
    const { activeElement, body } = document;
    return activeElement === body ? "nothing" : activeElement.id || (activeElement.getAttribute("aria-label") ?? activeElement.textContent);
});
const two = ["--printer", "bar=127.0.0.1:0", "--printer", "shop=127.0.0.1:0"];

withPage("the way past the head goes to what is shown and stays there", async ({ page, printer }) => {
    await page.keyboard.press("Tab");
    assert.equal(await focused(page), "To the printer");
    await page.keyboard.press("Enter");
    await becomes("main", () => focused(page));
    assert.equal(page.url(), `${printer.web}/#/printer/faults`);
    assert.equal(await page.getByRole("tab", { selected: true }).innerText(), "Faults");
}, { page: { at: "#/printer/faults" } });

withPage("the way past the head does not leave one of several printers", async ({ page, printer }) => {
    await page.keyboard.press("Tab");
    await page.keyboard.press("Enter");
    await becomes("main", () => focused(page));
    assert.equal(page.url(), `${printer.web}/#/bar/journal`);
    assert.equal(await page.getByRole("tab", { selected: true }).innerText(), "Journal");
}, { options: two, page: { at: "#/bar/journal" } });

withPage("a long paper is one stop of Tab, and its documents are opened by a key", async ({ till, page }) => {
    for (let receipt = 1; receipt <= 12; receipt += 1) {
        await till.sell(`Ware ${receipt}`, "1.00");
    }
    await becomes(12, () => page.locator(".slip.isCut").count());
    await page.locator(".paper").focus();
    const before = page.url();
    await page.keyboard.press("o"); // no line is chosen yet
    assert.equal(page.url(), before);
    assert.equal(await page.locator(".preview:not([hidden])").count(), 0);
    await page.keyboard.press("Tab");
    assert.equal(await page.evaluate(() => document.activeElement.type), "radio");
    await page.keyboard.press("Shift+Tab");
    assert.equal(await focused(page), "Paper");
    for (let exchange = 0; exchange < 5; exchange += 1) {
        await page.keyboard.press("ArrowUp"); // four exchanges print a receipt
    }
    await becomes("11", () => page.locator(".slip:has(.marked)").getAttribute("data-document"));
    await becomes(true, async () => (await page.locator("#news").textContent()).includes("VAT A 23 %")); // it is read aloud
    await page.keyboard.press("o");
    await seesText(page.locator(".preview .slip"), "Ware 11");
    assert.equal(await focused(page), "Paper");
    const isSaid = (text) => becomes(text, () => page.locator("#news").textContent());
    await isSaid("Receipt 11 is shown.");
    await page.keyboard.press("Enter");
    await seesText(page.locator(".exchange.chosen"), "paragonEnd");
    await isSaid("paragonEnd is shown: done.");
    assert.equal(await focused(page), "Paper");
});

withPage("lines that are chosen are not those of another beginning", async ({ till, page, printer }) => {
    await till.sell("Chlieb", "1.00");
    await seesText(page.locator(".slip.isCut"), "Chlieb");
    await page.locator(".paper").focus();
    await page.keyboard.press("ArrowUp");
    await page.locator(".line.marked").first().waitFor();
    await printer.ask("POST", "reset", {});
    await becomes(0, () => page.locator(".slip").count());
    await till.sell("Rožok", "2.00");
    await seesText(page.locator(".slip.isCut"), "Rožok");
    const before = page.url();
    await page.keyboard.press("o");
    await page.keyboard.press("Enter");
    assert.equal(page.url(), before);
    assert.equal(await page.locator(".preview:not([hidden]), .exchange.chosen").count(), 0);
});

withPage("a document is opened from the paper of one of several printers", async ({ page, printer }) => {
    const bar = await openTill(printer.addressOf("bar"));
    await bar.sell("Espresso", "1.90");
    await bar.sell("Cappuccino", "2.40");
    await bar.end();
    await becomes(2, () => page.getByRole("region", { name: "bar" }).locator(".slip.isCut").count());
    await page.getByRole("region", { name: "bar" }).getByRole("log").focus();
    for (let exchange = 0; exchange < 5; exchange += 1) {
        await page.keyboard.press("ArrowUp");
    }
    await page.keyboard.press("o");
    await seesText(page.locator(".preview .slip"), "Espresso");
    assert.equal(await focused(page), "main", "what had the focus is gone");
    await page.getByRole("navigation").getByRole("link", { name: "shop" }).press("Enter");
    await becomes("shop", () => focused(page));
}, { options: two, page: { until: ".overview" } });

withPage("the focus goes on to where its button leads, or to what is next", async ({ till, page, printer }) => {
    const arm = (kind) => printer.ask("POST", "faults", { kind, command: "destroyParagon" });
    await printer.ask("POST", "faults", { kind: "acknowledgedNotExecuted", command: "paragonEnd" });
    await arm("paperOut");
    await arm("silence");
    await till.sell("Chlieb", "1.00");
    await page.getByRole("tab", { name: "Faults" }).click();
    await page.getByRole("button", { name: "Exchange 5" }).press("Enter");
    await becomes("paragonEnd", () => focused(page));
    await till.finish();
    await page.getByRole("tab", { name: "Journal" }).click();
    await page.getByRole("button", { name: "Receipt 1" }).press("Enter");
    await page.getByRole("button", { name: "Close the document" }).press("Enter");
    await becomes("Receipt 1", () => focused(page));
    await page.keyboard.press("Enter");
    await page.locator(".preview").getByRole("button", { name: "Trace" }).press("Enter");
    await becomes("paragonEnd", () => focused(page));
    await page.getByRole("tab", { name: "Faults" }).click();
    await page.getByRole("button", { name: "Disarm fault 2" }).press("Enter");
    await becomes("Disarm fault 3", () => focused(page));
    await page.keyboard.press("Enter");
    await becomes("Remove fault 1", () => focused(page));
    await page.keyboard.press("Enter");
    await becomes("Disarm all", () => focused(page));
});

withPage("the focus turns with the pages of the journal", async ({ till, page }) => {
    for (let receipt = 1; receipt <= 26; receipt += 1) {
        await till.sell("Rožok", "1.00");
    }
    await page.getByRole("tab", { name: "Journal" }).click();
    await seesText(page.locator(".documents"), "Receipt 26");
    await page.getByRole("button", { name: "Older" }).press("Enter");
    await becomes("Newer", () => focused(page));
    await page.keyboard.press("Enter");
    await becomes("Older", () => focused(page));
});

withPage("the focus stays where it is while the till goes on", async ({ till, page }) => {
    await page.getByRole("tab", { name: "Faults" }).click();
    await page.getByRole("button", { name: "Lose the acknowledge of a payment" }).click();
    await page.getByRole("button", { name: "Disarm fault 1" }).focus();
    await till.sell("Chlieb", "1.00");
    await seesText(page.locator(".armed"), "Ended. Met 1 request,");
    assert.equal(await focused(page), "Remove fault 1");
    await page.getByRole("tab", { name: "Journal" }).click();
    await page.locator(".documents").getByRole("button", { name: "Receipt 1" }).focus();
    await till.sell("Rožok", "2.00");
    await seesText(page.locator(".documents"), "Receipt 2");
    assert.equal(await focused(page), "Receipt 1");
    await page.locator(".paper").focus();
    await page.keyboard.press("ArrowUp"); // the end of the receipt
    await page.keyboard.press("ArrowUp");
    await seesText(page.locator(".line.marked"), "Hotovosť");
    await page.keyboard.press("Enter");
    await seesText(page.locator(".exchange.chosen"), "payment");
});

withPage("everything is reached by the keyboard alone", async ({ page, printer }) => {
    const press = async (key, times = 1) => {
        for (let time = 0; time < times; time += 1) {
            await page.keyboard.press(key);
        }
    };
    const tabUntil = async (isThere) => {
        for (let step = 0; step < 60; step += 1) {
            await page.keyboard.press("Tab");
            if (await page.evaluate(isThere)) {
                return;
            }
        }
        assert.fail(`never reached: ${isThere}`);
    };
    await tabUntil(() => document.activeElement.type === "radio" && document.activeElement.name.endsWith("paper"));
    const outline = await page.evaluate(() => getComputedStyle(document.activeElement.nextElementSibling).outlineStyle);
    assert.equal(outline, "solid", "it is seen where one is");
    await press("ArrowRight", 2);
    await becomes("out", async () => (await printer.ask("GET", "hardware")).paper);
    await tabUntil(() => document.activeElement.role === "tab");
    await press("ArrowRight", 3);
    assert.equal(await page.evaluate(() => document.activeElement.textContent), "Faults");
    await tabUntil(() => document.activeElement.textContent === "Busy for 5 seconds");
    await press("Enter");
    await seesText(page.locator(".armed"), "busy, milliseconds 5000");
    await tabUntil(() => document.activeElement.textContent === "Disarm");
    await press("Space");
    await seesText(page.locator(".armed"), "No fault is armed");
});
