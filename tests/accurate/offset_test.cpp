// Parallels and outlines of strokes: distances by dense samples, areas by hand.
#include "crv/accurate/offset.h"

#include "crv/accurate/arcLength.h"
#include "crv/accurate/curveContacts.h"
#include "crv/accurate/curveSearch.h"
#include "crv/accurate/direction.h"
#include "crv/accurate/region.h"
#include "tests/support/data.h"

#include <algorithm>
#include <cmath>

namespace {

using namespace support;
using crv::Cap;
using crv::Curve;
using crv::CurveSearch;
using crv::Join;
using crv::Offset;
using crv::OffsetOptions;
using crv::Piece;
using crv::Position;

constexpr double kPi = 3.141592653589793;

Curve square(double size) { return closed(polygon({0, 0, size, 0, size, size, 0, size, 0, 0})); }

/// Every promise of the parallels of a curve with round joins; returns how many segments they have.
unsigned long expectParallels(Curve const& curve, double distance, double tolerance) {
  Offset const offset = crv::offset(curve, distance, {tolerance, Join::round, 4.0});
  EXPECT_LE(offset.worstError, tolerance);
  CurveSearch const search(curve);
  unsigned long segments = 0;
  for (Piece const& piece : offset.parallels) {
    auto const n = static_cast<int>(piece.curve.length());
    segments += piece.curve.length();
    EXPECT_TRUE(crv::selfContacts(piece.curve).points.empty());
    bool const isClosed = piece.curve.strictIsClosed() != 0;
    for (int i = 0; i <= n; ++i) {
      bool const isJoined = i < n && (i > 0 || isClosed);
      EXPECT_TRUE(!isJoined || piece.curve[(i + n - 1) % n][3] == piece.curve[i][0]);
      int const count = i < n ? 16 : isClosed ? 0 : 1;
      for (int k = 0; k < count; ++k) {
        Position const there(i, k / 16.0);
        Point const p = piece.curve.locateCurvePosition(there);
        EXPECT_NEAR(search.nearest(p)->distance, std::fabs(distance), offset.worstError);
        Position source, back;
        EXPECT_EQ(piece.map->inverseMapPosition(source, there), 0);
        Point const foot = curve.locateCurvePosition(source);
        EXPECT_NEAR(foot.distance(p), std::fabs(distance), offset.worstError);
        EXPECT_EQ(piece.map->mapPosition(back, source), 0);
      }
    }
  }
  return segments;
}

double totalArea(Offset const& offset) {
  double area = 0.0;
  for (Piece const& piece : offset.parallels) area += crv::signedArea(piece.curve);
  return area;
}

double totalArea(std::vector<Curve> const& outlines) {
  double area = 0.0;
  for (Curve const& outline : outlines) area += crv::signedArea(outline);
  return area;
}

TEST(AccurateOffset, LettersKeepTheDistanceWithFewSegments) {
  for (char const* name : {"roman-o-inner", "sans-k-thirds", "italic-f-thirds", "roman-g-outer"}) {
    Curve const letter = outline(name);
    for (double const distance : {-20.0, -5.0, 0.3, 5.0, 20.0}) {
      SCOPED_TRACE(name + text(distance));
      EXPECT_LE(expectParallels(letter, distance, 0.01), 2 * letter.length() + 10);
    }
    expectParallels(letter, 3.0, 1e-6);
  }
}

TEST(AccurateOffset, TheErrorReportedIsABound) {
  // Bends so tight that a parallel's error peaks between a few samples.
  for (Row const row : table("12 75 86 29 27 76 97 45 1; 58 67 90 92 29 96 90 10 5; 63 78 90 86 59 "
                             "89 89 68 1; 47 68 54 39 93 90 22 27 20")) {
    expectParallels(curveOf({segmentOf(row)}), row[8], 0.01);
  }
  // On a straight segment whose velocity is zero in the middle, positions map to the points
  // opposite.
  expectParallels(curveOf({bezier(80, 0, 60, 20, 80, 0, 60, 20)}), 0.5, 0.01);
  // The parallels of segments with almost the same direction are extended until they meet.
  Curve const bent = polygon({0, 0, 100, 0, 200, 1});
  for (double const side : {20.0, -20.0}) expectParallels(bent, side, 0.03);
  // Handles that are hardly longer than the tolerance.
  expectParallels(curveOf({bezier(0, 0, 0x1p-35, -0x1p-35, -1, 0.5, 1, 1)}), 0.1, 1e-11);
  // Points are part of a joint, and the ends beside a gap are different places.
  expectParallels(curveOf({retractedLine(0, 0, 9, 0), pointLike(9, 0), pointLike(9, 0),
                           retractedLine(9, 0, 9, 9), retractedLine(14, 9, 30, 9)}),
                  -2.0, 0.01);
  // The directions at the ends of a tiny segment between lines differ, though it is straight.
  expectParallels(curveOf({retractedLine(-1, 0, 0, 0),
                           bezier(0, 0, 0x1p-34, 0x1p-49, 0x1p-33, 0x1p-49, 0x3p-34, 0),
                           retractedLine(0x3p-34, 0, 1, 0)}),
                  0.3, 1e-10);
}

TEST(AccurateOffset, CornersAreJoinedAsAsked) {
  struct {
    Join join;
    double limit, area;
    unsigned long segments;
  } const rows[] = {{Join::round, 4.0, 10000 + 4000 + 100 * kPi, 8},
                    {Join::miter, 4.0, 120.0 * 120.0, 8},
                    {Join::miter, 1.4, 120.0 * 120.0 - 200.0, 8},
                    {Join::bevel, 4.0, 120.0 * 120.0 - 200.0, 8}};
  for (auto const& row : rows) {
    Offset const outer = crv::offset(square(100), -10, {1e-6, row.join, row.limit});
    ASSERT_EQ(outer.parallels.size(), 1u);
    EXPECT_NEAR(totalArea(outer), row.area, 1e-3);
    Offset const inner = crv::offset(square(100), 10, {1e-6, row.join, row.limit});
    ASSERT_EQ(inner.parallels.size(), 1u);
    EXPECT_EQ(inner.parallels[0].curve.length(), 4u);
    EXPECT_NEAR(totalArea(inner), 6400.0, 1e-9);
  }
  // One segment a quarter turn at 3e-4 of the radius, one per 45 degrees at 1e-5.
  EXPECT_EQ(crv::offset(square(100), -10, {3e-3}).parallels[0].curve.length(), 8u);
  EXPECT_EQ(crv::offset(square(100), -10, {1e-4}).parallels[0].curve.length(), 12u);
}

TEST(AccurateOffset, WhatIsTooNearIsTrimmedAway) {
  EXPECT_TRUE(crv::offset(square(100), 50.1).parallels.empty());
  EXPECT_TRUE(crv::offset(closed(circle(10)), 10.1).parallels.empty());
  // Two rooms with a narrow door have one parallel each; positions in the door have no image.
  Curve const rooms = closed(polygon({0,   0,   100, 0,   100, 45,  110, 45,  110, 0, 210, 0, 210,
                                      100, 110, 100, 110, 55,  100, 55,  100, 100, 0, 100, 0, 0}));
  Offset const two = crv::offset(rooms, 10);
  ASSERT_EQ(two.parallels.size(), 2u);
  // The parallels extend into the door between the circles of radius 10 about its corners.
  EXPECT_NEAR(totalArea(two), 2 * 6400.0 + 8.6777, 0.1);
  Position out(7, 0.5);
  EXPECT_EQ(two.parallels[0].map->mapPosition(out, Position(2, 0.5)), -1);
  EXPECT_TRUE(out == Position(7, 0.5));
  expectParallels(rooms, 10, 1e-4);
  // A bay whose radius is less than the distance leaves no swallowtail.
  expectParallels(curveOf({bezier(0, 100, 0, 0, 10, 0, 10, 100)}), 20, 0.01);
  // A figure of eight, and a loop that comes back to its start.
  expectParallels(closed(curveOf({bezier(0, 0, 120, 90, 120, -90, 0, 0)})), 5, 0.01);
  expectParallels(curveOf({loop()}), -4, 0.01);
}

TEST(AccurateOffset, OutlinesOfStrokesHaveTheirCapsAndHoles) {
  Curve const line = polygon({0, 0, 100, 0});
  EXPECT_NEAR(totalArea(crv::strokeOutline(line, 20, Cap::butt)), 2000.0, 1e-9);
  EXPECT_NEAR(totalArea(crv::strokeOutline(line, 20, Cap::square)), 2400.0, 1e-9);
  EXPECT_NEAR(totalArea(crv::strokeOutline(line, 20, Cap::round, {1e-6})), 2000 + 100 * kPi, 1e-3);
  EXPECT_EQ(crv::strokeOutline(square(100), 20, Cap::round).size(), 2u);
  EXPECT_NEAR(totalArea(crv::strokeOutline(square(100), 20, Cap::round, {1e-6, Join::miter, 4.0})),
              120.0 * 120.0 - 6400.0, 1e-6);
  Curve const point = curveOf({pointLike(3, 4)});
  EXPECT_NEAR(totalArea(crv::strokeOutline(point, 2, Cap::round, {1e-6})), kPi, 1e-5);
  EXPECT_NEAR(totalArea(crv::strokeOutline(point, 2, Cap::square)), 4.0, 1e-12);
  EXPECT_TRUE(crv::strokeOutline(point, 2, Cap::butt).empty());
  // The area within a distance of a curve is less than length times width and a disc; here a bend
  // has a radius of a hundred-thousandth of the width, and turns against those beside it.
  Curve const tight = curveOf({bezier(75.4, 60.9, 28.4, 53.3, 94.8, 49.9, 1, 77.3)});
  EXPECT_NEAR(totalArea(crv::strokeOutline(tight, 2.3, Cap::round)), 187.65, 0.2);
  // Where a curve turns back, the outline is round: the stroke of a line that runs to and fro.
  Curve const back = curveOf({bezier(0, 0, 200, 0, -100, 0, 100, 0)});
  EXPECT_NEAR(totalArea(crv::strokeOutline(back, 20, Cap::round, {1e-6})), 2000 + 100 * kPi, 1e-2);

  // Arcs of 180 degrees keep tolerances far below the square root of the rounding errors.
  Curve const sharp = curveOf({bezier(40, 20, 20, 60, 40, 20, 40, 20)});
  double const length = std::sqrt(2000.0) * 4 / 9, area = 2 * 33 * length + 33 * 33 * kPi;
  EXPECT_NEAR(totalArea(crv::strokeOutline(sharp, 66, Cap::round, {1e-10})), area, 1e-7);

  // Sides that nearly coincide, and distances at which rounding errors exceed the tolerance.
  Curve const near =
      curveOf({bezier(80, 20, 80, 20, 80, 60, 80, 40), bezier(80, 40, 80, 20, 80, 0, 0, 20),
               bezier(0, 20, -80, 40, 0, 60, 80, 40)});
  Curve const far = curveOf({bezier(20, 100, 100, 60, 80, 60, 20, 100)});
  for (double const tolerance : {7.7e-9, 2.6e-9, 1e-10, 1e-12}) {
    auto const areaOf = [&](Curve const& c, double width, double least) {
      return totalArea(crv::strokeOutline(c, width, Cap::round, {least}));
    };
    EXPECT_NEAR(areaOf(near, 74, tolerance), areaOf(near, 74, 1e-6), 1e-3) << tolerance;
    EXPECT_NEAR(areaOf(far, 2e4, tolerance) / areaOf(far, 2e4, 1e-5), 1.0, 1e-8) << tolerance;
  }

  // Segments no larger than rounding errors change nothing.
  for (double const size : {0x1p-51, 0x1p-47}) {
    Curve const tail =
        curveOf({evenLine(0, 0, 3, 0),
                 GxBezier(Point(3, 0), Point(3, size), Point(3 - size, size), Point(3, 0))});
    EXPECT_NEAR(totalArea(crv::strokeOutline(tail, 2, Cap::round, {1e-6})), 6 + kPi, 1e-4);
    EXPECT_EQ(crv::offset(tail, 1.0).parallels.size(), 1u);
  }
  // Nor do handles of that size, in whatever direction they point.
  for (double const size : {0x1p-51, 0x1p-44, 0x1p-36}) {
    Curve const noisy =
        curveOf({GxBezier(Point(0, 0), Point(-size, size), Point(3 + size, -size), Point(3, 0))});
    Curve const late = curveOf({GxBezier(Point(0, 0), Point(0, 0), Point(0, size), Point(3, 0))});
    EXPECT_NEAR(totalArea(crv::strokeOutline(late, 2, Cap::round, {1e-6})), 6 + kPi, 1e-4);
    EXPECT_NEAR(totalArea(crv::strokeOutline(noisy, 2, Cap::round, {1e-6})), 6 + kPi, 1e-4);
    crv::Offset const beside = crv::offset(noisy, 1.0, {1e-6});
    EXPECT_EQ(beside.parallels.size(), 1u);
    EXPECT_LE(beside.worstError, 1e-6);
  }
}

/// Whether a straight pen of a width, held across a segment without caps, passes over a point.
bool isSwept(GxBezier const& segment, double width, Point const& p) {
  double last = 0.0;
  for (int i = 0; i <= 4000; ++i) {
    Point const foot = segment.bValue(i / 4000.0);
    auto const velocity = segment.dValue(i / 4000.0);
    double const along =
        (p.xval() - foot.xval()) * velocity.xval() + (p.yval() - foot.yval()) * velocity.yval();
    if (i > 0 && along * last <= 0.0 && foot.distance(p) < 0.5 * width) return true;
    last = along;
  }
  return false;
}

TEST(AccurateOffset, FlatCapsAndJoinsBoundWhatAStraightPenPassesOver) {
  // The last segment is shorter than the pen is wide.
  for (double const length : {0.5, 2.0, 8.0, 30.0}) {
    Curve const hook = polygon({0, 0, 100, 0, 100, length});
    double const least = 2000 + 10 * length + 10 * std::max(0.0, length - 10);
    EXPECT_NEAR(totalArea(crv::strokeOutline(hook, 20, Cap::butt, {1e-6})), least + 25 * kPi, 1e-3);
    EXPECT_NEAR(totalArea(crv::strokeOutline(hook, 20, Cap::butt, {1e-6, Join::miter})),
                least + 100, 1e-6);
    EXPECT_NEAR(totalArea(crv::strokeOutline(hook, 20, Cap::butt, {1e-6, Join::bevel})), least + 50,
                1e-6);
  }
  // Stairs with steps that are shorter than the distance.
  Curve const stairs =
      closed(polygon({0, 0, 100, 0, 100, 3, 97, 3, 97, 6, 94, 6, 94, 50, 0, 50, 0, 0}));
  for (Join const join : {Join::miter, Join::bevel}) {
    EXPECT_EQ(crv::offset(stairs, -10, {0.01, join}).parallels.size(), 1u);
    EXPECT_EQ(crv::strokeOutline(stairs, 20, Cap::butt, {0.01, join}).size(), 2u);
  }
  // The ends bend more tightly than the pen is wide.
  for (Row const row : table("62 45 88 20 67 50 88 74 43; 61 98 61 98 46 42 54 50 5.5;"
                             "0 0 60 0 60 20 40 20 50; 10 0 90 60 -30 60 50 0 60")) {
    GxBezier const segment = segmentOf(row);
    std::vector<Curve> const stroke = crv::strokeOutline(curveOf({segment}), row[8], Cap::butt);
    ASSERT_FALSE(stroke.empty());
    std::vector<CurveSearch> boundaries;
    for (Curve const& outline : stroke) boundaries.emplace_back(outline);
    Random random(20261129);
    for (int i = 0; i < 200; ++i) {
      double const x = random.uniform(-20, 120), y = random.uniform(-20, 120);
      auto const isClose = [&](CurveSearch const& boundary) {
        return boundary.nearest({x, y})->distance < 0.1;
      };
      if (std::any_of(boundaries.begin(), boundaries.end(), isClose)) continue;
      EXPECT_EQ(crv::contains(stroke, {x, y}, crv::FillRule::nonZero),
                isSwept(segment, row[8], {x, y}))
          << text(x) << " " << text(y);
    }
  }

  // The first handle is less than a millionth of its segment, so the curvature falls suddenly: no
  // control point may lie far away.
  Curve const hooked = closed(curveOf(
      {bezier(0.60867132542482261, -0.56817399222306331, 0.60867085303179125, -0.56817385623441186,
              0.95659016615672332, -0.37716504628896597, -0.83622489461100824, 0.46727421303185523),
       bezier(-0.83622489461100824, 0.46727421303185523, -0.11322950916143126, 0.74403513537163501,
              -0.34846082775917675, -0.92583093614177958, 0.061490869334355658,
              0.17495496068036842),
       evenLine(0.061490869334355658, 0.17495496068036842, 0.60867132542482261,
                -0.56817399222306331)}));
  crv::Offset const around =
      crv::offset(hooked, 1.3066462988336323, {1.3921304394193339e-05, Join::miter});
  ASSERT_FALSE(around.parallels.empty());
  for (crv::Piece const& parallel : around.parallels) {
    for (crv::Segment const& s : parallel.curve) {
      for (int i = 0; i < 4; ++i) EXPECT_LT(s[i].distance(Point(0, 0)), 7.0);
    }
  }
}

TEST(AccurateOffset, InputsThatBrokeOthersAreFollowed) {
  // Zero handles, near cusps, turns back and points, each with a distance and a tolerance.
  for (Row const row : table(
           "51 0 -0.0859375 161.640625 0 164 0 164 -8 0.01;"
           "-1236.3746269978635 152.17981429574826 -1175.18662093517 108.04721798590596 "
           "-1152.142883879584 105.76260301083356 -1151.842639804639 105.73040758939104 "
           "3603.7267536453924 0.1;"
           "601 251 617.3172782509446 233.5695255356486 633.6345565018889 216.13905107129727 651 "
           "201 "
           "10 0.01; 56.4784042286517 112.95538057301243 31.180574948729816 112.95538057742776 "
           "9.768881274012546 96.32488088867885 2.578847809503432 73.40012003978167 -10 0.01;"
           "-750 25 -650 25 -700 25 -600 25 5 0.01; 21 59 59 84 153 16 189 41 25 0.01;"
           "518 765 518 765 163 611 163 611 10 0.01; 244 520 244 518 1141 634 394 688 15 0.1;"
           "226 733 556 779 -43 471 348 683 15 0.1; 172 480 396 580 256 299 338 677 15 0.1;"
           "475 708 62 620 770 304 220 659 15 0.1; 0 0.01 128 127.999 128 0.01 0 127.99 15 0.1;"
           "0 0 0 -10 0 -10 0 10 15 0.1; 39 -39 40 -40 40 -40 0 0 15 0.1;"
           "0 0 0.01 0 -0.01 0 0 0 15 0.1; 400.75 100.05 400.75 100.05 100.05 300.95 100.05 300.95 "
           "15 0.001; 10 0 0 0 10 0 10 0 15 0.001; 1 1 1 1 1 1 1 1 1 0.01; 0 0 1 1 0 1 1 0 1 "
           "1e-9")) {
    Curve const curve = curveOf({segmentOf(row)});
    for (double const side : {1.0, -1.0}) {
      EXPECT_LE(expectParallels(curve, side * row[8], row[9]), 60u);
    }
    EXPECT_GT(totalArea(crv::strokeOutline(curve, 2 * std::fabs(row[8]), Cap::round, {row[9]})),
              0.0);
  }
}

TEST(AccurateOffset, UnusableInputAndTinyDistancesHaveOneRule) {
  Curve const letter = outline("sans-k-thirds");
  EXPECT_TRUE(crv::offset(letter, 0.0).parallels[0].curve == letter);
  for (double const bad : {kNaN, kInf}) EXPECT_TRUE(crv::offset(letter, bad).parallels.empty());
  for (double const bad : {kNaN, 0.0, -1.0}) {
    EXPECT_TRUE(crv::offset(letter, 5.0, {bad}).parallels.empty());
    EXPECT_TRUE(crv::strokeOutline(letter, bad, Cap::round).empty());
  }
  EXPECT_TRUE(crv::offset(Curve(), 1.0).parallels.empty());
  EXPECT_EQ(crv::strokeOutline(curveOf({pointLike(0, 0)}), 2.0, Cap::round).size(), 1u);
  // Distances below the tolerance give parallels on their side.
  for (double const distance : {-1e-2, 1e-3, -1e-6}) {
    expectParallels(letter, distance, 0.01);
    ASSERT_EQ(crv::offset(letter, distance).parallels.size(), 1u);
    double const grown = totalArea(crv::offset(letter, distance)) - crv::signedArea(letter);
    EXPECT_NEAR(grown / (distance * crv::arcLength(letter, 1e-3)), -1.0, 0.3);
  }
  // The parallel at a huge distance is a circle to rounding.
  for (double const size : {1e16, 1e20, 1e145}) {
    Offset const around = crv::offset(closed(circle(1.0)), -size, {1e-4 * size});
    ASSERT_EQ(around.parallels.size(), 1u);
    EXPECT_NEAR(crv::arcLength(around.parallels[0].curve, 1e-3 * size) / size, 2 * kPi, 1e-3);
  }
  // Nothing is lost just above the resolution, also where the curve crosses itself.
  Curve const loop = curveOf(
      {segmentOf({10, 100, 80, 20, 40, 30, 0, 100}), segmentOf({0, 100, 60, 10, 30, 80, 100, 10})});
  double const resolution = 0x1p-40 * 100, length = crv::arcLength(loop, 1e-9);
  EXPECT_TRUE(crv::strokeOutline(loop, resolution, Cap::round).empty());
  for (double const size : {1.1 * resolution, 3.0 * resolution}) {
    EXPECT_NEAR(totalArea(crv::strokeOutline(loop, size, Cap::butt)), size * length, size);
    double whole = 0.0;
    for (Piece const& piece : crv::offset(loop, size).parallels) {
      whole += crv::arcLength(piece.curve, 1e-9);
    }
    EXPECT_NEAR(whole, length, 1e-6);
  }
  // Powers of two scale to the bit.
  Curve scaled = letter;
  for (GxBezier& b : scaled.getSegments()) b.scale(0x1p300, 0x1p300);
  Curve a = crv::offset(letter, 5.0).parallels[0].curve;
  Curve const b = crv::offset(scaled, 5.0 * 0x1p300, {0.01 * 0x1p300}).parallels[0].curve;
  for (GxBezier& s : a.getSegments()) s.scale(0x1p300, 0x1p300);
  EXPECT_TRUE(a == b);
}

}  // namespace
