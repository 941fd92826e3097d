// An exchange in words: what it was, what became of it, and what that means for the till.

export const isProbe = (exchange) => exchange.name === "probe";

// "Chlieb · 12.50 · A", without what is empty.
export function summaryOf(exchange) {
    return exchange.fields.map((field) => String(field.value).trim()).filter(Boolean).join(" · ");
}

// How it ended, in two words, and how good that is.
export function outcomeOf(exchange) {
    if (isProbe(exchange)) {
        return exchange.toTill === "" ? { kind: "bad", text: "no answer" } : { kind: "quiet", text: "probe" };
    }
    if (exchange.refusal) {
        return { kind: "bad", text: `refused ${exchange.refusal.code}` };
    }
    if (exchange.executed) {
        if (exchange.acknowledged) {
            return { kind: "good", text: "done" };
        }
        return exchange.isOver === false && exchange.faults.length === 0
            ? { kind: "quiet", text: "answering" }
            : { kind: "warn", text: "done, till not told" };
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
        story.push(exchange.attempt > 1
            ? `The link sent exchange ${exchange.repeatOf} again by itself (attempt ${exchange.attempt}): it had heard no acceptance.`
            : `These are the bytes of exchange ${exchange.repeatOf} once more: the till has sent them again.`);
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
    if (exchange.executed && !exchange.acknowledged && exchange.isOver !== false) {
        story.push("The till was not told: it cannot know whether this counts. It has to ask before it does anything twice.");
    }
    const repeat = later.find(({ repeatOf }) => repeatOf === exchange.number);
    if (repeat) {
        story.push(`Exchange ${repeat.number} repeats it: ${outcomeOf(repeat).text}${repeat.refusal ? `, ${repeat.refusal.name}` : ""}.`);
    }
    return story;
}

// "0.4 ms".
export function durationOf({ microseconds: { decide, commit, answer } }) {
    const all = decide + commit + answer;
    return all >= 1_000_000 ? `${(all / 1_000_000).toFixed(1)} s` : all >= 100_000 ? `${Math.round(all / 1000)} ms` : `${(all / 1000).toFixed(1)} ms`;
}

export const timeOf = (moment) => moment.slice(11);
