#include "tests/support/data.h"
#include "tests/support/positions.h"
#include "tests/support/shapes.h"

#include <cmath>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

using support::at;
using support::Carried;
using support::flat;
using support::MapHandle;
using support::Position;
using support::Random;

/// The largest distance, in font units of 1000 to the em, between a place and where it was carried;
/// measured: 1.4e-12.
constexpr double kSamePlace = 1e-11;

GxBezierCurve outline(std::string const& name, int closed) {
  GxBezierCurve curve = support::outline(name);
  curve.setStrictIsClosed(closed);
  return curve;
}

/// Segment i of a curve over [from, to], cut at from first.
GxBezier piece(GxBezierCurve const& curve, int i, double from, double to) {
  GxBezier left;
  GxBezier right = curve[i];
  if (from != 0.0) right.split(left, right, from);
  if (to != 1.0) right.split(right, left, (to - from) / (1.0 - from));
  return right;
}

GxBezier reversed(GxBezier s) {
  s.reverse();
  return s;
}

void expectSegments(GxBezierCurve const& curve, std::vector<GxBezier> const& segments) {
  ASSERT_EQ(curve.length(), segments.size());
  for (std::size_t i = 0; i < segments.size(); ++i) {
    SCOPED_TRACE(i);
    EXPECT_BITS(curve[static_cast<int>(i)], segments[i]);
  }
}

/// A stretch that runs forwards from low to high, across the seam where high is not after low.
struct Stretch {
  Position low, high;
  long n;

  bool crossesSeam() const { return !(low < high); }
  double length() const { return flat(high) - flat(low) + (crossesSeam() ? double(n) : 0.0); }

  /// The position a share of the way along it, at a joint if there is one just before.
  Position at(double share, bool atJoint) const {
    double place = flat(low) + share * length();
    if (atJoint && std::floor(place) > flat(low)) place = std::floor(place);
    if (place >= double(n)) place -= double(n);
    return Position(int(std::floor(place)), place - std::floor(place));
  }
};

Stretch randomStretch(Random& random, int n) {
  auto const position = [&] {
    int const segment = random.whole(0, n - 1);
    return random.whole(0, 3) == 0 ? Position(segment, 0.0)
                                   : Position(segment, random.uniform(0.01, 0.99));
  };
  Stretch stretch{position(), position(), n};
  if (random.whole(0, 2) == 0) {
    stretch.high = Position(int(stretch.low.getSegmentNumber()), random.uniform(0.01, 0.99));
  } else if (random.whole(0, 5) == 0) {
    stretch.high = Position(n, 0.0);
  }
  return stretch;
}

/// Equal within 1e-9, or the two names of the seam.
bool isSamePlace(GxBezierCurve const& curve, Position const& p, Position const& q) {
  return std::fabs(flat(p) - flat(q)) < 1e-9 || (q == curve.firstPos() && p == curve.lastPos());
}

struct Copy {
  GxBezierCurve curve;
  MapHandle map;
  int code;
};

/// Copies a stretch behind the first segments of its own curve.
Copy copyOf(GxBezierCurve& src, Stretch const& s, int forward, int base) {
  Copy copy{GxBezierCurve(), MapHandle(), 0};
  for (int i = 0; i < base; ++i) copy.curve.getSegments().add(src(i));
  copy.code = copyGxBezierCurve(copy.curve, src, forward ? s.low : s.high, forward ? s.high : s.low,
                                forward, copy.map);
  return copy;
}

TEST(CopyGxBezierCurve, CutsTheEndsAndTakesTheSegmentsBetween) {
  GxBezierCurve src = outline("roman-o-inner", 0);
  struct Case {
    double start, end;
    int forward;
    std::vector<GxBezier> pieces;
  } const cases[] = {
      {1.25, 1.75, 1, {piece(src, 1, 0.25, 0.75)}},
      {0.5, 2, 1, {piece(src, 0, 0.5, 1), src(1)}},
      {7.5, 1.5, 1, {piece(src, 7, 0.5, 1), src(0), piece(src, 1, 0, 0.5)}},
      {1.75, 1.25, 0, {reversed(piece(src, 1, 0.25, 0.75))}},
      {2.5, 1.5, 0, {reversed(piece(src, 2, 0, 0.5)), reversed(piece(src, 1, 0.5, 1))}},
      {2, 7.5, 0, {reversed(src(1)), reversed(src(0)), reversed(piece(src, 7, 0.5, 1))}},
  };
  for (Case const& c : cases) {
    SCOPED_TRACE(testing::Message() << c.start << " " << c.end);
    // A curve may be copied behind its own end.
    GxBezierCurve dst, self = src;
    MapHandle map;
    ASSERT_EQ(copyGxBezierCurve(dst, src, at(c.start), at(c.end), c.forward, map), 0);
    expectSegments(dst, c.pieces);
    ASSERT_EQ(copyGxBezierCurve(self, self, at(c.start), at(c.end), c.forward, map), 0);
    for (int i = 0; i < int(dst.length()); ++i) EXPECT_BITS(self(8 + i), dst(i));
  }
}

