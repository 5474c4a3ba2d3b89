// What makes curves: the text of a path, and strokes.
#include "crv/accurate/curveSearch.h"
#include "crv/accurate/fit.h"
#include "crv/svg.h"

#include <string>

#include "website/play/operations.h"

namespace play {

void path(Input& in, Output& out) {
  std::string text(in.count(1), ' ');
  for (char& each : text) each = static_cast<char>(in.number());
  crv::ParsedPath const parsed = crv::parsePath(text);
  out.add(parsed.fault ? static_cast<double>(parsed.fault->place) : -1.0);
  out.add(parsed.fault ? static_cast<int>(parsed.fault->reason) : -1);
  out.add(parsed.curves);
}

void fit(Input& in, Output& out) {
  crv::FitOptions options;
  options.tolerance = in.number();
  options.cornerAngle = in.number();
  options.closed = in.flag();
  std::vector<crv::Point> const samples = in.points();

  crv::Fit const fitted = crv::fit(samples, options);
  out.add(fitted.curve.length(), fitted.worstDistance, fitted.worstSample);
  out.add(fitted.curve, fitted.corners);
}

void plainFit(Input& in, Output& out) {
  double const tolerance = in.number();
  crv::Curve const fitted(in.points(), tolerance * tolerance);
  out.add(fitted.length(), fitted);
}

void distanceOfSamples(Input& in, Output& out) {
  crv::CurveSearch const search(in.curve());
  double worst = 0.0;
  std::size_t worstSample = 0, sample = 0;
  for (crv::Point const& p : in.points()) {
    auto const found = search.nearest(p);
    if (found && found->distance > worst) {
      worst = found->distance;
      worstSample = sample;
    }
    ++sample;
  }
  out.add(worst, worstSample);
}

}  // namespace play
