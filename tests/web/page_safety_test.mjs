// What must not get into the page, nor be got out of it: texts of tills, and printers that want a token.
import assert from "node:assert/strict";
import { after, test } from "node:test";
import { axeFindsNothing } from "./axe.mjs";
import { endAll, openBrowser, openPage, openTill, startPrinter } from "./shop.mjs";
import { becomes, seesText, sheets, soon, withPage } from "./with_page.mjs";

after(endAll);

const hostile = [
    "<img src=x onerror=hacked()>", "<script>hacked()</script>", "\"><svg onload=hacked()>", "</div><b>bold</b>", "javascript:hacked()",
    "${hacked()}", "&lt;b&gt;&amp;", "<a href=\"/printers\">x</a>", "<!--", "]]><script>hacked()//",
];

const watchForHacks = (page) => page.evaluate(() => {
    window.hacks = 0;
    window.hacked = () => { window.hacks += 1; };
    window.violations = 0;
    document.addEventListener("securitypolicyviolation", () => { window.violations += 1; });
});
const whatGotIn = (page) => page.evaluate(() => ({
    hacks: window.hacks,
    violations: window.violations,
    strangers: document.querySelectorAll("main img, main script, main [onload], main [onerror], main .slip b, main .slip a").length,
}));
const nothing = { hacks: 0, violations: 0, strangers: 0 };

withPage("texts of receipts never run and are shown as they are", async ({ till, page, printer }) => {
    await watchForHacks(page);
    await till.begin();
    for (const name of hostile) {
        assert.equal(await till.item(name, "1.00"), 0, name);
    }
    await till.call("printDisplay", 1, 0, "", hostile[0]);
    await till.pay(100 * hostile.length, 1, hostile[1]);
    await till.finish();
    await seesText(page.locator(".slip"), "NO FISCAL DOCUMENT");
    const shown = await page.locator(".slip .item > div:first-child").allInnerTexts();
    assert.deepEqual(shown, hostile);
    for (const sheet of sheets) {
        await page.evaluate((name) => { window.location.hash = `#/printer/${name}`; }, sheet);
        await page.locator(`#sheet-${sheet} > :not(:empty)`).first().waitFor();
    }
    await page.evaluate(() => { window.location.hash = "#/printer/journal"; });
    await page.locator(".documents .name").first().click();
    await seesText(page.locator(".preview .slip"), hostile[1]);
    assert.deepEqual(await whatGotIn(page), nothing);
    const drawing = await page.context().newPage();
    await drawing.goto(`${printer.web}/printers/printer/documents/1/paper.svg`);
    assert.equal(await drawing.evaluate(() => document.querySelectorAll("script, img, [onload], [onerror]").length), 0);
    assert.ok((await drawing.evaluate(() => document.documentElement.textContent)).includes(hostile[1]));
    // The policy of the page refuses what would get into it all the same.
    const isRefused = await page.evaluate(() => {
        try {
            document.querySelector(".slip").innerHTML = "<img src=x onerror=hacked()>";
            return false;
        } catch {
            return true;
        }
    });
    assert.equal(isRefused, true);
    page.complaints.length = 0; // of that attempt
});

withPage("nor do texts of settings, units, codes and files", async ({ till, page, printer }) => {
    await watchForHacks(page);
    const [image, script, drawing, end] = hostile;
    const settings = await printer.ask("PATCH", "settings", {
        prelines: [image], header: { 1: script, 2: drawing }, postlines: [end], additionalHeader: image, additionalFooter: script, superFooter: drawing,
    });
    assert.equal(settings.error, undefined);
    await till.begin();
    assert.equal(await till.call("itemSale_str", 1, 0, "Chlieb", "1.00", "A", "1.000", "1.00", "<b>"), 0);
    assert.equal(await till.call("printQRCode", 1, script), 0);
    await till.pay(100);
    await till.finish();
    await seesText(page.locator(".slip .cut"), "NO FISCAL DOCUMENT");
    const printed = await page.locator(".slip").innerText();
    for (const text of [image, script, drawing, end, "1 <b> x 1.00"]) {
        assert.ok(printed.includes(text), `${text} is not in\n${printed}`);
    }
    assert.equal(await page.locator(".slip .qrCode svg").getAttribute("aria-label"), `QR code: ${script}`);
    await page.getByRole("tab", { name: "Settings" }).click();
    for (const text of [image, script, drawing, end]) {
        await seesText(page.locator("#sheet-settings td"), text);
    }
    await page.getByRole("tab", { name: "Faults" }).click();
    await page.getByLabel("From a file").setInputFiles({
        name: `${image}.json`, mimeType: "application/json", buffer: Buffer.from(JSON.stringify({ trouble: script, seed: 7, faults: [{ kind: "silence" }] })),
    });
    await seesText(page.locator(".faults > [role=status]"), `Armed: ${image}.json.`);
    assert.deepEqual(await whatGotIn(page), nothing);
});