TEST(CopyGxBezierCurve, RefusesEmptyStretchesAndPositionsOffTheCurve) {
  GxBezierCurve src = outline("roman-o-inner", 1);
  // Start, end, and whether the stretch is empty, as once round is; else the map is left alone.
  for (auto const& row : support::table("3.5 3.5000000005 1; 0 8 1; 8.5 1 0; 1 9 0; -0.5 1 0")) {
    GxBezierCurve dst = outline("roman-o-inner", 0);
    MapHandle const before = constructIdentityPositionMap();
    MapHandle map = before;
    EXPECT_EQ(copyGxBezierCurve(dst, src, at(row[0]), at(row[1]), 1, map), -1);
    EXPECT_TRUE(dst == src);
    EXPECT_EQ(map == before, row[2] == 0);
    EXPECT_BITS(support::forth(map, at(row[0])).at, row[2] != 0 ? dst.lastPos() : at(row[0]));
  }
}

/// The new curve at the mapped position is the old curve at the old position, and the inverse leads
/// back: forwards and backwards, open and closed, within a segment, across joints and the seam.
TEST(CopyGxBezierCurve, CarriesEveryPositionOfTheStretchAndBack) {
  Random random(51);
  long across = 0;
  for (std::string const name : {"roman-g-outer", "math-infinity-outer", "bold-w-ends"}) {
    GxBezierCurve src = outline(name, 0);
    for (int run = 0; run < 400; ++run) {
      src.setStrictIsClosed(run % 2);
      int const forward = run / 2 % 2;
      Stretch const stretch = randomStretch(random, int(src.length()));
      across += stretch.crossesSeam();
      bool const toSeam = forward ? stretch.high == src.lastPos() : stretch.low == src.firstPos();
      // Where other segments come first, the inverse of a stretch to or across the seam of a closed
      // curve is another matter, tested below.
      bool const wraps = stretch.crossesSeam() || (src.strictIsClosed() && toSeam);
      int const base = wraps ? 0 : random.whole(0, 5);
      Copy const copy = copyOf(src, stretch, forward, base);
      if (copy.code != 0) continue;
      SCOPED_TRACE(name + " run " + std::to_string(run) + " " + support::text(stretch.low) + " " +
                   support::text(stretch.high));
      for (int i = 1; i < 40; ++i) {
        Position const p = stretch.at(i / 40.0, i % 4 == 0);
        Carried const there = support::forth(copy.map, p);
        ASSERT_EQ(there.code, 0) << support::text(p);
        ASSERT_GE(flat(there.at), base);
        ASSERT_NEAR_POINT(copy.curve.locateCurvePosition(there.at), src.locateCurvePosition(p),
                          kSamePlace);
        Carried const back = support::back(copy.map, there.at);
        ASSERT_EQ(back.code, 0);
        ASSERT_TRUE(isSamePlace(src, back.at, p)) << support::text(back.at) << support::text(p);
      }
    }
  }
  EXPECT_GT(across, 200);
}

