#!/usr/bin/env python3
"""run_snippets.py DOCS [PYTHON...]: runs what the installed documents show, as it is written, each document's in a
folder of its own; the Python ones under every PYTHON that is named. Ends at the first that fails."""

import pathlib
import re
import shutil
import subprocess
import sys

BLOCK = re.compile(r"^```(\w*)\n(.*?)^```", re.MULTILINE | re.DOTALL)
ROW = re.compile(r"^\| [^|]+\| `(vor2 [^`]*)` \|$", re.MULTILINE)
# Lines that stand for something, need the sources, or hardware that a test can't have.
LEFT_OUT = re.compile(r"^(vor2 VERB|vor2 --help|cmake|cpack|python3 -m build|\./|export VOR2=/mnt)|hero\.fbx", re.MULTILINE)


def shell_lines(text):
    for kind, block in BLOCK.findall(text):
        if not kind and re.match(r"vor2 |examples/|eval|apt-get", block):
            yield block
    yield from ROW.findall(text)


def prepare(folder, examples, plain):
    """A walk as a stranger has it, and what else the documents suppose to be there."""
    scene = (examples / "walking_biped.ma").read_text(encoding="utf-8")
    if plain:
        scene = scene.replace("biped:", "")
    for place in ("walk.ma", "hall.ma", "moves.ma", "shots/one.ma", "shots/two.ma", "scenes/a.ma", "scenes/sub/b.ma"):
        path = folder / place
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(scene, encoding="utf-8")
    for name in ("hero", "old", "new"):
        subprocess.run(["vor2", "export", "walk.ma", "-o", f"{name}.vr2"], cwd=folder, check=True, capture_output=True)
    (folder / "examples").symlink_to(examples)


def run_shell(document, folder):
    count = 0
    for lines in shell_lines(document.read_text(encoding="utf-8")):
        kept = "".join(line + "\n" for line in lines.splitlines() if not LEFT_OUT.search(line))
        if not kept.strip():
            continue
        if "compare out_old" in kept:
            for name in ("out_old", "out_new"):
                shutil.copytree(folder / "out", folder / name)
        done = subprocess.run(["bash", "-eu", "-c", kept], cwd=folder, capture_output=True, text=True, timeout=900)
        if done.returncode:
            sys.exit(f"{document}: exit code {done.returncode} of\n{kept}{done.stdout}{done.stderr}")
        count += kept.count("\n")
    return count


def run_python(document, folder, python):
    blocks = [block for kind, block in BLOCK.findall(document.read_text(encoding="utf-8")) if kind == "python"]
    (folder / "snippets.py").write_text("\n".join(blocks), encoding="utf-8")
    done = subprocess.run([python, "snippets.py"], cwd=folder, capture_output=True, text=True, timeout=900)
    if done.returncode:
        sys.exit(f"{document} under {python}: {done.stdout}{done.stderr}")
    return len(blocks)


def main():
    root = pathlib.Path(sys.argv[1])
    work = pathlib.Path("/scenes")  # whose name stands in the file that docs/format.md takes apart
    for document in (root / "README.md", *sorted((root / "docs").glob("*.md"))):
        folder = work if document.stem == "format" else work / document.stem
        folder.mkdir(parents=True, exist_ok=True)
        pythons = sys.argv[2:] if document.stem == "python" else []
        prepare(folder, root / "examples", plain=not pythons)
        shutil.copy(root / "docs" / "arm.ma", folder)
        if lines := run_shell(document, folder):
            print(f"{document.name}: {lines} lines", flush=True)
        for python in pythons:
            print(f"{document.name}: {run_python(document, folder, python)} blocks under {python}", flush=True)
    if (work / "arm.vr2").read_bytes() != (root / "docs" / "arm.vr2").read_bytes():
        sys.exit("docs/format.md takes another file apart than its line makes")


if __name__ == "__main__":
    main()
