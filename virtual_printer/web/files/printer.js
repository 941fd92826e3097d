// What is known of one printer: it asks again whenever it hears of a change, each question once at a time, and tells
// its views what is new.
import { at, get, getLines, Refused } from "./api.js";
import { tellBlock } from "./exchange.js";

const mostExchanges = 400;
const mostLines = 2000;
const mostAtOnce = 200; // that news tell
const mostAtFirst = 120;

const whenIdle = (action) => (window.requestIdleCallback ?? setTimeout)(action);

// Asks, one question at a time: whoever comes while one is asked waits for the next, which all that do so share, and so
// knows what there was when it came. `isNeeded` says when it is its turn whether there is still something to ask.
function inTurn(ask) {
    let waiting = [];
    let isAsking = false;

    async function answerAll() {
        isAsking = true;
        while (waiting.length > 0) {
            const those = waiting;
            waiting = [];
            try {
                if (those.some(({ isNeeded }) => isNeeded())) {
                    await ask();
                }
            } catch (failure) {
                if (!(failure instanceof Refused) && !(failure instanceof TypeError)) {
                    those.forEach(({ reject }) => reject(failure));
                    continue;
                } // otherwise the printer is not there: the stream tells when it comes back
            }
            those.forEach(({ resolve }) => resolve());
        }
        isAsking = false;
    }

    return (isNeeded) => new Promise((resolve, reject) => {
        waiting.push({ isNeeded, resolve, reject });
        if (!isAsking) {
            answerAll();
        }
    });
}

export class Printer extends EventTarget {
    constructor(name) {
        super();
        this.name = name;
        this.ask = inTurn(() => this.askForNews());
        this.forget();
    }

    forget() {
        this.state = null;
        this.totals = null;
        this.changes = -1; // that have been heard of
        this.faults = [];
        this.lines = []; // of the paper
        this.exchanges = []; // the oldest first
        this.unfinished = []; // their numbers
        this.dispatchEvent(new CustomEvent("forgotten"));
    }

    // Calls the listener whenever one of these has changed: "state", "paper", "trace", "faults", "totals".
    on(what, listener, signal) {
        this.addEventListener(what, ({ detail }) => listener(detail), { signal });
        this.addEventListener("forgotten", () => listener({ isNew: true }), { signal });
    }

    tell(what, detail = {}) {
        this.dispatchEvent(new CustomEvent(what, { detail }));
    }

    // Asks for what is new. `notice` is what the stream has told, if it has: what is known is not asked for.
    async look(notice = null) {
        if (!document.hidden) {
            await this.ask(() => notice?.changes !== this.changes);
        }
    }

    // At first the newest only, so that there is soon something to be seen.
    async askForNews() {
        const before = this.state;
        const isFirst = before === null;
        const last = this.exchanges.at(-1)?.number ?? 0;
        const changing = this.exchanges.find((exchange) => !exchange.isOver)?.number ?? last + 1;
        const isFarBack = last - changing >= mostAtOnce / 2; // there may be more by then
        const query = new URLSearchParams({
            line: this.lines.at(-1)?.number ?? 0,
            exchange: isFarBack ? last : changing - 1,
            most: isFirst ? mostAtFirst : mostAtOnce,
        });
        const { changes, state, totals, faults, paper, trace, unfinished } = await get(at(this.name, `news?${query}`));
        // A till that waits has asked more often whether anybody is there than news tell.
        const farBack = isFarBack ? await getLines(at(this.name, `trace?after=${changing - 1}&limit=1`)).catch(() => []) : [];
        if (this.state !== before) {
            return; // forgotten meanwhile
        }
        this.changes = changes;
        state.heardAt = Date.now();
        this.state = state;
        const others = { totals, faults };
        const areOther = Object.keys(others).filter((what) => JSON.stringify(this[what]) !== JSON.stringify(others[what]));
        Object.assign(this, others);
        this.dropBefore(state.paper.first);
        this.unfinished = unfinished;
        const hasMissed = this.dropBeforeGap(paper, trace);
        this.addLines(paper);
        this.addExchanges(hasMissed ? trace : [...farBack, ...trace]);
        areOther.forEach((what) => this.tell(what));
        this.tell("state");
        if (isFirst || hasMissed) {
            whenIdle(() => this.askForOlder().catch(() => {}));
        }
    }

