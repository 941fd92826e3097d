// Elements are made here and nowhere else: whatever a till has sent becomes text of them, never markup.

function fill(made, attributes, children) {
    for (const [name, value] of Object.entries(attributes)) {
        if (name === "on") {
            for (const [event, listener] of Object.entries(value)) {
                made.addEventListener(event, listener);
            }
        } else if (value === true) {
            made.setAttribute(name, "");
        } else if (value !== false && value !== null && value !== undefined) {
            made.setAttribute(name, value);
        }
    }
    made.append(...children.flat(Infinity).filter((child) => child !== null && child !== undefined && child !== false));
    return made;
}

// element("p", { class: "note" }, "a text", element("b", {}, "bold"))
export function element(name, attributes = {}, ...children) {
    return fill(document.createElement(name), attributes, children);
}

// The same within an <svg>.
export function shape(name, attributes = {}, ...children) {
    return fill(document.createElementNS("http://www.w3.org/2000/svg", name), attributes, children);
}

export function button(label, onClick, attributes = {}) {
    return element("button", { type: "button", ...attributes, on: { click: onClick } }, label);
}

// Changes a text only when it is another one: what is being read aloud or selected stays.
export function setText(target, text) {
    if (target.textContent !== text) {
        target.textContent = text;
    }
}

// The same of an attribute, and of what is not always there: with each change a browser reckons styles anew.
export function setAttribute(target, name, value) {
    if (target.getAttribute(name) !== value) {
        target.setAttribute(name, value);
    }
}

export function setHidden(target, isHidden) {
    if (target.hidden !== isHidden) {
        target.hidden = isHidden;
    }
}

// Other children, and among them the one that had the keyboard's focus, by its `data-key`.
export function replaceChildren(parent, children) {
    const key = parent.contains(document.activeElement) ? document.activeElement.dataset.key : undefined;
    parent.replaceChildren(...children);
    if (key !== undefined) {
        parent.querySelector(`[data-key="${key}"]`)?.focus({ preventScroll: true });
    }
}

export function labelled(label, control) {
    return element("label", { class: "field" }, element("span", {}, label), control);
}

// Told to those who cannot see it.
export function tellAloud(text) {
    setText(document.getElementById("news"), text);
}

export function download(name, type, content) {
    const address = URL.createObjectURL(new Blob([content], { type }));
    element("a", { href: address, download: name }).click();
    setTimeout(() => URL.revokeObjectURL(address), 10_000);
}
