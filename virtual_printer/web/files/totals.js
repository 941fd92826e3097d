// What the day has come to: sums, the hours of the day as a chart, and by VAT letter and payment.
import { at, get } from "./api.js";
import { element, setText, shape } from "./dom.js";

const tile = (title, value) => element("div", { class: "tile" }, element("dt", {}, title), element("dd", {}, value));

// A table whose last column is a bar.
function bars(title, rows) {
    const largest = Math.max(...rows.map(({ sum }) => Math.abs(Number(sum))), 0.01);
    return element("section", { class: "bars" },
        element("h3", {}, title),
        rows.length === 0 ? element("p", { class: "quiet" }, "nothing yet") : element("table", {},
            element("tbody", {}, rows.map(({ name, sum }) => element("tr", {},
                element("th", { scope: "row" }, name),
                element("td", { class: "sum" }, sum),
                element("td", { class: "barCell", "aria-hidden": "true" },
                    shape("svg", { viewBox: "0 0 100 10", preserveAspectRatio: "none" },
                        shape("rect", { width: String((Math.abs(Number(sum)) / largest) * 100), height: "10", rx: "1.5" }))))))));
}

const usualWidth = 720;
const height = 200;
const widthOfCharacter = 7.5;
const widthOfHour = 34;
const bottom = 26;
const top = 22;

// From the first hour that has sold to the last one, with those between.
function spanOf(hours) {
    const first = Date.parse(`${hours[0].from.replace(" ", "T")}Z`);
    const last = Date.parse(`${hours.at(-1).from.replace(" ", "T")}Z`);
    const known = new Map(hours.map((hour) => [hour.from.slice(0, 13), hour]));
    const all = [];
    for (let time = first; time <= last; time += 3_600_000) {
        const from = new Date(time).toISOString().slice(0, 13).replace("T", " ");
        all.push(known.get(from) ?? { from: `${from}:00:00`, receipts: 0, turnover: "0.00" });
    }
    while (all.length < 8) { // a chart of one bar says little
        const next = new Date(first + all.length * 3_600_000).toISOString().slice(0, 13).replace("T", " ");
        all.push({ from: `${next}:00:00`, receipts: 0, turnover: "0.00" });
    }
    return all;
}

// As wide as its place is, so that its texts are as large as others.
function chart(hours, width) {
    const all = spanOf(hours);
    const largest = Math.max(...all.map(({ turnover }) => Number(turnover)), 0.01);
    const step = width / all.length;
    const room = height - bottom - top;
    const everyNth = Math.ceil(widthOfHour / step);
    const described = hours.map(({ from, turnover }) => `${from.slice(11, 13)}h: ${turnover}`).join(", ");
    return shape("svg", { class: "hours", viewBox: `0 0 ${width} ${height}`, role: "img", "aria-label": `Turnover by hour. ${described}` },
        shape("path", { class: "ground", d: `M0 ${height - bottom}h${width}` }),
        all.map(({ from, turnover, receipts }, index) => {
            const tall = Math.max(0, (Number(turnover) / largest) * room);
            const middle = index * step + step / 2;
            return [
                shape("rect", { class: "bar", x: index * step + step * 0.18, y: height - bottom - tall, width: step * 0.64, height: tall, rx: 3 },
                    shape("title", {}, `${from.slice(11, 16)}: ${turnover} EUR, ${receipts} receipts`)),
                Number(turnover) > 0 && step > turnover.length * widthOfCharacter && shape("text", { class: "value", x: middle, y: height - bottom - tall - 6, "text-anchor": "middle" }, turnover),
                index % everyNth === 0 && shape("text", { class: "hour", x: middle, y: height - 8, "text-anchor": "middle" }, `${from.slice(11, 13)}h`),
            ];
        }));
}

export function makeTotals(sheet, printer, signal) {
    const tiles = element("dl", { class: "tiles" });
    const figure = element("div", { class: "chart" });
    const breakdown = element("div", { class: "breakdown" });
    const ever = element("p", { class: "quiet" });

    async function showHours() {
        for (let isComplete = false; !isComplete && !signal.aborted;) {
            const { hours, complete } = await get(at(printer.name, "totals/hours"));
            isComplete = complete;
            figure.replaceChildren(hours.length > 0 ? chart(hours, figure.clientWidth || usualWidth) : element("p", { class: "hint" }, "No receipt today."));
        }
    }

    function show() {
        if (!printer.totals || sheet.hidden) {
            return;
        }
        const { day, closedDays, drawer, lastReceipt, lastClosure, documents } = printer.totals;
        tiles.replaceChildren(
            tile("Turnover", [day.turnover, " ", element("small", {}, "EUR")]), tile("Receipts", String(day.receipts)), tile("Cancelled", String(day.cancelled)),
            tile("Discounts", day.discounts), tile("Returns", day.returns), tile("Drawer moved", String(day.drawerMovements)));
        breakdown.replaceChildren(
            bars("By VAT letter", Object.entries(day.vat).map(([name, sum]) => ({ name, sum }))),
            bars("By payment", day.payments.map(({ name, type, sum }) => ({ name: name || `Payment ${type}`, sum }))),
            bars("In the drawer", drawer.map(({ name, type, sum }) => ({ name: name || `Payment ${type}`, sum }))));
        setText(ever, `Before today: ${closedDays.turnover} EUR in ${closedDays.receipts} receipts. Last receipt ${lastReceipt}, last closure ${lastClosure}, ${documents} documents in the journal.`);
        showHours().catch(() => {});
    }

    sheet.append(tiles, element("h3", {}, "Turnover by hour"), figure, breakdown, ever);
    printer.on("totals", show, signal);
    show();
    return { refresh: show };
}
