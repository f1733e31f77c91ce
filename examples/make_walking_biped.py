#!/usr/bin/env python3
"""Writes walking_biped.ma: a biped that walks two seconds at film rate and passes a lantern from hand to hand.

Run it as `./make_walking_biped.py > walking_biped.ma`. Centimetres and degrees, Y up, walking toward +Z. The legs are
solved so that the feet stay where they are planted; everything else is drawn by hand.
"""

from math import acos, asin, atan2, cos, degrees, exp, hypot, pi, radians, sin

FRAMES = 48           # two seconds
CYCLE = 24.0          # frames for a left and a right step
SPEED = 4.2           # centimetres a frame
STANCE = 0.6          # part of a cycle that a foot is on the ground
THIGH, SHIN = 44.0, 44.0
ANKLE = 8.0           # height of the ankle over the sole
BALL = (13.0, -6.0)   # from the ankle to the ball of the foot: forward, up
ORDERS = ("xyz", "yzx", "zxy", "xzy", "yxz", "zyx")
LINEAR, FLAT, STEP, SPLINE, PLATEAU, AUTO, FIXED = 2, 3, 5, 9, 16, 18, 1


# Rotations, as rows: in a product the leftmost acts first.

def axis_turn(axis, angle):
    c, s = cos(radians(angle)), sin(radians(angle))
    return {"x": [[1, 0, 0], [0, c, s], [0, -s, c]],
            "y": [[c, 0, -s], [0, 1, 0], [s, 0, c]],
            "z": [[c, s, 0], [-s, c, 0], [0, 0, 1]]}[axis]


def product(a, b):
    return [[sum(a[r][k] * b[k][c] for k in range(3)) for c in range(3)] for r in range(3)]


def transposed(a):
    return [list(column) for column in zip(*a)]


def turned(v, a):
    return [sum(v[k] * a[k][c] for k in range(3)) for c in range(3)]


def euler(angles, order="xyz"):
    by_axis = dict(zip("xyz", angles))
    first, second, third = (axis_turn(axis, by_axis[axis]) for axis in order)
    return product(product(first, second), third)


def angles_xyz(a):
    y = asin(max(-1.0, min(1.0, -a[0][2])))
    return [degrees(atan2(a[1][2], a[2][2])), degrees(y), degrees(atan2(a[0][1], a[0][0]))]


# The skeleton. Limbs have X along the bone; at rest arms and legs hang down with Y forward, so that a turn about Z
# swings them.

HANGING = (90.0, 0.0, -90.0)
UPRIGHT = (0.0, 0.0, 90.0)


class Joint:
    def __init__(self, name, parent, at, orient=(0, 0, 0), order="xyz", radius=1.0):
        self.name, self.parent, self.at, self.orient = name, parent, at, orient
        self.order, self.radius = order, radius


def skeleton():
    joints = [
        Joint("hips", None, (0, 95, 0), order="zxy", radius=3),
        Joint("spine", "hips", (0, 8, 0), UPRIGHT, "yzx", 2),
        Joint("belly", "spine", (12, 0, 0), radius=2),
        Joint("chest", "belly", (14, 0, 0), order="xzy", radius=2.5),
        Joint("neck", "chest", (18, 0, -1), (0, -12, 0), radius=1.5),
        Joint("head", "neck", (9, 0, 0), (0, 12, 0), "zyx", 2),
        Joint("head_end", "head", (18, 0, 0)),
    ]
    for side, sign in (("left", 1.0), ("right", -1.0)):
        # Seen from the chest, whose X is up and whose Y is toward the right hand.
        joints += [
            Joint(side + "_clavicle", "chest", (13, -4 * sign, 2), (0, 0, -90 * sign), "yxz"),
            Joint(side + "_upper_arm", side + "_clavicle", (14, 0, 0),
                  arm_orient(sign), "zxy", 1.5),
            Joint(side + "_forearm", side + "_upper_arm", (27, 0, 0), radius=1.5),
            Joint(side + "_hand", side + "_forearm", (25, 0, 0), order="yxz"),
            Joint(side + "_fingers", side + "_hand", (9, 0, 0), radius=0.7),
            Joint(side + "_thumb", side + "_hand", (3, 3, 2 * sign), (0, 0, 35), radius=0.7),
            Joint(side + "_thigh", "hips", (9 * sign, -4, 0), HANGING, "zxy", 2),
            Joint(side + "_shin", side + "_thigh", (THIGH, 0, 0), radius=2),
            Joint(side + "_foot", side + "_shin", (SHIN, 0, 0), (0, 0, 90)),
            Joint(side + "_toes", side + "_foot", (BALL[0], BALL[1], 0)),
            Joint(side + "_toes_end", side + "_toes", (8, 0, 0), radius=0.7),
        ]
    return joints


