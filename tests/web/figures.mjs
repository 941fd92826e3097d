// How fast the page is, and how much memory it takes.
//
//     figures.mjs [latency] [load] [start] [journal] [memory]      all of them without an argument
import fs from "node:fs";
import http from "node:http";
import { endAll, openBrowser, openPage, openTill, startPrinter } from "./shop.mjs";
import { openRawTill } from "./raw_till.mjs";

const wanted = process.argv.slice(2);
const isWanted = (name) => wanted.length === 0 || wanted.includes(name);
const now = () => performance.timeOrigin + performance.now();

function say(what, times) {
    const sorted = [...times].sort((a, b) => a - b);
    const at = (share) => sorted[Math.min(sorted.length - 1, Math.floor(sorted.length * share))].toFixed(1);
    console.log(`${what.padEnd(58)} median ${at(0.5).padStart(7)} ms   95 % ${at(0.95).padStart(7)} ms   most ${at(1).padStart(7)} ms   (${sorted.length})`);
}

// What a process has had of the processor, in milliseconds: on a busy machine this says more than a time. The system
// counts hundredths of a second.
function processorTime(pid) {
    const fields = fs.readFileSync(`/proc/${pid}/stat`, "utf8").split(") ").at(-1).split(" ");
    return 10 * (Number(fields[11]) + Number(fields[12]));
}

// From before the till's call until the frame in which its line is on the page; the call itself is within.
async function latency(title, printer, name) {
    const page = await openPage(printer, { at: name ? `#/${name}/trace` : "" });
    await page.evaluate(() => {
        window.seen = {};
        new MutationObserver((changes) => requestAnimationFrame(() => {
            const time = performance.timeOrigin + performance.now();
            changes.flatMap(({ addedNodes }) => [...addedNodes]).forEach((added) => {
                for (const text of added.textContent.match(/ware \d+/g) ?? []) {
                    window.seen[text] ??= time;
                }
            });
        })).observe(document.querySelector(".paper"), { subtree: true, childList: true });
    });
    const session = await page.context().newCDPSession(page);
    await session.send("Performance.enable");
    const ofPage = async () => (await session.send("Performance.getMetrics")).metrics.find((metric) => metric.name === "ProcessTime").value * 1000;
    const till = await openTill(printer.addressOf(name));
    const begun = new Map();
    const before = await ofPage();
    for (let number = 0; number < 200; number += 1) {
        if (number % 10 === 0) {
            await till.begin();
        }
        begun.set(`ware ${number}`, now());
        await till.item(`ware ${number}`, "1.00");
        await new Promise((resolve) => setTimeout(resolve, 20));
        if (number % 10 === 9) {
            await till.pay(1000);
            await till.finish();
        }
    }
    await page.waitForFunction(() => Object.keys(window.seen).length === 200);
    const seen = await page.evaluate(() => window.seen);
    say(title, [...begun].map(([text, time]) => seen[text] - time));
    console.log(`    of the processor, for each line, the page's process: ${((await ofPage() - before) / begun.size).toFixed(1)} ms`);
    await till.end();
    await page.context().close();
}

if (isWanted("latency")) {
    const printer = await startPrinter();
    await latency("call to page, idle", printer);
    await printer.end();
}

if (isWanted("load")) {
    const names = Array.from({ length: 50 }, (_, index) => `p${index}`);
    const printer = await startPrinter(...[...names, "watched"].flatMap((name) => ["--printer", `${name}=127.0.0.1:0`]));
    const tills = await Promise.all(names.map((name) => openRawTill(printer.addressOf(name))));
    tills.forEach((till, index) => till.sellOn(index * 20));
    const start = now();
    await latency("call to page, 50 printers selling a receipt a second", printer, "watched");
    const accepted = tills.reduce((sum, till) => sum + till.accepted, 0);
    const refused = tills.reduce((sum, till) => sum + till.refused, 0);
    console.log(`    meanwhile ${Math.round(accepted / ((now() - start) / 1000))} commands/s accepted, ${refused} refused`);
    tills.forEach((till) => till.end());
    await printer.end();
}

