// The line of a sheet that says what came of an action.
import { element, setText } from "./dom.js";

export function makeOutcome(printer) {
    const said = element("p", { role: "status" });
    const say = (kind, text) => {
        said.className = kind;
        setText(said, text);
    };
    const report = ({ message }) => say("failure", message);
    // Does it, says `done` or why not, and shows what has changed.
    const act = async (done, action) => {
        try {
            await action();
            say("quiet", done);
            await printer.look();
        } catch (failure) {
            report(failure);
        }
    };
    return { said, say, act, report };
}