/// With segments before the copy, the way back across the seam can be a whole turn off (forwards)
/// or lost (backwards). What helps: take the turn off; or copy to an empty curve.
TEST(CopyGxBezierCurve, TheInverseAcrossTheSeamExpectsAnEmptyCurve) {
  Random random(53);
  long turnsOff = 0;
  long lost = 0;
  for (int run = 0; run < 800; ++run) {
    GxBezierCurve src = outline("roman-g-outer", 1);
    int const n = int(src.length());
    Stretch const stretch = randomStretch(random, n);
    int const base = random.whole(1, 6);
    if (!stretch.crossesSeam() || stretch.high == Position(0, 0.0)) continue;
    Copy const forwards = copyOf(src, stretch, 1, base);
    Copy const backwards = copyOf(src, stretch, 0, base);
    Copy const alone = copyOf(src, stretch, 0, 0);
    if (forwards.code != 0 || backwards.code != 0) continue;
    for (int i = 1; i < 20; ++i) {
      Position const p = stretch.at(i / 20.0, false);
      Position back = support::back(forwards.map, support::forth(forwards.map, p).at).at;
      long const segment = back.getSegmentNumber();
      turnsOff += segment < 0 || segment >= n;
      back = Position(int((segment + n) % n), back.getTValue());
      EXPECT_NEAR(flat(back), flat(p), 1e-9);

      Position const there = support::forth(backwards.map, p).at;
      lost += support::back(backwards.map, there).code != 0;
      Position const thereAlone(int(there.getSegmentNumber()) - base, there.getTValue());
      EXPECT_TRUE(isSamePlace(src, support::back(alone.map, thereAlone).at, p));
    }
  }
  EXPECT_GT(turnsOff, 100);
  EXPECT_GT(lost, 100);
}

/// On an open curve the end, as the start of a stretch, is read as segment 0 by the copy only: the
/// copy goes once round and the map does not. What helps: name the start of the curve instead.
TEST(CopyGxBezierCurve, AStretchOfAnOpenCurveStartsAtItsStartNotAtItsEnd) {
  GxBezierCurve src = outline("roman-o-inner", 0);
  Copy const once = copyOf(src, {src.lastPos(), Position(0, 0.5), 8}, 1, 0);
  EXPECT_EQ(once.curve.length(), 9u);
  Carried const c = support::forth(once.map, Position(0, 0.25));
  EXPECT_EQ(c.code, 0);
  EXPECT_BITS(c.at, Position(0, 0.5));
  Copy const named = copyOf(src, {src.firstPos(), Position(0, 0.5), 8}, 1, 0);
  expectSegments(named.curve, {piece(src, 0, 0, 0.5)});
  // A closed curve is copied whole as an open one.
  Copy const whole = copyOf(src, {src.firstPos(), src.lastPos(), 8}, 1, 0);
  EXPECT_TRUE(whole.curve == src);
}

TEST(ReverseGxBezierCurve, TwiceIsTheIdentity) {
  GxBezierCurve const before = outline("roman-g-outer", 1);
  GxBezierCurve curve = before;
  MapHandle once;
  MapHandle twice;
  ASSERT_EQ(reverseGxBezierCurve(curve, once), 0);
  GxBezierCurve const reversal = curve;
  ASSERT_EQ(reverseGxBezierCurve(curve, twice), 0);
  EXPECT_TRUE(curve == before && curve.strictIsClosed());
  MapHandle const both = constructCompositePositionMap(once, twice);
  for (int i = 0; i <= 230; ++i) {
    Position const p(i / 10, i % 10 * 0.1);
    EXPECT_NEAR_POINT(reversal.locateCurvePosition(support::forth(once, p).at),
                      before.locateCurvePosition(p), kSamePlace);
    EXPECT_NEAR(flat(support::forth(both, p).at), flat(p), 1e-9);
    EXPECT_NEAR(flat(support::back(both, p).at), flat(p), 1e-9);
  }
}

struct Parts {
  GxBezierCurve first, second;
  MapHandle firstMap, secondMap;
  int code;
};

Parts split(GxBezierCurve const& curve, Position const& pos) {
  Parts parts{curve, GxBezierCurve(curve), MapHandle(), MapHandle(), 0};
  parts.code = spliteGxBezierCurve(pos, parts.first, parts.second, parts.firstMap, parts.secondMap);
  return parts;
}

TEST(SpliteGxBezierCurve, CutsInTheFirstTwoSegmentsAndCarriesBothParts) {
  GxBezierCurve const curve = outline("roman-o-inner", 1);
  for (Position const pos : {Position(0, 0.5), Position(1, 0.0), Position(1, 0.375)}) {
    Parts const parts = split(curve, pos);
    ASSERT_EQ(parts.code, 0);
    EXPECT_EQ(parts.first.length() + parts.second.length(), pos.getTValue() == 0.0 ? 8u : 9u);
    EXPECT_TRUE(parts.first.strictIsClosed() && parts.second.strictIsClosed());
    for (int i = 0; i <= 80; ++i) {
      Position const p(0, i * 0.1);
      bool const isBefore = p <= pos;
      Carried const c = support::forth(isBefore ? parts.firstMap : parts.secondMap, p);
      EXPECT_EQ(c.code, 0);
      GxBezierCurve const& part = isBefore ? parts.first : parts.second;
      EXPECT_NEAR_POINT(part.locateCurvePosition(c.at), curve.locateCurvePosition(p), kSamePlace);
      EXPECT_EQ(support::forth(isBefore ? parts.secondMap : parts.firstMap, p).code,
                p == pos ? 0 : -1);
    }
  }
}

