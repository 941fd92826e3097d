// An exchange in words: what it was, what became of it, and what that means for the till.

export const isProbe = (exchange) => exchange.name === "probe";

const isBlock = (exchange) => exchange.name === "block" || exchange.name === "damagedBlock";

// What a block of an upload is, in the place of the fields that it has none of: of what, the which one, how long, whether
// more follow. `earlier` are the exchanges before it, with their own blocks told already.
export function tellBlock(exchange, earlier) {
    const [start, length, ...rest] = exchange.fromTill.split(" ");
    if (!isBlock(exchange) || start !== "3a") {
        return;
    }
    const before = earlier.findLast(({ number, till, name }) => number < exchange.number && till === exchange.till && name !== "probe");
    const repeated = earlier.find(({ number }) => number === exchange.repeatOf);
    const isBehindBlock = before?.block !== undefined;
    const isAgain = isBehindBlock && (before.name === "damagedBlock" || !before.executed);
    const bytes = parseInt(length, 16) + 1;
    exchange.block = {
        of: isBehindBlock ? before.block.of : before?.name ?? "",
        number: repeated?.block?.number ?? (isBehindBlock ? before.block.number + (isAgain ? 0 : 1) : 1),
    };
    exchange.fields = [
        { name: "upload", value: exchange.block.of },
        { name: "block", value: `block ${exchange.block.number}` },
        { name: "length", value: bytes === 1 ? "1 byte" : `${bytes} bytes` },
        { name: "end", value: rest[bytes] === "03" ? "the last" : rest[bytes] === "17" ? "more follow" : "" },
    ];
}

// "Chlieb · 12.50 · A", without what is empty.
export function summaryOf(exchange) {
    return exchange.fields.map((field) => String(field.value).trim()).filter(Boolean).join(" · ");
}

// What faults say of an answer that they put off, and that still comes.
const putOff = new Set([
    "the printer was busy before it answered", "the answer came late", "the answer came twice", "the answer came byte by byte",
    "the answer came in two pieces", "CTS went off", "DSR went off",
]);
export const isAwaited = ({ isOver, acknowledged, faults }) =>
    isOver === false && !acknowledged && faults.every((fault) => putOff.has(fault) || fault.includes(" did nothing: "));

// Whether the till has the whole answer: of a reply it says so itself, an acceptance or an empty reply has left the printer.
const isTold = ({ acknowledged, taken, answer }) => taken || (acknowledged && answer === "");
// Of a reply it has the first block, and takes the others.
const isReading = (exchange) => exchange.isOver === false && exchange.acknowledged && !isTold(exchange);

// How it ended, in two words, and how good that is.
export function outcomeOf(exchange) {
    if (isProbe(exchange)) {
        return exchange.toTill === "" ? { kind: "bad", text: "no answer" } : { kind: "quiet", text: "probe" };
    }
    if (exchange.refusal) {
        return { kind: "bad", text: `refused ${exchange.refusal.code}` };
    }
    if (isAwaited(exchange) && (exchange.executed || exchange.faults.length > 0)) {
        return { kind: "quiet", text: exchange.faults.length > 0 ? "waiting" : "answering" };
    }
    if (isReading(exchange)) {
        return { kind: "quiet", text: "answering" };
    }
    if (exchange.executed) {
        return isTold(exchange) ? { kind: "good", text: "done" } : { kind: "warn", text: "done, till not told" };
    }
    if (exchange.acknowledged) {
        return exchange.faults.length > 0
            ? { kind: "warn", text: "accepted, not done" }
            : { kind: "good", text: "taken" };
    }
    return exchange.faults.length > 0 ? { kind: "bad", text: "not done" } : { kind: "bad", text: "refused" };
}

// The sentences that a person needs who asks what happened; `later` are the exchanges behind it.
export function storyOf(exchange, later = []) {
    const story = [];
    if (exchange.repeatOf) {
        const after = `after ${secondsOf(exchange.repeatedAfter)}`;
        story.push(exchange.attempt > 1
            ? `The link sent exchange ${exchange.repeatOf} again by itself ${after} (attempt ${exchange.attempt}): it had heard no acceptance.`
            : `These are the bytes of exchange ${exchange.repeatOf} once more: the till has sent them again ${after}.`);
    }
    for (const fault of exchange.faults) {
        story.push(`Armed fault: ${fault}.`);
    }
    if (exchange.refusal) {
        story.push(`The printer refused it with ${exchange.refusal.code}, ${exchange.refusal.name}: ${exchange.refusal.sentence}`);
    } else if (exchange.executed) {
        story.push(exchange.committed ? "The printer carried it out and keeps it." : "The printer carried it out; there was nothing to keep.");
    } else if (!isProbe(exchange) && exchange.faults.length > 0) {
        story.push("The printer did not carry it out.");
    }
    if (exchange.executed && !isTold(exchange) && !isReading(exchange) && !isAwaited(exchange)) {
        story.push(exchange.committed
            ? "The till was not told: it cannot know whether this counts. It has to ask before it does anything twice."
            : `The till was not told${exchange.answer ? " all of the answer" : ""}.`);
    }
    const repeat = later.find(({ repeatOf }) => repeatOf === exchange.number);
    if (repeat) {
        story.push(`Exchange ${repeat.number} repeats it after ${secondsOf(repeat.repeatedAfter)}: ${outcomeOf(repeat).text}${repeat.refusal ? `, ${repeat.refusal.name}` : ""}.`);
    }
    return story;
}

// "3.0 s".
export const secondsOf = (milliseconds) => `${(milliseconds / 1000).toFixed(1)} s`;

// "0.4 ms".
export function durationOf({ microseconds: { decide, commit, answer } }) {
    const all = decide + commit + answer;
    return all >= 1_000_000 ? `${(all / 1_000_000).toFixed(1)} s` : all >= 100_000 ? `${Math.round(all / 1000)} ms` : `${(all / 1000).toFixed(1)} ms`;
}

export const timeOf = (moment) => moment.slice(11);
