// The control interface, as every client uses it.

export class Refused extends Error {
    constructor(status, sentence) {
        super(sentence);
        this.status = status;
    }
}

// Called when the token is missing.
let askForToken = () => {};
export function whenLocked(listener) {
    askForToken = listener;
}

async function answerTo(method, path, body) {
    const asked = fetch(path, {
        method,
        body: body === undefined ? undefined : JSON.stringify(body),
        cache: "no-store",
        credentials: "same-origin",
    });
    const answer = await asked.catch(() => { throw new Refused(0, "The printer does not answer."); });
    if (answer.ok) {
        return answer;
    }
    const sentence = await answer.json().then((json) => json.error ?? json.differences?.join("\n"), () => answer.statusText);
    if (answer.status === 401 && path !== "/session") {
        askForToken();
    }
    throw new Refused(answer.status, sentence);
}

export const at = (printer, path) => `/printers/${encodeURIComponent(printer)}/${path}`;
export const get = async (path) => (await answerTo("GET", path)).json();
export const getText = async (path) => (await answerTo("GET", path)).text();
// One object a line.
export const getLines = async (path) =>
    (await getText(path)).split("\n").filter(Boolean).map((line) => JSON.parse(line));
export const post = async (path, body = {}) => (await answerTo("POST", path, body)).json();
export const patch = async (path, body) => (await answerTo("PATCH", path, body)).json();
export const remove = async (path) => (await answerTo("DELETE", path)).json();
