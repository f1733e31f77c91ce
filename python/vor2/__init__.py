"""Scenes of the .vr2 format in Python.

`load` gives a scene as objects with the names that the records have in the format's library; the keys of its tracks
are numpy arrays that look straight into it. `check`, `diff`, `facts` and `dump` tell what the tool's verbs print with
--json. `export`, `import_` and `run` are the embedded host. docs/python.md is the manual.
"""

from __future__ import annotations

import json as _json
import os as _os
import typing as _typing

from . import _core
from ._records import *
from ._records import VOR2, VOR2_ANIMATABLE, Record, version

if _typing.TYPE_CHECKING:
    from typing import Any, Iterable, Optional, Union

    from numpy import float32
    from numpy.typing import NDArray

    _Path = Union[str, bytes, _os.PathLike]
    _Scene = Union[VOR2, _Path]

__version__: str = version


class Note(UserWarning):
    """What the tool would tell as a note: work was done, and there is something to know about it."""


class MeshPose(_typing.NamedTuple):
    """A mesh at a time: its name, and positions and normals as float32 arrays of the shape (vertices, 3)."""

    name: str
    positions: NDArray[float32]
    normals: NDArray[float32]


class Pose(_typing.NamedTuple):
    """Where everything stands at a time, in arrays that belong to nobody else."""

    time: float
    world_matrices: NDArray[float32]  # float32, (nodes, 3, 4): rows of four, the translation in metres last
    rigids: list[MeshPose]
    weighted_meshes: list[MeshPose]
    morph_meshes: list[MeshPose]
    anim_meshes: list[MeshPose]


def _name(path: _Path) -> bytes:
    return _os.fsencode(path)


def _scene(scene_or_path: _Scene) -> VOR2:
    return scene_or_path if isinstance(scene_or_path, Record) else _core.load(_name(scene_or_path), False)


def load(path: _Path) -> VOR2:
    """The scene in a file of any version. Its clock isn't moved.

    A scene that it refers to and that isn't there is told as a `Note`, and left out.
    """
    return _core.load(_name(path), True)


def save(scene: VOR2, path: _Path, *, allow_outside: bool = False) -> None:
    """Writes the scene in the newest form: whole, or not at all.

    Scenes that it refers to are saved beside it; one that would land outside its folder is refused, unless
    `allow_outside`.
    """
    _core.save(scene, _name(path), allow_outside)


def upgrade(path: _Path, out: _Path, **options: Any) -> None:
    """Saves a scene of any version in the newest form, as `vor2 upgrade` does."""
    tool("upgrade", path, out, **options)


def check(scene: _Scene, *, strict: bool = True) -> dict[str, Any]:
    """What is wrong with a scene, or with the one in a file, as `vor2 check --strict --json` tells it."""
    return _json.loads(_core.check(_scene(scene), strict))


def diff(
    first: _Scene, second: _Scene, *, tolerance: float = 0.0, ignore: Union[str, Iterable[str]] = ()
) -> dict[str, Any]:
    """What differs between two scenes or files, as `vor2 diff --json` tells it."""
    ignored = [ignore] if isinstance(ignore, str) else list(ignore)
    return _json.loads(_core.diff(_scene(first), _scene(second), tolerance, ignored))


def facts(path: _Path) -> dict[str, Any]:
    """What is in a file, as `vor2 info --json` tells it."""
    return _json.loads(_core.facts(_name(path)))


def dump(scene: _Scene) -> dict[str, Any]:
    """Everything in a scene or file, as `vor2 dump --json` tells it."""
    return _json.loads(_core.dump(_scene(scene)))


def pose(scene: VOR2, time: Optional[float] = None) -> Pose:
    """Moves the scene's clock to the time in seconds, or to its start, and gives where everything stands then.

    It stands as in the saved and loaded scene: whatever was changed before counts.
    """
    at, world_matrices, *meshes = _core.pose(scene, time)
    return Pose(at, world_matrices, *([MeshPose(*mesh) for mesh in sort] for sort in meshes))


