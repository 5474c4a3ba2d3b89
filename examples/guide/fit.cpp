// Fits a written letter, plainly and with few segments. Writes fit.svg.

#include "examples/guide/panels.h"
#include "examples/outline.h"

#include <vector>

int main() {
  std::vector<crv::Point> const samples = readStroke("glyph-script-r.txt");

  //! [plain]
  GxBezierCurve const plain(samples, 16.0);  // the square of the distance allowed: 4
  //! [plain]

  //! [accurate]
  crv::FitOptions options;
  options.tolerance = 4.0;    // no sample farther than that
  options.cornerAngle = 1.0;  // a turn of 57 degrees or more is a corner
  crv::Fit const fit = crv::fit(samples, options);
  //! [accurate]

  //! [feet]
  // Where sample 20 went: its pressure or time belongs there.
  crv::Position const foot = fit.positions[20];
  crv::Point const place = fit.curve.locateCurvePosition(foot);
  //! [feet]

  double farthest = 0;
  for (crv::Point const& p : samples) {
    if (auto const found = crv::nearest(plain, p)) farthest = max(farthest, found->distance);
  }

  panels::Row page(2);
  svg::Box const box = svg::boxOf(samples);
  page.panel(0, box, "GxBezierCurve(samples, 16.0)",
             panels::say(plain.length(), " segments, the farthest sample ") +
                 panels::say(farthest, " away", 3));
  page.dots(samples, 4, svg::kGrey);
  page.chain(plain, svg::kBlue);
  page.dots(svg::jointsOf(plain), 3.5, "stroke:#1864ab");
  page.panel(1, box, "crv::fit(samples, options)",
             panels::say(fit.curve.length(), " segments, the farthest sample ") +
                 panels::say(fit.worstDistance, " away", 3));
  page.dots(samples, 4, svg::kGrey);
  page.chain(fit.curve, svg::kBlue);
  page.dots(svg::jointsOf(fit.curve), 3.5, "stroke:#1864ab");
  page.polyline({samples[20], place}, svg::kRed);
  page.dots({place}, 3, "stroke:#c2255c");
  page.label(place, -118, 20, "foot of sample 20", "fill:#c2255c");
  page.save("fit.svg");
  return fit.curve.length() > 0 && fit.worstDistance <= options.tolerance ? 0 : 1;
}
