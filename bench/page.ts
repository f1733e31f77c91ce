/** page VOR2 FOLDER: what bench/page prints, of the scene FOLDER/big.vr2. */

import { execFileSync } from "node:child_process";
import { statSync } from "node:fs";
import { join } from "node:path";
import { show, startBrowser } from "../tests/viewer/browser";

declare const vor2: any; // eslint-disable-line

const rounds = 5, secondsPlayed = 5;

async function measure(tool: string, scene: string, file: string): Promise<Record<string, number>> {
    let begun = Date.now();
    execFileSync(tool, ["view", scene, "-o", file, "--quiet"]);
    const written = (Date.now() - begun) / 1000;

    const browser = await startBrowser(1280, 800, false);
    begun = Date.now();
    const { page, troubles } = await show(browser, file);
    await page.evaluate(() => new Promise((done) => requestAnimationFrame(() => requestAnimationFrame(done))));
    const opened = (Date.now() - begun) / 1000;
    const pictures = await page.evaluate(async (seconds) => {
        vor2.clock.play();
        const first = vor2.pictures(), start = performance.now();
        await new Promise((done) => setTimeout(done, 1000 * seconds));
        return (vor2.pictures() - first) / ((performance.now() - start) / 1000);
    }, secondsPlayed);
    await browser.close();
    if (troubles.length > 0) throw new Error(troubles.join("\n"));
    return { "written, s": written, "opened, s": opened, "pictures a second": pictures, "size, of the scene's": statSync(file).size / statSync(scene).size };
}

async function main(tool: string, folder: string): Promise<void> {
    const rows: Record<string, number>[] = [];
    for (let i = 0; i < rounds; ++i) rows.push(await measure(tool, join(folder, "big.vr2"), join(folder, "big.html")));
    for (const name of Object.keys(rows[0])) {
        const values = rows.map((row) => row[name]).sort((a, b) => a - b);
        console.log(`${name.padEnd(22)} ${values[rounds >> 1].toFixed(2)}   (${values[0].toFixed(2)} to ${values[rounds - 1].toFixed(2)})`);
    }
}

void main(process.argv[2], process.argv[3]);
