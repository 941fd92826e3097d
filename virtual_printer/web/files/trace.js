// The link trace: every exchange, the newest first; one that is chosen tells its bytes, its fields and what happened.
import { at, getLines } from "./api.js";
import { button, element, labelled, setHidden, setText, tellAloud } from "./dom.js";
import { durationOf, isProbe, outcomeOf, secondsOf, storyOf, summaryOf, timeOf } from "./exchange.js";

const mostRows = 300;
const rowsAtOnce = 40;
const rowsOfAGroup = 20;
const columns = [["No.", "number"], ["Time", "time"], ["Request", "what"], ["Outcome", "ending"], ["Took", "took"]];

const cell = (part, ...children) => element("div", { role: "cell", class: part }, children);

function bytes(title, text) {
    return element("div", { class: "bytes" }, element("h3", {}, title),
        text === "" ? element("p", { class: "quiet" }, "nothing") : element("code", {}, text));
}

// Of an answer that left as another than it was, or in its place, the printer has no time.
function answeredIn({ toTill, microseconds: { answer } }) {
    if (toTill === "") {
        return ", not answered";
    }
    return answer > 0 ? `, answered in ${answer} µs` : "";
}

function detailOf(exchange, later, showPaper) {
    const { decide, commit } = exchange.microseconds;
    const printed = showPaper(exchange.number, false);
    return element("div", { class: "detail" },
        element("ul", { class: "story" }, storyOf(exchange, later).map((sentence) => element("li", {}, sentence))),
        exchange.fields.length > 0 && element("table", { class: "fields" },
            element("caption", {}, "Fields"),
            element("tbody", {}, exchange.fields.map(({ name, value }) => element("tr", {},
                element("th", { scope: "row" }, name || "?"), element("td", {}, String(value)))))),
        exchange.answer !== "" && element("div", { class: "bytes" }, element("h3", {}, "Reply"), element("code", {}, exchange.answer)),
        bytes("From the till", exchange.fromTill),
        bytes(exchange.cut ? "To the till (cut here)" : "To the till", exchange.toTill),
        element("p", { class: "quiet" },
            `${exchange.moment} by the printer's clock. Connection ${exchange.till}, device ${exchange.address}, command ${exchange.command.toUpperCase()}. `,
            `Decided in ${decide} µs, kept in ${commit} µs${answeredIn(exchange)}. `,
            printed > 0 ? `It printed ${printed === 1 ? "the line that is" : `the ${printed} lines that are`} marked on the paper.` : "It printed nothing that is still on the paper."));
}

