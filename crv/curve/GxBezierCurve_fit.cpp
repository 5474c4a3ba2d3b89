// Fitting a chain of segments to digitised points: least squares at chord-length parameters, better
// parameters by Newton's method, a split at the worst point (P. J. Schneider, "An algorithm for
// automatically fitting digitized curves", Graphics Gems, 1990). Other than there, a singular
// matrix is mended by an addition, a handle is too short only when negative, and a good fit whose
// worst point is next to an end is split all the same. Ranges wait on a stack of their own, and
// runs of equal points are passed over, so that time and memory stay within bounds.
#include "crv/curve/GxBezierCurve.h"

#include "crv/foundation/tolerance.h"

#include <cmath>
#include <limits>
#include <utility>
#include <vector>

namespace {

// The length of a handle, as a fraction of the chord, where least squares gives none.
constexpr double kHandleFraction = 0.3333333333333333;

// Curve units: neighbours closer than this have no direction between them, ranges no length.
constexpr double kNoLength = kZeroTolerance;

// Squared sums of weights: a determinant below this is singular, and this is added to mend it.
constexpr double kSingular = 1e-12;

// Rounds of better parameters before a range is split.
constexpr int kMaxRounds = 4;

// Curve units: a segment passes a point that it comes this near to, in x and in y.
constexpr double kPassesPoint = 0.5;

// Vectors whose lengths multiply to less have no angle between them.
constexpr double kNoAngle = kZeroTolerance;

// Deliberate: pi / 180 to these digits.
constexpr double kRadiansPerDegree = 0.017453;

// No inner point, or none whose distance is a number.
constexpr int kNoPoint = -1;

/// Deliberate: a vector too short to have a length is left as it is.
GxVector<double> scaled(GxVector<double> const& v, double factor) {
  return v.squaredLength() == 0.0 ? v : v * factor;
}

GxVector<double> unitOrZero(GxVector<double> const& v) {
  double const length = v.length();
  return IS_ZERO(length, kNoLength) ? GxVector<double>() : v * (1.0 / length);
}

/// The tangent at an inner point, backwards.
GxVector<double> innerTangent(GxCoord<double> const& before, GxCoord<double> const& p,
                              GxCoord<double> const& after) {
  return unitOrZero(((before - p) + (p - after)) * 0.5);
}

/// Finite and equal down to the signs of zeros, so that either may stand for the other.
bool isSamePoint(GxCoord<double> const& p, GxCoord<double> const& q) {
  auto const same = [](double a, double b) {
    return a - b == 0.0 && std::signbit(a) == std::signbit(b);
  };
  return same(p.xval(), q.xval()) && same(p.yval(), q.yval());
}

double thirdOfChord(GxCoord<double> const& p0, GxCoord<double> const& p3) {
  return p3.distance(p0) * kHandleFraction;
}

/// What is left to fit where there is nothing between the ends.
GxBezier segmentOfTwoPoints(GxCoord<double> const& p0, GxCoord<double> const& p3,
                            GxVector<double> const& tHat1, GxVector<double> const& tHat2) {
  double const dist = thirdOfChord(p0, p3);
  return {p0, p0 + scaled(tHat1, dist), p3 + scaled(tHat2, dist), p3};
}

/// The normal equations for the lengths of both handles.
struct LeastSquares {
  double c11 = 0.0;
  double c12 = 0.0;
  double c22 = 0.0;
  double x1 = 0.0;
  double x2 = 0.0;

