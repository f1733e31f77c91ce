#!/usr/bin/env python3
"""draw_icon.py [--check] ICON.ico: draws the icon of the file type: three bones of a chain, on a dark tile, in four sizes.

With --check it says whether the file holds that very picture.
"""
import math
import struct
import sys

SIZES = (16, 24, 32, 48)
SAMPLES = 4  # a side, for each pixel
TILE, BONE, JOINT = (38, 50, 64), (240, 180, 60), (250, 240, 220)
CHAIN = ((0.24, 0.80), (0.42, 0.50), (0.70, 0.56), (0.80, 0.22))  # from the root, in parts of the tile


def in_tile(x, y, corner=0.16):
    dx, dy = (max(corner - c, c - (1 - corner), 0) for c in (x, y))
    return math.hypot(dx, dy) <= corner


def bone_width(x, y, start, end):
    """How far inside a bone a point is: they are thick at a fifth of their length and pointed at both ends."""
    ax, ay = end[0] - start[0], end[1] - start[1]
    length = math.hypot(ax, ay)
    along = ((x - start[0]) * ax + (y - start[1]) * ay) / length**2
    off = abs((x - start[0]) * ay - (y - start[1]) * ax) / length
    if not 0 <= along <= 1:
        return -1
    return 0.085 * (along / 0.2 if along < 0.2 else (1 - along) / 0.8) + 0.012 - off


def colour(x, y):
    if any(math.hypot(x - jx, y - jy) < 0.065 for jx, jy in CHAIN):
        return (*JOINT, 255)
    if any(bone_width(x, y, *bone) > 0 for bone in zip(CHAIN, CHAIN[1:])):
        return (*BONE, 255)
    return (*TILE, 255) if in_tile(x, y) else (0, 0, 0, 0)


def pixel(column, row, size):
    step = 1 / (size * SAMPLES)
    taken = [colour((column * SAMPLES + i + 0.5) * step, (row * SAMPLES + j + 0.5) * step)
             for i in range(SAMPLES) for j in range(SAMPLES)]
    alpha = sum(c[3] for c in taken)
    mean = [round(sum(c[k] * c[3] for c in taken) / alpha) if alpha else 0 for k in range(3)]
    return bytes((mean[2], mean[1], mean[0], round(alpha / len(taken))))


def bitmap(size):
    """As an icon holds it: rows from the bottom up, and a mask that the alpha makes needless."""
    header = struct.pack("<IiiHHIIiiII", 40, size, size * 2, 1, 32, 0, 0, 0, 0, 0, 0)
    rows = b"".join(pixel(column, row, size) for row in reversed(range(size)) for column in range(size))
    return header + rows + bytes((size + 31) // 32 * 4 * size)


def main():
    images = [bitmap(size) for size in SIZES]
    out, offset = struct.pack("<HHH", 0, 1, len(SIZES)), 6 + 16 * len(SIZES)
    for size, image in zip(SIZES, images):
        out += struct.pack("<BBBBHHII", size, size, 0, 0, 1, 32, len(image), offset)
        offset += len(image)
    out += b"".join(images)
    if sys.argv[1] == "--check":
        with open(sys.argv[2], "rb") as file:
            if file.read() != out:
                sys.exit(f"{sys.argv[2]} isn't what this script draws")
        return
    with open(sys.argv[1], "wb") as file:
        file.write(out)


if __name__ == "__main__":
    main()
