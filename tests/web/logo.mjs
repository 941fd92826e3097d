// The logo of the shop in the pictures: drawn in a browser, and kept as a bitmap file of one bit a dot.
import fs from "node:fs";

export async function drawLogo(page, file, width = 384, height = 128) {
    const dots = await page.evaluate(([across, down]) => {
        const canvas = new OffscreenCanvas(across, down);
        const pen = canvas.getContext("2d");
        pen.fillStyle = "#fff";
        pen.fillRect(0, 0, across, down);
        pen.fillStyle = "#000";
        pen.strokeStyle = "#000";
        pen.lineWidth = 5;
        for (const [turn, long] of [[-0.9, 44], [-0.3, 54], [0.3, 54], [0.9, 44]]) {
            pen.save();
            pen.translate(64, 110);
            pen.rotate(turn);
            pen.beginPath();
            pen.ellipse(0, -long / 2 - 22, 12, long / 2, 0, 0, 2 * Math.PI);
            pen.fill();
            pen.restore();
        }
        pen.fillRect(61, 70, 6, 50);
        pen.font = "bold 44px 'DejaVu Serif', 'DejaVu Sans'";
        pen.fillText("LIPA", 136, 66);
        pen.font = "22px 'DejaVu Sans'";
        pen.fillText("pekáreň a káva", 138, 100);
        const { data } = pen.getImageData(0, 0, across, down);
        return Array.from({ length: across * down }, (_, index) => (data[index * 4] < 128 ? 1 : 0));
    }, [width, height]);
    const row = Math.ceil(width / 32) * 4;
    const bitmap = Buffer.alloc(62 + row * height);
    bitmap.write("BM");
    bitmap.writeUInt32LE(bitmap.length, 2);
    bitmap.writeUInt32LE(62, 10);
    bitmap.writeUInt32LE(40, 14);
    bitmap.writeInt32LE(width, 18);
    bitmap.writeInt32LE(height, 22);
    bitmap.writeUInt16LE(1, 26);
    bitmap.writeUInt16LE(1, 28);
    bitmap.writeUInt32LE(row * height, 34);
    bitmap.writeUInt32LE(2, 46);
    bitmap.writeUInt32LE(0x00ffffff, 54); // the colour 0 is white, 1 is black
    for (let y = 0; y < height; y += 1) {
        for (let x = 0; x < width; x += 1) {
            if (dots[(height - 1 - y) * width + x]) {
                bitmap[62 + y * row + (x >> 3)] |= 0x80 >> (x & 7);
            }
        }
    }
    fs.writeFileSync(file, bitmap);
}
