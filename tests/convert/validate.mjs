// Holds what the tool writes as glTF to the Khronos validator: validate.mjs VOR2 MODULES OUT SCENE...
// Each scene is exported with its meshes, or converted, to .vr2, and from there to .glb. An error or a warning fails.
// Exits with 77, "skipped", where the validator isn't installed.
import { execFileSync } from "node:child_process";
import { existsSync, mkdirSync, readFileSync, readdirSync, statSync } from "node:fs";
import { createRequire } from "node:module";
import { basename, extname, join } from "node:path";

const [tool, modules, out, ...places] = process.argv.slice(2);
if (!existsSync(join(modules, "gltf-validator"))) process.exit(77);
const { validateBytes } = createRequire(join(modules, "x.js"))("gltf-validator");

/** The scene files of a folder and those within it. */
function scenesIn(place) {
    if (!existsSync(place)) return [];
    if (!statSync(place).isDirectory()) return [place];
    return readdirSync(place).sort().flatMap((name) => scenesIn(join(place, name)));
}

mkdirSync(out, { recursive: true });
const run = (verb, ...words) => execFileSync(tool, [verb, "--quiet", ...words], { stdio: ["ignore", "ignore", "pipe"] });
let failed = 0, checked = 0;
for (const scene of places.flatMap(scenesIn)) {
    const ending = extname(scene).toLowerCase(), host = [".ma", ".bvh"].includes(ending);
    if (!host && ![".fbx", ".glb", ".gltf"].includes(ending)) continue;
    const vr2 = join(out, basename(scene) + ".vr2"), glb = join(out, basename(scene) + ".glb");
    try {
        if (host) run("export", scene, "-o", vr2, "--meshes", "--allow-unevaluated",
                      "--allow-missing-references");
        else run("convert", scene, vr2);
        run("convert", vr2, glb, "--leave-out-textures");
    } catch (error) {
        if (error.status === 2) continue; // a tool without that reader
        console.log(`${scene}: ${error.stderr}`);
        ++failed;
        continue;
    }
    const { issues } = await validateBytes(new Uint8Array(readFileSync(glb)));
    ++checked;
    if (issues.numErrors + issues.numWarnings === 0) continue;
    ++failed;
    for (const issue of issues.messages.filter((message) => message.severity < 2).slice(0, 5))
        console.log(`${scene}: ${issue.code} ${issue.pointer}: ${issue.message}`);
}
console.log(`${checked} files checked, ${failed} failed`);
process.exit(failed > 0 || checked === 0 ? 1 : 0);
