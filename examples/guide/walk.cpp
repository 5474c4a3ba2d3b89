// Steps along a curve by length and by straight distance. Writes walk.svg.

#include "examples/guide/panels.h"
#include "examples/outline.h"

#include <vector>

int main() {
  GxBezierCurve const curve = crv::fit(readStroke("pen-waves.txt"), {6.0, false, 0.0}).curve;

  //! [even]
  std::vector<crv::Position> const even = crv::evenPositions(curve, 40, 0.01);  // 40 equal lengths
  //! [even]

  //! [walk]
  std::vector<crv::Position> stitches;
  for (auto at = std::optional(curve.firstPos()); at;
       at = crv::walk(curve, *at, 70.0, crv::Measure::chord, 0.01)) {
    stitches.push_back(*at);  // each 70 from the one before, measured straight
  }
  //! [walk]

  //! [lengths]
  crv::CurveLengths const lengths(curve, 0.01);  // measured once
  crv::Position const middle = lengths.positionAt(lengths.total() / 2);
  double const there = lengths.lengthAt(middle);
  //! [lengths]

  //! [plain]
  GxBezierCurvePosition next;
  bool const isFound = curve.findNextPos(curve.firstPos(), next, 70.0, 1, 0) == 0;  // one chord
  //! [plain]

  svg::Points ticks, ends;
  for (crv::Position const& at : even) ticks.push_back(curve.locateCurvePosition(at));
  for (crv::Position const& at : stitches) ends.push_back(curve.locateCurvePosition(at));
  panels::Row page(2);
  page.panel(0, svg::boxOf(curve), "crv::evenPositions(curve, 40, 0.01)",
             panels::say(lengths.total() / 40, " from one to the next, along the curve"));
  page.chain(curve, svg::kGhost);
  page.dots(ticks, 4, "stroke:#1864ab");
  page.dots({curve.locateCurvePosition(middle)}, 7, "stroke:#c2255c");
  page.label(curve.locateCurvePosition(middle), 10, -8, "half way", "fill:#c2255c");
  page.panel(1, svg::boxOf(curve), "crv::walk(curve, at, 70.0, Measure::chord, 0.01)",
             panels::say(stitches.size() - 1, " stitches, each 70 straight"));
  page.chain(curve, svg::kGhost);
  page.polyline(ends, svg::kOrange);
  page.dots(ends, 4, "stroke:#e8590c");
  page.save("walk.svg");
  bool const isHalf = std::fabs(there - lengths.total() / 2) < 0.1;
  return isHalf && isFound && even.size() == 41 && stitches.size() > 10 ? 0 : 1;
}
