// Curves through samples, and the same curve in fewer segments.

#include "examples/gallery/room.h"

namespace gallery {
namespace {

void drawFit(Picture& picture, svg::Points const& samples, GxBezierCurve const& curve) {
  picture.dots(samples, 2.5, "stroke:#adb5bd");
  picture.chain(curve, kBlue);
  picture.dots(svg::jointsOf(curve), 2.5, "stroke:#1864ab");
}

void showPen(Room& room) {
  std::vector<crv::Point> const samples = readStroke("glyph-script-r.txt");
  //! [GxBezierCurve(samples, error)]
  GxBezierCurve const curve(samples, 9.0);  // the square of 3
  //! [GxBezierCurve(samples, error)]
  Picture plain(svg::boxOf(samples));
  drawFit(plain, samples, curve);
  room.show("GxBezierCurve(samples, error)", "fit&stroke=script+R",
            "The plain fit of a written letter.",
            say(samples.size(), " samples, ", curve.length(), " segments"), plain);

  GxList<GxCoord<double>> const list(samples);
  GxBezierCurve longer = GxBezierCurve(samples, 9.0);
  //! [GxBezierCurve::makeBezierPolyFit]
  longer.makeBezierPolyFit(&list, 400.0);  // the square of 20
  //! [GxBezierCurve::makeBezierPolyFit]
  Picture coarse(svg::boxOf(samples));
  coarse.chain(longer, kOrange);
  room.show("GxBezierCurve::makeBezierPolyFit", "fit&stroke=script+R",
            "The same appended to a curve, here once more with a wide error.",
            say(longer.length(), " segments in all"), coarse);

  //! [crv::fit]
  crv::FitOptions options;
  options.tolerance = 3.0;
  crv::Fit const fit = crv::fit(samples, options);
  //! [crv::fit]
  Picture accurate(svg::boxOf(samples));
  drawFit(accurate, samples, fit.curve);
  room.show("crv::fit", "fit&stroke=script+R", "Few segments, every sample within the tolerance.",
            say(fit.curve.length(), " segments, worst sample ", fit.worstSample, " at ",
                fit.worstDistance),
            accurate);
}

void showIsland(Room& room) {
  std::vector<crv::Point> const coast = readStroke("island-sri-lanka.txt");
  //! [crv::fit, closed, with corners]
  crv::Fit const island = crv::fit(coast, {4.0, true, 2.0});  // tolerance, closed, corners
  //! [crv::fit, closed, with corners]
  Picture closed(svg::boxOf(coast));
  drawFit(closed, coast, island.curve);
  svg::Points corners;
  for (std::size_t const i : island.corners) corners.push_back(coast[i]);
  closed.dots(corners, 4, "stroke:#c2255c");
  room.show("crv::fit, closed, with corners", "fit", "A coast; red: the corners found.",
            say(coast.size(), " samples, ", island.curve.length(), " segments, ",
                island.corners.size(), " corners, worst ", island.worstDistance),
            closed);

  GxBezierCurve const rough = crv::fit(coast, {1.0, true, 0.0}).curve;
  //! [crv::simplify]
  crv::Simplified const simple = crv::simplify(rough, 6.0);
  //! [crv::simplify]
  Picture fewer(svg::boxOf(coast));
  fewer.chain(rough, kGhost);
  fewer.chain(simple.curve, kBlue);
  fewer.dots(svg::jointsOf(simple.curve), 2, "stroke:#1864ab");
  room.show("crv::simplify", "fit", "The same curve within a tolerance, with a map.",
            say(rough.length(), " segments became ", simple.curve.length(),
                ", no place moved by more than ", simple.worstDistance),
            fewer);
}

}  // namespace

Room fits() {
  Room room("Fits", "fits.cpp");
  showPen(room);
  showIsland(room);
  return room;
}

}  // namespace gallery
