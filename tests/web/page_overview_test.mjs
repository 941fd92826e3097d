// Many printers side by side: nothing is squeezed, and from each the way leads on.
import assert from "node:assert/strict";
import { after } from "node:test";
import { axeFindsNothing } from "./axe.mjs";
import { openRawTill } from "./raw_till.mjs";
import { endAll, openTill } from "./shop.mjs";
import { becomes, seesText, soon, withPage } from "./with_page.mjs";

after(endAll);

const two = ["--printer", "bar=127.0.0.1:0", "--printer", "shop=127.0.0.1:0"];
const namesOf = (count) => Array.from({ length: count }, (_, index) => `p${index + 1}`);
const optionsFor = (count) => namesOf(count).flatMap((name) => ["--printer", `${name}=127.0.0.1:0`]);

withPage("several printers are seen side by side", async ({ page, printer }) => {
    const bar = await openTill(printer.addressOf("bar"));
    const shop = await openTill(printer.addressOf("shop"));
    await bar.sell("Espresso", "1.90");
    await shop.sell("Chlieb", "2.49");
    await seesText(page.getByRole("region", { name: "bar" }), "Espresso");
    await seesText(page.getByRole("region", { name: "shop" }), "Chlieb");
    await printer.ask("PATCH", "/printers/shop/hardware", { cover: "open" });
    await seesText(page.getByRole("region", { name: "shop" }), "Cover is open");
    await axeFindsNothing(page, "several printers");
    await page.setViewportSize({ width: 360, height: 740 });
    await axeFindsNothing(page, "several printers, narrow");
    await page.setViewportSize({ width: 1440, height: 900 });
    await printer.ask("PATCH", "/printers/shop/hardware", { cover: "closed" });
    await seesText(page.getByRole("region", { name: "shop" }), "Ready to sell");
    await printer.ask("POST", "/printers/shop/faults", { kind: "paperOut", command: "paragonBegin", requests: 2 });
    assert.equal(await shop.call("paragonBegin", 1, 0, 1, 0, 0, 1, 0), 49);
    await seesText(page.getByRole("region", { name: "shop" }), "Paper is out");
    assert.equal(await shop.call("paragonBegin", 1, 0, 1, 0, 0, 1, 0), 49);
    await seesText(page.getByRole("region", { name: "shop" }), "Ready to sell");
    // A fault that nobody has met yet keeps no till waiting.
    await printer.ask("POST", "/printers/shop/faults", { kind: "busy", command: "printDisplay", milliseconds: 1, requests: 2 });
    await printer.ask("PATCH", "/printers/shop/hardware", { display: "Armed" });
    await page.getByRole("region", { name: "shop" }).getByRole("img", { name: /Armed/ }).waitFor(soon);
    const situation = () => page.getByRole("region", { name: "shop" }).locator(".situation").innerText();
    assert.equal(await situation(), "Ready to sell");
    assert.equal(await shop.call("printDisplay", 1, 0, "", "Vitajte"), 0);
    await becomes("Busy: lets tills wait", situation);
    assert.equal(await shop.call("printDisplay", 1, 0, "", "Vitajte"), 0);
    await becomes("Ready to sell", situation);
    for (let sale = 0; sale < 3; sale += 1) {
        await bar.sell("Espresso", "1.90");
    }
    await becomes(4, () => page.getByRole("region", { name: "bar" }).locator(".slip.isCut").count());
    await page.emulateMedia({ media: "print" });
    const [all, printed] = await page.getByRole("region", { name: "bar" }).evaluate((card) => [card.querySelector(".paper").scrollHeight, card.clientHeight]);
    assert.ok(printed >= all, `${printed} of ${all} are printed`);
    assert.equal(await page.locator(".printer .slot").first().isVisible(), false);
    await page.emulateMedia({ media: "screen" });
    await page.getByRole("navigation").getByRole("link", { name: "bar" }).click();
    await seesText(page.locator(".exchange"), "paragonEnd");
    assert.equal(await page.locator(".slip", { hasText: "Chlieb" }).count(), 0);
    await bar.end();
    await shop.end();
}, { options: two, page: { until: ".overview" } });

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
}, { options: optionsFor(8), page: { until: ".overview" } });

