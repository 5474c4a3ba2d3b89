// Stream output of points, vectors, segments, positions and curves, for tests and messages. Numbers
// are written with the precision of the stream. crv.h does not include this header, because a
// program may define such operators of its own.
#pragma once

#include "crv/accurate/types.h"

#include <ostream>

/// Writes (x, y).
template <class T>
std::ostream& operator<<(std::ostream& out, GxCoord<T> const& p) {
  return out << '(' << p.xval() << ", " << p.yval() << ')';
}

/// Writes <x, y>.
template <class T>
std::ostream& operator<<(std::ostream& out, GxVector<T> const& v) {
  return out << '<' << v.xval() << ", " << v.yval() << '>';
}

/// Writes the control points: [(x, y) (x, y) (x, y) (x, y)].
inline std::ostream& operator<<(std::ostream& out, GxBezier const& s) {
  out << '[';
  for (int i = 0; i < 4; ++i) out << (i == 0 ? "" : " ") << s[i];
  return out << ']';
}

/// Writes segment and parameter: 2 at 0.25.
inline std::ostream& operator<<(std::ostream& out, GxBezierCurvePosition const& pos) {
  return out << pos.getSegmentNumber() << " at " << pos.getTValue();
}

/// Writes "open" or "closed" and the segments: open {[...] [...]}.
inline std::ostream& operator<<(std::ostream& out, GxBezierCurve const& curve) {
  out << (curve.strictIsClosed() != 0 ? "closed {" : "open {");
  char const* separator = "";
  for (GxBezier const& segment : curve) {
    out << separator << segment;
    separator = " ";
  }
  return out << '}';
}
