// The page on screens of all widths, light and dark: nothing is cut off.
import assert from "node:assert/strict";
import { after } from "node:test";
import { endAll, openTill } from "./shop.mjs";
import { becomes, seesText, sheets, withPage } from "./with_page.mjs";

after(endAll);

// The longest lines that paper of so many columns has.
const widestItem = { name: "Chlieb so slnečnicovými semienkami a veľmi dlhým názvom", sum: "1234.50" };
const widths = [320, 390, 720, 1024, 1440];

// Papers that are wider than there is room, or whose lines are wider than they.
const cutPapers = (page) => page.evaluate(() => [...document.querySelectorAll(".paper, .preview .scroll")].filter((box) => box.checkVisibility()).flatMap((box) => {
    const room = box.getBoundingClientRect();
    const right = room.left + box.clientLeft + box.clientWidth;
    return [...box.querySelectorAll(".slip")].flatMap((slip) => {
        const has = slip.getBoundingClientRect();
        const isCut = has.left < room.left || has.right > right || [...slip.querySelectorAll(".line > div")].some((line) => line.scrollWidth > line.clientWidth);
        return isCut ? [`${box.className}: ${has.left} to ${has.right} of ${room.left} to ${right}`] : [];
    });
}));

withPage("paper of 48 columns is whole on every screen, in the journal, too", async ({ till, page, printer }) => {
    await printer.ask("PATCH", "settings", { columns: 48 });
    await till.sell(widestItem.name, widestItem.sum);
    await page.goto(`${printer.web}/#/printer/journal`);
    await page.getByRole("button", { name: "Receipt 1" }).click();
    await seesText(page.locator(".preview .slip"), widestItem.sum);
    for (const width of widths) {
        await page.setViewportSize({ width, height: 800 });
        assert.deepEqual(await cutPapers(page), [], `on a screen of ${width}`);
        const [all, seen] = await page.evaluate(() => [document.documentElement.scrollWidth, window.innerWidth]);
        assert.ok(all <= seen, `${all} wide on a screen of ${seen}`);
        const cells = await page.locator(".documents").evaluate((table) => {
            const { left, right } = table.closest(".scroll").getBoundingClientRect();
            return [...table.querySelectorAll("th, td")].filter((cell) => {
                const has = cell.getBoundingClientRect();
                return has.left < left || has.right > right + 1 || cell.scrollWidth > cell.clientWidth;
            }).map(({ textContent }) => textContent);
        });
        assert.deepEqual(cells, [], `the table on a screen of ${width}`);
        assert.ok(await page.locator(".documents tbody tr").first().evaluate((row) => row.getBoundingClientRect().bottom <= row.closest(".scroll").getBoundingClientRect().bottom),
            `a row is seen on a screen of ${width}`);
    }
});

withPage("a document that is opened far down a narrow screen is seen", async ({ till, page, printer }) => {
    for (let receipt = 1; receipt <= 20; receipt += 1) {
        await till.sell("Rožok", "1.00");
    }
    await page.goto(`${printer.web}/#/printer/journal`);
    await page.getByRole("button", { name: "Receipt 1", exact: true }).click();
    await becomes(true, () => page.locator(".preview").evaluate((preview) => {
        const { top } = preview.getBoundingClientRect();
        return !preview.hidden && top >= -1 && top < window.innerHeight / 2;
    }));
}, { page: { viewport: { width: 390, height: 800 } } });

withPage("papers side by side are whole on every screen", async ({ page, printer }) => {
    await printer.ask("PATCH", "/printers/bar/settings", { columns: 48 });
    const bar = await openTill(printer.addressOf("bar"));
    await bar.sell(widestItem.name, widestItem.sum);
    await bar.end();
    await seesText(page.locator(".slip .cut"), "NO FISCAL DOCUMENT");
    for (const width of widths) {
        await page.setViewportSize({ width, height: 800 });
        assert.deepEqual(await cutPapers(page), [], `on a screen of ${width}`);
        const [all, seen] = await page.locator(".overview").evaluate((overview) => [Math.max(overview.scrollWidth, document.documentElement.scrollWidth), overview.clientWidth]);
        assert.ok(all <= seen, `${all} wide on a screen of ${seen}`);
    }
}, { options: ["--printer", "bar=127.0.0.1:0", "--printer", "shop=127.0.0.1:0"], page: { until: ".overview" } });

withPage("it is dark in the dark, and nothing is cut off on a narrow screen", async ({ till, page, printer }) => {
    await printer.ask("PATCH", "settings", { columns: 48 });
    await till.sell("Chlieb so slnečnicovými semienkami a veľmi dlhým názvom", "1234.50");
    const brightness = () => page.evaluate(() => {
        const [red, green, blue] = getComputedStyle(document.querySelector("#header")).backgroundColor.match(/\d+/g).map(Number);
        return (red + green + blue) / 3;
    });
    assert.ok(await brightness() > 200);
    await page.emulateMedia({ colorScheme: "dark", reducedMotion: "reduce" });
    assert.ok(await brightness() < 60);
    await page.getByRole("button", { name: /^Colours/ }).click(); // light, whatever the system says
    assert.ok(await brightness() > 200);
    await till.sell("Rožok", "1.00");
    await seesText(page.locator(".slip .item"), "Rožok");
    const moves = () => page.locator(".money").evaluate((money) => getComputedStyle(money).transitionProperty !== "none");
    assert.equal(await moves(), false, "the drawer opens at once");
    await page.emulateMedia({ reducedMotion: "no-preference" });
    assert.equal(await moves(), true);
    for (const width of [360, 768, 1024]) {
        await page.setViewportSize({ width, height: 800 });
        for (const sheet of sheets) {
            await page.goto(`${printer.web}/#/printer/${sheet}`);
            await page.locator(`#sheet-${sheet}`).waitFor();
            const [all, seen] = await page.evaluate(() => [document.documentElement.scrollWidth, window.innerWidth]);
            assert.ok(all <= seen, `${sheet} is ${all} wide on a screen of ${seen}`);
            const cutOff = await page.evaluate((id) => {
                const outside = document.getElementById(id).getBoundingClientRect();
                return [...document.querySelectorAll(`#${id} .scroll`)].filter((part) => {
                    const { left, right } = part.getBoundingClientRect();
                    return left < outside.left || right > outside.right || part.scrollWidth > part.clientWidth;
                }).map(({ innerText }) => innerText);
            }, `sheet-${sheet}`);
            assert.deepEqual(cutOff, [], `${sheet} on a screen of ${seen}`);
            if (sheet === "totals") {
                // Looked for and measured at once: the chart is drawn anew with each change.
                await page.locator(".hours text").first().waitFor();
                const tall = await page.evaluate(() => document.querySelector(".hours text").getBoundingClientRect().height);
                assert.ok(tall >= 12, `the hours are ${tall} tall on a screen of ${seen}`);
            }
        }
    }
});
