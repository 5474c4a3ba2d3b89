// Contacts of segments, curves and lines, and curves prepared for many queries.
#include "bindings/python/src/arrays.h"

namespace python {

namespace {

void bindResults(py::module_& m) {
  py::enum_<crv::ContactKind>(m, "ContactKind")
      .value("crossing", crv::ContactKind::crossing)
      .value("touching", crv::ContactKind::touching)
      .value("end", crv::ContactKind::end);
  Record<crv::SegmentContact>(m, "SegmentContact")
      .field("t", &crv::SegmentContact::t)
      .field("u", &crv::SegmentContact::u)
      .field("point", &crv::SegmentContact::point)
      .field("kind", &crv::SegmentContact::kind)
      .shown();
  Record<crv::SegmentOverlap>(m, "SegmentOverlap")
      .field("t0", &crv::SegmentOverlap::t0)
      .field("t1", &crv::SegmentOverlap::t1)
      .field("u0", &crv::SegmentOverlap::u0)
      .field("u1", &crv::SegmentOverlap::u1)
      .shown();
  Record<crv::SegmentContacts>(m, "SegmentContacts")
      .field("points", &crv::SegmentContacts::points)
      .field("overlaps", &crv::SegmentContacts::overlaps)
      .shown();
  Record<crv::CurveContact>(m, "CurveContact")
      .field("first", &crv::CurveContact::first)
      .field("second", &crv::CurveContact::second)
      .field("point", &crv::CurveContact::point)
      .field("kind", &crv::CurveContact::kind)
      .shown();
  Record<crv::CurveOverlap>(m, "CurveOverlap")
      .field("from_", &crv::CurveOverlap::from)
      .field("to", &crv::CurveOverlap::to)
      .field("otherFrom", &crv::CurveOverlap::otherFrom)
      .field("otherTo", &crv::CurveOverlap::otherTo)
      .field("sameSense", &crv::CurveOverlap::sameSense)
      .shown();
  Record<crv::CurveContacts>(m, "CurveContacts")
      .field("points", &crv::CurveContacts::points)
      .field("overlaps", &crv::CurveContacts::overlaps)
      .shown();
  Record<crv::LineContact>(m, "LineContact")
      .field("position", &crv::LineContact::position)
      .field("along", &crv::LineContact::along)
      .field("point", &crv::LineContact::point)
      .field("kind", &crv::LineContact::kind)
      .shown();
}

}  // namespace

void bindContacts(py::module_& m) {
  bindResults(m);
  m.def("contacts", py::overload_cast<Segment const&, Segment const&, double>(&crv::contacts),
        py::arg("a"), py::arg("b"), py::arg("resolution") = 0.0);
  m.def("contacts", py::overload_cast<Curve const&, Curve const&, double>(&crv::contacts),
        py::arg("a"), py::arg("b"), py::arg("resolution") = 0.0);
  m.def("contacts",
        py::overload_cast<Curve const&, Point const&, Point const&, double>(&crv::contacts),
        py::arg("curve"), py::arg("a"), py::arg("b"), py::arg("resolution") = 0.0);
  m.def("selfContacts", &crv::selfContacts, py::arg("curve"), py::arg("resolution") = 0.0);
  py::class_<crv::CurveSearch>(m, "CurveSearch")
      .def(py::init<Curve const&>(), py::arg("curve"))
      .def("nearest", &crv::CurveSearch::nearest, py::arg("p"))
      .def("within", &crv::CurveSearch::within, py::arg("p"), py::arg("distance"))
      .def("contacts", &crv::CurveSearch::contacts, py::arg("a"), py::arg("b"));
}

}  // namespace python
