/** What a finding of the check is about: "matrix_hierarchy.nodes[5]", "rigids[2]", "helpers[0]", "environment". */

import type { Scene } from "./scene";

export interface Subject {
    node: number;
    mesh: number;
}

export function subjectOf(scene: Scene, record: string): Subject | null {
    const nodeRecord = /^matrix_hierarchy\.nodes\[(\d+)\]/.exec(record);
    const inScene = (node: number) => node >= 0 && node < scene.nodeCount;
    if (nodeRecord) return inScene(+nodeRecord[1]) ? { node: +nodeRecord[1], mesh: -1 } : null;
    const { meshes, objects } = scene.document;
    const mesh = meshes.findIndex((m) => record.startsWith(m.record));
    if (mesh >= 0) return { node: inScene(meshes[mesh].node) ? meshes[mesh].node : -1, mesh };
    const object = objects.find((o) => record.startsWith(o.record));
    return object && inScene(object.node) ? { node: object.node, mesh: object.mesh ?? -1 } : null;
}
