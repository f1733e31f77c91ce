/** The picture: one scene, or two over each other, as the camera sees them. */

import { Group, Matrix4, PerspectiveCamera, Scene as DrawnScene, Vector2, Vector3, WebGLRenderer } from "three";
import { facingOf } from "../scene/facing";
import { Joints, pickJoint, rayHits } from "../scene/pick";
import { Pose } from "../scene/pose";
import type { Scene } from "../scene/scene";
import type { Selection } from "../scene/selection";
import { Signal } from "../scene/signal";
import { Backdrop } from "./backdrop";
import { Bones } from "./bones";
import { threeColour } from "./colours";
import { followLens } from "./lens";
import { Meshes } from "./meshes";
import { Orbit } from "./orbit";
import { Ground, Lines, Trails, axesOf, boxesOf, normalsOf } from "./overlays";
import { drawsBySoftware } from "./software";

export type SwitchName = "skeleton" | "meshes" | "wireframe" | "normals" | "boxes" | "axes" | "ground" | "trails" | "names" | "follow";

export const switchesAtFirst: Record<SwitchName, boolean> = {
    skeleton: true, meshes: true, wireframe: false, normals: false, boxes: false, axes: false, ground: true, trails: true,
    names: false, follow: false,
};

/** The file's axes are those of a left hand: seen by a right-handed camera, Z goes the other way. */
const turnZ = -1;

interface Layer {
    scene: Scene;
    pose: Pose;
    bones: Bones;
    meshes: Meshes;
}

export class Stage {
    readonly switches = new Map<SwitchName, Signal<boolean>>();
    readonly camera = new PerspectiveCamera(32, 1, 0.01, 1000);
    readonly orbit: Orbit;
    readonly layers: Layer[];
    /** Called after each picture. */
    drawn: () => void = () => undefined;
    /** How many pixels of the picture's upper edge lie under something. */
    coveredAbove: () => number = () => 0;
    private readonly renderer: WebGLRenderer;
    private readonly isSoftware: boolean;
    private isStill = true;
    private readonly backdrop = new Backdrop();
    private readonly solid = new DrawnScene();
    private readonly front = new DrawnScene();
    private readonly ground = new Ground();
    private readonly axes = new Lines(1, true);
    private readonly trails = new Lines(1, true);
    private readonly boxes = new Lines(0.9);
    private readonly normals = new Lines(0.75);
    private readonly ways: Trails;
    private readonly anchors: Set<number>;
    private size = 1;
    private readonly pixels = new Vector2();
    private wanted = true;
    private moved = true;
    private coloured = false;
    private followed: Vector3 | null = null;
    private homeYaw = 0;

    constructor(private readonly canvas: HTMLCanvasElement, scenes: readonly Scene[], private readonly selection: Selection,
        clicked: (event: PointerEvent) => void) {
        this.isSoftware = drawsBySoftware();
        const attributes = { antialias: !this.isSoftware, alpha: false, stencil: false };
        const context = canvas.getContext("webgl2", attributes) ?? undefined;
        this.renderer = new WebGLRenderer({ canvas, ...attributes, context: context as never });
        this.renderer.autoClear = false;
        for (const [name, on] of Object.entries(switchesAtFirst)) this.switches.set(name as SwitchName, new Signal(on));
        this.orbit = new Orbit(this.camera, canvas, () => this.redraw(), clicked);
        this.layers = scenes.map((scene, i) => ({
            scene,
            pose: new Pose(scene),
            bones: new Bones(scene, 1, this.isSoftware),
            meshes: new Meshes(scene, i > 0 ? threeColour("ghost") : null, i > 0 ? 0.45 : 1, !this.isSoftware, () => this.redraw()),
        }));
        this.ways = new Trails(scenes[0]);
        this.anchors = anchorsOf(scenes[0]);
        this.assemble();
        for (const signal of this.switches.values()) signal.watch(() => this.recolour());
        selection.nodes.watch(() => this.recolour());
        selection.hovered.watch(() => this.recolour(false));
        new ResizeObserver(() => this.resize()).observe(canvas.parentElement!);
    }

    is(name: SwitchName): boolean {
        return this.switches.get(name)!.value;
    }

    /** Asks for a new picture; `moved` says that something in the scene did. */
    redraw(moved = false): void {
        this.wanted = true;
        this.moved = this.moved || moved;
    }
    setTime(time: number): void {
        for (const { pose } of this.layers) pose.setTime(time);
        this.redraw(true);
    }
    /** Something is to be seen in another colour. */
    recolour(moved = true): void {
        this.coloured = false;
        this.redraw(moved);
    }

