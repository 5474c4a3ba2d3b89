// The nearest point of a segment: (B(t) - p) . B'(t) as a polynomial of degree 5 in Bernstein form,
// whose roots are isolated by halving its control polygon; then the ends compete with the roots
// (P. J. Schneider, "Solving the nearest-point-on-curve problem", Graphics Gems, 1990). Other than
// there, zero is a sign of its own, tiny values become zero, and the chord's sides are not told
// apart.
#include "crv/bezier/GxBezier.h"

#include "crv/bezier/internal/controlPolygon.h"
#include "crv/bezier/internal/cubic.h"
#include "crv/foundation/lines.h"
#include "crv/foundation/tolerance.h"

using crv::internal::Cubic;
using crv::internal::Point;

namespace {

// Curve units: control points closer than this make a segment its chord, or a point.
constexpr double kDegenerate = 1e-7;

// Halvings of the parameter range after which its middle stands for the root.
constexpr int kMaxDepth = 64;

// The distance polynomial's degree, and the spacing of its control points along t.
constexpr int kDegree = 5;
constexpr double kSpacing = 0.2;

// Guards: roots kept and halvings made in one search. Five roots are the rule; more come where the
// query lies on the curve and the polynomial is zero up to rounding.
constexpr int kMaxRoots = 64;
constexpr int kMaxHalvings = 4096;

// C(3, i) C(2, j) / C(5, i + j): row j, column i.
constexpr double kWeights[3][4] = {
    {1.0, 0.6, 0.3, 0.1}, {0.4, 0.6, 0.6, 0.4}, {0.1, 0.3, 0.6, 1.0}};

/// Deliberate: zero is a sign of its own, and so is what is not a number.
int signOf(double y) { return (y > 0.0) - (y < 0.0); }

template <class Point>
int signChanges(Point const* w, int degree) {
  int count = 0;
  for (int i = 1; i <= degree; ++i) count += signOf(w[i].yval()) != signOf(w[i - 1].yval());
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

/// Collects the roots of a control polygon in ascending order.
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
      if (crv::internal::isFlatPolygon(w, degree)) {
        keepCrossing(w[0], w[degree]);
        return;
      }
    }
    searchHalves(w, degree, depth);
  }

 private:
  void keep(double t) {
    roots_[count_++] = t;
    exhausted_ = count_ == kMaxRoots;
  }

  void keepCrossing(Point const& first, Point const& last) {
    GxCoord<double> crossing;
    GxCoord<double> const origin(0.0, 0.0);
    GxCoord<double> const right(1.0, 0.0);
    if (intersect(&crossing, origin, right, GxCoord<double>(first.x, first.y),
                  GxCoord<double>(last.x, last.y)) == 0) {
      keep(crossing.xval());
    }
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

}  // namespace

int GxBezier::findNearestPoint(GxCoord<double> const& p, GxCoord<double>& nearest) {
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
  double roots[kMaxRoots];
  RootSearch search(roots);
  search.search(w, kDegree, 0);

  double best = crv::internal::squaredDistance(query, segment.start());
  t = 0.0;
  for (int i = 0; i < search.count(); ++i) {
    double const d = crv::internal::squaredDistance(query, segment.point(roots[i]));
    if (d < best) {
      best = d;
      t = roots[i];
    }
  }
  if (crv::internal::squaredDistance(query, segment.end()) < best) t = 1.0;
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
