// Contacts of polylines on small grids, where many branches meet in joints and run along each
// other, against contacts that are decided without rounding.
#include "crv/accurate/curveContacts.h"
#include "crv/accurate/separate.h"
#include "tests/support/shapes.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <set>
#include <tuple>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace {

using crv::ContactKind;
using crv::CurveContacts;
using support::Random;

/// A vector with integer coordinates. They are so small that all products are exact.
using Vec = std::complex<double>;

double cross(Vec a, Vec b) { return std::imag(std::conj(a) * b); }
double dot(Vec a, Vec b) { return std::real(std::conj(a) * b); }

/// A place on a polyline: the number of its segment plus the share of it, in units of 1e-9. The
/// shares are quotients of small integers, so different ones differ by many units, and equal ones
/// are rounded to the same unit.
using Place = long long;
constexpr Place kSegment = 1000000000;

Place placeOn(int segment, double share) { return segment * kSegment + std::llround(share * 1e9); }

struct Polyline {
  std::vector<Vec> joints;
  bool closed;

  int size() const { return static_cast<int>(joints.size()) - (closed ? 0 : 1); }
  Place end() const { return size() * kSegment; }
  bool isEnd(Place p) const { return !closed && (p == 0 || p == end()); }
  Place normalised(Place p) const { return closed ? p % end() : p; }
  Vec joint(int i) const { return joints[static_cast<std::size_t>(i) % joints.size()]; }
  Vec side(int i) const { return joint(i + 1) - joint(i); }
  Vec after(Place p) const { return side(int(p / kSegment)); }
  Vec before(Place p) const { return -side(int((p + end() - 1) / kSegment) % size()); }

  /// The length from one place to another, over the seam unless that is behind it.
  double length(Place from, Place to) const {
    double sum = from < to ? 0.0 : length(0, end());
    for (int i = 0; i < size(); ++i) {
      auto const share = [i](Place p) { return std::clamp(double(p) * 1e-9 - i, 0.0, 1.0); };
      sum += std::abs(side(i)) * (share(to) - share(from));
    }
    return sum;
  }
};

using Places = std::set<std::pair<Place, Place>>;
using Contacts = std::multiset<std::tuple<Place, Place, ContactKind>>;

struct Truth {
  Contacts contacts;
  Places points, starts, ends;  // all common points of two segments, and of links their ends
  double linked = 0.0;          // the length of all links
};

/// Adds the point that segment i of a has in common with segment k of b, or the link: the stretch
/// along which they run together.
void meet(Polyline const& a, int i, Polyline const& b, int k, Truth& truth) {
  Vec const d = a.side(i), e = b.side(k), apart = b.joint(k) - a.joint(i);
  double const det = cross(d, e);
  if (det == 0.0 && cross(apart, d) != 0.0) return;
  std::set<std::pair<double, double>> shares;  // of the crossing, or of the ends of the link
  auto const add = [&](double s, double w) {
    if (std::min(s, w) >= 0.0 && std::max(s, w) <= 1.0) shares.insert({s, w});
  };
  if (det != 0.0) {
    add(cross(apart, e) / det, cross(apart, d) / det);
  } else {
    for (int end : {0, 1}) {
      add(dot(d, b.joint(k + end) - a.joint(i)) / dot(d, d), end);
      add(end, dot(e, a.joint(i + end) - b.joint(k)) / dot(e, e));
    }
  }
  if (shares.empty()) return;
  auto const placesOf = [&](std::pair<double, double> const& s) {
    return std::pair(a.normalised(placeOn(i, s.first)), b.normalised(placeOn(k, s.second)));
  };
  auto const &first = *shares.begin(), &last = *shares.rbegin();
  (first == last ? truth.points : truth.starts).insert(placesOf(first));
  if (first != last) truth.ends.insert(placesOf(last));
  truth.linked += (last.first - first.first) * std::abs(d);
}

