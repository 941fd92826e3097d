// The settings as tills have made them: VAT table, payment types, texts around receipts, logos, parameters.
import { at, get } from "./api.js";
import { element } from "./dom.js";
import { drawDots } from "./paper.js";

function table(title, heads, rows) {
    return element("section", { class: "card" }, element("h3", {}, title),
        rows.length === 0 ? element("p", { class: "quiet" }, "none") : element("table", {},
            heads && element("thead", {}, element("tr", {}, heads.map((head) => element("th", { scope: "col" }, head)))),
            element("tbody", {}, rows.map(([first, ...rest]) => element("tr", {},
                element("th", { scope: "row" }, first), rest.map((value) => element("td", {}, String(value))))))));
}

const textsOf = (settings) => [
    ...settings.prelines.map((text) => ["In front of receipts", text]),
    ...Object.entries(settings.header).map(([row, text]) => [`Header ${row}`, text]),
    ["Additional header", settings.additionalHeader],
    ...settings.postlines.map((text) => ["Behind receipts", text]),
    ["Additional footer", settings.additionalFooter],
    ["Super footer", settings.superFooter],
].filter(([, text]) => text !== "");

export function makeSettings(sheet, printer, signal) {
    let shown = "";

    async function show() {
        if (sheet.hidden || signal.aborted) {
            return;
        }
        const [settings, { pictures }] = await Promise.all([get(at(printer.name, "settings")), get(at(printer.name, "pictures"))]);
        const text = JSON.stringify([settings, pictures]);
        if (text === shown) {
            return;
        }
        shown = text;
        sheet.replaceChildren(
            table("VAT", ["Letter", "Percent", "Reverse constant"], Object.entries(settings.vat).map(([letter, { percent, reverseConstant }]) => [letter, `${percent} %`, reverseConstant ?? ""])),
            table("Payments", ["Type", "Name", "From", "More than due"], Object.entries(settings.payments).map(([number, { name, minimum, mayOverPay }]) => [number, name, minimum, mayOverPay ? "gives change" : "refused"])),
            table("Texts", null, textsOf(settings)),
            element("section", { class: "card" }, element("h3", {}, "Logos"),
                pictures.length === 0 ? element("p", { class: "quiet" }, "none") : element("div", { class: "logos" }, pictures.map((picture) => element("figure", {},
                    drawDots(picture, `Logo ${picture.number}`),
                    element("figcaption", {}, `${picture.number}: ${picture.width} × ${picture.height} dots`))))),
            table("Printer", null, [
                ["Columns", settings.columns], ["Prints a logo", settings.printsLogo ? "yes" : "no"], ["Euro exchange rate", settings.euroExchangeRate],
                ...Object.entries(settings.parameters).map(([number, value]) => [`Parameter ${number}`, value]),
                ...Object.entries(settings.printerParameters).map(([number, value]) => [`Printer parameter ${number}`, value]),
            ]));
    }

    const showSafely = () => show().catch(() => {});
    printer.on("state", showSafely, signal);
    showSafely();
    return { refresh: showSafely };
}