  double determinant() const {
    double const det = c11 * c22 - c12 * c12;
    // Deliberate: an addition, where the published method multiplies.
    return IS_ZERO(det, kSingular) ? c11 * c22 + kSingular : det;
  }
};

/// Points is the caller's list or an array, u the parameters of points first..last.
template <class Points>
LeastSquares normalEquations(Points const& points, double const* u, unsigned first, unsigned last,
                             GxVector<double> const& tHat1, GxVector<double> const& tHat2) {
  LeastSquares sums;
  GxCoord<double> const p0 = points[first];
  GxCoord<double> const p3 = points[last];
  for (unsigned i = first; i <= last; ++i) {
    double const t = u[i - first];
    double const s = 1.0 - t;
    // Exact form: the weights in these spellings, and the base point added from left to right.
    double const b0 = s * s * s;
    double const b1 = 3.0 * t * (s * s);
    double const b2 = 3.0 * (t * t) * s;
    double const b3 = t * t * t;
    GxVector<double> const a1 = scaled(tHat1, b1);
    GxVector<double> const a2 = scaled(tHat2, b2);
    GxCoord<double> const base(p0.xval() * b0 + p0.xval() * b1 + p3.xval() * b2 + p3.xval() * b3,
                               p0.yval() * b0 + p0.yval() * b1 + p3.yval() * b2 + p3.yval() * b3);
    GxVector<double> const rest = points[i] - base;
    sums.c11 += a1 * a1;
    sums.c12 += a1 * a2;
    sums.c22 += a2 * a2;
    sums.x1 += a1 * rest;
    sums.x2 += a2 * rest;
  }
  return sums;
}

template <class Points>
GxBezier leastSquaresSegment(Points const& points, double const* u, unsigned first, unsigned last,
                             GxVector<double> const& tHat1, GxVector<double> const& tHat2) {
  LeastSquares const sums = normalEquations(points, u, first, last, tHat1, tHat2);
  double const det = sums.determinant();
  double const alphaL = (sums.x1 * sums.c22 - sums.x2 * sums.c12) / det;
  double const alphaR = (sums.c11 * sums.x2 - sums.c12 * sums.x1) / det;
  GxCoord<double> const p0 = points[first];
  GxCoord<double> const p3 = points[last];
  // Deliberate: a handle of length 0 is accepted, however long the chord.
  if (alphaL >= 0.0 && alphaR >= 0.0) {
    return {p0, p0 + scaled(tHat1, alphaL), p3 + scaled(tHat2, alphaR), p3};
  }
  double const dist = thirdOfChord(p0, p3);
  return {p0, p0 + tHat1 * dist, p3 + tHat2 * dist, p3};
}

/// The control points of a segment without the overhead of GxBezier.
struct Controls {
  explicit Controls(GxBezier const& s) {
    for (int i = 0; i < 4; ++i) {
      x[i] = s[i].xval();
      y[i] = s[i].yval();
      size += std::fabs(x[i]) + std::fabs(y[i]);
    }
  }

  double x[4];
  double y[4];
  double size = 0.0;  // what rounding errors are relative to
};

/// Squared distances from points to a segment's points at their parameters.
class ErrorMeasure {
 public:
  explicit ErrorMeasure(GxBezier const& segment)
      : c_(segment), slack_(c_.size * kRounding + kTiny) {}

  double squaredError(GxCoord<double> const& p, double t) {
    // The points that a segment does not pass have one parameter: their powers are made once.
    if (t != t_) {
      double const s = 1.0 - t;
      // Exact form: what blendValue gives; powers to 0 and 1 and factors of 1 change no bit and are
      // left out, but the power function is not a product.
      b_[0] = std::pow(s, 3.0);
      b_[1] = 3.0 * std::pow(s, 2.0) * t;
      b_[2] = 3.0 * s * std::pow(t, 2.0);
      b_[3] = std::pow(t, 3.0);
      t_ = t;
    }
    double const dx = blended(c_.x, b_) - p.xval();
    double const dy = blended(c_.y, b_) - p.yval();
    return dx * dx + dy * dy;
  }

  /// True only if squaredError is below d; told without the power function.
  bool isBelow(double d, GxCoord<double> const& p, double t) const {
    if (!(0.0 <= t && t <= 1.0)) return false;
    double const s = 1.0 - t;
    double const b[4] = {s * s * s, 3.0 * s * s * t, 3.0 * s * t * t, t * t * t};
    double const dx = std::fabs(blended(c_.x, b) - p.xval()) * (1.0 + kRounding) + slack_;
    double const dy = std::fabs(blended(c_.y, b) - p.yval()) * (1.0 + kRounding) + slack_;
    return dx * dx + dy * dy < d;
  }

