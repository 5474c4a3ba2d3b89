// Contacts of two segments: known answers, and independence of the order and direction of the
// arguments, their position and their size.
#include "crv/accurate/contacts.h"

#include "tests/support/data.h"
#include "tests/support/expect.h"
#include "tests/support/shapes.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

using crv::ContactKind;
using crv::contacts;
using crv::Segment;
using crv::SegmentContacts;
using support::Numbers;

// Parameter: the answers are known to eight digits.
constexpr double kNearParameter = 1e-8;

struct Case {
  std::string name;
  Segment a, b;
  Numbers expected;  // pairs of parameters
};

/// The line segment from (n0, n1) to (n2, n3), or the cubic with these eight coordinates.
Segment segmentFrom(Numbers const& n) {
  if (n.size() == 8) return support::segmentOf(n);
  auto const at = [&](std::size_t i, double s) { return n[i] + (n[i + 2] - n[i]) * s; };
  double const third = 1.0 / 3.0;
  return support::segmentOf(
      {n[0], n[1], at(0, third), at(1, third), at(0, 2.0 * third), at(1, 2.0 * third), n[2], n[3]});
}

std::vector<Case> casesOf(std::string const& file) {
  std::vector<Case> cases;
  for (std::string const& line : support::linesOf("hard_cases/" + file)) {
    if (line.empty() || line[0] == '#') continue;
    auto const parts = support::partsOf(std::istringstream(line + "| "), '|');
    auto const n = support::numbersIn({parts.begin() + 1, parts.end()});
    cases.push_back({parts[0], segmentFrom(n[0]), segmentFrom(n[1]), n[2]});
  }
  return cases;
}

void expectParameters(SegmentContacts const& found, Numbers expected) {
  ASSERT_EQ(found.points.size(), expected.size() / 2);
  for (auto const& contact : found.points) {
    auto const isContact = [&](std::size_t i) {
      return std::fabs(contact.t - expected[i]) + std::fabs(contact.u - expected[i + 1]) <
             kNearParameter;
    };
    std::size_t i = 0;
    while (i < expected.size() && !isContact(i)) i += 2;
    ASSERT_LT(i, expected.size()) << contact.t << " " << contact.u << " is unexpected";
    expected.erase(expected.begin() + long(i), expected.begin() + long(i) + 2);
  }
}

Segment reversed(Segment const& s) { return Segment(s[3], s[2], s[1], s[0]); }

/// s times a power of two, moved by whole multiples of the last place of its coordinates.
Segment changed(Segment const& s, double factor, double dx = 0.0, double dy = 0.0) {
  Segment result = s;
  for (int i = 0; i < 4; ++i) {
    result[i] = crv::Point(s[i].xval() * factor + dx, s[i].yval() * factor + dy);
  }
  return result;
}

/// All arrangements of two segments have the same contacts.
void expectInAllArrangements(Segment const& a, Segment const& b, Numbers const& expected) {
  Numbers swapped, turned;
  for (std::size_t i = 0; i < expected.size(); i += 2) {
    swapped.insert(swapped.end(), {expected[i + 1], expected[i]});
    turned.insert(turned.end(), {1.0 - expected[i], expected[i + 1]});
  }
  SegmentContacts const plain = contacts(a, b);
  expectParameters(plain, expected);
  expectParameters(contacts(b, a), swapped);
  expectParameters(contacts(reversed(a), b), turned);
  for (double const factor : {0x1p-480, 0x1p30, 0x1p480}) {
    SegmentContacts const scaled = contacts(changed(a, factor), changed(b, factor));
    ASSERT_EQ(scaled.points.size(), plain.points.size());
    for (std::size_t i = 0; i < plain.points.size(); ++i) {
      EXPECT_EQ(scaled.points[i].t, plain.points[i].t);
      EXPECT_EQ(scaled.points[i].u, plain.points[i].u);
      EXPECT_EQ(scaled.points[i].kind, plain.points[i].kind);
      EXPECT_EQ(scaled.points[i].point.xval(), plain.points[i].point.xval() * factor);
    }
  }
}

