// Positions that travel: carried through parallels, areas, simplifications, separations and cuts,
// they lie where the geometry says, and come back to where they were.
#include "crv/accurate/arcLength.h"
#include "crv/accurate/curveSearch.h"
#include "crv/accurate/direction.h"
#include "crv/accurate/fit.h"
#include "crv/accurate/offset.h"
#include "crv/accurate/region.h"
#include "crv/accurate/separate.h"
#include "tests/support/cases.h"
#include "tests/support/positions.h"

#include <cmath>

namespace {

using namespace support;
using crv::Curve;
using crv::Piece;

/// Room for rounding where the largest coordinate is at most 1024: 64 * 2^-53 of that.
constexpr double kRounding = 64 * 0x1p-53 * 1024;
/// How near a place comes to where it was through a fitted map and back, in curve units.
constexpr double kReturn = 1e-9;
/// Places this much too near are surely trimmed, in curve units: thrice the tolerance of parallels.
constexpr double kMargin = 0.03;

/// All run counter-clockwise.
constexpr char const* kLetters[] = {"bold-w-ends",         "italic-ampersand-outer-thirds",
                                    "roman-g-outer",       "italic-f-thirds",
                                    "math-infinity-outer", "roman-capital-s-thirds"};

/// Segments that join, many of them with a retracted handle or a cusp.
Curve chain(Random& random, int n, bool isClosed) {
  Curve curve;
  Point const start = random.point(100);
  for (int i = 0; i < n; ++i) {
    GxBezier s = random.segment(100);
    s[0] = i > 0 ? curve[i - 1][3] : start;
    if (isClosed && i == n - 1) s[3] = start;
    int const kind = random.whole(0, 4);
    if (kind == 0) s[1] = s[0];
    if (kind == 1) s[2] = s[3];
    if (kind == 2) s[2] = s[0] + (s[1] - s[3]);
    curve.getSegments().add(s);
  }
  curve.setStrictIsClosed(isClosed);
  return curve;
}

Position anywhere(Curve const& curve, Random& random) {
  int const segment = random.whole(0, static_cast<int>(curve.length()) - 1);
  return {segment, random.uniform(0, 1)};
}

bool isStart(Position const& p) { return p.getTValue() == 0.0; }

bool areSame(Position const& p, Position const& q) { return flat(p) == flat(q); }

/// A position just beside a joint.
Position besideJoint(Curve const& curve, Random& random) {
  Position const p = anywhere(curve, random);
  double const t = p.getTValue() * 1e-3;
  return {static_cast<int>(p.getSegmentNumber()), random.whole(0, 1) ? t : 1 - t};
}

Point placeOf(Curve const& curve, Position const& p) { return curve.locateCurvePosition(p); }

/// The speed of a parallel relative to that of the curve.
double relativeSpeed(Curve const& curve, Position const& p, double distance) {
  GxBezier const& s = curve[static_cast<int>(p.getSegmentNumber())];
  crv::Vector const v = s.dValue(p.getTValue()), a = s.ddValue(p.getTValue());
  double const turning = v.xval() * a.yval() - v.yval() * a.xval();
  return std::fabs(1.0 - distance * turning / std::pow(v.length(), 3));
}

/// Whether a place of a parallel is one of many that belong to one place of the source: on a join,
/// or where a bend is as tight as the distance.
bool isShared(Piece const& piece, Position const& there) {
  auto const segment = static_cast<int>(there.getSegmentNumber());
  return areSame(back(piece.map, {segment, 0.3}).at, back(piece.map, {segment, 0.7}).at);
}

/// Expects each segment of a parallel to start exactly where its source does, and no place before
/// that one to come there.
void expectEnds(Piece const& piece, Curve const& curve, double distance) {
  int const n = static_cast<int>(piece.curve.length());
  for (int k = 0; k < n; ++k) {
    Position const start(k, 0.0), home = back(piece.map, start).at;
    if (isStart(home) || isShared(piece, start) || isShared(piece, {(k + n - 1) % n, 0.0}))
      continue;
    EXPECT_TRUE(areSame(forth(piece.map, home).at, start)) << k;
    Position const before(static_cast<int>(home.getSegmentNumber()), home.getTValue() * (1 - 1e-6));
    double const way = placeOf(curve, before).distance(placeOf(curve, home));
    if (way * relativeSpeed(curve, home, distance) < kReturn) continue;
    Carried const there = forth(piece.map, before);
    EXPECT_TRUE(there.code != 0 || !areSame(there.at, start)) << k;
  }
}

/// Carries places of a curve to its parallels, expects them there unless something else is too
/// near, carries places of the parallels to the curve, and both back.
void expectParallels(Curve const& curve, double distance, Random& random) {
  crv::Offset const offset = crv::offset(curve, distance);
  crv::CurveSearch const search(curve);
  double const reach = std::fabs(distance), error = offset.worstError + kRounding;
  double const aside = error + std::sqrt(reach * crv::OffsetOptions().tolerance / 8);
  for (int i = 0; i < 60; ++i) {
    Position const p = i % 2 ? anywhere(curve, random) : besideJoint(curve, random);
    Point const foot = placeOf(curve, p);
    crv::Vector const along = crv::directions(curve, p).out;
    Point const across(foot.xval() - distance * along.yval(),
                       foot.yval() + distance * along.xval());
    int images = 0;
    for (Piece const& piece : offset.parallels) {
      Carried const there = forth(piece.map, p);
      if (there.code != 0) continue;
      ++images;
      Point const image = placeOf(piece.curve, there.at);
      EXPECT_NEAR(image.distance(foot), reach, error);
      EXPECT_LE(image.distance(across), aside) << "not on the normal";
      // All of a tight bend has one image.
      Point const home = placeOf(curve, back(piece.map, there.at).at);
      EXPECT_LE(home.distance(foot) * relativeSpeed(curve, p, distance), kReturn);
      EXPECT_NEAR(image.distance(home), reach, error);
    }
    double const nearest = search.nearest(across)->distance;
    bool const isAlone = search.within(across, reach + kMargin).size() == 1;
    EXPECT_TRUE(images == 0 || nearest > reach - kMargin);
    EXPECT_TRUE(images == 1 || nearest < reach - kReturn || !isAlone);
  }
  for (Piece const& piece : offset.parallels) {
    for (int i = 0; i < 15; ++i) {
      Position const there = anywhere(piece.curve, random);
      Carried const home = back(piece.map, there), again = forth(piece.map, home.at);
      Point const place = placeOf(piece.curve, there);
      EXPECT_TRUE(home.code == 0 && again.code == 0);
      EXPECT_NEAR(placeOf(curve, home.at).distance(place), reach, error);
      EXPECT_TRUE(isShared(piece, there) ||
                  placeOf(piece.curve, again.at).distance(place) < kReturn);
    }
    expectEnds(piece, curve, distance);
  }
}

TEST(Travel, ToParallelsAndBack) {
  Random random(1414);
  for (char const* name : kLetters) {
    for (double const distance : {-12.0, -2.0, 3.0, 9.0}) {
      SCOPED_TRACE(name + text(distance));
      expectParallels(outline(name), distance, random);
    }
  }
  for (int i = 0; i < 60; ++i) {
    SCOPED_TRACE(i);
    Curve const curve = chain(random, 1 + i % 5, i % 2 == 0);
    double const distance = random.uniform(1, 10);
    expectParallels(curve, (i % 4 < 2 ? 1 : -1) * distance, random);
  }
}

TEST(Travel, OutAndHomeAgainGivesTheSameOutline) {
  Random random(77);
  for (std::string const name : {"roman-o-inner", "roman-g-outer"}) {
    for (double const distance : {0.5, 4.0}) {
      SCOPED_TRACE(name + text(distance));
      Curve const letter = outline(name);
      crv::Offset const out = crv::offset(letter, distance);
      ASSERT_EQ(out.parallels.size(), 1u);
      crv::Offset const home = crv::offset(out.parallels[0].curve, -distance);
      ASSERT_EQ(home.parallels.size(), 1u);
      Curve const& result = home.parallels[0].curve;
      double const error = out.worstError + home.worstError + kRounding;
      for (int i = 0; i < 100; ++i) {
        Position const p = anywhere(letter, random);
        Carried const there = forth(out.parallels[0].map, p);
        Carried const again = forth(home.parallels[0].map, there.at);
        EXPECT_TRUE(there.code == 0 && again.code == 0) << "nothing is trimmed";
        EXPECT_LE(placeOf(result, again.at).distance(placeOf(letter, p)), kMargin);
        Point const after = placeOf(result, anywhere(result, random));
        EXPECT_LE(crv::nearest(letter, after)->distance, error);
      }
      EXPECT_NEAR(crv::signedArea(result), crv::signedArea(letter),
                  error * crv::arcLength(letter, 1e-6));
    }
  }
}

/// How many segments of a region were made
/// of a place of one outline; all of them are expected to run in the sense told.
int timesCovered(crv::Region const& region, std::size_t list, Position const& p, bool backwards) {
  int times = 0;
  for (auto const& sources : region.sources) {
    for (crv::Source const& s : sources) {
      bool const isHere = s.list == list && flat(s.from) <= flat(p) && flat(p) < flat(s.to);
      times += isHere;
      EXPECT_TRUE(!isHere || s.backwards == backwards);
    }
  }
  return times;
}

/// Expects every segment of a region to lie on its source.
void expectOnSources(crv::Region const& region, std::vector<Curve> const& outlines) {
  for (std::size_t c = 0; c < region.curves.size(); ++c) {
    int k = 0;
    for (crv::Source const& s : region.sources[c]) {
      double const from = flat(s.from), length = flat(s.to) - from, first = std::floor(from);
      GxBezier const& part = region.curves[c][k++];
      GxBezier const& whole = outlines[s.list][static_cast<int>(first)];
      for (double const t : {0.0, 0.13, 0.5, 0.71, 1.0}) {
        double const along = from - first + (s.backwards ? 1.0 - t : t) * length;
        EXPECT_LE(whole.bValue(along).distance(part.bValue(t)), kRounding);
      }
    }
  }
}

TEST(Travel, FromAreasToTheirOutlines) {
  Random random(63);
  for (int i = 0; i < 40; ++i) {
    SCOPED_TRACE(i);
    std::vector<Curve> letters = {outline(kLetters[i % 6]), outline(kLetters[random.whole(0, 5)])};
    crv::Vector const shift = random.point(200) - Point();
    for (GxBezier& s : letters[1].getSegments()) {
      for (int k = 0; k < 4; ++k) s[k] = s[k] + shift;
    }
    auto const rule = crv::FillRule::nonZero;
    crv::Region const sum = crv::unite({letters[0]}, {letters[1]}, rule);
    crv::Region const rest = crv::subtract({letters[0]}, {letters[1]}, rule);
    expectOnSources(sum, letters);
    expectOnSources(rest, letters);
    for (unsigned k = 0; k < 60; ++k) {
      std::size_t const list = k % 2;
      Curve const& other = letters[1 - list];
      Position const p = anywhere(letters[list], random);
      Point const place = placeOf(letters[list], p);
      if (crv::nearest(other, place)->distance < 1e-6) continue;
      bool const isOutside = crv::winding({other}, place) == 0;
      EXPECT_EQ(timesCovered(sum, list, p, false), isOutside);
      EXPECT_EQ(timesCovered(rest, list, p, list == 1), isOutside == (list == 0));
    }
  }
}

TEST(Travel, ThroughSimplifyingThenSeparatingOrCuttingAndBothBack) {
  Random random(5);
  for (int i = 0; i < 100; ++i) {
    SCOPED_TRACE(i);
    Curve source = i % 4 ? chain(random, 2 + i % 6, i % 2 == 0) : outline(kLetters[i / 4 % 6]);
    for (int k = 0; k < 10; ++k) source = crv::withJoint(source, anywhere(source, random)).curve;
    crv::Simplified const lean = crv::simplify(source, 0.5);
    crv::Separated const separated = crv::separate(lean.curve);
    std::vector<Piece> parts = separated.rests;
    for (crv::Loop const& loop : separated.loops) parts.push_back(loop.piece);
    Position const one = anywhere(lean.curve, random), two = anywhere(lean.curve, random);
    for (auto const& pieces : {parts, crv::cut(lean.curve, {one, two})}) {
      for (int k = 0; k < 20; ++k) {
        Position const p = anywhere(source, random), middle = forth(lean.map, p).at;
        Point const place = placeOf(source, p), leanPlace = placeOf(lean.curve, middle);
        EXPECT_LE(leanPlace.distance(place), lean.worstDistance + kRounding);
        int images = 0;
        for (Piece const& piece : pieces) {
          Carried const there = forth(piece.map, middle);
          if (there.code != 0) continue;
          ++images;
          EXPECT_LE(placeOf(piece.curve, there.at).distance(leanPlace), kRounding);
          Position const home = back(lean.map, back(piece.map, there.at).at).at;
          EXPECT_LE(placeOf(source, home).distance(place), 2 * lean.worstDistance + kRounding);
          EXPECT_LE(placeOf(lean.curve, forth(lean.map, home).at).distance(leanPlace), kReturn);
        }
        EXPECT_EQ(images, 1);
      }
    }
  }
}

}  // namespace
