/** What stands behind everything. Drawn here, since a picture that lets the page's own shine through costs the browser more. */

import { BufferGeometry, Color, Float32BufferAttribute, Mesh, ShaderMaterial, Vector2 } from "three";

const vertexShader = `
    void main() {
        gl_Position = vec4(position.xy, 1.0, 1.0); // as far as depth goes
    }`;

const fragmentShader = `
    uniform vec3 sky;
    uniform vec3 haze;
    uniform vec2 pixels;
    void main() {
        vec2 away = (gl_FragCoord.xy / pixels - vec2(0.5, 0.75)) / vec2(1.2, 0.9);
        gl_FragColor = vec4(mix(sky, haze, min(1.0, length(away))), 1.0);
    }`;

export class Backdrop {
    readonly object: Mesh;
    private readonly material = new ShaderMaterial({
        vertexShader, fragmentShader, depthWrite: false,
        uniforms: { sky: { value: new Color() }, haze: { value: new Color() }, pixels: { value: new Vector2(1, 1) } },
    });

    constructor() {
        const geometry = new BufferGeometry();
        geometry.setAttribute("position", new Float32BufferAttribute([-1, -1, 0, 3, -1, 0, -1, 3, 0], 3));
        this.object = new Mesh(geometry, this.material);
        this.object.frustumCulled = false;
        this.object.renderOrder = 1; // behind what is opaque, where that left room
    }
    follow(pixels: Vector2): void {
        (this.material.uniforms.pixels.value as Vector2).copy(pixels);
    }
    colour(sky: Color, haze: Color): void {
        (this.material.uniforms.sky.value as Color).copy(sky);
        (this.material.uniforms.haze.value as Color).copy(haze);
    }
}
