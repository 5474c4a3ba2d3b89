// Maps of positions, and the edits that hand them back.
#include "bindings/python/src/maps.h"

namespace python {

namespace {

using Positions = std::vector<Position>;

void bindMap(py::module_& m) {
  py::class_<PositionMap>(
      m, "Map", "Carries positions from a curve before an edit to the curve after it, and back.")
      .def("__call__", &PositionMap::forwards, py::arg("position"),
           "Where the position lies after the edit; None where the map does not reach.")
      .def("inverse", &PositionMap::backwards, py::arg("position"))
      .def("mapPosition", &PositionMap::forwards, py::arg("position"))
      .def("inverseMapPosition", &PositionMap::backwards, py::arg("position"))
      .def(
          "transform",
          [](PositionMap const& map, Positions const& positions) {
            std::vector<std::optional<Position>> out;
            for (Position const& p : positions) out.push_back(map.forwards(p));
            return out;
          },
          py::arg("positions"))
      .def("__repr__", [](PositionMap const&) { return "<Map of positions>"; });
}

/// Maps hold the maps and the curves that they are made of: keep_alive ties these to the result.
void bindConstruction(py::module_& m) {
  m.def("constructIdentityPositionMap", [] { return PositionMap{constructIdentityPositionMap()}; });
  m.def(
      "constructCompositePositionMap",
      [](PositionMap const& first, PositionMap const& second) {
        return PositionMap{constructCompositePositionMap(first.handle, second.handle)};
      },
      py::arg("first"), py::arg("second"), py::keep_alive<0, 1>(), py::keep_alive<0, 2>());
  m.def(
      "constructCompositePositionMap",
      [](py::tuple const& maps) {
        std::list<crv::Map> list;
        for (py::handle const map : maps) list.push_back(map.cast<PositionMap const&>().handle);
        return PositionMap{constructCompositePositionMap(list)};
      },
      py::arg("maps"), py::keep_alive<0, 1>());
  m.def(
      "constructReversePositionMap",
      [](int n) { return PositionMap{constructReversePositionMap(n)}; }, py::arg("n"));
  m.def(
      "constructRotatePositionMap",
      [](int direction, int k, int n) {
        return PositionMap{constructRotatePositionMap(direction, k, n)};
      },
      py::arg("direction"), py::arg("k"), py::arg("n"));
  m.def(
      "constructSingletonPositionMap",
      [](Position const& pos, Curve const& curve) {
        return PositionMap{constructSingletonPositionMap(pos, curve)};
      },
      py::arg("pos"), py::arg("curve"), py::keep_alive<0, 2>());
  m.def(
      "constructRangePositionMap",
      [](Curve const& curve, bool closed, int base, bool forward, Position const& start,
         Position const& end, Position const& curveEnd) {
        return PositionMap{
            constructRangePositionMap(curve, closed, base, forward, start, end, curveEnd)};
      },
      py::arg("curve"), py::arg("closed"), py::arg("base"), py::arg("forward"), py::arg("start"),
      py::arg("end"), py::arg("curveEnd"), py::keep_alive<0, 1>());
  m.def(
      "translate",
      [](Curve const& curve, bool closed, Position const& pos, bool forward) {
        return crv::translate(curve, closed, pos, forward);
      },
      py::arg("curve"), py::arg("closed"), py::arg("pos"), py::arg("forward"));
}

void bindCurveEdits(py::module_& m) {
  m.def(
      "copyGxBezierCurve",
      [](Curve& dst, Curve const& src, Position const& start, Position const& end, bool forward) {
        PositionMap map;
        require(copyGxBezierCurve(dst, src, start, end, forward, map.handle),
                "start and end coincide, or are not on the curve");
        return map;
      },
      py::arg("dst"), py::arg("src"), py::arg("start"), py::arg("end"), py::arg("forward") = true,
      py::keep_alive<0, 2>(),
      "Appends a stretch of src to dst and returns the map from src to dst.");
  m.def(
      "reverseGxBezierCurve",
      [](Curve& curve) {
        PositionMap map;
        reverseGxBezierCurve(curve, map.handle);
        return map;
      },
      py::arg("curve"));
  m.def(
      "spliteGxBezierCurve",
      [](Position const& pos, Curve& first) {
        std::tuple<Curve, PositionMap, PositionMap> rest;
        auto& [second, firstMap, secondMap] = rest;
        require(spliteGxBezierCurve(pos, first, second, firstMap.handle, secondMap.handle),
                "the position is not on the curve");
        return rest;
      },
      py::arg("pos"), py::arg("first"),
      "Keeps what lies before in first; returns the rest and the maps to both.");
  // Pairs of numbers are points, so the form for points comes first.
  m.def("arrangeBezierCurve",
        py::overload_cast<Curve&, Point const&, Point const&>(&arrangeBezierCurve),
        py::arg("curve"), py::arg("pa"), py::arg("pb"));
  m.def("arrangeBezierCurve",
        py::overload_cast<Curve&, Position const&, Position const&>(&arrangeBezierCurve),
        py::arg("curve"), py::arg("a"), py::arg("b"));
}

}  // namespace

void bindMaps(py::module_& m) {
  bindMap(m);
  bindConstruction(m);
  bindCurveEdits(m);
}

}  // namespace python
