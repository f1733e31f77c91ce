#!/usr/bin/env python3
"""same_export.py A.vr2 B.vr2: whether two exports of one scene hold the same bytes.

The record of an export names the written file and the scene by their full paths (the lines VOR_NAME and MAYA_FILE),
which no two systems spell alike. These two lines are left out, with the three counts that follow from their lengths;
every other byte counts. Exit 0: the same. Exit 1: not, with the first difference on standard error.
"""
import struct
import sys

PATHS = ("VOR_NAME:\t", "MAYA_FILE:\t")


def read_text(data, at):
    length = 2 * struct.unpack_from("<H", data, at)[0]
    return data[at + 2 : at + 2 + length].decode("utf-16-le"), at + 2 + length


def parts(name):
    """The file as named pieces, in order."""
    with open(name, "rb") as file:
        data = file.read()
    magic, chunk_length, chunk_id, version = struct.unpack_from("<4sII4s", data)
    creator, at = read_text(data, 16)
    record, at = read_text(data, at)
    if chunk_id != 0 or at != 4 + chunk_length:
        sys.exit(f"same_export.py: {name}: doesn't begin with a scene's information")
    lines = record.split("\r\n")
    if sum(line.startswith(PATHS) for line in lines) != len(PATHS):
        sys.exit(f"same_export.py: {name}: holds no record of an export")
    lines = [line for line in lines if not line.startswith(PATHS)]
    return {"magic word": magic, "version": version, "creator": creator.encode(),
            "record": "\n".join(lines).encode(), "rest": data[at:]}


def main():
    if len(sys.argv) != 3:
        sys.exit("usage: same_export.py A.vr2 B.vr2")
    first, second = parts(sys.argv[1]), parts(sys.argv[2])
    for name, a in first.items():
        b = second[name]
        if a != b:
            at = next((i for i, (x, y) in enumerate(zip(a, b)) if x != y), min(len(a), len(b)))
            sys.exit(f"{sys.argv[1]} and {sys.argv[2]} differ in the {name}, at byte {at} of {len(a)} and {len(b)}")


main()
