/** The meshes of a scene on the screen. Skinning is left to the graphics card wherever it can do it. */

import {
    BufferAttribute, BufferGeometry, Color, DataTexture, DynamicDrawUsage, FloatType, Group, LinearFilter,
    LinearMipmapLinearFilter, Matrix4, Mesh, NearestFilter, RGBAFormat, RepeatWrapping, ShaderMaterial, Texture,
} from "three";
import type { MeshDocument } from "../scene/document";
import { Deformer, Palette } from "../scene/deform";
import type { Pose } from "../scene/pose";
import type { Scene } from "../scene/scene";
import { makeSurface } from "./surface";

const nodesARow = 128;
const rowsANode = 6;

/** Of a vertex with more influences than attributes hold the page works the places out itself. */
const mostOnCard = 8;

interface Influences {
    bones: Float32Array;
    weights: Float32Array;
    most: number;
}

/** Bones and weights of each vertex in `mostOnCard` columns. */
function influencesOf(scene: Scene, mesh: MeshDocument): Influences {
    const starts = scene.words.wholeOf(mesh.influenceStarts!), bones = scene.words.wholeOf(mesh.influenceBones!);
    const weights = scene.words.floatsOf(mesh.influenceWeights!);
    const out = { bones: new Float32Array(mesh.vertices * mostOnCard), weights: new Float32Array(mesh.vertices * mostOnCard), most: 0 };
    for (let v = 0; v < mesh.vertices; ++v) {
        let used = 0;
        for (let k = starts[v]; k < starts[v + 1]; ++k) {
            if (bones[k] >= scene.nodeCount || weights[k] === 0) continue;
            if (used < mostOnCard) {
                out.bones[v * mostOnCard + used] = bones[k];
                out.weights[v * mostOnCard + used] = weights[k];
            }
            ++used;
        }
        out.most = Math.max(out.most, used);
    }
    return out;
}

function columns(from: Float32Array, first: number): BufferAttribute {
    const count = from.length / mostOnCard;
    const out = new Float32Array(count * 4);
    for (let v = 0; v < count; ++v) for (let c = 0; c < 4; ++c) out[v * 4 + c] = from[v * mostOnCard + first + c];
    return new BufferAttribute(out, 4);
}

/** One mesh, and what is repeated of it. */
class Surface {
    readonly object: Mesh;
    readonly wire: Mesh;
    readonly onCard: boolean;
    readonly deformer: Deformer;
    readonly node: number;
    private readonly geometry = new BufferGeometry();
    private stale = true;

    constructor(scene: Scene, readonly index: number, readonly document: MeshDocument, look: MeshLook) {
        this.deformer = new Deformer(scene, document);
        this.node = document.node < scene.nodeCount ? document.node : -1;
        const influences = document.kind === "weighted" && look.palette ? influencesOf(scene, document) : null;
        this.onCard = influences !== null && influences.most <= mostOnCard;
        const skin = this.onCard ? { palette: look.palette!, many: influences!.most > 4, scaled: look.scaled } : null;
        this.build(scene, influences);
        const materials = document.groups.map((group) => look.materialOf(group.material, document, skin));
        this.object = new Mesh(this.geometry, materials as never);
        const wire = makeSurface({ colour: look.wireColour, opacity: 0.35, picture: null, coloured: false, skin, wire: true });
        this.wire = new Mesh(this.geometry, wire);
        for (const mesh of [this.object, this.wire]) {
            mesh.frustumCulled = false;
            mesh.matrixAutoUpdate = false;
        }
    }

    private build(scene: Scene, influences: Influences | null): void {
        const { words } = scene;
        const { document, geometry, deformer } = this;
        const own = (values: Float32Array, width: number) => {
            const attribute = new BufferAttribute(values, width);
            if (document.kind !== "rigid" && !this.onCard) attribute.setUsage(DynamicDrawUsage);
            return attribute;
        };
        if (this.onCard) {
            geometry.setAttribute("position", own(words.floatsOf(document.positions), 3));
            geometry.setAttribute("normal", own(words.floatsOf(document.normals), 3));
            geometry.setAttribute("bonesA", columns(influences!.bones, 0));
            geometry.setAttribute("weightsA", columns(influences!.weights, 0));
            if (influences!.most > 4) {
                geometry.setAttribute("bonesB", columns(influences!.bones, 4));
                geometry.setAttribute("weightsB", columns(influences!.weights, 4));
            }
        } else {
            geometry.setAttribute("position", own(deformer.positions, 3));
            geometry.setAttribute("normal", own(deformer.normals, 3));
        }
        if (document.colours) geometry.setAttribute("vertexColour", new BufferAttribute(words.bytesOf(document.colours), 4, true));
        else if (deformer.colours) geometry.setAttribute("vertexColour", own(deformer.colours, 4));
        if (document.uvs) geometry.setAttribute("uv", new BufferAttribute(words.floatsOf(document.uvs), 2));
        geometry.setIndex(new BufferAttribute(words.wholeOf(document.triangles), 1));
        document.groups.forEach(({ first, count }, i) => geometry.addGroup(first * 3, count * 3, i));
    }

