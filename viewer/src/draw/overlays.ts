/** What is drawn beside the scene itself: ground, axes, boxes, normals and trails. */

import {
    BufferGeometry, Color, DynamicDrawUsage, Float32BufferAttribute, Group, LineBasicMaterial, LineSegments, Vector3, VertexColors,
} from "three";
import type { Pose } from "../scene/pose";
import { Pose as SamplingPose } from "../scene/pose";
import type { Scene } from "../scene/scene";
import type { Meshes } from "./meshes";

/** Line pieces that change in number. */
export class Lines {
    readonly object: LineSegments;
    private readonly geometry = new BufferGeometry();

    constructor(opacity = 1, private readonly coloured = false) {
        const material = new LineBasicMaterial({ transparent: opacity < 1, opacity });
        if (coloured) material.vertexColors = VertexColors;
        this.object = new LineSegments(this.geometry, material);
        this.object.frustumCulled = false;
        this.set([], coloured ? [] : undefined);
    }
    set colour(colour: Color) {
        (this.object.material as LineBasicMaterial).color.copy(colour);
    }
    /** Six numbers a piece, and as many for its colours. */
    set(places: number[], colours?: number[]): void {
        const put = (name: string, values: number[]) => {
            const known = this.geometry.getAttribute(name) as Float32BufferAttribute | undefined;
            if (known && known.array.length === values.length) {
                (known.array as Float32Array).set(values);
                known.needsUpdate = true;
                return;
            }
            const attribute = new Float32BufferAttribute(values, 3);
            attribute.setUsage(DynamicDrawUsage);
            this.geometry.setAttribute(name, attribute);
        };
        put("position", places);
        if (this.coloured && colours) put("color", colours);
        this.object.visible = places.length > 0;
    }
}

/** A grid whose cells are a round length: 1, 2 or 5 times a power of ten. */
export class Ground {
    readonly group = new Group();
    private readonly fine = new Lines(0.55);
    private readonly bold = new Lines(0.8);
    cell = 1;

    constructor() {
        this.group.add(this.fine.object, this.bold.object);
    }
    fit(size: number, centre: Vector3): void {
        const wanted = Math.max(size, 1e-3) / 6;
        const power = Math.pow(10, Math.floor(Math.log10(wanted)));
        this.cell = [5, 2, 1].map((f) => f * power).find((c) => c <= wanted) ?? power;
        const half = 10 * this.cell;
        const cx = Math.round(centre.x / this.cell) * this.cell, cz = Math.round(centre.z / this.cell) * this.cell;
        const fine: number[] = [], bold: number[] = [];
        for (let i = -10; i <= 10; ++i) {
            const d = i * this.cell;
            for (const [x0, z0, x1, z1] of [[cx + d, cz - half, cx + d, cz + half], [cx - half, cz + d, cx + half, cz + d]]) {
                const isBold = Math.abs(Math.round((x0 === x1 ? x0 : z0) / this.cell)) % 5 === 0;
                (isBold ? bold : fine).push(x0, 0, z0, x1, 0, z1);
            }
        }
        this.fine.set(fine);
        this.bold.set(bold);
    }
    colour(fine: Color, bold: Color): void {
        this.fine.colour = fine;
        this.bold.colour = bold;
    }
}

/** Each axis of a node's own space, of a length that goes with the scene. */
export function axesOf(pose: Pose, nodes: readonly number[], length: number, colours: Color[]): [number[], number[]] {
    const places: number[] = [], tints: number[] = [];
    for (const node of nodes) {
        const w = pose.world, i = node * 12;
        for (let axis = 0; axis < 3; ++axis) {
            const d = [w[i + axis], w[i + 4 + axis], w[i + 8 + axis]];
            const size = Math.hypot(d[0], d[1], d[2]);
            if (!(size > 0)) continue;
            const at = [w[i + 3], w[i + 7], w[i + 11]];
            places.push(...at, ...at.map((v, c) => v + (d[c] / size) * length));
            tints.push(...colours[axis].toArray(), ...colours[axis].toArray());
        }
    }
    return [places, tints];
}

