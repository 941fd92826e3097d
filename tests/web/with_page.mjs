// How a test of the page goes: a printer, a till and a page, and what the page shows sooner or later.
import assert from "node:assert/strict";
import path from "node:path";
import { test } from "node:test";
import { openPage, openTill, startPrinter } from "./shop.mjs";

export const sheets = ["trace", "journal", "totals", "faults", "settings", "session"];
// One of the page's own modules.
export const pageModule = (name) => import(path.join(process.env.TELVOFM_PAGE, name));

// The three seconds after which the library asks again, as the printer tells them. It knows when it has read a request,
// which on a busy machine is late: of the first one, and they are fewer, or of the second one, and they are more.
export const waitOfLibrary = String.raw`([1-9]|\d{2,})\.\d s`;

// A test with a printer, a till and a page, which must not complain.
export function withPage(title, run, { options = [], page: pageOptions = {} } = {}) {
    test(title, async () => {
        const printer = await startPrinter(...options);
        const [till, page] = await Promise.all([
            options.includes("--printer") ? null : openTill(printer.addressOf()),
            openPage(printer, pageOptions),
        ]);
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
        await new Promise((resolve) => setTimeout(resolve, 40));
    }
    assert.equal(seen, expected);
}
