// The nearest point of a segment: the roots of (B(t) - p) . B'(t), a polynomial of degree 5 in
// Bernstein form, are isolated by halving its control polygon; then the ends compete with the roots
// (P. J. Schneider, "Solving the nearest-point-on-curve problem", Graphics Gems, 1990). Unlike the
// published version, zero counts as a sign, tiny values become zero, and the flatness test ignores
// the side of the chord.
#include "crv/bezier/GxBezier.h"

#include "crv/bezier/internal/controlPolygon.h"
#include "crv/bezier/internal/cubic.h"
#include "crv/bezier/internal/lanes.h"
#include "crv/foundation/lines.h"
#include "crv/foundation/tolerance.h"

#include <cmath>

using crv::internal::Cubic;
using crv::internal::inBothLanes;
using crv::internal::isFlatPolygon;
using crv::internal::Lanes;
using crv::internal::minOf;
using crv::internal::Point;
using crv::internal::squaredDistance;

namespace {

// Curve units: control points closer than this make a segment its chord, or a point.
constexpr double kDegenerate = 1e-7;

// Halvings of the parameter range after which its middle is taken as the root.
constexpr int kMaxDepth = 64;

// The distance polynomial's degree, and the spacing of its control points along t.
constexpr int kDegree = 5;
constexpr double kSpacing = 0.2;

// Guards: roots kept and halvings made in one search. Most searches find at most five roots; more
// are found only where the query lies on the curve and the polynomial is zero up to rounding.
constexpr int kMaxRoots = 64;
constexpr int kMaxHalvings = 4096;

// The bounded search is used only between these absolute values of the polynomial and up to this
// number of halvings. Within these limits no value falls within kZeroTolerance of zero, since sums
// of 32 values are at least 32 times as large, and the full search reaches none of its guards,
// since it has at most ten changes of sign and needs at most 130 halvings for each.
constexpr double kLeastValue = 0x1p-24;
constexpr double kLargestValue = 0x1p100;
constexpr int kMaxBoundedDepth = 26;

// Relative to the squares of all coordinates: far more than the rounding of a squared distance.
constexpr double kDistanceMargin = 0x1p-36;

// C(3, i) C(2, j) / C(5, i + j): row j, column i.
constexpr double kWeights[3][4] = {
    {1.0, 0.6, 0.3, 0.1}, {0.4, 0.6, 0.6, 0.4}, {0.1, 0.3, 0.6, 1.0}};

/// Deliberate: zero counts as a sign, and NaN as zero.
int signOf(double y) { return (y > 0.0) - (y < 0.0); }

template <class Point>
int signChanges(Point const* w, int degree) {
  int count = 0;
  for (int i = 1; i <= degree; ++i) count += signOf(w[i].yval()) != signOf(w[i - 1].yval());
  return count;
}

/// signChanges where no value is zero.
int signChangesWithoutZeros(Point const* w) {
  int count = 0;
  for (int i = 1; i <= kDegree; ++i) count += (w[i].y < 0.0) != (w[i - 1].y < 0.0);
  return count;
}

void distancePolynomial(Cubic const& s, Point const& p, Point* w) {
  Point c[4];
  Point d[3];
  for (int i = 0; i < 4; ++i) c[i] = s.p[i] - p;
  for (int i = 0; i < 3; ++i) d[i] = (s.p[i + 1] - s.p[i]) * 3.0;
  for (int k = 0; k <= kDegree; ++k) {
    w[k] = {k * kSpacing, 0.0};
    for (int i = max(0, k - 2); i <= min(k, 3); ++i) {
      int const j = k - i;
      w[k].y += dot(d[j], c[i]) * kWeights[j][i];
    }
  }
}

/// The crossing of the x axis with the line through p and q; false where there is none.
bool crossXAxis(Point const& p, Point const& q, double& x) {
  // Exact form: the steps of intersect with (0, 0) and (1, 0) as the points of the first line.
  Point const axis = {1.0, 0.0};
  Point const chord = q - p;
  double const den = cross(axis, chord);
  if (den == 0.0 || std::isnan(den)) return false;
  x = (Point{0.0, 0.0} + axis * (cross(p, chord) / den)).x;
  return true;
}

/// The full search: collects the roots of a control polygon in ascending order.
class RootSearch {
 public:
  explicit RootSearch(double* roots) : roots_(roots) {}

  int count() const { return count_; }