    /** Draws, where something is new. */
    draw(): void {
        if (!this.wanted) return;
        this.wanted = false;
        if (this.moved) this.bringUpToDate();
        this.moved = false;
        if (!this.coloured) this.colour();
        this.coloured = true;
        this.orbit.place();
        this.renderer.getDrawingBufferSize(this.pixels);
        followLens(this.camera, this.pixels);
        this.backdrop.follow(this.pixels);
        this.renderer.clear(false, true, false);
        this.renderer.render(this.solid, this.camera);
        this.renderer.clearDepth();
        this.renderer.render(this.front, this.camera);
        this.drawn();
    }

    /** Where a place of the file's world is seen, in pixels of the page's own. */
    project(x: number, y: number, z: number): [number, number, number] | null {
        scratch.set(x, y, turnZ * z).project(this.camera);
        if (!(scratch.z > -1 && scratch.z < 1)) return null;
        const { clientWidth, clientHeight } = this.canvas;
        return [((scratch.x + 1) / 2) * clientWidth, ((1 - scratch.y) / 2) * clientHeight, scratch.z];
    }

    /** The node under a place of the canvas: a joint where the skeleton is shown, else what a mesh hangs on. */
    nodeAt(x: number, y: number): number {
        const { scene, pose, bones, meshes } = this.layers[0];
        if (this.is("skeleton")) {
            const joints: Joints = { count: scene.nodeCount, placeOf: (node) => pose.placeOf(node), links: bones.links };
            const joint = pickJoint(joints, (px, py, pz) => this.project(px, py, pz), x, y, 12);
            if (joint >= 0) return joint;
        }
        if (!this.is("meshes")) return -1;
        return this.meshAt(meshes, pose, x, y);
    }

    frameAll(): void {
        this.frame(this.box());
    }
    private frame(box: Bounds): void {
        const free = Math.max(0.6, 1 - this.coveredAbove() / (this.canvas.clientHeight || 1));
        this.orbit.frame(box.centre(), Math.max(box.radius(), 1e-3) / free);
        this.followed = null;
        this.redraw(true);
    }
    /** Frames the selected nodes with their children, or everything where none is. */
    frameSelected(): void {
        const { scene, pose } = this.layers[0];
        const nodes = this.selection.nodes.value;
        if (nodes.length === 0) return this.frameAll();
        const box = new Bounds();
        for (const node of nodes) {
            box.add(pose.placeOf(node));
            for (const child of scene.children[node]) box.add(pose.placeOf(child));
        }
        this.orbit.frame(box.centre(), Math.max(box.radius() * 1.4, this.size * 0.06));
    }
    /** From the front, the side or above. */
    lookFrom(way: "front" | "back" | "left" | "right" | "top"): void {
        const turns = { front: 0, back: Math.PI, left: Math.PI / 2, right: -Math.PI / 2, top: 0 };
        this.orbit.look(this.homeYaw + turns[way], way === "top" ? Math.PI / 2 : 0.04);
    }
    /** The camera as it was at first. */
    home(): void {
        this.homeYaw = facingOf(this.layers[0].pose) ?? 0;
        this.orbit.look(this.homeYaw + 0.42, 0.16);
        const box = this.box();
        if (!this.is("follow")) this.addPlaces(box);
        this.frame(box);
    }
    get sceneSize(): number {
        return this.size;
    }

    private assemble(): void {
        const solidRoot = new Group(), frontRoot = new Group();
        for (const root of [solidRoot, frontRoot]) root.scale.z = turnZ;
        for (const { meshes, bones } of this.layers) {
            solidRoot.add(meshes.group, meshes.wires);
            frontRoot.add(bones.group);
        }
        solidRoot.add(this.boxes.object, this.normals.object);
        frontRoot.add(this.trails.object, this.axes.object);
        this.solid.add(this.ground.group, solidRoot, this.backdrop.object);
        this.front.add(frontRoot);
        if (this.layers[1]) this.layers[1].bones.opacity = 0.55;
        const { scene, pose } = this.layers[0];
        pose.setTime(scene.start);
        if (this.layers[1]) this.layers[1].pose.setTime(scene.start);
        const box = this.box(), centre = box.centre(), radius = Math.max(box.radius(), 1e-3);
        this.size = radius * 2;
        for (const { bones } of this.layers) bones.sceneSize = this.size;
        this.ground.fit(this.size, centre);
        this.switches.get("follow")!.value = this.wanders(radius);
    }

