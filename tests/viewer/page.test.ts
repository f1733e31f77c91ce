/** The page as a user has it, in a browser without a window. */

import assert from "node:assert/strict";
import { readFileSync, statSync, writeFileSync } from "node:fs";
import { after, before, test } from "node:test";
import type { BrowserContext, Page } from "playwright-core";
import { chromiumPath, show, startBrowser } from "./browser";
import { Folder, example } from "./pages";

const folder = new Folder();
let browser: BrowserContext;
const skip = chromiumPath() === null ? "there is no Chromium" : false;

/** Two light and two dark dots. */
const dot = Buffer.from("iVBORw0KGgoAAAANSUhEUgAAAAIAAAACCAAAAABX3VL4AAAADklEQVR4nGP4r8Gg8R8ABvACT53UniIAAAAASUVORK5CYII=", "base64");

before(async () => {
    folder.makeScenes();
    writeFileSync(folder.file("dot.png"), dot);
    assert.equal(folder.run("export", example, "-o", "walk.vr2", "--sample-at", "30").code, 0);
    assert.equal(folder.run("export", example, "-o", "slow.vr2", "--sample-at", "10").code, 0);
    if (!skip) browser = await startBrowser(1280, 800, false);
});
after(async () => {
    await browser?.close();
    folder.remove();
});

declare const vor2: any;

async function opened(scene: string, ...more: string[]): Promise<{ page: Page; troubles: string[] }> {
    return show(browser, folder.pageOf(scene, ...more));
}
const timeOf = (page: Page) => page.evaluate(() => vor2.clock.time.value as number);
const picked = (page: Page) => page.evaluate(() => vor2.selection.nodes.value.map((n: number) => vor2.scene.nameOf(n)) as string[]);
/** How many pixels of the 3D view differ from another picture of it, per thousand. */
async function differing(page: Page, a: Buffer, b: Buffer): Promise<number> {
    return page.evaluate(async ([x, y]) => {
        const read = async (png: string) => {
            const bytes = Uint8Array.from(atob(png), (c) => c.charCodeAt(0));
            const image = await createImageBitmap(new Blob([bytes], { type: "image/png" }));
            const canvas = new OffscreenCanvas(image.width, image.height);
            const pen = canvas.getContext("2d")!;
            pen.drawImage(image, 0, 0);
            return pen.getImageData(0, 0, image.width, image.height).data;
        };
        const [p, q] = [await read(x), await read(y)];
        let count = 0;
        for (let i = 0; i < p.length; i += 4) if (Math.abs(p[i] - q[i]) + Math.abs(p[i + 1] - q[i + 1]) + Math.abs(p[i + 2] - q[i + 2]) > 24) ++count;
        return (4000 * count) / p.length;
    }, [a.toString("base64"), b.toString("base64")]);
}
const picture = async (page: Page) => {
    await page.evaluate(() => new Promise((done) => requestAnimationFrame(() => requestAnimationFrame(done))));
    // Without the switches above, whose looks change as they are used.
    const { x, y, width, height } = (await page.locator("#view").boundingBox())!;
    return page.screenshot({ clip: { x, y: y + 60, width, height: height - 60 } });
};

test("plays, pauses, scrubs, steps, loops and goes at other speeds", { skip }, async () => {
    const { page, troubles } = await opened("walk.vr2");
    assert.equal(await page.evaluate(() => vor2.clock.playing.value), true);
    const first = await timeOf(page);
    await page.waitForFunction((t) => vor2.clock.time.value !== t, first);
    await page.keyboard.press("Space");
    assert.equal(await page.evaluate(() => vor2.clock.playing.value), false);
    await page.keyboard.press("Home");
    assert.equal(await timeOf(page), 0);
    const atStart = await picture(page);
    await page.keyboard.press("ArrowRight");
    assert.ok(Math.abs((await timeOf(page)) - 1 / 30) < 1e-6);
    await page.locator("#scrub").fill("30");
    assert.ok(Math.abs((await timeOf(page)) - 1) < 1e-6);
    assert.equal(await page.locator("#frame").textContent(), "frame 30 of 60");
    const moved = await differing(page, atStart, await picture(page));
    assert.ok(moved > 1, String(moved));
    await page.keyboard.press("]");
    assert.equal(await page.locator("#speed").inputValue(), "2");
    await page.locator("#loop").click();
    assert.equal(await page.locator("#loop").getAttribute("aria-pressed"), "false");
    await page.keyboard.press("End");
    assert.equal(await timeOf(page), 2);
    assert.deepEqual(troubles, []);
    await page.close();
});