  void search(Point const* w, int degree, int depth) {
    int const changes = signChanges(w, degree);
    if (changes == 0 || exhausted_) return;
    if (changes == 1) {
      if (depth >= kMaxDepth) {
        keep((w[0].x + w[degree].x) / 2.0);
        return;
      }
      if (isFlatPolygon(w, degree)) {
        double root;
        if (crossXAxis(w[0], w[degree], root)) keep(root);
        return;
      }
    }
    searchHalves(w, degree, depth);
  }

 private:
  void keep(double root) {
    roots_[count_++] = root;
    exhausted_ = count_ == kMaxRoots;
  }

  void searchHalves(Point const* w, int degree, int depth) {
    exhausted_ = halvings_ == kMaxHalvings;
    if (exhausted_) return;
    ++halvings_;
    Point left[kDegree + 1];
    Point right[kDegree + 1];
    for (int i = 0; i <= degree; ++i) right[i] = w[i];
    crv::internal::splitPolygon(right, degree, 0.5, left);
    search(left, degree, depth + 1);
    search(right, degree, depth + 1);
  }

  double* roots_;
  int count_ = 0;
  int halvings_ = 0;
  bool exhausted_ = false;
};

/// The candidate nearest to a query. Of equally near ones the first stays.
class Nearest {
 public:
  Nearest(Cubic const& segment, Point const& query)
      : segment_(segment),
        query_(query),
        distance_(squaredDistance(query, segment.start())),
        endDistance_(squaredDistance(query, segment.end())) {}

  void update(double root) {
    double const d = squaredDistance(query_, segment_.point(root));
    if (d < distance_) {
      distance_ = d;
      t_ = root;
    }
  }

  /// The squared distance of the start, or of the nearest root so far.
  double distance() const { return distance_; }

  /// The parameter, once every root has been tried.
  double t() const { return endDistance_ < distance_ ? 1.0 : t_; }

  /// The squared distance that a candidate has to beat.
  double bound() const { return min(distance_, endDistance_); }

 private:
  Cubic const& segment_;
  Point query_;
  double distance_;
  double endDistance_;
  double t_ = 0.0;
};

/// Both halves of a control polygon, which share the point in the middle.
struct Halves {
  Point p[2 * kDegree + 1];

  Point const* left() const { return p; }
  Point const* right() const { return p + kDegree; }
};

/// splitPolygon at 0.5 for polygons in which no value becomes zero: de Casteljau's triangle by
/// sums, scaled once each, with the same bits. Returns the least square of a value among the sums.
double halve(Point const* w, Halves& halves) {
  Point sum[kDegree + 1];
  for (int i = 0; i <= kDegree; ++i) sum[i] = w[i];
  halves.p[0] = w[0];
  halves.p[2 * kDegree] = w[kDegree];
  Lanes least = inBothLanes(kLargestValue);
  double scale = 1.0;
  for (int i = 1; i <= kDegree; ++i) {
    scale *= 0.5;
    int const last = kDegree - i;
    for (int j = 0; j <= last; ++j) sum[j] = sum[j] + sum[j + 1];
    for (int j = 0; j <= last; j += 2) {
      Lanes const y = {sum[j].y, sum[min(j + 1, last)].y};
      least = minOf(least, y * y);
    }
    halves.p[i] = sum[0] * scale;
    halves.p[2 * kDegree - i] = sum[last] * scale;
  }
  return min(least[0], least[1]);
}

/// Tries the roots that the full search finds, except those that are certainly farther from the
/// query than another candidate: over an interval, the partial sums of the control values bound the
/// change of the squared distance. Fails as soon as a value comes near zero, because the full
/// search snaps such values; the roots tried until then are also roots of the full search.
class BoundedSearch {
 public:
  BoundedSearch(Cubic const& segment, Point const& query, Nearest& nearest)
      : nearest_(nearest), margin_(dot(query, query)) {
    for (Point const& p : segment.p) margin_ += dot(p, p);
    margin_ *= kDistanceMargin;
  }

  /// Searches [0, 1]; startDistance is the squared distance at 0. Returns false on failure.
  bool search(Point const* w, double startDistance) {
    for (int i = 0; i <= kDegree; ++i) {
      double const y = std::fabs(w[i].y);
      if (!(kLeastValue <= y && y <= kLargestValue)) return false;
    }
    return searchInterval(w, startDistance, 1.0 / 3.0, 0);
  }

