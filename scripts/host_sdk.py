#!/usr/bin/env python3
"""Holds this project to the SDK of the real host.

    host_sdk.py headers OURS SDK              what each header includes and names ahead, to the SDK's
    host_sdk.py symbols SDK MODULE OBJECT...  what the plug-in exports and leaves undefined, to the SDK's libraries

OURS and SDK/include are folders that hold `maya/`. Every difference is a line on standard error, and exit status 1.
"""
import collections
import pathlib
import re
import subprocess
import sys

# Ours alone: the header of the version, which there leans on the one that includes it.
OUR_INCLUDES = {("MApiVersion.h", "MTypes.h")}
EXPORTED = ["MApiVersion", "initializePlugin(MObject)", "uninitializePlugin(MObject)"]
FLAGS = ["-std=c++20", "-DLINUX", "-D_BOOL", "-DREQUIRE_IOSTREAM"]


def read(path):
    text = re.sub(r"/\*.*?\*/", "", path.read_text(encoding="latin-1"), flags=re.S)
    return re.sub(r"//[^\n]*", "", text)


def includes(path):
    return [name for name in re.findall(r"#\s*include\s*<maya/([^>]+)>", read(path)) if "/" not in name]


def named_ahead(path):
    public = re.sub(r"^namespace headless \{.*?^\}", "", read(path), flags=re.M | re.S)
    return set(re.findall(r"^class\s+(\w+)\s*;", public, flags=re.M))


def reached(header, folder, stop_at=frozenset()):
    """What a header includes, directly or through others; the way goes on through those not in `stop_at`."""
    found, open_ones = set(), [header]
    while open_ones:
        for name in includes(folder / open_ones.pop()):
            if name not in found and name != header and (folder / name).exists():
                found.add(name)
                if name not in stop_at:
                    open_ones.append(name)
    return found


def system_headers(header, folder, flags):
    source = f"#include <maya/{header}>\n"
    if header == "MApiVersion.h":
        source = "#include <maya/MTypes.h>\n" + source
    done = subprocess.run(["g++", *flags, "-w", "-M", "-x", "c++", "-I", str(folder.parent), "-"], input=source, text=True,
                          capture_output=True, check=True)
    return {w for w in done.stdout.replace("\\\n", " ").split() if not w.startswith(str(folder)) and w != "-.o:"}


def check_headers(ours, sdk):
    names = {path.name for path in ours.glob("*.h")}
    faults = []
    for name in sorted(names):
        if not (sdk / name).exists():
            faults.append(f"{name}: the SDK has no such header")
            continue
        there = {n for n in reached(name, sdk, names) if n in names}
        here = {n for n in includes(ours / name) if (name, n) not in OUR_INCLUDES}
        faults += [f"{name}: includes {n}, and the SDK's doesn't" for n in sorted(here - there)]
        faults += [f"{name}: doesn't include {n}, as the SDK's does" for n in sorted(there - here)]
        ahead = set().union(*(named_ahead(sdk / n) for n in {name} | reached(name, sdk)))
        faults += [f"{name}: names {c} ahead, and the SDK's doesn't" for c in sorted(named_ahead(ours / name) - ahead)]
        extra = system_headers(name, ours, FLAGS[:1]) - system_headers(name, sdk, FLAGS)
        if extra:
            faults.append(f"{name}: brings {', '.join(sorted(extra)[:3])} and so on, and the SDK's doesn't")
    return faults, f"{len(names)} headers include and name ahead what the SDK's do"


def symbols(path, *options):
    done = subprocess.run(["nm", "-P", *options, str(path)], text=True, capture_output=True, check=True)
    return [line.split()[:2] for line in done.stdout.splitlines() if line and not line.endswith(":")]


def plain(name):
    """A symbol without the version of the library that it is wanted from."""
    return name.split("@")[0]


def demangled(names):
    done = subprocess.run(["c++filt"], input="\n".join(names), text=True, capture_output=True, check=True)
    return done.stdout.splitlines()


def homes(headers):
    """By class: the mark of the library that its header says it comes from."""
    out = {}
    for path in headers.glob("*.h"):
        for mark, name in re.findall(r"^class\s+([A-Z]+_EXPORT)\s+(\w+)", read(path), flags=re.M):
            out[name] = mark
    return out


def check_symbols(sdk, module, objects):
    exported = sorted(demangled([name for name, _ in symbols(module, "-D", "--defined-only")]))
    faults = [] if exported == EXPORTED else [f"{module.name}: exports {', '.join(exported[:6])}"]
    libraries = {path.name: path for path in sorted((sdk / "lib").glob("lib*.so"))}
    offered, wanted = set(), set()
    for path in libraries.values():
        for name, kind in symbols(path, "-D"):
            (wanted if kind in "Uw" else offered).add(plain(name))
    needed = {}
    for path in objects:
        for name, kind in symbols(path, "-u"):
            needed.setdefault(plain(name), path.name)
    made_in = homes(sdk / "include/maya")
    missing_marks = {mark for library, mark in (("libOpenMaya.so", "OPENMAYA_EXPORT"), ("libFoundation.so", "FND_EXPORT"),
                                                ("libOpenMayaAnim.so", "OPENMAYAANIM_EXPORT"),
                                                ("libOpenMayaUI.so", "OPENMAYAUI_EXPORT")) if library not in libraries}
    counts = collections.Counter()
    names = sorted(needed)
    for name, readable in zip(names, demangled(names)):
        owner = re.match(r"(?:(?:vtable|typeinfo) for )?(M\w+|operator\S+\(.*\bM\w+)", readable)
        mark = next((made_in[c] for c in re.findall(r"\bM\w+", readable) if c in made_in), None)
        if not owner or not mark:
            continue # of this project, of the C++ library or of the system: the module links these
        if name in offered:
            counts["in the SDK's libraries"] += 1
        elif mark not in missing_marks:
            faults.append(f"{needed[name]}: no library of the SDK offers {readable}")
        elif name in wanted:
            counts["in a library that is missing, as other libraries that want them show"] += 1
        else:
            counts["in a library that is missing, as their headers say"] += 1
    system = [plain(name) for name, kind in symbols(module, "-D", "-u") if "GLIBCXX" in name or "CXXABI" in name]
    faults += [f"{module.name}: wants {name} of a C++ library" for name in demangled(system)[:5]]
    told = "; ".join(f"{n} {where}" for where, n in counts.items())
    return faults, f"the module exports {', '.join(exported)}, and wants of the host: {told}"


def main():
    work, *paths = sys.argv[1], *map(pathlib.Path, sys.argv[2:])
    if work == "headers":
        faults, fine = check_headers(paths[0] / "maya", paths[1] / "include/maya")
    else:
        faults, fine = check_symbols(paths[0], paths[1], paths[2:])
    for fault in faults:
        print(fault, file=sys.stderr)
    if not faults:
        print(fine[0].upper() + fine[1:])
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
