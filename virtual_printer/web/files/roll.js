// The paper as it comes out of the printer, line by line; the newest line is at the slot.
import { button, element, setHidden, tellAloud } from "./dom.js";
import { drawLine } from "./paper.js";

// `open` is called with the place in the journal of a document, `showExchange` with the number of an exchange.
export function makeRoll(printer, { open, showExchange }, signal) {
    const hint = element("p", { class: "hint" }, "Nothing is printed yet. Begin a day and sell something.");
    const roll = element("div", { class: "roll" });
    const paper = element("div", { class: "paper", role: "log", "aria-label": "Paper", "aria-description": "Up and down choose lines, Enter shows the exchange that printed them, O opens their document", "aria-live": "off", tabindex: "0" }, roll, hint);
    const elements = new Map(); // by the number of the line
    let slip = null;
    let slipOf = null;
    let isAtEnd = true; // it follows what is printed
    let end = 0; // where it was moved to last
    let marked = [];
    let current = 0; // the exchange whose lines are chosen by the keys

    // What is heard of a move may be heard when there are more lines already.
    paper.addEventListener("scroll", () => { isAtEnd = (isAtEnd && paper.scrollTop >= end) || isEndSeen(); }, { passive: true });
    // There are more lines, or on another screen they have another height: heard of when the browser has laid them out,
    // which it then need not do once more.
    const turned = new ResizeObserver(() => isAtEnd && showEnd());
    [paper, roll].forEach((each) => turned.observe(each));
    signal.addEventListener("abort", () => turned.disconnect());
    paper.addEventListener("click", ({ target }) => {
        const line = target.closest("[data-exchange]");
        if (line && window.getSelection()?.isCollapsed !== false) {
            showExchange(Number(line.dataset.exchange));
        }
    });

    // Up and down choose what one exchange has printed, Enter shows the exchange, O opens the document. The buttons at
    // each document are for who points: with hundreds of them Tab would never reach the end of the paper.
    paper.addEventListener("keydown", (event) => {
        const all = [...new Set([...paper.querySelectorAll("[data-exchange]")].map((line) => Number(line.dataset.exchange)))];
        const step = { ArrowUp: -1, ArrowDown: 1 }[event.key];
        if (event.target !== paper || all.length === 0) {
            return;
        }
        if (step) {
            const at = all.indexOf(current);
            current = all.at(at === -1 ? -1 : Math.min(Math.max(at + step, 0), all.length - 1));
            markExchange(current, true);
            tellAloud(marked.map((line) => line.textContent.trim()).join(", "));
            event.preventDefault();
        } else if (event.key === "Enter" && all.includes(current)) {
            showExchange(current);
        } else if (event.key.toLowerCase() === "o" && !event.ctrlKey && !event.metaKey && !event.altKey) {
            const position = marked[0]?.isConnected ? Number(marked[0].closest(".slip.isCut")?.dataset.document ?? 0) : 0;
            if (position > 0) { // the journal has it
                open(position);
            }
        }
    });

    const isEndSeen = () => paper.scrollTop + paper.clientHeight >= paper.scrollHeight - 24;
    function showEnd() {
        paper.scrollTop = paper.scrollHeight;
        end = paper.scrollTop;
        isAtEnd = true;
    }

    // Only the paper moves: on a narrow screen the page would go away from what was tapped.
    function showMiddle(line) {
        const [outside, inside] = [paper, line].map((each) => each.getBoundingClientRect());
        paper.scrollTop += inside.top - outside.top - (outside.height - inside.height) / 2;
    }

    function beginSlip(line) {
        slipOf = line.document;
        const tools = element("div", { class: "tools" });
        if (line.exchange > 0) {
            tools.append(button("Trace", () => showExchange(line.exchange), { tabindex: -1, "aria-label": `Show what printed document ${line.document}` }));
        }
        slip = element("article", { class: "slip", "data-document": line.document }, tools);
        slip.style.setProperty("--columns", line.columns);
        roll.append(slip);
    }

    function endSlip(line, isFresh) {
        if (line.document > 0) { // from now on the journal has it
            slip.firstChild.prepend(button("Open", () => open(line.document), { tabindex: -1, "aria-label": `Open document ${line.document}` }));
        }
        slip.classList.add("isCut");
        slip = null;
        if (isFresh) {
            tellAloud(line.document > 0 ? `Document ${line.document} is printed.` : "The paper is cut.");
        }
    }

    function add(line, isFresh) {
        if (!slip || slipOf !== line.document) {
            beginSlip(line);
        }
        const drawn = drawLine(line, line.columns);
        if (line.exchange > 0) {
            drawn.dataset.exchange = line.exchange;
        }
        elements.set(line.number, drawn);
        slip.append(drawn);
        if (line.kind === "cut") {
            endSlip(line, isFresh);
        }
    }

    function take({ isNew, isLonger, added, gone = [] }) {
        const toEnd = isLonger && paper.scrollHeight - paper.scrollTop;
        if (isNew || isLonger) {
            elements.clear();
            roll.replaceChildren();
            slip = null;
        }
        if (isNew) { // the numbers may be those of others from now on
            marked = [];
            current = 0;
        }
        for (const { number } of gone) {
            const old = elements.get(number);
            const oldSlip = old?.parentElement;
            old?.remove();
            elements.delete(number);
            if (oldSlip && !oldSlip.querySelector(".line")) {
                oldSlip.remove();
                slip = slip === oldSlip ? null : slip;
            }
        }
        for (const line of added ?? printer.lines) {
            add(line, !isNew && !isLonger && !gone.includes(line));
        }
        setHidden(hint, elements.size > 0);
        if (isNew) {
            showEnd();
        } else if (isLonger && !isAtEnd) {
            paper.scrollTop = paper.scrollHeight - toEnd;
        }
        if (isLonger && marked.length > 0) {
            markExchange(marked[0].dataset.exchange, false);
        }
    }

    // Of the exchange 0, which is none, nothing is marked, and the paper follows what is printed.
    function markExchange(number, isToBeSeen) {
        marked.forEach((line) => line.classList.remove("marked"));
        marked = [...paper.querySelectorAll(`[data-exchange="${number}"]`)];
        marked.forEach((line) => line.classList.add("marked"));
        if (isToBeSeen && marked.length > 0) {
            showMiddle(marked[0]);
        } else if (number === 0) {
            showEnd();
        }
        return marked.length;
    }

    printer.on("paper", take, signal);
    take({ isNew: true, added: printer.lines });
    return { element: paper, markExchange };
}
