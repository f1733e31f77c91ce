/** Affine maps as twelve numbers, three rows of four, in arrays that may hold many. */

export type Numbers = Float32Array | Float64Array | number[];

export const identity: readonly number[] = [1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0];

/** out = a b, the map that applies b first. `out` may be either. */
export function multiply(a: Numbers, ai: number, b: Numbers, bi: number, out: Numbers, oi: number): void {
    for (let row = 0; row < 12; row += 4) {
        const a0 = a[ai + row], a1 = a[ai + row + 1], a2 = a[ai + row + 2], a3 = a[ai + row + 3];
        scratch[row] = a0 * b[bi] + a1 * b[bi + 4] + a2 * b[bi + 8];
        scratch[row + 1] = a0 * b[bi + 1] + a1 * b[bi + 5] + a2 * b[bi + 9];
        scratch[row + 2] = a0 * b[bi + 2] + a1 * b[bi + 6] + a2 * b[bi + 10];
        scratch[row + 3] = a0 * b[bi + 3] + a1 * b[bi + 7] + a2 * b[bi + 11] + a3;
    }
    for (let i = 0; i < 12; ++i) out[oi + i] = scratch[i];
}
const scratch = new Float64Array(12);

/** By cofactors over the determinant; a determinant of 0 gives what isn't finite. */
export function invert(m: Numbers, mi: number, out: Numbers, oi: number): void {
    const a = m[mi], b = m[mi + 1], c = m[mi + 2], d = m[mi + 4], e = m[mi + 5], f = m[mi + 6];
    const g = m[mi + 8], h = m[mi + 9], k = m[mi + 10];
    const x = m[mi + 3], y = m[mi + 7], z = m[mi + 11];
    const c0 = e * k - f * h, c1 = f * g - d * k, c2 = d * h - e * g;
    const s = 1 / (a * c0 + b * c1 + c * c2);
    const r = [c0 * s, (c * h - b * k) * s, (b * f - c * e) * s, c1 * s, (a * k - c * g) * s, (c * d - a * f) * s,
        c2 * s, (b * g - a * h) * s, (a * e - b * d) * s];
    for (let row = 0; row < 3; ++row) {
        const [p, q, t] = r.slice(row * 3, row * 3 + 3);
        out[oi + row * 4] = p;
        out[oi + row * 4 + 1] = q;
        out[oi + row * 4 + 2] = t;
        out[oi + row * 4 + 3] = -(p * x + q * y + t * z);
    }
}

/** The 3 by 3 part transposed, without a translation. */
export function transposedRotation(m: Numbers, mi: number, out: Numbers, oi: number): void {
    for (let row = 0; row < 3; ++row) {
        for (let column = 0; column < 3; ++column) out[oi + row * 4 + column] = m[mi + column * 4 + row];
        out[oi + row * 4 + 3] = 0;
    }
}

/** The rotation matrix of (x, y, z, w), with no normalisation first, each axis by its scale, and the place. */
export function fromParts(q: Numbers, scale: Numbers, position: Numbers, out: Numbers, oi: number): void {
    const [x, y, z, w] = q as number[];
    const [sx, sy, sz] = scale as number[];
    out[oi] = (1 - 2 * y * y - 2 * z * z) * sx;
    out[oi + 1] = (2 * x * y - 2 * w * z) * sy;
    out[oi + 2] = (2 * x * z + 2 * w * y) * sz;
    out[oi + 3] = position[0];
    out[oi + 4] = (2 * x * y + 2 * w * z) * sx;
    out[oi + 5] = (1 - 2 * x * x - 2 * z * z) * sy;
    out[oi + 6] = (2 * y * z - 2 * w * x) * sz;
    out[oi + 7] = position[1];
    out[oi + 8] = (2 * x * z - 2 * w * y) * sx;
    out[oi + 9] = (2 * y * z + 2 * w * x) * sy;
    out[oi + 10] = (1 - 2 * x * x - 2 * y * y) * sz;
    out[oi + 11] = position[2];
}

/** Angles x, y, z in radians of the rotation Rx Ry Rz that (x, y, z, w) stands for. */
export function anglesOf(x: number, y: number, z: number, w: number): [number, number, number] {
    const sine = Math.max(-1, Math.min(1, 2 * (x * z + w * y)));
    if (Math.abs(sine) > 0.999999) return [Math.atan2(2 * (y * z + w * x), 1 - 2 * (x * x + z * z)), Math.asin(sine), 0];
    return [
        Math.atan2(-2 * (y * z - w * x), 1 - 2 * (x * x + y * y)),
        Math.asin(sine),
        Math.atan2(-2 * (x * y - w * z), 1 - 2 * (y * y + z * z)),
    ];
}