// `showPaper` marks what an exchange has printed, scrolls there if told to, and says how many lines that are; of 0 none,
// and the paper is at its end.
export function makeTrace(sheet, printer, { showPaper }, signal) {
    const wanted = element("input", { type: "search", placeholder: "payment, Chlieb, refused ...", on: { input: () => draw() } });
    const withProbes = element("input", { type: "checkbox", on: { change: () => draw() } });
    const hold = element("input", { type: "checkbox", on: { change: () => draw() } });
    const body = element("div");
    const empty = element("p", { class: "hint" }, "Nothing has gone over the link yet.");
    const rows = new Map(); // by the number of the exchange
    let waiting = []; // exchanges whose rows are not drawn yet, the oldest first
    let frame = 0;
    let chosen = 0;
    let fetched = null; // the exchange that is chosen, although the list may no longer have it

    const find = (number) => printer.exchanges.find((exchange) => exchange.number === number) ?? rows.get(number)?.exchange ??
        (fetched?.number === number ? fetched : undefined);
    const isOver = (number) => find(number)?.isOver !== false;
    const isWanted = (exchange) => {
        const text = wanted.value.trim().toLowerCase();
        return (withProbes.checked || !isProbe(exchange)) &&
            (text === "" || `${exchange.number} ${exchange.name} ${summaryOf(exchange)} ${outcomeOf(exchange).text} ${exchange.refusal?.name ?? ""} ${exchange.faults.join(" ")}`.toLowerCase().includes(text));
    };

    function rowOf(exchange) {
        const outcome = outcomeOf(exchange);
        const isChosen = exchange.number === chosen;
        const name = button(exchange.name, (event) => {
            event.stopPropagation();
            choose(isChosen ? 0 : exchange.number);
        }, { class: "name", "aria-expanded": String(isChosen) });
        const row = element("div", { role: "row", class: `exchange ${outcome.kind}`, "data-number": exchange.number, on: { click: () => choose(isChosen ? 0 : exchange.number) } },
            cell("number", String(exchange.number)),
            cell("time", timeOf(exchange.moment)),
            cell("what", name, " ", element("span", { class: "summary" }, summaryOf(exchange)),
                exchange.repeatOf && element("span", { class: "chip repeat" }, `↻ repeats ${exchange.repeatOf} after ${secondsOf(exchange.repeatedAfter)}`),
                exchange.faults.map((fault) => element("span", { class: "chip fault" }, fault))),
            cell("ending", element("span", { class: `outcome ${outcome.kind}` }, outcome.text)),
            cell("took", durationOf(exchange)));
        row.classList.toggle("chosen", isChosen);
        const detail = isChosen ? element("div", { role: "row", class: "detailRow" }, element("div", { role: "cell", "aria-colspan": "5" }, detailOf(exchange, printer.exchanges, showPaper))) : null;
        return { exchange, row, detail, as: JSON.stringify(exchange) };
    }

    // Of groups that nobody sees the browser lays out and paints nothing, and moves each as a whole.
    function add(made, isNewest) {
        let group = isNewest ? body.firstChild : body.lastChild;
        if (!group || group.children.length >= rowsOfAGroup) {
            group = element("div", { role: "rowgroup", class: "group" });
            body.insertBefore(group, isNewest ? body.firstChild : null);
        }
        group.insertBefore(made, isNewest ? group.firstChild : null);
    }

    function remove({ row, detail }) {
        const group = row.parentElement;
        row.remove();
        detail?.remove();
        if (group.children.length === 0) {
            group.remove();
        }
    }

    function place(exchange, isNewest) {
        const made = rowOf(exchange);
        const old = rows.get(exchange.number);
        if (old) {
            const hadFocus = old.row.contains(document.activeElement);
            old.row.replaceWith(made.row);
            old.detail?.remove();
            if (hadFocus) {
                made.row.querySelector("button").focus({ preventScroll: true });
            }
        } else {
            add(made.row, isNewest);
        }
        if (made.detail) {
            made.row.after(made.detail);
        }
        rows.set(exchange.number, made);
    }

    function forgetOld() {
        if (rows.size <= mostRows) {
            return;
        }
        const others = [...rows.keys()].filter((number) => number !== chosen && isOver(number)).sort((a, b) => a - b);
        for (const number of others.slice(0, rows.size - mostRows)) {
            remove(rows.get(number));
            rows.delete(number);
        }
    }

    // The rows that are seen at once, and the others piece by piece, so that nobody waits for them.
    function drawOlder(exchanges) {
        waiting = exchanges;
        cancelAnimationFrame(frame);
        waiting.splice(-rowsAtOnce).reverse().forEach((exchange) => place(exchange, false));
        if (waiting.length > 0) {
            frame = requestAnimationFrame(() => drawOlder(waiting));
        }
    }

    function draw() {
        rows.clear();
        body.replaceChildren();
        const all = printer.exchanges.filter(isWanted);
        const newest = all.filter((exchange, index) => index >= all.length - mostRows || !exchange.isOver);
        const apart = newest.some(({ number }) => number === chosen) ? undefined : find(chosen);
        drawOlder([apart, ...newest].filter(Boolean).sort((a, b) => a.number - b.number));
        setHidden(empty, rows.size > 0);
        setText(empty, printer.exchanges.length > 0 ? `None of the last ${printer.exchanges.length} exchanges fits.` : "Nothing has gone over the link yet.");
    }

    function take({ added, older }) {
        if (older && !hold.checked) {
            drawOlder([...older.filter(isWanted).slice(-mostRows), ...waiting]);
            return;
        }
        if (!added) {
            draw();
            return;
        }
        if (hold.checked) {
            return;
        }
        const wantedOnes = added.filter(isWanted);
        const newest = Math.max(...rows.keys());
        if (wantedOnes.some(({ number }) => number < newest && !rows.has(number))) {
            draw(); // its place is among the others
            return;
        }
        for (const exchange of wantedOnes) {
            if (rows.get(exchange.number)?.as !== JSON.stringify(exchange)) {
                place(exchange, true);
            }
        }
        if (rows.has(chosen) && added.some(({ repeatOf }) => repeatOf === chosen)) {
            place(find(chosen)); // what it tells has gone on
        }
        forgetOld();
        setHidden(empty, rows.size > 0);
    }

    function choose(number) {
        const before = chosen;
        chosen = number;
        fetched = find(number) ?? null;
        for (const each of [before, number]) {
            const exchange = find(each);
            if (exchange && rows.has(each)) {
                place(exchange);
            }
        }
        showPaper(number, true);
        // All of it, or as much as there is room for under its row.
        const { row, detail } = rows.get(number) ?? {};
        detail?.scrollIntoView({ block: "nearest" });
        row?.scrollIntoView({ block: "nearest" });
    }

    // An exchange that is not in the list any more is fetched.
    async function show(number, takesFocus = false) {
        wanted.value = "";
        fetched = find(number) ?? null;
        if (!fetched) {
            const [found] = await getLines(at(printer.name, `trace?after=${number - 1}&limit=1`)).catch(() => []);
            if (found?.number !== number) {
                setText(empty, `The trace no longer has exchange ${number}.`);
                empty.hidden = false;
                if (takesFocus) {
                    wanted.focus();
                }
                return;
            }
            fetched = found;
        }
        chosen = number;
        draw();
        while (!rows.has(number) && waiting.length > 0) {
            drawOlder(waiting);
        }
        showPaper(number, true);
        const { row } = rows.get(number);
        row.scrollIntoView({ block: "center" });
        if (takesFocus) {
            row.querySelector("button").focus({ preventScroll: true });
        } else {
            const exchange = find(number);
            tellAloud(`${exchange.name} is shown: ${outcomeOf(exchange).text}.`);
        }
    }

    sheet.append(
        element("form", { class: "bar", role: "search", on: { submit: (event) => event.preventDefault() } },
            labelled("Find", wanted),
            element("label", { class: "check" }, withProbes, "Probes"),
            element("label", { class: "check" }, hold, "Hold still")),
        element("div", { class: "scroll" },
            element("div", { role: "table", class: "exchanges", "aria-label": "Exchanges, the newest first" },
                element("div", { role: "rowgroup", class: "heads" }, element("div", { role: "row" }, columns.map(([title, part]) => element("div", { role: "columnheader", class: part }, title)))),
                body),
            empty));
    printer.addEventListener("forgotten", () => { // its numbers are those of others from now on
        chosen = 0;
        fetched = null;
    }, { signal });
    printer.on("trace", take, signal);
    draw();
    return { show };
}
