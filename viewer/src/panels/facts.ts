/** What the file is, what it holds, and what the strict check found. */

import type { Finding, SceneDocument } from "../scene/document";
import { subjectOf } from "../scene/findings";
import type { Scene } from "../scene/scene";
import type { Selection } from "../scene/selection";
import { bytesTold, byId, countTold, counted, make, told } from "./dom";

function table(rows: [string, string | Node][]): HTMLElement {
    const list = make("dl");
    for (const [name, value] of rows) list.append(make("dt", {}, name), make("dd", {}, value));
    return list;
}

const plainNames: Record<string, string> = {
    rigids: "rigid meshes", weighted_meshes: "skinned meshes", morph_meshes: "morphing meshes", anim_meshes: "animated meshes",
    bezier_spline_objects: "splines", nodes: "nodes",
};

function recordRows({ record, creator, version, file, bytes }: SceneDocument): [string, string][] {
    const rows: [string, string][] = [["File", file], ["Size", bytesTold(bytes)], ["Format", `version ${told(Number(version), 3)}`]];
    if (creator) rows.push(["Made by", creator]);
    if (record.user) rows.push(["Exported by", record.user]);
    if (record.exportedAt) rows.push(["Exported at", record.exportedAt]);
    if (record.source) rows.push(["From", record.source]);
    if (record.exportedAs) rows.push(["As", record.exportedAs]);
    if (record.text) rows.push(["Note", record.text]);
    return rows;
}

function contentRows(scene: Scene): [string, string][] {
    const { document } = scene;
    const frames = scene.lastFrame + 1;
    const triangles = document.meshes.reduce((sum, mesh) => sum + mesh.triangles[1] / 3, 0);
    const vertices = document.meshes.reduce((sum, mesh) => sum + mesh.vertices, 0);
    const rate = scene.rateIsAssumed ? `${scene.rate} a second (the file states none)` : `${told(scene.rate)} a second`;
    const rows: [string, string][] = [
        ["Time", `${told(scene.start)} s to ${told(scene.end)} s`], ["Frames", `${countTold(frames)} at ${rate}`],
        ["Nodes", countTold(scene.nodeCount)], ["Tracks", countTold(document.trackCount)], ["Keys", countTold(document.keyCount)],
    ];
    for (const [name, count] of document.counts) {
        if (name !== "nodes") rows.push([plainNames[name] ?? name.replace(/_/g, " "), countTold(count)]);
    }
    if (triangles > 0) rows.push(["triangles", countTold(triangles)], ["vertices that differ", countTold(vertices)]);
    rows.push(["Memory in this page", bytesTold(scene.words.bytes.length)]);
    return rows;
}

function sizes({ chunks, bytes }: SceneDocument): HTMLElement {
    const list = make("ul", { class: "sizes" });
    for (const [name, records, size] of chunks) {
        const share = bytes > 0 ? (100 * size) / bytes : 0;
        const bar = make("span", { class: "bar", "aria-hidden": "true" });
        bar.style.width = `${Math.max(1, share)}%`;
        list.append(make("li", {}, bar, make("span", { class: "size-name" }, `${name}${records > 1 ? ` × ${countTold(records)}` : ""}`),
            make("span", { class: "size" }, `${bytesTold(size)} · ${told(share, 3)} %`)));
    }
    return list;
}

/** What of the scene isn't in the picture, and why. */
function warnings({ document: d }: Scene): string[] {
    const lines: string[] = [];
    if (d.record.forced) lines.push("This export was forced in spite of problems.");
    for (const picture of d.pictures) if (picture.missing) lines.push(`The picture ${picture.name} ${picture.missing}.`);
    if (d.badTriangles > 0) lines.push(`${counted(d.badTriangles, "triangle")} with corners that aren't there left out.`);
    return lines;
}

export class Facts {
    constructor(private readonly scene: Scene, private readonly selection: Selection, private readonly framed: () => void) {
        const facts = byId("facts");
        for (const line of warnings(scene)) facts.append(make("p", { class: "warning" }, line));
        facts.append(make("h3", {}, "Export record"), table(recordRows(scene.document)));
        facts.append(make("h3", {}, "Contents"), table(contentRows(scene)));
        if (scene.document.chunks.length > 0) facts.append(make("h3", {}, "Where the bytes are"), sizes(scene.document));
        this.findings();
        selection.nodes.watch((nodes) => this.node(nodes));
    }

    private findings(): void {
        const box = byId("findings");
        const { findings, findingCount } = this.scene.document;
        byId("findings-count").textContent = findingCount > 0 ? countTold(findingCount) : "";
        byId("findings-tab").classList.toggle("has-findings", findingCount > 0);
        if (findingCount === 0) {
            box.append(make("p", { class: "fine" }, "The strict check found nothing wrong."));
            return;
        }
        const list = make("ul", { class: "findings" });
        for (const finding of findings) list.append(make("li", {}, this.finding(finding)));
        box.append(list);
        if (findingCount > findings.length) box.append(make("p", { class: "note" }, `and ${countTold(findingCount - findings.length)} more`));
    }
    private finding(finding: Finding): HTMLElement {
        const subject = subjectOf(this.scene, finding.record);
        const where = finding.name ? `${finding.name} · ${finding.record}` : finding.record;
        const parts = [make("span", { class: "where" }, where), make("span", { class: "complaint" }, `${finding.field} is ${finding.value}: ${finding.complaint}`)];
        if (!subject || subject.node < 0) return make("div", { class: "finding" }, ...parts);
        const button = make("button", { class: "finding", type: "button" }, ...parts);
        button.addEventListener("click", () => {
            this.selection.pick(subject.node);
            this.framed();
        });
        return button;
    }

    private node(nodes: readonly number[]): void {
        const box = byId("node-facts");
        const node = nodes[nodes.length - 1];
        box.replaceChildren();
        if (node === undefined) return;
        const { document: d, parents, tracks } = this.scene;
        const keys = (track: number) => (track < 0 ? "none" : counted(tracks[track].times.length, "key"));
        const [position, rotation, scale] = d.nodes[node].tracks;
        const rows: [string, string][] = [["Node", `${this.scene.nameOf(node) || "(no name)"} · ${node}`]];
        if (parents[node] >= 0) rows.push(["Below", this.scene.nameOf(parents[node])]);
        else if (d.nodes[node].parent >= 0) rows.push(["Parent", `${d.nodes[node].parent}, which doesn't stand before it`]);
        rows.push(["Position", keys(position)], ["Rotation", keys(rotation)], ["Scale", keys(scale)]);
        for (const mesh of d.meshes) if (mesh.node === node) rows.push([`${mesh.kind} mesh`, `${mesh.name}: ${countTold(mesh.triangles[1] / 3)} triangles`]);
        for (const object of d.objects) if (object.node === node) rows.push([object.kind, object.name || "(no name)"]);
        if (nodes.length > 1) rows.unshift(["Selected", `${nodes.length} nodes`]);
        box.append(table(rows));
    }
}
