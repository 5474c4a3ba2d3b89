// Copying, reversing and splitting curves, and the maps of these edits.
#include "tests/support/expect.h"
#include "tests/support/positions.h"

namespace {

using namespace support;

/// Expects that a map takes a position to one with the same point on the new curve, and back.
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
      // Behind other segments, a position that is mapped back from beyond the seam may be a lap
      // off.
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

}  // namespace
