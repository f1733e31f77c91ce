/** The page: a scene, or two over each other, with everything around. */

import { forgetColours } from "./draw/colours";
import { Stage, SwitchName } from "./draw/stage";
import { Compared } from "./panels/compared";
import { Curves } from "./panels/curves";
import { byId, counted, make } from "./panels/dom";
import { Facts } from "./panels/facts";
import { KeyRow, Keys } from "./panels/keys";
import { Transport } from "./panels/transport";
import { Tree } from "./panels/tree";
import { Clock } from "./scene/clock";
import { SceneDocument, Words, bytesOfBase64 } from "./scene/document";
import { Scene } from "./scene/scene";
import { Selection } from "./scene/selection";

function readScene(suffix: string): Scene | null {
    const document_ = document.getElementById(`scene${suffix}`), words = document.getElementById(`words${suffix}`);
    if (!document_ || !words) return null;
    const scene = new Scene(JSON.parse(document_.textContent!) as SceneDocument, new Words(bytesOfBase64(words.textContent!)));
    // What is read isn't needed twice.
    document_.remove();
    words.remove();
    return scene;
}

const switchRows: { name: SwitchName; key: string; label: string; what: string }[] = [
    { name: "skeleton", key: "b", label: "Bones", what: "skeleton" },
    { name: "meshes", key: "m", label: "Meshes", what: "meshes" },
    { name: "wireframe", key: "w", label: "Wire", what: "wireframe" },
    { name: "normals", key: "n", label: "Normals", what: "normals" },
    { name: "boxes", key: "x", label: "Boxes", what: "bounding boxes" },
    { name: "axes", key: "e", label: "Axes", what: "axes of the selected nodes, or of the roots" },
    { name: "ground", key: "g", label: "Ground", what: "ground" },
    { name: "trails", key: "t", label: "Trails", what: "motion trails of the selected nodes" },
    { name: "names", key: "j", label: "Names", what: "names of all joints" },
    { name: "follow", key: "c", label: "Follow", what: "camera follows the body" },
];

class Page {
    private readonly selection = new Selection();
    private readonly clock: Clock;
    private readonly stage: Stage;
    private readonly tree: Tree;
    private readonly curves: Curves;
    private readonly compared: Compared | null;
    private readonly labels = byId("labels");
    private readonly namesShown: HTMLElement[] = [];
    private lastTick = performance.now();
    private pictures = 0;

    constructor(private readonly scene: Scene, other: Scene | null) {
        const start = other ? Math.min(scene.start, other.start) : scene.start;
        const end = other ? Math.max(scene.end, other.end) : scene.end;
        this.clock = new Clock(start, end, scene.rate);
        const scenes = other ? [scene, other] : [scene];
        this.stage = new Stage(byId<HTMLCanvasElement>("view"), scenes, this.selection, (event) => this.clicked(event));
        this.compared = other ? new Compared(scene, other, this.clock, this.selection) : null;
        this.tree = new Tree(scene, this.selection);
        this.tree.framed = () => this.stage.frameSelected();
        this.curves = new Curves(scene, this.clock, this.selection, other, (node) => this.compared?.twinOf(node) ?? -1);
        new Facts(scene, this.selection, () => this.stage.frameSelected());
        new Transport(scene, this.clock);
        this.switches();
        this.tabs();
        this.theme();
        const keys: Keys = new Keys(this.keyRows(() => keys.toggle()));
        this.header();
        this.hover();
        this.clock.time.watch((time) => this.stage.setTime(time));
        this.clock.playing.watch((on) => (this.stage.playing = on));
        this.selection.nodes.watch((nodes) => this.announce(nodes));
        this.stage.drawn = () => this.label();
        this.stage.coveredAbove = () => byId("switches").offsetHeight;
        byId("frame-all").addEventListener("click", () => this.stage.frameAll());
        byId("frame-selected").addEventListener("click", () => this.stage.frameSelected());
        this.stage.home();
        if (!matchMedia("(prefers-reduced-motion: reduce)").matches && !other && scene.tracks.some((t) => t.times.length > 1)) this.clock.play();
        requestAnimationFrame((now) => this.tick(now));
        this.expose();
    }

    private tick(now: number): void {
        const seconds = Math.min(0.25, (now - this.lastTick) / 1000);
        this.lastTick = now;
        this.clock.tick(seconds);
        this.compared?.work();
        this.stage.draw();
        this.curves.draw();
        this.compared?.draw();
        ++this.pictures;
        requestAnimationFrame((next) => this.tick(next));
    }

    /** For scripts that look at the page: tests and makers of pictures. */
    private expose(): void {
        const { clock, selection, stage, scene } = this;
        Object.assign(window, {
            vor2: {
                scene, clock, selection, stage, curves: this.curves,
                pictures: () => this.pictures,
                /** Shows a time and draws at once. */
                show: (time: number) => {
                    clock.pause();
                    clock.set(time);
                    stage.redraw(true);
                    stage.draw();
                    this.curves.draw();
                },
                seenAt: (node: number) => stage.project(...stage.layers[0].pose.placeOf(node)),
            },
        });
        document.documentElement.dataset.ready = "true";
    }

