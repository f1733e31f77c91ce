/** The skeleton: a bone from each joint to its children, and a ball at each joint, seen through meshes. */

import {
    BufferGeometry, Color, DynamicDrawUsage, Float32BufferAttribute, Group, IcosahedronBufferGeometry,
    InstancedBufferAttribute, InstancedBufferGeometry, LineBasicMaterial, LineSegments, Mesh, ShaderMaterial,
} from "three";
import type { Pose } from "../scene/pose";
import type { Scene } from "../scene/scene";

const shade = `
    varying vec3 vTint;
    varying vec3 vPlace;
    uniform float opacity;
    void main() {
        vec3 n = normalize(cross(dFdx(vPlace), dFdy(vPlace)));
        float light = 0.62 + 0.38 * dot(n, normalize(vec3(-0.35, 0.75, 0.6)));
        gl_FragColor = vec4(vTint * light, opacity);
    }`;

const boneShape = `
    attribute vec3 head;
    attribute vec3 tail;
    attribute vec3 tint;
    attribute float radius;
    varying vec3 vTint;
    varying vec3 vPlace;
    void main() {
        vec3 along = tail - head;
        vec3 axis = normalize(along);
        vec3 aside = normalize(cross(axis, abs(axis.y) < 0.9 ? vec3(0.0, 1.0, 0.0) : vec3(1.0, 0.0, 0.0)));
        vec3 across = cross(axis, aside);
        vec3 place = head + along * position.z + (aside * position.x + across * position.y) * radius;
        vec4 seen = modelViewMatrix * vec4(place, 1.0);
        vTint = tint;
        vPlace = seen.xyz;
        gl_Position = projectionMatrix * seen;
    }`;

const ballShape = `
    attribute vec3 head;
    attribute vec3 tint;
    attribute float radius;
    varying vec3 vTint;
    varying vec3 vPlace;
    void main() {
        vec4 seen = modelViewMatrix * vec4(head + position * radius, 1.0);
        vTint = tint;
        vPlace = seen.xyz;
        gl_Position = projectionMatrix * seen;
    }`;

/** Along z from 0 to 1, widest near its head. */
function octahedron(): Float32Array {
    const ring = [[1, 1], [-1, 1], [-1, -1], [1, -1]].map(([x, y]) => [x * 0.707, y * 0.707, 0.14]);
    const corners: number[] = [];
    ring.forEach((a, i) => {
        const b = ring[(i + 1) % 4];
        corners.push(0, 0, 0, ...b, ...a, 0, 0, 1, ...a, ...b);
    });
    return Float32Array.from(corners);
}

function instanced(vertexShader: string, position: Float32Array, columns: Record<string, number>, count: number) {
    const geometry = new InstancedBufferGeometry();
    geometry.setAttribute("position", new Float32BufferAttribute(position, 3));
    for (const [name, width] of Object.entries(columns)) {
        const attribute = new InstancedBufferAttribute(new Float32Array(count * width), width);
        attribute.setUsage(DynamicDrawUsage);
        geometry.setAttribute(name, attribute);
    }
    geometry.maxInstancedCount = count;
    const material = new ShaderMaterial({
        vertexShader, fragmentShader: shade, extensions: { derivatives: true } as never, uniforms: { opacity: { value: 1 } },
    });
    const mesh = new Mesh(geometry, material);
    mesh.frustumCulled = false;
    return mesh;
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
    private readonly bones: Mesh;
    private readonly balls: Mesh;
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
        this.bones = instanced(boneShape, octahedron(), { head: 3, tail: 3, tint: 3, radius: 1 }, this.links.length);
        const ball = new IcosahedronBufferGeometry(1, plain ? 0 : 1).getAttribute("position").array as Float32Array;
        this.balls = instanced(ballShape, ball, { head: 3, tint: 3, radius: 1 }, scene.nodeCount);
        const lineGeometry = new BufferGeometry();
        lineGeometry.setAttribute("position", new Float32BufferAttribute(new Float32Array(this.faint.length * 6), 3));
        this.lines = new LineSegments(lineGeometry, new LineBasicMaterial({ transparent: true, opacity: 0.35 }));
        this.lines.frustumCulled = false;
        this.group.add(this.lines, this.bones, this.balls);
    }

    /** How large the scene is: no bone is thicker than goes with that. */
    set sceneSize(size: number) {
        this.size = size;
    }
    set opacity(opacity: number) {
        for (const mesh of [this.bones, this.balls]) {
            const material = mesh.material as ShaderMaterial;
            material.uniforms.opacity.value = opacity;
            material.transparent = opacity < 1;
        }
    }

    follow(pose: Pose): void {
        const thickest = this.size * 0.016;
        const { head, tail, radius } = attributesOf(this.bones, "head", "tail", "radius");
        const reach = new Float32Array(this.scene.nodeCount);
        this.links.forEach(([parent, child], i) => {
            const a = pose.placeOf(parent), b = pose.placeOf(child);
            head.set(a, i * 3);
            tail.set(b, i * 3);
            const length = Math.hypot(a[0] - b[0], a[1] - b[1], a[2] - b[2]);
            radius[i] = length > 1e-9 ? Math.min(thickest, length * 0.16) : 0;
            reach[parent] = Math.max(reach[parent], radius[i]);
            reach[child] = Math.max(reach[child], radius[i] * 0.6);
        });
        const balls = attributesOf(this.balls, "head", "radius");
        for (let i = 0; i < this.scene.nodeCount; ++i) {
            balls.head.set(pose.placeOf(i), i * 3);
            balls.radius[i] = Math.max(Math.min(reach[i] * 0.62, thickest), this.size * 0.0026);
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
        const bones = attributesOf(this.bones, "tint"), balls = attributesOf(this.balls, "tint");
        this.links.forEach(([parent], i) => tintOf(parent, colours.bone).toArray(bones.tint as never, i * 3));
        for (let i = 0; i < this.scene.nodeCount; ++i) tintOf(i, colours.joint).toArray(balls.tint as never, i * 3);
        (this.lines.material as LineBasicMaterial).color.copy(colours.link);
    }
}

/** The numbers of attributes that are about to change. */
function attributesOf<Name extends string>(mesh: Mesh, ...names: Name[]): Record<Name, Float32Array> {
    const { attributes } = mesh.geometry as BufferGeometry;
    const found = names.map((name): [Name, Float32Array] => {
        const attribute = attributes[name] as Float32BufferAttribute;
        attribute.needsUpdate = true;
        return [name, attribute.array as Float32Array];
    });
    return Object.fromEntries(found) as Record<Name, Float32Array>;
}
