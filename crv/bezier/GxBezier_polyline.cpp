// Polylines by halving: a piece is split in the middle until it is a point, which adds nothing, or
// a line, which adds its end (after Lane and Riesenfeld, 1980).
#include "crv/bezier/GxBezier.h"

#include "crv/bezier/GxBezierPolylineCondition.h"
#include "crv/bezier/internal/cubic.h"
#include "crv/bezier/internal/lanes.h"
#include "crv/bezier/internal/polyline.h"
#include "crv/foundation/lines.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

using crv::internal::Cubic;
using crv::internal::inBothLanes;
using crv::internal::LaneMask;
using crv::internal::Lanes;
using crv::internal::maxOf;
using crv::internal::minOf;
using crv::internal::Point;

namespace {

// Guards: halvings of one piece, and pieces examined in one polyline. After 1,100 halvings any
// segment is smaller than the least double; after 2,200 even the range of parameters that a
// caller's condition may depend on is exhausted. Only tolerances below the resolution of the
// coordinates need more pieces.
constexpr int kMaxDepth = 1100;
constexpr int kMaxDepthOfCaller = 2200;
constexpr long kMaxPieces = 1L << 26;

// Distances are compared by their squares only if the largest coordinate lies between the first two
// limits, in curve units, and the squared length of the chord is above the third one: then no
// product of two squares leaves the range of doubles.
constexpr double kLeastSize = 1e-20;
constexpr double kLargestSize = 1e70;
constexpr double kLeastSquaredLength = 1e-100;

// Relative to coordinates and tolerance: far more than the rounding error of a distance. Squares
// decide only where they differ by more.
constexpr double kRoundingMargin = 0x1p-45;

// Points collected before they are appended together.
constexpr int kBlock = 256;

bool isFinite(Point const* p) {
  for (int i = 0; i < 4; ++i) {
    if (!isFinite(p[i])) return false;
  }
  return true;
}

/// The largest absolute coordinate; infinity where one is not finite.
double sizeOf(Cubic const& s) {
  if (!isFinite(s.p)) return std::numeric_limits<double>::infinity();
  double size = 0.0;
  for (Point const& p : s.p) size = max(size, max(std::fabs(p.x), std::fabs(p.y)));
  return size;
}

/// Both halves of a piece, which share the point in the middle.
struct Halves {
  Point p[7];

  Point const* left() const { return p; }
  Point const* right() const { return p + 3; }

  explicit Halves(Point const* w) {
    p[0] = w[0];
    p[6] = w[3];
    Point const middle = between(w[1], w[2], 0.5);
    p[1] = between(w[0], w[1], 0.5);
    p[5] = between(w[2], w[3], 0.5);
    p[2] = between(p[1], middle, 0.5);
    p[4] = between(middle, p[5], 0.5);
    p[3] = between(p[2], p[4], 0.5);
  }
};

/// The result of comparing squared distances, for two pieces: whether each one is certainly a line
/// and not a point, or certainly neither. If neither flag is set, the distances themselves decide.
struct Verdicts {
  LaneMask isLine;
  LaneMask isCurved;
};

/// isALine and isAPoint for the pieces of one segment, given by their four control points. Squared
/// distances decide, except where they are so near to the squared tolerance that rounding matters;
/// there the distances themselves decide.
class Tolerance {
 public:
  /// The tolerance for a segment of this size.
  Tolerance(double size, double tol) : tol_(tol) {
    if (size < kLeastSize || size > kLargestSize || !(tol >= 0.0)) return;
    double const margin = (size + tol) * kRoundingMargin;
    beyond_ = (tol + margin) * (tol + margin);
    if (tol > margin) within_ = (tol - margin) * (tol - margin);
  }

  Verdicts judge(Point const* s, Point const* u) const {
    auto const fromStart = [=](int i) {
      return LanesOfPoints{Lanes{s[i].x, u[i].x} - Lanes{s[0].x, u[0].x},
                           Lanes{s[i].y, u[i].y} - Lanes{s[0].y, u[0].y}};
    };
    LanesOfPoints const first = fromStart(1);
    LanesOfPoints const second = fromStart(2);
    LanesOfPoints const chord = fromStart(3);
    // The distances from the chord's line times the chord's length, and the positions of their feet
    // along the chord.
    Lanes const squaredLength = dot(chord, chord);
    Lanes const across1 = cross(chord, first);
    Lanes const across2 = cross(chord, second);
    Lanes const squaredAcross = maxOf(across1 * across1, across2 * across2);
    Lanes const along1 = dot(chord, first);
    Lanes const along2 = dot(chord, second);
    LaneMask const isLong = squaredLength > inBothLanes(max(beyond_, kLeastSquaredLength));
    LaneMask const isOnChord =
        (minOf(along1, along2) > inBothLanes(0.0)) & (maxOf(along1, along2) < squaredLength);
    return {isLong & isOnChord & (squaredAcross < inBothLanes(within_) * squaredLength),
            isLong & (squaredAcross > inBothLanes(beyond_) * squaredLength)};
  }

  bool isALine(Point const* s) const {
    return (isEqual(s[1], s[0]) || isOnChord(s, s[1])) &&
           (isEqual(s[2], s[3]) || isOnChord(s, s[2]));
  }

  bool isAPoint(Point const* s) const {
    return isEqual(s[0], s[3]) && isEqual(s[0], s[1]) && isEqual(s[2], s[3]);
  }

 private:
  struct LanesOfPoints {
    Lanes x, y;
  };

