// Curves taken apart at their crossings: no stretch is lost, and the pieces do not cross.
#include "crv/accurate/separate.h"

#include "crv/accurate/arcLength.h"
#include "crv/accurate/curveContacts.h"
#include "crv/accurate/direction.h"
#include "tests/support/cases.h"

#include <cmath>
#include <functional>

#include <gtest/gtest.h>

namespace {

using namespace support;
using crv::Curve;
using crv::Piece;
using crv::Position;
using crv::Separated;

bool hasCrossings(crv::CurveContacts const& contacts) {
  for (auto const& c : contacts.points) {
    if (c.kind == crv::ContactKind::crossing) return true;
  }
  return false;
}

Point pointAt(Curve const& curve, Position const& p) {
  return curve[static_cast<int>(p.getSegmentNumber())].bValue(p.getTValue());
}

std::vector<Piece> piecesOf(Separated const& separated) {
  std::vector<Piece> pieces = separated.rests;
  for (auto const& loop : separated.loops) pieces.push_back(loop.piece);
  return pieces;
}

/// Expects every stretch once, in pieces that join bit for bit and do not cross, with maps in both
/// directions.
void expectSound(Curve const& curve, Separated const& separated, Random& random) {
  bool const isClosed = curve.strictIsClosed() != 0;
  ASSERT_EQ(separated.rests.size(), isClosed ? 0u : 1u);
  std::vector<Piece> const pieces = piecesOf(separated);
  double area = 0.0, length = 0.0;
  for (Piece const& piece : pieces) {
    area += crv::signedArea(piece.curve);
    length += crv::arcLength(piece.curve, 1e-9);
    EXPECT_FALSE(hasCrossings(crv::selfContacts(piece.curve)));
    for (Piece const& other : pieces) {
      if (&other >= &piece) continue;
      EXPECT_FALSE(hasCrossings(crv::contacts(piece.curve, other.curve)));
    }
    int const n = static_cast<int>(piece.curve.length());
    for (int i = piece.curve.strictIsClosed() ? 0 : 1; i < n; ++i) {
      EXPECT_TRUE(piece.curve[(i + n - 1) % n][3] == piece.curve[i][0]);
    }
  }
  EXPECT_NEAR(area, crv::signedArea(curve), 1e-6);
  EXPECT_NEAR(length, crv::arcLength(curve, 1e-9), 1e-6);
  for (int i = 0; i < 20; ++i) {
    int const last = static_cast<int>(curve.length()) - 1;
    Position const p(random.whole(0, last), random.uniform(0, 1));
    int hits = 0;
    for (Piece const& piece : pieces) {
      Position there, back;
      if (piece.map->mapPosition(there, p) != 0) continue;
      ++hits;
      Point const place = pointAt(curve, p), carried = pointAt(piece.curve, there);
      EXPECT_NEAR(carried.xval(), place.xval(), 1e-9);
      EXPECT_NEAR(carried.yval(), place.yval(), 1e-9);
      ASSERT_EQ(piece.map->inverseMapPosition(back, there), 0);
      EXPECT_EQ(back.getSegmentNumber(), p.getSegmentNumber());
      EXPECT_NEAR(back.getTValue(), p.getTValue(), 1e-12);
    }
    EXPECT_EQ(hits, 1);
  }
}

TEST(Separate, TakesRandomCurvesApart) {
  Random random(7);
  std::size_t loops = 0;
  for (int i = 0; i < 150; ++i) {
    SCOPED_TRACE(i);
    // Lines between points of a grid, where many branches pass through one point, or cubics.
    bool const isOnGrid = i % 3 == 0, isClosed = i % 2 == 0;
    std::vector<Point> joints;
    int const n = random.whole(2, 9);
    for (int k = 0; k < n; ++k) {
      joints.push_back(isOnGrid ? random.gridPoint(3) : random.point(400));
    }
    if (isClosed) joints.push_back(joints[0]);
    Curve curve;
    for (std::size_t k = 0; k + 1 < joints.size(); ++k) {
      Point const from = joints[k], to = joints[k + 1];
      GxBezier segment = evenLine(from.xval(), from.yval(), to.xval(), to.yval());
      for (int h = 1; h < 3 && !isOnGrid; ++h) segment[h] = random.point(400);
      curve.getSegments().add(segment);
    }
    curve.setStrictIsClosed(isClosed);
    if (!crv::selfContacts(curve).overlaps.empty()) continue;
    Separated const separated = crv::separate(curve);
    expectSound(curve, separated, random);
    loops += separated.loops.size();
  }
  EXPECT_GT(loops, 500u);
}

TEST(Separate, OfKnownShapes) {
  Random random(8);
  struct {
    char const* what;
    Curve curve;
    std::size_t loops;
    std::vector<bool> areClockwise;
  } const rows[] = {
      {"simple", closed(circle(1)), 1, {false}},
      {"a loop on an open segment", curveOf({loop()}), 1, {false}},
      {"a figure of eight", closed(polygon({0, 0, 2, 2, 2, 0, 0, 2, 0, 0})), 2, {false, true}},
      {"three lines through a point",
       polygon({-2, 0, 2, 0, 1, 2, -1, -2, 1, -2, -1, 2}),
       2,
       {false, false}},
      {"three lines through a point, two of which return to it",
       polygon({1, 0, 1, 2, 0, 1, 2, 1, 2, 2, 0, 0}),
       2,
       {false, false}},
      {"a touching", closed(polygon({0, 0, 2, 0, 2, 2, 1, 0, 0, 2, 0, 0})), 1, {false}},
      {"a crossing of a segment that runs back on itself",
       closed(curveOf(segmentsOf({3, 0, 0, 2, 2, 1, 1, 3, 1, 3, 3, 3, 3, 1, 2, 1,
                                  2, 1, 3, 2, 0, 0, 3, 0, 3, 0, 0, 2, 3, 0, 3, 0}))),
       3,
       {false, true, true}},
      {"there and back", closed(polygon({0, 0, 2, 0, 0, 0})), 1, {false}},
  };
  for (auto const& row : rows) {
    SCOPED_TRACE(row.what);
    Separated const separated = crv::separate(row.curve);
    ASSERT_EQ(separated.loops.size(), row.loops);
    for (std::size_t i = 0; i < row.loops; ++i) {
      EXPECT_EQ(separated.loops[i].clockwise, row.areClockwise[i]) << i;
    }
    if (row.what != std::string("there and back")) expectSound(row.curve, separated, random);
  }
}

TEST(Separate, TheEndBeforeAGapIsNotTheStartBehindIt) {
  Curve broken = curveOf({evenLine(0, 0, 4, 4), evenLine(4, 0, 0, 4), evenLine(0, 3, 1, 9)});
  for (Piece const& piece : piecesOf(crv::separate(broken))) {
    for (int i = 0; i < static_cast<int>(piece.curve.length()); ++i) {
      Position back;
      Position const p(i, 1.0 - 0x1p-53);
      ASSERT_EQ(piece.map->inverseMapPosition(back, p), 0);
      EXPECT_LT(pointAt(broken, back).distance(pointAt(piece.curve, p)), 1e-12);
    }
  }
}

TEST(Separate, FillsLists) {
  GxList<GxBezierCurve> pieces;
  EXPECT_EQ(seperateSelfIntersections(Curve(), pieces), -1);
  EXPECT_EQ(seperateSelfIntersectionsForOpenCurve(Curve(), pieces), -1);
  EXPECT_EQ(pieces.length(), 0u);
  Curve const eight = closedPolygon({0, 0, 2, 2, 2, 0, 0, 2});
  EXPECT_EQ(seperateSelfIntersections(eight, pieces), 2);
  EXPECT_EQ(seperateSelfIntersectionsForOpenCurve(eight, pieces), 2);
  ASSERT_EQ(pieces.length(), 4u) << "appended";
  EXPECT_TRUE(pieces[0].strictIsClosed() && pieces[1].strictIsClosed());
  EXPECT_TRUE(pieces[2].strictIsClosed()) << "loops first";
  EXPECT_FALSE(pieces[3].strictIsClosed());
  EXPECT_EQ(seperateSelfIntersections(curveOf({pointLike(kNaN, 0)}), pieces), 0);
}

}  // namespace
