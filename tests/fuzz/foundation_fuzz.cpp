// Solvers, lines, matrices, the list.
#include "input.h"

namespace {

using namespace fuzz;
using Point = GxCoord<double>;

void fuzzSolvers(Input& in) {
  double roots[3], k[4];
  for (double& x : k) x = in.flip() ? in.raw() : in.coordinate();
  int const n = cubicRoots(k[0], k[1], k[2], k[3], roots);
  requireCode(n, 0, 3);
  for (int i = 0; i < n; ++i) require(!std::isnan(roots[i]), "a root is a number");
  for (int i = 1; i < n; ++i) require(roots[i - 1] < roots[i], "roots ascend");
  int count = -1;
  double r1 = 7.0, r2 = 8.0;
  GxQuadraticSolver().quadraticSolve(&count, &r1, &r2, k[0], k[1], k[2], 1e-20, 1e-9);
  requireCode(count, 0, 2);
  require(count != 0 || (r1 == 7.0 && r2 == 8.0), "without roots the outputs stay");
}

void fuzzLines(Input& in) {
  Point const a = in.point(), b = in.point(), c = in.point(), d = in.point();
  Point out(3.0, 4.0);
  if (intersect(&out, a, b, c, d) != 0) require(out == Point(3.0, 4.0), "untouched");
  double const tol = in.step(), apart = closestToLineSegment(a, b, c).distance(c);
  require(sameBits(apart, distanceToLineSegment(a, b, c)), "the distance of the nearest point");
  pointOnLineSegment(a, b, c, tol);
  quickCheckPointOnLine(a, b, c, tol);
  isPointInBox(a, b.xval(), b.yval(), c.xval(), c.yval(), tol);
  angle(a, b, c);
  requireCode(Are3PointsCCW(a, b, c), -1, 1);
  require(isEqual(a, b, tol) == (a.distance(b) <= tol), "isEqual compares the distance");
  Gx2DMatrix<double> m, inverse;
  for (int i = -1; i < 3; ++i) m.set(i, in.flip(), in.coordinate());
  m.invert(inverse);
  inverse* a;
  Point e = Gx2DRotate(in.raw()) * a;
  e.rotate(in.raw(), b);
  pointsAverage(e, out);
  require(sameBits(e, out), "both points are the midpoint");
  (a - b).normalize().ortho(in.extremeInt());
}

/// Any operations with any indices: counts stay right, and the ring stays a ring.
void fuzzList(Input& in) {
  GxList<double> list, other;
  unsigned expected = 0;
  for (int i = 0; i < 40 && !in.isEmpty(); ++i) {
    int const index = in.chance(4) ? in.extremeInt() : static_cast<int>(in.below(12)) - 3;
    switch (in.below(12)) {
      case 0: list.insert(i, index), ++expected; break;
      case 1: list.add(i), ++expected; break;
      case 2:
        in.flip() ? list.remove(index) : list.removeByIndex(index);
        expected -= expected != 0;
        break;
      case 3: list.move(index, static_cast<int>(in.below(8))); break;
      case 4: other.add(-i), list.inject(other, index), ++expected; break;
      case 5: other.add(-i), list += other, ++expected; break;
      case 6: list.next(); break;
      case 7: list.prev(); break;
      case 8: list.moveTo(static_cast<unsigned>(index)); break;
      case 9: list.inject(list, index), list.join(list); break;
      case 10: list.find(index), require(GxList<double>(list) == list, "a copy is equal"); break;
      default:
        if (expected != 0) list(static_cast<unsigned>(index)) = i;
    }
    require(list.length() == expected, "the list counts its elements");
  }
  unsigned visited = 0;
  list.forEach([](double, void* count) { ++*static_cast<unsigned*>(count); }, &visited);
  require(visited == expected, "every element is visited");
  require(list.firstThat([](double, void*) { return 0; }, nullptr) == nullptr, "none is wanted");
  list.first();
  unsigned steps = 0;
  while (expected != 0 && ++steps < expected && list.next()) continue;
  require(steps == expected, "the ring has as many nodes as elements");
  list.prev();
  list.next();
  require(list.next() == 0 || expected < 2 || list.length() == expected, "the ring closes");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  Input in(data, size);
  void (*const rooms[])(Input&) = {fuzzSolvers, fuzzLines, fuzzList};
  rooms[in.below(3)](in);
  return 0;
}
