// The journal: every document that the printer keeps, searched and in pages, and the paper of the one that is open.
import { at, get, getText } from "./api.js";
import { button, download, element, labelled, replaceChildren, setText, tellAloud } from "./dom.js";
import { drawDocument } from "./paper.js";

const pageSize = 25;
const kinds = { receipt: "Receipt", cancelledReceipt: "Cancelled", drawer: "Drawer", closure: "Closure", report: "Report" };

// What was typed, as the queries that it may mean: the first one that finds something is it.
function queriesFor(text) {
    if (/^\d{4}-\d{2}-\d{2}$/.test(text)) {
        return [{ from: text, to: text }];
    }
    if (/^\d{1,7}$/.test(text)) {
        return [{ number: text }, { text }];
    }
    return text === "" ? [{}] : [{ text }];
}

const titleOf = (document) => `${kinds[document.kind]}${document.number ? ` ${document.number}` : ""}`;

export function makeJournal(sheet, printer, { showDocument }, signal) {
    const wanted = element("input", { type: "search", placeholder: "number, day, item or sum", title: "17, 2026-01-31, chlieb or 12,50" });
    const kind = element("select", {}, element("option", { value: "" }, "All"), Object.entries(kinds).map(([value, title]) => element("option", { value }, title)));
    const body = element("tbody");
    const range = element("span", { class: "quiet", role: "status" });
    const newer = button("Newer", () => turn(-pageSize));
    const older = button("Older", () => turn(pageSize));
    const empty = element("p", { class: "hint" });
    const preview = element("section", { class: "preview", "aria-label": "Document", hidden: true });
    let skip = 0;
    let question = 0;
    let opened = 0; // the place of the document that is shown
    let isOld = false; // documents have come while the sheet was hidden

    async function find() {
        let found;
        for (const each of queriesFor(wanted.value.trim())) {
            const query = new URLSearchParams({ ...each, ...(kind.value ? { kind: kind.value } : {}), order: "newest", skip, limit: pageSize });
            found = await get(at(printer.name, `documents?${query}`));
            if (found.documents.length > 0) {
                break;
            }
        }
        return found;
    }

    async function load() {
        const mine = ++question;
        isOld = false;
        try {
            const { documents, next } = await find();
            if (mine !== question) {
                return;
            }
            replaceChildren(body, documents.map(rowOf));
            allowTurning(skip > 0, next !== null);
            setText(range, documents.length > 0 ? `${skip + 1} to ${skip + documents.length}` : "");
            setText(empty, documents.length > 0 ? "" : "The journal has no such document.");
        } catch ({ message }) {
            if (mine !== question) {
                return;
            }
            body.replaceChildren();
            setText(range, "");
            setText(empty, message);
        }
    }

    // A button that can do nothing any more leaves the focus to the other one.
    function allowTurning(toNewer, toOlder) {
        const buttons = [newer, older];
        const pressed = buttons.find((each) => each === document.activeElement);
        newer.disabled = !toNewer;
        older.disabled = !toOlder;
        if (pressed?.disabled) {
            (buttons.find((each) => !each.disabled) ?? wanted).focus();
        }
    }

    function turn(by) {
        skip = Math.max(0, skip + by);
        return load();
    }

    function rowOf(document) {
        const payments = document.payments.map(({ name, sum }) => `${name || "?"} ${sum}`).join(", ");
        return element("tr", { on: { click: () => open(document.position) } },
            element("td", {}, button(titleOf(document), (event) => {
                event.stopPropagation();
                open(document.position);
            }, { class: "name", "data-key": document.position, "aria-current": document.position === opened ? "true" : null })),
            element("td", { title: document.moment }, document.moment.slice(0, 16)),
            element("td", { class: "sum" }, document.kind.includes("eceipt") ? document.total : ""),
            element("td", { class: "quiet" }, payments));
    }

    function mark(position) {
        opened = position;
        body.querySelector("[aria-current]")?.removeAttribute("aria-current");
        body.querySelector(`[data-key="${position}"]`)?.setAttribute("aria-current", "true");
    }

    function close() {
        if (preview.contains(document.activeElement)) {
            (body.querySelector("[aria-current]") ?? wanted).focus();
        }
        mark(0);
        preview.hidden = true;
        sheet.classList.remove("isOpen");
    }

    async function open(position) {
        mark(position);
        const path = `documents/${position}`;
        try {
            const [document, paper] = await Promise.all([get(at(printer.name, path)), get(at(printer.name, `${path}/paper.json`))]);
            if (position !== opened) {
                return; // another one was opened meanwhile, or it was closed
            }
            const name = `${printer.name}-${position}`;
            const exchange = printer.lines.findLast((line) => line.document === position && line.exchange > 0)?.exchange;
            preview.replaceChildren(
                element("div", { class: "bar" },
                    element("h3", {}, titleOf(document)),
                    button("Text", async () => download(`${name}.txt`, "text/plain", await getText(at(printer.name, `${path}/paper.txt`)))),
                    button("SVG", async () => download(`${name}.svg`, "image/svg+xml", await getText(at(printer.name, `${path}/paper.svg`)))),
                    button("Print or PDF", () => window.print()),
                    exchange && button("Trace", () => showDocument(exchange)),
                    button("×", close, { "aria-label": "Close the document" })),
                element("div", { class: "scroll", tabindex: "0", role: "region", "aria-label": "Paper of the document" }, drawDocument(paper)));
            tellAloud(`${titleOf(document)} is shown.`); // the focus stays where it is
        } catch ({ message }) {
            if (position !== opened) {
                return;
            }
            preview.replaceChildren(element("p", { class: "failure", role: "alert" }, message));
        }
        preview.hidden = false;
        sheet.classList.add("isOpen");
        preview.scrollIntoView({ block: "nearest" }); // on a narrow screen it is above what was pressed
    }

    const search = (event) => {
        event?.preventDefault();
        skip = 0;
        return load();
    };
    let timer = 0;
    wanted.addEventListener("input", () => {
        clearTimeout(timer);
        timer = setTimeout(search, 150);
    });
    kind.addEventListener("change", search);
    sheet.append(
        element("div", { class: "list" },
            element("form", { class: "bar", role: "search", on: { submit: search } }, labelled("Find", wanted), labelled("Kind", kind)),
            element("div", { class: "scroll" },
                element("table", { class: "documents" },
                    element("caption", { class: "unseen" }, "Documents, the newest first"),
                    element("thead", {}, element("tr", {}, ["Document", "Moment", "Total", "Paid"].map((title) => element("th", { scope: "col", class: title === "Total" ? "sum" : null }, title)))),
                    body),
                empty),
            element("div", { class: "bar pages" }, newer, older, range)),
        preview);
    const follow = () => skip === 0 && load(); // whoever turns pages is not disturbed
    // With other documents in the places of those that were there, nothing that is shown holds any more.
    let since; // what its counting began with
    let count = 0;
    function followOther() {
        const beginning = JSON.stringify(printer.state?.since);
        const isOther = since !== undefined && (beginning !== since || printer.state.position.document < count);
        since = beginning;
        count = printer.state?.position.document ?? 0;
        if (isOther) {
            close();
            skip = 0;
            isOld = true;
            if (!sheet.hidden) {
                load();
            }
        }
    }
    printer.on("totals", () => {
        isOld = true;
        if (!sheet.hidden) {
            follow();
        }
    }, signal);
    printer.on("state", followOther, signal);
    followOther();
    load();
    return { open, refresh: () => isOld && follow() };
}
