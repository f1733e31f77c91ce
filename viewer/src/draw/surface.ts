/** How surfaces look: a soft light from above and a key from the viewer's left, on both sides of a face. */

import { Color, DataTexture, DoubleSide, ShaderMaterial, Texture } from "three";
import { lens, seenPlace } from "./lens";

const vertexShader = `
    #ifdef SKINNED
    attribute vec4 bonesA;
    attribute vec4 weightsA;
    #ifdef MANY
    attribute vec4 bonesB;
    attribute vec4 weightsB;
    #endif
    uniform sampler2D palette;
    uniform vec2 paletteSize;
    vec4 rowAt(float bone, float row) {
        float at = bone * 6.0 + row;
        float y = floor((at + 0.5) / paletteSize.x);
        return texture2D(palette, (vec2(at - y * paletteSize.x, y) + 0.5) / paletteSize);
    }
    void add(vec4 bones, vec4 weights, inout vec4 px, inout vec4 py, inout vec4 pz,
             inout vec4 nx, inout vec4 ny, inout vec4 nz) {
        for (int i = 0; i < 4; ++i) {
            float bone = i == 0 ? bones.x : i == 1 ? bones.y : i == 2 ? bones.z : bones.w;
            float weight = i == 0 ? weights.x : i == 1 ? weights.y : i == 2 ? weights.z : weights.w;
            if (weight == 0.0) continue;
            px += rowAt(bone, 0.0) * weight;
            py += rowAt(bone, 1.0) * weight;
            pz += rowAt(bone, 2.0) * weight;
            #ifdef SCALED
            nx += rowAt(bone, 3.0) * weight;
            ny += rowAt(bone, 4.0) * weight;
            nz += rowAt(bone, 5.0) * weight;
            #endif
        }
    }
    #endif
    #ifdef COLOURED
    attribute vec4 vertexColour;
    varying vec3 vColour;
    #endif
    #ifdef MAPPED
    varying vec2 vUv;
    #endif
    varying vec3 vNormal;
    void main() {
        vec4 place = vec4(position, 1.0);
        vec3 turned = normal;
        #ifdef SKINNED
        vec4 px = vec4(0.0), py = vec4(0.0), pz = vec4(0.0), nx = vec4(0.0), ny = vec4(0.0), nz = vec4(0.0);
        add(bonesA, weightsA, px, py, pz, nx, ny, nz);
        #ifdef MANY
        add(bonesB, weightsB, px, py, pz, nx, ny, nz);
        #endif
        #ifndef SCALED
        nx = px; ny = py; nz = pz;
        #endif
        turned = vec3(dot(nx.xyz, normal), dot(ny.xyz, normal), dot(nz.xyz, normal));
        place = vec4(dot(px, place), dot(py, place), dot(pz, place), 1.0);
        #endif
        #ifdef COLOURED
        vColour = vertexColour.rgb;
        #endif
        #ifdef MAPPED
        vUv = uv;
        #endif
        vNormal = mat3(modelViewMatrix) * turned;
        gl_Position = projectionMatrix * (modelViewMatrix * place);
    }`;

