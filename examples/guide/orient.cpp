// Closes a fitted stroke, and makes it run counter-clockwise. Writes orient.svg.

#include "examples/guide/panels.h"
#include "examples/outline.h"

#include <vector>

namespace {

/// Arrow heads along a curve, and a ring at its start.
void drawSense(svg::Page& page, GxBezierCurve const& curve, char const* look) {
  for (crv::Position const& at : crv::evenPositions(curve, 8, 0.01)) {
    crv::Vector const back = crv::directions(curve, at).in * (-10 / page.scale());
    crv::Vector const side = back.ortho(1) * 0.55;
    crv::Point const tip = curve.locateCurvePosition(at);
    page.polyline({tip + back + side, tip, tip + back + -side}, look);
  }
}

}  // namespace

int main() {
  std::vector<crv::Point> const samples = readStroke("island-malta.txt");
  crv::FitOptions options;
  options.tolerance = 8.0;

  //! [close]
  options.closed = true;  // the samples run around
  GxBezierCurve const outline = crv::fit(samples, options).curve;
  //! [close]

  //! [orient]
  GxBezierCurve counter = outline;
  if (crv::isClockwise(counter)) counter = crv::reversed(counter).curve;
  //! [orient]

  std::vector<crv::Point> const part(samples.begin(), samples.begin() + 30);
  //! [plain]
  GxBezierCurve bay(part, 64.0);         // open
  bool const endsMeet = bay.isClose();   // within 0.5: then both ends move to one place
  if (!endsMeet) bay.makeClosedCurve();  // sets the flag, and adds a straight segment
  int isValid = 0;
  bool const isClockwise = bay.isClockwise(isValid) != 0;  // read at the highest point, y up
  //! [plain]

  panels::Row page(2);
  svg::Box const box = svg::boxOf(samples);
  page.panel(0, box, "fit with options.closed, crv::reversed",
             panels::say(outline.length(), " segments; area ") +
                 panels::say(crv::signedArea(counter), " when counter-clockwise", 6));
  page.chain(counter, svg::kBlue + std::string(";fill:#e7f5ff"));
  drawSense(page, counter, svg::kBlue);
  page.dots({counter[0][0]}, 5, "stroke:#1864ab");
  page.panel(1, box, "bay.makeClosedCurve()",
             std::string("one straight segment more; runs ") +
                 (isClockwise ? "clockwise" : "counter-clockwise"));
  page.chain(bay, svg::kOrange + std::string(";fill:#fff4e6"));
  drawSense(page, bay, svg::kOrange);
  page.dots({bay[0][0]}, 5, "stroke:#e8590c");
  page.save("orient.svg");
  bool const agrees = isValid != 0 && isClockwise == crv::isClockwise(bay);
  return !endsMeet && agrees && crv::signedArea(counter) > 0 ? 0 : 1;
}
