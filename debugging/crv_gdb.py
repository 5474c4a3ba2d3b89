"""Shows CRV's values in gdb: points, vectors, segments, curves, positions, lists and handles.

gdb loads this file by itself when it loads the library installed below /usr. For another prefix:
  gdb -iex 'add-auto-load-safe-path PREFIX' \\
    -iex 'add-auto-load-scripts-directory PREFIX/share/gdb/auto-load'
"""

import gdb
import gdb.printing


def numbers(value):
    return "({}, {})".format(value["x_"], value["y_"])


class PairPrinter:
    """A point or a vector: (x, y)."""

    def __init__(self, value):
        self.value = value

    def to_string(self):
        return numbers(self.value)


class PositionPrinter:
    """A position: segment and parameter."""

    def __init__(self, value):
        self.value = value

    def to_string(self):
        return "{} at {}".format(self.value["segment_"], self.value["t_"])


class SegmentPrinter:
    """A segment: its four control points."""

    def __init__(self, value):
        self.value = value

    def to_string(self):
        return "[" + " ".join(numbers(self.value["points_"][i]) for i in range(4)) + "]"


class ListPrinter:
    """A list: how many elements, and the elements."""

    def __init__(self, value):
        self.value = value

    def to_string(self):
        count = int(self.value["count_"])
        return "1 element" if count == 1 else "{} elements".format(count)

    def children(self):
        node = self.value["head_"]
        for i in range(int(self.value["count_"])):
            yield "[{}]".format(i), node["element"]
            node = node["next"]

    def display_hint(self):
        return "array"


class CurvePrinter:
    """A curve: open or closed, and its segments."""

    def __init__(self, value):
        self.segments = ListPrinter(value["segments_"])
        self.closed = int(value["closed_"]) != 0

    def to_string(self):
        count = int(self.segments.value["count_"])
        return "{} curve of {} segment{}".format(
            "closed" if self.closed else "open", count, "" if count == 1 else "s")

    def children(self):
        return self.segments.children()

    def display_hint(self):
        return "array"


class HandlePrinter:
    """A handle: null, or what it shares."""

    def __init__(self, value):
        self.value = value

    def counter(self):
        counter = self.value["counter_"]
        return counter.dereference() if int(counter) != 0 and int(counter["object_"]) != 0 else None

    def to_string(self):
        counter = self.counter()
        if counter is None:
            return "null"
        return "shared by {}".format(int(counter["count_"]))

    def children(self):
        counter = self.counter()
        if counter is not None:
            handle = self.value.type.strip_typedefs()
            yield "object", counter["object_"].cast(handle.template_argument(0).pointer())


def printers():
    collection = gdb.printing.RegexpCollectionPrettyPrinter("CRV")
    collection.add_printer("point", "^GxCoord<.*>$", PairPrinter)
    collection.add_printer("vector", "^GxVector<.*>$", PairPrinter)
    collection.add_printer("position", "^GxBezierCurvePosition$", PositionPrinter)
    collection.add_printer("segment", "^GxBezier$", SegmentPrinter)
    collection.add_printer("curve", "^GxBezierCurve$", CurvePrinter)
    collection.add_printer("list", "^GxList<.*>$", ListPrinter)
    collection.add_printer("handle", "^GxHandle<.*>$", HandlePrinter)
    return collection


gdb.printing.register_pretty_printer(gdb.current_objfile(), printers(), replace=True)