if (isWanted("start")) {
    const printer = await startPrinter();
    const till = await openRawTill(printer.addressOf());
    for (let receipt = 0; receipt < 50; receipt += 1) {
        await till.sell(5);
    }
    // What the browser itself takes: a page of nothing but a script.
    const empty = http.createServer((_, answer) => answer.setHeader("Content-Type", "text/html").end("<!doctype html><script>window.ready = performance.now()</script>"));
    await new Promise((resolve) => empty.listen(0, "127.0.0.1", resolve));
    const kinds = [
        { title: "an empty page, first time", address: `http://127.0.0.1:${empty.address().port}/`, times: [] },
        { title: "page interactive, first time", address: printer.web, times: [] },
        { title: "page interactive, again", address: printer.web, times: [] },
    ];
    for (let round = 0; round < 10; round += 1) {
        const context = await (await openBrowser()).newContext({ viewport: { width: 1440, height: 900 } });
        await context.addInitScript(() => {
            new MutationObserver((_, observer) => {
                // There is paper, a trace, and the switches know how they stand: whatever is pressed is answered.
                if (document.querySelector(".slip") && document.querySelector(".exchange") && document.querySelector(".switch input:checked")) {
                    window.ready ??= performance.now();
                    observer.disconnect();
                }
            }).observe(document, { subtree: true, childList: true, attributes: true });
        });
        const page = await context.newPage();
        for (const { address, times } of kinds) {
            await page.goto(address);
            await page.waitForFunction(() => window.ready);
            times.push(await page.evaluate(() => window.ready));
        }
        await context.close();
    }
    kinds.forEach(({ title, times }) => say(title, times));
    empty.close();
    till.end();
    await printer.end();
}

if (isWanted("journal")) {
    const documents = 100_000;
    const printer = await startPrinter();
    const till = await openRawTill(printer.addressOf());
    for (let receipt = 0; receipt < documents; receipt += 1) {
        await till.sell(1, receipt === 1234 ? "Makovnik" : `Ware ${receipt}`);
    }
    for (const [title, query] of [
        ["the newest", ""], ["page in the middle", "&skip=50000"], ["the oldest page", `&skip=${documents - 25}`], ["by number", "&number=1235"],
        ["by number, kind and day", "&number=1235&kind=receipt&from=2026-01-31"], ["of a day, at its end", `&from=2026-01-31&to=2026-01-31&skip=${documents - 25}`],
        ["by a text that many have", "&text=Ware"], ["by a text that one has", "&text=Makovnik"], ["by a text that none has", "&text=Nowhere"],
    ]) {
        const times = [];
        const before = processorTime(printer.pid);
        for (let round = 0; round < 20; round += 1) {
            const start = now();
            await printer.ask("GET", `documents?order=newest&limit=25${query}`);
            times.push(now() - start);
        }
        say(`${documents} documents, ${title}`, times);
        console.log(`    of the processor, for each: ${((processorTime(printer.pid) - before) / times.length).toFixed(1)} ms`);
    }
    // What a till waits for an exchange while somebody searches without a pause for what is nowhere.
    let isSearching = true;
    const searching = (async () => {
        while (isSearching) {
            await printer.ask("GET", "documents?order=newest&limit=25&text=Nowhere");
        }
    })();
    const waits = [];
    for (let receipt = 0; receipt < 200; receipt += 1) {
        const start = now();
        await till.sell(1, "Beside");
        waits.push((now() - start) / 4);
    }
    isSearching = false;
    await searching;
    say(`${documents} documents, a till's request beside searches`, waits);
    const page = await openPage(printer, { at: "#/printer/journal" });
    const times = [];
    for (let round = 0; round < 20; round += 1) {
        const number = 5000 + round;
        times.push(await page.evaluate((wantedNumber) => new Promise((resolve) => {
            const search = document.querySelector(".journal input");
            search.value = String(wantedNumber);
            const start = performance.now();
            const body = document.querySelector(".documents tbody");
            new MutationObserver((_, observer) => {
                if (body.textContent.startsWith(`Receipt ${wantedNumber}`)) {
                    observer.disconnect();
                    requestAnimationFrame(() => resolve(performance.now() - start));
                }
            }).observe(body, { childList: true });
            search.form.requestSubmit();
        }), number));
    }
    say(`${documents} documents, Enter in the search to the result`, times);
    await page.context().close();
    till.end();
    await printer.end();
}

if (isWanted("memory")) {
    const printer = await startPrinter();
    const page = await openPage(printer);
    const session = await page.context().newCDPSession(page);
    await session.send("Performance.enable");
    const till = await openRawTill(printer.addressOf());
    for (let thousand = 1; thousand <= 10; thousand += 1) {
        for (let receipt = 0; receipt < 1000; receipt += 1) {
            await till.sell(3);
        }
        await page.waitForFunction((last) => document.querySelector(".slip:last-child")?.textContent.includes(`Receipt ${last} `), thousand * 1000);
        await session.send("HeapProfiler.collectGarbage");
        const { metrics } = await session.send("Performance.getMetrics");
        const of = (name) => metrics.find((metric) => metric.name === name).value;
        console.log(`after ${String(thousand * 1000).padStart(5)} receipts: heap ${(of("JSHeapUsedSize") / 1e6).toFixed(1)} MB, ${of("Nodes")} nodes, ${of("JSEventListeners")} listeners`);
    }
    till.end();
    await printer.end();
}
await endAll();
