// The printer itself, as it stands on the desk: display, lamps, switches, drawer.
import { at, patch, post, remove } from "./api.js";
import { button, element, setAttribute, setText } from "./dom.js";
import { isAwaited } from "./exchange.js";
import { makeDisplays } from "./glass.js";

const situations = {
    noDay: "No day is open",
    idle: "Ready to sell",
    open: "Receipt is open",
    paying: "Receipt is being paid",
    overdue: "Day is longer than 24 hours: close it",
    defiscalized: "Defiscalized: only read",
};
const lives = { training: "In training", fiscal: "Fiscal", defiscalized: "Defiscalized" };

export const situationText = (state) => situations[state?.situation] ?? "";
export const lifeText = (state) => lives[state?.life] ?? "";

// A fault takes the paper away for the requests that it meets, wherever the switch is.
const paperFault = ({ faults }) => faults.find(({ ended, fault }) => !ended && fault.kind === "paperOut");

const endless = 1_000_000;
const isBusySwitch = ({ ended, fault }) => !ended && fault.kind === "busy" && fault.requests === endless;

// As the switch has it, or a fault that has met a request; one may have ended with the exchange that still waits.
export const letsWait = ({ faults, exchanges }) => faults.some((armed) => isBusySwitch(armed) ||
    (armed.fault.kind === "busy" && ((!armed.ended && armed.requestsHit > 0) ||
        exchanges.some((exchange) => armed.exchanges.includes(exchange.number) && isAwaited(exchange)))));
const isToLetWait = ({ faults }) => faults.some(({ ended, fault }) => !ended && fault.kind === "busy");

// Why it cannot print, if it cannot.
export function troubleOf(printer) {
    const { hardware } = printer.state;
    if (hardware.paper === "out" || paperFault(printer)?.requestsHit > 0) {
        return "Paper is out";
    }
    return hardware.cover === "open" ? "Cover is open" : "";
}

export function todayText({ totals }) {
    const receipts = totals?.day.receipts ?? 0;
    return `${receipts} ${receipts === 1 ? "receipt" : "receipts"}, ${totals?.day.turnover ?? "0.00"} EUR`;
}

function lamp(name) {
    const state = element("span", { class: "unseen" });
    const made = element("li", { class: "lamp" }, element("i", { "aria-hidden": "true" }), name, state);
    return {
        made,
        show(kind, text) {
            setAttribute(made, "data-kind", kind);
            setAttribute(made, "title", `${name}: ${text}`);
            setText(state, `: ${text}`);
        },
    };
}

// A choice of a few, as radio buttons; `choose` is called with the value.
function choice(legend, name, values, choose) {
    const radios = values.map(([value, label]) => {
        const input = element("input", { type: "radio", name, value, on: { change: () => choose(value) } });
        return { value, input, made: element("label", {}, input, element("span", {}, label)) };
    });
    return {
        made: element("fieldset", { class: "switch" }, element("legend", {}, legend), radios.map(({ made }) => made)),
        show(value) {
            radios.forEach((radio) => {
                radio.input.checked = radio.value === value;
            });
        },
    };
}

export function makeDevice(printer, signal) {
    const displays = makeDisplays(printer);
    const lamps = { ready: lamp("Ready"), paper: lamp("Paper"), cover: lamp("Cover"), busy: lamp("Busy") };
    const failure = element("p", { class: "failure", role: "alert" });

    let pending = 0; // switches stay as they were pressed until the printer has heard of it
    const act = async (action) => {
        setText(failure, "");
        pending += 1;
        await action().catch(({ message }) => setText(failure, message));
        pending -= 1;
        await printer.look();
        show();
    };
    const change = (part) => act(() => patch(at(printer.name, "hardware"), part));
    const paper = choice("Paper", `${printer.name} paper`, [["ok", "Full"], ["low", "Low"], ["out", "Out"]], (value) => change({ paper: value }));
    const cover = choice("Cover", `${printer.name} cover`, [["closed", "Closed"], ["open", "Open"]], (value) => change({ cover: value }));
    const busy = choice("Busy", `${printer.name} busy`, [["off", "Off"], ["on", "On"]], (value) => act(async () => {
        if (value === "on") {
            await post(at(printer.name, "faults"), { kind: "busy", requests: endless });
            return;
        }
        for (const { number } of printer.faults.filter(isBusySwitch)) {
            await remove(at(printer.name, `faults/${number}`));
        }
    }));
    const drawerState = element("span", {});
    const drawerButton = button("", () => change({ drawer: printer.state.hardware.drawer === "open" ? "closed" : "open" }));
    const drawer = element("div", { class: "drawer" },
        element("div", { class: "money", "aria-hidden": "true" }, element("i"), element("i"), element("i"), element("i")),
        element("div", { class: "front" }, element("i", { class: "lock", "aria-hidden": "true" }), drawerState, drawerButton));

    function show() {
        const state = printer.state;
        if (!state) {
            return;
        }
        const { hardware } = state;
        displays.show();
        const isStopped = troubleOf(printer) !== "";
        lamps.ready.show(isStopped ? "bad" : state.situation === "overdue" ? "warn" : "good", isStopped ? "cannot print" : situationText(state));
        const fault = paperFault(printer);
        if (fault && hardware.paper !== "out") {
            const isHit = fault.requestsHit > 0;
            lamps.paper.show(isHit ? "bad" : "warn", isHit ? "out, by a fault" : "out for a request to come, by a fault");
        } else {
            lamps.paper.show({ ok: "off", low: "warn", out: "bad" }[hardware.paper], { ok: "full", low: "low", out: "out" }[hardware.paper]);
        }
        lamps.cover.show(hardware.cover === "open" ? "bad" : "off", hardware.cover);
        if (letsWait(printer)) {
            lamps.busy.show("warn", "lets tills wait");
        } else if (isToLetWait(printer)) {
            lamps.busy.show("warn", "for a request to come, by a fault");
        } else {
            lamps.busy.show("off", "no");
        }
        if (pending === 0) {
            paper.show(hardware.paper);
            cover.show(hardware.cover);
            busy.show(printer.faults.some(isBusySwitch) ? "on" : "off");
        }
        drawer.classList.toggle("isOpen", hardware.drawer === "open");
        setText(drawerState, `Drawer ${hardware.drawer}`);
        setText(drawerButton, hardware.drawer === "open" ? "Push it in" : "Open it");
        setAttribute(body, "data-cover", hardware.cover);
    }

    const body = element("section", { class: "device", "aria-label": "Printer" },
        element("div", { class: "slot", "aria-hidden": "true" }),
        element("div", { class: "panel" },
            displays.made,
            element("ul", { class: "lamps", "aria-label": "Lamps" }, Object.values(lamps).map(({ made }) => made))),
        element("div", { class: "switches" }, paper.made, cover.made, busy.made),
        failure,
        drawer);
    printer.on("state", show, signal);
    printer.on("faults", show, signal);
    show();
    return body;
}
