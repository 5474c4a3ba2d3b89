"""Writes the type stubs of the extension from the signatures that it carries.

    python3 stubs.py FOLDER OUT     with FOLDER/crv/_crv*.so
"""

import inspect
import re
import sys

# What a signature says, and the types for those who check types. What goes in may be any sequence.
TAKEN = {
    "Point": "ArrayLike",
    "Points": "ArrayLike",
    "Numbers": "ArrayLike",
    "numpy.ndarray[numpy.float64]": "ArrayLike",
}
GIVEN = {name: "Array" for name in TAKEN}
HEADER = """from typing import Any, Iterator, List, Optional, Tuple, overload
import numpy
from numpy.typing import ArrayLike, NDArray

Array = NDArray[numpy.float64]
"""
ENUM = """\
    __members__: dict[str, Any]
    name: str
    value: int
    def __init__(self, value: int) -> None: ...
    def __int__(self) -> int: ...
    def __index__(self) -> int: ...""".splitlines()


def parts(text):
    """The text between the commas outside all brackets."""
    found, depth, start = [], 0, 0
    for i, c in enumerate(text):
        depth += (c in "[(<") - (c in "])>" and text[i - 1] != "-")
        if c == "," and depth == 0:
            found.append(text[start:i].strip())
            start = i + 1
    return found + [text[start:].strip()] if text.strip() else []


def typed(text, known):
    text = re.sub(r"^tuple$", "Tuple[Any, ...]", text.replace("crv._crv.", "").replace("handle", "Any"))
    for name in sorted(known, key=len, reverse=True):
        text = re.sub(rf"(?<![\w.]){re.escape(name)}(?![\w\[])", known[name], text)
    if known is TAKEN:
        text = re.sub(r"(?<!\w)GxBezierCurvePosition(?!\w)", "PositionLike", text)
    return text if re.fullmatch(r"[\w., \[\]]+", text) else "Any"


def signature(name, line, self_name):
    """One line of a documentation, such as name(self: crv._crv.X, t: float = 0.0) -> Point, as a stub."""
    arguments, result = re.fullmatch(r"\w+\((.*)\) -> (.*)", line).groups()
    out = []
    for i, part in enumerate(parts(arguments)):
        if part in ("*", "/"):
            out.append(part)
            continue
        argument, _, rest = part.partition(": ")
        kind, equals, _ = rest.partition(" = ")
        if self_name and i == 0:
            out.append("self")
        elif name in ("__eq__", "__ne__"):
            out.append("other: object")
        else:
            out.append(f"{argument}: {typed(kind, TAKEN)}" + (" = ..." if equals else ""))
    if name == "__iter__":
        result = "Iterator[GxBezier]" if "GxBezierCurve)" in line else "Iterator[Any]"
    return f"def {name}({', '.join(out)}) -> {typed(result, GIVEN)}: ..."


def stubs_of(name, function, indent, owner=None):
    lines = [
        re.sub(r"^\d+\. ", "", line)
        for line in (function.__doc__ or "").splitlines()
        if re.match(rf"(\d+\. )?{name}\(.*\) -> ", line)
    ]
    if name == "__eq__":
        lines = lines[:1]
    static = owner is not None and isinstance(inspect.getattr_static(owner, name), staticmethod)
    for line in lines:
        if static:
            yield indent + "@staticmethod"
        if len(lines) > 1:
            yield indent + "@overload"
        yield indent + signature(name, line, owner is not None and not static)


def class_of(name, cls):
    bases = [b.__name__ for b in cls.__bases__ if b.__module__ == cls.__module__ or issubclass(b, Exception)]
    yield f"class {name}({', '.join(bases)}):" if bases else f"class {name}:"
    members = getattr(cls, "__members__", None)
    yield "    ..."
    if members is not None:
        yield from (f"    {member}: {name}" for member in members)
        yield from ENUM
        return
    for attribute, value in sorted(vars(cls).items()):
        if isinstance(value, property):
            kind = typed(value.fget.__doc__.strip().split(" -> ")[-1], GIVEN)
            yield f"    @property\n    def {attribute}(self) -> {kind}: ..."
            if value.fset:
                taken = "ArrayLike" if kind == "Array" else kind
                yield f"    @{attribute}.setter\n    def {attribute}(self, value: {taken}) -> None: ..."
        elif (callable(value) or isinstance(value, staticmethod)) and "state__" not in attribute:
            yield from stubs_of(attribute, getattr(cls, attribute), "    ", cls)


def stubs(module):
    yield HEADER
    aliases = []
    for name, value in vars(module).items():
        if isinstance(value, type):
            if value.__name__ == name:
                yield from class_of(name, value)
            else:
                aliases.append(f"{name} = {value.__name__}")
        elif isinstance(value, (float, str)) and (not name.startswith("__") or name == "__version__"):
            yield f"{name}: {type(value).__name__}"
        elif callable(value):
            yield from stubs_of(name, value, "")
    yield from aliases
    yield "PositionLike = GxBezierCurvePosition | Tuple[int, float]"


if __name__ == "__main__":
    sys.path.insert(0, sys.argv[1])
    import crv._crv

    with open(sys.argv[2], "w") as out:
        out.write("\n".join(stubs(crv._crv)) + "\n")
