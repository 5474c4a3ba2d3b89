// Positions on curves, maps, edits.
#pragma once

#include "tests/operations/curve.h"

namespace support {

using MapHandle = GxHandle<GxBezierCurvePositionMapBase>;

/// Maps some positions, and the results back.
inline void mapAll(World& w, GxBezierCurve const& c, MapHandle const& map) {
  if (map.isNull()) return;
  for (unsigned n = 1 + w.below(5); n != 0; --n) {
    Position const p = w.position(c);
    Position there(-7, 0.125), back(-7, 0.125), inPlace(p);
    int const code = map->mapPosition(there, p);
    w.requireCode(code, -1, 0);
    w.see(there);
    w.requireCode(map->inverseMapPosition(back, p), -1, 0);
    w.see(back);
    w.require(map->mapPosition(inPlace, inPlace) == code, "in place");
    w.require(sameBits(inPlace, there) || there == Position(-7, 0.125), "in place");
  }
}

inline MapHandle drawMap(World& w, OpenCurve& c) {
  switch (w.below(6)) {
    case 0: return constructIdentityPositionMap();
    case 1: return constructReversePositionMap(w.flag() ? int(c.length()) : w.extremeInt());
    case 2: {
      int const direction = w.extremeInt(), k = w.extremeInt();
      return constructRotatePositionMap(direction, k, w.flag() ? int(c.length()) : w.extremeInt());
    }
    case 3: return constructSingletonPositionMap(w.position(c), c);
    case 4: {
      int const closed = w.flag(), base = w.flag() ? 2 : w.extremeInt(), forward = w.flag();
      Position const start = w.position(c);
      return constructRangePositionMap(c, closed, base, forward, start, w.position(c), c.lastPos());
    }
    default: return MapHandle();
  }
}

inline void copyStretch(World& w) {
  OpenCurve& src = w.curve();
  OpenCurve& dst = w.changing();
  GxBezierCurve const before(dst);
  MapHandle const old = constructIdentityPositionMap();
  MapHandle map(old);
  Position const start = w.position(src), end = w.position(src);
  int const code = copyGxBezierCurve(dst, src, start, end, w.flag(), map);
  w.requireCode(code, -1, 0);
  w.require(sameBits(dst, before, int(before.length())), "a copy only appends");
  w.require(code == 0 || sameBits(dst, before), "a refusal changes nothing");
  w.see(dst);
  mapAll(w, src, map);
}

inline void splitCurve(World& w) {
  OpenCurve& first = w.changing();
  GxBezierCurve const whole(first);
  OpenCurve& second = w.changing();
  GxBezierCurve const other(second);
  MapHandle none;
  GxBezierCurve same(whole);
  w.require(spliteGxBezierCurve({0, 0.5}, same, same, none, none) == -1 && none.isNull(), "itself");
  MapHandle firstMap, secondMap;
  int const code = spliteGxBezierCurve(w.position(whole), first, second, firstMap, secondMap);
  w.requireCode(code, -1, 0);
  w.require(code == 0 || (sameBits(first, whole) && sameBits(second, other)), "nothing changed");
  w.require(code == 0 || (firstMap.isNull() && secondMap.isNull()), "and no map made");
  w.see(first, second);
  mapAll(w, whole, firstMap);
  mapAll(w, whole, secondMap);
}

inline Operations const kPositionMap{
    {"between",
     [](World& w) {
       GxBezierCurve const& c = w.curve();
       Position const p = w.position(c), a = w.position(c), b = w.position(c), q = w.position(c);
       for (int const closed : {0, 1}) {
         int const answers[] = {isStrictBetweenPosition(p, a, b, closed),
                                isBetweenPosition(p, a, b, closed),
                                isBothInclusiveBetweenPosition(p, a, b, closed),
                                isStrictBetweenPosition(p, a, b, q, closed),
                                isBetweenPosition(p, a, b, q, closed),
                                isBothInclusiveBetweenPosition(p, a, b, q, closed)};
         for (int i : {0, 1, 3, 4}) w.require(answers[i] <= answers[i + 1], "each allows more");
         w.see(answers);
       }
     },
     kCountsInLong},
    {"isEqualOnCurve",
     [](World& w) {
       GxBezierCurve const& c = w.curve();
       Position const a = w.position(c), b = w.position(c);
       w.see(isEqual(c, a, b, w.step()));
     }},
    {"snapToAnchor",
     [](World& w) {
       Position const p = w.position(w.curve());
       w.see(snapToAnchor(p, w.step()));
     },
     kCountsInLong},
    {"adjust",
     [](World& w) {
       GxBezierCurve const& c = w.curve();
       Position moved(-7, 0.125);
       Position const p = w.position(c);
       adjustBezierCurvePosition(moved, p, c, w.flag() ? w.parameter() : -w.parameter());
       w.see(moved);
     },
     kCountsInLong},
    {"PosDiff",
     [](World& w) {
       GxBezierCurve const& c = w.curve();
       Position const a = w.position(c), b = w.position(c);
       PosDiff const d = diff(a, b, w.flag(), static_cast<int>(c.length()));
       int const whole = w.extremeInt();  // arguments are evaluated in any order
       PosDiff const e(whole, w.parameter());
       w.require(!(d < d), "nothing is less than itself");
       w.see(d.first, d.second, d < e, d == e, ratio(d, e));
     },
     kCountsInLong},
    {"arrange",
     [](World& w) {
       GxBezierCurve c(w.curve());
       unsigned long const n = c.length();
       Position const a = w.position(c), b = w.position(c);
       arrangeBezierCurve(c, a, b);
       w.require(c.length() - n <= 1, "at most one segment is cut");
       w.see(c);
     },
     kCountsInLong},
    {"arrangeByPoints",
     [](World& w) {
       GxBezierCurve c(w.curve());
       Point const a = w.pointNear(c), b = w.pointNear(c);
       arrangeBezierCurve(c, a, b);
       w.see(c);
     }},
    {"map",
     [](World& w) {
       OpenCurve& c = w.curve();
       mapAll(w, c, drawMap(w, c));
     },
     kCountsInLong},
    {"composite",
     [](World& w) {
       OpenCurve& c = w.curve();
       MapHandle const first = drawMap(w, c), second = drawMap(w, c);
       std::list<MapHandle> const both{first, second};
       MapHandle const pair = constructCompositePositionMap(first, second);
       mapAll(w, c, w.flag() ? pair : constructCompositePositionMap(both));
     },
     kCountsInLong},
    {"transform",
     [](World& w) {
       OpenCurve& c = w.curve();
       MapHandle const map = drawMap(w, c);
       std::list<Position> in;
       for (unsigned n = w.below(6); n != 0; --n) in.push_back(w.position(c));
       auto& out = w.filled<std::list<Position>>();
       std::size_t const before = out.size();
       if (map.isNull()) return;
       w.requireCode(map->transform({}, out, in), -1, 0);
       w.require(out.size() == before + in.size(), "a position for every one");
       map->transform({}, in, in);
       w.see(out, in);
     },
     kCountsInLong},
    {"translate",
     [](World& w) {
       OpenCurve& c = w.curve();
       int const closed = w.flag(), forward = w.flag();
       w.see(translate(c, closed, w.position(c), forward));
     },
     kCountsInLong},
    {"copyGxBezierCurve", copyStretch, kCountsInLong},
    {"copyItself",
     [](World& w) {
       OpenCurve& c = w.changing();
       MapHandle map;
       Position const start = w.position(c), end = w.position(c);
       w.requireCode(copyGxBezierCurve(c, c, start, end, w.flag(), map), -1, 0);
       w.see(c);
     }},
    {"reverseGxBezierCurve",
     [](World& w) {
       OpenCurve& c = w.changing();
       MapHandle map;
       w.require(reverseGxBezierCurve(c, map) == 0, "always reversed");
       w.see(c);
       mapAll(w, c, map);
     }},
    {"spliteGxBezierCurve", splitCurve, kCountsInLong},
};

}  // namespace support
