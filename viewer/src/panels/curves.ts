/** The tracks of the selected node over time: lines, keys, the playhead, and the values at the pointer. */

import type { Clock } from "../scene/clock";
import type { Scene } from "../scene/scene";
import type { Selection } from "../scene/selection";
import { Rotations, Series, boundsOf, componentNames, componentsOf, isRotation, seriesOf } from "../scene/series";
import { Signal } from "../scene/signal";
import { Cursors } from "../scene/tracks";
import { styleColour } from "../draw/colours";
import { byId, make, told } from "./dom";

interface Lane {
    title: string;
    unit: string;
    track: number;
    /** The same track of the scene that is compared, -1 for none. */
    other: number;
}

const componentColours = ["x", "y", "z", "w"];

/** What a node's curves are of: its own tracks, its further ones, and the targets of meshes that hang on it. */
function lanesOf(scene: Scene, node: number, other: Scene | null, twin: number): Lane[] {
    const twins = twin >= 0 ? other!.document.nodes[twin].tracks : [-1, -1, -1];
    const [position, rotation, scale] = scene.document.nodes[node].tracks;
    const lanes: Lane[] = [
        { title: "Position", unit: "m", track: position, other: twins[0] },
        { title: "Rotation", unit: "°", track: rotation, other: twins[1] },
        { title: "Scale", unit: "", track: scale, other: twins[2] },
    ];
    for (const p of scene.document.properties) if (p.node === node) lanes.push({ title: p.name, unit: "", track: p.track, other: -1 });
    for (const mesh of scene.document.meshes) {
        if (mesh.node !== node) continue;
        for (const { name, track } of mesh.targets ?? []) lanes.push({ title: `${mesh.name}: ${name}`, unit: "", track, other: -1 });
    }
    return lanes.filter(({ track }) => track >= 0);
}

export class Curves {
    readonly rotations = new Signal<Rotations>("degrees");
    private readonly canvas = byId<HTMLCanvasElement>("curves-canvas");
    private readonly cursors: Cursors;
    private from: number;
    private to: number;
    private lanes: Lane[] = [];
    private series: { mine: Series[]; theirs: Series[] }[] = [];
    private pointer: { x: number; y: number } | null = null;
    private dragging = false;
    private scrubbing = false;
    private wanted = true;
    private drawnAt = 0;

    constructor(private readonly scene: Scene, private readonly clock: Clock, private readonly selection: Selection,
        private readonly other: Scene | null, private readonly twinOf: (node: number) => number) {
        this.cursors = new Cursors(scene.tracks);
        [this.from, this.to] = [clock.start, clock.end];
        this.fit();
        selection.nodes.watch(() => this.choose());
        this.rotations.watch(() => this.choose());
        clock.time.watch(() => (this.wanted ||= this.lanes.length > 0));
        new ResizeObserver(() => this.choose()).observe(this.canvas.parentElement!);
        this.canvas.addEventListener("pointermove", (e) => this.move(e));
        this.canvas.addEventListener("pointerdown", (e) => this.down(e));
        this.canvas.addEventListener("pointerup", () => (this.dragging = this.scrubbing = false));
        this.canvas.addEventListener("pointercancel", () => (this.dragging = this.scrubbing = false));
        this.canvas.addEventListener("pointerleave", () => {
            this.pointer = null;
            this.wanted = true;
        });
        this.canvas.addEventListener("dblclick", () => this.fit());
        this.canvas.addEventListener("wheel", (e) => this.wheel(e), { passive: false });
        byId("curves-fit").addEventListener("click", () => this.fit());
        byId("curves-in").addEventListener("click", () => this.zoom(0.5, this.clock.time.value));
        byId("curves-out").addEventListener("click", () => this.zoom(2, this.clock.time.value));
        byId<HTMLSelectElement>("rotations").addEventListener("change", (e) => {
            this.rotations.value = (e.target as HTMLSelectElement).value as Rotations;
        });
    }

