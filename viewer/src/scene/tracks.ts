/**
 * Tracks and their cursors, by the library's rules: a cursor is moved through time, and a value is read at it. Tracks
 * themselves never change, so that a scene can be followed at several times at once, each with cursors of its own.
 */

import type { Words, Span } from "./document";

export enum Kind {
    float = 0,
    range = 1,
    colour = 2,
    vector3 = 3,
    vector2 = 4,
    quaternionLerp = 5,
    quaternionSlerp = 6,
    rectangle = 7,
    integer = 8,
    vector4 = 9,
    tangents = 10,
    box = 11,
}

const widths = [1, 2, 4, 3, 2, 4, 4, 4, 1, 4, 6, 6];
const wordsPerTrack = 7;

export interface Track {
    readonly kind: Kind;
    /** Numbers a value. */
    readonly width: number;
    readonly times: Float32Array;
    /** Of an integer track, the numbers as the integers they are. */
    readonly values: Float32Array | Int32Array;
    /** Where the file's own cursor stands. */
    readonly index: number;
    readonly fraction: number;
}

export function readTracks(words: Words, span: Span): Track[] {
    const table = words.wholeOf(span);
    const fractions = words.floatsOf(span);
    const tracks: Track[] = [];
    for (let at = 0; at + wordsPerTrack <= table.length; at += wordsPerTrack) {
        const kind = table[at] as Kind;
        const width = widths[kind];
        const times = words.floatsOf([table[at + 3], table[at + 4]]);
        const floats = words.floatsOf([table[at + 5], table[at + 6] * width]);
        const values = kind === Kind.integer ? new Int32Array(floats.buffer, floats.byteOffset, floats.length) : floats;
        tracks.push({ kind, width, times, values, index: table[at + 1], fraction: fractions[at + 2] });
    }
    return tracks;
}

export function keyCount(track: Track): number {
    return track.values.length / track.width;
}

/** A cursor for each track. */
export class Cursors {
    private readonly indices: Uint32Array;
    private readonly fractions: Float32Array;

    constructor(private readonly tracks: readonly Track[]) {
        this.indices = Uint32Array.from(tracks, (track) => track.index);
        this.fractions = Float32Array.from(tracks, (track) => track.fraction);
    }

    /** Clamps at the ends. Times that don't ascend move the cursor only to an interval that holds the time. */
    setTime(track: number, time: number): void {
        const { times } = this.tracks[track];
        const n = times.length;
        if (n < 2) return;
        if (time >= times[n - 1]) return this.place(track, n - 2, 1);
        if (times[0] >= time) return this.place(track, 0, 0);
        const here = Math.min(this.indices[track], n - 2);
        const now = (times[here + 1] - times[here]) * this.fractions[track] + times[here];
        if (time - now >= 0) {
            for (let i = here; i <= n - 2; ++i) if (time >= times[i] && times[i + 1] >= time) return this.within(track, i, time);
        } else {
            for (let i = here; i >= 0; --i) if (time >= times[i] && times[i + 1] >= time) return this.within(track, i, time);
        }
    }

    /** Writes the value at the cursor to `out`; zeros, or no rotation, for a track without values. */
    value(track: number, out: Float32Array | number[], at = 0): void {
        const { kind, width, values } = this.tracks[track];
        const count = values.length / width;
        const isRotation = kind === Kind.quaternionLerp || kind === Kind.quaternionSlerp;
        if (count === 0) {
            for (let c = 0; c < width; ++c) out[at + c] = isRotation && c === 3 ? 1 : 0;
            return;
        }
        const from = count === 1 ? 0 : Math.min(this.indices[track], count - 1);
        const to = Math.min(from + 1, count - 1);
        const fraction = count === 1 ? 0 : this.fractions[track];
        const a = from * width, b = to * width;
        if (count === 1) {
            for (let c = 0; c < width; ++c) out[at + c] = values[a + c];
        } else if (kind === Kind.quaternionSlerp) {
            slerp(values as Float32Array, a, b, fraction, out, at);
        } else if (kind === Kind.integer) {
            out[at] = values[fraction === 1 ? b : a];
        } else {
            for (let c = 0; c < width; ++c) out[at + c] = (values[b + c] - values[a + c]) * fraction + values[a + c];
        }
    }

    private within(track: number, index: number, time: number): void {
        const { times } = this.tracks[track];
        const length = times[index + 1] - times[index];
        this.place(track, index, length > 0 ? (time - times[index]) / length : 0);
    }
    private place(track: number, index: number, fraction: number): void {
        this.indices[track] = index;
        this.fractions[track] = fraction;
    }
}

/** Along the arc that the keys' signs give; close keys are blended, and of opposed ones the nearer is taken. */
function slerp(q: Float32Array, a: number, b: number, t: number, out: Float32Array | number[], at: number): void {
    const d = q[a] * q[b] + q[a + 3] * q[b + 3] + q[a + 1] * q[b + 1] + q[a + 2] * q[b + 2];
    let k0: number, k1: number;
    if (d > Math.fround(0.99)) {
        for (let c = 0; c < 4; ++c) out[at + c] = (q[b + c] - q[a + c]) * t + q[a + c];
        return;
    }
    if (Math.fround(d) <= -1 && d > -1.00001) {
        k0 = t < 0.5 ? 1 : 0;
        k1 = 1 - k0;
    } else {
        const theta = Math.acos(d);
        const s = 1 / Math.sin(theta);
        k0 = Math.sin((1 - t) * theta) * s;
        k1 = Math.sin(t * theta) * s;
    }
    for (let c = 0; c < 4; ++c) out[at + c] = q[a + c] * k0 + q[b + c] * k1;
}
