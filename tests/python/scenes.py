"""What the tests of the Python module share: scenes, files and the tool beside them."""

import json
import os
import pathlib
import subprocess
import tempfile
import unittest

import numpy as np
import vor2

TOOL = os.environ["VOR2_TOOL"]
SOURCE = pathlib.Path(os.environ["VOR2_SOURCE_DIR"])
DATA = pathlib.Path(os.environ.get("VOR2_SHARED_DATA", "."))
BIPED = SOURCE / "examples" / "walking_biped.ma"
CLASSES = {name: fields for name, bases, fields in vor2._core.tell_classes()}


def run_tool(*words):
    clean = {key: value for key, value in os.environ.items() if key not in ("LD_PRELOAD", "ASAN_OPTIONS")}
    return subprocess.run([TOOL, *map(str, words)], capture_output=True, env=clean, check=False)


def dumped(path):
    return json.loads(run_tool("dump", "--json", path).stdout)


class SceneTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)

    def walk(self):
        path = self.folder / "walk.vr2"
        vor2.export(BIPED, path, sample_at=30)
        return path


def a_node(name="hips", parent=-1):
    position = vor2.VOR2_ANIMATABLE_VECTOR_3_LINEAR(key_times=[0, 1], key_values=[[0, 1, 2], [3, 4, 5]])
    return vor2.VOR2_MATRIX_NODE(name=name, parent_index=parent, position_track=position)


def a_scene(*names):
    scene = vor2.VOR2()
    scene.environment.time_range = [0, 1]
    for index, name in enumerate(names):
        scene.matrix_hierarchy.nodes.append(a_node(name, index - 1))
    return scene


def a_triangle(cls=None):
    mesh = (cls or vor2.VOR2_RIGID)(name="triangle")
    mesh.vertices.resize(3)
    mesh.vertices.column("position")[:] = np.eye(3)
    mesh.vertices.column("normal")[:] = [0, 1, 0]
    mesh.sub_objects.append(vor2.VOR2_TRI_SUB_OBJECT(triangles=np.array([[0, 1, 2]])))
    return mesh