test("joints are drawn where pose says they are", { skip }, async () => {
    const { page, troubles } = await opened("walk.vr2");
    for (const time of [0.4, 1.5]) {
        const { nodes } = folder.pose("walk.vr2", time);
        await page.evaluate((t) => vor2.show(t), time);
        for (const name of ["head_end", "left_hand", "right_foot", "left_forearm"]) {
            const [x, y, z] = nodes.find((n) => n.name === name)!.world_matrix.filter((_, i) => i % 4 === 3) as number[];
            // From the file's world to the screen by hand: a left hand's axes, the camera's own matrices.
            const [px, py] = await page.evaluate(([a, b, c]) => {
                const { camera } = vor2.stage;
                const through = (m: number[], v: number[]) => [0, 1, 2, 3].map((r) => m[r] * v[0] + m[4 + r] * v[1] + m[8 + r] * v[2] + m[12 + r] * v[3]);
                const seen = through(camera.projectionMatrix.elements, through(camera.matrixWorldInverse.elements, [a, b, -c, 1]));
                const view = document.getElementById("view")!;
                return [(seen[0] / seen[3] / 2 + 0.5) * view.clientWidth, (0.5 - seen[1] / seen[3] / 2) * view.clientHeight];
            }, [x, y, z]);
            // Lit when selected: the pixels at that place take the colour of the selection.
            const index = nodes.findIndex((n) => n.name === name);
            const before = await pixelAt(page, px, py);
            await page.evaluate((i) => vor2.selection.pick(i), index);
            const lit = await pixelAt(page, px, py);
            assert.ok(lit[2] - lit[0] > 60 && lit[2] - lit[0] > before[2] - before[0] + 40, `${name} at ${time}: ${before} became ${lit}`);
            await page.evaluate(() => vor2.selection.pick(-1));
        }
    }
    assert.deepEqual(troubles, []);
    await page.close();
});
async function pixelAt(page: Page, x: number, y: number): Promise<number[]> {
    await page.evaluate(() => new Promise((done) => requestAnimationFrame(() => requestAnimationFrame(done))));
    const box = (await page.locator("#view").boundingBox())!;
    const png = await page.screenshot({ clip: { x: Math.round(box.x + x), y: Math.round(box.y + y), width: 1, height: 1 } });
    return page.evaluate(async (text) => {
        const image = await createImageBitmap(new Blob([Uint8Array.from(atob(text), (c) => c.charCodeAt(0))], { type: "image/png" }));
        const pen = new OffscreenCanvas(1, 1).getContext("2d")!;
        pen.drawImage(image, 0, 0);
        return Array.from(pen.getImageData(0, 0, 1, 1).data.slice(0, 3));
    }, png.toString("base64"));
}

