// Holds docs/vor2.ksy to the library: kaitai.mjs VOR2 MAKE_FILES MODULES KSY OUT PLACE...
// A reader compiled from it must find in every file, value by value and bit by bit, what `vor2 dump --json` tells. The
// files are those that MAKE_FILES writes, the .vr2 files in the places, and the exports of the scenes there.
// Exits with 77, "skipped", where the compiler isn't installed.
import { execFileSync, spawnSync } from "node:child_process";
import { existsSync, mkdirSync, readFileSync, readdirSync, rmSync, statSync } from "node:fs";
import { createRequire } from "node:module";
import { basename, extname, join } from "node:path";

const [tool, makeFiles, modules, ksy, out, ...places] = process.argv.slice(2);
if (!existsSync(join(modules, "kaitai-struct-compiler"))) process.exit(77);
const require = createRequire(join(modules, "x.js"));
const KaitaiStream = require("kaitai-struct/KaitaiStream");
const format = require("yaml").parse(readFileSync(ksy, "utf8"));

const capital = (id) => id.split("_").map((word) => word.charAt(0).toUpperCase() + word.slice(1)).join("");
const member = (id) => capital(id).replace(/^./, (letter) => letter.toLowerCase());
const types = new Map(Object.entries(format.types).map(([id, type]) => [capital(id), type]));

async function compile() {
    const sources = await require("kaitai-struct-compiler").compile("javascript", format, null, false);
    const compiled = {};
    new Function("exports", "require", "define", sources["Vor2.js"])(compiled, require, undefined);
    return compiled.Vor2;
}

function differ(path, told, read) {
    const short = (value) => String(JSON.stringify(value)).slice(0, 60);
    throw new Error(`${path}: ${short(told)} in the dump, ${short(read)} for the reader`);
}

let values = 0;
/** A number of the dump has the digits of the single or double that the reader gives exactly. */
function compareNumber(path, told, read) {
    ++values;
    if (typeof told === "string") told = { nan: NaN, inf: Infinity, "-inf": -Infinity }[told];
    if (!Object.is(told, read) && !Object.is(Math.fround(told), read)) differ(path, told, read);
}
function compareText(path, told, text) {
    ++values;
    const units = Array.from({ length: text.numUnits }, (_, i) => text.units[2 * i] | (text.units[2 * i + 1] << 8));
    const read = units.map((unit) => String.fromCharCode(unit)).join("");
    if (told !== read || text.units.length !== 2 * text.numUnits) differ(path, told, read);
}

function compare(path, told, read) {
    const kind = read?.constructor?.name ?? "";
    if (kind.startsWith("Optional")) {
        if ((read.isPresent !== 0) !== (told !== null)) differ(path, told, read.isPresent);
        if (told !== null) compare(path, told, read.object);
        else ++values;
    } else if (kind === "Text") {
        compareText(path, told, read);
    } else if (kind.startsWith("Tuple")) {
        compare(path, told, [read.x, read.y, read.z, read.w].slice(0, Number(kind.slice(5))));
    } else if (Array.isArray(read)) {
        if (!Array.isArray(told) || told.length !== read.length) differ(path, told, read.length);
        told.forEach((element, i) => compare(`${path}[${i}]`, element, read[i]));
    } else if (typeof told === "boolean") {
        ++values;
        if (told !== (read !== 0)) differ(path, told, read);
    } else if (typeof read === "number") {
        compareNumber(path, told, read);
    } else {
        compareRecord(path, told, read, types.get(kind));
    }
}
const fieldsOf = (type) => type.seq.filter((field) => !field.id.startsWith("num_") && !field["-read-over"]);
function compareRecord(path, told, read, type) {
    if (type === undefined || told.class !== type["-class"]) differ(path, told?.class, type?.["-class"]);
    const written = fieldsOf(type);
    // The scene behind a reference has a file of its own.
    const names = Object.keys(told).filter((name) => name !== "class" && !(name === "scene" && type["-class"].includes("XREF")));
    if (names.join() !== written.map((field) => field.id).join()) differ(path, names, written.map((field) => field.id));
    for (const field of written) compareField(`${path}.${field.id}`, told[field.id], read[member(field.id)], field);
}
/** A field that the file's version doesn't have stands at its default, and all within a record is then empty. */
function compareField(path, told, read, field) {
    if (read !== undefined) compare(path, told, read);
    else if ("-default" in field) compareDefault(path, told, field["-default"]);
    else if (field.repeat || field.type.startsWith("optional_")) compareDefault(path, told, field.repeat ? [] : null);
    else for (const inner of fieldsOf(format.types[field.type])) compareField(`${path}.${inner.id}`, told[inner.id], undefined, inner);
}
function compareDefault(path, told, expected) {
    if (Array.isArray(expected) || expected === null) {
        ++values;
        if (JSON.stringify(told) !== JSON.stringify(expected)) differ(path, told, expected);
    } else if (typeof expected === "number") {
        compareNumber(path, told, Math.fround(expected));
    } else {
        ++values;
        if (told !== expected) differ(path, told, expected);
    }
}

