#include "crv/accurate/nearest.h"

#include "crv/accurate/curveSearch.h"
#include "tests/support/data.h"
#include "tests/support/expect.h"
#include "tests/support/shapes.h"

#include <algorithm>

namespace {

using support::bezier;
using support::curveOf;
using support::kInf;
using support::kNaN;
using support::Point;
using support::Position;

constexpr double kRounding = 0x1p-53;

double magnitude(GxBezier const& s, Point const& p) {
  double largest = std::max(std::fabs(p.xval()), std::fabs(p.yval()));
  for (int i = 0; i < 4; ++i) {
    largest = std::max({largest, std::fabs(s[i].xval()), std::fabs(s[i].yval())});
  }
  return largest;
}

TEST(AccurateNearest, HardCasesHaveTheirKnownAnswers) {
  for (auto const& hard : support::hardCases("nearest")) {
    SCOPED_TRACE(hard.source);
    GxBezier const segment = support::segmentOf(hard.fields[0]);
    auto const found = crv::nearest(segment, support::pointsOf(hard.fields[1])[0]);
    EXPECT_NEAR(found.t, hard.fields[2][0], 1e-12);
    EXPECT_NEAR(found.distance, hard.fields[2][1], 1e-11);
    EXPECT_NEAR_POINT(found.point, segment.bValue(found.t), 64 * kRounding * 400);
  }
}

// Segments of all shapes at all sizes: no sample comes nearer, points of the segment are found to
// rounding, and scaling by a power of two scales the answer.
TEST(AccurateNearest, NoSampleComesNearerAtAnyScale) {
  support::Random random(1);
  for (int i = 0; i < 1500; ++i) {
    GxBezier s = random.ofManyKinds(i);
    bool const isOnSegment = i % 5 >= 3;
    Point p = isOnSegment ? s.bValue(i % 8 >= 6 ? 0.5 : random.uniform(0, 1)) : random.point(2.0);
    double const size = std::ldexp(1.0, random.whole(-450, 450));
    auto const unscaled = crv::nearest(s, p);
    s.scale(size, size);
    p.scale(size, size);
    SCOPED_TRACE(support::text(s) + support::text(p));
    auto const found = crv::nearest(s, p);
    EXPECT_BITS(found.t, unscaled.t);
    EXPECT_BITS(found.distance, unscaled.distance * size);
    double const unit = kRounding * magnitude(s, p);
    EXPECT_NEAR_POINT(found.point, s.bValue(found.t), 64 * unit);
    EXPECT_NEAR(found.distance, p.distance(found.point), 16 * unit);
    double least = isOnSegment ? 8 * unit : kInf;
    for (int k = 0; k <= 300; ++k) least = std::min(least, p.distance(s.bValue(k / 300.0)));
    EXPECT_LE(found.distance, least + 16 * unit);
  }
}

TEST(AccurateNearest, HooksAndNearCuspsAreFollowed) {
  // The derivative of the squared distance has an extremum beside the root, where the search must
  // not end.
  Point const handle(30.132171665648158, 14.870067160526261);
  GxBezier const segment({-53.83685335446588, 15.851742426589766},
                         {-78.936227382058476, 44.051206133124069}, handle,
                         {30.13217166584397, 14.870067160423019});
  EXPECT_NEAR(crv::nearest(segment, handle).distance, 4.91247e-11, 1e-15);
  // At a near cusp the nearer one of two branches is 2e-6 farther along.
  GxBezier const bend(
      {-0.032455289838000168, 0.94174544256984993}, {-0.02701570842264913, 0.94662378780463019},
      {-0.087049890866416305, 0.89278315013687282}, {-0.21257129054193141, 0.78024327552600037});
  Point const beside(-0.032116349168756018, 0.94204941194019443);
  EXPECT_NEAR(crv::nearest(bend, beside).distance, 2.52607e-13, 8 * kRounding);
}

TEST(AccurateNearest, OfEqualDistancesTheFirst) {
  EXPECT_EQ(crv::nearest(support::quarterArc(2), Point(-9, -9)).t, 0.0);
  EXPECT_EQ(crv::nearest(support::pointLike(3, 4), Point(0, 0)).t, 0.0);
  EXPECT_EQ(crv::nearest(support::pointLike(3, 4), Point(0, 0)).distance, 5.0);

  GxBezierCurve const square = support::polygon({0, 0, 4, 0, 4, 4, 0, 4, 0, 0});
  auto const centre = crv::nearest(square, Point(2, 2));
  EXPECT_EQ(centre->position.getSegmentNumber(), 0);
  EXPECT_EQ(centre->distance, 2.0);
  EXPECT_BITS(crv::nearest(square, Point(6, 6))->position, Position(2, 0.0));
  EXPECT_BITS(crv::nearest(square, Point(-1, -1))->position, Position(0, 0.0));
}

TEST(AccurateNearest, TheStretchBeforeTheSeamCountsAndTheSeamIsTheStart) {
  GxBezierCurve const circle = support::closed(support::circle(100));
  auto const before = crv::nearest(circle, Point(120, -1));
  EXPECT_EQ(before->position.getSegmentNumber(), 3);
  EXPECT_NEAR(before->position.getTValue(), 0.994948418396, 1e-11);
  EXPECT_NEAR(before->distance, 20.004093973, 1e-9);
  EXPECT_BITS(crv::nearest(circle, Point(120, 0))->position, Position(0, 0.0));
  GxBezierCurve const open = support::polygon({0, 0, 4, 0, 4, 4});
  EXPECT_BITS(crv::nearest(open, Point(5, 5))->position, Position(2, 0.0));
}

TEST(AccurateNearest, TheEndBeforeAGapIsNotTheStartBehindIt) {
  GxBezierCurve curve = curveOf({support::evenLine(0, 0, 3, 0), support::evenLine(3, 1, 6, 1)});
  for (int const closed : {0, 1}) {
    curve.setStrictIsClosed(closed);
    crv::CurveSearch const search(curve);
    for (auto const& found :
         {*crv::nearest(curve, Point(3, 0.25)), *search.nearest(Point(3, 0.25))}) {
      EXPECT_BITS(found.position, Position(0, 1.0 - 0x1p-53));
      EXPECT_BITS(found.point, Point(3, 0));
    }
    EXPECT_BITS(crv::nearest(curve, Point(3, 0.75))->position, Position(1, 0.0));
    EXPECT_BITS(search.nearest(Point(7, 1))->position,
                closed != 0 ? Position(1, 1.0 - 0x1p-53) : Position(2, 0.0));
  }
}

TEST(AccurateNearest, UnusableInputHasNoAnswer) {
  for (double const x : {kNaN, kInf, 1e300, 1e-300}) {
    auto const found = crv::nearest(bezier(0, 0, x, 0, 0, 0, 0, 0), Point(0, 0));
    EXPECT_EQ(found.t, 0.0);
    EXPECT_TRUE(std::isnan(found.distance) && std::isnan(found.point.xval()));
  }
  EXPECT_TRUE(std::isnan(crv::nearest(support::loop(), Point(kNaN, 0)).distance));
  EXPECT_FALSE(crv::nearest(support::circle(1), Point(kInf, 0)).has_value());
  EXPECT_FALSE(crv::nearest(GxBezierCurve(), Point(0, 0)).has_value());
  EXPECT_EQ(crv::nearest(GxBezier(), Point(0, 0)).distance, 0.0);
}

}  // namespace