def _words(verb: str, options: dict[str, Any]) -> list[bytes]:
    """Options as the tool takes them: `sample_at=30` is --sample-at 30, a list is the option several times over."""
    known = _core.options_of(verb)
    words = []
    for key, value in options.items():
        name = key.rstrip("_").replace("_", "-")
        choices = known.get(name, "unknown") if known is not None else "unknown"
        for one in value if isinstance(value, (list, tuple)) else [value]:
            if one is None or (choices is None and one is False):
                continue
            words.append(b"--" + name.encode())
            if choices is None and one is True:
                continue
            if isinstance(one, bool) and choices != "unknown" and "on" in choices:
                one = "on" if one else "off"
            if choices is None:
                raise TypeError(f"{key}: is on or off, True or False")
            words.append(_os.fsencode(one) if isinstance(one, (str, bytes, _os.PathLike)) else str(one).encode())
    return words


def tool(verb: str, *words: _Path, **options: Any) -> str:
    """Runs a verb of the tool, `tool("convert", "a.vr2", "b.glb", influences=4)`, and gives what it prints.

    Raises `Error` with what the tool would tell as a problem; its notes are warnings.
    """
    names = [_name(word) for word in words]
    # A name that begins with a dash is no option.
    names = [b"./" + name if name.startswith(b"-") else name for name in names]
    return _core.run_verb(verb, names + _words(verb, options))[1]


def export(scene: _Path, out: _Path, **options: Any) -> dict[str, Any]:
    """Opens a scene in the embedded host, runs the plug-in's export on it, and gives the report as a dict.

    `options` are those of `vor2 export`: `sample_at=30, node=["hips"], strip_namespace=True`.
    """
    return _json.loads(tool("export", scene, output=out, json=True, **options))


def import_(path: _Path, out: _Path, **options: Any) -> None:
    """Imports a .vr2 file into the embedded host and saves its joints as a scene; options as of `vor2 import`."""
    tool("import", path, output=out, **options)


def run(
    lines: Union[str, Iterable[str]],
    *,
    scene: Optional[_Path] = None,
    python: bool = False,
    save: Optional[_Path] = None,
    **options: Any,
) -> str:
    """Runs lines of script in the embedded host and gives what they print; options as of `vor2 host`.

    The lines are MEL, with the plug-in's commands, or Python with `python`. The first that fails raises `Error`.
    """
    lines = [lines] if isinstance(lines, str) else list(lines)
    words = [scene] if scene is not None else []
    return tool("host", *words, command=lines, python=python, save=save, **options)


def convert(path: _Path, out: _Path, **options: Any) -> None:
    """Converts a scene to glTF, or another format to a scene; options as of `vor2 convert`."""
    tool("convert", path, out, **options)


def _set_keys(self, times, values):
    """Gives the track these keys, as many times in seconds, strictly ascending, as values, or one value."""
    fresh = type(self)(key_times=times, key_values=values)
    count = len(fresh.key_times)
    if len(fresh.key_values) not in (count, 1):
        raise ValueError(f"{count} times and {len(fresh.key_values)} values are given")
    if not (fresh.key_times[1:] > fresh.key_times[:-1]).all():
        raise ValueError("key_times: each time must be greater than the one before it")
    self.key_times, self.key_values = fresh.key_times, fresh.key_values


def _sample(self, times):
    """The track's value at each of the times, a row each; the track isn't moved."""
    return _core.sample(self, times)


for _class, _name_of, _method in (
    (VOR2, "save", save),
    (VOR2, "pose", pose),
    (VOR2, "check", check),
    (VOR2, "dump", dump),
    (VOR2_ANIMATABLE, "sample", _sample),
    (VOR2_ANIMATABLE, "set_keys", _set_keys),
):
    setattr(_class, _name_of, _method)