def arm_orient(sign):
    """Hangs the arm, a little out from the body, whatever way the clavicle points."""
    clavicle = product(euler((0, 0, -90 * sign)), euler(UPRIGHT))
    hanging = product(euler(HANGING), axis_turn("z", 9 * sign))
    return tuple(angles_xyz(product(hanging, transposed(clavicle))))


# The walk.

def smooth(u):
    u = max(0.0, min(1.0, u))
    return u * u * (3 - 2 * u)


def wave(frame, cycles=1.0, shift=0.0):
    return sin(2 * pi * (cycles * frame / CYCLE + shift))


def hips_at(frame):
    """Position, and turns about X, Y and Z: lowest when both feet are down, over the standing foot in between."""
    at = (2.2 * wave(frame, 1, -0.05), 95.2 - 2.8 * cos(4 * pi * frame / CYCLE), SPEED * frame)
    return at, (2.0, -6.0 * cos(2 * pi * frame / CYCLE), 3.0 * wave(frame))


def foot_on_ground(phase, planted):
    """Ankle height, ankle Z and pitch (toes down is positive) of a foot planted at a Z."""
    if phase < 0.08:
        return ANKLE, planted, -16.0 * (1 - smooth(phase / 0.08))
    pitch = 38.0 * smooth((phase - 0.36) / (STANCE - 0.36)) if phase > 0.36 else 0.0
    c, s = cos(radians(pitch)), sin(radians(pitch))
    forward, up = -BALL[0] * c - BALL[1] * s, BALL[0] * s - BALL[1] * c
    return ANKLE + BALL[1] + up, planted + BALL[0] + forward, pitch


def foot_at(frame, shift):
    cycle, phase = divmod(frame / CYCLE + shift, 1.0)
    start = (cycle - shift) * CYCLE
    planted = SPEED * (start + 0.5 * STANCE * CYCLE)
    if phase < STANCE:
        return foot_on_ground(phase, planted)
    off, down = foot_on_ground(STANCE, planted), foot_on_ground(0.0, planted + SPEED * CYCLE)
    u = (phase - STANCE) / (1 - STANCE)
    height = off[0] + (down[0] - off[0]) * smooth(u) + 6.0 * sin(pi * u)
    return height, off[1] + (down[1] - off[1]) * smooth(u), off[2] + (down[2] - off[2]) * smooth(u * 1.1)


def leg_at(frame, sign):
    """Turns of thigh (about Y and Z), shin, foot and toes that put the ankle where it belongs."""
    at, turns = hips_at(frame)
    hips = euler(turns, "zxy")
    height, z, pitch = foot_at(frame, 0.0 if sign > 0 else 0.5)
    ankle = [7.5 * sign - at[0], height - at[1], z - at[2]]
    x, y, depth = (a - b for a, b in zip(turned(ankle, transposed(hips)), (9 * sign, -4, 0)))
    down, forward, side = -y, depth, -x
    reach = min(hypot(down, forward, side), (THIGH + SHIN) * 0.9995)
    at_hip = acos((THIGH ** 2 + reach ** 2 - SHIN ** 2) / (2 * THIGH * reach))
    at_knee = acos((THIGH ** 2 + SHIN ** 2 - reach ** 2) / (2 * THIGH * SHIN))
    thigh = (0.0, degrees(atan2(-side, down)), degrees(asin(max(-1.0, min(1.0, forward / reach))) + at_hip))
    shin = degrees(at_knee) - 180.0
    above = product(product(euler(thigh, "zxy"), euler(HANGING)), hips)
    above = product(axis_turn("z", shin), above)
    wanted = product(product(euler((0, 0, 90)), euler(HANGING)), axis_turn("x", pitch))
    foot = angles_xyz(product(product(wanted, transposed(above)), transposed(euler((0, 0, 90)))))
    return thigh, shin, foot, max(0.0, pitch)