const fragmentShader = `${seenPlace}
    uniform vec3 colour;
    uniform vec3 glow;
    uniform float opacity;
    #ifdef COLOURED
    varying vec3 vColour;
    #endif
    #ifdef MAPPED
    varying vec2 vUv;
    uniform sampler2D picture;
    // Where the picture lies: two rows of a matrix, and 0 for its edge beyond it, 1 repeated, 2 mirrored.
    uniform vec3 alongU, alongV;
    uniform vec2 beyond;
    float within(float x, float mode) {
        return mode == 0.0 ? clamp(x, 0.0, 1.0) : mode == 2.0 ? abs(x - 2.0 * floor(0.5 * x + 0.5)) : x;
    }
    #endif
    varying vec3 vNormal;
    void main() {
        vec3 base = colour;
        float alpha = opacity;
        #ifdef COLOURED
        base *= vColour;
        #endif
        #ifdef MAPPED
        vec3 uv1 = vec3(vUv, 1.0);
        vec4 texel = texture2D(picture, vec2(within(dot(alongU, uv1), beyond.x), within(dot(alongV, uv1), beyond.y)));
        base *= texel.rgb;
        #ifdef CLEAR
        alpha *= texel.a;
        if (alpha < 0.02) discard;
        #endif
        #endif
        #ifdef UNLIT
        gl_FragColor = vec4(base, alpha);
        #else
        float size = dot(vNormal, vNormal);
        vec3 place = seenPlace();
        vec3 flat_ = normalize(cross(dFdx(place), dFdy(place)));
        vec3 n = size > 1e-12 && size < 1e12 ? vNormal * inversesqrt(size) : flat_;
        vec3 eye = normalize(-place);
        if (dot(flat_, eye) < 0.0) flat_ = -flat_;
        if (dot(n, flat_) < 0.0) n = -n;
        float sky = 0.5 + 0.5 * n.y;
        float key = max(0.0, dot(n, normalize(vec3(-0.45, 0.65, 0.6))));
        float fill = max(0.0, dot(n, normalize(vec3(0.7, 0.1, 0.5))));
        float rim = pow(1.0 - max(0.0, dot(n, eye)), 3.0);
        float shine = pow(max(0.0, dot(n, normalize(normalize(vec3(-0.45, 0.65, 0.6)) + eye))), 32.0);
        vec3 light = mix(vec3(0.27, 0.26, 0.28), vec3(0.5, 0.53, 0.58), sky)
            + vec3(0.62, 0.59, 0.54) * key + vec3(0.13, 0.15, 0.2) * fill;
        gl_FragColor = vec4(base * light + 0.10 * shine + 0.10 * rim * sky + glow, alpha);
        #endif
    }`;

export interface SurfaceOptions {
    colour: Color;
    opacity: number;
    picture: Texture | null;
    /** Offset, repeat, rotation and what is beyond the picture, as the document has them. */
    placement?: number[];
    /** Whether the picture's clear points are holes. */
    clear?: boolean;
    coloured: boolean;
    /** Of a skinned mesh. */
    skin: { palette: DataTexture; many: boolean; scaled: boolean } | null;
    wire?: boolean;
}

/** A picture's place as the shader takes it: repeated and shifted, then turned about the middle. */
function placed([offsetU, offsetV, repeatU, repeatV, turn, beyondU, beyondV]: number[]): Record<string, { value: number[] }> {
    const c = Math.cos(turn), s = Math.sin(turn), u = offsetU - 0.5, v = offsetV - 0.5;
    return {
        alongU: { value: [c * repeatU, -s * repeatV, c * u - s * v + 0.5] },
        alongV: { value: [s * repeatU, c * repeatV, s * u + c * v + 0.5] },
        beyond: { value: [beyondU, beyondV] },
    };
}

export function makeSurface(options: SurfaceOptions): ShaderMaterial {
    const { picture, skin } = options;
    const defines: Record<string, number> = {};
    if (options.coloured) defines.COLOURED = 1;
    if (picture) defines.MAPPED = 1;
    if (options.clear) defines.CLEAR = 1;
    if (options.wire) defines.UNLIT = 1;
    if (skin) defines.SKINNED = 1;
    if (skin?.many) defines.MANY = 1;
    if (skin?.scaled) defines.SCALED = 1;
    const material = new ShaderMaterial({
        vertexShader, fragmentShader, defines, side: DoubleSide, wireframe: options.wire === true,
        extensions: { derivatives: true } as never,
        transparent: options.opacity < 1,
        uniforms: {
            colour: { value: options.colour },
            glow: { value: new Color(0) },
            opacity: { value: options.opacity },
            picture: { value: picture },
            ...placed(options.placement ?? [0, 0, 1, 1, 0, 1, 1]),
            lens,
            palette: { value: skin?.palette ?? null },
            paletteSize: { value: skin ? [skin.palette.image.width, skin.palette.image.height] : [1, 1] },
        },
    });
    if (!options.wire) {
        // Wires over the same face win.
        material.polygonOffset = true;
        material.polygonOffsetFactor = 1;
        material.polygonOffsetUnits = 1;
    }
    return material;
}
