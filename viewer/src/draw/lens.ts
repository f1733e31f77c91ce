/**
 * Where the surface under a pixel lies in the camera's space. It follows from the pixel and its depth, so that shaders
 * needn't have it interpolated, which costs more than all else of a small triangle where the processor draws.
 */

import { PerspectiveCamera, Vector2, Vector4 } from "three";

/** A uniform that all materials share: pixels to the camera's slopes, as factors and offsets of x and y. */
export const lens = { value: new Vector4() };

export function followLens(camera: PerspectiveCamera, pixels: Vector2): void {
    const [across, , , , , up] = camera.projectionMatrix.elements;
    lens.value.set(2 / (pixels.x * across), 2 / (pixels.y * up), 1 / across, 1 / up);
}

/** For fragment shaders: `vec3 seenPlace()`. */
export const seenPlace = `
    uniform vec4 lens;
    vec3 seenPlace() {
        float depth = 1.0 / gl_FragCoord.w;
        return vec3((gl_FragCoord.xy * lens.xy - lens.zw) * depth, -depth);
    }`;
