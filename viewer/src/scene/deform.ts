/**
 * Meshes that change with time, as the library changes them: skinned by nodes' matrices, morphed by targets' weights,
 * or with tracks of their own for each vertex.
 */

import type { MeshDocument } from "./document";
import { invert, multiply, transposedRotation } from "./matrix";
import { Pose } from "./pose";
import type { Scene } from "./scene";

/** The matrices that take a vertex from its place at the scene's start to that of a pose; twelve numbers a node. */
export class Palette {
    readonly places: Float32Array;
    readonly normals: Float32Array;
    private readonly inverseWorld: Float64Array;
    private readonly inverseRotation: Float64Array;

    constructor(scene: Scene, bindTime: number) {
        const n = scene.nodeCount;
        const bind = new Pose(scene);
        bind.setTime(bindTime);
        this.inverseWorld = new Float64Array(n * 12);
        this.inverseRotation = new Float64Array(n * 12);
        for (let i = 0; i < n * 12; i += 12) {
            invert(bind.world, i, this.inverseWorld, i);
            transposedRotation(bind.world, i, this.inverseRotation, i);
        }
        this.places = new Float32Array(n * 12);
        this.normals = new Float32Array(n * 12);
    }
    follow(pose: Pose): void {
        for (let i = 0; i < this.places.length; i += 12) {
            multiply(pose.world, i, this.inverseWorld, i, this.places, i);
            multiply(pose.world, i, this.inverseRotation, i, this.normals, i);
        }
    }
}

/** The positions and normals of one mesh at the time of a pose. */
export class Deformer {
    readonly positions: Float32Array;
    readonly normals: Float32Array;
    /** Of an animated mesh with colours: four floats a vertex. */
    readonly colours: Float32Array | null = null;

    constructor(private readonly scene: Scene, readonly mesh: MeshDocument) {
        const rest = scene.words.floatsOf(mesh.positions), restNormals = scene.words.floatsOf(mesh.normals);
        const changes = mesh.kind !== "rigid";
        this.positions = changes ? rest.slice() : rest;
        this.normals = changes && mesh.kind !== "morph" ? restNormals.slice() : restNormals;
        if (mesh.kind === "anim" && this.vertexTracks().some((t, i) => i % 3 === 2 && t >= 0)) {
            this.colours = new Float32Array(mesh.vertices * 4);
        }
    }

    /** `palette` has followed the pose. */
    follow(pose: Pose, palette: Palette | null): void {
        if (this.mesh.kind === "weighted" && palette) this.skin(palette);
        if (this.mesh.kind === "morph") this.morph(pose);
        if (this.mesh.kind === "anim") this.play(pose);
    }

    /** Weights are used as they stand, and a bone that isn't there contributes nothing. */
    private skin({ places, normals }: Palette): void {
        const { words, nodeCount } = this.scene;
        const mesh = this.mesh;
        const rest = words.floatsOf(mesh.positions), restNormals = words.floatsOf(mesh.normals);
        const starts = words.wholeOf(mesh.influenceStarts!), bones = words.wholeOf(mesh.influenceBones!);
        const weights = words.floatsOf(mesh.influenceWeights!);
        const outPositions = this.positions, outNormals = this.normals;
        for (let v = 0; v < mesh.vertices; ++v) {
            const x = rest[v * 3], y = rest[v * 3 + 1], z = rest[v * 3 + 2];
            const nx = restNormals[v * 3], ny = restNormals[v * 3 + 1], nz = restNormals[v * 3 + 2];
            let px = 0, py = 0, pz = 0, mx = 0, my = 0, mz = 0;
            for (let k = starts[v]; k < starts[v + 1]; ++k) {
                if (bones[k] >= nodeCount) continue;
                const m = bones[k] * 12, w = weights[k];
                px += w * (places[m] * x + places[m + 1] * y + places[m + 2] * z + places[m + 3]);
                py += w * (places[m + 4] * x + places[m + 5] * y + places[m + 6] * z + places[m + 7]);
                pz += w * (places[m + 8] * x + places[m + 9] * y + places[m + 10] * z + places[m + 11]);
                mx += w * (normals[m] * nx + normals[m + 1] * ny + normals[m + 2] * nz);
                my += w * (normals[m + 4] * nx + normals[m + 5] * ny + normals[m + 6] * nz);
                mz += w * (normals[m + 8] * nx + normals[m + 9] * ny + normals[m + 10] * nz);
            }
            const s = 1 / Math.sqrt(mx * mx + my * my + mz * mz);
            outPositions[v * 3] = px;
            outPositions[v * 3 + 1] = py;
            outPositions[v * 3 + 2] = pz;
            outNormals[v * 3] = mx * s;
            outNormals[v * 3 + 1] = my * s;
            outNormals[v * 3 + 2] = mz * s;
        }
    }

    private morph(pose: Pose): void {
        const { words } = this.scene;
        const mesh = this.mesh;
        const weights = mesh.targets!.map(({ track }) => {
            if (track < 0) return 0;
            pose.cursors.setTime(track, pose.time);
            pose.cursors.value(track, one);
            return one[0];
        });
        const rest = words.floatsOf(mesh.positions);
        const starts = words.wholeOf(mesh.offsetStarts!), targets = words.wholeOf(mesh.offsetTargets!);
        const offsets = words.floatsOf(mesh.offsets!);
        for (let v = 0; v < mesh.vertices; ++v) {
            for (let c = 0; c < 3; ++c) {
                let sum = 0;
                for (let k = starts[v]; k < starts[v + 1]; ++k) {
                    if (targets[k] < weights.length) sum += offsets[k * 3 + c] * weights[targets[k]];
                }
                this.positions[v * 3 + c] = rest[v * 3 + c] + sum;
            }
        }
    }

    private play(pose: Pose): void {
        const tracks = this.vertexTracks();
        for (let v = 0; v < this.mesh.vertices; ++v) {
            this.readInto(pose, tracks[v * 3], this.positions, v * 3);
            this.readInto(pose, tracks[v * 3 + 1], this.normals, v * 3);
            if (this.colours) this.readInto(pose, tracks[v * 3 + 2], this.colours, v * 4);
        }
    }
    private readInto(pose: Pose, track: number, out: Float32Array, at: number): void {
        if (track < 0) return;
        pose.cursors.setTime(track, pose.time);
        pose.cursors.value(track, out, at);
    }
    private vertexTracks(): Int32Array {
        const span = this.scene.words.wholeOf(this.mesh.vertexTracks!);
        return new Int32Array(span.buffer, span.byteOffset, span.length);
    }
}

const one = new Float32Array(1);
