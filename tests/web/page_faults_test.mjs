// Faults and scenarios: armed on the page, met by a till, and told of.
import assert from "node:assert/strict";
import { after, test } from "node:test";
import { endAll, startPrinter } from "./shop.mjs";
import { becomes, pageModule, seesText, waitOfLibrary, withPage } from "./with_page.mjs";

after(endAll);

withPage("a fault that is armed on the page is met by the till", async ({ till, page }) => {
    await page.getByRole("tab", { name: "Faults" }).click();
    await page.getByRole("button", { name: "Lose the acknowledge of a payment" }).click();
    const armed = page.locator(".faults .armed");
    await seesText(armed, "acknowledgeLost of payment");
    await till.begin();
    await till.item("Chlieb", "12.50");
    // The library sends what has met silence again; the printer has the payment and refuses a second one.
    const paying = till.pay(1250);
    await seesText(armed, "Ended. Met 1 request, hit 1 in 1 call.");
    await armed.getByRole("button", { name: /^Exchange / }).click();
    await seesText(page.locator(".exchange.chosen"), "done, till not told");
    await seesText(page.locator(".story"), "The till was not told");
    assert.equal(await paying, 32);
    assert.equal((await till.ask("getVariable", 1, "DUE"))[1], "0.00");
    assert.equal(await till.finish(), 0);
    await seesText(page.locator(".story"), new RegExp(`Exchange \\d+ repeats it after ${waitOfLibrary}: refused 32, alreadyPaid\\.`));
    await seesText(page.locator(".exchange", { hasText: "repeats" }), "refused 32");
});

withPage("a scenario is armed, and a fault by its form", async ({ page, printer }) => {
    await page.getByRole("tab", { name: "Faults" }).click();
    await page.locator(".scenarios").getByRole("button", { name: "Arm power fails after the end" }).click();
    await seesText(page.locator(".armed"), "powerLoss of paragonEnd");
    await page.getByRole("button", { name: "Disarm all" }).click();
    await seesText(page.locator(".armed"), "No fault is armed");
    const form = page.locator("form.card");
    await form.getByLabel("Kind").selectOption("refuse");
    await form.getByLabel("Command").fill("itemSale");
    await form.getByLabel("For so many requests").fill("2");
    await form.getByLabel("Code").fill("49");
    await form.getByRole("button", { name: "Arm" }).click();
    await seesText(page.locator(".armed"), "refuse of itemSale, requests 2, code 49");
    assert.deepEqual((await printer.ask("GET", "faults")).faults.map(({ fault }) => fault), [{ kind: "refuse", command: "itemSale", requests: 2, code: 49 }]);
    await form.getByLabel("Command").fill("itemSail");
    await form.getByRole("button", { name: "Arm" }).click();
    await seesText(page.locator(".faults .failure"), "is a name or a code of the command table");
    page.complaints.length = 0; // the browser reports a request that was refused
});

withPage("a scenario comes from a file", async ({ till, page, printer }) => {
    await page.getByRole("tab", { name: "Faults" }).click();
    const choose = (name, content) => page.getByLabel("From a file").setInputFiles({ name, mimeType: "application/json", buffer: Buffer.from(content) });
    await choose("evening.json", JSON.stringify({ trouble: "The evening's", faults: [
        { kind: "refuse", command: "paragonBegin", code: 77 }, { kind: "paperOut", command: "paragonEnd" },
    ] }));
    await seesText(page.locator(".faults > [role=status]"), "Armed: evening.json.");
    await becomes(2, () => page.locator(".armed li", { hasText: "Armed." }).count());
    assert.deepEqual((await printer.ask("GET", "faults")).faults.map(({ fault: { kind, command } }) => [kind, command]),
        [["refuse", "paragonBegin"], ["paperOut", "paragonEnd"]]);
    assert.deepEqual(await till.begin(), [0, 77]);
    await choose("letter.json", "Dear printer,");
    await seesText(page.locator(".faults .failure"), "This file is no scenario.");
    await choose("list.json", JSON.stringify({ trouble: "Nobody knows it", faults: [{ kind: "rain" }] }));
    await seesText(page.locator(".faults .failure"), '"kind"');
    assert.equal((await printer.ask("GET", "faults")).faults.length, 2);
    page.complaints.length = 0; // the browser reports a request that was refused
});

