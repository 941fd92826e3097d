// What a tester does with a session: keep it, go back, start anew, move the clock, take everything away as a file.
import { at, get, getText, patch, post } from "./api.js";
import { button, download, element, labelled, replaceChildren, setText } from "./dom.js";
import { makeOutcome } from "./outcome.js";

async function everyPage(path, list) {
    const all = [];
    for (let skip = 0; skip !== null;) {
        const page = await get(`${path}?skip=${skip}&limit=500`);
        all.push(...page[list]);
        skip = page.next;
    }
    return all;
}

// "bar-morning", "bar-morning-2" ...: a name that no snapshot has.
function freeName(printer, kept) {
    const first = `${printer.replaceAll(/[^A-Za-z0-9_-]/g, "-").slice(0, 50)}-morning`;
    const names = [first, ...kept.map((each, index) => `${first}-${index + 2}`)];
    return names.find((each) => !kept.some(({ name }) => name === each));
}

export function makeSession(sheet, printer, signal) {
    const { said, act } = makeOutcome(printer);
    const path = (part) => at(printer.name, part);

    const exportAll = () => act("The session is saved as a file.", async () => {
        const [state, totals, settings, faults, pictures] = await Promise.all(["state", "totals", "settings", "faults", "pictures"].map((part) => get(path(part))));
        const documents = await everyPage(path("documents"), "documents");
        const closures = await everyPage(path("closures"), "closures");
        const trace = (await getText(path("trace"))).split("\n").filter(Boolean).map((line) => JSON.parse(line));
        const session = { printer: printer.name, state, totals, settings, ...faults, ...pictures, documents, closures, trace };
        download(`${printer.name}-session.json`, "application/json", JSON.stringify(session, null, 1));
    });
    const exportTrace = () => act("The trace is saved as a file.", async () =>
        download(`${printer.name}-trace.jsonl`, "application/x-ndjson", await getText(path("trace"))));

    const name = element("input", { maxlength: 64 });
    const snapshots = element("ul", { class: "armed" });
    // Names are those of the program, whichever printer keeps something.
    const listed = async () => (await get("/snapshots")).snapshots;
    const saysWhere = ({ in: where, printer: whose }) => where === "file" ? "in a file" : `of ${whose}, in memory`;
    const goBack = (snapshot) => {
        const { name: to, in: where, printer: whose } = snapshot;
        const isOther = whose !== undefined && whose !== printer.name;
        const question = `${isOther ? `"${to}" is what ${whose} has kept. ` : ""}What ${printer.name} is now is lost, unless another snapshot has it. Go back to "${to}"?`;
        return window.confirm(question) && act(`It is as it was at "${to}".`, () => post(path("restore"), { name: to, in: where }));
    };
    async function showSnapshots() {
        const kept = await listed();
        replaceChildren(snapshots, kept.map((snapshot) => element("li", {},
            element("div", {}, element("b", {}, snapshot.name), element("p", {}, saysWhere(snapshot))),
            button("Go back to it", () => goBack(snapshot), { "aria-label": `Go back to ${snapshot.name}`, "data-key": `${snapshot.in} ${snapshot.name}` }))));
        name.placeholder = freeName(printer.name, kept);
    }
    const keep = async (event) => {
        event.preventDefault();
        const kept = await listed().catch(() => []);
        const chosen = name.value || freeName(printer.name, kept);
        const other = kept.find((each) => each.name === chosen && each.in === "memory");
        if (other && !window.confirm(`There is "${chosen}" already, ${saysWhere(other)}. Put this one in its place?`)) {
            return;
        }
        await act(`Kept as "${chosen}".`, async () => {
            await post(path("snapshots"), { name: chosen, in: "memory" });
            name.value = "";
            await showSnapshots();
        });
    };

    const moment = element("input", { type: "datetime-local", required: true });
    const clock = element("p", { class: "clock" });
    const showClock = () => {
        if (printer.state) {
            const { mode, speed } = printer.state.clock;
            setText(clock, `${printer.now().toISOString().slice(0, 19).replace("T", " ")}, ${mode === "stands" ? "standing" : speed > 1 ? `${speed} times as fast` : "running"}`);
        }
    };
    const setClock = (change) => act("The clock is set.", () => patch(path("clock"), change));
    const ticking = setInterval(showClock, 1000);
    signal.addEventListener("abort", () => clearInterval(ticking));

    const beginAnew = (to, done) => window.confirm("What is not in a snapshot is lost. Begin anew?") &&
        act(done, () => post(path("reset"), { to }));

    sheet.append(said,
        element("section", { class: "card" }, element("h3", {}, "Take it away"),
            element("p", {}, "Everything that this printer knows in one file; or its trace, which can be played again. The trace holds the last 10,000 exchanges."),
            element("div", { class: "row" }, button("Export the session", exportAll, { class: "main" }), button("Export the trace", exportTrace))),
        element("section", { class: "card" }, element("h3", {}, "Clock"), clock,
            element("div", { class: "row" },
                button("Stand", () => setClock({ mode: "stands" })), button("Run", () => setClock({ mode: "runs", speed: 1 })),
                button("60 times as fast", () => setClock({ mode: "runs", speed: 60 })),
                button("An hour on", () => setClock({ forward: 3600 })), button("A day on", () => setClock({ forward: 86_400 }))),
            element("form", { class: "row", on: { submit: (event) => {
                event.preventDefault();
                setClock({ now: moment.value.replace("T", " ") });
            } } }, labelled("Moment", moment), element("button", { type: "submit" }, "Set"))),
        element("form", { class: "card", on: { submit: keep } }, element("h3", {}, "Snapshots"),
            element("div", { class: "row" }, labelled("Name", name), element("button", { type: "submit" }, "Keep")), snapshots),
        element("section", { class: "card" }, element("h3", {}, "Begin anew"),
            element("p", {}, "Journal, closures and settings are lost, unless a snapshot has them."),
            element("div", { class: "row" },
                button("As it was at the start", () => beginAnew("started", "It is as it was when the program started.")),
                button("As a new printer", () => beginAnew("new", "It is a new printer."), { class: "danger" }))));
    printer.on("state", showClock, signal);
    showClock();
    showSnapshots().catch(() => {});
    return {
        refresh: () => {
            showClock();
            showSnapshots().catch(() => {}); // others keep some, too
        },
    };
}