    /** Whether the scene leaves the place where it starts. */
    private wanders(radius: number): boolean {
        const { scene } = this.layers[0];
        if (scene.end <= scene.start) return false;
        const later = new Pose(scene);
        const from = new Vector3(...this.middle(scene, this.layers[0].pose));
        for (let part = 1; part <= 4; ++part) {
            later.setTime(scene.start + ((scene.end - scene.start) * part) / 4);
            if (from.distanceTo(new Vector3(...this.middle(scene, later))) > radius * 0.5) return true;
        }
        return false;
    }

    /** Round all that is there at the present time. */
    private box(): Bounds {
        const box = new Bounds();
        for (const { scene, pose, meshes } of this.layers) {
            addJoints(box, scene, pose, meshes);
            for (const { surface, matrix } of meshes.placed(pose)) box.addAll(meshes.shape(surface, pose).positions, matrix);
        }
        return box;
    }
    /** And where joints come to in the course of a scene that stays where it is. */
    private addPlaces(box: Bounds): void {
        const moments = 12;
        for (const { scene, meshes } of this.layers) {
            const pose = new Pose(scene);
            for (let part = 1; part <= moments; ++part) {
                pose.setTime(scene.start + ((scene.end - scene.start) * part) / moments);
                addJoints(box, scene, pose, meshes);
            }
        }
    }

    private bringUpToDate(): void {
        const { pose, meshes, scene } = this.layers[0];
        this.layers.forEach((layer) => {
            layer.meshes.group.visible = this.is("meshes");
            layer.meshes.wires.visible = this.is("wireframe");
            layer.bones.group.visible = this.is("skeleton");
            if (this.is("meshes") || this.is("wireframe")) layer.meshes.follow(layer.pose);
            if (this.is("skeleton")) layer.bones.follow(layer.pose);
        });
        this.ground.group.visible = this.is("ground");
        const nodes = this.selection.nodes.value;
        const axisColours = [threeColour("x"), threeColour("y"), threeColour("z")];
        const shown = nodes.length > 0 ? nodes : scene.roots;
        this.axes.set(...(this.is("axes") ? axesOf(pose, shown, this.size * 0.09, axisColours) : nothing()));
        this.trails.set(...(this.is("trails") && scene.end > scene.start
            ? this.ways.pieces(nodes.slice(-12), pose.time, threeColour("accent"), threeColour("quiet")) : nothing()));
        this.boxes.set(this.is("boxes") ? boxesOf(meshes, pose) : []);
        this.normals.set(this.is("normals") ? normalsOf(meshes, pose, this.size * 0.02) : []);
        this.follow();
    }

    /** Keeps the body where it stands in the view. */
    private follow(): void {
        const { scene, pose } = this.layers[0];
        if (!this.is("follow")) {
            this.followed = null;
            return;
        }
        const [x, y, z] = this.middle(scene, pose);
        if (!Number.isFinite(x + y + z)) return;
        const now = new Vector3(x, y, turnZ * z);
        if (this.followed) this.orbit.target.add(now).sub(this.followed);
        this.followed = now;
        this.ground.fit(this.size, this.orbit.target);
    }
    /** The mean of where the joints stand, without roots that only hold them. */
    private middle(scene: Scene, pose: Pose): [number, number, number] {
        const sum: [number, number, number] = [0, 0, 0];
        let count = 0;
        for (let i = 0; i < scene.nodeCount; ++i) {
            const place = pose.placeOf(i);
            if (this.anchors.has(i) || !Number.isFinite(place[0] + place[1] + place[2])) continue;
            ++count;
            place.forEach((v, c) => (sum[c] += v));
        }
        return [sum[0] / count, sum[1] / count, sum[2] / count];
    }

    private colour(): void {
        const hovered = this.selection.hovered.value;
        const pick = (name: string) => threeColour(name);
        const plain = { bone: pick("bone"), joint: pick("joint"), selected: pick("accent"), hovered: pick("hover"), link: pick("quiet") };
        this.layers[0].bones.colour(plain, (node) => this.selection.has(node), hovered);
        if (this.layers[1]) {
            const ghost = pick("ghost");
            this.layers[1].bones.colour({ ...plain, bone: ghost, joint: ghost }, () => false, -1);
        }
        const lit = this.is("skeleton") ? [] : this.selection.nodes.value;
        this.layers[0].meshes.glow(lit, pick("accent").multiplyScalar(0.25));
        for (const { meshes } of this.layers) meshes.wire = pick("wire");
        this.boxes.colour = pick("box");
        this.normals.colour = pick("normal");
        this.ground.colour(pick("grid"), pick("grid-bold"));
        this.backdrop.colour(pick("sky"), pick("haze"));
    }

