/** Where the nodes of a scene stand in the world at a time. */

import { toldNumber } from "./document";
import { fromParts, identity, multiply } from "./matrix";
import type { Scene } from "./scene";
import { Cursors } from "./tracks";

export class Pose {
    /** Twelve numbers a node: three rows of four, the translation last in each. */
    readonly world: Float32Array;
    readonly cursors: Cursors;
    time = NaN;

    constructor(readonly scene: Scene) {
        this.cursors = new Cursors(scene.tracks);
        this.world = new Float32Array(scene.nodeCount * 12);
        scene.document.nodes.forEach(({ matrix }, i) => this.world.set(matrix ? matrix.map(toldNumber) : identity, i * 12));
    }

    setTime(time: number): void {
        this.time = time;
        for (let i = 0; i < this.scene.nodeCount; ++i) this.update(i, time);
    }
    /** Moves one node and those above it, which is all that its own place needs. */
    setTimeOf(node: number, time: number): void {
        const { parents } = this.scene;
        const chain: number[] = [];
        for (let n = node; n >= 0; n = parents[n]) chain.push(n);
        while (chain.length > 0) this.update(chain.pop()!, time);
    }
    placeOf(node: number): [number, number, number] {
        const at = node * 12;
        return [this.world[at + 3], this.world[at + 7], this.world[at + 11]];
    }

    private update(node: number, time: number): void {
        const [position, rotation, scale] = this.scene.document.nodes[node].tracks;
        if (position < 0 && rotation < 0 && scale < 0) return;
        this.read(rotation, time, quaternion, [0, 0, 0, 1]);
        this.read(scale, time, scales, [1, 1, 1]);
        this.read(position, time, place, [0, 0, 0]);
        const at = node * 12;
        fromParts(quaternion, scales, place, this.world, at);
        const parent = this.scene.parents[node];
        if (parent >= 0) multiply(this.world, parent * 12, this.world, at, this.world, at);
    }
    private read(track: number, time: number, out: Float32Array, without: number[]): void {
        if (track < 0) return out.set(without);
        this.cursors.setTime(track, time);
        this.cursors.value(track, out);
    }
}

const quaternion = new Float32Array(4), scales = new Float32Array(3), place = new Float32Array(3);
