"""Arrays and records stay good, whatever a script keeps and whatever becomes of the scene."""

import gc
import threading
import unittest

import numpy as np
import vor2
from scenes import SceneTest, a_node, a_scene, a_triangle


class Lifetimes(SceneTest):
    def setUp(self):
        super().setUp()
        gc.collect()
        self.addCleanup(lambda: (gc.collect(), self.assertEqual(vor2._core.live(), 0)))

    def test_arrays_look_into_the_scene_and_keep_it(self):
        scene = a_scene("hips", "spine")
        track = scene.matrix_hierarchy.nodes[1].position_track
        values, times = track.key_values, track.key_times
        values[1] = [7, 8, 9]
        self.assertEqual(scene.dump()["matrix_hierarchy"]["nodes"][1]["position_track"]["key_values"][1], [7, 8, 9])
        np.testing.assert_array_equal(scene.pose(1).world_matrices[1, :, 3], [10, 12, 14])
        # Times that are changed behind the clock's back count at its next move.
        times[:] = [0, 2]
        np.testing.assert_array_equal(scene.pose(1).world_matrices[1, :, 3], [6.5, 8.5, 10.5])
        times[:] = [0, 1]
        del times
        np.testing.assert_array_equal(scene.pose(1).world_matrices[1, :, 3], [10, 12, 14])
        del scene, track
        gc.collect()
        np.testing.assert_array_equal(values, [[0, 1, 2], [7, 8, 9]])
        self.assertGreater(vor2._core.live(), 0)

    def test_times_that_a_script_puts_out_of_order_count_as_in_a_file(self):
        scene = a_scene("hips")
        track = scene.matrix_hierarchy.nodes[0].position_track
        track.set_keys(range(40), np.outer(np.arange(40), [1, 1, 1]))
        times = track.key_times
        scene.pose(30.5)
        scene.pose(0)
        times[6] = 25  # 20 is met there first
        scene.save(self.folder / "mixed.vr2")
        loaded = vor2.load(self.folder / "mixed.vr2")
        np.testing.assert_array_equal(scene.pose(20).world_matrices, loaded.pose(20).world_matrices)

    def test_replaced_keys_leave_the_arrays_that_were_taken_before(self):
        scene = a_scene("hips")
        track = scene.matrix_hierarchy.nodes[0].position_track
        old = track.key_values
        track.set_keys([0, 1, 2], np.ones((3, 3)))
        old[0] = 5  # is no part of the track any more
        np.testing.assert_array_equal(old, [[5, 5, 5], [3, 4, 5]])
        np.testing.assert_array_equal(track.key_values, np.ones((3, 3)))
        track.key_times = track.key_times[::2]
        np.testing.assert_array_equal(track.key_times, [0, 2])
        track.key_times = track.key_times[:0]
        self.assertEqual(track.key_times.shape, (0,))

    def test_records_follow_their_elements(self):
        scene = a_scene("a", "b", "c")
        nodes = scene.matrix_hierarchy.nodes
        a, b, c = nodes
        b_values = b.position_track.key_values
        c_matrix = c.world_matrix
        nodes.insert(0, a_node("first"))
        for i in range(40):
            nodes.append(a_node(str(i)))
        self.assertEqual([a.name, b.name, c.name], ["a", "b", "c"])
        c.name = "changed"
        self.assertEqual(nodes[3].name, "changed")
        del nodes[1:3]
        self.assertEqual([node.name for node in nodes[:2]], ["first", "changed"])
        # What was taken out goes on by itself.
        b.name = "alone"
        b.position_track.key_values[0] = 9
        np.testing.assert_array_equal(b_values[0], [9, 9, 9])
        nodes.clear()
        self.assertEqual([a.name, b.name, c.name], ["a", "alone", "changed"])
        self.assertEqual(c_matrix.shape, (3, 4))
        nodes.extend([c, a])
        self.assertEqual([node.name for node in nodes], ["changed", "a"])
        a.name = "a copy went into the list"
        self.assertEqual(nodes[1].name, "a")
        self.assertEqual(scene.pose(0).world_matrices.shape, (2, 3, 4))

    def test_objects_that_leave_the_scene_live_as_long_as_they_are_held(self):
        scene = a_scene("hips")
        scene.rigids = [a_triangle(), None, a_triangle()]
        mesh = scene.rigids[0]
        sub = mesh.sub_objects[0]
        corner = mesh.vertices[2].position
        column = mesh.vertices.column("normal")
        triangles = sub.triangles.array
        del scene.rigids[0]
        self.assertIsNone(scene.rigids[0])
        mesh.vertices.resize(1000)  # moves the vertices away from the arrays
        mesh.vertices.column("position")[2] = 4
        mesh.sub_objects = []
        scene.rigids.clear()
        del scene
        gc.collect()
        np.testing.assert_array_equal(corner, [0, 0, 1])
        np.testing.assert_array_equal(column, [[0, 1, 0]] * 3)
        np.testing.assert_array_equal(triangles, [[0, 1, 2]])
        self.assertEqual(sub.triangles[0].third, 2)
        np.testing.assert_array_equal(mesh.vertices[2].position, [4, 4, 4])

        node = a_node()
        properties = node.extended_properties
        properties.string_arrays.append(vor2.VOR2_NAMED_STRING_ARRAY(name="n", strings=["one"]))
        inner = properties.string_arrays[0]
        node.extended_properties = vor2.VOR2_EXTENDED_PROPERTIES()
        self.assertEqual((inner.name, inner.strings, len(properties.string_arrays)), ("n", ("one",), 0))
        node.extended_properties = node.extended_properties
        track = node.position_track
        node.position_track = None
        self.assertEqual(len(track.key_times), 2)
        node.position_track = track
        self.assertEqual(node.position_track, track)

    def test_a_list_assigned_from_itself_keeps_its_elements(self):
        scene = a_scene("a", "b", "c")
        nodes = scene.matrix_hierarchy.nodes
        scene.matrix_hierarchy.nodes = reversed(list(nodes))
        self.assertEqual([node.name for node in nodes], ["c", "b", "a"])
        nodes[0] = nodes[2]
        nodes[1] = nodes[1]
        self.assertEqual([node.name for node in nodes], ["a", "b", "a"])
        self.assertEqual(nodes.pop().name, "a")
        other = scene.copy()
        other.matrix_hierarchy.nodes[0].name = "other"
        self.assertEqual(nodes[0].name, "a")

    def test_checks_and_saves_leave_what_is_held_alone(self):
        scene = a_scene("a", "b")
        track = scene.matrix_hierarchy.nodes[1].position_track
        values = track.key_values
        vor2.check(scene)
        scene.save(self.folder / "a.vr2")
        values[0] = 3
        np.testing.assert_array_equal(track.key_values[0], [3, 3, 3])

    def test_threads_share_a_scene_and_work_side_by_side(self):
        path = self.walk()
        scene = vor2.load(path)
        wrong = []

        def work(own):
            try:
                for i in range(5):
                    scene.pose(i / 10)
                    scene.matrix_hierarchy.nodes[1].name = own
                    scene.save(self.folder / f"{own}.vr2")
                    vor2.load(path).dump()
            except BaseException as error:  # pylint: disable=broad-except
                wrong.append(error)

        threads = [threading.Thread(target=work, args=(name,)) for name in ("a", "b", "c")]
        for thread in threads:
            thread.start()
        for thread in threads:
            thread.join()
        self.assertEqual(wrong, [])


if __name__ == "__main__":
    unittest.main()