test("an address that others can reach needs a token", async () => {
    const failure = await startPrinter("--web", "0.0.0.0:0").then((printer) => printer.end(), ({ message }) => message);
    assert.match(failure ?? "it was started", /others can reach 0\.0\.0\.0:0; .* --token/);
});

test("the token is asked for once", async () => {
    const token = "0123456789abcdef";
    const printer = await startPrinter("--token", token);
    const page = await openPage(printer, { until: "#login" });
    await axeFindsNothing(page, "the question for the token");
    await page.getByRole("textbox").fill("0123456789abcdeX");
    await page.getByRole("button", { name: "Open" }).click();
    await seesText(page.locator("#login .failure"), "The token is wrong");
    assert.equal(await page.locator(".device").count(), 0);
    await page.getByRole("textbox").fill(token);
    await page.getByRole("button", { name: "Open" }).click();
    await page.locator(".device").waitFor(soon);
    await seesText(page.locator(".link-state"), "Live");
    await page.reload();
    await page.locator(".device").waitFor(soon);
    assert.equal(await page.locator("#login").count(), 0);
    const [cookie] = await page.context().cookies();
    assert.deepEqual([cookie.httpOnly, cookie.sameSite], [true, "Strict"]);
    await page.context().close();
    await printer.end();
});

// A browser has one set of cookies for all ports of a host.
test("two programs on one machine ask for their tokens once each", async () => {
    const tokens = ["0123456789abcdef", "fedcba9876543210"];
    const printers = await Promise.all(tokens.map((token) => startPrinter("--token", token)));
    const context = await (await openBrowser()).newContext();
    const pages = [];
    for (const [index, token] of tokens.entries()) {
        const page = await openPage(printers[index], { until: "#login" }, context);
        await page.getByRole("textbox").fill(token);
        await page.getByRole("button", { name: "Open", exact: true }).click();
        await page.locator(".device").waitFor(soon);
        pages.push(page);
    }
    for (const page of pages) {
        await page.reload();
        await page.locator(".device, #login").first().waitFor(soon);
        assert.equal(await page.locator("#login").count(), 0);
        await seesText(page.locator(".link-state"), "Live");
    }
    await context.close();
    await Promise.all(printers.map((printer) => printer.end()));
});

test("another program with another token is asked for, and nothing of the old one stays open", async () => {
    const first = await startPrinter();
    const page = await openPage(first);
    const till = await openTill(first.addressOf());
    await till.sell("Chlieb", "1.00");
    await page.locator(".slip .item").click();
    await becomes("3", () => page.locator(".exchange.chosen").getAttribute("data-number"));
    await till.end();
    await first.end();
    await seesText(page.locator(".link-state"), "Not connected");
    await page.locator(".switch", { hasText: "Paper" }).getByLabel("Out").click({ force: true });
    await seesText(page.locator(".device .failure"), "The printer does not answer.");
    const second = await startPrinter("--token", "0123456789abcdef", "--web", first.web.replace("http://", ""));
    await page.locator("#login").getByRole("textbox").fill("0123456789abcdef");
    await page.getByRole("button", { name: "Open", exact: true }).click();
    await seesText(page.locator(".link-state"), "Live");
    const another = await openTill(second.addressOf());
    await another.sell("Rožok", "2.00");
    await seesText(page.locator(".exchange"), "paragonEnd");
    assert.equal(await page.locator(".exchange.chosen").count(), 0);
    await another.end();
    await page.context().close();
    await second.end();
});
