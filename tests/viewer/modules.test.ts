/** The page's modules by themselves: what they make of a scene is held to what the library makes of it. */

import assert from "node:assert/strict";
import { after, before, test } from "node:test";
import { Clock } from "../../viewer/src/scene/clock";
import { Comparison, pairsOf } from "../../viewer/src/scene/compare";
import { Deformer, Palette } from "../../viewer/src/scene/deform";
import { facingOf } from "../../viewer/src/scene/facing";
import { subjectOf } from "../../viewer/src/scene/findings";
import { anglesOf, fromParts } from "../../viewer/src/scene/matrix";
import { pickJoint, rayHits } from "../../viewer/src/scene/pick";
import { Pose } from "../../viewer/src/scene/pose";
import type { Scene } from "../../viewer/src/scene/scene";
import { boundsOf, seriesOf } from "../../viewer/src/scene/series";
import { Cursors, Kind, Track } from "../../viewer/src/scene/tracks";
import { Folder, PosedMesh, example, sceneOf } from "./pages";

const folder = new Folder();
before(() => {
    folder.makeScenes();
    assert.equal(folder.run("export", example, "-o", "walk.vr2", "--sample-at", "30").code, 0);
});
after(() => folder.remove());

function toNumber(told: number | string): number {
    return typeof told === "number" ? told : told === "inf" ? Infinity : told === "-inf" ? -Infinity : NaN;
}
function expectNear(mine: ArrayLike<number>, theirs: (number | string)[], tolerance: number, what: string): void {
    theirs.forEach((told, i) => {
        const v = toNumber(told);
        const near = Number.isFinite(v) ? Math.abs(mine[i] - v) <= tolerance * Math.max(1, Math.abs(v)) : !Number.isFinite(mine[i]);
        assert.ok(near, `${what}: number ${i} is ${mine[i]} and ${told} in the library`);
    });
}

const lists = { rigid: "rigids", weighted: "weighted_meshes", morph: "morph_meshes", anim: "anim_meshes" } as const;

interface Dumped {
    vertices?: unknown[];
    sub_objects: { triangles: { first: number; second: number; third: number }[] }[];
}

/** The page keeps alike vertices once, so meshes are compared corner by corner of the file's triangles. */
function cornersOf(mesh: Dumped, count: number): number[] {
    return mesh.sub_objects.flatMap(({ triangles }) => triangles.map((t) => [t.first, t.second, t.third]))
        .filter((corners) => Math.max(...corners) < count).flat();
}

test("nodes and meshes stand where the library puts them, at any time and in any order of times", () => {
    const times = [0.37, 1.9, 0, 0.05, 2.4, 1.1, -1, 1.5];
    const dump = JSON.parse(folder.run("dump", "everything.vr2", "--json").out);
    for (const file of ["everything.vr2", "walk.vr2"]) {
        const scene = sceneOf(folder.pageOf(file));
        const pose = new Pose(scene);
        const palette = new Palette(scene, 0);
        const deformers = scene.document.meshes.map((mesh) => new Deformer(scene, mesh));
        assert.equal(file === "everything.vr2", deformers.length === 4);
        for (const time of times) {
            const theirs = folder.pose(file, time);
            pose.setTime(time);
            palette.follow(pose);
            assert.equal(theirs.nodes.length, scene.nodeCount);
            theirs.nodes.forEach((node, i) => {
                assert.equal(scene.nameOf(i), node.name);
                expectNear(pose.world.subarray(i * 12, i * 12 + 12), node.world_matrix, 3e-6, `${node.name} at ${time}`);
            });
            for (const deformer of deformers) {
                const { kind, name, triangles } = deformer.mesh;
                deformer.follow(pose, palette);
                const posed: PosedMesh = theirs[lists[kind]][0];
                const corners = cornersOf(dump[lists[kind]][0], posed.positions.length);
                const mine = scene.words.wholeOf(triangles);
                assert.equal(mine.length, corners.length, name);
                corners.forEach((corner, i) => {
                    const at = mine[i] * 3;
                    expectNear(deformer.positions.subarray(at, at + 3), posed.positions[corner], 4e-6, `${name} at ${time}`);
                    expectNear(deformer.normals.subarray(at, at + 3), posed.normals[corner], 1e-5, `normal of ${name} at ${time}`);
                });
            }
        }
    }
});