    private header(): void {
        byId("file-name").textContent = this.scene.document.file;
        const { nodeCount, lastFrame } = this.scene;
        const triangles = this.scene.document.meshes.reduce((sum, mesh) => sum + mesh.triangles[1] / 3, 0);
        const parts = [counted(nodeCount, "node"), counted(lastFrame + 1, "frame")];
        if (triangles > 0) parts.splice(1, 0, counted(triangles, "triangle"));
        byId("summary").textContent = parts.join(" · ");
        byId("view").setAttribute("aria-label", `Scene ${this.scene.document.file} in 3D: ${parts.join(", ")}`);
    }

    private switches(): void {
        for (const { name, key, label, what } of switchRows) {
            const signal = this.stage.switches.get(name)!;
            const button = make("button", { type: "button", class: "switch", "data-switch": name, title: `Show ${what} (${key.toUpperCase()})` }, label);
            if (name === "follow") button.title = `The ${what} (${key.toUpperCase()})`;
            button.addEventListener("click", () => (signal.value = !signal.value));
            signal.watch((on) => button.setAttribute("aria-pressed", String(on)));
            byId("switches").append(button);
        }
    }

    private tabs(): void {
        const tabs = Array.from(document.querySelectorAll<HTMLElement>("[role=tab]"));
        const choose = (tab: HTMLElement) => {
            for (const t of tabs) {
                const on = t === tab;
                t.setAttribute("aria-selected", String(on));
                t.tabIndex = on ? 0 : -1;
                byId(t.getAttribute("aria-controls")!).hidden = !on;
            }
        };
        const shown = tabs.filter((t) => !t.hidden);
        if (this.compared) {
            byId("compared-tab").hidden = false;
            shown.push(byId("compared-tab"));
        }
        for (const tab of tabs) {
            tab.addEventListener("click", () => choose(tab));
            tab.addEventListener("keydown", (e) => {
                const by = e.key === "ArrowRight" ? 1 : e.key === "ArrowLeft" ? -1 : 0;
                if (by === 0) return;
                const next = shown[(shown.indexOf(tab) + by + shown.length) % shown.length];
                e.stopPropagation();
                choose(next);
                next.focus();
            });
        }
        choose(byId(this.compared ? "compared-tab" : "facts-tab"));
    }

    private theme(): void {
        const root = document.documentElement;
        const dark = matchMedia("(prefers-color-scheme: dark)");
        const changed = () => {
            forgetColours();
            this.stage.recolour();
            this.curves.themeChanged();
            this.compared?.themeChanged();
        };
        byId("theme").addEventListener("click", () => {
            const now = root.dataset.theme ?? (dark.matches ? "dark" : "light");
            root.dataset.theme = now === "dark" ? "light" : "dark";
            changed();
        });
        dark.addEventListener("change", changed);
    }

    private clicked(event: PointerEvent): void {
        const node = this.stage.nodeAt(event.offsetX, event.offsetY);
        this.selection.pick(node, event.ctrlKey || event.metaKey || event.shiftKey);
    }
    private hover(): void {
        const view = byId("view");
        view.addEventListener("pointermove", (event) => {
            if (event.pointerType === "touch" || event.buttons !== 0 || !this.stage.is("skeleton")) return;
            this.selection.hovered.value = this.stage.nodeAt(event.offsetX, event.offsetY);
            view.style.cursor = this.selection.hovered.value >= 0 ? "pointer" : "";
        });
        view.addEventListener("pointerleave", () => (this.selection.hovered.value = -1));
        view.addEventListener("dblclick", () => this.stage.frameSelected());
    }

    /** The names beside the joints: the one under the pointer and those that are selected, or all. */
    private label(): void {
        const hovered = this.selection.hovered.value;
        const wanted = new Set(this.stage.is("names") ? Array.from({ length: Math.min(400, this.scene.nodeCount) }, (_, i) => i) : this.selection.nodes.value.slice(-8));
        if (hovered >= 0) wanted.add(hovered);
        let used = 0;
        for (const node of wanted) {
            const seen = this.stage.project(...this.stage.layers[0].pose.placeOf(node));
            if (!seen) continue;
            const label = this.namesShown[used] ?? this.labels.appendChild(make("span", { class: "label" }));
            this.namesShown[used++] = label;
            label.textContent = this.scene.nameOf(node);
            label.hidden = false;
            label.classList.toggle("strong", node === hovered || this.selection.has(node));
            label.style.transform = `translate(${Math.round(seen[0] + 9)}px, ${Math.round(seen[1] - 9)}px)`;
        }
        for (const label of this.namesShown.slice(used)) label.hidden = true;
        this.labels.hidden = used === 0; // an empty layer over the picture takes time, too
    }

    private announce(nodes: readonly number[]): void {
        const node = nodes[nodes.length - 1];
        byId("said").textContent = node === undefined ? "Nothing is selected" : `${this.scene.nameOf(node)} is selected`;
    }

