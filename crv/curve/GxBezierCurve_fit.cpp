// Fitting a chain of segments to digitised points: least squares at chord-length parameters, better
// parameters by Newton's method, a split at the worst point (P. J. Schneider, "An algorithm for
// automatically fitting digitized curves", Graphics Gems, 1990). Unlike the published version, this
// one regularises a singular matrix by an addition, takes a handle as too short only when it is
// negative, and splits a good fit whose worst point is next to an end. Ranges wait on an explicit
// stack, and runs of equal points are passed over, so that time and memory stay within bounds.
#include "crv/curve/GxBezierCurve.h"

#include "crv/curve/internal/fitError.h"
#include "crv/curve/internal/pieceBoxes.h"
#include "crv/foundation/tolerance.h"

#include <cmath>
#include <utility>
#include <vector>

using crv::internal::ErrorMeasure;
using crv::internal::kNoPoint;
using crv::internal::PieceBoxes;
using crv::internal::WorstPoint;
using crv::internal::worstPoint;

namespace {

// The length of a handle, as a fraction of the chord, where least squares gives none.
constexpr double kHandleFraction = 0.3333333333333333;

// Curve units: neighbours closer than this have no direction between them, ranges no length.
constexpr double kNoLength = kZeroTolerance;

// Squared sums of weights: a matrix whose determinant is below this is singular, and this value is
// added to regularise it.
constexpr double kSingular = 1e-12;

// Rounds of better parameters before a range is split.
constexpr int kMaxRounds = 4;

// Curve units: a segment passes a point that it comes this near to, in x and in y.
constexpr double kPassesPoint = 0.5;

// Vectors whose lengths multiply to less have no angle between them.
constexpr double kNoAngle = kZeroTolerance;

// Deliberate: pi / 180 to these digits.
constexpr double kRadiansPerDegree = 0.017453;

/// Deliberate: a vector whose squared length is 0 is left as it is.
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

/// Returns true if both points are finite and equal, signs of zeros included, so that they can be
/// exchanged.
bool isSamePoint(GxCoord<double> const& p, GxCoord<double> const& q) {
  auto const same = [](double a, double b) {
    return a - b == 0.0 && std::signbit(a) == std::signbit(b);
  };
  return same(p.xval(), q.xval()) && same(p.yval(), q.yval());
}

double thirdOfChord(GxCoord<double> const& p0, GxCoord<double> const& p3) {
  return p3.distance(p0) * kHandleFraction;
}

/// The segment between two points, with handles of a third of the chord along the tangents.
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

/// points is the caller's list or an array; u holds the parameters of points first..last.
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

/// Fits all points of an array.
class Fitter {
 public:
  Fitter(std::vector<GxCoord<double>> points, double error, GxList<GxBezier>& out);
  void fit(GxVector<double> const& tHat1, GxVector<double> const& tHat2);

 private:
  struct Range {
    unsigned first, last;
    GxVector<double> tHat1, tHat2;

    bool isSecondFromAnEnd(int i) const {
      return i != kNoPoint && (i == static_cast<int>(first) + 1 || i == static_cast<int>(last) - 1);
    }
  };

  int fitRange(Range const& r);
  WorstPoint fitByChordLength(Range const& r);
  bool fitByReparameterization(Range const& r, WorstPoint& worst);
  void setChordLengthParameters(unsigned first, unsigned last);
  void addSegmentPerPair(Range const& r);

  std::vector<GxCoord<double>> const points_;
  double const error_;
  GxList<GxBezier>& out_;
  std::vector<double> chords_;      // from each point back to the one before
  std::vector<unsigned> runStart_;  // the first of the equal points that lead up to each point
  std::vector<double> u_;           // the parameters of the current range
  GxBezier segment_;                // the segment of the current range
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

/// Adds the segments of a range, or returns the inner point at which the range has to be split.
int Fitter::fitRange(Range const& r) {
  bool const isRun = runStart_[r.last] <= r.first;
  if (r.last - r.first == 1 || (isRun && r.last != r.first)) {
    addSegmentPerPair(r);
    return kNoPoint;
  }
  WorstPoint worst = fitByChordLength(r);
  bool const fits = worst.error < error_;
  // Deliberate: a good fit is still split next to an end, so three points become two pieces.
  if (fits && r.isSecondFromAnEnd(worst.index)) return worst.index;
  bool const isWorthwhile = !fits && worst.error < error_ * error_;
  bool const fitsBetter = isWorthwhile && fitByReparameterization(r, worst);
  if (!fits && !fitsBetter && worst.index != kNoPoint) return worst.index;
  out_.add(segment_);
  return kNoPoint;
}

/// Adds one segment for every two neighbours of a range of two points, or of equal points. Repeated
/// splitting gives the same result: coincident points have equal errors, so the last inner point is
/// split off each time, with a zero tangent.
void Fitter::addSegmentPerPair(Range const& r) {
  GxVector<double> forwards = r.tHat1;
  for (unsigned i = r.first; i < r.last; ++i) {
    GxVector<double> const backwards = i + 1 == r.last ? r.tHat2 : GxVector<double>();
    out_.add(segmentOfTwoPoints(points_[i], points_[i + 1], forwards, backwards));
    forwards = -backwards;
  }
}

WorstPoint Fitter::fitByChordLength(Range const& r) {
  // Equal points at the range's end have the parameter 1, where weights and distances are 0: all
  // but the first of them can be left out, and only the last inner one may be the worst point.
  unsigned end = r.first == r.last ? r.last : runStart_[r.last];
  setChordLengthParameters(r.first, end);
  if (end != r.last && u_[end - r.first] != 1.0) {
    end = r.last;
    setChordLengthParameters(r.first, end);
  }
  segment_ = leastSquaresSegment(points_, u_.data(), r.first, end, r.tHat1, r.tHat2);
  WorstPoint worst = worstPoint(points_, r.first, end, u_.data(), segment_);
  if (end != r.last) {
    worst.update(ErrorMeasure(segment_).squaredError(points_[end], u_[end - r.first]), r.last - 1);
  }
  return worst;
}

/// Replaces the parameters by those of the nearest points of the segment found before and solves
/// again, up to four times, until a segment fits. Returns whether one does, and stores the worst
/// point of the last round.
bool Fitter::fitByReparameterization(Range const& r, WorstPoint& worst) {
  for (int round = 0; round < kMaxRounds; ++round) {
    PieceBoxes const boxes(segment_, r.last - r.first + 1, kPassesPoint);
    for (unsigned i = r.first; i <= r.last; ++i) {
      double& u = u_[i - r.first];
      // Deliberate: -1.0, for a point that the segment does not pass, is used as a parameter.
      u = boxes.exclude(points_[i]) ? -1.0 : segment_.findParameter(points_[i], u, kPassesPoint);
    }
    segment_ = leastSquaresSegment(points_, u_.data(), r.first, r.last, r.tHat1, r.tHat2);
    worst = worstPoint(points_, r.first, r.last, u_.data(), segment_);
    if (worst.error < error_) return true;
  }
  return false;
}

/// Sets the parameters by chord length, from 0 to 1; all are 0 where there is no length.
void Fitter::setChordLengthParameters(unsigned first, unsigned last) {
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
  if (points == nullptr || first > last || last >= points->length()) return;
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
  WorstPoint const worst =
      worstPoint(*points, static_cast<unsigned>(first), static_cast<unsigned>(last), u, segment);
  splitPoint = worst.index;
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
