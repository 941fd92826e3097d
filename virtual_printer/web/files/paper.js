// A line of paper as elements: characters on a grid, codes and pictures as their dots.
import { element, shape } from "./dom.js";

export const noFiscalDocument = "VIRTUAL PRINTER, NO FISCAL DOCUMENT";

const dotsOfCharacter = 12;
const names = { qrCode: "QR code", barCode: "Bar code", picture: "Picture" };

// Codes are as large as a phone needs them, a pixel a dot; pictures as large as they are on paper of so many dots.
export function drawDots({ width, height, path }, name, acrossPaper = 0) {
    const drawn = shape("svg", {
        class: "dots",
        role: "img",
        "aria-label": name,
        width,
        height,
        viewBox: `0 0 ${width} ${height}`,
        "shape-rendering": "crispEdges",
    }, shape("path", { d: path }));
    if (acrossPaper > 0) {
        drawn.style.width = `${Math.min(100, (100 * width) / acrossPaper)}%`;
    }
    return drawn;
}

export function drawLine(line, columns) {
    if (line.kind === "cut") {
        return element("div", { class: "line cut" }, element("div", { class: "notFiscal" }, noFiscalDocument));
    }
    const name = names[line.kind];
    return element("div", { class: `line ${line.kind}` },
        line.dots && drawDots(line.dots, line.content ? `${name}: ${line.content}` : name, line.kind === "picture" ? columns * dotsOfCharacter : 0),
        line.text.map((text) => element("div", {}, text === "" ? " " : text)));
}

// A whole document, as the journal has it.
export function drawDocument({ columns, lines }) {
    const paper = element("article", { class: "slip" }, lines.map((line) => drawLine(line, columns)));
    paper.style.setProperty("--columns", columns);
    return paper;
}
