// Polylines by halving: a piece is split in the middle until it is a point, which adds nothing, or
// a line, which adds its end (after Lane and Riesenfeld, 1980).
#include "crv/bezier/GxBezier.h"

#include "crv/bezier/GxBezierPolylineCondition.h"
#include "crv/bezier/internal/cubic.h"
#include "crv/bezier/internal/polyline.h"
#include "crv/foundation/lines.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

using crv::internal::Cubic;
using crv::internal::Point;

namespace {

// Guards: halvings of one piece, and pieces looked at in one polyline. 1,100 halvings leave the
// range of exponents of a segment's size, 2,200 that of any parameter that a caller's condition may
// follow. More pieces are only made for tolerances below the resolution of the coordinates.
constexpr int kMaxDepth = 1100;
constexpr int kMaxDepthOfCaller = 2200;
constexpr long kMaxPieces = 1L << 26;

// Largest coordinates, and squared lengths of chords, between which distances are compared by their
// squares: there, no product of two squares leaves the range of doubles.
constexpr double kLeastSize = 1e-20;
constexpr double kLargestSize = 1e70;
constexpr double kLeastSquaredLength = 1e-100;

// Relative to coordinates and tolerance: far more than the rounding of a distance. Squares decide
// only beyond it.
constexpr double kRoundingMargin = 0x1p-45;

// Points collected before they are appended together.
constexpr int kBlock = 64;

GxCoord<double> coord(Point const& p) { return {p.x, p.y}; }

bool isFinite(Cubic const& s) {
  for (Point const& p : s.p) {
    if (!std::isfinite(p.x) || !std::isfinite(p.y)) return false;
  }
  return true;
}

double largestCoordinate(Cubic const& s) {
  double largest = 0.0;
  for (Point const& p : s.p) largest = max(largest, max(std::fabs(p.x), std::fabs(p.y)));
  return largest;
}

/// isALine and isAPoint for the pieces of one segment. Squared distances decide, but where they are
/// so near to the squared tolerance that rounding matters, the distances themselves do.
class Tolerance {
 public:
  Tolerance(Cubic const& s, double tol) : tol_(tol) {
    double const size = largestCoordinate(s);
    if (!isFinite(s) || size < kLeastSize || size > kLargestSize || !(tol >= 0.0)) return;
    double const margin = (size + tol) * kRoundingMargin;
    beyond_ = (tol + margin) * (tol + margin);
    if (tol > margin) within_ = (tol - margin) * (tol - margin);
  }

  bool isALine(Cubic const& s) const {
    Point const chord = s.end() - s.start();
    Point const first = s.p[1] - s.start();
    Point const second = s.p[2] - s.start();
    double const squaredLength = dot(chord, chord);
    if (squaredLength > kLeastSquaredLength) {
      // The distances from the line, times the length; and where their feet lie along the chord.
      double const across = max(std::fabs(cross(chord, first)), std::fabs(cross(chord, second)));
      double const squaredAcross = across * across;
      if (squaredAcross > beyond_ * squaredLength) return false;
      double const along1 = dot(chord, first);
      double const along2 = dot(chord, second);
      bool const isOnChord = min(along1, along2) > 0.0 && max(along1, along2) < squaredLength;
      if (isOnChord && squaredAcross < within_ * squaredLength) return true;
    }
    return (isEqual(s.p[1], s.p[0]) || isOnChordOf(s, s.p[1])) &&
           (isEqual(s.p[2], s.p[3]) || isOnChordOf(s, s.p[2]));
  }

  bool isAPoint(Cubic const& s) const {
    return isEqual(s.p[0], s.p[3]) && isEqual(s.p[0], s.p[1]) && isEqual(s.p[2], s.p[3]);
  }

 private:
  bool isEqual(Point const& p, Point const& q) const {
    double const d = squaredDistance(p, q);
    if (d > beyond_) return false;
    return d < within_ || ::isEqual(coord(p), coord(q), tol_);
  }

  bool isOnChordOf(Cubic const& s, Point const& p) const {
    return pointOnLineSegment(coord(p), coord(s.start()), coord(s.end()), tol_);
  }

  double tol_;
  double within_ = -1.0;
  double beyond_ = std::numeric_limits<double>::infinity();
};

/// The condition of the forms without a caller's one. No piece is a line within a tolerance that is
/// negative or NaN: there, every piece counts as one.
class OwnCondition {
 public:
  using Piece = Cubic;
  static constexpr int kDepth = kMaxDepth;

  OwnCondition(Cubic const& s, double tol)
      : tolerance_(s, tol),
        canHold_(tol >= 0.0),
        staysFinite_(isFinite(s) && largestCoordinate(s) < kLargestSize) {}

  bool canHold() const { return canHold_; }
  bool isALine(Cubic const& s) const { return tolerance_.isALine(s); }
  bool isAPoint(Cubic const& s) const { return tolerance_.isAPoint(s); }
  bool isFinitePiece(Cubic const& s) const { return staysFinite_ || isFinite(s); }
  static Point const& end(Cubic const& s) { return s.end(); }
  static void halve(Cubic& piece, Cubic& right) {
    Cubic const whole = piece;
    whole.split(0.5, piece, right);
  }