 private:
  // Relative: some hundred times what the two ways to the weights can differ by.
  static constexpr double kRounding = 1e-13;
  // Curve units: covers what is lost below the range of exponents.
  static constexpr double kTiny = 1e-300;

  static double blended(double const* k, double const* b) {
    return b[0] * k[0] + b[1] * k[1] + b[2] * k[2] + b[3] * k[3];
  }

  Controls const c_;
  double const slack_;
  double t_ = std::numeric_limits<double>::quiet_NaN();
  double b_[4] = {};
};

/// The inner point farthest from a segment, and its squared distance.
struct Worst {
  double error = 0.0;
  int point = kNoPoint;

  void offer(double d, unsigned i) {
    // Deliberate: of equal distances the last counts, 0 included.
    if (!(d >= error)) return;
    error = d;
    point = static_cast<int>(i);
  }
};

template <class Points>
Worst worstPoint(Points const& points, unsigned first, unsigned last, double const* u,
                 GxBezier const& segment) {
  Worst worst;
  ErrorMeasure measure(segment);
  for (unsigned i = first + 1; i < last; ++i) {
    GxCoord<double> const& p = points[i];
    double const t = u[i - first];
    if (!measure.isBelow(worst.error, p, t)) worst.offer(measure.squaredError(p, t), i);
  }
  return worst;
}

/// Boxes around pieces of a segment: what lies in none of them is not passed by the segment.
class Surroundings {
 public:
  Surroundings(GxBezier const& segment, unsigned points)
      : pieces_(points < kMost ? points : kMost) {
    Controls const c(segment);
    double const rounding = c.size * kRounding;
    double const step = 1.0 / pieces_;
    double const reachX = kPassesPoint + rounding + bend(c.x, step);
    double const reachY = kPassesPoint + rounding + bend(c.y, step);
    GxCoord<double> from = segment[0];
    for (unsigned i = 0; i < pieces_; ++i) {
      GxCoord<double> const to = segment.bValue(i + 1 == pieces_ ? 1.0 : (i + 1) * step);
      centreX_[i] = from.xval() * 0.5 + to.xval() * 0.5;
      centreY_[i] = from.yval() * 0.5 + to.yval() * 0.5;
      halfX_[i] = std::fabs(to.xval() - from.xval()) * 0.5 + reachX;
      halfY_[i] = std::fabs(to.yval() - from.yval()) * 0.5 + reachY;
      from = to;
    }
  }

  bool excludes(GxCoord<double> const& p) const {
    for (unsigned i = 0; i < pieces_; ++i) {
      bool const outside = std::fabs(p.xval() - centreX_[i]) > halfX_[i] ||
                           std::fabs(p.yval() - centreY_[i]) > halfY_[i];
      if (!outside) return false;
    }
    return true;
  }

 private:
  static constexpr unsigned kMost = 24;
  // Relative: some hundred times the rounding errors of the segment's points.
  static constexpr double kRounding = 1e-13;

  /// The most that a piece strays from its chord: an eighth of the second derivative's maximum.
  static double bend(double const* k, double step) {
    double const start = std::fabs(k[0] - 2.0 * k[1] + k[2]);
    double const end = std::fabs(k[1] - 2.0 * k[2] + k[3]);
    return 6.0 * max(start, end) * step * step / 8.0;
  }

  unsigned const pieces_;
  double centreX_[kMost];
  double centreY_[kMost];
  double halfX_[kMost];
  double halfY_[kMost];
};

/// Fits all points of an array.
class Fitter {
 public:
  Fitter(std::vector<GxCoord<double>> points, double error, GxList<GxBezier>& out);
  void fit(GxVector<double> const& tHat1, GxVector<double> const& tHat2);

 private:
  struct Range {
    unsigned first, last;
    GxVector<double> tHat1, tHat2;
  };

  int fitRange(Range const& r);
  Worst fitByChordLength(Range const& r);
  bool fitByBetterParameters(Range const& r, Worst& worst);
  void parameterise(unsigned first, unsigned last);
  void addRun(Range const& r);