test("a part of the hierarchy moved alone stands where it stands in the whole", () => {
    const scene = sceneOf(folder.pageOf("walk.vr2"));
    const whole = new Pose(scene), alone = new Pose(scene);
    const hand = scene.document.nodes.findIndex(({ name }) => name === "left_hand");
    whole.setTime(1.234);
    alone.setTimeOf(hand, 1.234);
    assert.deepEqual(alone.placeOf(hand), whole.placeOf(hand));
});

test("what is wrong with a scene's tracks and indices gives what the library makes of it", () => {
    const scene = sceneOf(folder.pageOf("wrong.vr2"));
    const pose = new Pose(scene);
    for (const time of [0, 0.5, 1.5, 2, 0.7]) {
        pose.setTime(time);
        folder.pose("wrong.vr2", time).nodes.forEach((node, i) =>
            expectNear(pose.world.subarray(i * 12, i * 12 + 12), node.world_matrix, 1e-5, `${node.name} at ${time}`));
    }
    assert.ok(scene.document.findingCount > 5);
    assert.deepEqual(subjectOf(scene, "matrix_hierarchy.nodes[2]"), { node: 2, mesh: -1 });
    assert.deepEqual(subjectOf(scene, "weighted_meshes[0]"), { node: -1, mesh: 0 });
    assert.equal(subjectOf(scene, "matrix_hierarchy.nodes[99]"), null);
    assert.equal(subjectOf(scene, "environment"), null);
    assert.deepEqual(scene.document.findings.filter(({ record }) => record === "matrix_hierarchy.nodes[99]"), []);
});

function track(kind: Kind, width: number, times: number[], values: number[]): Track {
    return { kind, width, times: Float32Array.from(times), values: Float32Array.from(values), index: 0, fraction: 0 };
}

test("a line of a track goes through its keys, integers in steps, and angles without jumps", () => {
    const steps = { ...track(Kind.integer, 1, [0, 1, 2], []), values: Int32Array.from([5, 7, 6]) };
    const [line] = seriesOf([steps], 0, 0, 2, 4, "degrees");
    assert.deepEqual(Array.from(line.points), [0, 5, 0.5, 5, 1, 5, 1, 7, 1.5, 7, 2, 7, 2, 6]);
    const turns: number[] = [];
    for (let i = 0; i <= 8; ++i) turns.push(0, 0, Math.sin((i * Math.PI) / 8), Math.cos((i * Math.PI) / 8));
    const spin = track(Kind.quaternionSlerp, 4, [0, 1, 2, 3, 4, 5, 6, 7, 8], turns);
    const z = seriesOf([spin], 0, 0, 8, 32, "degrees")[2];
    assert.ok(Math.abs(z.points[z.points.length - 1] - 360) < 1e-3);
    assert.equal(z.keys.length, 18);
    assert.deepEqual(boundsOf([{ name: "", points: Float64Array.from([0, NaN, 1, 3, 2, -1]), keys: new Float64Array() }]), [-1, 3]);
    // The signs of keys tell the way: from 0 to -170 degrees told as the opposite quaternion goes the long way round.
    const half = (85 * Math.PI) / 180;
    const long = track(Kind.quaternionSlerp, 4, [0, 1], [0, 0, 0, 1, 0, 0, Math.sin(half), -Math.cos(half)]);
    const middle = seriesOf([long], 0, 0, 1, 2, "quaternion").map(({ points }) => points[3]);
    [0, 0, Math.sin((95 * Math.PI) / 360), Math.cos((95 * Math.PI) / 360)].forEach((v, i) => assert.ok(Math.abs(middle[i] - v) < 1e-6));
    const cursors = new Cursors([track(Kind.vector3, 3, [], []), track(Kind.quaternionSlerp, 4, [], [])]);
    const out = [9, 9, 9, 9];
    cursors.value(0, out);
    cursors.value(1, out);
    assert.deepEqual(out, [0, 0, 0, 1]);
});

test("angles told of a rotation make the same rotation again", () => {
    for (const [a, b, c] of [[0.3, -1.2, 2.5], [0, Math.PI / 2, 0.4], [-3, 0.7, -0.1]]) {
        const axis = (angle: number, i: number) => [0, 1, 2].map((k) => (k === i ? Math.sin(angle / 2) : 0)).concat(Math.cos(angle / 2));
        const times = (p: number[], q: number[]) => [
            p[3] * q[0] + p[0] * q[3] + p[1] * q[2] - p[2] * q[1], p[3] * q[1] + p[1] * q[3] + p[2] * q[0] - p[0] * q[2],
            p[3] * q[2] + p[2] * q[3] + p[0] * q[1] - p[1] * q[0], p[3] * q[3] - p[0] * q[0] - p[1] * q[1] - p[2] * q[2]];
        const of = (x: number, y: number, z: number) => times(times(axis(x, 0), axis(y, 1)), axis(z, 2));
        const q = of(a, b, c), again = of(...anglesOf(q[0], q[1], q[2], q[3]));
        const [m, n] = [q, again].map((r) => {
            const matrix = new Array<number>(12);
            fromParts(r, [1, 1, 1], [0, 0, 0], matrix, 0);
            return matrix;
        });
        m.forEach((v, i) => assert.ok(Math.abs(v - n[i]) < 1e-6, `${a} ${b} ${c}`));
    }
});