TEST(SegmentContacts, AreThoseOfTheHardCases) {
  for (std::string const file : {"segments", "lines"}) {
    for (Case const& c : casesOf(file)) {
      SCOPED_TRACE(c.name);
      // The ends differ by a rounding error: in exact arithmetic there is no contact, but users
      // expect one.
      bool const isRounded = c.name.find("1284a") != std::string::npos;
      expectInAllArrangements(c.a, c.b, isRounded ? Numbers{0.0, 0.0} : c.expected);
    }
  }
}

TEST(SegmentContacts, TellCrossingTouchingAndEndApart) {
  struct {
    char const* name;
    Segment a, b;
    ContactKind kind;
  } const rows[] = {
      {"diagonals", segmentFrom({0, 0, 4, 4}), segmentFrom({0, 4, 4, 0}), ContactKind::crossing},
      {"arches tip to tip", segmentFrom({0, 0, 0, 8, 10, 8, 10, 0}),
       segmentFrom({0, 12, 0, 4, 10, 4, 10, 12}), ContactKind::touching},
      {"an arch on a line", segmentFrom({0, 0, 0, 8, 10, 8, 10, 0}), segmentFrom({-3, 6, 14, 6}),
       ContactKind::touching},
      {"an inflection along its tangent", segmentFrom({-1, -1, 0, 1, 0, -1, 1, 1}),
       segmentFrom({-1, 1, 1, -1}), ContactKind::crossing},
      {"the sides of a tip, which rounding makes cross beside it",
       segmentFrom({350, 686, 312.30622003537087, 683.02417526595025, 219.5113467956551,
                    683.00019481449476, 176.04941598208089, 683.00000156989756}),
       segmentFrom({176.04941598208089, 683.00000156989756, 176.36884554335387, 683,
                    176.68572153503706, 683, 177, 683}),
       ContactKind::end},
      {"two crossings 4e-9 apart, which enclose less than a rounding",
       segmentFrom({0, 0, 1.0 / 3, 4.0 / 3, 2.0 / 3, 4.0 / 3, 1, 0}),
       segmentFrom({1, 0.1, -0.11483356035728698, 1.1 / 3, -0.11483356035728698, 2.0 / 3, 1, 1}),
       ContactKind::touching},
      {"a cusp on a line", segmentFrom({328, -216, -476, 2476, -124, 548, -24, 1712}),
       segmentFrom({3761, -4367, 1129, -575, -1503, 3217, -4135, 7009}), ContactKind::touching},
      {"a line beside a cusp, moved by rounding",
       segmentFrom({525.88867440350248, 333.27750272089895, 544.91634714107886, 320.10333947656909,
                    552.68212362705799, 277.60650308494917, 549.18600386144067,
                    227.16623402675847}),
       segmentFrom({495.33027259126652, 260.66356778525773, 562.41703327258506, 274.57860203951452,
                    567.76075527368585, 201.13730254693496, 511.36143859456962,
                    314.78572171688097}),
       ContactKind::touching},
      {"an end of both, beside which rounding turns one back",
       segmentFrom({0, 1, 0.17539612720032563, 0.8246038727996744, 0.32002845296377841,
                    0.67997154703622165, 0.43929282892034577, 0.56610302270964163}),
       segmentFrom({0.43750000000000011, 0.56250000000000022, 5.5511151231257827e-17,
                    1.0000000000000002, 0, 1, 0, 1}),
       ContactKind::end},
      {"an end on a line", segmentFrom({0, 0, 4, 4}), segmentFrom({0, 8, 8, 0}), ContactKind::end},
  };
  for (auto const& row : rows) {
    SCOPED_TRACE(row.name);
    SegmentContacts const found = contacts(row.a, row.b);
    EXPECT_EQ(found.overlaps.size(), 0u);
    ASSERT_GE(found.points.size(), 1u);
    EXPECT_EQ(found.points[0].kind, row.kind);
  }
  // Both branches of a cusp on a line along its axis give one contact.
  Segment const cusp = segmentFrom({3, 2, 0, 1, 2, 3, 1, 0});
  Segment const axis = segmentFrom({1, 2, 0, 3, 2, 1, 2, 1});
  Segment before = segmentFrom({-2, 7, -4, 6, -6, 11, 0, 2}), rest;
  before.split(rest, 0.375);
  Segment const line = segmentFrom({-8, 11.5, -2, 5.5});
  for (SegmentContacts const& found :
       {contacts(cusp, axis), contacts(axis, cusp), contacts(rest, line), contacts(line, rest)}) {
    ASSERT_EQ(found.points.size(), 1u);
    EXPECT_EQ(found.points[0].kind, ContactKind::crossing);
  }
  // A copy moved by little more than the resolution crosses where the segment runs in the direction
  // of the motion.
  Segment const bow = segmentFrom({-0.65, 0.31, 0.39, -0.96, 0.75, 0.7, -0.63, 0.69});
  for (double const motion : {1.25e-12, 2.5e-12}) {
    Segment const copy = changed(bow, 1.0, motion, 0.0);
    SegmentContacts const found = contacts(bow, copy);
    ASSERT_EQ(found.points.size(), 2u);
    for (auto const& c : found.points) {
      EXPECT_EQ(c.kind, ContactKind::crossing);
      EXPECT_LT(bow.bValue(c.t).distance(copy.bValue(c.u)), 0x1p-47);
    }
  }
}

