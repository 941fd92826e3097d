// Faults and scenarios: what the printer is armed with, what it has done so far, and what can be armed.
import { at, get, post, remove } from "./api.js";
import { button, element, labelled, replaceChildren, setText } from "./dom.js";
import { faultKinds, parameterForms, selectionForms, usualCommands } from "./fault_kinds.js";
import { makeOutcome } from "./outcome.js";

const counted = (number, what) => `${number} ${what}${number === 1 ? "" : "s"}`;

// "acknowledgeLost of payment, from call 2".
function wordsFor({ kind, command, ...rest }) {
    const others = Object.entries(rest).filter(([name, value]) => name !== "requests" || value !== 1).map(([name, value]) => `${name} ${value}`);
    return [`${kind}${command ? ` of ${command}` : ""}`, ...others].join(", ");
}

function inputFor(name, form) {
    const needed = name.endsWith("!");
    const input = form.type === "choice"
        ? element("select", {}, element("option", { value: "" }, "as usual"), form.choices.map((value) => element("option", { value }, value)))
        : element("input", { type: form.type, min: form.min, max: form.max, step: form.step, placeholder: form.placeholder, required: needed });
    return { name: name.replace("!", ""), input, made: labelled(form.title, input) };
}

function valueOf({ input }) {
    return input.type === "number" ? Number(input.value) : input.value;
}

function armForm(arm) {
    const kind = element("select", {}, Object.keys(faultKinds).map((name) => element("option", { value: name }, name)));
    const does = element("p", { class: "quiet" });
    const command = element("input", { list: "commands", placeholder: "every request" });
    const selection = selectionForms.map(({ name, ...form }) => inputFor(name, form));
    const ofKind = element("div", { class: "selection" });
    const ofSelection = element("div", { class: "selection" }, labelled("Command", command), selection.map(({ made }) => made));
    let parameters = [];

    function showKind() {
        const { takes, does: sentence, selectsNothing } = faultKinds[kind.value];
        setText(does, `${sentence}.`);
        parameters = takes.map((name) => inputFor(name, parameterForms[name.replace("!", "")]));
        ofKind.replaceChildren(...parameters.map(({ made }) => made));
        ofSelection.hidden = Boolean(selectsNothing);
    }
    kind.addEventListener("change", showKind);
    showKind();

    return element("form", {
        class: "card",
        on: {
            submit: (event) => {
                event.preventDefault();
                const all = ofSelection.hidden ? parameters : [{ name: "command", input: command }, ...selection, ...parameters];
                const said = all.filter(({ input }) => input.value !== "").map((each) => [each.name, valueOf(each)]);
                arm({ kind: kind.value, ...Object.fromEntries(said) });
            },
        },
    }, element("h3", {}, "Arm a fault"),
    element("div", { class: "row" }, labelled("Kind", kind), does), ofSelection, ofKind,
    element("datalist", { id: "commands" }, usualCommands.map((value) => element("option", { value }))),
    element("button", { type: "submit", class: "main" }, "Arm"));
}

function scenarioList(arm, report) {
    const found = element("ul", { class: "scenarios" });
    const wanted = element("input", { type: "search", placeholder: "payment, cable, power ..." });
    let all = [];

    const draw = () => found.replaceChildren(...all
        .filter(([name, { trouble }]) => `${name} ${trouble}`.toLowerCase().includes(wanted.value.toLowerCase()))
        .map(([name, scenario]) => element("li", {},
            element("div", {}, element("b", {}, name.replaceAll("-", " ")), element("p", {}, scenario.trouble)),
            button("Arm", () => arm(scenario, name), { "aria-label": `Arm ${name.replaceAll("-", " ")}` }))));
    wanted.addEventListener("input", draw);
    get(new URL("scenarios.json", import.meta.url).pathname).then((scenarios) => {
        all = Object.entries(scenarios);
        draw();
    }, report);
    const file = element("input", {
        type: "file",
        accept: "application/json",
        on: {
            change: async ({ target }) => {
                try {
                    await arm(JSON.parse(await target.files[0].text()), target.files[0].name);
                } catch {
                    report(new Error("This file is no scenario."));
                }
                target.value = "";
            },
        },
    });
    return element("section", { class: "card" }, element("h3", {}, "Scenarios"),
        element("div", { class: "row" }, labelled("Find", wanted), labelled("From a file", file)), found);
}