def passing(frame):
    """1 while the hands meet in front of the body."""
    return exp(-((frame - 25.0) / 6.0) ** 2)


# Curves.

class Curve:
    def __init__(self, target, keys, tangent, in_out=None, weighted=False, vectors=None, infinity=0):
        self.target, self.keys, self.tangent, self.in_out = target, keys, tangent, in_out
        self.weighted, self.vectors, self.infinity = weighted, vectors, infinity

    def kind(self):
        attribute = self.target.rpartition(".")[2]
        return "TL" if attribute[0] == "t" else "TA" if attribute[0] == "r" else "TU"


def sampled(target, step, value, tangent, **more):
    return Curve(target, [(f, value(f)) for f in range(0, FRAMES + 1, step)], tangent, **more)


def tangent_vectors(function, frames, span, internal):
    """Vectors along a function's slope, `span` seconds long; `internal` is the value's size in the host's own unit."""
    return [(span, (function(f + 0.01) - function(f - 0.01)) / 0.02 * 24.0 * span * internal) for f in frames]


def body_curves():
    def height(f):
        return hips_at(f)[0][1]

    def nod(f):
        return 4.0 + 3.0 * wave(f, 2, 0.1)

    curves = [
        sampled("biped:hips.tx", 6, lambda f: hips_at(f)[0][0], SPLINE),
        sampled("biped:hips.ty", 3, height, FIXED,
                vectors=tangent_vectors(height, range(0, FRAMES + 1, 3), 0.125, 1.0)),
        Curve("biped:hips.tz", [(0, 0.0), (FRAMES, SPEED * FRAMES)], LINEAR),
        Curve("biped:hips.rx", [(0, 2.0), (FRAMES, 2.0)], FLAT),
        sampled("biped:hips.ry", 3, lambda f: hips_at(f)[1][1], SPLINE),
        sampled("biped:hips.rz", 3, lambda f: hips_at(f)[1][2], SPLINE),
        sampled("biped:spine.rx", 6, lambda f: 3.0 * cos(2 * pi * f / CYCLE), PLATEAU),
        sampled("biped:spine.rz", 6, lambda f: -2.0 * wave(f), PLATEAU),
        Curve("biped:belly.ry", [(0, -1.0), (12, -2.5), (24, -1.0)], AUTO, infinity=3),
        sampled("biped:chest.rx", 6, lambda f: 7.0 * cos(2 * pi * f / CYCLE), AUTO),
        sampled("biped:chest.rz", 6, lambda f: -1.5 * wave(f), SPLINE),
        sampled("biped:neck.ry", 8, nod, FIXED, weighted=True,
                vectors=tangent_vectors(nod, range(0, FRAMES + 1, 8), 0.25, pi / 180)),
        Curve("biped:head.rx", [(0, -4.0), (14, -6.0), (24, 12.0), (32, 10.0), (48, -4.0)], FLAT),
        Curve("biped:head.ry", [(0, 0.0), (18, -4.0), (25, -18.0), (34, -3.0), (48, 0.0)], PLATEAU),
    ]
    return curves


def leg_curves(side, sign):
    name = "biped:" + side
    return [
        sampled(name + "_thigh.ry", 2, lambda f: leg_at(f, sign)[0][1], SPLINE),
        sampled(name + "_thigh.rz", 2, lambda f: leg_at(f, sign)[0][2], SPLINE),
        sampled(name + "_shin.rz", 2, lambda f: leg_at(f, sign)[1], SPLINE),
        sampled(name + "_foot.rx", 2, lambda f: leg_at(f, sign)[2][0], SPLINE),
        sampled(name + "_foot.ry", 2, lambda f: leg_at(f, sign)[2][1], SPLINE),
        sampled(name + "_foot.rz", 2, lambda f: leg_at(f, sign)[2][2], SPLINE),
        sampled(name + "_toes.rz", 2, lambda f: leg_at(f, sign)[3], LINEAR),
    ]


