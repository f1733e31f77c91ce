"""What the tool does, from Python: the same files, and the same words where it refuses."""

import gc
import json
import os
import unittest
import warnings

import numpy as np
import vor2
from scenes import BIPED, DATA, SceneTest, a_scene, a_triangle, dumped, run_tool

STAMP = {"timestamp": "2016-03-02T04:05:06Z", "user": "tester"}
STAMP_WORDS = ("--timestamp", STAMP["timestamp"], "--user", STAMP["user"])


class Tool(SceneTest):
    def refusal(self, *words):
        told = run_tool(*words)
        self.assertNotEqual(told.returncode, 0)
        line = next(one for one in told.stderr.decode().splitlines() if ": warning: " not in one)
        return line.removeprefix("vor2: ")

    def test_refusals_raise_with_the_words_of_the_tool(self):
        walk = self.walk()
        good = walk.read_bytes()
        cut, newer, folder = self.folder / "cut.vr2", self.folder / "newer.vr2", self.folder / "none" / "out.vr2"
        cut.write_bytes(good[: len(good) // 2])
        newer.write_bytes(good[:12] + np.float32(9).tobytes() + good[16:])
        out = self.folder / "out.vr2"
        broken = self.folder / "broken.ma"
        broken.write_text("//Maya ASCII 2016 scene\ncreateNode joint -n \"a\ns;\n")
        cases = [
            (("dump", self.folder / "missing.vr2"), lambda: vor2.load(self.folder / "missing.vr2")),
            (("dump", self.folder), lambda: vor2.load(self.folder)),
            (("dump", BIPED), lambda: vor2.load(BIPED)),
            (("info", cut), lambda: vor2.facts(cut)),
            (("check", cut), lambda: vor2.check(cut)),
            (("dump", newer), lambda: vor2.load(newer)),
            (("upgrade", walk, folder), lambda: vor2.load(walk).save(folder)),
            (("upgrade", cut, out), lambda: vor2.upgrade(cut, out)),
            (("export", broken, "-o", out), lambda: vor2.export(broken, out)),
            (("export", BIPED, "-o", out, "--node", "nobody"), lambda: vor2.export(BIPED, out, node=["nobody"])),
            (("export", BIPED, "-o", out, "--sample-at", "0"), lambda: vor2.export(BIPED, out, sample_at=0)),
            (("export", BIPED, "-o", out, "--colour", "red"), lambda: vor2.export(BIPED, out, colour="red")),
            (("import", cut, "-o", self.folder / "a.ma"), lambda: vor2.import_(cut, self.folder / "a.ma")),
            (("host", "-c", "sphere -nope"), lambda: vor2.run("sphere -nope")),
            (("convert", walk, self.folder / "a.txt"), lambda: vor2.convert(walk, self.folder / "a.txt")),
            (("diff", walk, cut), lambda: vor2.diff(walk, cut)),
            (("grow", walk), lambda: vor2.tool("grow", walk)),
        ]
        for words, work in cases:
            with self.subTest(words=words):
                with self.assertRaises(vor2.Error) as caught, warnings.catch_warnings():
                    warnings.simplefilter("ignore")
                    work()
                self.assertEqual(str(caught.exception).split(" (see 'vor2")[0],
                                 self.refusal(*words).split(" (see 'vor2")[0])
                self.assertEqual(caught.exception.lines[0], str(caught.exception))
        self.assertFalse(out.exists())

    def test_files_are_the_ones_that_the_tool_writes(self):
        mine, theirs = self.folder / "mine.vr2", self.folder / "theirs.vr2"
        report = vor2.export(BIPED, mine, sample_at=30, rotate_180=False, node=["biped:hips", "prop"], **STAMP)
        words = ("--sample-at", 30, "--rotate-180", "off", "--node", "biped:hips", "--node", "prop", *STAMP_WORDS)
        self.assertEqual(run_tool("export", BIPED, "-o", theirs, *words).returncode, 0)
        self.assertTrue(report["exported"])
        # Where it was saved to is part of what an export notes.
        self.assertEqual({one["field"] for one in vor2.diff(mine, theirs)["differences"]} - {"file_info"}, set())
        again, upgraded = self.folder / "again.vr2", self.folder / "upgraded.vr2"
        vor2.load(mine).save(again)
        run_tool("upgrade", mine, upgraded)
        self.assertEqual(again.read_bytes(), upgraded.read_bytes())
        self.assertEqual(vor2.facts(mine), json.loads(run_tool("info", "--json", mine).stdout))
        vor2.import_(mine, self.folder / "mine.ma", time_unit="ntsc")
        self.assertIn("hips", vor2.run(['ls -type "joint"'], scene=self.folder / "mine.ma"))
        vor2.convert(mine, self.folder / "mine.glb")
        self.assertGreater((self.folder / "mine.glb").stat().st_size, 1000)
        self.assertIn("3", vor2.run(["print(1 + 2)"], python=True))

    def test_missing_references_are_warned_of(self):
        scene = a_scene("hips")
        scene.xrefs_15 = [vor2.VOR2_XREF_15(file_name="gone.vr2")]
        path = self.folder / "refers.vr2"
        scene.save(path)
        with self.assertWarnsRegex(vor2.Note, "there is no scene .*gone.vr2"):
            vor2.load(path)
        self.assertEqual(vor2.check(path), json.loads(run_tool("check", "--strict", "--json", path).stdout))

    def test_poses_are_those_of_the_tool(self):
        scene = a_scene("hips", "spine")
        track = vor2.VOR2_ANIMATABLE_QUATERNION_SLERP(key_times=[0, 1], key_values=[[0, 0, 0, 1], [0, 0.6, 0, 0.8]])
        scene.matrix_hierarchy.nodes[1].rotation_track = track
        np.testing.assert_allclose(track.sample([0, 0.5, 2])[:, 3], [1, np.cos(np.arccos(0.8) / 2), 0.8], rtol=1e-6)
        skin = a_triangle(vor2.VOR2_WEIGHTED_MESH)
        rest = skin.vertices.column("rest_position")
        rest[:] = np.eye(3) + [0, 3, 1]
        for vertex in skin.vertices:
            vertex.bone_weights = [vor2.VOR2_BONE_WEIGHT_DATA(bone_index=1, weight=1)]
        scene.weighted_meshes.append(skin)
        morph = a_triangle(vor2.VOR2_MORPH_MESH)
        weight = vor2.VOR2_ANIMATABLE_FLOAT32_LINEAR(key_times=[0, 1], key_values=[0, 1])
        morph.morph_targets.append(vor2.VOR2_NAMED_ANIMATABLE_FLOAT32(name="up", track=weight))
        morph.vertices[0].target_verts = [vor2.VOR2_TARGET_VERT(offset=[0, 2, 0], target_index=0)]
        scene.morph_meshes.append(morph)
        path = self.folder / "pose.vr2"
        # A change of what skinning derives from counts, as in the file.
        scene.pose(1)
        scene.weighted_meshes[0].vertices.column("rest_position")[:, 0] += 1
        scene.copy().save(path)
        for time in (0.25, 1.0):
            pose = scene.pose(time)
            told = json.loads(run_tool("pose", "--json", "--time", time, path).stdout)
            matrices = [node["world_matrix"] for node in told["nodes"]]
            np.testing.assert_array_equal(pose.world_matrices.reshape(2, 12), np.float32(matrices))
            for field in ("weighted_meshes", "morph_meshes"):
                mine, theirs = getattr(pose, field)[0], told[field][0]
                self.assertEqual(mine.name, theirs["name"])
                np.testing.assert_array_equal(mine.positions, np.float32(theirs["positions"]))
                np.testing.assert_array_equal(mine.normals, np.float32(theirs["normals"]))
        np.testing.assert_array_equal(pose.morph_meshes[0].positions[0], [1, 2, 0])

    @unittest.skipUnless(DATA.is_dir(), "there are no further scenes")
    def test_every_further_scene_is_the_same_to_python_and_to_the_tool(self):
        seen = 0
        scenes = [*DATA.rglob("*.ma"), *DATA.rglob("*.bvh"), *DATA.rglob("*.gl*")]
        for scene in sorted(scenes, key=os.path.getsize)[: int(os.environ.get("VOR2_MOST_SCENES", "1000"))]:
            with self.subTest(scene=scene.name), warnings.catch_warnings():
                warnings.simplefilter("ignore")
                path = self.folder / "scene.vr2"
                if ".gl" in scene.suffix:
                    vor2.convert(scene, path, leave_out_textures=True)
                else:
                    options = {"allow_unevaluated": True, "allow_missing_references": True, "on_problems": "force"}
                    vor2.export(scene, path, meshes=True, sample_at=6, **options)
                loaded = vor2.load(path)
                self.assertEqual(loaded.dump(), dumped(path))
                self.assertEqual(vor2.check(path), json.loads(run_tool("check", "--strict", "--json", path).stdout))
                middle = sum(vor2.facts(path)["time_range"]) / 2
                told = json.loads(run_tool("pose", "--json", "--time", middle, path).stdout)
                np.testing.assert_array_equal(loaded.pose(middle).world_matrices.reshape(-1, 12),
                                              np.float32([node["world_matrix"] for node in told["nodes"]]))
                seen += 1
        del loaded
        gc.collect()
        self.assertEqual(vor2._core.live(), 0)
        self.assertGreater(seen, 0)


if __name__ == "__main__":
    unittest.main()
