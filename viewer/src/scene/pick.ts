/** What lies under a pointer. */

import type { Numbers } from "./matrix";

/** A place on the screen, in pixels, and how far behind it lies; null for what is behind the viewer or nowhere. */
export type Project = (x: number, y: number, z: number) => [x: number, y: number, depth: number] | null;

export interface Joints {
    count: number;
    placeOf(node: number): [number, number, number];
    links: readonly (readonly [parent: number, child: number])[];
}

/** The joint within `reach` pixels that lies nearest, or else the joint at the head of such a bone; -1 for none. */
export function pickJoint(joints: Joints, project: Project, x: number, y: number, reach: number): number {
    const seen = Array.from({ length: joints.count }, (_, i) => project(...joints.placeOf(i)));
    let best = -1, least = reach;
    seen.forEach((p, i) => {
        if (!p) return;
        const distance = Math.hypot(p[0] - x, p[1] - y);
        // Of joints in one place the later one is the deeper in the tree.
        if (distance <= least) [best, least] = [i, distance];
    });
    if (best >= 0) return best;
    least = reach * 0.7;
    for (const [parent, child] of joints.links) {
        const a = seen[parent], b = seen[child];
        if (!a || !b) continue;
        const distance = distanceToPiece(x, y, a, b);
        if (distance < least) [best, least] = [parent, distance];
    }
    return best;
}

function distanceToPiece(x: number, y: number, a: readonly number[], b: readonly number[]): number {
    const dx = b[0] - a[0], dy = b[1] - a[1];
    const length = dx * dx + dy * dy;
    const t = length > 0 ? Math.max(0, Math.min(1, ((x - a[0]) * dx + (y - a[1]) * dy) / length)) : 0;
    return Math.hypot(a[0] + t * dx - x, a[1] + t * dy - y);
}

/** How far along the ray the first triangle lies; Infinity for none (Möller and Trumbore 1997). */
export function rayHits(origin: Numbers, way: Numbers, positions: Numbers, triangles: Uint32Array): number {
    let nearest = Infinity;
    for (let t = 0; t < triangles.length; t += 3) {
        const a = triangles[t] * 3, b = triangles[t + 1] * 3, c = triangles[t + 2] * 3;
        const ux = positions[b] - positions[a], uy = positions[b + 1] - positions[a + 1], uz = positions[b + 2] - positions[a + 2];
        const vx = positions[c] - positions[a], vy = positions[c + 1] - positions[a + 1], vz = positions[c + 2] - positions[a + 2];
        const px = way[1] * vz - way[2] * vy, py = way[2] * vx - way[0] * vz, pz = way[0] * vy - way[1] * vx;
        const determinant = ux * px + uy * py + uz * pz;
        if (determinant === 0) continue;
        const tx = origin[0] - positions[a], ty = origin[1] - positions[a + 1], tz = origin[2] - positions[a + 2];
        const s = (tx * px + ty * py + tz * pz) / determinant;
        if (!(s >= 0 && s <= 1)) continue;
        const qx = ty * uz - tz * uy, qy = tz * ux - tx * uz, qz = tx * uy - ty * ux;
        const r = (way[0] * qx + way[1] * qy + way[2] * qz) / determinant;
        if (!(r >= 0 && s + r <= 1)) continue;
        const distance = (vx * qx + vy * qy + vz * qz) / determinant;
        if (distance > 0 && distance < nearest) nearest = distance;
    }
    return nearest;
}
