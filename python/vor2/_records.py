"""The records' classes, as the compiled part tells them; _records.pyi, made when that is built, tells editors."""

from . import _core
from ._core import Error, Record, RecordList, version

__all__ = ["Error", "Record", "RecordList", "version"]

for _name, _bases, _ in _core.tell_classes():
    for _class in (*_bases, _name):
        if _class not in __all__:
            globals()[_class] = getattr(_core, _class)
            __all__.append(_class)