/** The twelve edges round each mesh, along the axes of its own space. */
export function boxesOf(meshes: Meshes, pose: Pose): number[] {
    const places: number[] = [];
    const corner = new Vector3();
    for (const { surface, matrix } of meshes.placed(pose)) {
        const { positions } = meshes.shape(surface, pose);
        const low = [Infinity, Infinity, Infinity], high = [-Infinity, -Infinity, -Infinity];
        for (let i = 0; i < positions.length; ++i) {
            if (!Number.isFinite(positions[i])) continue;
            low[i % 3] = Math.min(low[i % 3], positions[i]);
            high[i % 3] = Math.max(high[i % 3], positions[i]);
        }
        if (!(low[0] <= high[0] && low[1] <= high[1] && low[2] <= high[2])) continue;
        const at = (bits: number) => {
            corner.set(bits & 1 ? high[0] : low[0], bits & 2 ? high[1] : low[1], bits & 4 ? high[2] : low[2]).applyMatrix4(matrix);
            return [corner.x, corner.y, corner.z];
        };
        for (let bits = 0; bits < 8; ++bits) {
            for (const bit of [1, 2, 4]) if (!(bits & bit)) places.push(...at(bits), ...at(bits | bit));
        }
    }
    return places;
}

/** A line from each vertex along its normal. */
export function normalsOf(meshes: Meshes, pose: Pose, length: number, most = 60000): number[] {
    const places: number[] = [];
    const from = new Vector3(), along = new Vector3();
    let total = 0;
    for (const { surface } of meshes.placed(pose)) total += surface.document.vertices;
    const stride = Math.max(1, Math.ceil(total / most));
    for (const { surface, matrix } of meshes.placed(pose)) {
        const { positions, normals } = meshes.shape(surface, pose);
        for (let i = 0; i < positions.length; i += 3 * stride) {
            from.fromArray(positions as never, i).applyMatrix4(matrix);
            along.fromArray(normals as never, i).transformDirection(matrix).multiplyScalar(length);
            if (Number.isFinite(from.x + along.x + from.y + along.y)) {
                places.push(from.x, from.y, from.z, from.x + along.x, from.y + along.y, from.z + along.z);
            }
        }
    }
    return places;
}

/** The ways of nodes through time, worked out once for each node. */
export class Trails {
    private readonly known = new Map<number, Float32Array>();
    constructor(private readonly scene: Scene, private readonly most = 600) {}

    wayOf(node: number): Float32Array {
        const known = this.known.get(node);
        if (known) return known;
        const pose = new SamplingPose(this.scene);
        const steps = Math.min(this.most, Math.max(1, this.scene.lastFrame));
        const way = new Float32Array((steps + 1) * 3);
        for (let i = 0; i <= steps; ++i) {
            pose.setTimeOf(node, this.scene.start + ((this.scene.end - this.scene.start) * i) / steps);
            way.set(pose.placeOf(node), i * 3);
        }
        this.known.set(node, way);
        return way;
    }
    /** Pieces of line; what lies ahead in another colour than what lies behind. */
    pieces(nodes: readonly number[], time: number, behind: Color, ahead: Color): [number[], number[]] {
        const places: number[] = [], tints: number[] = [];
        for (const node of nodes) {
            const way = this.wayOf(node);
            const steps = way.length / 3 - 1;
            const now = ((time - this.scene.start) / (this.scene.end - this.scene.start || 1)) * steps;
            for (let i = 0; i < steps; ++i) {
                places.push(...way.subarray(i * 3, i * 3 + 6));
                const tint = (i < now ? behind : ahead).toArray();
                tints.push(...tint, ...tint);
            }
        }
        return [places, tints];
    }
}
