// The page for everybody: keyboard, focus, dark and narrow screens, screen readers.
import assert from "node:assert/strict";
import { after } from "node:test";
import { axeFindsNothing } from "./axe.mjs";
import { endAll } from "./shop.mjs";
import { becomes, seesText, sheets, withPage } from "./with_page.mjs";

after(endAll);

withPage("the focus stays where it is while the till goes on", async ({ till, page }) => {
    await page.getByRole("tab", { name: "Faults" }).click();
    await page.getByRole("button", { name: "Lose the acknowledge of a payment" }).click();
    await page.getByRole("button", { name: "Disarm fault 1" }).focus();
    await till.sell("Chlieb", "1.00");
    await seesText(page.locator(".armed"), "Ended. Met 1 request,");
    const focused = () => page.evaluate(() => document.activeElement.getAttribute("aria-label") ?? document.activeElement.textContent);
    assert.equal(await focused(), "Remove fault 1");
    await page.getByRole("tab", { name: "Journal" }).click();
    await page.locator(".documents").getByRole("button", { name: "Receipt 1" }).focus();
    await till.sell("Rožok", "2.00");
    await seesText(page.locator(".documents"), "Receipt 2");
    assert.equal(await focused(), "Receipt 1");
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
    await seesText(page.locator(".fresh"), "Rožok");
    assert.equal(await page.locator(".fresh").first().evaluate((line) => getComputedStyle(line).animationName), "none");
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
                const tall = await page.locator(".hours text").first().evaluate((text) => text.getBoundingClientRect().height);
                assert.ok(tall >= 12, `the hours are ${tall} tall on a screen of ${seen}`);
            }
        }
    }
});

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