test("the clock steps by frames, loops by the overshoot and stops at the end without", () => {
    const clock = new Clock(1, 3, 10);
    clock.set(1.27);
    clock.step(1);
    assert.ok(Math.abs(clock.time.value - 1.3) < 1e-9);
    clock.set(1.27);
    clock.step(-1);
    assert.ok(Math.abs(clock.time.value - 1.2) < 1e-9);
    clock.set(2.9);
    clock.play();
    clock.speed.value = 2;
    clock.tick(0.15);
    assert.ok(Math.abs(clock.time.value - 1.2) < 1e-9);
    clock.loop.value = false;
    clock.tick(5);
    assert.deepEqual([clock.time.value, clock.playing.value], [3, false]);
    clock.play();
    assert.equal(clock.time.value, 1);
    const still = new Clock(2, 2, 30);
    still.play();
    assert.equal(still.playing.value, false);
});

test("two scenes are compared by the paths of their nodes, in world space over time", () => {
    const first = sceneOf(folder.pageOf("walk.vr2"));
    assert.equal(folder.run("export", example, "-o", "slow.vr2", "--sample-at", "10").code, 0);
    const second = sceneOf(folder.pageOf("slow.vr2"));
    const { pairs, onlyFirst } = pairsOf(first, second);
    assert.deepEqual([pairs.length, onlyFirst], [first.nodeCount, []]);
    const comparison = new Comparison(first, second, pairs);
    while (!comparison.work(50));
    const [worst] = comparison.worst(1);
    const at = (file: string, node: number) => folder.pose(file, worst.time).nodes[node].world_matrix.filter((_, i) => i % 4 === 3) as number[];
    const p = at("walk.vr2", worst.pair.first), q = at("slow.vr2", worst.pair.second);
    assert.ok(worst.distance > 1e-3);
    assert.ok(Math.abs(worst.distance - Math.hypot(p[0] - q[0], p[1] - q[1], p[2] - q[2])) < 1e-5);
    assert.ok(Math.abs(Math.max(...comparison.curveOf(worst.pair)) - worst.distance) < 1e-9);
    const same = new Comparison(first, first, pairsOf(first, first).pairs);
    while (!same.work(50));
    assert.deepEqual(same.worst(1), []);
});

test("names of sides tell which way a body faces", () => {
    const scene = sceneOf(folder.pageOf("walk.vr2"));
    const pose = new Pose(scene);
    pose.setTime(0);
    // The example walks towards its own front, which is the view's.
    assert.ok(Math.abs(facingOf(pose)!) < 0.3);
    assert.equal(facingOf(new Pose(sceneOf(folder.pageOf("many.vr2")) as Scene)), null);
});

test("a pointer finds the nearest joint, then bones, and a ray the nearest triangle", () => {
    const places: [number, number, number][] = [[0, 0, 0], [100, 0, 0], [100, 0, 0], [300, 0, 0]];
    const joints = { count: 4, placeOf: (i: number) => places[i], links: [[0, 1], [2, 3]] as const };
    const project = (x: number, y: number, z: number) => (z < 0 ? null : ([x, y, z] as [number, number, number]));
    assert.equal(pickJoint(joints, project, 4, 3, 12), 0);
    assert.equal(pickJoint(joints, project, 101, 0, 12), 2);
    assert.equal(pickJoint(joints, project, 200, 5, 12), 2);
    assert.equal(pickJoint(joints, project, 200, 50, 12), -1);
    const positions = [-1, -1, 5, 1, -1, 5, 0, 1, 5, -1, -1, 3, 1, -1, 3, 0, 1, 3, NaN, 0, 0, 1, 1, 1, 0, 0, 1];
    assert.equal(rayHits([0, 0, 0], [0, 0, 1], positions, Uint32Array.of(0, 1, 2, 3, 5, 4, 6, 7, 8)), 3);
    assert.equal(rayHits([5, 0, 0], [0, 0, 1], positions, Uint32Array.of(0, 1, 2)), Infinity);
});
