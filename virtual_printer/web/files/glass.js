// The displays at the printer: two lines of twenty characters each, as the glass has them; a control character is a blank.
import { element, setAttribute, setHidden, setText } from "./dom.js";

const displayColumns = 20;

export function onDisplay(text) {
    const characters = [...text.replace(/\p{Cc}/gu, " ")];
    const rows = [characters.slice(0, displayColumns), characters.slice(displayColumns, 2 * displayColumns)];
    return rows.map((row) => row.join("").padEnd(displayColumns));
}

// For whoever cannot see it.
export const spoken = (text) => onDisplay(text).join(" ").replace(/ +/g, " ").trim() || "dark";

function makeGlass(whose, caption) {
    const rows = [element("div"), element("div")];
    const made = element("div", { class: `glass ${whose.toLowerCase()}`, role: "img" }, caption && element("small", {}, caption), rows);
    return {
        made,
        show(text) {
            onDisplay(text).forEach((row, index) => setText(rows[index], row));
            setAttribute(made, "aria-label", `${whose} display: ${spoken(text)}`);
        },
    };
}

// The customer's, and below it the operator's for as long as it says something.
export function makeDisplays(printer) {
    const customer = makeGlass("Customer");
    const operator = makeGlass("Operator", "Operator");
    return {
        made: element("div", { class: "glasses" }, customer.made, operator.made),
        show() {
            const { display, operatorDisplay } = printer.state.hardware;
            customer.show(display);
            operator.show(operatorDisplay);
            setHidden(operator.made, operatorDisplay === "");
        },
    };
}