    // Torn off, or the printer has new paper.
    dropBefore(first) {
        const gone = this.lines.filter(({ number }) => number < first);
        if (gone.length > 0) {
            this.lines = this.lines.slice(gone.length);
            this.tell("paper", { added: [], gone });
        }
    }

    // More has happened than news tell at once: what is known does not go on from the last one.
    dropBeforeGap(lines, exchanges) {
        const isBehindGap = (known, added) => known.length > 0 && added.length > 0 && added[0].number > known.at(-1).number + 1;
        const missesLines = isBehindGap(this.lines, lines);
        const missesExchanges = isBehindGap(this.exchanges, exchanges);
        if (missesLines) {
            this.lines = [];
        }
        if (missesExchanges) {
            this.exchanges = [];
            this.tell("trace");
        }
        return missesLines || missesExchanges;
    }

    addLines(added) {
        if (added.length === 0) {
            return;
        }
        const isNew = this.lines.length === 0;
        this.lines.push(...added);
        const gone = this.lines.splice(0, Math.max(0, this.lines.length - mostLines));
        this.tell("paper", { isNew, added, gone });
    }

    // Those that are new or have changed; of those that are not over more becomes, however many are behind them.
    addExchanges(added) {
        if (added.length === 0) {
            return;
        }
        const known = new Map([...this.exchanges, ...added].map((exchange) => [exchange.number, exchange]));
        const all = [...known.values()];
        this.markOver(added);
        added.forEach((exchange) => tellBlock(exchange, all));
        this.exchanges = all.filter((exchange, index) => index >= all.length - mostExchanges || !exchange.isOver);
        this.tell("trace", { added });
    }

    markOver(exchanges) {
        exchanges.forEach((exchange) => { exchange.isOver = !this.unfinished.includes(exchange.number); });
    }

    // What was before the newest, when these are shown.
    async askForOlder() {
        const [{ number: line } = { number: 1 }] = this.lines;
        const [{ number: exchange } = { number: 1 }] = this.exchanges;
        const after = Math.max(0, exchange - 1 - (mostExchanges - mostAtFirst));
        const [lines, exchanges] = await Promise.all([
            line > this.state.paper.first ? getLines(at(this.name, `paper?limit=${line - this.state.paper.first}`)) : [],
            exchange > 1 ? getLines(at(this.name, `trace?after=${after}&limit=${exchange - 1 - after}`)).catch(() => []) : [],
        ]);
        const olderLines = lines.filter(({ number }) => number >= this.state.paper.first && number < this.lines[0]?.number);
        if (olderLines.length > 0) {
            this.lines = [...olderLines, ...this.lines];
            this.tell("paper", { isLonger: true });
        }
        const olderExchanges = exchanges.filter(({ number }) => number < this.exchanges[0]?.number);
        if (olderExchanges.length > 0) {
            this.markOver(olderExchanges);
            this.exchanges = [...olderExchanges, ...this.exchanges];
            this.exchanges.forEach((exchange) => tellBlock(exchange, this.exchanges));
            this.tell("trace", { older: olderExchanges });
        }
    }

    // The printer's clock goes on while nobody asks.
    now() {
        if (!this.state) {
            return null;
        }
        const { clock, heardAt } = this.state;
        const shown = Date.parse(`${clock.now.replace(" ", "T")}Z`);
        return new Date(clock.mode === "stands" ? shown : shown + (Date.now() - heardAt) * clock.speed);
    }
}
