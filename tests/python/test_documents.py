"""What docs/python.md shows, and the example, run as they are written."""

import contextlib
import io
import os
import re
import subprocess
import sys
import unittest

import numpy as np
import vor2
from scenes import BIPED, SOURCE, SceneTest

BLOCK = re.compile(r"^```python\n(.*?)^```", re.MULTILINE | re.DOTALL)


class Documents(SceneTest):
    def test_snippets_run_top_to_bottom(self):
        text = (SOURCE / "docs" / "python.md").read_text(encoding="utf-8")
        (self.folder / "walk.ma").write_bytes(BIPED.read_bytes())
        back = os.getcwd()
        self.addCleanup(os.chdir, back)
        os.chdir(self.folder)
        space = {}
        for block in BLOCK.finditer(text):
            line = text.count("\n", 0, block.start()) + 1
            with contextlib.redirect_stdout(io.StringIO()):
                exec(compile("\n" * line + block[1], "docs/python.md", "exec"), space)  # pylint: disable=exec-used
        self.assertEqual(vor2.check("sheet.vr2")["count"], 0)
        self.assertEqual(vor2.facts("hips.vr2")["sample_rate"], 24)

    def test_the_example_thins_within_what_it_states(self):
        walk, thin, picture = self.walk(), self.folder / "thin.vr2", self.folder / "thin.png"
        words = (walk, thin, "--tolerance", "0.005", "--rotation", "1", "--plot", picture)
        told = subprocess.run([sys.executable, SOURCE / "examples" / "thin_keys.py", *words],
                              capture_output=True, text=True, check=True).stdout
        self.assertTrue(picture.exists() or "there is no matplotlib" in told)
        before, after = map(int, re.match(r"(\d+) keys before, (\d+) after", told).groups())
        self.assertLess(after, before / 2)
        thick, thin = (vor2.load(path).matrix_hierarchy.nodes for path in (walk, thin))
        times = np.random.default_rng(1).uniform(0, 2, 500)
        for one, other in zip(thick, thin):
            if one.position_track is None:
                continue
            moved = one.position_track.sample(times) - other.position_track.sample(times)
            self.assertLess(np.linalg.norm(moved, axis=1).max(), 0.005001)


if __name__ == "__main__":
    unittest.main()
