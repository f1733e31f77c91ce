/** The skeleton: a bone from each joint to its children, and a ball at each joint, seen through meshes. */

import {
    BufferAttribute, BufferGeometry, Color, DynamicDrawUsage, Float32BufferAttribute, Group, IcosahedronBufferGeometry,
    LineBasicMaterial, LineSegments, Mesh, ShaderMaterial,
} from "three";
import type { Pose } from "../scene/pose";
import type { Scene } from "../scene/scene";
import { lens, seenPlace } from "./lens";

const vertexShader = `
    attribute vec3 tint;
    varying vec3 vTint;
    void main() {
        vTint = tint;
        gl_Position = projectionMatrix * (modelViewMatrix * vec4(position, 1.0));
    }`;

const fragmentShader = `${seenPlace}
    varying vec3 vTint;
    uniform float opacity;
    void main() {
        vec3 place = seenPlace();
        vec3 n = normalize(cross(dFdx(place), dFdy(place)));
        float light = 0.62 + 0.38 * dot(n, normalize(vec3(-0.35, 0.75, 0.6)));
        gl_FragColor = vec4(vTint * light, opacity);
    }`;

/** Corners, three numbers each, and faces of three corners. */
interface Solid {
    corners: number[];
    faces: number[];
}

/** Along z from 0 to 1, widest near its head. */
function octahedron(): Solid {
    const solid: Solid = { corners: [0, 0, 0], faces: [] };
    [[1, 1], [-1, 1], [-1, -1], [1, -1]].forEach(([x, y], i) => {
        solid.corners.push(x * 0.707, y * 0.707, 0.14);
        const a = 1 + i, b = 1 + ((i + 1) % 4);
        solid.faces.push(0, b, a, 5, a, b);
    });
    solid.corners.push(0, 0, 1);
    return solid;
}

function ball(detail: number): Solid {
    const solid: Solid = { corners: [], faces: [] };
    const known = new Map<string, number>();
    const places = new IcosahedronBufferGeometry(1, detail).getAttribute("position").array;
    for (let i = 0; i < places.length; i += 3) {
        const place = [places[i], places[i + 1], places[i + 2]], name = place.map((v) => v.toFixed(4)).join();
        if (!known.has(name)) {
            known.set(name, known.size);
            solid.corners.push(...place);
        }
        solid.faces.push(known.get(name)!);
    }
    return solid;
}

/**
 * Copies of a solid in one piece. A card would repeat it by itself, but where the processor draws each of its
 * repetitions costs as much as a whole drawing.
 */
class Copies {
    readonly mesh: Mesh;
    private readonly size: number; // corners of a copy
    private readonly places: BufferAttribute;
    private readonly tints: BufferAttribute;

    constructor(readonly solid: Solid, count: number) {
        this.size = solid.corners.length / 3;
        const geometry = new BufferGeometry();
        const attribute = (name: string) => {
            const made = new BufferAttribute(new Float32Array(count * solid.corners.length), 3).setUsage(DynamicDrawUsage);
            geometry.setAttribute(name, made);
            return made;
        };
        this.places = attribute("position");
        this.tints = attribute("tint");
        const faces = new Uint32Array(count * solid.faces.length);
        for (let i = 0; i < count; ++i) faces.set(solid.faces.map((corner) => corner + i * this.size), i * solid.faces.length);
        geometry.setIndex(new BufferAttribute(faces, 1));
        this.mesh = new Mesh(geometry, new ShaderMaterial({
            vertexShader, fragmentShader, extensions: { derivatives: true } as never, uniforms: { opacity: { value: 1 }, lens },
        }));
        this.mesh.frustumCulled = false;
    }

    /** The corners of all copies, three numbers each, which are about to change. */
    get numbers(): Float32Array {
        this.places.needsUpdate = true;
        return this.places.array as Float32Array;
    }
    tint(copy: number, colour: Color): void {
        const to = this.tints.array as Float32Array;
        for (let c = copy * this.size; c < (copy + 1) * this.size; ++c) colour.toArray(to as never, c * 3);
        this.tints.needsUpdate = true;
    }
}

export interface BoneColours {
    bone: Color;
    joint: Color;
    selected: Color;
    hovered: Color;
    link: Color;
}

export class Bones {
    readonly group = new Group();
    /** Parent and child of each bone. */
    readonly links: [number, number][] = [];
    private readonly faint: [number, number][] = [];
    private readonly bones: Copies;
    private readonly balls: Copies;
    private readonly lines: LineSegments;