    get window(): readonly [number, number] {
        return [this.from, this.to];
    }
    fit(): void {
        const { start, end } = this.clock;
        const margin = (end - start) * 0.02 || 0.5;
        [this.from, this.to] = [start - margin, end + margin];
        this.sample();
    }
    /** About a time that stays where it is. */
    zoom(factor: number, about: number): void {
        const least = 1e-3, most = Math.max(10, (this.clock.end - this.clock.start) * 20);
        const span = Math.max(least, Math.min(most, (this.to - this.from) * factor));
        const at = (about - this.from) / (this.to - this.from);
        this.from = about - at * span;
        this.to = this.from + span;
        this.sample();
    }
    /** The time of the key of the selected node's tracks before or behind the present time; null without one. */
    keyBeside(way: -1 | 1): number | null {
        const now = this.clock.time.value, little = 1e-5;
        let best: number | null = null;
        for (const { track } of this.lanes) {
            for (const time of this.scene.tracks[track].times) {
                if (way > 0 ? time > now + little && (best === null || time < best) : time < now - little && (best === null || time > best)) best = time;
            }
        }
        return best;
    }

    private choose(): void {
        const node = this.selection.last;
        this.lanes = node >= 0 ? lanesOf(this.scene, node, this.other, this.other ? this.twinOf(node) : -1) : [];
        byId("curves-title").textContent = node >= 0 ? this.scene.nameOf(node) || "(no name)" : "Curves";
        const height = Math.max(this.canvas.parentElement!.clientHeight, this.lanes.length * 76);
        this.canvas.style.height = this.lanes.length > 0 ? `${height}px` : "";
        byId("curves-empty").hidden = this.lanes.length > 0;
        byId("curves-empty").textContent = node >= 0 ? "This node has no tracks." : "Select a node to see its curves.";
        this.sample();
    }

    private sample(): void {
        const width = this.canvas.clientWidth || 600;
        const samples = Math.min(1500, Math.max(60, Math.round(width)));
        this.series = this.lanes.map(({ track, other }) => ({
            mine: seriesOf(this.scene.tracks, track, this.from, this.to, samples, this.rotations.value),
            theirs: other >= 0 && this.other ? seriesOf(this.other.tracks, other, this.from, this.to, samples, this.rotations.value) : [],
        }));
        this.wanted = true;
    }

    private timeAt(x: number): number {
        return this.from + (x / (this.canvas.clientWidth || 1)) * (this.to - this.from);
    }
    private wheel(event: WheelEvent): void {
        // A list of lanes higher than its place scrolls; the wheel with a key held zooms, as it does where nothing scrolls.
        const box = this.canvas.parentElement!;
        if (box.scrollHeight > box.clientHeight + 1 && !event.ctrlKey && !event.shiftKey) return;
        event.preventDefault();
        this.zoom(Math.exp(Math.max(-1, Math.min(1, (event.deltaY || event.deltaX) * 0.002))), this.timeAt(event.offsetX));
    }
    private down(event: PointerEvent): void {
        this.canvas.setPointerCapture(event.pointerId);
        this.pointer = { x: event.offsetX, y: event.offsetY };
        if (event.button === 1 || event.shiftKey) {
            this.dragging = true;
        } else {
            this.scrubbing = true;
            this.clock.pause();
            this.clock.set(this.timeAt(event.offsetX));
        }
    }
    private move(event: PointerEvent): void {
        const before = this.pointer?.x ?? event.offsetX;
        this.pointer = { x: event.offsetX, y: event.offsetY };
        this.wanted = true;
        if (this.scrubbing) this.clock.set(this.timeAt(event.offsetX));
        if (!this.dragging) return;
        const by = this.timeAt(before) - this.timeAt(event.offsetX);
        this.from += by;
        this.to += by;
        this.sample();
    }

    themeChanged(): void {
        this.wanted = true;
    }

