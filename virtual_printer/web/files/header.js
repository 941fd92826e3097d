// The head of the page: which printer is shown, how it stands, and the look of the page.
import { element, setAttribute, setHidden, setText } from "./dom.js";
import { lifeText, situationText, todayText } from "./device.js";

const themes = ["auto", "light", "dark"];

function applyTheme(theme) {
    document.documentElement.dataset.theme = theme;
}

export function makeHeader(place) {
    const link = element("span", { class: "link-state", role: "status" });
    const printers = element("nav", { "aria-label": "Printers" });
    let links = []; // { name, made }; null is all of them
    const facts = element("dl", { class: "facts" });
    let theme = themes.includes(localStorage.getItem("theme")) ? localStorage.getItem("theme") : "auto";
    const look = element("button", { type: "button", class: "look", on: { click: () => {
        theme = themes[(themes.indexOf(theme) + 1) % themes.length];
        localStorage.setItem("theme", theme);
        showTheme();
    } } });
    function showTheme() {
        applyTheme(theme);
        setText(look, { auto: "◐ Auto", light: "○ Light", dark: "● Dark" }[theme]);
        look.setAttribute("aria-label", `Colours: ${theme}`);
    }
    showTheme();

    place.replaceChildren(
        element("h1", {}, element("a", { href: "#/" }, element("span", { class: "mark", "aria-hidden": "true" }), "Virtual printer")),
        printers, facts, element("div", { class: "end" }, link, look));

    return {
        showPrinters(list, shown) {
            const names = [null, ...list.map(({ name }) => name)];
            if (names.join() !== links.map(({ name }) => name).join()) {
                links = names.map((name) => ({ name, made: element("a", { href: name === null ? "#/" : `#/${encodeURIComponent(name)}/trace` }, name ?? "All") }));
                printers.replaceChildren(...links.map(({ made }) => made));
            }
            printers.hidden = list.length < 2;
            place.classList.toggle("isFull", names.length >= 8);
            for (const { name, made } of links) {
                made.removeAttribute("aria-current");
                if (name === shown) {
                    made.setAttribute("aria-current", "page");
                    made.scrollIntoView({ block: "nearest", inline: "nearest" });
                }
            }
        },
        showLink(isThere) {
            setAttribute(link, "data-kind", isThere ? "good" : "bad");
            setText(link, isThere ? "Live" : "Not connected");
        },
        showFacts(printer) {
            const state = printer?.state;
            setHidden(facts, !state);
            if (!state) {
                return;
            }
            const { receipt } = state;
            const now = printer.now().toISOString();
            const all = [
                ["State", situationText(state)],
                ["Life", lifeText(state)],
                ["Day", state.dayBegan ? `since ${state.dayBegan.slice(0, 16)}` : "not begun"],
                receipt ? ["Receipt", `${receipt.number}: ${receipt.total} EUR, due ${receipt.due}`] : ["Today", todayText(printer)],
                ["Clock", now.slice(11, 19)],
            ];
            if (facts.children.length !== all.length) {
                facts.replaceChildren(...all.map(() => element("div", {}, element("dt"), element("dd"))));
            }
            all.forEach(([title, value], index) => {
                const [term, definition] = facts.children[index].children;
                setText(term, title);
                setText(definition, value);
                setAttribute(definition, "data-kind", title === "State" ? state.situation : "");
            });
        },
    };
}