 private:
  /// The derivative of the squared distance is 2 w. So the first control value of the squared
  /// distance is startDistance, and consecutive control values differ by w * width / 3.
  bool searchInterval(Point const* w, double startDistance, double thirdOfWidth, int depth) {
    int const changes = signChangesWithoutZeros(w);
    if (changes == 0 || isTooFar(w, startDistance, thirdOfWidth)) return true;
    if (changes == 1) {
      bool const isMinimum = w[0].y < 0.0;
      if (isMinimum) return searchMinimum(w, depth);
      if (isFlatPolygon(w, kDegree)) return tryCrossing(w);
    }
    Halves halves;
    if (!canHalve(w, depth, halves)) return false;
    double const sixth = thirdOfWidth * 0.5;
    double sum = 0.0;
    for (int i = 0; i <= kDegree; ++i) sum += halves.left()[i].y;
    double const middleDistance = startDistance + sum * sixth;
    return searchInterval(halves.left(), startDistance, sixth, depth + 1) &&
           searchInterval(halves.right(), middleDistance, sixth, depth + 1);
  }

  /// Follows the only change of sign, from negative to positive, into its half.
  bool searchMinimum(Point const* w, int depth) {
    Halves halves[2];
    for (; !isFlatPolygon(w, kDegree); ++depth) {
      Halves& next = halves[depth % 2];
      if (!canHalve(w, depth, next)) return false;
      w = next.right()->y < 0.0 ? next.right() : next.left();
    }
    return tryCrossing(w);
  }

  bool isTooFar(Point const* w, double startDistance, double thirdOfWidth) const {
    double sum = 0.0;
    double least = 0.0;
    for (int i = 0; i <= kDegree; ++i) {
      sum += w[i].y;
      least = min(least, sum);
    }
    return startDistance + least * thirdOfWidth > nearest_.bound() + margin_;
  }

  static bool canHalve(Point const* w, int depth, Halves& halves) {
    return depth < kMaxBoundedDepth && halve(w, halves) >= kLeastValue * kLeastValue;
  }

  bool tryCrossing(Point const* w) {
    double root;
    if (crossXAxis(w[0], w[kDegree], root)) nearest_.update(root);
    return true;
  }

  Nearest& nearest_;
  double margin_;
};

}  // namespace

int GxBezier::findNearestPoint(GxCoord<double> const& p, GxCoord<double>& nearest) const {
  if (isEqual(points_[0], points_[1], kDegenerate) &&
      isEqual(points_[2], points_[3], kDegenerate)) {
    if (isEqual(points_[0], points_[3], kDegenerate)) {
      nearest = points_[0];
      return 1;
    }
    nearest = closestToLineSegment(points_[0], points_[3], p);
    return isEqual(nearest, points_[0], kDegenerate) || isEqual(nearest, points_[3], kDegenerate);
  }
  double t = 0.0;
  findNearestPointTValue(p, t);
  nearest = bValue(t);
  return IS_EQUAL(t, 0.0, kZeroTolerance) || IS_EQUAL(t, 1.0, kZeroTolerance);
}

void GxBezier::findNearestPointTValue(GxCoord<double> const& p, double& t) const {
  Cubic const segment = crv::internal::cubic(*this);
  Point const query = crv::internal::plain(p);
  Point w[kDegree + 1];
  distancePolynomial(segment, query, w);
  Nearest nearest(segment, query);
  if (!BoundedSearch(segment, query, nearest).search(w, nearest.distance())) {
    double roots[kMaxRoots];
    RootSearch full(roots);
    full.search(w, kDegree, 0);
    for (int i = 0; i < full.count(); ++i) nearest.update(roots[i]);
  }
  t = nearest.t();
}

void GxBezier::generate5DBezier(GxCoord<double>* const w, GxCoord<double> const& p) const {
  Point polygon[kDegree + 1];
  distancePolynomial(crv::internal::cubic(*this), crv::internal::plain(p), polygon);
  for (int i = 0; i <= kDegree; ++i) w[i] = GxCoord<double>(polygon[i].x, polygon[i].y);
}

int GxBezier::findRoots(GxCoord<double> const* w, int degree, int depth, double* t) const {
  if (degree < 1 || degree > kDegree) return 0;
  Point polygon[kDegree + 1];
  for (int i = 0; i <= degree; ++i) polygon[i] = crv::internal::plain(w[i]);
  RootSearch search(t);
  search.search(polygon, degree, min(depth, kMaxDepth));
  return search.count();
}

int GxBezier::crossingCount(GxCoord<double> const* w, int degree) const {
  return signChanges(w, degree);
}
