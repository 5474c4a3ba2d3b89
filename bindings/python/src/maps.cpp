// Maps of positions, and the edits that hand them back.
#include "bindings/python/src/maps.h"

namespace python {

namespace {

using Positions = std::vector<Position>;

void bindMap(py::module_& m) {
  constexpr char const* forwards =
      "Where the position lies after the edit; None where the map does not reach.";
  constexpr char const* backwards =
      "Where a position of the edited curve lay before; None where the map does not reach.";
  py::class_<PositionMap>(
      m, "Map", "Carries positions from a curve before an edit to the curve after it, and back.")
      .def("__call__", &PositionMap::forwards, py::arg("position"), forwards)
      .def("inverse", &PositionMap::backwards, py::arg("position"), backwards)
      .def("mapPosition", &PositionMap::forwards, py::arg("position"), forwards)
      .def("inverseMapPosition", &PositionMap::backwards, py::arg("position"), backwards)
      .def(
          "transform",
          [](PositionMap const& map, Positions const& positions) {
            std::vector<std::optional<Position>> out;
            for (Position const& p : positions) out.push_back(map.forwards(p));
            return out;
          },
          py::arg("positions"),
          "Where each position lies after the edit, None for those that the map does not reach.")
      .def("__repr__", [](PositionMap const&) { return "<Map of positions>"; });
}

/// Maps hold the maps and the curves that they are made of: keep_alive ties these to the result.
void bindConstruction(py::module_& m) {
  m.def(
      "constructIdentityPositionMap", [] { return PositionMap{constructIdentityPositionMap()}; },
      "A map that leaves every position where it is.");
  m.def(
      "constructCompositePositionMap",
      [](PositionMap const& first, PositionMap const& second) {
        return PositionMap{constructCompositePositionMap(first.handle, second.handle)};
      },
      py::arg("first"), py::arg("second"), py::keep_alive<0, 1>(), py::keep_alive<0, 2>(),
      "Applies first, then second.");
  m.def(
      "constructCompositePositionMap",
      [](py::tuple const& maps) {
        std::list<crv::Map> list;
        for (py::handle const map : maps) list.push_back(map.cast<PositionMap const&>().handle);
        return PositionMap{constructCompositePositionMap(list)};
      },
      py::arg("maps"), py::keep_alive<0, 1>(), "Applies a tuple of maps from front to back.");
  m.def(
      "constructReversePositionMap",
      [](int n) { return PositionMap{constructReversePositionMap(n)}; }, py::arg("n"),
      "The map of a reversed curve of n segments.");
  m.def(
      "constructRotatePositionMap",
      [](int direction, int k, int n) {
        return PositionMap{constructRotatePositionMap(direction, k, n)};
      },
      py::arg("direction"), py::arg("k"), py::arg("n"),
      "The map of a closed curve of n segments whose start moved: segment s becomes (s + k) modulo "
      "n. The direction has no effect.");
  m.def(
      "constructSingletonPositionMap",
      [](Position const& pos, Curve const& curve) {
        return PositionMap{constructSingletonPositionMap(pos, curve)};
      },
      py::arg("pos"), py::arg("curve"), py::keep_alive<0, 2>(),
      "Maps one position to the end of the curve as it is now, and nothing else.");
  m.def(
      "constructRangePositionMap",
      [](Curve const& curve, bool closed, int base, bool forward, Position const& start,
         Position const& end, Position const& curveEnd) {
        return PositionMap{
            constructRangePositionMap(curve, closed, base, forward, start, end, curveEnd)};
      },
      py::arg("curve"), py::arg("closed"), py::arg("base"), py::arg("forward"), py::arg("start"),
      py::arg("end"), py::arg("curveEnd"), py::keep_alive<0, 1>(),
      "Maps the stretch of a curve from start to end onto the segments of another from number base "
      "on.");
  m.def(
      "translate",
      [](Curve const& curve, bool closed, Position const& pos, bool forward) {
        return crv::translate(curve, closed, pos, forward);
      },
      py::arg("curve"), py::arg("closed"), py::arg("pos"), py::arg("forward"),
      "The position, or the seam of a closed curve as a stretch reads it in the given direction.");
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
      "Appends the stretch of src from start to end to dst and returns the map; raises Error where "
      "they coincide or lie off the curve.");
  m.def(
      "reverseGxBezierCurve",
      [](Curve& curve) {
        PositionMap map;
        reverseGxBezierCurve(curve, map.handle);
        return map;
      },
      py::arg("curve"), "Reverses a curve in place and returns the map.");
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
      "Keeps what lies before a position in first; returns the rest and the maps to both. Raises "
      "Error off the curve. From segment 2 on the segment before the cut is lost: see cut.");
  // Pairs of numbers are points, so the form for points comes first.
  m.def("arrangeBezierCurve",
        py::overload_cast<Curve&, Point const&, Point const&>(&arrangeBezierCurve),
        py::arg("curve"), py::arg("pa"), py::arg("pb"),
        "Makes a curve run the right way between the places nearest to two points, from the second "
        "on if its ends meet.");
  m.def("arrangeBezierCurve",
        py::overload_cast<Curve&, Position const&, Position const&>(&arrangeBezierCurve),
        py::arg("curve"), py::arg("a"), py::arg("b"), "The same for two positions.");
}

}  // namespace

void bindMaps(py::module_& m) {
  bindMap(m);
  bindConstruction(m);
  bindCurveEdits(m);
}

}  // namespace python