def arm_curves(side, sign):
    """Arms swing against the legs; around the middle both reach forward and in."""
    name = "biped:" + side

    def swing(f):
        return -sign * 24.0 * cos(2 * pi * (f - 1) / CYCLE)

    def mixed(f, walking, meeting):
        return walking + (meeting - walking) * passing(f)

    hold = 0 if sign > 0 else 1  # the right hand has the lantern at first
    return [
        Curve(name + "_clavicle.ry", [(0, 0.0), (25, -6.0 * sign), (48, 0.0)], AUTO),
        sampled(name + "_upper_arm.rz", 4, lambda f: mixed(f, swing(f), 28.0), AUTO),
        sampled(name + "_upper_arm.ry", 4, lambda f: mixed(f, 0.0, -14.0 * sign), AUTO),
        sampled(name + "_forearm.rz", 4, lambda f: mixed(f, 24.0 + 0.5 * max(0.0, swing(f)), 66.0), SPLINE),
        sampled(name + "_forearm.ry", 4, lambda f: mixed(f, 0.0, -34.0 * sign), SPLINE),
        sampled(name + "_hand.rz", 6, lambda f: 6.0 * wave(f, 1, 0.1 * sign), AUTO),
        # Fingers close at once when they take the lantern.
        Curve(name + "_fingers.rz", [(0, 75.0 * hold + 15.0), (25, 90.0 - 75.0 * hold)], STEP),
    ]


# The file.

def number(value):
    text = "%.9g" % value
    return "0" if text == "-0" else text


def values(list_of_numbers):
    lines, line = [], ""
    for value in list_of_numbers:
        word = number(value)
        if len(line) + len(word) > 90:
            lines.append(line)
            line = ""
        line += " " + word
    return "\n\t\t".join(lines + [line])


def write_joint(joint):
    parent = ' -p "biped:%s"' % joint.parent if joint.parent else ""
    print('createNode joint -n "biped:%s"%s;' % (joint.name, parent))
    print('\tsetAttr ".t" -type "double3"%s ;' % values(joint.at))
    if joint.order != "xyz":
        print('\tsetAttr ".ro" %d;' % ORDERS.index(joint.order))
    if any(joint.orient):
        print('\tsetAttr ".jo" -type "double3"%s ;' % values(joint.orient))
    print('\tsetAttr ".radi" %s;' % number(joint.radius))


def write_curve(curve):
    node, _, attribute = curve.target.rpartition(".")
    long_names = {"t": "translate", "r": "rotate", "s": "scale"}
    known = len(attribute) == 2 and attribute[1] in "xyz"
    name = "%s_%s" % (node, long_names[attribute[0]] + attribute[1].upper() if known else attribute)
    count = len(curve.keys)
    print('createNode animCurve%s -n "%s";' % (curve.kind(), name))
    print('\tsetAttr ".tan" %d;' % curve.tangent)
    print('\tsetAttr ".wgt" %s;' % ("yes" if curve.weighted else "no"))
    print('\tsetAttr -s %d ".ktv[0:%d]" %s;' % (count, count - 1, values(n for key in curve.keys for n in key)))
    for flag, column in (("kit", 0), ("kot", 1)):
        if curve.in_out:
            print('\tsetAttr -s %d ".%s[0:%d]" %s;' % (count, flag, count - 1, values(t[column] for t in curve.in_out)))
    if curve.vectors:
        for flag, column in (("kix", 0), ("kiy", 1), ("kox", 0), ("koy", 1)):
            print('\tsetAttr -s %d ".%s[0:%d]" %s;' % (count, flag, count - 1,
                                                       values(v[column] for v in curve.vectors)))
    if curve.infinity:
        print('\tsetAttr ".pre" %d;\n\tsetAttr ".pst" %d;' % (curve.infinity, curve.infinity))
    return name


