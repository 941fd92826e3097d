// The one stream of events, opened again whenever it ends. Used by the worker that all tabs share, and by a tab
// itself where there are no such workers.

const shortestPause = 250;
const longestPause = 2000;

// `tell` is called with { type: "start" | "changed" | "offline", data }.
export function followEvents(tell) {
    let source = null;
    let pause = shortestPause;
    let timer = 0;

    function open() {
        clearTimeout(timer);
        source?.close();
        source = new EventSource("/events");
        for (const type of ["start", "changed"]) {
            source.addEventListener(type, (event) => {
                pause = shortestPause;
                tell({ type, data: JSON.parse(event.data) });
            });
        }
        source.onerror = () => {
            source.close();
            tell({ type: "offline" });
            timer = setTimeout(open, pause);
            pause = Math.min(longestPause, pause * 2);
        };
    }
    open();
    return { again: open };
}