    /** `plain` spares the processor where it draws by itself. */
    constructor(private readonly scene: Scene, private size: number, plain: boolean) {
        for (let child = 0; child < scene.nodeCount; ++child) {
            const parent = scene.parents[child];
            if (parent < 0) continue;
            // A root that stands still is where things are attached, and no joint of a body.
            const isAnchor = scene.parents[parent] < 0 && scene.isStill(parent);
            (isAnchor ? this.faint : this.links).push([parent, child]);
        }
        this.bones = new Copies(octahedron(), this.links.length);
        this.balls = new Copies(ball(plain || scene.nodeCount > 1000 ? 0 : 1), scene.nodeCount);
        const lineGeometry = new BufferGeometry();
        lineGeometry.setAttribute("position", new Float32BufferAttribute(new Float32Array(this.faint.length * 6), 3));
        this.lines = new LineSegments(lineGeometry, new LineBasicMaterial({ transparent: true, opacity: 0.35 }));
        this.lines.frustumCulled = false;
        this.group.add(this.lines, this.bones.mesh, this.balls.mesh);
    }

    /** How large the scene is: no bone is thicker than goes with that. */
    set sceneSize(size: number) {
        this.size = size;
    }
    set opacity(opacity: number) {
        for (const { mesh } of [this.bones, this.balls]) {
            const material = mesh.material as ShaderMaterial;
            material.uniforms.opacity.value = opacity;
            material.transparent = opacity < 1;
        }
    }

    follow(pose: Pose): void {
        const thickest = this.size * 0.016;
        const reach = new Float32Array(this.scene.nodeCount);
        const bones = this.bones.numbers;
        this.links.forEach(([parent, child], i) => {
            const head = pose.placeOf(parent), tail = pose.placeOf(child);
            const along = [tail[0] - head[0], tail[1] - head[1], tail[2] - head[2]];
            const length = Math.hypot(...along);
            const radius = length > 1e-9 ? Math.min(thickest, length * 0.16) : 0;
            this.placeBone(bones, i, head, along, length, radius);
            reach[parent] = Math.max(reach[parent], radius);
            reach[child] = Math.max(reach[child], radius * 0.6);
        });
        const balls = this.balls.numbers, { corners } = this.balls.solid;
        for (let i = 0; i < this.scene.nodeCount; ++i) {
            const place = pose.placeOf(i), at = i * corners.length;
            const radius = Math.max(Math.min(reach[i] * 0.62, thickest), this.size * 0.0026);
            for (let k = 0; k < corners.length; ++k) balls[at + k] = place[k % 3] + corners[k] * radius;
        }
        const line = (this.lines.geometry as BufferGeometry).getAttribute("position");
        this.faint.forEach(([parent, child], i) => {
            (line.array as Float32Array).set(pose.placeOf(parent), i * 6);
            (line.array as Float32Array).set(pose.placeOf(child), i * 6 + 3);
        });
        (line as Float32BufferAttribute).needsUpdate = true;
    }

    colour(colours: BoneColours, selected: (node: number) => boolean, hovered: number): void {
        const tintOf = (node: number, plain: Color) =>
            node === hovered ? colours.hovered : selected(node) ? colours.selected : plain;
        this.links.forEach(([parent], i) => this.bones.tint(i, tintOf(parent, colours.bone)));
        for (let i = 0; i < this.scene.nodeCount; ++i) this.balls.tint(i, tintOf(i, colours.joint));
        (this.lines.material as LineBasicMaterial).color.copy(colours.link);
    }

    private placeBone(to: Float32Array, bone: number, head: readonly number[], along: readonly number[], length: number,
        radius: number): void {
        const [x, y, z] = radius > 0 ? along.map((v) => v / length) : [0, 0, 1];
        // Across the bone: its axis times the upright or, where it nearly stands upright itself, times the one to the side.
        const [ax, ay, az] = Math.abs(y) < 0.9 ? unit(-z, 0, x) : unit(0, z, -y);
        const [bx, by, bz] = [y * az - z * ay, z * ax - x * az, x * ay - y * ax];
        const { corners } = this.bones.solid, at = bone * corners.length;
        for (let k = 0; k < corners.length; k += 3) {
            const a = corners[k] * radius, b = corners[k + 1] * radius, c = corners[k + 2];
            to[at + k] = head[0] + along[0] * c + ax * a + bx * b;
            to[at + k + 1] = head[1] + along[1] * c + ay * a + by * b;
            to[at + k + 2] = head[2] + along[2] * c + az * a + bz * b;
        }
    }
}

function unit(x: number, y: number, z: number): [number, number, number] {
    const length = Math.hypot(x, y, z);
    return [x / length, y / length, z / length];
}
