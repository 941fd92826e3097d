// The troubles that a printer can have: what each does, and what it must or may be told.

// Of a parameter: its form. A "!" behind its name says that it is needed.
export const parameterForms = {
    code: { title: "Code", type: "number", min: 1, max: 255 },
    milliseconds: { title: "Milliseconds", type: "number", min: 1, max: 86_400_000 },
    byte: { title: "Byte", type: "number", min: 0, max: 65_535 },
    bit: { title: "Bit", type: "number", min: 0, max: 7 },
    bytes: { title: "Bytes", type: "text", placeholder: "15 31" },
    blocks: { title: "Blocks", type: "number", min: 1, max: 1_000_000 },
    at: { title: "At", type: "choice", choices: ["connection", "request", "answer", "afterwards"] },
    probes: { title: "Probes meanwhile", type: "choice", choices: ["ready", "busy", "ignored"] },
};

// Which of the requests that a command selects are hit, whatever the kind.
export const selectionForms = [
    { name: "fromCall", title: "From call", type: "number", min: 1, placeholder: "1" },
    { name: "fromRequest", title: "From request", type: "number", min: 1, placeholder: "1" },
    { name: "calls", title: "For so many calls", type: "number", min: 1 },
    { name: "requests", title: "For so many requests", type: "number", min: 1, placeholder: "1" },
    { name: "probability", title: "By chance, 0 to 1", type: "number", min: 0, max: 1, step: "any", placeholder: "always" },
    { name: "seed", title: "Seed of the chance", type: "number", min: 0 },
];

export const faultKinds = {
    acknowledgeLost: { takes: ["probes"], does: "carried out, but the till is not told" },
    requestLost: { takes: ["probes"], does: "nothing is carried out and nothing answered" },
    silence: { takes: [], does: "the same, and probes are ignored until the next request" },
    refuse: { takes: ["code!"], does: "refused with this code and not carried out" },
    busy: { takes: ["milliseconds"], does: "busy for so long, or until it is disarmed" },
    acknowledgeLate: { takes: ["milliseconds!", "probes"], does: "answered late" },
    acknowledgeTwice: { takes: ["milliseconds"], does: "answered twice" },
    executedNotAcknowledged: { takes: ["code!"], does: "carried out, and answered with a refusal" },
    acknowledgedNotExecuted: { takes: [], does: "accepted, and not carried out" },
    paperOut: { takes: [], does: "there is no paper for these requests" },
    diskFull: { takes: [], does: "what would change the memory is refused with 51" },
    powerLoss: { takes: ["at", "milliseconds"], does: "the printer goes off and on again" },
    connectionClosed: { takes: ["at"], does: "the printer closes the link" },
    connectionReset: { takes: ["at"], does: "the printer resets the connection" },
    connectionRefused: { takes: ["milliseconds!"], does: "the port is closed for so long, from now on", selectsNothing: true },
    halfOpen: { takes: ["at"], does: "the printer is gone without a word" },
    wrongChecksum: { takes: ["blocks"], does: "blocks of a reply have a wrong checksum" },
    wrongTerminator: { takes: ["blocks"], does: "blocks of a reply have a wrong terminator" },
    wrongLength: { takes: ["blocks"], does: "blocks of a reply have a wrong length" },
    blockRepeated: { takes: ["blocks"], does: "blocks of a reply come twice" },
    flippedBit: { takes: ["byte!", "bit", "blocks"], does: "one bit of the answer is flipped" },
    cut: { takes: ["byte!"], does: "only so many bytes of the answer come" },
    extraBytes: { takes: ["bytes!"], does: "these bytes come behind the answer" },
    noise: { takes: ["bytes!"], does: "these bytes come before the answer" },
    staleAnswer: { takes: [], does: "the answer of the request before is sent instead" },
    slow: { takes: ["milliseconds!"], does: "so long between two bytes" },
    split: { takes: ["byte!", "milliseconds!"], does: "so many bytes, a pause, the rest" },
    ctsOff: { takes: ["milliseconds!"], does: "CTS goes off before the answer and comes back" },
    dsrOff: { takes: ["milliseconds!"], does: "DSR goes off before the answer and comes back" },
};

// What tills send most; any other name of the command table can be typed.
export const usualCommands = [
    "sellingDayBegin", "paragonBegin", "itemSale", "itemVoid", "itemDiscount", "subTotal", "payment", "paragonEnd",
    "destroyParagon", "printReport", "getVariable",
];
