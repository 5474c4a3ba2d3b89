// Fitting segments to digitised points.
#include "tests/support/expect.h"
#include "tests/support/open.h"

namespace {

using namespace support;
using Points = GxList<Point>;

/// The fit in its simplest form: recursive, without shortcuts, with every point of a range
/// measured.
class PlainFit : public OpenCurve {
 public:
  PlainFit(Points const& points, double error) : points_(points), error_(error) {
    unsigned const last = points.length() - 1;
    fit(0, last, findTangent(&points, 0), findTangent(&points, last));
  }

 private:
  void fit(unsigned first, unsigned last, Vector const& tHat1, Vector const& tHat2) {
    if (last - first == 1) return bezierPolyFit(&points_, first, last, tHat1, tHat2, error_);
    Numbers u(1, 0.0);
    for (unsigned i = first; i < last; ++i) {
      u.push_back(u.back() + points_[i + 1].distance(points_[i]));
    }
    double const total = IS_ZERO(u.back(), 1e-9) ? 1.0 : u.back();
    for (double& t : u) t /= total;
    GxBezier s;
    findSegment(&points_, u.data(), first, last, tHat1, tHat2, s);
    int split = 0;
    double worst = measure(first, last, u, s, split);
    bool const nextToAnEnd = split == int(first) + 1 || split == int(last) - 1;
    bool accepted = worst < error_ && !nextToAnEnd;
    bool const worthwhile = !(worst < error_) && worst < error_ * error_;
    for (int round = 0; worthwhile && round < 4 && !accepted; ++round) {
      for (unsigned i = first; i <= last; ++i) {
        u[i - first] = s.findParameter(points_[i], u[i - first], 0.5);
      }
      findSegment(&points_, u.data(), first, last, tHat1, tHat2, s);
      accepted = measure(first, last, u, s, split) < error_;
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

  /// The largest squared distance, with the weights of blendValue; the last of equals wins.
  double measure(unsigned first, unsigned last, Numbers const& u, GxBezier const& s, int& split) {
    double worst = 0.0;
    int expected = -1;
    for (unsigned i = first + 1; i < last; ++i) {
      Point p(0, 0);
      for (int j = 0; j < 4; ++j) p += (s[j] - Point(0, 0)) * blendValue(u[i - first], j, 3);
      double const d = p.squaredDistance(points_[i]);
      if (d >= worst) expected = static_cast<int>(i);
      if (d >= worst) worst = d;
    }
    EXPECT_BITS(leastSquareErr(&points_, first, last, u.data(), s, split), worst);
    EXPECT_EQ(split, expected);
    return worst;
  }

  Points const& points_;
  double error_;
};

TEST(GxBezierCurveFit, GivesTheBitsOfThePlainRecursion) {
  Random random(3);
  double const errors[] = {0.0, 0.3, 1.0, 2.5, 9.0, 400.0, -4.0, -0.0, std::nan(""), HUGE_VAL};
  for (int round = 0; round < 603; ++round) {
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
    if (round >= 600) points = stroke("pen-sweeps");
    double const error = errors[round < 600 ? round % 10 : 2 * round - 1199];  // 0.3, 2.5, 400
    SCOPED_TRACE(testing::Message() << points.length() << " points, error " << error);
    GxBezierCurve const curve(&points, error);
    PlainFit const plain(points, error);
    ASSERT_EQ(curve.length(), plain.length());
    for (int i = 0; i < static_cast<int>(curve.length()); ++i) EXPECT_BITS(curve[i], plain[i]);
  }
}

TEST(GxBezierCurveFit, StaysWithinTheToleranceAndSmoothOnRealStrokes) {
  for (char const* name : {"glyph-script-r", "pen-waves", "pen-hatching", "island-malta"}) {
    Points const points = stroke(name);
    for (double const error : {0.25, 100.0}) {
      SCOPED_TRACE(testing::Message() << name << ", error " << error);
      GxBezierCurve curve(&points, error);
      for (int i = 1; i < static_cast<int>(curve.length()); ++i) {
        EXPECT_BITS(curve[i - 1][3], curve[i][0]);
        Vector const in = curve[i - 1][3] - curve[i - 1][2], out = curve[i][1] - curve[i][0];
        double const lengths = in.length() * out.length();  // 0: no handles, no direction
        EXPECT_TRUE(lengths < 1e-6 || in * out / lengths > 1.0 - 1e-6) << "at join " << i;
      }
      for (Point const& p : valuesOf(points)) {
        Point nearest;
        curve.findNearestPoint(p, nearest);  // is content with the root of a half
        EXPECT_LT(p.squaredDistance(nearest), max(error, 0.5)) << text(p);
      }
    }
  }
}

}  // namespace