  std::vector<GxCoord<double>> const points_;
  double const error_;
  GxList<GxBezier>& out_;
  std::vector<double> chords_;      // from each point back to the one before
  std::vector<unsigned> runStart_;  // the first of the equal points that lead up to each point
  std::vector<double> u_;           // the parameters of the range at hand
  GxBezier segment_;                // its segment
};

Fitter::Fitter(std::vector<GxCoord<double>> points, double error, GxList<GxBezier>& out)
    : points_(std::move(points)),
      error_(error),
      out_(out),
      chords_(points_.size()),
      runStart_(points_.size()),
      u_(points_.size()) {
  for (unsigned i = 1; i < points_.size(); ++i) {
    runStart_[i] = isSamePoint(points_[i], points_[i - 1]) ? runStart_[i - 1] : i;
    chords_[i] = points_[i].distance(points_[i - 1]);
  }
}

void Fitter::fit(GxVector<double> const& tHat1, GxVector<double> const& tHat2) {
  std::vector<Range> waiting{{0u, static_cast<unsigned>(points_.size() - 1), tHat1, tHat2}};
  while (!waiting.empty()) {
    Range const r = waiting.back();
    waiting.pop_back();
    int const split = fitRange(r);
    if (split == kNoPoint) continue;
    unsigned const s = static_cast<unsigned>(split);
    GxVector<double> const centre = innerTangent(points_[s - 1], points_[s], points_[s + 1]);
    waiting.push_back({s, r.last, -centre, r.tHat2});
    waiting.push_back({r.first, s, r.tHat1, centre});
  }
}

/// Adds the segments of a range, or returns the inner point at which it has to be split.
int Fitter::fitRange(Range const& r) {
  if (runStart_[r.last] <= r.first || r.last - r.first == 1) {
    addRun(r);
    return kNoPoint;
  }
  Worst worst = fitByChordLength(r);
  unsigned const point = static_cast<unsigned>(worst.point);
  if (worst.error < error_) {
    // Deliberate: a good fit, and still split next to an end; three points always become two
    // pieces.
    bool const nextToAnEnd = point == r.first + 1 || point == r.last - 1;
    if (nextToAnEnd) return worst.point;
  } else if (!(worst.error < error_ * error_ && fitByBetterParameters(r, worst))) {
    if (worst.point != kNoPoint) return worst.point;
  }
  out_.add(segment_);
  return kNoPoint;
}

/// Adds one segment for every two neighbours of a range of two points, or of equal points. That is
/// what splitting equal points comes to whatever the tolerance: they have equal parameters and so
/// equal distances, and the last inner one is cut off, with no tangent, until two are left.
void Fitter::addRun(Range const& r) {
  GxVector<double> forwards = r.tHat1;
  for (unsigned i = r.first; i < r.last; ++i) {
    GxVector<double> const backwards = i + 1 == r.last ? r.tHat2 : GxVector<double>();
    out_.add(segmentOfTwoPoints(points_[i], points_[i + 1], forwards, backwards));
    forwards = -backwards;
  }
}

Worst Fitter::fitByChordLength(Range const& r) {
  // Equal points at the range's end have the parameter 1, where weights and distances are 0: all
  // but the first of them can be left out, and only the last inner one may be the worst point.
  unsigned end = runStart_[r.last];
  parameterise(r.first, end);
  if (end != r.last && u_[end - r.first] != 1.0) {
    end = r.last;
    parameterise(r.first, end);
  }
  segment_ = leastSquaresSegment(points_, u_.data(), r.first, end, r.tHat1, r.tHat2);
  Worst worst = worstPoint(points_, r.first, end, u_.data(), segment_);
  if (end != r.last) {
    worst.offer(ErrorMeasure(segment_).squaredError(points_[end], u_[end - r.first]), r.last - 1);
  }
  return worst;
}

/// Replaces parameters by those of the nearest points of the segment found before; true when a
/// segment that fits comes of it. Worst is that of the last round.
bool Fitter::fitByBetterParameters(Range const& r, Worst& worst) {
  for (int round = 0; round < kMaxRounds; ++round) {
    Surroundings const surroundings(segment_, r.last - r.first + 1);
    for (unsigned i = r.first; i <= r.last; ++i) {
      double& u = u_[i - r.first];
      // Deliberate: -1.0, for a point that the segment does not pass, is used as a parameter.
      u = surroundings.excludes(points_[i]) ? -1.0
                                            : segment_.findParameter(points_[i], u, kPassesPoint);
    }
    segment_ = leastSquaresSegment(points_, u_.data(), r.first, r.last, r.tHat1, r.tHat2);
    worst = worstPoint(points_, r.first, r.last, u_.data(), segment_);
    if (worst.error < error_) return true;
  }
  return false;
}

/// Parameters by chord length, from 0 to 1; all 0 where there is no length.
void Fitter::parameterise(unsigned first, unsigned last) {
  unsigned const n = last - first;
  u_[0] = 0.0;
  for (unsigned k = 1; k <= n; ++k) u_[k] = u_[k - 1] + chords_[first + k];
  double const total = u_[n];
  if (IS_ZERO(total, kNoLength)) return;
  for (unsigned k = 1; k <= n; ++k) u_[k] /= total;
}

}  // namespace

