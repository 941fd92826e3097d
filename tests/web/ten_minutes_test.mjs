// The ten minutes of docs/page.md, with the demonstration that stays: a newcomer sells, sees the receipt, loses an
// acknowledge and reads in the trace what happened.
import assert from "node:assert/strict";
import { spawn } from "node:child_process";
import path from "node:path";
import readline from "node:readline";
import { after, test } from "node:test";
import { fileURLToPath } from "node:url";
import { build, endAll, openPage } from "./shop.mjs";
import { soon, waitOfLibrary } from "./with_page.mjs";

after(endAll);

function openDemo() {
    const demo = spawn(process.env.TELVOFM_DEMO, ["--build", path.resolve(build), "--stay"], { stdio: ["pipe", "pipe", "inherit"] });
    const said = [];
    let heard = () => {};
    readline.createInterface({ input: demo.stdout }).on("line", (line) => {
        said.push(line);
        heard();
    });
    let read = 0;
    return {
        // The next line that has this in it.
        async says(text) {
            for (const end = Date.now() + soon.timeout; Date.now() < end;) {
                while (read < said.length) {
                    read += 1;
                    if (said[read - 1].includes(text)) {
                        return said[read - 1];
                    }
                }
                await new Promise((resolve) => {
                    heard = resolve;
                    setTimeout(resolve, 1000);
                });
            }
            return assert.fail(`it never said "${text}", but:\n${said.join("\n")}`);
        },
        sell: () => demo.stdin.write("\n"),
        async end() {
            demo.stdin.end();
            if (demo.exitCode === null) {
                await new Promise((resolve) => demo.once("exit", resolve));
            }
        },
    };
}

async function playOn(demo) {
    await demo.says("listening on ");
    const address = (await demo.says("open http://")).match(/http:\/\/[^ /]+/)[0];
    await demo.says("Enter sells a receipt");
    const page = await openPage({ web: address });
    const sees = (locator, text) => locator.filter({ hasText: text }).first().waitFor(soon);

    // A receipt comes out; a click on its total shows the payments that printed it.
    demo.sell();
    await demo.says("sold 17.49");
    await sees(page.locator(".slip"), "TOTAL EUR                          17.49");
    await page.locator(".slip .total").click();
    await sees(page.locator(".exchange.chosen"), "payment");
    await sees(page.locator(".line.marked"), "TOTAL EUR");

    // The acknowledge of a payment is lost, and the till goes on all the same.
    await page.getByRole("tab", { name: "Faults" }).click();
    await page.getByRole("button", { name: "Lose the acknowledge of a payment" }).click();
    await sees(page.locator(".armed"), "acknowledgeLost of payment");
    demo.sell();
    await demo.says("till: payment_int failed with code 32 (the printer refused it)");
    await demo.says("till: but the printer says that 0.00 is due, as it should be: the sale goes on");
    await demo.says("sold 17.49");
    await sees(page.locator(".slip .cut").nth(1), "NO FISCAL DOCUMENT");
    assert.deepEqual((await page.locator(".slip").nth(1).locator(".payment").allInnerTexts()).map((line) => line.trim().replace(/ +/, " ")),
        ["Hotovosť 10.00", "Hotovosť 10.00"], "paid in cash twice, and not by card");

    // What happened stands in the trace.
    await page.getByRole("tab", { name: "Trace" }).click();
    const lost = page.locator(".exchange", { hasText: "done, till not told" });
    assert.equal(await lost.count(), 1);
    await lost.getByRole("button").click();
    await sees(page.locator(".story"), "The till was not told: it cannot know whether this counts.");
    await sees(page.locator(".story"), new RegExp(`repeats it after ${waitOfLibrary}: done`));
    await sees(page.locator(".exchange", { hasText: "repeats" }), "done");
    await sees(page.locator(".exchange", { hasText: "Karta" }), "refused 32");
    const totals = await (await fetch(`${address}/printers/printer/totals`)).json();
    assert.equal(totals.day.turnover, "34.98");
    assert.deepEqual(page.complaints, []);
    await page.context().close();
}

test("the ten minutes of the documentation", async () => {
    const demo = openDemo();
    try {
        await playOn(demo);
    } finally {
        await demo.end();
    }
});
