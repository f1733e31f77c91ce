#!/usr/bin/env python3
"""Writes what editors are told of the records: make_types.py DIR, where the compiled part lies in DIR/vor2."""

import pathlib
import sys

HEAD = '''"""Made by python/make_types.py from the tables of the records."""

from typing import Any, Generic, Iterable, Iterator, Optional, Sequence, TypeVar, Union, overload

import numpy as np
from numpy.typing import ArrayLike, NDArray

from . import Pose

version: str
_Self = TypeVar("_Self", bound=Record)
_One = TypeVar("_One")

class Error(Exception):
    lines: list[str]

class Record:
    def copy(self: _Self) -> _Self: ...

class RecordList(Generic[_One]):
    def __len__(self) -> int: ...
    def __iter__(self) -> Iterator[_One]: ...
    @overload
    def __getitem__(self, index: int) -> _One: ...
    @overload
    def __getitem__(self, index: slice) -> list[_One]: ...
    def __setitem__(self, index: int, record: Any) -> None: ...
    def __delitem__(self, index: Union[int, slice]) -> None: ...
    def append(self, record: Any) -> None: ...
    def insert(self, index: int, record: Any) -> None: ...
    def extend(self, records: Iterable[Any]) -> None: ...
    def pop(self, index: int = -1) -> _One: ...
    def clear(self) -> None: ...
    def resize(self, count: int) -> None: ...
    def column(self, field: str) -> NDArray[Any]: ...
    @property
    def array(self) -> NDArray[Any]: ...
'''

METHODS = {
    "VOR2": '''    def save(self, path: Any, *, allow_outside: bool = False) -> None: ...
    def pose(self, time: Optional[float] = None) -> Pose: ...
    def check(self, *, strict: bool = True) -> dict[str, Any]: ...
    def dump(self) -> dict[str, Any]: ...
''',
    "VOR2_ANIMATABLE": '''    def sample(self, times: ArrayLike) -> NDArray[Any]: ...
    def set_keys(self, times: ArrayLike, values: ArrayLike) -> None: ...
''',
}
ARRAYS = {"f": "NDArray[np.float32]", "d": "NDArray[np.float64]", "i": "NDArray[np.int32]", "I": "NDArray[np.uint32]"}


def types_of(kind, number, holds):
    """What a field gives, and what it takes; nothing for one that can't be set."""
    if kind == "number":
        one = "float" if number in "fd" else "int"
        return one, one
    return {
        "boolean": ("bool", "bool"),
        "text": ("str", "str"),
        "texts": ("tuple[str, ...]", "Iterable[str]"),
        "tuple": (ARRAYS.get(number), "ArrayLike"),
        "numbers": (ARRAYS.get(number), "ArrayLike"),
        "matrix": (ARRAYS.get(number), None),
        "record": (holds, f"Union[{holds}, ArrayLike]"),
        "optional": (f"Optional[{holds}]", f"Optional[{holds}]"),
        "records": (f"RecordList[{holds}]", f"Union[Iterable[{holds}], ArrayLike]"),
        "optionals": (f"RecordList[Optional[{holds}]]", f"Iterable[Optional[{holds}]]"),
    }[kind]


def class_text(name, base, fields, can_be_made):
    text = f"\nclass {name}({base}):\n"
    taken = []
    for field, kind, number, _, holds in fields:
        given, takes = types_of(kind, number, holds)
        text += f"    @property\n    def {field}(self) -> {given}: ...\n"
        if takes is not None:
            text += f"    @{field}.setter\n    def {field}(self, value: {takes}) -> None: ...\n"
            taken.append(f"{field}: {takes} = ...")
    if taken and can_be_made:
        text += f"    def __init__(self, *, {', '.join(taken)}) -> None: ...\n"
    text += METHODS.get(name, "")
    return text if text.count("\n") > 2 else text + "    ...\n"


def shared_fields(base, classes):
    """What all classes of that base have alike."""
    lists = [fields for _, bases, fields in classes if base in bases]
    return [field for field in lists[0] if all(field in other for other in lists)]


def main(folder):
    sys.path.insert(0, str(folder))
    sys.dont_write_bytecode = True
    from vor2 import _core  # pylint: disable=import-outside-toplevel

    text, told = HEAD, set()
    classes = _core.tell_classes()
    for name, bases, fields in classes:
        chain = ["Record", *bases]
        for base, nearer in zip(chain, chain[1:]):
            if nearer not in told:
                told.add(nearer)
                text += class_text(nearer, base, shared_fields(nearer, classes), False)
        told.add(name)
        text += class_text(name, chain[-1], fields, True)
    (folder / "vor2" / "_records.pyi").write_text(text)
    (folder / "vor2" / "_core.pyi").write_text("from typing import Any\n\ndef __getattr__(name: str) -> Any: ...\n")


if __name__ == "__main__":
    main(pathlib.Path(sys.argv[1]))