/// From segment 2 on, the maps are those of the plain cut, which is not made. What helps: copy the
/// stretches on both sides.
TEST(SpliteGxBezierCurve, FromTheThirdSegmentOnTakesTheSegmentsOneEarly) {
  GxBezierCurve curve = outline("roman-o-inner", 0);
  while (curve.length() > 4) curve.getSegments().remove(4);
  auto const part = [&](int i, double from, double to) { return piece(curve, i, from, to); };
  struct Case {
    Position pos;
    std::vector<GxBezier> first, second;
  } const cases[] = {
      {{2, 0.5}, {part(2, 0, 0.5)}, {part(2, 0.5, 1), curve(2), curve(3), curve(0)}},
      {{3, 0.5}, {curve(1), part(3, 0, 0.5)}, {part(3, 0.5, 1), curve(3), curve(0)}},
      {{3, 0.0}, {curve(1)}, {curve(3), curve(3), curve(0)}},
  };
  for (Case const& c : cases) {
    Parts const parts = split(curve, c.pos);
    expectSegments(parts.first, c.first);
    expectSegments(parts.second, c.second);
    Copy const before = copyOf(curve, {curve.firstPos(), c.pos, 4}, 1, 0);
    Copy const after = copyOf(curve, {c.pos, curve.lastPos(), 4}, 1, 0);
    for (int i = 0; i <= 40; ++i) {
      Position const p(0, i * 0.1);
      Copy const& half = p <= c.pos ? before : after;
      Position const at = support::forth(half.map, p).at;
      EXPECT_NEAR_POINT(half.curve.locateCurvePosition(at), curve.locateCurvePosition(p),
                        kSamePlace);
      EXPECT_BITS(at, support::forth(p <= c.pos ? parts.firstMap : parts.secondMap, p).at);
    }
  }
}

/// At an end, the part that is a point has a map all the same, which takes every position to where
/// the whole curve would have it. What helps: compare the position with firstPos and lastPos first.
TEST(SpliteGxBezierCurve, AtTheEndsLeavesAPoint) {
  GxBezierCurve const curve = outline("roman-o-inner", 1);
  GxCoord<double> const seam = curve[0][0];
  for (bool const atStart : {true, false}) {
    Parts const parts = split(curve, atStart ? curve.firstPos() : curve.lastPos());
    ASSERT_EQ(parts.code, 0);
    expectSegments(atStart ? parts.first : parts.second, {GxBezier(seam, seam, seam, seam)});
    EXPECT_TRUE((atStart ? parts.second : parts.first) == curve);
    EXPECT_EQ(parts.second.strictIsClosed(), atStart ? 1 : 0);
    for (MapHandle const& map : {parts.firstMap, parts.secondMap}) {
      EXPECT_EQ(support::forth(map, Position(5, 0.5)).code, 0);
      EXPECT_BITS(support::forth(map, Position(5, 0.5)).at, Position(5, 0.5));
    }
  }
}

TEST(SpliteGxBezierCurve, RefusedSplitsChangeNothing) {
  GxBezierCurve src = outline("roman-o-inner", 0);
  for (Position const pos : {Position(8, 0.5), Position(), Position(0, std::nan(""))}) {
    Parts const parts = split(src, pos);
    EXPECT_EQ(parts.code, -1);
    EXPECT_TRUE(parts.firstMap.isNull() && parts.secondMap.isNull());
    EXPECT_TRUE(parts.first == src && parts.second == src);
  }
  EXPECT_EQ(split(GxBezierCurve(), Position(0, 0.0)).code, -1);
  MapHandle map;
  EXPECT_EQ(spliteGxBezierCurve(Position(1, 0.5), src, src, map, map), -1);
  EXPECT_TRUE(src.length() == 8 && map.isNull());
}

}  // namespace
