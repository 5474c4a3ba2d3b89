// Parts of two segments in the search for their contacts, and the tests on their boxes and control
// polygons that decide whether and how two parts are searched further.
#pragma once

#include "crv/accurate/internal/graph.h"
#include "crv/bezier/internal/cubic.h"
#include "crv/foundation/tolerance.h"

#include <cmath>

namespace crv::internal {

// A part is gentle if its direction stays within 31 degrees of its chord; kGentle is the tangent of
// that angle. Two gentle parts whose chords are less than 90 degrees apart are graphs over the
// bisector of the chords, with slopes up to kSteepest.
constexpr double kGentle = 0.6;
constexpr double kSteepest = 4.1;

// Relative to the largest coordinate: bounds the rounding error of differences of control points.
constexpr double kNoise = 0x1p-46;

// Sine of an angle: at this angle and above, Newton's method finds a crossing to full precision.
constexpr double kSteepCrossing = 0x1p-20;

// Sine of an angle divided by the resolution: at this angle and above, crossings are single points.
constexpr double kSteepness = 0x1p20;

// In units of the resolution: parts with a box no larger than this count as points.
constexpr double kPointSize = 0.25;

// Parameter: the shortest part that is halved.
constexpr double kShortestPart = 0x1p-51;

/// The least and the greatest of some values.
struct ValueRange {
  double lo, hi;
  void add(double x) {
    lo = min(lo, x);
    hi = max(hi, x);
  }
};

inline bool areNear(Box const& a, Box const& b, double r) {
  return overlap({a.minX - r, a.minY - r, a.maxX + r, a.maxY + r}, b);
}

inline double sizeOf(Box const& box) { return max(box.maxX - box.minX, box.maxY - box.minY); }

/// A part with its box.
struct SearchPiece {
  Part part;
  Box box;

  SearchPiece() = default;
  explicit SearchPiece(Part const& of) : part(of), box(of.c.hull()) {}
  bool isPoint(double resolution) const {
    return sizeOf(box) <= kPointSize * resolution || std::fabs(part.t1 - part.t0) < kShortestPart;
  }
};

struct SearchHalves {
  SearchPiece half[2];

  explicit SearchHalves(Part const& part) {
    part.split(0.5, half[0].part, half[1].part);
    for (SearchPiece& piece : half) piece.box = piece.part.c.hull();
  }
};

/// The control polygon of a part.
struct ControlPolygon {
  Point edge[3], chord;

  explicit ControlPolygon(Cubic const& c) {
    for (int i = 0; i < 3; ++i) edge[i] = c.p[i + 1] - c.p[i];
    chord = c.p[3] - c.p[0];
  }

  /// Whether all edges are within 31 degrees of the chord's direction.
  bool areGentle() const {
    double const slack = kNoise * (std::fabs(chord.x) + std::fabs(chord.y));
    for (Point const& d : edge) {
      double const along = dot(chord, d);
      if (!(std::fabs(cross(chord, d)) <= kGentle * along + slack)) return false;
      if (!(along > 0.0) && std::fabs(d.x) + std::fabs(d.y) > kNoise) return false;
    }
    return true;
  }
};

/// Whether b lies on one side of the fat line around a's chord. The offsets of the control points
/// from the chord are compared, times the length of the chord.
inline bool isBesideChord(Cubic const& a, ControlPolygon const& edges, Cubic const& b,
                          double resolution) {
  Point const chord = edges.chord;
  ValueRange own = {0.0, 0.0};
  own.add(cross(chord, edges.edge[0]));
  own.add(-cross(chord, edges.edge[2]));
  double const margin = resolution * (std::fabs(chord.x) + std::fabs(chord.y));
  double const first = cross(chord, b.p[0] - a.p[0]);
  ValueRange other = {first, first};
  for (int i = 1; i < 4; ++i) other.add(cross(chord, b.p[i] - a.p[0]));
  return other.lo > own.hi + margin || other.hi < own.lo - margin;
}

/// Whether the fat line about the chord of one segment keeps the other away.
inline bool areApart(Cubic const& a, Cubic const& b, double resolution) {
  return isBesideChord(a, ControlPolygon(a), b, resolution) ||
         isBesideChord(b, ControlPolygon(b), a, resolution);
}

/// Whether every direction of a lies clearly on the same side of every direction of b, so that the
/// parts meet at most once.
inline bool runAcross(ControlPolygon const& a, ControlPolygon const& b, double resolution) {
  double const first = cross(a.edge[0], b.edge[0]);
  ValueRange crosses = {first, first};
  for (Point const& p : a.edge) {
    for (Point const& q : b.edge) crosses.add(cross(p, q));
  }
  if (crosses.lo < 0.0 && crosses.hi > 0.0) return false;
  double const sine = cross(a.chord, b.chord);
  double const least = max(kSteepCrossing, kSteepness * resolution);
  return sine * sine > least * least * dot(a.chord, a.chord) * dot(b.chord, b.chord);
}

/// The range of slopes of the control polygon; it is not bounded if x does not increase.
struct SlopeRange {
  ValueRange range;
  bool areBounded;
};

inline SlopeRange slopeRangeOf(Cubic const& c) {
  SlopeRange slopes = {{kSteepest, -kSteepest}, true};
  for (int i = 0; i < 3; ++i) {
    Point const d = c.p[i + 1] - c.p[i];
    if (std::fabs(d.x) <= kNoise && std::fabs(d.y) <= kNoise) continue;
    if (!(d.x > 0.0)) return {{-kSteepest, kSteepest}, false};
    slopes.range.add(d.y / d.x);
  }
  return slopes;
}

}  // namespace crv::internal
