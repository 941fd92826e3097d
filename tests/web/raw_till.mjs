// Tills that speak the wire themselves, many of them in one process: load for the figures.
import net from "node:net";

export function request(command, ...fields) {
    const bytes = Buffer.concat([Buffer.from([0x1c, 0x01, command]), ...fields.map((field) => Buffer.from(`${field}\0`)), Buffer.from([0x04])]);
    return Buffer.concat([bytes, Buffer.from([bytes.reduce((sum, byte) => sum ^ byte, 0)])]);
}

const day = request(0x29, 0);
const begin = request(0x20, 0, 1, 0, 0, 1, 0);
const item = (name) => request(0x24, 0, name, "1.00", "A", "1.000", "1.00", "ks ");
const end = request(0x22, 0, 0);

export async function openRawTill(address) {
    const colon = address.lastIndexOf(":");
    const socket = net.connect({ host: address.slice(0, colon), port: Number(address.slice(colon + 1)), noDelay: true });
    await new Promise((resolve, reject) => socket.once("connect", resolve).once("error", reject));
    let heard = () => {};
    socket.on("data", (bytes) => heard(bytes));
    const send = (bytes) => new Promise((resolve) => {
        heard = resolve;
        socket.write(bytes);
    });
    await send(day);
    const till = {
        accepted: 0,
        refused: 0,
        isOpen: true,
        async sell(items = 1, name = "Chlieb") {
            for (const bytes of [begin, ...Array(items).fill(item(name)), request(0x30, 0, 1, `${items}.00`, `${items}.00`, 0, "Hotovost"), end]) {
                const answer = await send(bytes);
                till[answer[0] === 0x06 ? "accepted" : "refused"] += 1;
            }
        },
        // One receipt a second, of eight commands.
        async sellOn(offset) {
            for (let next = Date.now() + offset; till.isOpen; next += 1000) {
                await new Promise((resolve) => setTimeout(resolve, Math.max(0, next - Date.now())));
                await till.sell(5);
            }
        },
        end() {
            till.isOpen = false;
            socket.destroy();
        },
    };
    return till;
}
