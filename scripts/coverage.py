#!/usr/bin/env python3
"""Sums up gcovr's JSON summary by folder: lines and branches that ran, and what is left in each file.

Usage: coverage.py SUMMARY.json LEAST_PERCENT FOLDER... Exit code 1 when a folder's lines stay below that.
"""
import json
import sys


def percent(covered, total):
    return 100.0 * covered / total if total else 100.0


def main(summary, least, *folders):
    with open(summary, encoding="utf-8") as file:
        files = json.load(file)["files"]
    good = True
    for folder in folders:
        inside = [f for f in files if f["filename"].startswith(folder + "/")]
        lines, total = sum(f["line_covered"] for f in inside), sum(f["line_total"] for f in inside)
        branches, all_branches = sum(f["branch_covered"] for f in inside), sum(f["branch_total"] for f in inside)
        enough = total > 0 and percent(lines, total) >= float(least)
        good = good and enough
        print(f"{folder}: {percent(lines, total):.1f} % of {total} lines, "
              f"{percent(branches, all_branches):.1f} % of {all_branches} branches{'' if enough else '  TOO FEW'}")
        left = [f for f in inside if f["line_covered"] < f["line_total"]]
        for f in sorted(left, key=lambda f: f["line_covered"] - f["line_total"]):
            print(f"    {f['line_total'] - f['line_covered']:4} lines left of {f['line_total']:4}  {f['filename']}")
    return 0 if good else 1


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
