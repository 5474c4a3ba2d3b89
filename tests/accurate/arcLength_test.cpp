#include "crv/accurate/arcLength.h"

#include "tests/support/data.h"
#include "tests/support/expect.h"
#include "tests/support/shapes.h"

#include <algorithm>

namespace {

using support::bezier;
using support::curveOf;
using support::kInf;
using support::kNaN;
using support::Position;

constexpr double kRounding = 0x1p-53;

TEST(AccurateLength, HardCasesHaveTheirKnownLengths) {
  for (auto const& hard : support::hardCases("lengths")) {
    SCOPED_TRACE(hard.source);
    GxBezier const segment = support::segmentOf(hard.fields[0]);
    double const t1 = hard.fields[1][0];
    double const length = hard.fields[2][0];
    double const all = crv::arcLength(segment, 0, 1, 0);
    for (double const accuracy : {0.0, 1e-9 * all, 1e-3 * all, all}) {
      // The known lengths have 13 digits.
      double const allowed = std::max(accuracy, 64 * kRounding * all) + 1e-13 * length;
      EXPECT_NEAR(crv::arcLength(segment, 0, t1, accuracy), length, allowed);
      EXPECT_NEAR(crv::arcLength(segment, t1, 0, accuracy), -length, allowed);
      double const t = crv::parameterAtLength(segment, 0, 0.3137 * all, accuracy);
      EXPECT_NEAR(crv::arcLength(segment, 0, t, 0), 0.3137 * all, allowed);
    }
    EXPECT_EQ(crv::parameterAtLength(segment, 0, all, 0), 1.0);
  }
  EXPECT_EQ(crv::arcLength(support::pointLike(3, 4), 0, 1, 0), 0.0);
  EXPECT_EQ(crv::arcLength(bezier(0, 0, 0, 0, 3, 4, 3, 4), 0, 1, 0), 5.0);
}

// The whole is the sum of its parts, and places at lengths lie there: at every accuracy and scale.
TEST(AccurateLength, PartsAddUpAndParametersLieAtTheirLengths) {
  support::Random random(2);
  for (int i = 0; i < 600; ++i) {
    GxBezier s = random.ofManyKinds(i);
    SCOPED_TRACE(support::text(s));
    double const all = crv::arcLength(s, 0, 1, 0);
    EXPECT_EQ(crv::parameterAtLength(s, 0, all, 0), 1.0);
    double const t = random.uniform(0, 1);
    double const accuracy = all * std::pow(10, random.uniform(-14, -2));
    double const allowed = std::max(accuracy, 64 * kRounding * all);
    double const first = crv::arcLength(s, 0, t, accuracy);
    EXPECT_NEAR(first + crv::arcLength(s, t, 1, accuracy), all, 2.1 * allowed);
    EXPECT_NEAR(crv::arcLength(s, 0, crv::parameterAtLength(s, 0, first, accuracy), 0), first,
                1.1 * allowed + 1e-16 * all);
    EXPECT_NEAR(crv::arcLength(s, crv::parameterAtLength(s, 1, first - all, accuracy), 1, 0),
                all - first, 1.1 * allowed + 4e-16 * all);
    double const size = std::ldexp(1.0, random.whole(-400, 400));
    s.scale(size, size);
    EXPECT_BITS(crv::arcLength(s, 0, t, accuracy * size), first * size);
  }
  EXPECT_EQ(crv::parameterAtLength(support::sShape(), 0.5, 1e9, 1e-6), 1.0);
  EXPECT_EQ(crv::parameterAtLength(support::sShape(), 0.5, -1e9, 1e-6), 0.0);
}

TEST(AccurateLength, CurvesAreMeasuredOnceAndDividedEvenly) {
  GxBezierCurve const circle = support::closed(support::circle(100));
  crv::CurveLengths const lengths(circle, 1e-9);
  double const all = lengths.total();
  EXPECT_NEAR(all, 200 * 3.141592653589793, 0.2);
  EXPECT_EQ(lengths.lengthAt(Position(4, 0.0)), all);
  EXPECT_EQ(lengths.lengthAt(Position(0, 0.0)), 0.0);
  EXPECT_TRUE(std::isnan(lengths.lengthAt(Position(4, 0.5))));
  for (double const length : {0.0, all, -all, 4 * all}) {
    EXPECT_BITS(lengths.positionAt(length), Position(0, 0.0));
  }
  EXPECT_NEAR(lengths.lengthAt(lengths.positionAt(-0.3 * all)), 0.7 * all, 2e-9);
  EXPECT_BITS(lengths.positionAt(kNaN), Position());

  // The first piece has no length.
  GxBezierCurve const line = curveOf({GxBezier(), support::retractedLine(0, 0, 100, 0)});
  auto const even = crv::evenPositions(line, 10, 1e-9);
  ASSERT_EQ(even.size(), 11U);
  for (std::size_t i = 0; i < even.size(); ++i) {
    EXPECT_NEAR(line.locateCurvePosition(even[i]).xval(), 10.0 * double(i), 2e-9);
  }
  EXPECT_BITS(even.back(), Position(2, 0.0));
  EXPECT_EQ(crv::evenPositions(circle, 7, 1e-9).size(), 7U);
  EXPECT_EQ(crv::evenPositions(curveOf({GxBezier()}), 2, 1e-9).size(), 3U);
}

TEST(AccurateLength, UnusableInputHasNoLength) {
  GxBezier const bad = bezier(0, 0, kInf, 0, 1, 1, 2, 2);
  EXPECT_TRUE(std::isnan(crv::arcLength(bad, 0, 1, 1)));
  EXPECT_TRUE(std::isnan(crv::arcLength(support::loop(), 0, kNaN, 1)));
  EXPECT_TRUE(std::isnan(crv::arcLength(curveOf({bad}), 1)));
  EXPECT_EQ(crv::parameterAtLength(bad, 0.5, 1, 1), 0.0);
  EXPECT_TRUE(crv::evenPositions(curveOf({bad}), 3, 1).empty());
  EXPECT_TRUE(crv::evenPositions(GxBezierCurve(), 3, 1).empty());
  EXPECT_TRUE(crv::evenPositions(support::circle(1), 0, 1).empty());
  EXPECT_EQ(crv::arcLength(GxBezierCurve(), 1), 0.0);
  EXPECT_EQ(crv::arcLength(support::loop(), -3, 7, 1), crv::arcLength(support::loop(), 0, 1, 1));
}

}  // namespace
