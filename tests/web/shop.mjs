// What the tests of the page have: a printer as a process, a till that uses the library, a browser.
import { spawn } from "node:child_process";
import fs from "node:fs";
import os from "node:os";
import path from "node:path";
import readline from "node:readline";
import { chromium } from "playwright-core";

export const build = process.env.TELVOFM_BUILD;
const open = new Set(); // processes

export async function startPrinter(...options) {
    const folder = fs.mkdtempSync(path.join(os.tmpdir(), "page-test-"));
    const ready = path.join(folder, "ready.json");
    const printers = options.includes("--printer") || options.includes("--pty") ? [] : ["--listen", "127.0.0.1:0"];
    const web = options.includes("--web") ? [] : ["--web", "127.0.0.1:0"];
    const all = [...printers, ...web, "--ready", ready, "--exit-with-parent", "--clock", "2026-01-31 09:12", ...options];
    const process = spawn(path.join(build, "telvofm-printer"), all, { stdio: ["ignore", "pipe", "pipe"] });
    open.add(process);
    const lines = readline.createInterface({ input: process.stdout });
    const said = [];
    lines.on("line", (line) => said.push(line));
    process.stderr.on("data", (text) => said.push(String(text)));
    // The file appears whole, behind the lines.
    await new Promise((resolve, reject) => {
        const look = () => fs.existsSync(ready) && resolve();
        fs.watch(folder, look).unref();
        lines.on("line", look);
        process.once("close", () => reject(new Error(`the printer did not start: ${said.join("\n")}`)));
        look();
    });
    const told = JSON.parse(fs.readFileSync(ready, "utf8"));
    fs.rmSync(folder, { recursive: true });
    return {
        web: `http://${told.web}`,
        said,
        pid: process.pid,
        addressOf: (name = "printer") => told.printers.find((printer) => printer.name === name).address,
        async ask(method, target, body) {
            const answer = await fetch(`http://${told.web}${target.startsWith("/") ? target : `/printers/printer/${target}`}`, {
                method, body: body === undefined ? undefined : JSON.stringify(body),
            });
            return answer.json();
        },
        async end() {
            open.delete(process);
            if (process.exitCode === null) {
                process.kill();
                await new Promise((resolve) => process.once("exit", resolve));
            }
        },
    };
}

const idle = []; // programs of tills that have gone
function openProgram() {
    const python = spawn("python3", ["-B", new URL("till.py", import.meta.url).pathname, path.join(build, "libtelvofm.so")],
        { stdio: ["pipe", "pipe", "inherit"], env: { ...process.env, PYTHONUTF8: "1" } });
    open.add(python);
    const waiting = [];
    readline.createInterface({ input: python.stdout }).on("line", (line) => {
        if (line.startsWith("[")) { // the library itself says where it connects to
            waiting.shift()(JSON.parse(line));
        }
    });
    return {
        ask: (...call) => new Promise((resolve) => {
            waiting.push(resolve);
            python.stdin.write(`${JSON.stringify(call)}\n`);
        }),
        async kill() {
            open.delete(python);
            python.kill("SIGKILL");
            await new Promise((resolve) => python.once("exit", resolve));
        },
    };
}

// A till whose calls are awaited: `await till.call("itemSale", ...)` gives the code.
export async function openTill(address) {
    let program = idle.pop() ?? openProgram();
    const { ask } = program;
    const till = {
        ask,
        call: async (...call) => (await ask(...call))[0],
        // Amounts are texts, as JSON has one kind of number only.
        item: (name, sum, vat = "A") => till.call("itemSale_str", 1, 0, name, sum, vat, "1.000", sum, "ks"),
        begin: async () => [await till.call("sellingDayBegin", 1, 0), await till.call("paragonBegin", 1, 0, 1, 0, 0, 1, 0)],
        pay: (cents, type = 1, name = "Hotovosť") => till.call("payment_int", 1, 0, type, cents, cents, 0, name),
        finish: () => till.call("paragonEnd", 1, 0, 0),
        async sell(name, sum, vat) {
            const cents = Math.round(Number(sum) * 100);
            await till.begin();
            return [await till.item(name, sum, vat), await till.pay(cents), await till.finish()];
        },
        // Its program ends in the middle of whatever it does.
        async giveUp() {
            await program.kill();
            program = null;
        },
        async end() {
            if (program) {
                await ask("closeFM");
                idle.push(program);
                program = null;
            }
        },
    };
    const code = await till.call("openFM", address);
    if (code !== 0) {
        throw new Error(`the till cannot reach ${address}: ${code}`);
    }
    return till;
}

let browser = null;
export async function openBrowser() {
    browser ??= await chromium.launch({ executablePath: process.env.CHROMIUM ?? "/usr/bin/chromium-headless-shell", args: ["--no-sandbox", "--disable-gpu", "--force-color-profile=srgb"] });
    return browser;
}

// A page whose errors fail the test that looks at `page.complaints`.
export async function openPage(printer, options = {}, context = null) {
    const page = await (context ?? await (await openBrowser()).newContext({ viewport: { width: 1440, height: 900 }, ...options })).newPage();
    page.complaints = [];
    page.on("pageerror", (error) => page.complaints.push(String(error.stack)));
    page.on("console", (message) => message.type() === "error" && page.complaints.push(message.text()));
    await page.goto(`${printer.web}/${options.at ?? ""}`);
    await page.locator(options.until ?? ".device").waitFor();
    return page;
}

export async function endAll() {
    await browser?.close();
    for (const process of open) {
        process.kill("SIGKILL");
    }
}