    private meshAt(meshes: Meshes, pose: Pose, x: number, y: number): number {
        const { clientWidth, clientHeight } = this.canvas;
        const eye = this.camera.position;
        scratch.set((x / clientWidth) * 2 - 1, 1 - (y / clientHeight) * 2, 0.5).unproject(this.camera).sub(eye).normalize();
        let nearest = Infinity, node = -1;
        for (const placed of meshes.placed(pose)) {
            const toMesh = new Matrix4().getInverse(new Matrix4().makeScale(1, 1, turnZ).multiply(placed.matrix));
            const origin = eye.clone().applyMatrix4(toMesh);
            const way = scratch.clone().add(eye).applyMatrix4(toMesh).sub(origin);
            const { document } = placed.surface;
            const triangles = this.layers[0].scene.words.wholeOf(document.triangles);
            const { positions } = meshes.shape(placed.surface, pose);
            const distance = rayHits(origin.toArray(), way.toArray(), positions, triangles);
            if (distance < nearest && placed.node >= 0) [nearest, node] = [distance, placed.node];
        }
        return node;
    }

    /** Without a card edges are smoothed by drawing finer, as long as nothing moves. */
    set playing(on: boolean) {
        this.isStill = !on;
        if (this.isSoftware) this.resize();
    }
    private resize(): void {
        const { clientWidth, clientHeight } = this.canvas.parentElement!;
        if (clientWidth === 0 || clientHeight === 0) return;
        const screen = window.devicePixelRatio || 1;
        this.renderer.setPixelRatio(this.isSoftware && this.isStill ? Math.max(2, screen) : this.isSoftware ? 1 : Math.min(screen, 2));
        this.renderer.setSize(clientWidth, clientHeight, false);
        const before = this.camera.aspect;
        this.camera.aspect = clientWidth / clientHeight;
        // What fitted a wide view shall fit a narrow one, too.
        const narrow = (aspect: number) => Math.min(1, aspect);
        this.orbit.distance *= narrow(before) / narrow(this.camera.aspect);
        this.redraw();
        this.draw();
    }
}

function addJoints(box: Bounds, scene: Scene, pose: Pose, meshes: Meshes): void {
    const anchors = anchorsOf(scene);
    for (let i = 0; i < scene.nodeCount; ++i) {
        // Beside meshes, what stands still at the origin is a group and no joint.
        const isGroup = !meshes.isEmpty && scene.isStill(i) && pose.placeOf(i).every((v) => v === 0);
        if (!anchors.has(i) && !isGroup) box.add(pose.placeOf(i));
    }
}

/** Roots that stand still and hold others. */
function anchorsOf(scene: Scene): Set<number> {
    return new Set(scene.roots.filter((root) => scene.isStill(root) && scene.children[root].length > 0));
}

const scratch = new Vector3();
const nothing = (): [number[], number[]] => [[], []];

/** A box round places, in the view's axes; what isn't finite is left out. */
class Bounds {
    private readonly low = new Vector3(Infinity, Infinity, Infinity);
    private readonly high = new Vector3(-Infinity, -Infinity, -Infinity);

    get isEmpty(): boolean {
        return this.low.x > this.high.x;
    }
    add([x, y, z]: readonly number[]): void {
        if (!(Math.abs(x) < 1e15 && Math.abs(y) < 1e15 && Math.abs(z) < 1e15)) return;
        this.low.min(scratch.set(x, y, turnZ * z));
        this.high.max(scratch);
    }
    addAll(positions: Float32Array, matrix: Matrix4): void {
        const place = new Vector3();
        for (let i = 0; i < positions.length; i += 3) {
            place.set(positions[i], positions[i + 1], positions[i + 2]).applyMatrix4(matrix);
            this.add([place.x, place.y, place.z]);
        }
    }
    centre(): Vector3 {
        return this.isEmpty ? new Vector3() : this.low.clone().add(this.high).multiplyScalar(0.5);
    }
    radius(): number {
        return this.isEmpty ? 1 : this.high.distanceTo(this.low) / 2;
    }
}