    draw(): void {
        const now = performance.now();
        if (!this.wanted || (this.clock.playing.value && now - this.drawnAt < 60)) return;
        this.wanted = false;
        this.drawnAt = now;
        const { canvas } = this;
        const width = canvas.clientWidth, height = canvas.clientHeight;
        const ratio = window.devicePixelRatio || 1;
        if (width === 0 || height === 0) return;
        if (canvas.width !== Math.round(width * ratio) || canvas.height !== Math.round(height * ratio)) {
            canvas.width = Math.round(width * ratio);
            canvas.height = Math.round(height * ratio);
        }
        const pen = canvas.getContext("2d")!;
        pen.setTransform(ratio, 0, 0, ratio, 0, 0);
        pen.clearRect(0, 0, width, height);
        pen.font = `11px ${styleColour("font")}`;
        const laneHeight = this.lanes.length > 0 ? height / this.lanes.length : height;
        this.lanes.forEach((lane, i) => this.drawLane(pen, lane, this.series[i], i * laneHeight, laneHeight, width));
        if (this.lanes.length > 0) {
            this.line(pen, this.clock.time.value, height, width, styleColour("accent"), 1.5);
            if (this.pointer) this.line(pen, this.timeAt(this.pointer.x), height, width, styleColour("quiet"), 1);
        }
        this.tellValues(pen, laneHeight);
    }

    private line(pen: CanvasRenderingContext2D, time: number, height: number, width: number, colour: string, thick: number): void {
        const x = ((time - this.from) / (this.to - this.from)) * width;
        pen.strokeStyle = colour;
        pen.lineWidth = thick;
        pen.beginPath();
        pen.moveTo(x, 0);
        pen.lineTo(x, height);
        pen.stroke();
    }

    private drawLane(pen: CanvasRenderingContext2D, lane: Lane, series: { mine: Series[]; theirs: Series[] }, top: number,
        height: number, width: number): void {
        const all = [...series.mine, ...series.theirs];
        let [low, high] = boundsOf(all);
        // A curve that hardly moves is drawn as what it is, a level line.
        const least = Math.max(1e-4, Math.max(Math.abs(low), Math.abs(high)) * 1e-4);
        if (high - low < least) [low, high] = [(low + high) / 2 - least / 2, (low + high) / 2 + least / 2];
        const header = 21, foot = 8;
        const xOf = (t: number) => ((t - this.from) / (this.to - this.from)) * width;
        const room = (high - low) * 0.08;
        const yOf = (v: number) => top + header + (1 - (v - low + room) / (high - low + 2 * room)) * (height - header - foot);
        this.drawRuler(pen, top, height, width, xOf);
        pen.fillStyle = styleColour("quiet-text");
        pen.textAlign = "right";
        pen.fillText(told(high), width - 4, top + header + 8);
        pen.fillText(told(low), width - 4, top + height - foot);
        pen.textAlign = "left";
        pen.save();
        pen.beginPath();
        pen.rect(0, top + 2, width, height - 4);
        pen.clip();
        const colours = this.coloursOf(series.mine.length);
        series.theirs.forEach((s, c) => this.drawSeries(pen, s, xOf, yOf, colours[c], true));
        series.mine.forEach((s, c) => this.drawSeries(pen, s, xOf, yOf, colours[c], false));
        pen.restore();
        pen.fillStyle = styleColour("text");
        pen.font = `600 11px ${styleColour("font")}`;
        pen.fillText(this.titleOf(lane), 6, top + 13);
        pen.font = `11px ${styleColour("font")}`;
    }
    private unitOf(lane: Lane): string {
        return isRotation(this.scene.tracks[lane.track]) && this.rotations.value === "quaternion" ? "x y z w" : lane.unit;
    }
    private coloursOf(count: number): string[] {
        return count === 1 ? [styleColour("accent")] : componentColours.map(styleColour);
    }

