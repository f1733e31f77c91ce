/** Which way a character faces, as its joints' names tell: what is called left stands on its left. */

import type { Pose } from "./pose";

const left = /(^|[^a-z])(left|l|lf|lt)([^a-z]|$)|Left|_L|L_/;
const right = /(^|[^a-z])(right|r|rt|rg)([^a-z]|$)|Right|_R|R_/;

/**
 * The angle about the upright axis, in radians, from the view's forward axis to the way it faces, with the world as
 * it is shown: Y up, and Z of the file turned round. Null where the names tell nothing.
 */
export function facingOf(pose: Pose): number | null {
    const sum = [0, 0];
    let lefts = 0, rights = 0;
    const sides = new Map<string, [number, number]>();
    for (let i = 0; i < pose.scene.nodeCount; ++i) {
        const name = pose.scene.nameOf(i);
        const side = left.test(name) ? 1 : right.test(name) ? -1 : 0;
        if (side === 0) continue;
        const [x, , z] = pose.placeOf(i);
        if (!Number.isFinite(x + z)) continue;
        lefts += side > 0 ? 1 : 0;
        rights += side < 0 ? 1 : 0;
        sides.set(`${side}${i}`, [x, -z]);
    }
    if (lefts === 0 || rights === 0) return null;
    for (const [key, [x, z]] of sides) {
        const weight = key.startsWith("-") ? -1 / rights : 1 / lefts;
        sum[0] += x * weight;
        sum[1] += z * weight;
    }
    if (Math.hypot(sum[0], sum[1]) < 1e-4) return null;
    // Forward is left cross up: (lx, 0, lz) x (0, 1, 0) = (-lz, 0, lx).
    return Math.atan2(-sum[1], sum[0]);
}
