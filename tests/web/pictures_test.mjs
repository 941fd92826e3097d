// The pictures in the documentation show the page as it is, and what printers print now.
//
//     pictures_test.mjs FOLDER
import assert from "node:assert/strict";
import fs from "node:fs";
import path from "node:path";
import { after, test } from "node:test";
import { openBakery, openFour, sumOf } from "./pictured_shop.mjs";
import { endAll } from "./shop.mjs";

after(endAll);

test("the pictures are as new as what they show", async () => {
    const [{ printer, till }, four] = await Promise.all([openBakery(), openFour()]);
    const kept = fs.readFileSync(path.join(process.argv[2], "page.sum"), "utf8");
    assert.equal(await sumOf(printer, four), kept,
        "docs/pictures shows another page than there is: make it anew with 'ninja -C build/release page_pictures' and look at it");
    await till.end();
    await printer.end();
    await four.end();
});