    private keyRows(help: () => void): KeyRow[] {
        const { clock, stage, selection, scene, curves } = this;
        const go = (time: number | null) => {
            if (time === null) return;
            clock.pause();
            clock.set(time);
        };
        const walk = (to: number | undefined) => to !== undefined && to >= 0 && selection.pick(to);
        const turn = (event: KeyboardEvent) => {
            const by: Record<string, [number, number]> = { ArrowLeft: [-0.12, 0], ArrowRight: [0.12, 0], ArrowUp: [0, 0.12], ArrowDown: [0, -0.12] };
            stage.orbit.turn(...by[event.key]);
        };
        const across = (event: KeyboardEvent) =>
            event.shiftKey ? turn(event) : clock.step(event.key === "ArrowRight" ? 1 : -1);
        const along = (event: KeyboardEvent) => {
            if (event.shiftKey) return turn(event);
            const node = selection.last;
            walk(event.key === "ArrowUp" ? (node < 0 ? scene.roots[0] : scene.parents[node]) : node < 0 ? scene.roots[0] : scene.children[node][0]);
        };
        const aside = (by: number) => {
            const node = selection.last;
            if (node < 0) return;
            const parent = scene.parents[node];
            const siblings = parent < 0 ? scene.roots : scene.children[parent];
            walk(siblings[(siblings.indexOf(node) + by + siblings.length) % siblings.length]);
        };
        const rows: KeyRow[] = [
            { group: "Time", keys: [" "], label: "Space", what: "play or pause", act: () => clock.toggle() },
            { group: "Time", keys: ["ArrowLeft", "ArrowRight"], label: "← →", what: "a frame back or forth", act: across },
            { group: "Time", keys: ["Home"], label: "Home", what: "first frame", act: () => go(clock.start) },
            { group: "Time", keys: ["End"], label: "End", what: "last frame", act: () => go(clock.end) },
            { group: "Time", keys: [",", "."], label: ", .", what: "key before or behind, of the selected node", act: (e) => go(curves.keyBeside(e.key === "," ? -1 : 1)) },
            { group: "Time", keys: ["[", "]"], label: "[ ]", what: "slower or faster", act: (e) => clock.changeSpeed(e.key === "[" ? -1 : 1) },
            { group: "Time", keys: ["l"], label: "L", what: "loop", act: () => (clock.loop.value = !clock.loop.value) },
            { group: "View", keys: ["a"], label: "A", what: "frame all", act: () => stage.frameAll() },
            { group: "View", keys: ["f"], label: "F", what: "frame selected", act: () => stage.frameSelected() },
            { group: "View", keys: ["+", "=", "-"], label: "+ −", what: "nearer or further", act: (e) => stage.orbit.zoom(e.key === "-" ? 1.15 : 1 / 1.15) },
            { group: "View", keys: ["1", "2", "3", "4", "5"], label: "1 … 5", what: "from the front, left, right, back, above", act: (e) => stage.lookFrom((["front", "left", "right", "back", "top"] as const)[Number(e.key) - 1]) },
            { group: "View", keys: ["h"], label: "H", what: "the view as it was at first", act: () => stage.home() },
            { group: "View", keys: [], label: "⇧ ← → ↑ ↓", what: "orbit", act: () => undefined },
            { group: "View", keys: ["i", "k", "o", "p"], label: "I K O P", what: "pan up, down, left, right", act: (e) => stage.orbit.pan(...({ i: [0, 0.06], k: [0, -0.06], o: [-0.06, 0], p: [0.06, 0] } as Record<string, [number, number]>)[e.key.toLowerCase()]) },
            { group: "Nodes", keys: ["ArrowUp", "ArrowDown"], label: "↑ ↓", what: "to the parent or the first child", act: along },
            { group: "Nodes", keys: ["PageUp", "PageDown"], label: "Page ↑ ↓", what: "to the node beside", act: (e) => aside(e.key === "PageUp" ? -1 : 1) },
            { group: "Nodes", keys: ["/"], label: "/", what: "filter", act: () => this.tree.focusFilter() },
            { group: "Nodes", keys: ["Escape"], label: "Esc", what: "select nothing", act: () => {
                (document.activeElement as HTMLElement | null)?.blur();
                selection.pick(-1);
            } },
            ...switchRows.map(({ name, key, what }): KeyRow => ({
                group: "Show", keys: [key], label: key.toUpperCase(), what,
                act: () => (stage.switches.get(name)!.value = !stage.is(name)),
            })),
            { group: "Page", keys: ["?"], label: "?", what: "this sheet", act: help },
            { group: "Page", keys: ["d"], label: "D", what: "dark or light", act: () => byId("theme").click() },
        ];
        return rows;
    }
}

try {
    const scene = readScene("");
    if (!scene) throw new Error("This page holds no scene.");
    new Page(scene, readScene("-compared"));
} catch (error) {
    const why = error instanceof Error ? error.message : String(error);
    const box = byId("trouble");
    box.textContent = /webgl/i.test(why) ? "This browser draws no 3D (WebGL), which the page needs." : `The page can't show this scene: ${why}`;
    box.hidden = false;
    console.error(error);
}
