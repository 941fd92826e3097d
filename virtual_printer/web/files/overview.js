// Several printers side by side: each with its display, its lamps and the end of its paper.
import { element, setAttribute, setText } from "./dom.js";
import { letsWait, situationText, todayText, troubleOf } from "./device.js";
import { makeDisplays } from "./glass.js";
import { makeRoll } from "./roll.js";

export function makeOverview(place, printers, signal) {
    place.replaceChildren(element("h2", { class: "unseen" }, "All printers"),
        element("div", { class: "overview" }, printers.map((printer) => {
            const state = element("span", { class: "situation" });
            const sums = element("p", { class: "quiet" });
            const displays = makeDisplays(printer);
            const address = `#/${encodeURIComponent(printer.name)}/trace`;
            const show = () => {
                if (!printer.state) {
                    return;
                }
                const { situation } = printer.state;
                const trouble = troubleOf(printer);
                const isBusy = letsWait(printer);
                setAttribute(state, "data-kind", trouble ? "bad" : isBusy || situation === "overdue" ? "warn" : "good");
                setText(state, trouble || (isBusy ? "Busy: lets tills wait" : situationText(printer.state)));
                displays.show();
                setText(sums, todayText(printer));
            };
            const roll = makeRoll(printer, {
                open: (position) => { window.location.hash = `#/${encodeURIComponent(printer.name)}/journal/${position}`; },
                showExchange: (number) => { window.location.hash = `${address}/${number}`; },
            }, signal);
            printer.on("state", show, signal);
            printer.on("totals", show, signal);
            printer.on("faults", show, signal);
            show();
            return element("section", { class: "card printer", "aria-label": printer.name },
                element("div", { class: "bar" }, element("h3", {}, element("a", { href: address }, printer.name)), state),
                sums, displays.made, roll.element, element("div", { class: "slot", "aria-hidden": "true" }));
        })));
}