test("selects both ways, filters, and shows the curves of what is selected", { skip }, async () => {
    const { page, troubles } = await opened("walk.vr2");
    await page.evaluate(() => vor2.show(0.5));
    await page.getByRole("treeitem", { name: "left_shin" }).click();
    assert.deepEqual(await picked(page), ["left_shin"]);
    await page.waitForFunction(() => /Rotation x .*, y .*, z /.test(document.getElementById("curves-values")!.textContent!));
    const [x, y] = await page.evaluate(() => vor2.seenAt(vor2.scene.document.nodes.findIndex((n: any) => n.name === "head_end")) as number[]);
    await page.locator("#view").click({ position: { x, y } });
    assert.deepEqual(await picked(page), ["head_end"]);
    const row = page.locator('#tree [aria-selected="true"]');
    assert.equal(await row.locator(".name").textContent(), "head_end");
    await page.locator("#view").hover({ position: { x, y } });
    assert.equal(await page.locator(".label:visible").first().textContent(), "head_end");
    await page.keyboard.press("/");
    await page.keyboard.type("right foot");
    assert.equal(await page.locator("#filter-count").textContent(), "1 of 30");
    await page.locator("#filter").fill("no such");
    assert.equal(await page.locator('#tree [role="treeitem"]:visible').count(), 0);
    await page.locator("#filter").fill("");
    await page.keyboard.press("Escape");
    await page.locator("#view").focus();
    await page.keyboard.press("ArrowDown");
    await page.keyboard.press("ArrowDown");
    assert.deepEqual(await picked(page), ["hips"]);
    const time = await timeOf(page);
    await page.keyboard.press(".");
    assert.ok((await timeOf(page)) > time);
    const shown = await page.evaluate(() => vor2.curves.window as number[]);
    await page.locator("#curves-in").click();
    const nearer = await page.evaluate(() => vor2.curves.window as number[]);
    assert.ok(Math.abs((nearer[1] - nearer[0]) * 2 - (shown[1] - shown[0])) < 1e-9);
    assert.deepEqual(troubles, []);
    await page.close();
});

