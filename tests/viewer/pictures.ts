/** pictures PAGE FOLDER: draws the pictures of the README: one of the page, and those that make a short moving one. */

import { join } from "node:path";
import { show, startBrowser } from "./browser";

declare const vor2: any; // eslint-disable-line

const frames = 30;

async function draw(pageFile: string, folder: string): Promise<void> {
    const browser = await startBrowser(1280, 760, false);
    const { page, troubles } = await show(browser, pageFile);
    const pick = (name: string) => page.evaluate((wanted) => vor2.selection.pick(vor2.scene.document.nodes.findIndex((n: any) => n.name === wanted)), name);
    const settle = () => page.evaluate(() => new Promise((done) => requestAnimationFrame(() => requestAnimationFrame(done))));
    await page.evaluate(() => vor2.show(0.8));
    await pick("left_hand");
    await settle();
    await page.screenshot({ path: join(folder, "walk.png") });

    // The 3D view alone, from the side a little, for one cycle of the walk.
    await page.setViewportSize({ width: 1000, height: 760 });
    await pick("left_toes_end");
    await page.evaluate(() => {
        document.getElementById("switches")!.hidden = document.getElementById("framing")!.hidden = document.getElementById("labels")!.hidden = true;
        vor2.show(0);
        vor2.stage.home();
    });
    const { x, y, width, height } = (await page.locator("#view").boundingBox())!;
    const side = Math.min(height, 440), across = Math.min(width, 560);
    for (let i = 0; i < frames; ++i) {
        await page.evaluate((t) => vor2.show(t), i / frames);
        await settle();
        const clip = { x: x + (width - across) / 2, y: y + (height - side) / 2, width: across, height: side };
        await page.screenshot({ path: join(folder, `frame_${String(i).padStart(2, "0")}.png`), clip });
    }
    if (troubles.length > 0) console.error(troubles.join("\n"));
    await browser.close();
}

void draw(process.argv[2], process.argv[3]);