/// Whether v points into the angle that is swept counter-clockwise from one vector to another.
bool isInAngle(Vec from, Vec to, Vec v) {
  bool const isLeft = cross(from, v) > 0, isRight = cross(v, to) > 0;
  bool const isReflex = cross(from, to) < 0 || (cross(from, to) == 0 && dot(from, to) < 0);
  return isReflex ? isLeft || isRight : isLeft && isRight;
}

/// The kind of a contact at which no branch runs along another.
ContactKind kindAt(Polyline const& a, Place p, Polyline const& b, Place q) {
  if (a.isEnd(p) || b.isEnd(q)) return ContactKind::end;
  auto const isLeft = [&](Vec v) { return isInAngle(a.after(p), a.before(p), v); };
  bool const changesSide = isLeft(b.before(q)) != isLeft(b.after(q));
  return changesSide ? ContactKind::crossing : ContactKind::touching;
}

/// The contacts of two polylines, or of one with itself if they are the same object.
Truth truthOf(Polyline const& a, Polyline const& b) {
  bool const isSelf = &a == &b;
  Truth truth;
  for (int i = 0; i < a.size(); ++i) {
    for (int k = 0; k < b.size(); ++k) {
      if (!isSelf || i != k) meet(a, i, b, k, truth);
    }
  }
  if (isSelf) truth.linked /= 2;  // it contains each link from both of its sides
  for (auto const& [p, q] : truth.points) {
    bool const isLinked = truth.starts.count({p, q}) + truth.ends.count({p, q}) > 0;
    if (!isLinked && (!isSelf || p < q)) truth.contacts.insert({p, q, kindAt(a, p, b, q)});
  }
  return truth;
}

/// How polylines become curves. Joints are moved, and multiplied by 3 so that thirds are integers.
struct Form {
  double scale, shift;
  bool isRetracted;  // with the handles on the ends of each segment
};

crv::Curve curveOf(Polyline const& c, Form const& form) {
  crv::Curve curve;
  for (int i = 0; i < c.size(); ++i) {
    Vec const shift(form.shift, form.shift), factor = form.scale * 3.0;
    Vec const p = factor * (c.joint(i) + shift), q = factor * (c.joint(i + 1) + shift);
    curve.getSegments().add((form.isRetracted ? support::retractedLine : support::evenLine)(
        p.real(), p.imag(), q.real(), q.imag()));
  }
  curve.setStrictIsClosed(c.closed);
  return curve;
}

Place placeOf(crv::Position const& p, Form const& form) {
  double const t = p.getTValue();
  return placeOn(int(p.getSegmentNumber()), form.isRetracted ? t * t * (3.0 - 2.0 * t) : t);
}

/// Compares the contacts of two polylines, or of one with itself, and returns the true ones.
/// Overlaps have to start and end where links do, and to be as long as all links together.
Truth expectExact(Polyline const& a, Polyline const& b, Form const& form) {
  CurveContacts const found = &a == &b ? crv::selfContacts(curveOf(a, form))
                                       : crv::contacts(curveOf(a, form), curveOf(b, form));
  Truth truth = truthOf(a, b);
  Contacts contacts;
  for (crv::CurveContact const& c : found.points) {
    contacts.insert({placeOf(c.first, form), placeOf(c.second, form), c.kind});
  }
  EXPECT_EQ(contacts, truth.contacts);
  double length = 0.0;
  for (crv::CurveOverlap const& o : found.overlaps) {
    Place const from = placeOf(o.from, form), otherFrom = placeOf(o.otherFrom, form);
    Place const to = placeOf(o.to, form), otherTo = placeOf(o.otherTo, form);
    EXPECT_EQ(truth.starts.count({a.normalised(from), b.normalised(otherFrom)}), 1u);
    EXPECT_EQ(truth.ends.count({a.normalised(to), b.normalised(otherTo)}), 1u);
    EXPECT_NEAR(a.length(from, to),
                o.sameSense ? b.length(otherFrom, otherTo) : b.length(otherTo, otherFrom), 1e-6);
    length += a.length(from, to);
  }
  EXPECT_NEAR(length, truth.linked, 1e-6);
  return truth;
}

