/** Two scenes over each other: how far apart they stand over time, and where it is worst. */

import { styleColour } from "../draw/colours";
import type { Clock } from "../scene/clock";
import { Comparison, Pair, pairsOf } from "../scene/compare";
import type { Scene } from "../scene/scene";
import type { Selection } from "../scene/selection";
import { byId, countTold, make, told } from "./dom";

/** Lengths in metres for people. */
export function lengthTold(metres: number): string {
    const size = Math.abs(metres);
    if (size === 0) return "0";
    if (size < 0.001) return `${told(metres * 1e6, 3)} µm`;
    if (size < 0.1) return `${told(metres * 1000, 3)} mm`;
    return `${told(metres, 4)} m`;
}

export class Compared {
    private readonly canvas = byId<HTMLCanvasElement>("difference");
    private readonly pairs: Pair[];
    private readonly comparison: Comparison;
    private readonly twins = new Map<number, Pair>();
    private finished = false;
    private ofSelected: Float64Array | null = null;
    private wanted = true;

    constructor(first: Scene, second: Scene, private readonly clock: Clock, private readonly selection: Selection) {
        const { pairs, onlyFirst, onlySecond } = pairsOf(first, second);
        this.pairs = pairs;
        for (const pair of pairs) this.twins.set(pair.first, pair);
        this.comparison = new Comparison(first, second, pairs);
        this.first = first;
        byId("compared-title").textContent = `${first.document.file} against ${second.document.file}`;
        const alone = (count: number, file: string) => (count > 0 ? `${countTold(count)} nodes only in ${file}. ` : "");
        byId("compared-alone").textContent = alone(onlyFirst.length, first.document.file) + alone(onlySecond.length, second.document.file);
        selection.nodes.watch(() => this.choose());
        clock.time.watch(() => (this.wanted = true));
        new ResizeObserver(() => (this.wanted = true)).observe(this.canvas);
        const scrub = (event: PointerEvent) => {
            const { times } = this.comparison;
            clock.pause();
            clock.set(times[0] + (event.offsetX / this.canvas.clientWidth) * (times[times.length - 1] - times[0]));
        };
        this.canvas.addEventListener("pointerdown", (e) => {
            this.canvas.setPointerCapture(e.pointerId);
            scrub(e);
        });
        this.canvas.addEventListener("pointermove", (e) => e.buttons & 1 && scrub(e));
    }
    private readonly first: Scene;

    twinOf(node: number): number {
        return this.twins.get(node)?.second ?? -1;
    }

    /** Works on in small pieces, so that the page answers meanwhile. */
    work(): void {
        if (this.finished) return;
        this.finished = this.comparison.work(8);
        this.wanted = true;
        if (this.finished) this.tell();
    }

    private tell(): void {
        const worst = this.comparison.worst(12);
        const verdict = byId("compared-verdict");
        const list = byId("worst");
        if (worst.length === 0) {
            verdict.textContent = this.pairs.length > 0 ? "All joints stand in the same places at all times." : "The scenes have no node in common.";
            return;
        }
        const { pair, distance, time } = worst[0];
        verdict.textContent = `Worst: ${this.first.nameOf(pair.first)}, ${lengthTold(distance)} apart at frame ${this.first.frameOf(time)}`;
        for (const w of worst) {
            const button = make("button", { type: "button", class: "finding" },
                make("span", { class: "where" }, this.first.nameOf(w.pair.first)),
                make("span", { class: "complaint" }, `${lengthTold(w.distance)} at frame ${this.first.frameOf(w.time)}`));
            button.addEventListener("click", () => this.go(w.pair, w.time));
            list.append(make("li", {}, button));
        }
        this.go(pair, time);
    }
    private go(pair: Pair, time: number): void {
        this.selection.pick(pair.first);
        this.clock.pause();
        this.clock.set(time);
    }
    private choose(): void {
        const pair = this.twins.get(this.selection.last);
        this.ofSelected = pair ? this.comparison.curveOf(pair) : null;
        this.wanted = true;
    }
    themeChanged(): void {
        this.wanted = true;
    }

    draw(): void {
        const { canvas, comparison } = this;
        const width = canvas.clientWidth, height = canvas.clientHeight;
        if (!this.wanted || width === 0) return;
        this.wanted = false;
        const ratio = window.devicePixelRatio || 1;
        canvas.width = Math.round(width * ratio);
        canvas.height = Math.round(height * ratio);
        const pen = canvas.getContext("2d")!;
        pen.scale(ratio, ratio);
        pen.clearRect(0, 0, width, height);
        const { times, greatest } = comparison;
        const finite = greatest.reduce((m, v) => (Number.isFinite(v) ? Math.max(m, v) : m), 0);
        const high = finite > 0 ? finite : 1e-3;
        const start = times[0], span = times[times.length - 1] - start || 1;
        const xOf = (t: number) => ((t - start) / span) * width;
        const yOf = (v: number) => height - 4 - (Math.min(v, high) / high) * (height - 22);
        const curve = (values: Float64Array, colour: string, fill: boolean) => {
            pen.beginPath();
            values.forEach((v, i) => pen.lineTo(xOf(times[i]), yOf(v)));
            pen.strokeStyle = colour;
            pen.lineWidth = 1.5;
            pen.stroke();
            if (!fill) return;
            pen.lineTo(width, height);
            pen.lineTo(0, height);
            pen.globalAlpha = 0.16;
            pen.fillStyle = colour;
            pen.fill();
            pen.globalAlpha = 1;
        };
        curve(greatest, styleColour("ghost"), true);
        if (this.ofSelected) curve(this.ofSelected, styleColour("accent"), false);
        pen.fillStyle = styleColour("quiet-text");
        pen.font = `11px ${styleColour("font")}`;
        pen.fillText(finite > 0 ? `${lengthTold(high)} at most` : "no difference", 6, 12);
        pen.fillStyle = styleColour("accent");
        pen.fillRect(xOf(this.clock.time.value) - 0.75, 0, 1.5, height);
        this.tellNow();
    }
    private tellNow(): void {
        const { times, greatest, worstPair } = this.comparison;
        const at = Math.round(((this.clock.time.value - times[0]) / (times[times.length - 1] - times[0] || 1)) * (times.length - 1));
        const index = Math.max(0, Math.min(times.length - 1, at));
        const pair = this.pairs[worstPair[index]];
        byId("compared-now").textContent = pair
            ? `Now: ${lengthTold(greatest[index])}, at ${this.first.nameOf(pair.first)}` : "Now: no difference";
    }
}
