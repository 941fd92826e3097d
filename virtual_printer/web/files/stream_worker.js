// A browser opens six connections to one host, whatever the number of its tabs: they share this worker and its
// stream.
import { followEvents } from "./events.js";

const tabs = new Set();
let lastStart = null; // what a tab that comes later has missed
const notices = new Map();

const stream = followEvents((event) => {
    if (event.type === "start") {
        lastStart = event;
        notices.clear();
    } else if (event.type === "changed") {
        notices.set(event.data.printer, event);
    } else {
        lastStart = null;
    }
    for (const tab of tabs) {
        tab.postMessage(event);
    }
});

self.onconnect = ({ ports: [tab] }) => {
    tabs.add(tab);
    tab.onmessage = ({ data }) => {
        if (data === "again") {
            stream.again();
        } else if (data === "bye") {
            tabs.delete(tab);
        }
    };
    if (lastStart) {
        [lastStart, ...notices.values()].forEach((event) => tab.postMessage(event));
    }
};