    private drawRuler(pen: CanvasRenderingContext2D, top: number, height: number, width: number, xOf: (t: number) => number): void {
        pen.strokeStyle = styleColour("grid-line");
        pen.fillStyle = styleColour("quiet-text");
        pen.lineWidth = 1;
        const wanted = (this.to - this.from) / Math.max(2, width / 90);
        const power = Math.pow(10, Math.floor(Math.log10(wanted)));
        const step = [1, 2, 5, 10].map((f) => f * power).find((s) => s >= wanted) ?? power;
        for (let t = Math.ceil(this.from / step) * step; t <= this.to; t += step) {
            const x = Math.round(xOf(t)) + 0.5;
            pen.beginPath();
            pen.moveTo(x, top + 16);
            pen.lineTo(x, top + height);
            pen.stroke();
            if (top === 0 && x < width - 30) pen.fillText(`${told(Math.round(t / step) * step)} s`, x + 3, 28);
        }
        pen.beginPath();
        pen.moveTo(0, Math.round(top + height) - 0.5);
        pen.lineTo(width, Math.round(top + height) - 0.5);
        pen.stroke();
    }

    private drawSeries(pen: CanvasRenderingContext2D, series: Series, xOf: (t: number) => number, yOf: (v: number) => number,
        colour: string, dashed: boolean): void {
        const { points, keys } = series;
        pen.strokeStyle = pen.fillStyle = colour;
        pen.lineWidth = dashed ? 1 : 1.5;
        pen.setLineDash(dashed ? [4, 4] : []);
        pen.beginPath();
        let drawing = false;
        for (let i = 0; i < points.length; i += 2) {
            if (!Number.isFinite(points[i + 1])) {
                drawing = false;
                continue;
            }
            if (drawing) pen.lineTo(xOf(points[i]), yOf(points[i + 1]));
            else pen.moveTo(xOf(points[i]), yOf(points[i + 1]));
            drawing = true;
        }
        pen.stroke();
        pen.setLineDash([]);
        if (dashed || keys.length === 0) return;
        // Keys that stand closer than their dots are left to the line.
        const gap = keys.length > 2 ? (xOf(keys[keys.length - 2]) - xOf(keys[0])) / (keys.length / 2 - 1) : Infinity;
        const radius = gap < 3 ? 0 : gap < 7 ? 1.4 : 2.4;
        for (let i = 0; radius > 0 && i < keys.length; i += 2) {
            pen.beginPath();
            pen.arc(xOf(keys[i]), yOf(keys[i + 1]), radius, 0, 2 * Math.PI);
            pen.fill();
        }
    }

    /** The values at the pointer, or at the playhead while no pointer is there: told in each lane, and as texts. */
    private tellValues(pen: CanvasRenderingContext2D, laneHeight: number): void {
        const time = this.pointer ? this.timeAt(this.pointer.x) : this.clock.time.value;
        const texts = this.lanes.map((lane, i) => {
            const names = componentNames(this.scene.tracks[lane.track], this.rotations.value);
            const colours = this.coloursOf(names.length);
            const values = this.valuesAt(lane.track, time).map((v, c) => `${names[c]}${names[c] ? " " : ""}${told(v)}`);
            let x = 14 + this.titleWidth(pen, lane);
            values.forEach((value, c) => {
                pen.fillStyle = colours[c];
                pen.fillText(value, x, i * laneHeight + 13);
                x += Math.max(60, pen.measureText(value).width + 10);
            });
            return `${lane.title} ${values.join(", ")}`;
        });
        const frame = (time - this.scene.start) * this.scene.rate;
        byId("curves-when").textContent = this.lanes.length > 0 ? `${told(time)} s · frame ${told(Number(frame.toFixed(2)))}` : "";
        // Each word of a playing scene would be too much for who listens.
        if (!this.clock.playing.value) byId("curves-values").replaceChildren(...texts.map((text) => make("li", {}, text)));
    }
    private titleOf(lane: Lane): string {
        return lane.title + (this.unitOf(lane) ? ` (${this.unitOf(lane)})` : "");
    }
    private titleWidth(pen: CanvasRenderingContext2D, lane: Lane): number {
        return Math.max(86, pen.measureText(this.titleOf(lane)).width * 1.08);
    }
    private valuesAt(track: number, time: number): number[] {
        const value = new Float32Array(this.scene.tracks[track].width);
        this.cursors.setTime(track, time);
        this.cursors.value(track, value);
        return componentsOf(this.scene.tracks[track], value, this.rotations.value);
    }
}
