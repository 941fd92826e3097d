// What is known of one printer: it asks again whenever it hears of a change, each question once at a time, and tells
// its views what is new.
import { at, get, getLines, Refused } from "./api.js";

const mostExchanges = 400;
const mostLines = 2000;

// Asks, and once more afterwards when it was to ask again meanwhile.
function inTurn(ask) {
    let wished = 0;
    let isAsking = false;
    return async () => {
        wished += 1;
        if (isAsking) {
            return;
        }
        isAsking = true;
        try {
            for (let answered = 0; answered !== wished;) {
                answered = wished;
                await ask();
            }
        } catch (failure) {
            if (!(failure instanceof Refused) && !(failure instanceof TypeError)) {
                throw failure; // otherwise the printer is not there: the stream tells when it comes back
            }
        } finally {
            isAsking = false;
        }
    };
}

export class Printer extends EventTarget {
    constructor(name) {
        super();
        this.name = name;
        this.askForState = inTurn(() => this.lookAtState());
        this.askForPaper = inTurn(() => this.lookAtPaper());
        this.askForTrace = inTurn(() => this.state && this.lookAtTrace());
        this.askForFaults = inTurn(() => this.lookAtFaults());
        this.forget();
    }

    forget() {
        this.state = null;
        this.totals = null;
        this.faults = [];
        this.lines = []; // of the paper
        this.exchanges = []; // the oldest first
        this.documentsSeen = -1;
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

    // Asks for what is new. `notice` is what the stream has told, if it has: what has not moved is not asked for.
    async look(notice = null) {
        if (document.hidden) {
            return;
        }
        if (!this.state) {
            await this.askForState(); // it says where the trace ends
        }
        const last = this.exchanges.at(-1);
        const hasPrinted = notice?.paper !== (this.lines.at(-1)?.number ?? 0) + 1;
        const hasExchanged = notice?.exchange !== (last?.number ?? 0) + 1 || last?.isOver === false;
        await Promise.all([
            hasPrinted && this.askForPaper(),
            hasExchanged && this.askForTrace(),
            this.askForState(),
            (this.faults.length > 0 || notice?.faults !== 0) && this.askForFaults(),
        ]);
    }

    async lookAtState() {
        const state = await get(at(this.name, "state"));
        state.heardAt = Date.now();
        this.state = state;
        this.dropBefore(state.paper.first);
        // A printer that is set back may have as many documents as before, and has new paper.
        const journal = `${state.position.document} ${state.paper.first}`;
        if (journal !== this.journalSeen) {
            this.journalSeen = journal;
            this.totals = await get(at(this.name, "totals"));
            this.tell("totals");
        }
        this.tell("state");
    }

    // Torn off, or the printer has new paper.
    dropBefore(first) {
        const gone = this.lines.filter(({ number }) => number < first);
        if (gone.length > 0) {
            this.lines = this.lines.slice(gone.length);
            this.tell("paper", { added: [], gone });
        }
    }

    async lookAtPaper() {
        const last = this.lines.at(-1)?.number ?? 0;
        const added = await getLines(at(this.name, `paper?after=${last}`));
        if (added.length === 0) {
            return;
        }
        this.lines.push(...added);
        const gone = this.lines.splice(0, Math.max(0, this.lines.length - mostLines));
        this.tell("paper", { isNew: last === 0, added, gone });
    }

    // What follows the last exchange that cannot change any more.
    async lookAtTrace() {
        const changing = this.exchanges.find((exchange) => !exchange.isOver);
        const last = changing ? changing.number - 1 : this.exchanges.at(-1)?.number;
        const after = last ?? Math.max(0, this.state.position.exchange - 1 - mostExchanges);
        let added;
        try {
            added = await getLines(at(this.name, `trace?after=${after}`));
        } catch (failure) {
            if (failure.status !== 410) {
                throw failure;
            }
            added = await getLines(at(this.name, "trace")); // what was missed is forgotten by the printer, too
        }
        added = added.slice(-mostExchanges);
        if (added.length === 0) {
            return;
        }
        for (const exchange of added) {
            exchange.isOver = exchange.acknowledged || exchange.refusal !== null || exchange !== added.at(-1);
        }
        const kept = this.exchanges.filter((exchange) => exchange.number < added[0].number);
        this.exchanges = [...kept, ...added].slice(-mostExchanges);
        this.tell("trace", { added });
    }

    async lookAtFaults() {
        const { faults } = await get(at(this.name, "faults"));
        const isSame = JSON.stringify(faults) === JSON.stringify(this.faults);
        this.faults = faults;
        if (!isSame) {
            this.tell("faults");
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