for (const [count, isEachSeenAtOnce] of [[6, true], [24, false]]) {
    withPage(`${count} printers follow their tills, are whole, and are reached by the keyboard`, async ({ page, printer }) => {
        const names = namesOf(count);
        const card = (name) => page.getByRole("region", { name, exact: true });
        const tills = await Promise.all(names.map((name) => openRawTill(printer.addressOf(name))));
        await Promise.all(tills.map((till, index) => till.sell(1 + index % 3, `Ware ${names[index]}`)));
        for (const [index, name] of names.entries()) {
            const items = 1 + index % 3;
            await seesText(card(name).locator(".slip .item"), `Ware ${name} `);
            await seesText(card(name), `1 receipt, ${items}.00 EUR`);
            assert.equal(await card(name).locator(".slip .item").count(), items);
        }
        await printer.ask("PATCH", `/printers/${names.at(-1)}/settings`, { columns: 48 });
        await printer.ask("PATCH", `/printers/${names.at(-1)}/hardware`, { paper: "out", display: "SPOLU           1.00Dakujeme a dovidenia" });
        await tills.at(-2).sell(1, "One more");
        await seesText(card(names.at(-1)), "Paper is out");
        await seesText(card(names.at(-2)).locator(".slip .item"), "One more");
        for (const [width, height] of [[1440, 900], [390, 844]]) {
            await page.setViewportSize({ width, height });
            const { tooWide, cut, heights, unseen } = await page.evaluate(() => {
                const cards = [...document.querySelectorAll(".printer")];
                const parts = cards.flatMap((each) => [...each.querySelectorAll(".bar, .glass, .paper")]);
                const overview = document.querySelector(".overview");
                return {
                    tooWide: Math.max(document.documentElement.scrollWidth, overview.scrollWidth) - window.innerWidth,
                    cut: parts.filter((part) => part.scrollWidth > part.clientWidth).map((part) => part.className),
                    heights: [...new Set(cards.map((each) => Math.round(each.getBoundingClientRect().height)))],
                    unseen: cards.filter((each) => each.getBoundingClientRect().bottom > window.innerHeight).length,
                };
            });
            assert.deepEqual([tooWide <= 0, cut, heights.length], [true, [], 1], `on a screen of ${width}`);
            assert.ok(width < 1000 || !isEachSeenAtOnce || unseen === 0, `${unseen} cards are not wholly on the screen`);
            const tall = await page.locator("#header").evaluate((header) => header.getBoundingClientRect().height);
            assert.ok(tall < (width < 1000 ? 110 : 70), `the head is ${tall} tall`);
        }
        await page.setViewportSize({ width: 1440, height: 900 });
        await axeFindsNothing(page, `${count} printers`, { runOnly: ["cat.keyboard", "cat.semantics"] }); // colours are those of two
        // Along the links of the head and the cards to the last one.
        const last = names.at(-1);
        const isAt = (selector) => page.evaluate((wanted) => document.activeElement.closest(wanted) !== null, selector);
        await page.locator("nav").getByRole("link", { name: "All" }).focus();
        for (let step = 0; step < count; step += 1) {
            await page.keyboard.press("Tab");
        }
        assert.ok(await isAt("nav a:last-child"));
        const isWholly = (locator, within) => locator.evaluate((part, outside) => {
            const [inner, outer] = [part, part.closest(outside)].map((each) => each.getBoundingClientRect());
            return inner.left >= outer.left && inner.right <= outer.right && inner.top >= outer.top && inner.bottom <= outer.bottom;
        }, within);
        assert.ok(await isWholly(page.locator("nav a:last-child"), "nav"), "where the focus is the head is scrolled to");
        for (let step = 0; step < 3 * count && !await isAt(`[aria-label="${last}"] h3`); step += 1) {
            await page.keyboard.press("Tab");
        }
        assert.ok(await isWholly(card(last).locator("h3"), ".overview"));
        await page.locator("nav").evaluate((nav) => { nav.scrollLeft = 0; });
        await page.keyboard.press("Enter");
        await seesText(page.locator(".exchange"), "paragonEnd");
        assert.equal(await page.locator("nav [aria-current]").innerText(), last);
        assert.ok(await isWholly(page.locator("nav [aria-current]"), "nav"), "the printer that is shown is seen in the head");
        assert.ok(await isAt("main"), "what follows is reached from there");
        tills.forEach((till) => till.end());
    }, { options: optionsFor(count), page: { until: ".overview" } });
}

withPage("the operator's display is seen side by side", async ({ page, printer }) => {
    const height = () => page.getByRole("region", { name: "bar" }).evaluate((card) => card.getBoundingClientRect().height);
    const before = await height();
    await printer.ask("PATCH", "/printers/bar/hardware", { operatorDisplay: "Paper is low" });
    await page.getByRole("region", { name: "bar" }).getByRole("img", { name: "Operator display: Paper is low" }).waitFor(soon);
    assert.equal(await page.getByRole("region", { name: "shop" }).locator(".glass.operator").isVisible(), false);
    assert.ok(await height() - before < 2, `${await height()} is taller than ${before}`);
}, { options: two, page: { until: ".overview" } });