test("every switch changes the picture, and pictures beside the scene are in it", { skip }, async () => {
    const { page, troubles } = await opened("everything.vr2");
    await page.evaluate(() => vor2.show(0.7));
    await page.evaluate(() => vor2.selection.pick(2));
    for (const name of ["meshes", "skeleton", "wireframe", "normals", "boxes", "axes", "ground", "trails", "names"]) {
        const before = await picture(page);
        await page.locator(`[data-switch=${name}]`).click();
        const switched = await differing(page, before, await picture(page));
        await page.locator(`[data-switch=${name}]`).click();
        const back = await differing(page, before, await picture(page));
        assert.ok(switched > 0.04 && back < switched / 8, `${name}: ${switched} and back ${back}`);
    }
    const facts = (await page.locator("#facts").textContent())!;
    assert.match(facts, /lost\.png isn't beside the scene/);
    assert.match(facts, /1 triangle with corners/);
    assert.doesNotMatch(facts, /(dot|rough)\.png/);
    const placed = await page.evaluate(() => vor2.scene.document.materials.map((m: { placement?: number[] }) => m.placement));
    assert.deepEqual(placed.find((numbers: number[] | undefined) => numbers), [0, 0, 3, 2, 0, 1, 2]);
    // What the page draws by the graphics card and what it works out itself are one thing.
    await page.evaluate(() => vor2.stage.switches.get("skeleton").value = false);
    const onCard = await picture(page);
    await page.evaluate(() => {
        const surface = vor2.stage.layers[0].meshes.surfaces.find((s: any) => s.document.kind === "weighted");
        const { positions, normals } = vor2.stage.layers[0].meshes.shape(surface, vor2.stage.layers[0].pose);
        const { geometry, material } = surface.object;
        geometry.attributes.position.array.set(positions);
        geometry.attributes.normal.array.set(normals);
        geometry.attributes.position.needsUpdate = geometry.attributes.normal.needsUpdate = true;
        for (const m of material) {
            m.defines = {};
            m.needsUpdate = true;
        }
        vor2.stage.redraw(true);
    });
    assert.ok((await differing(page, onCard, await picture(page))) < 1);
    assert.deepEqual(troubles, []);
    await page.close();
});

test("two scenes over each other begin at the worst joint and frame", { skip }, async () => {
    const { page, troubles } = await opened("walk.vr2", "--compare", "slow.vr2");
    await page.waitForFunction(() => document.getElementById("compared-verdict")!.textContent!.startsWith("Worst"));
    const [worst] = await picked(page);
    const verdict = (await page.locator("#compared-verdict").textContent())!;
    assert.ok(verdict.includes(worst), `${verdict} / ${worst}`);
    const apart = (time: number) => {
        const at = (file: string) => folder.pose(file, time).nodes.find((n) => n.name === worst)!.world_matrix.filter((_, i) => i % 4 === 3) as number[];
        const p = at("walk.vr2"), q = at("slow.vr2");
        return Math.hypot(p[0] - q[0], p[1] - q[1], p[2] - q[2]);
    };
    const told = Number(/, ([\d.]+) mm apart/.exec(verdict)![1]) / 1000;
    assert.ok(Math.abs(apart(await timeOf(page)) - told) < 0.01 * told);
    await page.locator("#worst button").nth(1).click();
    assert.notDeepEqual(await picked(page), [worst]);
    assert.deepEqual(troubles, []);
    await page.close();
});

test("works at phone width, in both themes, by keys, and tells its keys and licences", { skip }, async () => {
    const { page, troubles } = await opened("walk.vr2");
    await page.setViewportSize({ width: 360, height: 740 });
    await page.waitForTimeout(100);
    assert.ok((await page.evaluate(() => document.documentElement.scrollWidth)) <= 360);
    for (const id of ["play", "scrub", "theme", "switches"]) {
        const box = (await page.locator(`#${id}`).boundingBox())!;
        assert.ok(box.x >= 0 && box.x + box.width <= 360, id);
    }
    const light = await page.evaluate(() => getComputedStyle(document.body).backgroundColor);
    await page.keyboard.press("d");
    assert.notEqual(await page.evaluate(() => getComputedStyle(document.body).backgroundColor), light);
    await page.keyboard.press("?");
    assert.ok(await page.locator("#sheet").isVisible());
    await page.locator("#sheet summary").click();
    assert.match((await page.locator("#sheet pre").textContent())!, /three\.js authors[\s\S]*WITHOUT WARRANTY OF ANY KIND/);
    await page.keyboard.press("Escape");
    assert.ok(!(await page.locator("#sheet").isVisible()));
    for (const button of await page.locator("button:visible").all()) {
        const name = (await button.getAttribute("aria-label")) ?? (await button.textContent());
        assert.ok(name!.trim().length > 0);
    }
    assert.deepEqual(troubles, []);
    await page.close();
});

test("bears what is empty, still, wrong and large, and runs nothing that a scene holds", { skip }, async () => {
    for (const scene of ["empty.vr2", "still.vr2", "wrong.vr2", "many.vr2", "script.vr2"]) {
        const { page, troubles } = await opened(scene);
        assert.ok(!(await page.locator("#trouble").isVisible()), scene);
        await page.evaluate(() => document.querySelectorAll<HTMLElement>("[data-switch][aria-pressed=false]").forEach((b) => b.click()));
        await page.evaluate(() => vor2.scene.nodeCount > 0 && vor2.selection.pick(vor2.scene.nodeCount - 1));
        await page.keyboard.press("f");
        await page.evaluate(() => vor2.show(0.5));
        await picture(page);
        assert.deepEqual(troubles, [], scene);
        assert.equal(await page.evaluate(() => (window as any).hit), undefined);
        assert.equal(await page.locator("img, svg[onload]").count(), 0);
        await page.close();
    }
    const { page } = await opened("wrong.vr2");
    await page.locator("#findings-tab").click();
    await page.locator("#findings button").first().click();
    assert.equal((await picked(page)).length, 1);
    await page.close();
});

test("a script that got into the page all the same would not run", { skip }, async () => {
    const html = readFileSync(folder.pageOf("still.vr2"), "utf8");
    writeFileSync(folder.file("hit.html"), html.replace("<main>", "<script>window.hit=1</script><img src=x onerror=window.hit=2><main>"));
    const { page, troubles } = await show(browser, folder.file("hit.html"));
    assert.equal(await page.evaluate(() => (window as any).hit), undefined);
    assert.ok(troubles.some((t) => /Content Security Policy/.test(t)));
    assert.ok(statSync(folder.file("hit.html")).size < 1_500_000);
    await page.close();
});
