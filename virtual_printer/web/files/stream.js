// What has changed, as it happens.
import { followEvents } from "./events.js";

// `tell` as in events.js. Returns what opens the stream again.
export function followChanges(tell) {
    if (typeof SharedWorker === "undefined") {
        return followEvents(tell).again;
    }
    const address = new URL("stream_worker.js", import.meta.url).href;
    const trusted = window.trustedTypes?.createPolicy("telvofm", { createScriptURL: (text) => text });
    const worker = new SharedWorker(trusted ? trusted.createScriptURL(address) : address, { type: "module" });
    worker.port.onmessage = ({ data }) => tell(data);
    worker.port.start();
    window.addEventListener("pagehide", () => worker.port.postMessage("bye"));
    // A page that comes back out of the browser's memory has missed what was said meanwhile.
    window.addEventListener("pageshow", ({ persisted }) => persisted && window.location.reload());
    return () => worker.port.postMessage("again");
}
