"""Every record, field by field: what Python puts in, the file and the tool give back."""

import itertools
import json
import math
import struct
import unittest

import numpy as np
import vor2
from scenes import CLASSES, SceneTest, a_scene, a_triangle, dumped, run_tool


def takes(put, name):
    """Whether a list or field takes an object of that class."""
    try:
        put(getattr(vor2, name)())
    except TypeError:
        return False
    return True


class Filler:
    """Records of every class with something of its own in every field."""

    def __init__(self):
        self.numbers = itertools.count(1)

    def number(self, sort):
        value = next(self.numbers)
        return value / 4 if sort in "fd" else value

    def rows(self, sort, width, count):
        return [[self.number(sort) for _ in range(width)] if width > 1 else self.number(sort) for _ in range(count)]

    def fill(self, record, depth=0):
        """Nests no deeper than it takes to have each class once: maps hold maps."""
        for field, kind, sort, width, held in CLASSES[type(record).__name__]:
            if kind == "boolean":
                setattr(record, field, True)
            elif kind == "number":
                setattr(record, field, self.number(sort))
            elif kind == "tuple":
                setattr(record, field, self.rows(sort, width, 1)[0])
            elif kind == "text":
                setattr(record, field, f"text {next(self.numbers)} \u00e4\U0001f9b4\ud800")
            elif kind == "texts":
                setattr(record, field, ["a", f"b {next(self.numbers)}"])
            elif kind == "numbers":
                setattr(record, field, self.rows(sort, width, 3))
            elif kind == "record":
                self.fill(getattr(record, field), depth)
            elif kind == "records":
                setattr(record, field, [self.fill(getattr(vor2, held)(), depth + 1) for _ in range(2)])
            elif kind == "optional" and field != "scene" and (depth < 6 or "track" in field):
                assert any(takes(lambda one: setattr(record, field, one), name) for name in CLASSES), field
                self.fill(getattr(record, field), depth + 4)
        return record


