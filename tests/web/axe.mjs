// What axe, which knows what people with a screen reader need, finds on a page.
import assert from "node:assert/strict";
import fs from "node:fs";
import { createRequire } from "node:module";

const axe = fs.readFileSync(createRequire(import.meta.url).resolve("axe-core/axe.min.js"), "utf8");

export async function axeFindsNothing(page, where, options = {}) {
    if (!await page.evaluate(() => "axe" in window)) {
        await page.evaluate(axe);
    }
    const { violations } = await page.evaluate((all) => window.axe.run(document, { preload: false, resultTypes: ["violations"], ...all }), options);
    assert.deepEqual(violations.map(({ id, nodes }) => [id, nodes.map(({ html }) => html)]), [], where);
}
