// Tabs as browsers' users know them: arrow keys move between them, one at a time is there.
import { element } from "./dom.js";

// `sheets` is a list of { name, title, make }; `make` gives the contents when a sheet is first shown.
export function makeTabs(label, sheets, shown, choose) {
    const made = new Map();
    const heads = sheets.map(({ name, title }) => element("button", {
        type: "button",
        role: "tab",
        id: `tab-${name}`,
        "aria-controls": `sheet-${name}`,
        on: { click: () => choose(name) },
    }, title));
    const bodies = sheets.map(({ name }) => element("div", {
        role: "tabpanel",
        id: `sheet-${name}`,
        class: `sheet ${name}`,
        "aria-labelledby": `tab-${name}`,
        tabindex: "0",
        hidden: true,
    }));
    const list = element("div", { role: "tablist", "aria-label": label }, heads);

    list.addEventListener("keydown", (event) => {
        const step = { ArrowRight: 1, ArrowLeft: -1, Home: -Infinity, End: Infinity }[event.key];
        if (step === undefined) {
            return;
        }
        event.preventDefault();
        const present = heads.indexOf(document.activeElement);
        const next = step === -Infinity ? 0 : step === Infinity ? heads.length - 1 : (present + step + heads.length) % heads.length;
        heads[next].focus();
        choose(sheets[next].name);
    });

    function show(name) {
        sheets.forEach((sheet, index) => {
            const isShown = sheet.name === name;
            heads[index].setAttribute("aria-selected", String(isShown));
            heads[index].tabIndex = isShown ? 0 : -1;
            bodies[index].hidden = !isShown;
            if (isShown && !made.has(name)) {
                made.set(name, sheet.make(bodies[index]));
            }
        });
        heads[sheets.findIndex((sheet) => sheet.name === name)]?.scrollIntoView?.({ block: "nearest", inline: "nearest" });
        return made.get(name);
    }
    show(shown);
    return { element: element("section", { class: "book", "aria-label": label }, list, bodies), show, sheet: (name) => made.get(name) };
}
