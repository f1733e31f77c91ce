/** Scenes, pages of them, and what the tool says of them. */

import { execFileSync, spawnSync } from "node:child_process";
import { mkdtempSync, readFileSync, rmSync } from "node:fs";
import { tmpdir } from "node:os";
import { join } from "node:path";
import { SceneDocument, Words, bytesOfBase64 } from "../../viewer/src/scene/document";
import { Scene } from "../../viewer/src/scene/scene";

export const tool = process.env.VOR2_TOOL!;
export const example = join(process.env.VOR2_SOURCE_DIR!, "examples", "walking_biped.ma");

export class Folder {
    readonly path = mkdtempSync(join(tmpdir(), "vor2-page-"));
    remove(): void {
        rmSync(this.path, { recursive: true, force: true });
    }
    file(name: string): string {
        return join(this.path, name);
    }
    /** Those that make_scenes writes. */
    makeScenes(): void {
        execFileSync(process.env.VOR2_MAKE_SCENES!, [this.path]);
    }
    run(...args: string[]): { code: number | null; out: string; err: string } {
        const done = spawnSync(tool, args, { cwd: this.path, encoding: "utf8", maxBuffer: 1 << 28 });
        return { code: done.status, out: done.stdout, err: done.stderr };
    }
    /** The page of a scene, made by the tool. */
    pageOf(scene: string, ...more: string[]): string {
        const page = this.file(scene.replace(/\.vr2$/, ".html"));
        const { code, err } = this.run("view", scene, "-o", page, ...more);
        if (code !== 0) throw new Error(err);
        return page;
    }
    pose(scene: string, time: number): PoseDocument {
        return JSON.parse(this.run("pose", scene, "--time", String(time), "--json").out) as PoseDocument;
    }
}

export interface PoseDocument {
    nodes: { name: string; world_matrix: (number | string)[] }[];
    rigids: PosedMesh[];
    weighted_meshes: PosedMesh[];
    morph_meshes: PosedMesh[];
    anim_meshes: PosedMesh[];
}
export interface PosedMesh {
    name: string;
    positions: (number | string)[][];
    normals: (number | string)[][];
}

/** The scene that stands in a page, read as the page reads it. */
export function sceneOf(page: string): Scene {
    const html = readFileSync(page, "utf8");
    const within = (id: string) => new RegExp(`id="${id}">([^<]*)</script>`).exec(html)![1];
    return new Scene(JSON.parse(within("scene")) as SceneDocument, new Words(bytesOfBase64(within("words"))));
}