/** The records of a file by the scene's members, in the order of their chunks. */
function membersOf(scene, Reader) {
    const members = new Map([["inf", [scene.head.record]]]);
    for (const chunk of scene.chunks) {
        if (chunk.record === undefined) continue;
        const record = chunk.record.object ?? chunk.record;
        const isInstance = types.get(record.constructor.name)?.["-class"].includes("INSTANCE");
        const name = isInstance ? Reader.InstanceKind[chunk.record.kind] : Reader.ChunkType[chunk.chunkType];
        const key = name.toLowerCase();
        if (!members.has(key)) members.set(key, []);
        members.get(key).push(record);
    }
    return members;
}
function compareScene(told, scene, Reader) {
    const members = membersOf(scene, Reader);
    if (Object.keys(told).join() !== format["-root-members"].join()) differ("the scene", Object.keys(told), format["-root-members"]);
    for (const [name, value] of Object.entries(told)) {
        const records = members.get(name) ?? [];
        if (Array.isArray(value)) compare(name, value, records);
        else if (records.length > 0) compare(name, value, records.at(-1));
        else if (value !== null) console.log(`${name} has no chunk`);
    }
}

function filesIn(place) {
    if (!existsSync(place)) return [];
    if (!statSync(place).isDirectory()) return [place];
    return readdirSync(place).sort().flatMap((name) => filesIn(join(place, name)));
}
/** The scene file that a file is, or is made into; undefined for one that is none. */
function sceneOf(file, number) {
    const ending = extname(file).toLowerCase(), host = [".ma", ".bvh"].includes(ending);
    if (ending === ".vr2") return file;
    if (!host && ![".fbx", ".glb", ".gltf"].includes(ending)) return undefined;
    const vr2 = join(out, `${number}_${basename(file)}.vr2`);
    const words = host ? ["export", file, "-o", vr2, "--meshes", "--allow-unevaluated", "--allow-missing-references"]
                       : ["convert", file, vr2];
    try {
        execFileSync(tool, [...words, "--quiet"], { stdio: ["ignore", "ignore", "pipe"] });
    } catch (error) {
        if (error.status === 2) return undefined; // a tool without that reader
        throw error;
    }
    return vr2;
}

rmSync(out, { recursive: true, force: true });
mkdirSync(join(out, "made"), { recursive: true });
execFileSync(makeFiles, [join(out, "made")]);
const Reader = await compile();
let compared = 0, failed = 0, refused = 0;
for (const [number, file] of [join(out, "made"), ...places].flatMap(filesIn).entries()) {
    try {
        const vr2 = sceneOf(file, number);
        if (vr2 === undefined) continue;
        const dump = spawnSync(tool, ["dump", "--json", vr2], { encoding: "utf8", maxBuffer: 500e6 });
        if (dump.status === 1) {
            ++refused;
            continue;
        }
        const bytes = readFileSync(vr2);
        const view = bytes.buffer.slice(bytes.byteOffset, bytes.byteOffset + bytes.length);
        compareScene(JSON.parse(dump.stdout), new Reader(new KaitaiStream(view)), Reader);
        ++compared;
    } catch (error) {
        ++failed;
        console.log(`${file}: ${error.message}`);
    }
}
console.log(`${compared} files agree in ${values} values, ${failed} don't, ${refused} aren't read by the tool`);
process.exit(failed > 0 || compared === 0 ? 1 : 0);
