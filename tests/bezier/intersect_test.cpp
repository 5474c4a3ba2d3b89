// Crossings of segments with segments and with lines, the first crossing, loops.
#include "tests/support/expect.h"
#include "tests/support/open.h"

namespace {

using namespace support;

// A piece deviates from its chord by 2^-14: the points of a pair lie within twice that.
constexpr double kPairDistance = 0x1p-13;

using Pairs = Numbers;  // parameters of crossings: t, u, t, u, ...

Pairs pairsOf(GxList<double> const& t, GxList<double> const& u) {
  EXPECT_EQ(t.length(), u.length());
  Pairs pairs;
  for (unsigned i = 0; i < t.length(); ++i) pairs.insert(pairs.end(), {t[i], u[i]});
  return pairs;
}

Pairs crossings(GxBezier a, GxBezier const& b) {
  GxList<double> t, u;
  int const found = a.findIntersections(b, t, u);
  EXPECT_EQ(found, t.length() > 0 ? 1 : 0);
  return pairsOf(t, u);
}

/// Every one of the pairs is among the others.
void expectAmong(Pairs const& pairs, Pairs const& others, double tol) {
  for (std::size_t i = 0; i < pairs.size(); i += 2) {
    double least = kInf;
    for (std::size_t k = 0; k < others.size(); k += 2) {
      least = min(least, std::hypot(pairs[i] - others[k], pairs[i + 1] - others[k + 1]));
    }
    EXPECT_LE(least, tol) << pairs[i] << ' ' << pairs[i + 1];
  }
}

void expectPairs(Pairs const& pairs, Pairs const& expected, double tol) {
  expectAmong(pairs, expected, tol);
  expectAmong(expected, pairs, tol);
}

bool areClear(Vector const& v, Vector const& w) {
  return min(v.length(), w.length()) > 100.0 && std::fabs(v.normalize().cross(w.normalize())) > 0.2;
}

TEST(GxBezierIntersect, PairsLieOnBothSegmentsAndAKnownCrossingIsAmongThem) {
  Random random(5);
  GxBezierCurve const letter = outline("roman-capital-s-thirds");
  int clear = 0;
  for (int i = 0; i < 1000; ++i) {
    GxBezier a = i % 2 ? random.segment(300.0) : letter[i % static_cast<int>(letter.length())];
    GxBezier b = random.segment(300.0);
    double const t = random.uniform(0.02, 0.98), u = random.uniform(0.0, 1.0);
    Vector const shift = a.bValue(t) - b.bValue(u);
    for (int k = 0; k < 4; ++k) b(k) += shift;
    Pairs const pairs = crossings(a, b);
    for (std::size_t k = 0; k < pairs.size(); k += 2) {
      EXPECT_NEAR_POINT(a.bValue(pairs[k]), b.bValue(pairs[k + 1]), kPairDistance);
      EXPECT_TRUE(k == 0 || pairs[k] <= pairs[k - 2]) << "descending";
    }
    GxList<Point> points;
    EXPECT_EQ(a.findIntersections(b, points), !pairs.empty());
    EXPECT_EQ(2 * points.length(), pairs.size());
    if (!areClear(a.dValue(t), b.dValue(u))) continue;
    ++clear;
    expectAmong({t, u}, pairs, 1e-5);
    std::pair<double, double> first;
    EXPECT_EQ(a.findFirstIntersection(b, first, 0.1), 1);
    EXPECT_LT(a.bValue(first.first).distance(b.bValue(first.second)), 2.5);
  }
  EXPECT_GT(clear, 500);
}

TEST(GxBezierIntersect, HardCasesHaveExactlyTheirCrossings) {
  for (HardCase const& hard : hardCases("segments")) {
    SCOPED_TRACE(hard.source);
    GxBezier const a = segmentOf(hard.fields[0]);
    expectPairs(crossings(a, segmentOf(hard.fields[1])), hard.fields[2], 1e-4);
  }
}

TEST(GxBezierIntersectLine, RandomCrossingsLieOnBothAndRandomLoopsMeetThemselves) {
  Random random(51);
  int loops = 0;
  for (int i = 0; i < 3000; ++i) {
    GxBezier segment = i % 4 ? random.segment(100) : random.gridSegment(5);
    double const known = random.uniform(0.0, 1.0);
    Vector const v = random.point(120) - random.point(120);
    Point const a = segment.bValue(known) + v * -0.25;
    GxList<double> t, s;
    segment.findYCStrongIntersection(a, a + v, t, s);
    Pairs const pairs = pairsOf(t, s);
    for (std::size_t k = 0; k < pairs.size(); k += 2) {
      ASSERT_NEAR_POINT(segment.bValue(pairs[k]), a + v * pairs[k + 1], 1e-8);
    }
    if (areClear(segment.dValue(known), v)) expectAmong({known, 0.25}, pairs, 1e-9);
    double t1, t2;
    if (!segment.isSelfIntersect(t1, t2)) continue;
    ASSERT_NEAR_POINT(segment.bValue(t1), segment.bValue(t2), 1e-6);
    ASSERT_TRUE(0.0 <= min(t1, t2) && max(t1, t2) <= 1.0);
    loops += t1 != t2;
  }
  EXPECT_GT(loops, 50);
}

}  // namespace
