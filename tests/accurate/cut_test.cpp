#include "crv/accurate/cut.h"

#include "tests/support/positions.h"
#include "tests/support/shapes.h"

#include <algorithm>
#include <cmath>

#include "gtest/gtest.h"

namespace {

using namespace support;
using crv::Curve;
using crv::Piece;
using crv::Position;

struct Place {
  long double x, y;
};

/// The place of a position by the Bernstein sum in extended precision.
Place placeOf(Curve const& curve, Position const& p) {
  bool const isEnd = p.getSegmentNumber() == static_cast<long>(curve.length());
  GxBezier const& b = curve[static_cast<int>(p.getSegmentNumber()) - isEnd];
  long double const t = isEnd ? 1.0L : p.getTValue(), s = 1.0L - t;
  long double const w[4] = {s * s * s, 3 * s * s * t, 3 * s * t * t, t * t * t};
  Place place = {0, 0};
  for (int i = 0; i < 4; ++i) {
    place.x += w[i] * b[i].xval();
    place.y += w[i] * b[i].yval();
  }
  return place;
}

/// The distance of two places in units of 2^-53 size.
double roundings(Place const& a, Place const& b, double size) {
  return static_cast<double>(std::hypot(a.x - b.x, a.y - b.y)) / (0x1p-53 * size);
}

Curve randomCurve(Random& random, double size, int n, bool closed, bool gaps) {
  Curve curve;
  auto const point = [&] {
    return GxCoord<double>(random.uniform(-size, size), random.uniform(-size, size));
  };
  GxCoord<double> const start = point();
  GxCoord<double> last = start;
  for (int i = 0; i < n; ++i) {
    GxCoord<double> const end = closed && i == n - 1 ? start : point();
    curve.getSegments().add(GxBezier(last, point(), point(), end));
    last = gaps && random.whole(0, 2) == 0 ? point() : end;
  }
  curve.setStrictIsClosed(closed);
  return curve;
}

/// Maps a position to a piece and back, and checks both; returns whether the piece contains it.
bool carries(Curve const& source, Piece const& piece, Position const& p, double size) {
  Position there(7, 0.5), back;
  if (piece.map->mapPosition(there, p) != 0) {
    EXPECT_TRUE(there == Position(7, 0.5)) << "left as it was";
    return false;
  }
  EXPECT_EQ(piece.map->inverseMapPosition(back, there), 0);
  double const n = static_cast<double>(source.length());
  double const off = std::fabs(flat(back) - flat(p));
  double const difference = source.strictIsClosed() ? std::min(off, n - off) : off;
  EXPECT_LE(difference, 4 * 0x1p-53 * std::max(1.0, n));
  EXPECT_LE(roundings(placeOf(source, p), placeOf(piece.curve, there), size), 64.0);
  EXPECT_LE(roundings(placeOf(source, back), placeOf(piece.curve, there), size), 64.0);
  return true;
}

TEST(Edits, PositionsLieWhereTheyLayAtEverySize) {
  Random random(11);
  for (int i = 0; i < 3000; ++i) {
    double const size = std::pow(10.0, random.whole(-6, 9));
    int const n = random.whole(1, 6);
    bool const closed = i % 2 == 0;
    Curve const curve = randomCurve(random, size, n, closed, i % 3 == 0);
    auto const position = [&] {
      return Position(random.whole(0, n - 1), random.whole(0, 3) ? random.uniform(0, 1) : 0.0);
    };
    std::vector<Position> cuts;
    for (int k = random.whole(0, 4); k > 0; --k) cuts.push_back(position());
    Position const from = position(), to = position(), p = position();
    std::vector<Piece> const pieces = crv::cut(curve, cuts);
    long carried = 0;
    for (Piece const& piece : pieces) carried += carries(curve, piece, p, size);
    EXPECT_TRUE(carried >= 1 && carried <= 1 + (std::count(cuts.begin(), cuts.end(), p) > 0 ||
                                                p.getTValue() == 0.0));
    for (std::size_t k = 1; k < pieces.size(); ++k) {
      Curve const& piece = pieces[k - 1].curve;
      GxBezier const& before = piece[static_cast<int>(piece.length()) - 1];
      EXPECT_TRUE(i % 3 == 0 || before[3] == pieces[k].curve[0][0]) << "shared bits";
    }
    EXPECT_TRUE(carries(curve, crv::withJoint(curve, from), p, size));
    EXPECT_TRUE(carries(curve, crv::reversed(curve), p, size));
    Piece const there = crv::stretch(curve, from, to, true);
    Piece const back = crv::stretch(curve, to, from, false);
    EXPECT_EQ(carries(curve, there, p, size), carries(curve, back, p, size));
    EXPECT_TRUE(there.curve == crv::reversed(back.curve).curve) << "one stretch, two senses";
  }
}

TEST(Edits, SeamsEndsAndWholeCurvesFollowOneRule) {
  Curve const closed = support::closed(circle(10));
  Position const seam(0, 0.0), end(4, 0.0), half(1, 0.5);
  EXPECT_EQ(crv::cut(closed, {}).size(), 1u);
  EXPECT_TRUE(crv::cut(closed, {end, seam})[0].curve == closed);
  EXPECT_EQ(crv::cut(closed, {end, half, seam, Position(9, 0.0), half}).size(), 2u);
  EXPECT_EQ(crv::cut(closed, {half})[0].curve.length(), 5u);
  EXPECT_EQ(crv::stretch(closed, half, half, false).curve.length(), 5u);
  EXPECT_TRUE(crv::stretch(closed, end, seam, true).curve == closed);
  EXPECT_TRUE(crv::reversed(crv::reversed(closed).curve).curve == closed);
  EXPECT_NE(crv::withJoint(closed, half).curve.strictIsClosed(), 0);
  Position out;
  EXPECT_EQ(crv::reversed(closed).map->mapPosition(out, end), 0);
  EXPECT_TRUE(out == seam);

  Curve open = closed;
  open.setStrictIsClosed(0);
  EXPECT_EQ(crv::cut(open, {seam, end}).size(), 1u);
  EXPECT_EQ(crv::cut(open, {half, Position(2, 0.0), half})[1].curve.length(), 1u);
  Piece const point = crv::stretch(open, end, end, true);
  EXPECT_TRUE(point.curve.length() == 1 && point.curve[0][0] == open[3][3]);
  EXPECT_EQ(point.map->mapPosition(out, end), 0);
  Piece const none = crv::stretch(open, half, seam, true);
  EXPECT_EQ(none.curve.length(), 0u);
  EXPECT_EQ(none.map->mapPosition(out, half), -1);
  EXPECT_TRUE(crv::withJoint(open, end).curve == open);
}

TEST(Edits, UnusableCurvesHaveEmptyResults) {
  for (double const bad : {HUGE_VAL, std::nan(""), 0x1p501, 0x1p-501}) {
    Curve curve;
    curve.getSegments().add(bezier(0, 0, bad, 0, 0, 0, 0, 0));
    EXPECT_TRUE(crv::cut(curve, {Position(0, 0.5)}).empty());
    for (Piece const& piece : {crv::withJoint(curve, Position(0, 0.5)), crv::reversed(curve),
                               crv::stretch(curve, Position(0, 0.0), Position(1, 0.0), true)}) {
      Position out;
      EXPECT_EQ(piece.curve.length(), 0u);
      EXPECT_EQ(piece.map->mapPosition(out, Position(0, 0.5)), -1);
      EXPECT_EQ(piece.map->inverseMapPosition(out, Position(0, 0.0)), -1);
    }
  }
}

GxCoord<double> scaledDown(GxCoord<double> const& p) {
  return {p.xval() * 0x1p-300, p.yval() * 0x1p-300};
}

TEST(Edits, PowersOfTwoScaleToTheBitAndMapsOutliveTheirSource) {
  Random random(5);
  Curve source = randomCurve(random, 1.0, 3, true, false), scaled = source;
  for (GxBezier& b : scaled.getSegments()) {
    for (int i = 0; i < 4; ++i) b[i] = scaledDown(b[i]);
  }
  Position const cut(1, 0.3);
  Curve a = crv::cut(source, {cut})[0].curve, b = crv::cut(scaled, {cut})[0].curve;
  for (int k = 0; k < 4; ++k) {
    for (int i = 0; i < 4; ++i) EXPECT_TRUE(scaledDown(a[k][i]) == b[k][i]);
  }
  std::vector<Piece> pieces = crv::cut(source, {cut, Position(2, 0.5)});
  source.getSegments().empty();
  crv::Map const map = pieces[1].map;
  pieces.clear();
  Position out;
  EXPECT_EQ(map->mapPosition(out, Position(2, 0.75)), 0);
  EXPECT_TRUE(out == Position(0, 0.5));
}

}  // namespace
