// Points, lines, solvers, matrices, the list.
#pragma once

#include "tests/support/world.h"

#include <algorithm>

namespace support {

/// A vector that follows the list's rules; indices run from -1, the cursor, to the length.
struct ListModel {
  std::vector<double> values;
  int cursor = 0;

  int size() const { return static_cast<int>(values.size()); }
  double at(int index) const { return values.begin()[index]; }

  void splice(std::vector<double> const& more, int index) {
    int const place = index == -1 ? cursor : index;
    values.insert(values.begin() + place, more.begin(), more.end());
    cursor = (place + static_cast<int>(more.size())) % size();
  }
  void insert(double value, int index) {
    splice({value}, index == -1 && cursor == 0 ? size() : index);  // the first stays the first
    cursor = 0;
  }
  void inject(std::vector<double> const& more, int index) {
    int const turn = index == -1 ? cursor : 0;
    splice(more, index);
    std::rotate(values.begin(), values.begin() + turn, values.end());
    cursor -= turn;
  }
  void remove(int index) {
    int const victim = index == -1 ? cursor : index;
    values.erase(values.begin() + victim);
    if (victim < cursor) --cursor;
    if (cursor == size()) cursor = 0;
  }
  int move(int from, int to) {
    if (from == to || min(from, to) < 0 || max(from, to) >= size()) return 0;
    double const value = at(from);
    remove(from);
    insert(value, to);
    return 1;
  }
};

/// Forty edits of a list and of its model.
inline void editList(World& w) {
  GxList<double> list;
  ListModel model;
  for (int step = 1; step <= 40; ++step) {
    int const n = model.size();
    auto const place = [&] { return static_cast<int>(w.below(unsigned(n + 2))) - 1; };
    int const index = place(), to = place();
    std::vector<double> const added{-2.0 * step, -2.0 * step - 1};
    GxList<double> more = listOf(added);
    double const* const moved = &more(0);
    switch (w.below(9) + (n == 0 ? 5 : 0)) {
      case 0:
        model.cursor = (index + 1) % n;
        w.require(list(unsigned(index + 1)) == model.at(model.cursor), "an index wraps");
        break;
      case 1:
        w.require(list.next() == ((model.cursor = (model.cursor + 1) % n) != 0), "next");
        break;
      case 2:
        w.require(list.prev() == ((model.cursor = (model.cursor + n - 1) % n) != 0), "prev");
        break;
      case 3: list.remove(index % n), model.remove(index % n); break;
      case 4: w.require(list.move(index, to) == model.move(index, to), "move"); break;
      case 5: list.insert(step, index), model.insert(step, index); break;
      case 6: list.inject(more, index), model.inject(added, index); break;
      case 7:
        list.add(step), list += more;
        model.values.insert(model.values.end(), {double(step), added[0], added[1]});
        break;
      case 8: list.empty(), model = ListModel(); break;
      default: w.require(list.next() + list.prev() == 0, "an empty list has no next");
    }
    GxList<double> const& same = list;
    std::vector<double> const visited(same.begin(), same.end());
    w.require(visited == model.values && list.length() == visited.size(), "the model's elements");
    w.require(visited == valuesOf(list) && std::equal(visited.begin(), visited.end(), list.begin()),
              "whichever way they are visited");
    if (!visited.empty()) w.require(list.curElement() == model.at(model.cursor), "the cursor");
    if (!visited.empty()) w.require(list.find(list.curElement()) == model.cursor, "it is found");
    auto const isAdded = [](double v, void* x) -> int { return v == *static_cast<double*>(x); };
    double wanted = added[0];
    w.require(list.firstThat(isAdded, &wanted) == (more.length() == 2 ? nullptr : moved),
              "elements are moved, not copied");
    w.require(list.find(0) == -1 && GxList<double>(list) == list && list != listOf<double>({0}),
              "comparisons");
    w.require(isRing(GxList<double>(list)), "a ring");
  }
}

/// Any indices are allowed; the list takes them modulo its length.
inline void abuseList(World& w) {
  GxList<double> list, other;
  unsigned n = 0;
  for (int i = 0; i < 20; ++i) {
    int const index = w.extremeInt();
    switch (w.below(6)) {
      case 0: list.insert(i, index), ++n; break;
      case 1: other.add(i), list.inject(other, index), ++n; break;
      case 2: list.remove(index), n -= n != 0; break;
      case 3: list.moveTo(static_cast<unsigned>(index)); break;
      case 4: list.inject(list, index), list.join(list); break;
      default: list.find(index), list.move(index, index);
    }
    w.require(list.length() == n && isRing(GxList<double>(list)), "the list counts its elements");
    w.see(list);
    w.see(list.next());
    w.see(n == 0 ? 0.0 : list.curElement());
  }
}

inline Operations const kFoundation{
    {"cubicRoots",
     [](World& w) {
       double k[4], roots[3];
       for (double& x : k) x = w.number();
       int const n = cubicRoots(k[0], k[1], k[2], k[3], roots);
       w.requireCode(n, 0, 3);
       for (int i = 0; i < n; ++i) {
         w.require(std::isfinite(roots[i]) && (i == 0 || roots[i - 1] < roots[i]), "roots ascend");
         w.see(roots[i]);
       }
       w.require(n == 0 || std::isfinite(k[0] * 0 + k[1] * 0 + k[2] * 0 + k[3] * 0), "no roots");
     }},
    {"quadraticSolve",
     [](World& w) {
       double const a = w.number(), b = w.number(), c = w.number(), tol = w.number();
       double r1 = 7.0, r2 = 8.0;
       int count = -1;
       GxQuadraticSolver().quadraticSolve(&count, &r1, &r2, a, b, c, tol, w.number());
       w.requireCode(count, 0, 2);
       w.require(count != 0 || (r1 == 7.0 && r2 == 8.0), "without roots the outputs stay");
       w.see(r1, r2);
     }},
    {"intersect",
     [](World& w) {
       Point const a = w.point(), b = w.point(), c = w.point(), d = w.point();
       Point out(3, 4), same(3, 4);
       int const parallel = intersect(out, a, b, c, d);
       w.require(intersect(&same, a, b, c, d) == parallel && sameBits(out, same), "both forms");
       w.require(!parallel || out == Point(3, 4), "without a crossing the point stays");
       w.requireCode(parallel, 0, 1);
       w.see(out);
     }},
    {"lines",
     [](World& w) {
       Point const a = w.point(), b = w.point(), p = w.point();
       double const tol = w.step();
       Point const nearest = closestToLineSegment(a, b, p);
       double const apart = nearest.distance(p);
       w.require(sameBits(apart, distanceToLineSegment(a, b, p)), "the nearest point's distance");
       w.require(pointOnLineSegment(p, a, b, tol) == (apart <= tol), "the tolerance is included");
       w.require(isEqual(a, b, tol) == (a.distance(b) <= tol), "isEqual compares the distance");
       w.see(nearest, apart, pointOnLineSegment(p, a, b, tol), quickCheckPointOnLine(p, a, b, tol));
       w.see(isEqual(a, b, tol), Are3PointsCCW(a, b, p));
     }},
    {"isPointInBox",
     [](World& w) {
       Point const p = w.point(), low = w.point(), high = w.point();
       w.see(isPointInBox(p, low.xval(), low.yval(), high.xval(), high.yval(), w.step()));
     }},
    {"vectors",
     [](World& w) {
       Vector const a = w.vector(), b = w.vector();
       Point p = w.point(), q = Point() + a;
       Vector sum = a;
       w.require(sameBits(sum += b, a + b), "+= is +");
       w.see(a + b, a - b, -a, a * 3.0, a * b, a.cross(b), a.length(), a.normalize());
       w.see(b.ortho(w.extremeInt()), p == q, p != q, p - q, p.distance(q), p.squaredDistance(q));
       p.scale(a.xval(), b.yval());
       w.see(p);
       w.see(p += b);
       pointsAverage(p, q);
       w.require(sameBits(p, q), "both points are the midpoint");
       w.see(p);
     }},
    {"angles",
     [](World& w) {
       Point const a = w.point(), b = w.point();
       Point p = w.point();
       w.see(angle(a, b, p), Gx2DRotate(w.number()) * a);
       p.rotate(w.number(), b);
       w.see(p);
     },
     kSystemsBits},
    {"Gx2DMatrix",
     [](World& w) {
       Gx2DMatrix<double> m, inverse;
       for (int i = 0; i < 4; ++i) m.set(i / 2, i % 2, w.coordinate());
       m.set(2, 0, 99.0), m.set(0, -1, 99.0);
       int const code = m.invert(inverse);
       w.requireCode(code, 0, 1);
       w.require(code || inverse * Point(1, 1) == Point(), "a singular matrix writes nothing");
       w.see(m * Point(1, 2), inverse * w.point());
     }},
    {"tolerances",
     [](World& w) {
       double const a = w.number(), b = w.number(), tol = w.number();
       w.see(IS_ZERO(a, tol), IS_EQUAL(a, b, tol), IS_ZERO(w.extremeInt()), min(a, b), max(a, b));
       w.require(!(IS_ZERO(kNaN, tol) || IS_EQUAL(a, kNaN, tol)), "NaN equals nothing");
     }},
    {"GxList", editList},
    {"GxListIndices", abuseList},
};

}  // namespace support
