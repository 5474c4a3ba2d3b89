// The parallel curve: strongly bent segments are cut at their extremes, each segment is replaced by
// the cubic between its offset ends that passes through two offset points of its inside, and what
// comes apart is snapped together, bridged, or rounded between straight lines.
#include "crv/curve/GxBezierCurve.h"

#include "crv/curve/internal/straightSegment.h"
#include "crv/foundation/Gx2DRotate.h"
#include "crv/foundation/lines.h"
#include "crv/foundation/tolerance.h"

#include <cmath>
#include <utility>

using crv::internal::straightSegment;

namespace {

// Modes of offset.
constexpr int kCutAndOffset = 1;
constexpr int kCutOnly = 2;

// Curve units: shorter distances are ignored.
constexpr double kSmallDistance = 0.5;

// Curve units: what is thinner is straight, what is shorter has no direction.
constexpr double kStraight = kZeroTolerance;
constexpr double kNoLength = kZeroTolerance;

// Cosine: a handle more inclined to the chord than this calls for a cut.
constexpr double kBend = 0.865;

// Parameter: only extremes strictly between are cut at.
constexpr double kFirstCut = 0.1;
constexpr double kLastCut = 0.9;

// Curve units: a handle this short gives no end tangent; points at these parameters do instead.
constexpr double kShortHandle = 0.1;
constexpr double kNearStart = 0.05;
constexpr double kNearEnd = 0.95;

// Curve units: handles this short make a straight segment.
constexpr double kNoHandle = 1e-7;

// Parameter: the points inside a segment that its parallel passes through.
constexpr double kFirstSample = 0.3;
constexpr double kSecondSample = 0.8;

// Curve units: ends this close are snapped together.
constexpr double kSnap = 2.0;

// Cosine: lines from here on are parallel.
constexpr double kParallel = 0.9999;

// Handles of a corner: a share of the way to where its tangents cross, or shares of the limit where
// they do not cross ahead, or one way is more than kLopsided times the other.
constexpr double kCornerShare = 0.56568;
constexpr double kDefaultHandle = 0.4;
constexpr double kShortSideHandle = 0.12;
constexpr double kLopsided = 8.0;

/// The segment with its chord laid level, if it falls: a rising one is turned further up.
GxBezier levelled(GxBezier const& segment) {
  GxVector<double> const chord = segment[3] - segment[0];
  double const length = chord.length();
  if (IS_ZERO(length, kNoLength)) return segment;
  // Deliberate: the angle comes from x alone and always turns counter-clockwise.
  Gx2DRotate const turn(std::acos(chord.xval() / length));
  return GxBezier(turn * segment[0], turn * segment[1], turn * segment[2], turn * segment[3]);
}

/// The smaller cosine of the handles to the x direction.
double leastCosine(GxBezier const& segment) {
  GxVector<double> const u = segment[1] - segment[0];
  GxVector<double> const w = segment[3] - segment[2];
  double const uLength = u.length();
  double const wLength = w.length();
  double cosine = 1.0;
  if (!IS_ZERO(uLength, kNoLength)) cosine = u.xval() / uLength;
  if (!IS_ZERO(wLength, kNoLength)) cosine = min(cosine, w.xval() / wLength);
  return cosine;
}

/// Appends a segment, cut at its extremes across its chord if it is strongly bent.
void addCut(GxList<GxBezier>& pieces, GxBezier const& segment) {
  GxBezier& first = pieces.add(segment);
  if (segment.isALine(kStraight)) return;
  GxBezier level = levelled(segment);
  if (!(std::fabs(leastCosine(level)) < kBend)) return;
  GxList<double> cuts;
  unsigned const count = static_cast<unsigned>(level.getYMinMaxTValues(cuts));
  if (count > 1 && cuts(0) < cuts(1)) std::swap(cuts(0), cuts(1));
  GxList<GxBezier> rest;
  for (unsigned j = 0; j < count; ++j) {
    double const t = cuts(j);
    if (!(kFirstCut < t && t < kLastCut)) continue;
    GxBezier right;
    first.split(right, t);
    rest.insert(right, 0);
    if (j + 1 < count) cuts(j + 1) /= t;
  }
  pieces.join(rest);
}

/// What moves a point to the left of a direction by a distance.
GxVector<double> shift(GxVector<double> const& direction, double distance) {
  return direction.ortho(1).normalize() * distance;
}

/// One coordinate of the two inner control points.
struct InnerPair {
  double first;
  double second;
};

/// Exact form: of the cubic from p0 to p3 that is q at the first sample and r at the second.
InnerPair innerThrough(double p0, double q, double r, double p3) {
  double const u = (q + 0.027 * (p0 - p3) - 0.27 * p0 + 0.9 * p0 - p0) * 1.5873015873015872;
  double const v = (r + 0.512 * (p0 - p3) - 1.92 * p0 + 2.4 * p0 - p0) * 2.0833333333333335;
  double const first = 2.0 * (0.8 * u - 0.3 * v);
  return {first, (u - 0.7 * first) * 3.3333333333333335};
}

/// The parallel of one segment.
GxBezier parallelOf(GxBezier const& s, double distance) {
  GxCoord<double> const ahead = isEqual(s[0], s[1], kShortHandle) ? s.bValue(kNearStart) : s[1];
  GxCoord<double> const behind = isEqual(s[2], s[3], kShortHandle) ? s.bValue(kNearEnd) : s[2];
  GxCoord<double> const start = s[0] + shift(ahead - s[0], distance);
  GxCoord<double> const end = s[3] + shift(s[3] - behind, distance);
  if (isEqual(s[0], s[1], kNoHandle) && isEqual(s[2], s[3], kNoHandle)) {
    return straightSegment(start, end);
  }
  auto const sample = [&](double t) { return s.bValue(t) + shift(s.dValue(t), distance); };
  GxCoord<double> const q = sample(kFirstSample);
  GxCoord<double> const r = sample(kSecondSample);
  InnerPair const x = innerThrough(start.xval(), q.xval(), r.xval(), end.xval());
  InnerPair const y = innerThrough(start.yval(), q.yval(), r.yval(), end.yval());
  return GxBezier(start, GxCoord<double>(x.first, y.first), GxCoord<double>(x.second, y.second),
                  end);
}

/// The lengths of the handles of a corner along its tangents t1 and t2, which point to each other.
void computeFilletHandles(GxVector<double> const& chord, GxVector<double> const& t1,
                          GxVector<double> const& t2, double factor, double limit, double& h1,
                          double& h2) {
  GxVector<double> const normal1 = t1.ortho(0);
  GxVector<double> const normal2 = t2.ortho(0);
  double const e1 = normal1 * t2;
  double const e2 = normal2 * t1;
  h2 = IS_ZERO(e1, kZeroTolerance) ? limit : (-normal1 * chord) / e1;
  h1 = IS_ZERO(e2, kZeroTolerance) ? limit : (normal2 * chord) / e2;
  if (h1 > 0.0 && h2 > 0.0) {
    if (kLopsided * h2 < h1) {
      h1 = kDefaultHandle * limit;
      h2 = kShortSideHandle * limit;
      return;
    }
    if (kLopsided * h1 < h2) {
      h2 = kDefaultHandle * limit;
      h1 = kShortSideHandle * limit;
      return;
    }
  }
  h1 = min(h1, limit) * factor;
  h2 = min(h2, limit) * factor;
  if (h1 < 0.0) h1 = kDefaultHandle * limit;
  if (h2 < 0.0) h2 = kDefaultHandle * limit;
}

/// The rounded segment from the end of one line to the start of the next.
GxBezier cornerBetween(GxBezier const& a, GxBezier const& b, double limit) {
  GxVector<double> const t1 = (a[3] - a[0]).normalize();
  GxVector<double> const t2 = (b[0] - b[3]).normalize();
  double h1 = 0.0;
  double h2 = 0.0;
  computeFilletHandles(b[0] - a[3], t1, t2, kCornerShare, limit, h1, h2);
  return GxBezier(a[3], a[3] + t1 * h1, b[0] + t2 * h2, b[0]);
}

/// Whether two parallels come from lines that make a corner, to be rounded.
bool isCorner(GxBezier const& a, GxBezier const& b, GxBezier const& oldA, GxBezier const& oldB) {
  if (!oldA.isALine(kStraight) || !oldB.isALine(kStraight)) return false;
  if (isEqual(a[0], a[3], kNoHandle) || isEqual(b[0], b[3], kNoHandle)) return false;
  GxVector<double> const u = (oldA[3] - oldA[0]).normalize();
  GxVector<double> const v = (oldB[3] - oldB[0]).normalize();
  return std::fabs(u * v) < kParallel;
}

/// Closes the gap from the end of a to the start of b: snaps them together, or puts a segment into
/// bridge, with the lesser or the greater of twice the distance and the gap to limit a corner.
void closeGap(GxBezier& a, GxBezier& b, GxBezier const& oldA, GxBezier const& oldB, double distance,
              double (*lesserOrGreater)(double, double), GxList<GxBezier>& bridge) {
  if (isEqual(a[3], b[0], kSnap)) {
    pointsAverage(b[0], a[3]);
  } else if (isCorner(a, b, oldA, oldB)) {
    double const gap = (b[0] - a[3]).length();
    bridge.add(cornerBetween(a, b, lesserOrGreater(2.0 * std::fabs(distance), gap)));
  } else {
    bridge.add(straightSegment(a[3], b[0]));
  }
}

/// Closes the gaps between the parallels of old segments, from the last one to the first.
void joinParallels(GxList<GxBezier>& segments, GxList<GxBezier> const& old, double distance) {
  unsigned const last = segments.length() - 1;
  GxList<GxBezier> joined;
  // Deliberate: the ends of an open curve are joined, too; only there a corner has the lesser
  // limit.
  closeGap(segments(last), segments(0), old[last], old[0], distance, min, joined);
  for (unsigned k = last; k > 0; --k) {
    GxBezier& b = segments(k);
    GxList<GxBezier> bridge;
    closeGap(segments(k - 1), b, old[k - 1], old[k], distance, max, bridge);
    joined.insert(b, 0);
    joined.inject(bridge, 0);
  }
  joined.insert(segments(0), 0);
  segments.empty();
  segments.join(joined);
}

}  // namespace

void GxBezierCurve::offset(double distance, int side, int mode) {
  if (mode != kCutOnly && IS_ZERO(distance, kSmallDistance)) return;
  if (segments_.length() == 0) return;
  if (side == 0) distance = -distance;
  if (mode > kCutOnly) return;
  GxList<GxBezier> pieces;
  for (unsigned i = 0; i < segments_.length(); ++i) {
    if (mode == kCutAndOffset || mode == kCutOnly) {
      addCut(pieces, segments_[i]);
    } else {
      pieces.add(segments_[i]);
    }
  }
  GxList<GxBezier> result;
  if (mode == kCutOnly) {
    result.join(pieces);
  } else {
    for (unsigned i = 0; i < pieces.length(); ++i) result.add(parallelOf(pieces(i), distance));
    if (result.length() > 1) joinParallels(result, pieces, distance);
  }
  segments_.empty();
  segments_.join(result);
}