withPage("that something is armed is said for as long as it is", async ({ till, page, printer }) => {
    await page.getByRole("tab", { name: "Faults" }).click();
    const said = page.locator(".faults > [role=status]");
    const armed = page.locator(".armed li");
    // The answer to the next such request comes when it is let go.
    const hold = async (what) => {
        let [letGo, tellThatItIsAnswered] = [];
        const isLetGo = new Promise((resolve) => { letGo = resolve; });
        const isAnswered = new Promise((resolve) => { tellThatItIsAnswered = resolve; });
        await page.route((address) => address.pathname === `/printers/printer/${what}`, async (route) => {
            const response = await route.fetch();
            tellThatItIsAnswered();
            await isLetGo;
            await route.fulfill({ response });
        }, { times: 1 });
        return { isAnswered, letGo };
    };
    const arm = () => page.getByRole("button", { name: "Paper out in the next receipt" }).click();
    // What the page has asked for before comes behind what it has armed.
    await printer.ask("POST", "faults", { kind: "busy", command: "subTotal" });
    await seesText(armed, "busy of subTotal");
    const news = await hold("news");
    await printer.ask("DELETE", "faults");
    await news.isAnswered;
    const arming = page.waitForResponse((response) => response.request().method() === "POST");
    await arm();
    await arming;
    news.letGo();
    await seesText(armed, "paperOut of paragonBegin");
    await seesText(said, "Armed: paperOut of paragonBegin");
    assert.deepEqual(await till.begin(), [0, 49]);
    await seesText(armed, "Ended.");
    await becomes("", () => said.innerText());
    // A till has met it before the page knows that it is armed.
    const answer = await hold("faults");
    await arm();
    await answer.isAnswered;
    assert.equal(await till.call("paragonBegin", 1, 0, 1, 0, 0, 1, 0), 49);
    await becomes(2, () => armed.filter({ hasText: "Ended." }).count());
    answer.letGo();
    await printer.ask("PATCH", "hardware", { paper: "low" }); // what comes behind it is seen
    await becomes("warn", () => page.locator(".lamp", { hasText: "Paper" }).getAttribute("data-kind"));
    await becomes("", () => said.innerText());
});

withPage("what is armed from the end of the sheet is seen, and its sentence goes when it has ended", async ({ till, page }) => {
    await page.getByRole("tab", { name: "Faults" }).click();
    const scenarios = page.locator(".scenarios button");
    await scenarios.last().click();
    const armed = page.locator(".armed li").last();
    await seesText(armed, "Armed.");
    const isSeen = () => armed.evaluate((item) => {
        const [{ top, bottom }, sheet] = [item, item.closest(".sheet")].map((part) => part.getBoundingClientRect());
        return top >= sheet.top && bottom <= sheet.bottom;
    });
    await becomes(true, isSeen);
    await page.getByRole("button", { name: "Disarm all" }).click();
    await page.getByRole("button", { name: "Paper out in the next receipt" }).click();
    const said = page.locator(".faults > [role=status]");
    await seesText(said, "Armed: paperOut of paragonBegin");
    assert.deepEqual(await till.begin(), [0, 49]);
    await seesText(page.locator(".armed"), "Ended.");
    await becomes("", () => said.innerText());
});

test("every kind of fault is on the page with what it takes", async () => {
    const { faultKinds, parameterForms } = await pageModule("fault_kinds.js");
    const printer = await startPrinter();
    const { error } = await printer.ask("POST", "faults", { kind: "none of them" });
    assert.deepEqual(Object.keys(faultKinds).sort(), error.match(/one of (.*)\./)[1].split(", ").sort());
    const valueFor = (name) => ({ bytes: "15 31", at: "request", probes: "busy" })[name] ?? parameterForms[name].min;
    for (const [kind, { takes }] of Object.entries(faultKinds)) {
        const all = Object.fromEntries(takes.map((name) => name.replace("!", "")).map((name) => [name, valueFor(name)]));
        assert.equal((await printer.ask("POST", "faults", { kind, ...all })).error, undefined, kind);
        for (const name of Object.keys(parameterForms)) {
            if (!(name in all)) {
                assert.match((await printer.ask("POST", "faults", { kind, ...all, [name]: valueFor(name) })).error ?? "", /takes no/, `${kind} ${name}`);
            }
        }
        for (const needed of takes.filter((name) => name.endsWith("!")).map((name) => name.slice(0, -1))) {
            const { [needed]: left, ...others } = all;
            assert.match((await printer.ask("POST", "faults", { kind, ...others })).error ?? "", /wants/, `${kind} ${needed}`);
        }
        await printer.ask("DELETE", "faults");
    }
    await printer.end();
});

test("each command that is suggested is one of the table", async () => {
    const { usualCommands } = await pageModule("fault_kinds.js");
    const printer = await startPrinter();
    for (const command of usualCommands) {
        assert.equal((await printer.ask("POST", "faults", { kind: "acknowledgeLost", command })).error, undefined, command);
    }
    await printer.end();
});

withPage("a fault hits from a request on, and by chance", async ({ page, printer }) => {
    await page.getByRole("tab", { name: "Faults" }).click();
    const form = page.locator("form.card");
    await form.getByLabel("Kind").selectOption("paperOut");
    await form.getByLabel("From request").fill("3");
    await form.getByLabel("By chance").fill("0.25");
    await form.getByLabel("Seed").fill("0");
    await form.getByRole("button", { name: "Arm" }).click();
    await seesText(page.locator(".armed"), "paperOut, fromRequest 3, probability 0.25, seed 0");
    const [{ fault }] = (await printer.ask("GET", "faults")).faults;
    assert.deepEqual(fault, { kind: "paperOut", fromRequest: 3, requests: 1, probability: 0.25, seed: 0 });
});

test("whatever a fault may be told can be told on the page", async () => {
    const { parameterForms, selectionForms } = await pageModule("fault_kinds.js");
    const printer = await startPrinter();
    const { components } = await printer.ask("GET", "/openapi.json");
    assert.deepEqual(["kind", "command", ...selectionForms.map(({ name }) => name), ...Object.keys(parameterForms)].sort(),
        Object.keys(components.schemas.Fault.properties).sort());
    await printer.end();
});