TEST(SegmentContacts, GiveSharedStretchesAsIntervals) {
  Segment const arch = segmentFrom({0, 0, 1, 4, 5, 3, 6, 0});
  Segment head = arch, middle = arch;
  Segment rest;
  head.split(rest, 0.75);
  middle = head;
  middle.split(rest, 1.0 / 3.0);
  Segment const tail = rest;  // [0.25, 0.75] of the arch
  double const r = 0x1p-40;   // the resolution of segments of size 1
  Segment const cusp = segmentFrom({0, 0, 1, 1, 0, 1, 1, 0}), loop = support::loop();
  Segment const leaf = segmentFrom({0, 0, 3, 1, 1, 3, 0, 0});
  // A cubic with a loop in its middle, 3 size long and about 2 size^1.5 wide.
  auto const looped = [](double size) {
    return segmentFrom({3, -3 + 3 * size, -1, 3 + size, -1, -3 - size, 3, 3 - 3 * size});
  };
  Segment toTip = looped(0x1p-20);
  toTip.split(rest, 0.5);
  auto const moved = [](Segment const& s, double by) { return changed(s, 1.0, by, by); };
  auto const firstPart = [](Segment s) {
    Segment behind;
    s.split(behind, 0.75);
    return s;
  };
  struct {
    char const* name;
    Segment a, b;
    std::vector<Numbers> overlaps;
    std::size_t points = 0;  // where the stretch crosses itself
  } const rows[] = {
      {"itself", arch, arch, {{0, 1, 0, 1}}},
      {"itself reversed", arch, reversed(arch), {{0, 1, 1, 0}}},
      {"a part", arch, tail, {{0.25, 0.75, 0, 1}}},
      {"two parts", head, reversed(tail), {{1.0 / 3.0, 1, 1, 0}}},
      {"lines at other speeds",
       segmentFrom({0, 0, 3, 6}),
       segmentFrom({1, 2, 1, 2, 4, 8, 4, 8}),
       {{1.0 / 3.0, 1, 0, 0.61303685689}}},
      {"a line that turns back",
       segmentFrom({0, 0, 6, 0}),
       segmentFrom({1, 0, 5, 0, 5, 0, 1, 0}),
       {{1.0 / 6.0, 4.0 / 6.0, 0, 0.5}, {1.0 / 6.0, 4.0 / 6.0, 1, 0.5}}},
      {"a line that turns back at its end by a rounding",
       segmentFrom({0, 0, -1, -1, -1, -1, -1, -1 + 0x1p-50}),
       segmentFrom({-1 + 0x1p-50, -1 + 0x1p-50, 0, 0}),
       {{0, 1, 1, 0}}},
      {"a graph that leaves a line",
       segmentFrom({0, 0, 1, 0}),
       segmentFrom({0, 0.5 * r, 1.0 / 3.0, 0.5 * r, 2.0 / 3.0, 0.5 * r, 1, 4.0 * r}),
       {{0, std::cbrt(1.0 / 7.0), 0, std::cbrt(1.0 / 7.0)}}},
      {"a cusp beside itself", cusp, moved(cusp, 0x1p-50), {{0, 1, 0, 1}}},
      {"a part of a cusp beside itself", cusp, firstPart(moved(cusp, 0x1p-50)), {{0, 0.75, 0, 1}}},
      {"a loop", loop, reversed(loop), {{0, 1, 1, 0}}, 2},
      {"a loop and its end", loop, reversed(firstPart(loop)), {{0, 0.75, 1, 0}}, 1},
      {"a small loop", looped(0x1p-18), reversed(looped(0x1p-18)), {{0, 1, 1, 0}}, 2},
      {"a small loop as far as its tip", looped(0x1p-20), toTip, {{0, 0.5, 0, 1}}, 1},
      {"a narrow loop", looped(0x1p-30), looped(0x1p-30), {{0, 1, 0, 1}}},
      {"a leaf", leaf, moved(leaf, 0x1p-50), {{0, 1, 0, 1}}, 2},
  };
  for (auto const& row : rows) {
    SCOPED_TRACE(row.name);
    SegmentContacts const found = contacts(row.a, row.b);
    EXPECT_EQ(found.points.size(), row.points);
    ASSERT_EQ(found.overlaps.size(), row.overlaps.size());
    for (std::size_t i = 0; i < row.overlaps.size(); ++i) {
      EXPECT_NEAR(found.overlaps[i].t0, row.overlaps[i][0], kNearParameter);
      EXPECT_NEAR(found.overlaps[i].t1, row.overlaps[i][1], kNearParameter);
      EXPECT_NEAR(found.overlaps[i].u0, row.overlaps[i][2], kNearParameter);
      EXPECT_NEAR(found.overlaps[i].u1, row.overlaps[i][3], kNearParameter);
    }
  }
}

