/**
 * What the tool puts into a page: a JSON text for the structure of a scene and one block of 32-bit words for its
 * arrays, little-endian, in which the structure points by words. `viewer/page/scene_pack.h` is the writing side.
 */

/** First word and number of elements. */
export type Span = readonly [first: number, count: number];

/** JSON has no number for what isn't finite: such are told as "nan", "inf" and "-inf". */
export type Told = number | "nan" | "inf" | "-inf";

export interface Finding {
    record: string;
    name: string;
    field: string;
    value: string;
    complaint: string;
}

export interface NodeDocument {
    name: string;
    /** The index as the file tells it. */
    parent: number;
    /** Tracks of position, rotation and scale; -1 for none. */
    tracks: [number, number, number];
    /** The world matrix of a node without tracks, where it isn't the identity: three rows of four. */
    matrix?: Told[];
}

export type MeshKind = "rigid" | "weighted" | "morph" | "anim";

export interface MeshDocument {
    kind: MeshKind;
    /** "rigids[2]", as findings call it. */
    record: string;
    name: string;
    node: number;
    vertices: number;
    /** Three floats a vertex: the place where nothing deforms it, and its normal. */
    positions: Span;
    normals: Span;
    /** Four bytes a vertex. */
    colours?: Span;
    /** Two floats a vertex. */
    uvs?: Span;
    /** Three indices a triangle, group behind group. */
    triangles: Span;
    groups: { first: number; count: number; material: number }[];
    /** Of a weighted mesh: where each vertex's influences begin, one more than vertices; bones; weights. */
    influenceStarts?: Span;
    influenceBones?: Span;
    influenceWeights?: Span;
    /** Of a morph mesh: names and weight tracks; where each vertex's offsets begin; targets; three floats each. */
    targets?: { name: string; track: number }[];
    offsetStarts?: Span;
    offsetTargets?: Span;
    offsets?: Span;
    /** Of an animated mesh: tracks of position, normal and colour of each vertex, -1 for none. */
    vertexTracks?: Span;
}

export interface MaterialDocument {
    name: string;
    /** Ambient colour and the three further ones; -1 for none. */
    colours: number[];
    transparency: number;
    /** Index of a picture, -1 for none. */
    picture: number;
    /** Of its place: offset and repeat along U and V, rotation, and beyond it 0 its edge, 1 repeated, 2 mirrored. */
    placement?: number[];
    /** Its clear points are holes in the surface. */
    clear?: boolean;
}

export interface PictureDocument {
    name: string;
    /** Where its bytes are: first word and number of bytes. */
    bytes?: Span;
    type?: string;
    /** Why it isn't here. */
    missing?: string;
}

export interface ObjectDocument {
    kind: string;
    record: string;
    name: string;
    node: number;
    /** For an instance of a mesh: which. */
    mesh?: number;
}

export interface SceneDocument {
    file: string;
    bytes: number;
    version: Told;
    creator: string;
    record: { user: string; exportedAt: string; exportedAs: string; source: string; forced: boolean; text: string };
    start: Told;
    end: Told;
    rate: Told;
    counts: [string, number][];
    chunks: [name: string, records: number, bytes: number][];
    trackCount: number;
    keyCount: number;
    findings: Finding[];
    findingCount: number;
    /** Seven words a track: kind, cursor index, cursor fraction, first time, times, first value, values. */
    tracks: Span;
    nodes: NodeDocument[];
    /** Further named tracks of a node. */
    properties: { node: number; name: string; track: number }[];
    meshes: MeshDocument[];
    materials: MaterialDocument[];
    pictures: PictureDocument[];
    objects: ObjectDocument[];
    /** Triangles whose vertices aren't there. */
    badTriangles: number;
}

export function toldNumber(value: Told): number {
    if (typeof value === "number") return value;
    return value === "inf" ? Infinity : value === "-inf" ? -Infinity : NaN;
}

/** Bytes of a base64 text. */
export function bytesOfBase64(text: string): Uint8Array {
    const binary = atob(text);
    const bytes = new Uint8Array(binary.length);
    for (let i = 0; i < binary.length; ++i) bytes[i] = binary.charCodeAt(i);
    return bytes;
}

/** The block of words, seen as each of the types that lie in it. */
export class Words {
    readonly floats: Float32Array;
    readonly whole: Uint32Array;
    readonly bytes: Uint8Array;

    constructor(bytes: Uint8Array) {
        const { buffer, byteOffset, byteLength } = bytes;
        this.bytes = bytes;
        this.floats = new Float32Array(buffer, byteOffset, byteLength >> 2);
        this.whole = new Uint32Array(buffer, byteOffset, byteLength >> 2);
    }
    floatsOf(span: Span): Float32Array {
        return this.floats.subarray(span[0], span[0] + span[1]);
    }
    wholeOf(span: Span): Uint32Array {
        return this.whole.subarray(span[0], span[0] + span[1]);
    }
    bytesOf(span: Span): Uint8Array {
        return this.bytes.subarray(span[0] * 4, span[0] * 4 + span[1]);
    }
}