HANDS = ("right_hand", "left_hand")


def write_prop():
    """The lantern, which follows the hands by its constraint's weights."""
    print('createNode transform -n "prop";')
    print('createNode locator -n "propShape" -p "prop";')
    print('\tsetAttr ".los" -type "double3" 4 4 4 ;')
    print('createNode parentConstraint -n "prop_parentConstraint1" -p "prop";')
    for i, hand in enumerate(HANDS):
        print('\taddAttr -dcb 0 -ci true -k true -sn "w%d" -ln "%sW%d" -dv 1 -min 0 -at "double";' % (i, hand, i))
    print('\tsetAttr -s 2 ".tg";')
    for i in range(2):
        print('\tsetAttr ".tg[%d].tot" -type "double3" 8 4 0 ;' % i)
        print('\tsetAttr ".tg[%d].tor" -type "double3" 0 0 90 ;' % i)
    for i in range(2):
        print('\tsetAttr -k on ".w%d" %d;' % (i, 1 - i))


def prop_connections():
    constraint = "prop_parentConstraint1"
    for out, into in (("ctx", "tx"), ("cty", "ty"), ("ctz", "tz"), ("crx", "rx"), ("cry", "ry"), ("crz", "rz")):
        yield constraint + "." + out, "prop." + into
    for out, into in (("ro", "cro"), ("pim", "cpim"), ("rp", "crp"), ("rpt", "crt")):
        yield "prop." + out, constraint + "." + into
    pairs = (("t", "tt"), ("rp", "trp"), ("rpt", "trt"), ("r", "tr"), ("ro", "tro"), ("s", "ts"), ("pm", "tpm"),
             ("jo", "tjo"), ("ssc", "tsc"), ("is", "tis"))
    for i, hand in enumerate(HANDS):
        for out, into in pairs:
            yield "biped:%s.%s" % (hand, out), "%s.tg[%d].%s" % (constraint, i, into)
        yield "%s.w%d" % (constraint, i), "%s.tg[%d].tw" % (constraint, i)


def main():
    joints = skeleton()
    print("//Maya ASCII 2016 scene\n//Codeset: UTF-8")
    print('requires maya "2016";\ncurrentUnit -l centimeter -a degree -t film;')
    print('fileInfo "application" "make_walking_biped.py";')
    for joint in joints:
        write_joint(joint)
    write_prop()
    curves = body_curves()
    for side, sign in (("left", 1.0), ("right", -1.0)):
        curves += leg_curves(side, sign) + arm_curves(side, sign)
    # Out of the right hand and into the left one, flat where one of them holds it.
    curves.append(Curve("prop_parentConstraint1.w0", [(0, 1), (23, 1), (27, 0), (48, 0)], AUTO,
                        in_out=[(FLAT, FLAT)] * 3 + [(FLAT, STEP)]))
    curves.append(Curve("prop_parentConstraint1.w1", [(0, 0), (23, 0), (27, 1), (48, 1)], AUTO,
                        in_out=[(FLAT, FLAT)] * 3 + [(FLAT, STEP)]))
    names = [write_curve(curve) for curve in curves]
    print('createNode script -n "sceneConfigurationScriptNode";')
    print('\tsetAttr ".b" -type "string" "playbackOptions -min 0 -max %d -ast 0 -aet %d ";' % (FRAMES, FRAMES))
    print('\tsetAttr ".st" 6;')
    print("select -ne :time1;\n\tsetAttr \".o\" 0;")
    for joint in joints:
        if joint.parent:
            print('connectAttr "biped:%s.s" "biped:%s.is";' % (joint.parent, joint.name))
    for name, curve in zip(names, curves):
        print('connectAttr "%s.o" "%s";' % (name, curve.target))
    for source, destination in prop_connections():
        print('connectAttr "%s" "%s";' % (source, destination))
    print("// End of walking_biped.ma")


if __name__ == "__main__":
    main()
