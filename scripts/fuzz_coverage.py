#!/usr/bin/env python3
"""Tells which lines of each folder the fuzz targets' corpora reach, from what `llvm-cov export` sums up.

Usage: fuzz_coverage.py SUMMARY.json FOLDER...
"""
import json
import pathlib
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent


def main(summary, *folders):
    lines_of = {}
    for row in json.loads(pathlib.Path(summary).read_text(encoding="utf-8"))["data"][0]["files"]:
        path = pathlib.Path(row["filename"]).resolve()
        if path.is_relative_to(ROOT):
            lines_of[path.relative_to(ROOT).as_posix()] = row["summary"]["lines"]
    for folder in folders:
        inside = {name: lines for name, lines in lines_of.items() if name.startswith(folder.rstrip("/") + "/")}
        total = sum(lines["count"] for lines in inside.values())
        covered = sum(lines["covered"] for lines in inside.values())
        print(f"{folder}: {100.0 * covered / max(total, 1):.1f} % of {total} lines")
        for name, lines in sorted(inside.items(), key=lambda entry: entry[1]["covered"] - entry[1]["count"]):
            left = lines["count"] - lines["covered"]
            if left:
                print(f"    {left:4} lines left of {lines['count']:4}  {name}")


if __name__ == "__main__":
    main(*sys.argv[1:])
