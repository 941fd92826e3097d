// How a test of the page goes: a printer, a till and a page, and what the page shows sooner or later.
import assert from "node:assert/strict";
import { test } from "node:test";
import { openPage, openTill, startPrinter } from "./shop.mjs";

// A test with a printer, a till and a page, which must not complain.
export function withPage(title, run, { options = [], page: pageOptions = {} } = {}) {
    test(title, async () => {
        const printer = await startPrinter(...options);
        const till = options.includes("--printer") ? null : await openTill(printer.addressOf());
        const page = await openPage(printer, pageOptions);
        try {
            await run({ printer, till, page });
            assert.deepEqual(page.complaints, []);
        } finally {
            await page.context().close();
            await till?.end();
            await printer.end();
        }
    });
}

export const soon = { timeout: 60_000 }; // on a machine with much else to do
export const seesText = (locator, text) => locator.filter({ hasText: text }).first().waitFor(soon);
export async function becomes(expected, ask) {
    let seen;
    for (const end = Date.now() + soon.timeout; Date.now() < end;) {
        seen = await ask();
        if (seen === expected) {
            return;
        }
        await new Promise((resolve) => setTimeout(resolve, 20));
    }
    assert.equal(seen, expected);
}