export function makeFaults(sheet, printer, { showExchange }, signal) {
    const { said, say, act, report } = makeOutcome(printer);
    const list = element("ul", { class: "armed" });
    const disarmAll = button("Disarm all", () => act("All faults are disarmed.", () => remove(at(printer.name, "faults"))));
    let told = []; // the numbers of the faults whose arming is told
    // A till may have met them before their arming is told.
    function forgetWhatHasEnded() {
        if (told.length > 0 && !printer.faults.some(({ number, ended }) => !ended && told.includes(number))) {
            say("quiet", "");
            told = [];
        }
    }
    async function arm(fault, name) {
        let armed = [];
        told = [];
        await act(`Armed: ${name ?? wordsFor(fault)}. It acts from the next request on.`, async () => {
            const { faults } = await post(at(printer.name, "faults"), fault);
            armed = faults.slice(faults.length - (fault.faults?.length ?? 1));
            await printer.look();
            list.lastElementChild.scrollIntoView({ block: "nearest" });
        });
        told = armed.map(({ number }) => number);
        forgetWhatHasEnded();
    }

    function show() {
        forgetWhatHasEnded();
        const place = [...list.children].findIndex((item) => item.contains(document.activeElement));
        replaceChildren(list, printer.faults.length > 0 ? printer.faults.map(itemOf)
            : [element("li", { class: "hint" }, "No fault is armed: the printer does what it should.")]);
        if (place !== -1 && !list.contains(document.activeElement)) { // what had the focus is gone: the next one has it
            const all = list.querySelectorAll(":scope > li > button");
            (all[Math.min(place, all.length - 1)] ?? disarmAll).focus();
        }
    }

    function itemOf({ number, fault, ended, requestsMet, requestsHit, callsHit, exchanges }) {
        return element("li", { class: ended ? "ended" : "" },
            element("div", {},
                element("b", {}, wordsFor(fault)),
                element("p", {}, ended ? "Ended. " : "Armed. ",
                    `Met ${counted(requestsMet, "request")}, hit ${requestsHit} in ${counted(callsHit, "call")}. `,
                    exchanges.length > 0 && "Exchanges: ",
                    exchanges.slice(-8).map((exchange) => button(String(exchange), () => showExchange(exchange), { class: "link", "aria-label": `Exchange ${exchange}`, "data-key": `${number} ${exchange}` })))),
            button(ended ? "Remove" : "Disarm", () => act("Disarmed.", () => remove(at(printer.name, `faults/${number}`))), { "aria-label": `${ended ? "Remove" : "Disarm"} fault ${number}`, "data-key": number }));
    }

    const quick = [
        ["Lose the acknowledge of a payment", { kind: "acknowledgeLost", command: "payment" }],
        ["Paper out in the next receipt", { kind: "paperOut", command: "paragonBegin" }],
        ["Busy for 5 seconds", { kind: "busy", milliseconds: 5000 }],
        ["Lose power at the end of a receipt", { kind: "powerLoss", command: "paragonEnd", milliseconds: 2000 }],
    ];
    sheet.append(
        element("div", { class: "quick", role: "group", "aria-label": "Usual troubles" }, quick.map(([title, fault]) => button(title, () => arm(fault)))),
        said,
        element("section", { class: "card" },
            element("div", { class: "bar" }, element("h3", {}, "Armed"), disarmAll),
            list),
        armForm(arm), scenarioList(arm, report));
    printer.on("faults", show, signal);
    show();
    return {};
}
