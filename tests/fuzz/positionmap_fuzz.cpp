// Positions, maps and edits.
#include <list>

#include "input.h"

namespace {

using namespace fuzz;
using MapHandle = GxHandle<GxBezierCurvePositionMapBase>;
using Position = GxBezierCurvePosition;

void predicates(Input& in, GxBezierCurve c) {
  Position const p = in.position(c), a = in.position(c), b = in.position(c);
  int const closed = in.flip();
  if (isStrictBetweenPosition(p, a, b, closed)) {
    require(isBetweenPosition(p, a, b, closed) != 0, "strictly between is between");
  }
  if (isBetweenPosition(p, a, b, closed)) {
    require(isBothInclusiveBetweenPosition(p, a, b, closed) != 0, "and inclusively so");
  }
  Position const other = in.position(c);
  isBothInclusiveBetweenPosition(p, a, b, other, closed);
  isEqual(c, a, b, in.step());
  snapToAnchor(p, in.step());
  Position moved;
  adjustBezierCurvePosition(moved, p, c, in.parameter());
  PosDiff const d = diff(a, b, in.flip(), static_cast<int>(c.length()));
  ratio(d, diff(p, b, in.flip(), in.extremeInt()));
  require(!(d < d), "nothing is less than itself");
  unsigned long const n = c.length();
  in.flip() ? arrangeBezierCurve(c, a, b) : arrangeBezierCurve(c, in.point(), in.point());
  require(c.length() == n || c.length() == n + 1, "at most one segment is cut");
}

void mapAll(Input& in, GxBezierCurve const& c, MapHandle const& map) {
  if (map.isNull()) return;
  std::list<Position> positions;
  for (unsigned n = in.below(6); n != 0; --n) positions.push_back(in.position(c));
  std::list<Position> out(in.below(2));
  std::size_t const before = out.size();
  requireCode(map->transform({}, out, positions), -1, 0);
  require(out.size() == before + positions.size(), "a position for every one");
  for (Position const& p : positions) {
    Position q;
    requireCode(map->inverseMapPosition(q, p), -1, 0);
    q = p;
    requireCode(map->mapPosition(q, q), -1, 0);
  }
}

void maps(Input& in, GxBezierCurve c) {
  MapHandle const all[] = {
      constructIdentityPositionMap(),
      constructReversePositionMap(in.extremeInt()),
      constructRotatePositionMap(in.extremeInt(), in.extremeInt(), in.extremeInt()),
      constructSingletonPositionMap(in.position(c), c),
      constructRangePositionMap(c, in.flip(), in.extremeInt(), in.flip(), in.position(c),
                                in.position(c), c.lastPos()),
      MapHandle(),
  };
  MapHandle const first = all[in.below(6)];
  MapHandle const both = constructCompositePositionMap(first, all[in.below(6)]);
  mapAll(in, c, first);
  mapAll(in, c, both);
  MapHandle sole = constructRotatePositionMap(1, 1, in.extremeInt());
  require(sole.isValid() && MapHandle(sole.detach()).isValid(), "a sole owner detaches");
  translate(c, in.flip(), in.position(c), in.flip());
}

void edits(Input& in, GxBezierCurve c) {
  GxBezierCurve dst = in.curve();
  GxBezierCurve const dstBefore = dst, source = c;
  MapHandle map;
  int const code = copyGxBezierCurve(dst, c, in.position(c), in.position(c), in.flip(), map);
  requireCode(code, -1, 0);
  require(sameBits(c, source), "the source stays");
  require(dst.length() >= dstBefore.length(), "a copy only appends");
  require(sameBits(dst, dstBefore, static_cast<int>(dstBefore.length())), "what was there stays");
  if (code != 0) require(dst.length() == dstBefore.length(), "a refusal changes nothing");
  mapAll(in, c, map);

  MapHandle reversal;
  require(reverseGxBezierCurve(c, reversal) == 0, "reversed");
  require(c.length() == source.length(), "as many segments");
  mapAll(in, c, reversal);

  GxBezierCurve second = dst;
  GxBezierCurve const whole = c;
  MapHandle firstMap, secondMap;
  if (spliteGxBezierCurve(in.position(c), c, second, firstMap, secondMap) != 0) {
    require(sameBits(c, whole) && sameBits(second, dst), "a refusal changes nothing");
    require(firstMap.isNull() && secondMap.isNull(), "and makes no map");
  } else {
    require(c.length() + second.length() >= whole.length(), "nothing is lost but what is stated");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  Input in(data, size);
  GxBezierCurve const c = in.curve();
  void (*const topics[])(Input&, GxBezierCurve) = {predicates, maps, edits};
  topics[in.below(3)](in, c);
  return 0;
}