    /** The mesh is somewhere else, or shaped otherwise, than when it was last worked out here. */
    follow(pose: Pose, palette: Palette | null, matrix: Matrix4): void {
        this.stale = true;
        if (!this.onCard) this.shape(pose, palette);
        for (const mesh of [this.object, this.wire]) {
            mesh.matrix.copy(matrix);
            mesh.matrixWorldNeedsUpdate = true;
        }
    }
    /** Positions and normals at the time of the pose, for those who ask for numbers. */
    shape(pose: Pose, palette: Palette | null): Deformer {
        if (!this.stale) return this.deformer;
        this.stale = false;
        if (this.document.kind === "rigid") return this.deformer;
        this.deformer.follow(pose, palette);
        if (!this.onCard) {
            for (const name of ["position", "normal", "vertexColour"]) {
                const attribute = this.geometry.getAttribute(name) as BufferAttribute | undefined;
                if (attribute) attribute.needsUpdate = true;
            }
        }
        return this.deformer;
    }
}

interface MeshLook {
    palette: DataTexture | null;
    scaled: boolean;
    wireColour: Color;
    materialOf(material: number, mesh: MeshDocument, skin: Parameters<typeof makeSurface>[0]["skin"]): ShaderMaterial;
}

export class Meshes {
    readonly group = new Group();
    readonly wires = new Group();
    readonly surfaces: Surface[] = [];
    private readonly instances: { surface: Surface; object: Mesh; wire: Mesh; node: number }[] = [];
    private readonly palette: Palette | null = null;
    private readonly paletteTexture: DataTexture | null = null;
    private readonly pictures: (Texture | null)[];
    private readonly animated: { material: ShaderMaterial; number: number }[] = [];
    private readonly clay = new Color(0.78, 0.76, 0.73);
    private readonly wireColour = new Color(0);

    constructor(private readonly scene: Scene, private readonly tint: Color | null, private readonly opacity: number,
        onCard: boolean, redraw: () => void) {
        this.pictures = scene.document.pictures.map(({ bytes, type }) => {
            if (!bytes || tint) return null;
            return pictureOf(new Blob([scene.words.bytesOf(bytes) as never], { type }), redraw);
        });
        if (scene.document.meshes.some(({ kind }) => kind === "weighted")) this.palette = new Palette(scene, toldStart(scene));
        if (this.palette && onCard) {
            const rows = Math.ceil(scene.nodeCount / nodesARow) || 1;
            const numbers = new Float32Array(nodesARow * rowsANode * rows * 4);
            this.paletteTexture = new DataTexture(numbers as never, nodesARow * rowsANode, rows, RGBAFormat, FloatType);
            this.paletteTexture.minFilter = this.paletteTexture.magFilter = NearestFilter;
        }
        const look: MeshLook = {
            palette: this.paletteTexture,
            scaled: scene.document.nodes.some(({ tracks, matrix }) => tracks[2] >= 0 || matrix !== undefined),
            wireColour: this.wireColour,
            materialOf: (material, mesh, skin) => this.materialOf(material, mesh, skin),
        };
        scene.document.meshes.forEach((mesh, i) => {
            const surface = new Surface(scene, i, mesh, look);
            this.surfaces.push(surface);
            this.group.add(surface.object);
            this.wires.add(surface.wire);
        });
        for (const { mesh, node } of scene.document.objects) {
            if (mesh === undefined) continue;
            const surface = this.surfaces[mesh];
            const object = surface.object.clone(), wire = surface.wire.clone();
            this.instances.push({ surface, object, wire, node: node < scene.nodeCount ? node : -1 });
            this.group.add(object);
            this.wires.add(wire);
        }
    }

    get isEmpty(): boolean {
        return this.surfaces.length === 0;
    }
    set wire(colour: Color) {
        for (const { wire } of this.surfaces) ((wire.material as ShaderMaterial).uniforms.colour.value as Color).copy(colour);
    }

