#!/usr/bin/env python3
"""architecture.py: holds every #include to the arrows that the architecture allows, and writes them as
docs/pictures/architecture.svg. With `check` it says whether that picture is what it would write."""
import itertools
import pathlib
import re
import sys

EVERYTHING = {"viewer", "convert", "inspect", "optimise", "headless", "host", "maya", "format", "support"}
# Each part, with its place in the picture (centre and width), what it is, and what it may include.
PARTS = {
    "python": (395, 40, 150, "the module", EVERYTHING | {"tools/vor2"}),
    "tools/vor2": (395, 140, 200, "the command line", EVERYTHING),
    "viewer": (80, 250, 120, "the page", {"inspect", "format", "support"}),
    "convert": (215, 250, 130, "glTF, FBX, Collada", {"format", "support"}),
    "optimise": (350, 250, 120, "fewer keys", {"format", "support"}),
    "host": (485, 250, 120, "the plug-in", {"maya", "format", "support"}),
    "headless": (630, 250, 150, "the embedded host", {"maya", "support"}),
    "inspect": (80, 360, 120, "facts, check, diff", {"format", "support"}),
    "maya": (555, 360, 170, "the host's API, headers", set()),
    "format": (290, 470, 260, "the library", {"support"}),
    "support": (395, 570, 610, "arrays, texts, maths, system", set()),
}
BESIDE = ("bench/", "build/", "fuzz/", "tests/", "tools/reference/")
HEIGHT = 50


def part_of(path):
    """The part that a file or the path of an include belongs to; None for what lies outside."""
    if path.startswith(("headless/include/", "maya/")):
        return "maya"
    return next((part for part in PARTS if path.startswith(part + "/")), None)


def edges(sources):
    """All pairs of parts of which the first includes the second, each with a file that does so."""
    found = {}
    for path in itertools.chain(sources.rglob("*.h"), sources.rglob("*.cpp")):
        name = path.relative_to(sources).as_posix()
        part = part_of(name)
        if part is None:
            if not name.startswith(BESIDE):
                found.setdefault((name.split("/")[0], ""), name)
            continue
        for include in re.findall(r'^#include ["<]([^">]+)', path.read_text(errors="replace"), re.M):
            other = part_of(include)
            if other not in (None, part):
                found.setdefault((part, other), name)
    return found


def reduced(pairs):
    """Without the arrows that others imply."""
    def reaches(start, end, without):
        return any(a == start and (a, b) != without and (b == end or reaches(b, end, without)) for a, b in pairs)
    return [pair for pair in pairs if not reaches(pair[0], pair[1], pair)]


def arrow(upper, lower, place, count):
    x1, y1, width, *_ = PARTS[upper]
    x2, y2, lower_width, *_ = PARTS[lower]
    x1 += (place - (count - 1) / 2) * width / (count + 1)
    x2 = min(max(x1, x2 - lower_width / 2 + 15), x2 + lower_width / 2 - 15)
    return f'<line x1="{x1:.0f}" y1="{y1 + HEIGHT / 2:.0f}" x2="{x2:.0f}" y2="{y2 - HEIGHT / 2 - 7:.0f}" marker-end="url(#head)"/>'


def picture(pairs):
    present = {part for pair in pairs for part in pair}
    lines = ['<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 720 610" font-family="sans-serif" text-anchor="middle">',
             '<defs><marker id="head" viewBox="0 0 8 8" refX="2" refY="4" markerWidth="7" markerHeight="7" orient="auto">'
             '<path d="M0 0 8 4 0 8z" fill="#7a8594"/></marker></defs>', '<g stroke="#7a8594" stroke-width="1.5">']
    for part in PARTS:
        below = sorted((lower for upper, lower in pairs if upper == part), key=lambda lower: PARTS[lower][0] + PARTS[lower][2] / 2)
        lines += [arrow(part, lower, place, len(below)) for place, lower in enumerate(below)]
    lines.append("</g>")
    for part, (x, y, width, what, _) in PARTS.items():
        if part not in present:
            continue
        name = "&lt;maya/...&gt;" if part == "maya" else part + "/"
        lines.append(f'<rect x="{x - width / 2:.0f}" y="{y - HEIGHT / 2:.0f}" width="{width}" height="{HEIGHT}" rx="6" fill="#eef3f8" stroke="#3c5a78"/>')
        lines.append(f'<text x="{x}" y="{y - 3}" font-size="15" font-weight="bold" fill="#1d2b3a">{name}</text>')
        lines.append(f'<text x="{x}" y="{y + 16}" font-size="12" fill="#41566b">{what}</text>')
    return "\n".join(lines) + "\n</svg>\n"


def main():
    sources = pathlib.Path(__file__).resolve().parent.parent
    found = edges(sources)
    wrong = [(a, b, file) for (a, b), file in found.items() if a not in PARTS or b not in PARTS[a][4]]
    for upper, lower, file in wrong:
        problem = f"{upper} must not include {lower}" if lower else f"{upper} is no part of the drawing yet"
        print(f"{file}: {problem}", file=sys.stderr)
    file = sources / "docs" / "pictures" / "architecture.svg"
    text = picture(reduced(sorted(pair for pair in found if pair[1])))
    if sys.argv[1:] != ["check"]:
        file.write_text(text)
    elif not file.exists() or file.read_text() != text:
        print(f"{file} isn't what the includes say; run scripts/architecture.py", file=sys.stderr)
        return 1
    return 1 if wrong else 0


sys.exit(main())
