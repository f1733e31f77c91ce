/** A track as lines to draw: its components over time. */

import { anglesOf } from "./matrix";
import { Cursors, Kind, Track } from "./tracks";

export type Rotations = "degrees" | "quaternion";

export interface Series {
    /** "x", "y", "z", "w"; "" for a single number. */
    name: string;
    /** Seconds and values in turn. */
    points: Float64Array;
    keys: Float64Array;
}

const names: Record<number, string[]> = { 1: [""], 2: ["x", "y"], 3: ["x", "y", "z"], 4: ["x", "y", "z", "w"] };

export function isRotation(track: Track): boolean {
    return track.kind === Kind.quaternionLerp || track.kind === Kind.quaternionSlerp;
}

export function componentNames(track: Track, rotations: Rotations): string[] {
    if (track.kind === Kind.colour) return ["r", "g", "b", "a"];
    return isRotation(track) && rotations === "degrees" ? names[3] : names[track.width] ?? names[4];
}

/** The components of a value, rotations as angles where asked. */
export function componentsOf(track: Track, value: ArrayLike<number>, rotations: Rotations): number[] {
    if (!isRotation(track) || rotations === "quaternion") return Array.from(value).slice(0, track.width);
    const length = Math.hypot(value[0], value[1], value[2], value[3]) || 1;
    const [x, y, z, w] = [0, 1, 2, 3].map((i) => value[i] / length);
    return anglesOf(x, y, z, w).map((angle) => (angle * 180) / Math.PI);
}

/** A turn more or less of each angle, so that it goes on from the last. */
function unwound(components: number[], last: number[] | null): number[] {
    return last ? components.map((c, i) => c - 360 * Math.round((c - last[i]) / 360)) : components;
}

/** Sampled between `from` and `to` at `samples` places and at every key; integers go in steps. */
export function seriesOf(tracks: readonly Track[], index: number, from: number, to: number, samples: number,
    rotations: Rotations): Series[] {
    const track = tracks[index];
    const cursors = new Cursors(tracks);
    const times = timesToDraw(track, from, to, samples);
    const isKey = new Set<number>(track.times.length > 1 ? Array.from(track.times) : []);
    const all = componentNames(track, rotations);
    const points: number[][] = all.map(() => []), keys: number[][] = all.map(() => []);
    const turns = isRotation(track) && rotations === "degrees";
    const value = new Float32Array(track.width);
    let last: number[] | null = null;
    for (const time of times) {
        cursors.setTime(index, time);
        cursors.value(index, value);
        const components: number[] = componentsOf(track, value, rotations);
        const told: number[] = turns ? unwound(components, last) : components;
        told.forEach((v, c) => {
            if (track.kind === Kind.integer && last && last[c] !== v) points[c].push(time, last[c]);
            points[c].push(time, v);
            if (isKey.has(time)) keys[c].push(time, v);
        });
        last = told;
    }
    return all.map((name, c) => ({ name, points: Float64Array.from(points[c]), keys: Float64Array.from(keys[c]) }));
}

function timesToDraw(track: Track, from: number, to: number, samples: number): number[] {
    const times: number[] = [];
    for (let i = 0; i <= samples; ++i) times.push(from + ((to - from) * i) / samples);
    for (const time of track.times) if (time > from && time < to) times.push(time);
    times.push(...[from, to].filter(Number.isFinite));
    return Array.from(new Set(times)).sort((a, b) => a - b);
}

/** The least and the greatest of the numbers that are finite; [0, 1] without any. */
export function boundsOf(series: readonly Series[]): [number, number] {
    let low = Infinity, high = -Infinity;
    for (const { points } of series) {
        for (let i = 1; i < points.length; i += 2) {
            if (!Number.isFinite(points[i])) continue;
            low = Math.min(low, points[i]);
            high = Math.max(high, points[i]);
        }
    }
    return low <= high ? [low, high] : [0, 1];
}
