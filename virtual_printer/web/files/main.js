// Puts the page together: the printers that there are, the one that is shown, and what the address says.
import { get, getText, whenLocked } from "./api.js";
import { makeDevice } from "./device.js";
import { element } from "./dom.js";
import { makeFaults } from "./faults.js";
import { makeHeader } from "./header.js";
import { makeJournal } from "./journal.js";
import { askForToken } from "./login.js";
import { makeOverview } from "./overview.js";
import { Printer } from "./printer.js";
import { makeRoll } from "./roll.js";
import { makeSession } from "./session.js";
import { makeSettings } from "./settings.js";
import { followChanges } from "./stream.js";
import { makeTabs } from "./tabs.js";
import { makeTotals } from "./totals.js";
import { makeTrace } from "./trace.js";

const place = document.getElementById("main");
const header = makeHeader(document.getElementById("header"));
let printers = [];
let run = null; // of the program
let shown = null; // { name, tabs, stop }

const isWatched = (printer) => shown !== null && (shown.name === null || shown.name === printer.name);
const decoded = (part) => {
    try {
        return decodeURIComponent(part);
    } catch {
        return ""; // somebody has typed it
    }
};
// "#/bar/trace/17": the printer, the sheet, and the exchange, or in the journal the document, that is shown at once.
function placeInAddress() {
    const [, name = "", sheet = "", number = "0"] = window.location.hash.split("/").map(decoded);
    return { name, sheet, number: Number(number) };
}

function showPrinter(printer, sheetName, signal) {
    let tabs = null;
    const goTo = (sheet) => { window.location.hash = `#/${encodeURIComponent(printer.name)}/${sheet}`; };
    // The sheet is there before what is asked of it, and has the focus if it was on the sheet that goes.
    const onSheet = (name, action) => {
        const takesFocus = document.activeElement.closest("[role=tabpanel]") !== null;
        tabs.show(name);
        goTo(name);
        action(tabs.sheet(name), takesFocus);
    };
    const showExchange = (number) => onSheet("trace", (trace, takesFocus) => trace.show(number, takesFocus));
    const roll = makeRoll(printer, {
        open: (position) => onSheet("journal", (journal) => journal.open(position)),
        showExchange,
    }, signal);
    tabs = makeTabs("What the printer knows", [
        { name: "trace", title: "Trace", make: (sheet) => makeTrace(sheet, printer, { showPaper: roll.markExchange }, signal) },
        { name: "journal", title: "Journal", make: (sheet) => makeJournal(sheet, printer, { showDocument: showExchange }, signal) },
        { name: "totals", title: "Totals", make: (sheet) => makeTotals(sheet, printer, signal) },
        { name: "faults", title: "Faults", make: (sheet) => makeFaults(sheet, printer, { showExchange }, signal) },
        { name: "settings", title: "Settings", make: (sheet) => makeSettings(sheet, printer, signal) },
        { name: "session", title: "Session", make: (sheet) => makeSession(sheet, printer, signal) },
    ], sheetName, goTo);
    place.replaceChildren(element("h2", { class: "unseen" }, printer.name),
        element("div", { class: "desk" }, element("div", { class: "stand" }, roll.element, makeDevice(printer, signal)), tabs.element));
    return tabs;
}

const sheets = ["trace", "journal", "totals", "faults", "settings", "session"];

function show() {
    if (printers.length === 0) {
        return;
    }
    const address = placeInAddress();
    const printer = printers.find(({ name }) => name === address.name) ?? (printers.length === 1 ? printers[0] : null);
    const sheet = sheets.includes(address.sheet) ? address.sheet : "trace";
    if (shown && printer && shown.name === printer.name) {
        shown.tabs.show(sheet)?.refresh?.();
        return;
    }
    shown?.stop.abort();
    const stop = new AbortController();
    const hadFocus = place.contains(document.activeElement);
    shown = { name: printer?.name ?? null, tabs: null, stop };
    printers.filter(isWatched).forEach((each) => each.look()); // the answer comes when all of it is there
    document.title = printer && printers.length > 1 ? `${printer.name}, virtual printer` : "Virtual printer";
    if (printer) {
        shown.tabs = showPrinter(printer, sheet, stop.signal);
        printer.on("state", () => header.showFacts(printer), stop.signal);
        printer.on("totals", () => header.showFacts(printer), stop.signal);
        if (sheet === "trace" && address.number > 0) {
            shown.tabs.sheet(sheet).show(address.number);
        } else if (sheet === "journal" && address.number > 0) {
            shown.tabs.sheet(sheet).open(address.number);
        }
    } else {
        makeOverview(place, printers, stop.signal);
    }
    if (hadFocus) {
        place.focus({ preventScroll: true }); // what had it is gone
    }
    header.showPrinters(printers, shown.name);
    header.showFacts(printer);
}

// The program may be another one now: then its page is another one, too. The address says what is shown.
async function loadAgainIfOther() {
    const ownFolder = new URL(".", import.meta.url).pathname;
    if (!(await getText("/")).includes(ownFolder)) {
        window.location.reload();
    }
}

async function load() {
    const { printers: found } = await get("/printers");
    const names = found.map(({ name }) => name);
    if (names.join() !== printers.map(({ name }) => name).join()) {
        shown?.stop.abort();
        shown = null;
        printers = names.map((name) => new Printer(name));
    }
    show();
}

const again = followChanges(({ type, data }) => {
    header.showLink(type !== "offline");
    if (type === "offline") {
        get("/printers").catch(() => {}); // it may be there and want its token
    }
    if (type === "start") {
        if (run !== null && run !== data.run) {
            printers.forEach((printer) => printer.forget()); // the program was started again
            loadAgainIfOther().catch(() => {});
        }
        if ((run !== null && run !== data.run) || printers.length === 0) {
            load().catch(() => {});
        }
        run = data.run;
    } else if (type === "changed") {
        const printer = printers.find(({ name }) => name === data.printer);
        if (printer && isWatched(printer)) {
            printer.look(data);
        }
    }
});
whenLocked(() => askForToken(() => {
    again();
    load();
}));
window.addEventListener("hashchange", show);
document.querySelector(".skip").addEventListener("click", (event) => {
    event.preventDefault(); // it is no address of the page
    place.focus();
});
document.addEventListener("visibilitychange", () => printers.filter(isWatched).forEach((printer) => printer.look()));
setInterval(() => {
    const printer = printers.find(({ name }) => name === shown?.name);
    if (printer && !document.hidden) {
        header.showFacts(printer);
    }
}, 1000);
load().catch(() => {});
