// Fitting segments to digitised points.
#include "tests/support/data.h"
#include "tests/support/expect.h"
#include "tests/support/open.h"
#include "tests/support/shapes.h"

namespace {

using Point = GxCoord<double>;
using Points = GxList<Point>;
using Vector = GxVector<double>;
using support::OpenCurve;

Points pointsOf(std::vector<Point> const& points) {
  Points list;
  for (Point const& p : points) list.add(p);
  return list;
}

/// The fit in its plainest form: recursive, with all arrays, looking at every point of a range.
class PlainFit : public OpenCurve {
 public:
  PlainFit(Points const& points, double error) : points_(points), error_(error) {
    unsigned const last = points.length() - 1;
    fit(0, last, findTangent(&points, 0), findTangent(&points, last));
  }

 private:
  void fit(unsigned first, unsigned last, Vector const& tHat1, Vector const& tHat2) {
    if (last - first == 1) return bezierPolyFit(&points_, first, last, tHat1, tHat2, error_);
    std::vector<double> u(1, 0.0);
    for (unsigned i = first + 1; i <= last; ++i) {
      u.push_back(u.back() + points_[i].distance(points_[i - 1]));
    }
    double const total = u.back();
    for (double& t : u) t = IS_ZERO(total, 1e-9) ? t : t / total;
    GxBezier s;
    int split = 0;
    auto const measure = [&] {
      findSegment(&points_, u.data(), first, last, tHat1, tHat2, s);
      return leastSquareErr(&points_, first, last, u.data(), s, split);
    };
    double const worst = measure();
    bool accepted = worst < error_;
    if (accepted) {
      accepted = split != static_cast<int>(first) + 1 && split != static_cast<int>(last) - 1;
    } else if (worst < error_ * error_) {
      for (int round = 0; round < 4 && !accepted; ++round) {
        for (unsigned i = first; i <= last; ++i) {
          u[i - first] = s.findParameter(points_[i], u[i - first], 0.5);
        }
        accepted = measure() < error_;
      }
    }
    if (accepted || split < 0) {
      getSegments().add(s);
      return;
    }
    unsigned const at = static_cast<unsigned>(split);
    Vector const centre = findTangent(&points_, at);
    fit(first, at, tHat1, centre);
    fit(at, last, -centre, tHat2);
  }

