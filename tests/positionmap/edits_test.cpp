// Copying, reversing and splitting curves, and the maps that come of it.
#include "tests/support/expect.h"
#include "tests/support/positions.h"

namespace {

using namespace support;

/// One segment of a curve between two places on it, cut at the lower place first.
GxBezier piece(GxBezierCurve const& curve, double from, double to) {
  Point const p = curve.locateCurvePosition(at(from));
  if (from == to) return GxBezier(p, p, p, p);
  double const low = std::fmin(from, to), i = std::floor(low), a = low - i;
  GxBezier left, right = curve[static_cast<int>(i)];
  if (a != 0.0) right.split(left, right, a);
  double const b = (std::fmax(from, to) - low) / (1.0 - a);
  if (b != 1.0) right.split(right, left, b);
  if (to < from) right.reverse();
  return right;
}

/// That a curve ends in these pieces of another, each from one place to the next.
void expectPieces(GxBezierCurve const& curve, GxBezierCurve const& source, Numbers const& places,
                  std::size_t before = 0) {
  ASSERT_EQ(curve.length(), before + places.size() / 2);
  for (std::size_t i = 0; i + 1 < places.size(); i += 2) {
    EXPECT_BITS(curve[static_cast<int>(before + i / 2)], piece(source, places[i], places[i + 1]));
  }
}

/// That a map takes a position to where the new curve runs through the same point, and back.
void expectCarried(MapHandle const& map, GxBezierCurve const& from, Position const& p,
                   GxBezierCurve const& to) {
  Carried const there = forth(map, p), back = support::back(map, there.at);
  ASSERT_TRUE(there.code == 0 && back.code == 0) << text(p);
  // In font units of 1000 to the em; measured: 1.4e-12.
  ASSERT_NEAR_POINT(to.locateCurvePosition(there.at), from.locateCurvePosition(p), 1e-11);
  ASSERT_TRUE(std::fabs(flat(back.at) - flat(p)) < 1e-9 ||
              (p == from.firstPos() && back.at == from.lastPos()))
      << text(p) << " back at " << text(back.at);
}

/// A stretch copied behind the first segments of its own curve.
struct Copy {
  GxBezierCurve curve;
  MapHandle map;
  int code;

  Copy(GxBezierCurve& src, double start, double end, int forward, int base) {
    for (int i = 0; i < base; ++i) curve.getSegments().add(src(i));
    code = copyGxBezierCurve(curve, src, at(start), at(end), forward, map);
  }
};

TEST(CopyGxBezierCurve, CutsTheEndsAndTakesTheSegmentsBetween) {
  GxBezierCurve const src = outline("roman-o-inner", 0);
  // Start, end, forwards or not, and the pieces. From the end of an open curve it goes once round.
  for (Row const row :
       table("1.25 1.75 1  1.25 1.75; 7.5 1.5 1  7.5 8 0 1 1 1.5; 1.75 1.25 0  1.75 1.25;"
             "2 7.5 0  2 1 1 0 8 7.5; 8 0.5 1  0 1 1 2 2 3 3 4 4 5 5 6 6 7 7 8 0 0.5")) {
    GxBezierCurve curve(src);  // may be copied behind its own end
    MapHandle map;
    copyGxBezierCurve(curve, curve, at(row[0]), at(row[1]), int(row[2]), map);
    expectPieces(curve, src, {row.begin() + 3, row.end()}, 8);
  }
}

TEST(CopyGxBezierCurve, RefusesEmptyStretchesAndPositionsOffTheCurve) {
  GxBezierCurve src = outline("roman-o-inner", 1);
  // Start, end, and whether the stretch is empty, as once round is; else the map is left alone.
  for (Row const row : table("3.5 3.5000000005 1; 0 8 1; 8.5 1 0; 1 9 0; -0.5 1 0")) {
    GxBezierCurve dst = outline("roman-o-inner", 0);
    MapHandle const before = constructIdentityPositionMap();
    MapHandle map = before;
    EXPECT_EQ(copyGxBezierCurve(dst, src, at(row[0]), at(row[1]), 1, map), -1);
    EXPECT_TRUE(dst == src);
    EXPECT_EQ(map == before, row[2] == 0);
    EXPECT_BITS(forth(map, at(row[0])).at, row[2] != 0 ? dst.lastPos() : at(row[0]));
  }
}

/// Forwards and backwards, open and closed, within a segment, across joints and the seam.
TEST(CopyGxBezierCurve, CarriesEveryPositionOfTheStretchAndBack) {
  Random random(51);
  int across = 0;
  for (std::string const name : {"roman-g-outer", "math-infinity-outer", "bold-w-ends"}) {
    GxBezierCurve src = outline(name, 0);
    int const n = static_cast<int>(src.length());
    auto const inside = [&] { return random.uniform(0.01, 0.99); };
    auto const place = [&] { return random.whole(0, n - 1) + (random.whole(0, 3) ? inside() : 0); };
    for (int run = 0; run < 400; ++run) {
      src.setStrictIsClosed(run % 2);
      int const forward = run / 2 % 2;
      double const low = place();
      double const high = run % 3 == 0 ? std::floor(low) + inside() : run % 7 == 0 ? n : place();
      bool const crosses = high <= low;
      bool const toSeam = src.strictIsClosed() && (forward ? high == n : low == 0);
      // Behind other segments, what comes back from beyond the seam may be a turn off.
      int const base = crosses || toSeam ? 0 : random.whole(0, 5);
      Copy const copy(src, forward ? low : high, forward ? high : low, forward, base);
      if (copy.code != 0) continue;
      across += crosses;
      SCOPED_TRACE(testing::Message() << name << " run " << run << ": " << low << " " << high);
      for (int i = 1; i < 40; ++i) {
        double p = low + (high - low + (crosses ? n : 0)) * i / 40;
        if (i % 4 == 0 && std::floor(p) > low) p = std::floor(p);
        expectCarried(copy.map, src, at(p < n ? p : p - n), copy.curve);
      }
    }
  }
  EXPECT_GT(across, 200);
}

TEST(ReverseGxBezierCurve, TwiceIsTheIdentity) {
  GxBezierCurve const before = outline("roman-g-outer", 1);
  GxBezierCurve once(before);
  MapHandle there, back;
  ASSERT_EQ(reverseGxBezierCurve(once, there), 0);
  GxBezierCurve twice(once);
  ASSERT_EQ(reverseGxBezierCurve(twice, back), 0);
  EXPECT_TRUE(twice == before && once.strictIsClosed());
  for (int i = 0; i <= 230; ++i) {
    expectCarried(there, before, at(i / 10.0), once);
    expectCarried(constructCompositePositionMap(there, back), before, at(i / 10.0), before);
  }
}

/// Both parts of a curve that was split; the second was the whole curve before, too.
struct Parts {
  GxBezierCurve first, second;
  MapHandle firstMap, secondMap;
  int code;