void GxBezierCurve::makeBezierPolyFit(GxList<GxCoord<double>> const* points, double error) {
  if (points == nullptr || points->length() < 2) return;
  unsigned long const last = points->length() - 1;
  bezierPolyFit(points, 0, last, findTangent(points, 0), findTangent(points, last), error);
}

void GxBezierCurve::bezierPolyFit(GxList<GxCoord<double>> const* points, unsigned long first,
                                  unsigned long last, GxVector<double> const& tHat1,
                                  GxVector<double> const& tHat2, double error) {
  if (points == nullptr || first >= last || last >= points->length()) return;
  std::vector<GxCoord<double>> range;
  range.reserve(last - first + 1);
  for (unsigned long i = first; i <= last; ++i) {
    range.push_back((*points)[static_cast<unsigned>(i)]);
  }
  GxList<GxBezier> fitted;
  Fitter(std::move(range), error, fitted).fit(tHat1, tHat2);
  segments_.join(fitted);
  closed_ = 0;
}

void GxBezierCurve::findSegment(GxList<GxCoord<double>> const* points, double const* u,
                                unsigned long first, unsigned long last,
                                GxVector<double> const& tHat1, GxVector<double> const& tHat2,
                                GxBezier& result) {
  result = leastSquaresSegment(*points, u, static_cast<unsigned>(first),
                               static_cast<unsigned>(last), tHat1, tHat2);
}

double GxBezierCurve::leastSquareErr(GxList<GxCoord<double>> const* points, unsigned long first,
                                     unsigned long last, double const* u, GxBezier const& segment,
                                     int& splitPoint) {
  Worst const worst =
      worstPoint(*points, static_cast<unsigned>(first), static_cast<unsigned>(last), u, segment);
  splitPoint = worst.point;
  return worst.error;
}

GxVector<double> GxBezierCurve::findTangent(GxList<GxCoord<double>> const* points,
                                            unsigned long i) {
  unsigned const n = points->length();
  if (n < 2) return {};
  GxList<GxCoord<double>> const& p = *points;
  if (i == 0) return unitOrZero(p[1] - p[0]);
  if (i == n - 1) return unitOrZero(p[n - 2] - p[n - 1]);
  unsigned const k = static_cast<unsigned>(i);
  return innerTangent(p[k - 1], p[k], p[k + 1]);
}

int GxBezierCurve::isCollinear(GxVector<double> const& a, GxVector<double> const& b,
                               float angleDegrees) {
  double const lengths = a.length() * b.length();
  if (IS_ZERO(lengths, kNoAngle)) return 0;
  double const cosine = std::fabs((a * b) / lengths);
  return std::cos(static_cast<double>(angleDegrees) * kRadiansPerDegree) < cosine;
}