  Points const& points_;
  double error_;
};

void expectPlainFit(Points const& points, double error) {
  SCOPED_TRACE(testing::Message() << points.length() << " points, error " << error);
  GxBezierCurve const curve(&points, error);
  PlainFit const plain(points, error);
  ASSERT_EQ(curve.length(), plain.length());
  for (int i = 0; i < static_cast<int>(curve.length()); ++i) EXPECT_BITS(curve[i], plain[i]);
}

TEST(GxBezierCurveFit, GivesTheBitsOfThePlainRecursion) {
  support::Random random(3);
  double const errors[] = {0.0, 0.3, 1.0, 2.5, 9.0, 400.0, -4.0, -0.0, std::nan(""), HUGE_VAL};
  for (int round = 0; round < 600; ++round) {
    // Walks on a grid: runs of equal points and straight stretches abound, and zeros of both signs.
    Points points;
    Point p(0, 0);
    unsigned const n = static_cast<unsigned>(random.whole(2, 60));
    int const size = round % 3 == 0 ? 1 : round % 3 == 1 ? 12 : 900;
    while (points.length() < n) {
      p += Vector(random.whole(-size, size), random.whole(-1, size));
      if (random.whole(0, 4) == 0) p = Point(0.0, -0.0);
      for (int k = random.whole(0, 3) == 0 ? random.whole(1, 9) : 1; k > 0; --k) points.add(p);
    }
    expectPlainFit(points, errors[round % 10]);
  }
  for (double const error : {0.5, 9.0, 400.0}) expectPlainFit(support::stroke("pen-sweeps"), error);
}

TEST(GxBezierCurveFit, StaysWithinTheToleranceAndSmoothOnRealStrokes) {
  for (char const* name : {"glyph-script-r", "pen-waves", "pen-hatching", "island-malta"}) {
    Points const points = support::stroke(name);
    for (double const error : {0.25, 4.0, 100.0}) {
      SCOPED_TRACE(testing::Message() << name << ", error " << error);
      GxBezierCurve const curve(&points, error);
      int const n = static_cast<int>(curve.length());
      EXPECT_BITS(curve[0][0], points[0]);
      EXPECT_BITS(curve[n - 1][3], points[points.length() - 1]);
      for (int i = 1; i < n; ++i) {
        EXPECT_BITS(curve[i - 1][3], curve[i][0]);
        Vector const in = curve[i - 1][3] - curve[i - 1][2];
        Vector const out = curve[i][1] - curve[i][0];
        double const lengths = in.length() * out.length();
        if (lengths < 1e-6) continue;  // no handles, no direction
        EXPECT_NEAR(in * out / lengths, 1.0, 1e-6) << "at join " << i;
      }
      for (unsigned k = 0; k < points.length(); ++k) {
        double best = HUGE_VAL;
        for (int i = 0; i < n; ++i) {
          double t = 0.0;
          curve[i].findNearestPointTValue(points[k], t);
          best = min(best, points[k].distance(curve[i].bValue(t)));
        }
        EXPECT_LT(best, std::sqrt(error)) << "at point " << k;
      }
    }
  }
}

TEST(GxBezierCurveFit, FindsTheSegmentThatPointsWereTakenFrom) {
  GxBezier const s = support::sShape();
  Points points;
  std::vector<double> u;
  for (int i = 0; i <= 16; ++i) {
    u.push_back(i * 0.0625);
    points.add(s.bValue(u.back()));
  }
  GxBezier found;
  OpenCurve().findSegment(&points, u.data(), 0, 16, s.dValue(0).normalize(),
                          -s.dValue(1).normalize(), found);
  for (int i = 0; i < 4; ++i) EXPECT_NEAR_POINT(found[i], s[i], 1e-9);

  // A handle that would be negative: both become thirds of the chord.
  double v[] = {0.0, 0.5, 1.0};
  Points const bend = pointsOf({{0, 0}, {3, -5}, {9, 0}});
  OpenCurve().findSegment(&bend, v, 0, 2, Vector(0, 1), Vector(1, 0), found);
  EXPECT_BITS(found, support::bezier(0, 0, 0, 3, 12, 0, 9, 0));

  // Parallel tangents and one inner point, no telling the handles apart: both are nothing.
  Points const bump = pointsOf({{0, 0}, {4.5, 3}, {9, 0}});
  OpenCurve().findSegment(&bump, v, 0, 2, Vector(0, 1), Vector(0, 1), found);
  EXPECT_BITS(found, support::retractedLine(0, 0, 9, 0));
  for (v[1] = 0.1; v[1] < 0.9; v[1] += 0.01) {
    OpenCurve().findSegment(&bump, v, 0, 2, Vector(0, 1), Vector(0, 1), found);
    EXPECT_TRUE(found[1].yval() < 1e-9 || found[1].yval() == 3.0) << "rounding errors blown up";
  }
}

TEST(GxBezierCurveFit, MeasuresWithTheBitsOfBlendValueAndTheLastOfEqualsWins) {
  support::Random random(2);
  for (int round = 0; round < 400; ++round) {
    // On the grid, points lie on the segment and distances are equal.
    bool const grid = round % 2 == 0;
    GxBezier const s = grid ? random.gridSegment(3) : random.segment(1000);
    Points points;
    std::vector<double> u;
    double worst = 0.0;
    int at = -1;
    for (int i = 0; i < 30; ++i) {
      double const t = grid ? random.whole(-1, 8) / 8.0 : random.uniform(0, 1);
      u.push_back(t < 0.0 ? -1.0 : t);
      points.add(grid ? s.bValue(t) : s.bValue(t) + Vector(random.uniform(-1, 1), 0.5));
      Point p(0, 0);
      for (int j = 0; j < 4; ++j) p += (s[j] - Point(0, 0)) * blendValue(u.back(), j, 3);
      double const d = p.squaredDistance(points[points.length() - 1]);
      if (i == 0 || i == 29 || d < worst) continue;
      worst = d;
      at = i;
    }
    int split = 0;
    EXPECT_BITS(OpenCurve().leastSquareErr(&points, 0, 29, u.data(), s, split), worst);
    EXPECT_EQ(split, at);
  }
}

TEST(GxBezierCurveFit, SplitsAGoodFitNextToAnEndAndAppends) {
  Points const straight = pointsOf({{0, 0}, {3, 0}, {6, 0}});
  GxBezierCurve curve(&straight, 100.0);
  ASSERT_EQ(curve.length(), 2u) << "three points always become two pieces";
  Points const one = pointsOf({{1, 1}});
  curve.setStrictIsClosed(1);
  curve.makeBezierPolyFit(nullptr, 1.0);
  curve.makeBezierPolyFit(&one, 1.0);
  EXPECT_TRUE(curve.length() == 2 && curve.strictIsClosed() == 1) << "nothing happens";
  curve.makeBezierPolyFit(&straight, 1.0);
  EXPECT_TRUE(curve.length() == 4 && curve.strictIsClosed() == 0) << "fitting appends";
  EXPECT_BITS(curve[3], support::bezier(3, 0, 4, 0, 5, 0, 6, 0));
}

TEST(GxBezierCurveFit, AHundredThousandEqualPointsNeedNoDeepRecursion) {
  int const n = 100000;
  for (Point const& start : {Point(2, 0), Point(0, 0)}) {
    Points points = pointsOf({start});
    for (int i = 1; i < n; ++i) points.add(Point(2, 0));
    EXPECT_EQ(GxBezierCurve(&points, 2.0).length(), n - 1u);
  }
}

TEST(GxBezierCurveFit, CollinearVectorsMayPointEitherWay) {
  EXPECT_EQ(OpenCurve().isCollinear(Vector(2, 0), Vector(-10, 1), 6.0f), 1);
  EXPECT_EQ(OpenCurve().isCollinear(Vector(2, 0), Vector(10, 1), 5.0f), 0);
  EXPECT_EQ(OpenCurve().isCollinear(Vector(2, 0), Vector(1e-10, 0), 45.0f), 0);
}

}  // namespace