  static Lanes dot(LanesOfPoints const& p, LanesOfPoints const& q) { return p.x * q.x + p.y * q.y; }
  static Lanes cross(LanesOfPoints const& p, LanesOfPoints const& q) {
    return p.x * q.y - p.y * q.x;
  }

  bool isEqual(Point const& p, Point const& q) const {
    double const d = squaredDistance(p, q);
    if (d > beyond_) return false;
    return d < within_ || ::isEqual(coord(p), coord(q), tol_);
  }

  bool isOnChord(Point const* s, Point const& p) const {
    return pointOnLineSegment(coord(p), coord(s[0]), coord(s[3]), tol_);
  }

  double tol_;
  double within_ = -1.0;
  double beyond_ = std::numeric_limits<double>::infinity();
};

/// Halves pieces and calls emit with the end point of each line.
template <class Emit>
class Halving {
 public:
  Halving(double size, double tol, long maxPieces, Emit& emit)
      : tolerance_(size, tol),
        staysFinite_(size < kLargestSize),
        // If the tolerance is negative or NaN, no piece is a line, and the whole segment is taken
        // as one.
        maxPieces_(tol >= 0.0 ? maxPieces : 1),
        emit_(emit) {}

  void run(Cubic const& s) {
    Verdicts const verdicts = tolerance_.judge(s.p, s.p);
    run(s.p, verdicts.isLine[0] != 0, verdicts.isCurved[0] != 0, 0);
  }

 private:
  void run(Point const* piece, bool isLine, bool isCurved, int depth) {
    ++pieces_;
    if (!isLine && !isCurved) {
      // The test for a point comes first: a piece that is both a point and a line adds nothing.
      if (tolerance_.isAPoint(piece)) return;
      isLine = tolerance_.isALine(piece);
    }
    if (isLine || mustEnd(piece, depth)) {
      emit_(piece[3]);
    } else {
      halve(piece, depth + 1);
    }
  }

  void halve(Point const* piece, int depth) {
    Halves const halves(piece);
    Verdicts const verdicts = tolerance_.judge(halves.left(), halves.right());
    run(halves.left(), verdicts.isLine[0] != 0, verdicts.isCurved[0] != 0, depth);
    run(halves.right(), verdicts.isLine[1] != 0, verdicts.isCurved[1] != 0, depth);
  }

  bool mustEnd(Point const* piece, int depth) const {
    return depth >= kMaxDepth || pieces_ >= maxPieces_ || !(staysFinite_ || isFinite(piece));
  }

  Tolerance tolerance_;
  bool staysFinite_;
  long maxPieces_;
  Emit& emit_;
  long pieces_ = 0;
};

template <class Emit>
void halve(GxBezier const& segment, double tol, long maxPieces, Emit emit) {
  Cubic const s = crv::internal::cubic(segment);
  Halving<Emit>(sizeOf(s), tol, maxPieces, emit).run(s);
}

/// Halves pieces under a caller's condition, which alone judges its tolerance; appends the end of
/// each line with its parameter.
class CallersHalving {
 public:
  CallersHalving(GxBezierPolylineCondition const& condition, double tol,
                 std::list<GxCoord<double>>& points, std::list<double>& parameters)
      : condition_(condition), tol_(tol), points_(points), parameters_(parameters) {}

  /// The piece starts at t and covers 1/n of the whole segment; its value afterwards is
  /// unspecified.
  void run(GxBezier& piece, double t, double n, int depth) {
    for (;; ++depth) {
      ++pieces_;
      // The test for a point comes first: a piece that is both a point and a line adds nothing.
      if (condition_.isAPoint(piece, tol_)) return;
      if (condition_.isALine(piece, tol_) || mustEnd(piece, depth)) {
        points_.push_back(piece[3]);
        parameters_.push_back(t + 1.0 / n);
        return;
      }
      GxBezier right;
      piece.split(right, 0.5);
      n *= 2.0;
      run(piece, t, n, depth + 1);
      piece = right;
      t += 1.0 / n;
    }
  }

 private:
  bool mustEnd(GxBezier const& piece, int depth) const {
    return depth >= kMaxDepthOfCaller || pieces_ >= kMaxPieces ||
           !isFinite(crv::internal::cubic(piece).p);
  }

  GxBezierPolylineCondition const& condition_;
  double tol_;
  std::list<GxCoord<double>>& points_;
  std::list<double>& parameters_;
  long pieces_ = 0;
};

/// Appends points to a vector in blocks, so that the vector grows only once for a short polyline.
class Appender {
 public:
  explicit Appender(std::vector<GxCoord<double>>& out) : out_(out) {}

  void add(Point const& p) {
    if (count_ == kBlock) flush();
    block_[count_++] = p;
  }

  /// Appends the points collected so far to the list; call it after the last point.
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
  halve(segment, tol, maxPieces, [&](Point const& p) { appender.add(p); });
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
  halve(*this, tol, kMaxPieces, [&](Point const& p) { out.push_back(coord(p)); });
}

void GxBezier::makePolyline(double tol, std::vector<GxCoord<double>>& out) const {
  Appender appender(out);
  halve(*this, tol, kMaxPieces, [&](Point const& p) { appender.add(p); });
  appender.flush();
}

void GxBezier::makePolyline(double tol, double startT, int n, std::list<GxCoord<double>>& out,
                            std::list<double>& tValues,
                            GxBezierPolylineCondition const& condition) const {
  GxBezier piece(*this);
  CallersHalving(condition, tol, out, tValues).run(piece, startT, n, 0);
}