    follow(pose: Pose): void {
        this.palette?.follow(pose);
        if (this.palette && this.paletteTexture) {
            const to = this.paletteTexture.image.data as unknown as Float32Array;
            for (let i = 0; i < this.scene.nodeCount; ++i) {
                to.set(this.palette.places.subarray(i * 12, i * 12 + 12), i * 24);
                to.set(this.palette.normals.subarray(i * 12, i * 12 + 12), i * 24 + 12);
            }
            this.paletteTexture.needsUpdate = true;
        }
        for (const surface of this.surfaces) surface.follow(pose, this.palette, this.matrixOf(surface, surface.node, pose));
        for (const { surface, object, wire, node } of this.instances) {
            for (const mesh of [object, wire]) {
                mesh.matrix.copy(this.matrixOf(surface, node, pose));
                mesh.matrixWorldNeedsUpdate = true;
            }
        }
        for (const { material, number } of this.animated) this.colour(material, number, pose);
    }
    /** A skinned mesh lies in the world; any other in its node's space. */
    matrixOf(surface: Surface, node: number, pose: Pose): Matrix4 {
        const m = new Matrix4();
        if (surface.document.kind === "weighted" || node < 0) return m;
        const w = pose.world, i = node * 12;
        return m.set(w[i], w[i + 1], w[i + 2], w[i + 3], w[i + 4], w[i + 5], w[i + 6], w[i + 7], w[i + 8], w[i + 9], w[i + 10],
            w[i + 11], 0, 0, 0, 1);
    }
    shape(surface: Surface, pose: Pose): Deformer {
        return surface.shape(pose, this.palette);
    }
    /** Every mesh that stands somewhere, with the map to the file's world. */
    *placed(pose: Pose): Generator<{ surface: Surface; node: number; matrix: Matrix4 }> {
        for (const surface of this.surfaces) yield { surface, node: surface.node, matrix: this.matrixOf(surface, surface.node, pose) };
        for (const { surface, node } of this.instances) yield { surface, node, matrix: this.matrixOf(surface, node, pose) };
    }
    glow(nodes: readonly number[], colour: Color): void {
        for (const surface of this.surfaces) {
            const lit = surface.node >= 0 && nodes.includes(surface.node);
            for (const material of surface.object.material as unknown as ShaderMaterial[]) {
                (material.uniforms.glow.value as Color).copy(lit ? colour : black);
            }
        }
    }

    private materialOf(number: number, mesh: MeshDocument, skin: Parameters<typeof makeSurface>[0]["skin"]): ShaderMaterial {
        const document = this.scene.document.materials[number];
        const picture = (document && this.pictures[document.picture]) ?? null;
        const coloured = !this.tint && (mesh.colours !== undefined || (mesh.kind === "anim" && this.hasColours(mesh)));
        const material = makeSurface({
            colour: (this.tint ?? (picture || coloured ? new Color(1, 1, 1) : this.clay)).clone(), opacity: this.opacity,
            picture: mesh.uvs ? picture : null, placement: document?.placement, clear: document?.clear, coloured, skin,
        });
        if (document && !this.tint) this.animated.push({ material, number });
        return material;
    }
    private hasColours(mesh: MeshDocument): boolean {
        return this.scene.words.wholeOf(mesh.vertexTracks!).some((track, i) => i % 3 === 2 && track !== 0xffffffff);
    }

    /** The first of the further colours, or the ambient one where that is more than black; else plain clay. */
    private colour(material: ShaderMaterial, number: number, pose: Pose): void {
        const { colours, transparency } = this.scene.document.materials[number];
        const read = (track: number | undefined): number[] | null => {
            if (track === undefined || track < 0) return null;
            const out = [0, 0, 0, 0];
            pose.cursors.setTime(track, pose.time);
            pose.cursors.value(track, out);
            return out.every(Number.isFinite) ? out : null;
        };
        const ambient = read(colours[0]), further = read(colours[1]);
        const shown = further ?? (ambient && Math.max(ambient[0], ambient[1], ambient[2]) > 0.02 ? ambient : null);
        if (shown && !material.uniforms.picture.value) (material.uniforms.colour.value as Color).setRGB(shown[0], shown[1], shown[2]);
        // 1 is what exports say of opaque lamberts, too: only what lies between is surely meant.
        const t = transparency < 0 ? 0 : read(transparency)?.[0] ?? 0;
        const opacity = t > 0 && t < 1 ? Math.max(0.15, 1 - t) : 1;
        material.uniforms.opacity.value = opacity;
        material.transparent = opacity < 1;
        material.depthWrite = opacity === 1;
    }
}

const black = new Color(0);

function toldStart(scene: Scene): number {
    const { start } = scene.document;
    return typeof start === "number" ? start : scene.start;
}

function pictureOf(blob: Blob, redraw: () => void): Texture {
    const texture = new Texture();
    const image = new Image();
    const address = URL.createObjectURL(blob);
    image.onload = () => {
        texture.image = image;
        texture.wrapS = texture.wrapT = RepeatWrapping;
        texture.magFilter = LinearFilter;
        texture.minFilter = LinearMipmapLinearFilter;
        texture.anisotropy = 4;
        texture.needsUpdate = true;
        URL.revokeObjectURL(address);
        redraw();
    };
    image.src = address;
    return texture;
}