TEST(SegmentContacts, AnswerAnyInput) {
  double const inf = std::numeric_limits<double>::infinity();
  Segment const line = segmentFrom({0, 0, 3, 6}), origin = segmentFrom({0, 0, 0, 0, 0, 0, 0, 0});
  for (double const bad : {inf, -inf, inf - inf, 1e300, 1e-310}) {
    SegmentContacts const found = contacts(segmentFrom({bad, 0, 0, bad}), origin);
    EXPECT_TRUE(found.points.empty() && found.overlaps.empty()) << bad;
  }
  expectParameters(contacts(origin, origin), {0, 0});
  expectParameters(contacts(line, origin), {0, 0});
  expectParameters(contacts(segmentFrom({1, 2, 1, 2}), line), {0, 1.0 / 3.0});
  // One segment turns back next to the other's end, where Newton's method stops beside both.
  expectParameters(
      contacts(segmentFrom({-2, -2, -0.99999999999999956, -0.99999999999999956, -3.97625732421875,
                            -3.97625732421875, 1.0000000000000016, 1.0000000000000016}),
               segmentFrom({0, -2, 0, -2, 38.400268554687685, 38.400268554687685, -2, -2})),
      {0, 1});
  // Newton's methods do not find this crossing, which is three in one.
  Segment const bent = changed(segmentFrom({0, -5, -8, -1, 1, 2, -4, 0}), 1.0, 1234, -777);
  Segment const across = changed(segmentFrom({-7, -4, -7, -4, 0, 3, 0, 3}), 1.0, 1234, -777);
  SegmentContacts const triple = contacts(bent, across, 0x1p-29);
  ASSERT_EQ(triple.points.size(), 1u);
  EXPECT_LE(bent.bValue(triple.points[0].t).distance(across.bValue(triple.points[0].u)),
            64 * 0x1p-53 * 1242);
  // The side also changes where one segment passes far from the other's end.
  Segment const wide =
      segmentFrom({-1, -1, 93.768310546875, 8.4625244140625, 0, 15.7470703125, 1, 0});
  Segment const narrow =
      segmentFrom({-1.0000000000010001, -1, 6.9999999999989999, 7, 0.099999999999,
                   0.10000000000000019, -1.0000000000010001, -1});
  for (crv::SegmentContact const& c : contacts(wide, narrow, 1.0).points) {
    EXPECT_LE(wide.bValue(c.t).distance(narrow.bValue(c.u)), 1.0);
  }
  for (double const resolution : {-1.0, inf - inf, inf, 1e-300, 1.0}) {
    EXPECT_EQ(contacts(line, segmentFrom({0, 6, 6, 0}), resolution).points.size(), 1u);
  }
}

}  // namespace
