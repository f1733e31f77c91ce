/** A scene of a page, ready to be followed through time. */

import { SceneDocument, Words, toldNumber } from "./document";
import { Track, readTracks } from "./tracks";

/** Samples a second where the file states none. */
export const assumedRate = 30;

export class Scene {
    readonly tracks: Track[];
    /** For each node its parent, -1 where it has none before it in the list. */
    readonly parents: Int32Array;
    readonly children: number[][];
    readonly roots: number[] = [];
    readonly start: number;
    readonly end: number;
    readonly rate: number;
    readonly rateIsAssumed: boolean;

    constructor(readonly document: SceneDocument, readonly words: Words) {
        this.tracks = readTracks(words, document.tracks);
        this.parents = Int32Array.from(document.nodes, ({ parent }, i) => (parent >= 0 && parent < i ? parent : -1));
        this.children = document.nodes.map(() => []);
        this.parents.forEach((parent, i) => (parent < 0 ? this.roots : this.children[parent]).push(i));
        const rate = toldNumber(document.rate);
        this.rateIsAssumed = !(rate > 0 && rate < 1e5);
        this.rate = this.rateIsAssumed ? assumedRate : rate;
        [this.start, this.end] = this.timeRange();
    }

    get nodeCount(): number {
        return this.document.nodes.length;
    }
    nameOf(node: number): string {
        return this.document.nodes[node].name;
    }
    /** "hips|spine|head" */
    pathOf(node: number): string {
        const names: string[] = [];
        for (let n = node; n >= 0; n = this.parents[n]) names.unshift(this.nameOf(n));
        return names.join("|");
    }
    /** Whether no key moves the node relative to its parent. */
    isStill(node: number): boolean {
        return this.document.nodes[node].tracks.every((t) => t < 0 || this.tracks[t].times.length < 2);
    }
    get lastFrame(): number {
        return Math.max(0, Math.round((this.end - this.start) * this.rate));
    }
    frameOf(time: number): number {
        return Math.round((time - this.start) * this.rate);
    }
    timeOf(frame: number): number {
        return Math.min(this.end, this.start + frame / this.rate);
    }

    /** The file's range; where it is empty or no range, that of the nodes' keys. */
    private timeRange(): [number, number] {
        const start = toldNumber(this.document.start), end = toldNumber(this.document.end);
        if (Number.isFinite(start) && Number.isFinite(end) && end > start) return [start, end];
        let first = Infinity, last = -Infinity;
        for (const { times } of this.tracks) {
            if (times.length < 2) continue;
            if (Number.isFinite(times[0])) first = Math.min(first, times[0]);
            if (Number.isFinite(times[times.length - 1])) last = Math.max(last, times[times.length - 1]);
        }
        if (last > first) return [first, last];
        return Number.isFinite(start) ? [start, start] : [0, 0];
    }
}
