#!/usr/bin/env python3
"""Thins out the keys of all joints: no position moves by more than the stated error, no rotation by more degrees.

Each track is held to its own values, at four times the density of its keys; the plot shows the track whose values move most.

    thin_keys.py walk.vr2 thin.vr2 --tolerance 0.001 --rotation 0.1 --plot thin.png
"""

import argparse

import numpy as np
import vor2

FIELDS = ("position_track", "rotation_track", "scale_track")


def errors(track, values, wanted):
    """How far values are from the wanted ones: distances, and of rotations degrees."""
    if isinstance(track, vor2.VOR2_ANIMATABLE_QUATERNION):
        product = np.abs(np.sum(values.astype(float) * wanted, axis=1))
        lengths = np.linalg.norm(values.astype(float), axis=1) * np.linalg.norm(wanted.astype(float), axis=1)
        return np.degrees(2 * np.arccos(np.clip(product / lengths, 0, 1)))
    return np.linalg.norm(values.astype(float) - wanted, axis=1)


def thinned(track, tolerance):
    """The track with the ends of its keys, and as many between as the tolerance takes."""
    times, values = track.key_times, track.key_values
    count = len(times)
    if count < 3 or len(values) != count:
        return track
    steps = np.interp(np.arange((count - 1) * 4 + 1) / 4, np.arange(count), times).astype(np.float32)
    wanted = track.sample(steps)
    kept = np.zeros(count, bool)
    kept[[0, -1]] = True
    thin = track.copy()
    while True:
        thin.set_keys(times[kept], values[kept])
        wrong = errors(track, thin.sample(steps), wanted)
        if wrong.max() <= tolerance or kept.all():
            return thin
        # The worst key within each interval that is off by too much, or the one beside the worst moment.
        ends = np.flatnonzero(kept)
        for first, last in zip(ends, ends[1:]):
            inside = wrong[first * 4 : last * 4 + 1]
            if last - first > 1 and inside.max() > tolerance:
                kept[np.clip(first + round(int(inside.argmax()) / 4), first + 1, last - 1)] = True
        if kept.sum() == len(ends):
            return track


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n")[0])
    parser.add_argument("input")
    parser.add_argument("output")
    parser.add_argument("--tolerance", type=float, default=0.001, help="metres, and parts of a scale (0.001)")
    parser.add_argument("--rotation", type=float, default=0.1, help="degrees (0.1)")
    parser.add_argument("--plot", help="a picture of the track whose values move most")
    options = parser.parse_args()

    scene = vor2.load(options.input)
    before = after = 0
    shown = (-1.0, "", None, None)
    for node in scene.matrix_hierarchy.nodes:
        for field in FIELDS:
            track = getattr(node, field)
            if track is None:
                continue
            is_rotation = isinstance(track, vor2.VOR2_ANIMATABLE_QUATERNION)
            thin = thinned(track, options.rotation if is_rotation else options.tolerance)
            before, after = before + len(track.key_times), after + len(thin.key_times)
            moves = np.ptp(track.key_values, axis=0).max(initial=0)
            shown = max(shown, (moves, f"{node.name}, {field}", track.copy(), thin), key=lambda one: one[0])
            setattr(node, field, thin)
    scene.save(options.output)
    print(f"{before} keys before, {after} after: {options.output}")
    if options.plot and shown[2] is not None:
        plot(*shown[1:], options.plot)


def plot(title, track, thin, picture):
    try:
        import matplotlib
    except ImportError:
        print("there is no matplotlib to plot with")
        return
    matplotlib.use("Agg")
    from matplotlib import pyplot

    figure, axes = pyplot.subplots(figsize=(9, 4))
    axes.plot(track.key_times, track.key_values, color="0.7", linewidth=3)
    axes.plot(thin.key_times, thin.key_values, ".-", color="C0", linewidth=1)
    axes.set(title=f"{title}: {len(track.key_times)} keys, {len(thin.key_times)} left", xlabel="seconds")
    figure.tight_layout()
    figure.savefig(picture, dpi=100)
    print(f"{picture} shows {title}")


if __name__ == "__main__":
    main()
