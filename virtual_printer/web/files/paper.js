// A line of paper as elements: characters on a grid, codes and pictures as their dots.
import { element, shape } from "./dom.js";

export const noFiscalDocument = "VIRTUAL PRINTER, NO FISCAL DOCUMENT";

const names = { qrCode: "QR code", barCode: "Bar code", picture: "Picture" };

export function drawDots({ width, height, path }, name) {
    return shape("svg", {
        class: "dots",
        role: "img",
        "aria-label": name,
        width,
        height,
        viewBox: `0 0 ${width} ${height}`,
        "shape-rendering": "crispEdges",
    }, shape("path", { d: path }));
}

export function drawLine(line) {
    if (line.kind === "cut") {
        return element("div", { class: "line cut" }, element("div", { class: "notFiscal" }, noFiscalDocument));
    }
    const name = names[line.kind];
    return element("div", { class: `line ${line.kind}` },
        line.dots && drawDots(line.dots, line.content ? `${name}: ${line.content}` : name),
        line.text.map((text) => element("div", {}, text === "" ? " " : text)));
}

// A whole document, as the journal has it.
export function drawDocument({ columns, lines }) {
    const paper = element("article", { class: "slip" }, lines.map(drawLine));
    paper.style.setProperty("--columns", columns);
    return paper;
}
