"""Shows CRV's values in lldb. In lldb or in ~/.lldbinit: command script import PREFIX/share/CRV/crv_lldb.py

The program has to be compiled with clang and -g -fstandalone-debug: lldb does not look for the members
of classes in the debug information of the library.
"""

import lldb


def number(value, field):
    return value.GetChildMemberWithName(field).GetValue()


def pair(value, _=None):
    value = value.GetNonSyntheticValue()
    return "({}, {})".format(number(value, "x_"), number(value, "y_"))


def position(value, _=None):
    value = value.GetNonSyntheticValue()
    return "{} at {}".format(number(value, "segment_"), number(value, "t_"))


def segment(value, _=None):
    points = value.GetNonSyntheticValue().GetChildMemberWithName("points_")
    return "[" + " ".join(pair(points.GetChildAtIndex(i)) for i in range(4)) + "]"


def count(value):
    return value.GetNonSyntheticValue().GetChildMemberWithName("count_").GetValueAsUnsigned()


def size(value, _=None):
    return "size={}".format(count(value))


def curve(value, _=None):
    value = value.GetNonSyntheticValue()
    closed = value.GetChildMemberWithName("closed_").GetValueAsSigned() != 0
    return "{}, {}".format("closed" if closed else "open", size(value.GetChildMemberWithName("segments_")))


def handle(value, _=None):
    counter = value.GetNonSyntheticValue().GetChildMemberWithName("counter_")
    if counter.GetValueAsUnsigned() == 0 or counter.GetChildMemberWithName("object_").GetValueAsUnsigned() == 0:
        return "null"
    return "shared by {}".format(number(counter, "count_"))


class Elements:
    """The elements of a list, or the segments of a curve, as children."""

    def __init__(self, value, _):
        self.value = value
        self.update()

    def update(self):
        segments = self.value.GetChildMemberWithName("segments_")
        self.list = segments.GetNonSyntheticValue() if segments.IsValid() else self.value
        self.nodes = []

    def num_children(self):
        return count(self.list)

    def get_child_index(self, name):
        return int(name.strip("[]"))

    def get_child_at_index(self, index):
        while len(self.nodes) <= index:
            before = self.nodes[-1].GetChildMemberWithName("next") if self.nodes else \
                self.list.GetChildMemberWithName("head_")
            self.nodes.append(before)
        element = self.nodes[index].GetChildMemberWithName("element")
        return element.CreateValueFromAddress("[{}]".format(index), element.GetLoadAddress(), element.GetType())


def __lldb_init_module(debugger, _):
    def run(text):
        debugger.HandleCommand(text)

    for name, function in (("^Gx(Coord|Vector)<.+>$", "pair"), ("^GxBezierCurvePosition$", "position"),
                           ("^GxBezier$", "segment"), ("^GxList<.+>$", "size"), ("^GxBezierCurve$", "curve"),
                           ("^GxHandle<.+>$", "handle")):
        expand = "-e" if function in ("size", "curve") else ""
        run('type summary add {} -x "{}" -F {}.{} -w CRV'.format(expand, name, __name__, function))
    run('type synthetic add -x "^GxList<.+>$" -l {}.Elements -w CRV'.format(__name__))
    run('type synthetic add -x "^GxBezierCurve$" -l {}.Elements -w CRV'.format(__name__))
    run("type category enable CRV")