class Records(SceneTest):
    def whole_scene(self):
        """A scene with an object of every class that its lists take."""
        scene, fill = vor2.VOR2(), Filler()
        fill.fill(scene)
        for field, kind, _, _, held in CLASSES["VOR2"]:
            if kind != "optionals":
                continue
            for name in CLASSES:
                if takes(getattr(scene, field).append, name):
                    fill.fill(getattr(scene, field)[-1])
        scene.materials[1].maps = [vor2.VOR2_NORMAL_MATERIAL_MAP(first_map=vor2.VOR2_BITMAP_MATERIAL_MAP()), None]
        scene.cameras[0].effects = [vor2.VOR2_CAMERA_MOTION_BLUR_EFFECT(), vor2.VOR2_CAMERA_DEPTH_OF_FIELD_EFFECT()]
        scene.anim_meshes[0].vertices[0].uv_tracks = [vor2.VOR2_ANIMATABLE_VECTOR_3_LINEAR(key_values=[[7, 8, 9]])]
        for reference, name in ((scene.xrefs_15[0], "a.vr2"), (scene.xrefs_20[0], "b.vr2")):
            reference.file_name, reference.scene = name, a_scene(name)
        return scene

    def test_every_field_of_every_class_goes_through_a_file(self):
        scene = self.whole_scene()
        path = self.folder / "all.vr2"
        scene.save(path)
        scene.inf.version = vor2.VOR2().inf.version  # what a save states
        told = scene.dump()
        self.assertEqual(told, vor2.dump(path))
        self.assertEqual(told, dumped(path))
        held = {one["class"] for key in told for one in (told[key] if isinstance(told[key], list) else []) if one}
        self.assertLess({"VOR2_SPOT_LIGHT", "VOR2_SHADER_MATERIAL", "VOR2_WEIGHTED_MESH", "VOR2_XREF<20>"}, held)
        self.assertEqual(vor2.diff(scene, path)["count"], 0)
        copy = scene.copy()
        copy.lights[0].shadow_params.object_shadow_params.float_track.key_values[1] += 1
        self.assertEqual([one["field"] for one in vor2.diff(scene, copy)["differences"]],
                         ["shadow_params.object_shadow_params.float_track.key_values[1]"])

    def test_attributes_have_the_names_that_the_tool_tells(self):
        def compare(record, told):
            self.assertEqual(type(record).__name__.replace("NAMED_ANIMATABLE_", "NAMED_ANIMATABLE ").split()[0],
                             told["class"].replace("<", "_").replace(">", ""))
            for key, value in told.items():
                if key in ("class", "cursor_index", "cursor_fraction"):
                    continue
                mine = getattr(record, key)
                if isinstance(value, dict):
                    compare(mine, value)
                elif isinstance(value, list) and value and isinstance(value[0], dict) and not isinstance(mine, np.ndarray):
                    self.assertEqual(len(mine), len(value))
                    for a, b in zip(mine, value):
                        if b is not None:
                            compare(a, b)
                elif isinstance(value, list) and isinstance(mine, np.ndarray) and value and not isinstance(value[0], dict):
                    np.testing.assert_array_equal(mine, np.array(value, mine.dtype))

        scene = self.whole_scene()
        compare(scene, {"class": "VOR2", **scene.dump()})

    def test_wrong_values_raise_and_change_nothing(self):
        scene = a_scene("hips")
        node = scene.matrix_hierarchy.nodes[0]
        track = node.position_track
        mesh = a_triangle()
        before = scene.dump()
        cases = [
            (ValueError, "key_values: an array of the shape (2, 2) is given, (n, 3) is needed",
             lambda: setattr(track, "key_values", [[1, 2], [3, 4]])),
            (ValueError, "key_times: an array of the shape (1, 2) is given, (n,) is needed",
             lambda: setattr(track, "key_times", [[1, 2]])),
            (TypeError, "key_values: numbers of the type complex128 are given, float32 is needed",
             lambda: setattr(track, "key_values", np.zeros((2, 3), complex))),
            (TypeError, "key_times: numbers of the type <U1 are given, float32 is needed",
             lambda: setattr(track, "key_times", ["a"])),
            (TypeError, "mapping_channels: numbers of the type float64 are given, uint32 is needed",
             lambda: setattr(mesh, "mapping_channels", [0.5])),
            (ValueError, "mapping_channels: -1 isn't from 0 to 4294967295",
             lambda: setattr(mesh, "mapping_channels", [-1])),
            (ValueError, "matrix_index: 4294967296 isn't from 0 to 4294967295",
             lambda: setattr(mesh, "matrix_index", 2**32)),
            (TypeError, "parent_index: a float is given, a whole number is needed",
             lambda: setattr(node, "parent_index", 0.0)),
            (ValueError, "key_times: a number is too large for single precision",
             lambda: setattr(track, "key_times", [0, 1e39])),
            (TypeError, "name: a int is given, a str is needed", lambda: setattr(node, "name", 5)),
            (ValueError, "name: a text of more than 65,535 units doesn't fit a file",
             lambda: setattr(node, "name", "x" * 65536)),
            (TypeError, "position_track: takes no vor2.VOR2_ANIMATABLE_FLOAT32_LINEAR",
             lambda: setattr(node, "position_track", vor2.VOR2_ANIMATABLE_FLOAT32_LINEAR())),
            (TypeError, "nodes: takes no vor2.VOR2_RIGID", lambda: scene.matrix_hierarchy.nodes.append(mesh)),
            (TypeError, "rigids: takes no int", lambda: setattr(scene, "rigids", [mesh, 1])),
            (AttributeError, "world_matrix follows from the tracks and can't be set",
             lambda: setattr(node, "world_matrix", np.zeros((3, 4)))),
            (TypeError, "VOR2_LIGHT is what several classes share; make one of those", vor2.VOR2_LIGHT),
            (IndexError, "nodes: no element has that index", lambda: scene.matrix_hierarchy.nodes[1]),
            (ValueError, "key_times: each time must be greater than the one before it",
             lambda: track.set_keys([0, 0], np.zeros((2, 3)))),
            (ValueError, "3 times and 2 values are given", lambda: track.set_keys([0, 1, 2], np.zeros((2, 3)))),
            (ValueError, "time: a time that isn't finite makes no sense", lambda: scene.pose(math.nan)),
        ]
        for error, words, work in cases:
            with self.subTest(words=words):
                with self.assertRaises(error) as caught:
                    work()
                self.assertIn(words, str(caught.exception).replace("vor2.VOR2_LIGHT", "VOR2_LIGHT"))
        with self.assertRaises(AttributeError):
            node.nmae = "a slip of the pen"
        self.assertEqual(scene.dump(), before)

    def test_numbers_that_are_none_are_kept_and_found(self):
        scene = a_scene("hips", "spine")
        scene.matrix_hierarchy.nodes[1].position_track.key_values[0, 1] = math.nan
        path = self.folder / "nan.vr2"
        scene.save(path)
        again = vor2.load(path).matrix_hierarchy.nodes[1].position_track.key_values
        self.assertTrue(math.isnan(again[0, 1]))
        self.assertEqual(again[0, 0].tobytes(), struct.pack("<f", 0))
        for found in (vor2.check(scene), vor2.check(path)):
            self.assertEqual([one["field"] for one in found["findings"]], ["position_track.key_values[0]"])
        # Of a scene in memory and a file the tool's own words.
        words = run_tool("check", "--strict", "--json", path)
        self.assertEqual(words.returncode, 1)
        self.assertEqual(json.loads(words.stdout), vor2.check(path))


if __name__ == "__main__":
    unittest.main()