/// A polyline of 2 to 7 joints on a grid of n by n, without segments that are points.
Polyline randomPolyline(Random& random, int n, bool closed) {
  Polyline c = {{}, closed};
  auto const count = static_cast<std::size_t>(random.whole(2, 7));
  while (c.joints.size() < count || (closed && c.joints.back() == c.joints.front())) {
    double const x = random.whole(0, n - 1), y = random.whole(0, n - 1);
    if (c.joints.empty() || c.joints.back() != Vec(x, y)) c.joints.emplace_back(x, y);
  }
  return c;
}

TEST(GridContacts, AreExactInEveryForm) {
  std::size_t kinds[3] = {}, links = 0;
  for (int i = 0; i < 16000 && !HasFailure(); ++i) {
    SCOPED_TRACE(i);
    Random random(static_cast<unsigned long long>(i));
    int const n = 3 + i / 4 % 4;
    Polyline const a = randomPolyline(random, n, i % 2 != 0);
    Polyline const b = randomPolyline(random, n, i / 2 % 2 != 0);
    Form const plain = {1.0, 0.0, i / 16 % 2 != 0};
    Form const scaled = {std::ldexp(1.0, random.whole(-60, 60)), 0.0, plain.isRetracted};
    Form const moved = {1.0, double(random.whole(-999, 999)), plain.isRetracted};
    Polyline const reversed = {{a.joints.rbegin(), a.joints.rend()}, a.closed};
    for (Form const& form : {plain, scaled, moved}) {
      expectExact(a, a, form);
      expectExact(a, b, form);
    }
    expectExact(reversed, reversed, plain);
    expectExact(reversed, b, plain);
    Truth const truth = expectExact(b, a, plain);
    for (auto const& c : truth.contacts) ++kinds[int(std::get<ContactKind>(c))];
    links += truth.starts.size();
  }
  if (HasFailure()) return;
  for (std::size_t count : kinds) EXPECT_GT(count, 2000u);
  EXPECT_GT(links, 5000u);
}

TEST(GridContacts, SeparatedPiecesDoNotCross) {
  // The least common multiple of 1 .. 18, the denominators of crossings on a grid of 4 by 4.
  constexpr double kFine = 12252240.0;
  std::size_t cuts = 0;
  for (int i = 0; i < 4000 && !HasFailure(); ++i) {
    SCOPED_TRACE(i);
    Random random(static_cast<unsigned long long>(i));
    Polyline const source = randomPolyline(random, 3 + i / 2 % 2, i % 2 != 0);
    crv::Separated separated = crv::separate(curveOf(source, {1.0, 0.0, false}));
    for (crv::Loop const& loop : separated.loops) separated.rests.push_back(loop.piece);
    std::vector<Polyline> pieces;
    double length = 0.0;
    for (crv::Piece const& piece : separated.rests) {
      Polyline c = {{}, piece.curve.strictIsClosed() != 0};
      for (int k = 0; k <= int(piece.curve.length()) - (c.closed ? 1 : 0); ++k) {
        crv::Point const p = k == 0 ? piece.curve[0][0] : piece.curve[k - 1][3];
        c.joints.emplace_back(std::round(p.xval() * kFine / 3), std::round(p.yval() * kFine / 3));
      }
      length += c.length(0, c.end()) / kFine;
      pieces.push_back(c);
    }
    EXPECT_NEAR(length, source.length(0, source.end()), 1e-9);
    for (Polyline const& a : pieces) {
      for (Polyline const& b : pieces) {
        for (auto const& c : truthOf(a, b).contacts) {
          EXPECT_NE(std::get<ContactKind>(c), ContactKind::crossing);
        }
      }
    }
    cuts += pieces.size() - 1;
  }
  EXPECT_TRUE(HasFailure() || cuts > 1000);
}

}  // namespace