 private:
  Tolerance tolerance_;
  bool canHold_;
  bool staysFinite_;
};

/// A caller's condition, which alone judges its tolerance.
class CallersCondition {
 public:
  using Piece = GxBezier;
  static constexpr int kDepth = kMaxDepthOfCaller;

  CallersCondition(GxBezierPolylineCondition const& caller, double tol)
      : caller_(caller), tol_(tol) {}

  static bool canHold() { return true; }
  int isALine(GxBezier const& s) const { return caller_.isALine(s, tol_); }
  int isAPoint(GxBezier const& s) const { return caller_.isAPoint(s, tol_); }
  static bool isFinitePiece(GxBezier const& s) { return isFinite(crv::internal::cubic(s)); }
  static GxCoord<double> const& end(GxBezier const& s) { return s[3]; }
  static void halve(GxBezier& piece, GxBezier& right) { piece.split(right, 0.5); }

 private:
  GxBezierPolylineCondition const& caller_;
  double tol_;
};

/// Halves pieces and hands the end of each line, with its parameter, to emit.
template <class Condition, class Emit>
class Halving {
 public:
  using Piece = typename Condition::Piece;

  Halving(Condition const& condition, long maxPieces, Emit& emit)
      : condition_(condition), maxPieces_(maxPieces), emit_(emit) {}

  /// The piece starts at t and covers 1/n of the whole segment; it is used up.
  void run(Piece& piece, double t, double n, int depth) {
    for (;; ++depth) {
      ++pieces_;
      // The point is asked for first: what is both a point and a line adds nothing.
      if (condition_.isAPoint(piece)) return;
      if (condition_.isALine(piece) || mustEnd(piece, depth)) {
        emit_(Condition::end(piece), t + 1.0 / n);
        return;
      }
      Piece right;
      Condition::halve(piece, right);
      n *= 2.0;
      run(piece, t, n, depth + 1);
      piece = right;
      t += 1.0 / n;
    }
  }

 private:
  bool mustEnd(Piece const& piece, int depth) const {
    return !condition_.canHold() || depth >= Condition::kDepth || pieces_ >= maxPieces_ ||
           !condition_.isFinitePiece(piece);
  }

  Condition const& condition_;
  long maxPieces_;
  Emit& emit_;
  long pieces_ = 0;
};

template <class Emit>
void halve(GxBezier const& segment, double tol, long maxPieces, Emit emit) {
  Cubic piece = crv::internal::cubic(segment);
  OwnCondition const condition(piece, tol);
  Halving<OwnCondition, Emit>(condition, maxPieces, emit).run(piece, 0.0, 1.0, 0);
}

/// Appends points to a vector in blocks, so that a short polyline makes it grow once.
class Appender {
 public:
  explicit Appender(std::vector<GxCoord<double>>& out) : out_(out) {}

  void add(Point const& p) {
    if (count_ == kBlock) flush();
    block_[count_++] = p;
  }

  /// Appends what is left; to be called at the end.
  void flush() {
    std::size_t const needed = out_.size() + static_cast<std::size_t>(count_);
    if (out_.capacity() < needed) out_.reserve(std::max(needed, 2 * out_.capacity()));
    for (int i = 0; i < count_; ++i) out_.push_back(coord(block_[i]));
    count_ = 0;
  }

 private:
  std::vector<GxCoord<double>>& out_;
  Point block_[kBlock];
  int count_ = 0;
};

}  // namespace

namespace crv::internal {

void appendPolyline(GxBezier const& segment, double tol, long maxPieces,
                    std::vector<GxCoord<double>>& out) {
  Appender appender(out);
  appender.add(plain(segment[0]));
  halve(segment, tol, maxPieces, [&](Point const& p, double) { appender.add(p); });
  appender.flush();
}

}  // namespace crv::internal

void GxBezier::getPolyline(double tol, std::list<GxCoord<double>>& out) const {
  out.push_back(points_[0]);
  makePolyline(tol, out);
}

void GxBezier::getPolyline(double tol, std::vector<GxCoord<double>>& out) const {
  crv::internal::appendPolyline(*this, tol, kMaxPieces, out);
}

void GxBezier::getPolyline(double tol, std::list<GxCoord<double>>& out, std::list<double>& tValues,
                           GxBezierPolylineCondition const& condition) const {
  out.push_back(points_[0]);
  tValues.push_back(0.0);
  makePolyline(tol, 0.0, 1, out, tValues, condition);
}

void GxBezier::makePolyline(double tol, std::list<GxCoord<double>>& out) const {
  halve(*this, tol, kMaxPieces, [&](Point const& p, double) { out.push_back(coord(p)); });
}

void GxBezier::makePolyline(double tol, std::vector<GxCoord<double>>& out) const {
  Appender appender(out);
  halve(*this, tol, kMaxPieces, [&](Point const& p, double) { appender.add(p); });
  appender.flush();
}

void GxBezier::makePolyline(double tol, double startT, int n, std::list<GxCoord<double>>& out,
                            std::list<double>& tValues,
                            GxBezierPolylineCondition const& condition) const {
  auto emit = [&](GxCoord<double> const& p, double t) {
    out.push_back(p);
    tValues.push_back(t);
  };
  GxBezier piece(*this);
  CallersCondition const judge(condition, tol);
  Halving<CallersCondition, decltype(emit)>(judge, kMaxPieces, emit).run(piece, startT, n, 0);
}
