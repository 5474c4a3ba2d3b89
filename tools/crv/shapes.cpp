// The commands that turn points into curves and curves into points: fit, flatten.
#include "tools/crv/commands.h"
#include "tools/crv/progress.h"

#include <cmath>

namespace tool {

namespace {

// A share of the size of the drawing, where no tolerance is given.
constexpr double kTolerance = 1e-3;

constexpr double kRadiansPerDegree = 3.141592653589793 / 180.0;

// A polyline of more points is not asked for on purpose.
constexpr double kMostPoints = 1e8;

}  // namespace

// ---- fit ----------------------------------------------------------------------------------------

namespace {

struct FitCommand {
  Files files;
  double error = 0.0;
  double corners = 0.0;
  bool closed = false, open = false, plain = false;

  Curve fitted(Shape const& shape, double tolerance) const {
    if (shape.samples.empty()) {
      if (plain) throw Refusal("fit --plain takes points, not curves");
      return crv::simplify(shape.curve, tolerance).curve;
    }
    // The plain fit measures squared distances.
    if (plain) return Curve(shape.samples, tolerance * tolerance);
    crv::FitOptions options;
    options.tolerance = tolerance;
    options.cornerAngle = corners * kRadiansPerDegree;
    bool const meets = shape.samples.size() > 2 && shape.samples.front() == shape.samples.back();
    options.closed = closed || (meets && !open);
    return crv::fit(shape.samples, options).curve;
  }

  void run() const {
    Drawing const drawing = readDrawings(files.in);
    double const tolerance = lengthOr(error, kTolerance, sizeOf(drawing));
    Result result;
    Progress progress(drawing.size());
    for (Shape const& shape : drawing) {
      result.curves.push_back(fitted(shape, tolerance));
      progress.step();
    }
    write(result, files.out);
  }
};

}  // namespace

void addFit(CLI::App& app) {
  auto const fit = std::make_shared<FitCommand>();
  CLI::App* const c = addCommand(app, "fit", "Fit curves to points, or fewer segments to curves.",
                                 "crv fit stroke.txt --error 0.5 --out stroke.svg", fit->files);
  c->add_option("-e,--error", fit->error,
                "how far a point may lie from the curve (a thousandth of the size)")
      ->check(positive());
  c->add_option("--corners", fit->corners, "degrees of turn that make a corner (0: no corners)")
      ->check(CLI::Range(0.0, 180.0));
  auto* const closed = c->add_flag("--closed", fit->closed, "the stroke goes around");
  c->add_flag("--open", fit->open, "it does not, even if it ends where it starts")
      ->excludes(closed);
  c->add_flag("--plain", fit->plain, "use GxBezierCurve::makeBezierPolyFit")->excludes(closed);
  c->callback([fit] { fit->run(); });
}

// ---- flatten ------------------------------------------------------------------------------------

namespace {

struct FlattenCommand {
  Files files;
  double tolerance = 0.0;
  double step = 0.0;
  bool plain = false;

  Points plainPoints(Curve const& curve, double within) const {
    Points points;
    if (step <= 0.0) {
      curve.getPolyline(within, points);
      return points;
    }
    GxList<Point> list;
    curve.makeCurve(step, list, crv::SpacingMode::acrossJoints);
    return list.toVector();
  }

  Points evenPoints(Curve const& curve) const {
    double const steps = std::ceil(crv::arcLength(curve, 0.0) / step);
    Points points;
    for (crv::Position const& at :
         crv::evenPositions(curve, static_cast<std::size_t>(crv::max(steps, 1.0)), 0.0)) {
      points.push_back(curve.locateCurvePosition(at));
    }
    if (curve.strictIsClosed() && !points.empty()) points.push_back(points.front());
    return points;
  }

  void run() const {
    Drawing const drawing = readDrawings(files.in);
    double const within = lengthOr(tolerance, kTolerance, sizeOf(drawing));
    double length = 0.0;
    for (Shape const& shape : drawing) length += crv::arcLength(shape.curve, 1.0);
    if (step > 0.0 && length / step > kMostPoints) {
      throw Refusal("a step of " + shortest(step) + " gives more than 1e8 points");
    }
    Result result;
    Progress progress(drawing.size());
    for (Shape const& shape : drawing) {
      result.polylines.push_back(plain        ? plainPoints(shape.curve, within)
                                 : step > 0.0 ? evenPoints(shape.curve)
                                              : crv::flatten(shape.curve, within).points);
      progress.step();
    }
    write(result, files.out);
  }
};

}  // namespace

void addFlatten(CLI::App& app) {
  auto const flatten = std::make_shared<FlattenCommand>();
  CLI::App* const c = addCommand(app, "flatten", "Turn curves into points on them.",
                                 "crv flatten letter.svg --tolerance 0.1", flatten->files);
  auto* const tolerance =
      c->add_option("-t,--tolerance", flatten->tolerance,
                    "how far the curve may lie from the lines (a thousandth of the size)")
          ->check(positive());
  c->add_option("-s,--step", flatten->step,
                "points at equal steps along the curve instead, at most this long")
      ->check(positive())
      ->excludes(tolerance);
  c->add_flag("--plain", flatten->plain,
              "use GxBezierCurve::getPolyline, or makeCurve for steps, which are straight then");
  c->callback([flatten] { flatten->run(); });
}

}  // namespace tool
