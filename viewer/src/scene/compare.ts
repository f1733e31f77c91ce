/** Two scenes side by side: which nodes are the same, and how far apart they stand in the world over time. */

import { Pose } from "./pose";
import type { Scene } from "./scene";

export interface Pair {
    first: number;
    second: number;
}

/** A number for each node that is the same for nodes of the same path, in either scene. */
function pathNumbers(scene: Scene, known: Map<string, number>): number[] {
    const numbers: number[] = [];
    for (let i = 0; i < scene.nodeCount; ++i) {
        const parent = scene.parents[i];
        const key = `${parent < 0 ? "" : numbers[parent]}|${scene.nameOf(i)}`;
        numbers.push(known.get(key) ?? known.size);
        known.set(key, numbers[i]);
    }
    return numbers;
}

/** Nodes of the same path; of namesakes the first with the first. */
export function pairsOf(first: Scene, second: Scene): { pairs: Pair[]; onlyFirst: number[]; onlySecond: number[] } {
    const known = new Map<string, number>();
    const firstNumbers = pathNumbers(first, known);
    const waiting = new Map<number, number[]>();
    const secondNumbers = pathNumbers(second, known);
    for (let i = second.nodeCount - 1; i >= 0; --i) {
        const list = waiting.get(secondNumbers[i]);
        if (list) list.push(i);
        else waiting.set(secondNumbers[i], [i]);
    }
    const pairs: Pair[] = [], onlyFirst: number[] = [];
    for (let i = 0; i < first.nodeCount; ++i) {
        const match = waiting.get(firstNumbers[i])?.pop();
        if (match === undefined) onlyFirst.push(i);
        else pairs.push({ first: i, second: match });
    }
    return { pairs, onlyFirst, onlySecond: Array.from(waiting.values()).flat().sort((a, b) => a - b) };
}

export interface Worst {
    pair: Pair;
    distance: number;
    time: number;
}

export class Comparison {
    readonly times: Float64Array;
    /** The greatest distance at each time, in metres, and the pair that has it. */
    readonly greatest: Float64Array;
    readonly worstPair: Int32Array;
    /** For each pair its greatest distance and when. */
    readonly ofPair: Float64Array;
    private readonly whenOfPair: Float64Array;
    private done = 0;
    private readonly a: Pose;
    private readonly b: Pose;

    constructor(first: Scene, second: Scene, readonly pairs: Pair[], most = 2000) {
        const start = Math.min(first.start, second.start), end = Math.max(first.end, second.end);
        const frames = Math.min(most, Math.max(1, Math.round((end - start) * first.rate)));
        this.times = Float64Array.from({ length: frames + 1 }, (_, i) => start + ((end - start) * i) / frames);
        this.greatest = new Float64Array(frames + 1);
        this.worstPair = new Int32Array(frames + 1).fill(-1);
        this.ofPair = new Float64Array(pairs.length);
        this.whenOfPair = new Float64Array(pairs.length);
        this.a = new Pose(first);
        this.b = new Pose(second);
    }

    /** Works on for some milliseconds; true once all times have been looked at. */
    work(milliseconds: number): boolean {
        const until = performance.now() + milliseconds;
        while (this.done < this.times.length && performance.now() < until) this.look(this.done++);
        return this.done >= this.times.length;
    }

    distanceOf(pair: Pair): number {
        const p = this.a.placeOf(pair.first), q = this.b.placeOf(pair.second);
        const distance = Math.hypot(p[0] - q[0], p[1] - q[1], p[2] - q[2]);
        // A place that isn't finite on one side only is as far off as can be.
        return Number.isFinite(distance) ? distance : p.every((v, i) => Object.is(v, q[i])) ? 0 : Infinity;
    }

    /** The distance of one pair over all times. */
    curveOf(pair: Pair): Float64Array {
        return this.times.map((time) => {
            this.a.setTimeOf(pair.first, time);
            this.b.setTimeOf(pair.second, time);
            return this.distanceOf(pair);
        });
    }

    /** The pairs that come furthest apart, the worst first. */
    worst(count: number): Worst[] {
        return this.pairs
            .map((pair, i) => ({ pair, distance: this.ofPair[i], time: this.whenOfPair[i] }))
            .filter(({ distance }) => distance > 0)
            .sort((x, y) => y.distance - x.distance)
            .slice(0, count);
    }

    private look(at: number): void {
        const time = this.times[at];
        this.a.setTime(time);
        this.b.setTime(time);
        this.pairs.forEach((pair, i) => {
            const distance = this.distanceOf(pair);
            if (distance > this.greatest[at]) {
                this.greatest[at] = distance;
                this.worstPair[at] = i;
            }
            if (distance > this.ofPair[i]) {
                this.ofPair[i] = distance;
                this.whenOfPair[i] = time;
            }
        });
    }
}
