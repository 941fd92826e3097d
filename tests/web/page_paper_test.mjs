// The paper: what is printed on it, when, and what becomes of it while nobody looks.
import assert from "node:assert/strict";
import { execFileSync } from "node:child_process";
import fs from "node:fs";
import os from "node:os";
import path from "node:path";
import { after } from "node:test";
import { endAll } from "./shop.mjs";
import { becomes, seesText, soon, withPage } from "./with_page.mjs";

after(endAll);

withPage("a sale appears on the paper while it happens", async ({ till, page }) => {
    const slip = page.locator(".slip");
    await till.begin();
    await seesText(slip, "Receipt 1");
    await seesText(page.locator(".facts"), "Receipt is open");
    assert.equal(await till.item("Chlieb šumavský", "12.50"), 0);
    await seesText(slip.locator(".item"), "Chlieb šumavský");
    assert.equal(await slip.locator(".total").count(), 0, "nothing is paid yet");
    assert.equal(await till.pay(1250), 0);
    await seesText(slip.locator(".total"), "TOTAL EUR                          12.50");
    assert.equal(await slip.locator(".cut").count(), 0, "the receipt is not ended yet");
    assert.equal(await till.finish(), 0);
    await seesText(slip.locator(".cut"), "VIRTUAL PRINTER, NO FISCAL DOCUMENT");
    await seesText(page.locator(".facts"), "1 receipt, 12.50 EUR");
    await seesText(page.locator(".drawer"), "Drawer open");
    assert.equal(await till.call("printDisplay", 1, 0, "", "SPOLU          12.50Dakujeme"), 0);
    await seesText(page.locator(".glass"), "SPOLU          12.50");
});

withPage("what happens while nobody looks is there when somebody does", async ({ till, page }) => {
    const hide = (isHidden) => page.evaluate((value) => {
        Object.defineProperty(document, "hidden", { value, configurable: true });
        document.dispatchEvent(new Event("visibilitychange"));
    }, isHidden);
    await till.begin();
    await till.item("Item before", "0.01");
    await seesText(page.locator(".slip .item"), "Item before");
    await hide(true);
    for (let item = 0; item < 250; item += 1) {
        assert.equal(await till.item(`Item ${item}`, "0.01"), 0);
    }
    await hide(false);
    await becomes(251, () => page.locator(".slip .item").count());
    await becomes(253, () => page.locator(".exchange").count());
    const numbers = await page.locator(".exchange .number").allTextContents();
    assert.deepEqual(numbers.map(Number), Array.from({ length: 253 }, (_, index) => 253 - index));
});

withPage("an exchange that is closed leaves the paper to what comes", async ({ till, page }) => {
    for (let receipt = 0; receipt < 5; receipt += 1) {
        await till.sell(`Item ${receipt}`, "1.00");
    }
    await page.locator(".exchange", { hasText: "Item 0" }).locator(".name").click();
    await page.locator(".line.marked").first().waitFor(soon);
    await page.locator(".exchange.chosen .name").click();
    await becomes(0, () => page.locator(".line.marked").count());
    const isAtEnd = () => page.locator(".paper").evaluate((paper) => paper.scrollTop + paper.clientHeight >= paper.scrollHeight - 2);
    await becomes(true, isAtEnd);
    await till.sell("One more", "1.00");
    await seesText(page.locator(".slip .item"), "One more");
    await becomes(true, isAtEnd);
});

withPage("codes on the screen are read to what was sent", async ({ till, page }) => {
    const texts = ["https://example.com/receipt/O-7DBCDA8A56EE426DBCDA8A56EE426D1A", "ľščťžýáíé 12.50 €"];
    await till.begin();
    await till.item("Chlieb", "1.00");
    assert.equal(await till.call("printQRCode", 1, texts[0]), 0);
    assert.equal(await till.call("printQRCode", 1, texts[1]), 0);
    assert.equal(await till.call("printBC", 1, 0, "5901234123457"), 0);
    await till.pay(100);
    await till.finish();
    await seesText(page.locator(".slip"), "NO FISCAL DOCUMENT");
    const folder = fs.mkdtempSync(path.join(os.tmpdir(), "page-test-code-"));
    const read = async (locator) => {
        const file = path.join(folder, "code.png");
        await locator.scrollIntoViewIfNeeded();
        await locator.screenshot({ path: file });
        return execFileSync("zbarimg", ["--quiet", "--raw", file], { encoding: "utf8" }).trimEnd();
    };
    assert.equal(await read(page.locator(".line.qrCode").nth(0)), texts[0]);
    assert.equal(await read(page.locator(".line.qrCode").nth(1)), texts[1]);
    assert.equal(await read(page.locator(".line.barCode")), "5901234123457");
    await page.getByRole("tab", { name: "Journal" }).click();
    await page.locator(".documents .name").first().click();
    assert.equal(await read(page.locator(".preview .line.qrCode").nth(0)), texts[0]);
    fs.rmSync(folder, { recursive: true });
});