  Parts(GxBezierCurve const& curve, Position const& pos)
      : first(curve),
        second(curve),
        code(spliteGxBezierCurve(pos, first, second, firstMap, secondMap)) {}
};

/// The maps are those of the plain cut in any case, and at an end those of the whole curve.
TEST(SpliteGxBezierCurve, CutsPlainlyInTheFirstTwoSegmentsAndElseOneEarly) {
  GxBezierCurve curve = outline("roman-o-inner", 1);
  while (curve.length() > 4) curve.getSegments().remove(4);
  for (char const* text : {"0.5; 0 0.5; 0.5 1 1 2 2 3 3 4", "1; 0 1; 1 2 2 3 3 4",
                           "1.375; 0 1 1 1.375; 1.375 2 2 3 3 4", "2.5; 2 2.5; 2.5 3 2 3 3 4 0 1",
                           "3.5; 1 2 3 3.5; 3.5 4 3 4 0 1", "3; 1 2; 3 4 3 4 0 1",
                           "0; 0 0; 0 1 1 2 2 3 3 4", "4; 0 1 1 2 2 3 3 4; 4 4"}) {
    SCOPED_TRACE(text);
    auto const rows = table(text);
    double const cut = rows[0][0];
    Parts const parts(curve, at(cut));
    ASSERT_EQ(parts.code, 0);
    expectPieces(parts.first, curve, rows[1]);
    expectPieces(parts.second, curve, rows[2]);
    EXPECT_TRUE(parts.first.strictIsClosed() && parts.second.strictIsClosed() == (cut < 4));
    GxBezierCurve open(curve);
    open.setStrictIsClosed(0);
    if (cut == 0 || cut == 4) {
      EXPECT_BITS(forth(parts.firstMap, at(1.5)).at, at(1.5));
      EXPECT_BITS(forth(parts.secondMap, at(1.5)).at, at(1.5));
      continue;
    }
    Copy const before(open, 0, cut, 1, 0), after(open, cut, 4, 1, 0);
    for (int i = 0; i <= 40; ++i) {
      Position const p(0, i * 0.1);
      bool const isBefore = p <= at(cut);
      expectCarried(isBefore ? parts.firstMap : parts.secondMap, curve, p,
                    isBefore ? before.curve : after.curve);
      EXPECT_EQ(forth(isBefore ? parts.secondMap : parts.firstMap, p).code, p == at(cut) ? 0 : -1);
    }
  }
}

TEST(SpliteGxBezierCurve, RefusedSplitsChangeNothing) {
  GxBezierCurve src = outline("roman-o-inner", 0);
  for (Position const pos : {Position(8, 0.5), Position(), Position(0, std::nan(""))}) {
    Parts const parts(src, pos);
    EXPECT_TRUE(parts.code == -1 && parts.firstMap.isNull() && parts.secondMap.isNull());
    EXPECT_TRUE(parts.first == src && parts.second == src);
  }
  EXPECT_EQ(Parts(GxBezierCurve(), at(0)).code, -1);
  MapHandle map;
  EXPECT_EQ(spliteGxBezierCurve(Position(1, 0.5), src, src, map, map), -1);
  EXPECT_TRUE(src.length() == 8 && map.isNull());
}

}  // namespace
