// Contacts of segments, curves and lines, and curves prepared for many queries.
#include "bindings/python/src/arrays.h"

namespace python {

namespace {

void bindResults(py::module_& m) {
  py::enum_<crv::ContactKind>(m, "ContactKind",
                              "How two curves meet: they cross, touch, or one ends there.")
      .value("crossing", crv::ContactKind::crossing)
      .value("touching", crv::ContactKind::touching)
      .value("end", crv::ContactKind::end);
  Record<crv::SegmentContact>(m, "SegmentContact", "A place where two segments meet.")
      .field("t", &crv::SegmentContact::t, "The parameter on the first segment.")
      .field("u", &crv::SegmentContact::u, "The parameter on the second segment.")
      .field("point", &crv::SegmentContact::point, "The point.")
      .field("kind", &crv::SegmentContact::kind, "Whether they cross, touch, or one ends there.")
      .shown();
  Record<crv::SegmentOverlap>(m, "SegmentOverlap", "A stretch that two segments share.")
      .field("t0", &crv::SegmentOverlap::t0, "Where it begins on the first segment.")
      .field("t1", &crv::SegmentOverlap::t1, "Where it ends on the first segment.")
      .field("u0", &crv::SegmentOverlap::u0, "Where it begins on the second segment.")
      .field("u1", &crv::SegmentOverlap::u1,
             "Where it ends on the second segment, below u0 where they run against each other.")
      .shown();
  Record<crv::SegmentContacts>(m, "SegmentContacts", "All contacts of two segments.")
      .field("points", &crv::SegmentContacts::points, "The contacts, ascending in t.")
      .field("overlaps", &crv::SegmentContacts::overlaps, "The stretches that both share.")
      .shown();
  Record<crv::CurveContact>(m, "CurveContact",
                            "A place where two curves, or two parts of one, meet.")
      .field("first", &crv::CurveContact::first, "The position on the first curve.")
      .field("second", &crv::CurveContact::second, "The position on the second curve.")
      .field("point", &crv::CurveContact::point, "The point.")
      .field("kind", &crv::CurveContact::kind, "Whether they cross, touch, or one ends there.")
      .shown();
  Record<crv::CurveOverlap>(m, "CurveOverlap", "A stretch that two curves share.")
      .field("from_", &crv::CurveOverlap::from, "Where it begins on the first curve.")
      .field("to", &crv::CurveOverlap::to, "Where it ends on the first curve.")
      .field("otherFrom", &crv::CurveOverlap::otherFrom, "Where it begins on the second curve.")
      .field("otherTo", &crv::CurveOverlap::otherTo, "Where it ends on the second curve.")
      .field("sameSense", &crv::CurveOverlap::sameSense,
             "Whether both run through it the same way.")
      .shown();
  Record<crv::CurveContacts>(m, "CurveContacts",
                             "All contacts of two curves, or of one with itself.")
      .field("points", &crv::CurveContacts::points, "The contacts, in order along the first curve.")
      .field("overlaps", &crv::CurveContacts::overlaps, "The stretches that both share.")
      .shown();
  Record<crv::LineContact>(m, "LineContact", "A place where a curve meets a line segment.")
      .field("position", &crv::LineContact::position, "The position on the curve.")
      .field("along", &crv::LineContact::along, "How far along the line, from 0 to 1.")
      .field("point", &crv::LineContact::point, "The point.")
      .field("kind", &crv::LineContact::kind, "Whether they cross, touch, or one ends there.")
      .shown();
}

}  // namespace

void bindContacts(py::module_& m) {
  bindResults(m);
  m.def("contacts", py::overload_cast<Segment const&, Segment const&, double>(&crv::contacts),
        py::arg("a"), py::arg("b"), py::arg("resolution") = 0.0,
        "All contacts of two segments, each once. Places nearer than the resolution are one; 0 "
        "stands for 2^-40 of the largest coordinate. Unusable input has none of either kind.");
  m.def("contacts", py::overload_cast<Curve const&, Curve const&, double>(&crv::contacts),
        py::arg("a"), py::arg("b"), py::arg("resolution") = 0.0, "All contacts of two curves.");
  m.def("contacts",
        py::overload_cast<Curve const&, Point const&, Point const&, double>(&crv::contacts),
        py::arg("curve"), py::arg("a"), py::arg("b"), py::arg("resolution") = 0.0,
        "All contacts of a curve with the line segment from a to b, in order along it.");
  m.def("selfContacts", &crv::selfContacts, py::arg("curve"), py::arg("resolution") = 0.0,
        "All contacts of a curve with itself, joints and the seam left out.");
  py::class_<crv::CurveSearch>(m, "CurveSearch", "One curve prepared for many queries.")
      .def(py::init<Curve const&>(), py::arg("curve"),
           "Prepares a curve, which may change afterwards.")
      .def("nearest", &crv::CurveSearch::nearest, py::arg("p"),
           "The nearest place to p, as nearest(curve, p) gives it; None for an empty curve or "
           "unusable input.")
      .def("within", &crv::CurveSearch::within, py::arg("p"), py::arg("distance"),
           "Every local minimum of the distance from p that is no farther than distance, in order "
           "along the curve.")
      .def("contacts", &crv::CurveSearch::contacts, py::arg("a"), py::arg("b"),
           "All contacts with the line segment from a to b, as contacts(curve, a, b) gives them.");
}

}  // namespace python
