// The parallel curve: strongly bent segments are cut at their extremes, each segment is replaced by
// the cubic between its offset ends that passes through two offset points of its inside, and
// neighbours that come apart are snapped together, bridged by a straight segment, or joined by a
// rounded corner between straight lines.
#include "crv/curve/GxBezierCurve.h"

#include "crv/bezier/internal/extremes.h"
#include "crv/curve/internal/straightSegment.h"
#include "crv/foundation/Gx2DRotate.h"
#include "crv/foundation/lines.h"
#include "crv/foundation/tolerance.h"

#include <cmath>
#include <cstddef>
#include <utility>
#include <vector>

using crv::internal::straightSegment;

namespace {

using Pieces = std::vector<GxBezier>;

// Modes of offset.
constexpr int kCutAndOffset = 1;
constexpr int kCutOnly = 2;

// Curve units: shorter distances are ignored.
constexpr double kSmallDistance = 0.5;

// Curve units: a thinner segment is straight, a shorter vector has no direction.
constexpr double kStraight = kZeroTolerance;
constexpr double kNoLength = kZeroTolerance;

// Cosine: a segment with a handle more inclined to the chord than this is cut.
constexpr double kSharpHandleCosine = 0.865;

// Cosine: a normal more inclined to a direction than this has no component along it.
constexpr double kAcross = kZeroTolerance;

// Parameter: only extremes strictly between are cut at.
constexpr double kFirstCut = 0.1;
constexpr double kLastCut = 0.9;

// Pieces of a segment that is cut at both extremes.
constexpr std::size_t kMaxPieces = 3;

// Curve units: a handle this short gives no end tangent; the points at these parameters (of the
// segment) give it instead.
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

// The lengths of the handles of a rounded corner, as a fraction of the distance to the crossing of
// its tangents. Fractions of the limit are used instead where the tangents do not cross ahead, or
// where one distance is more than kLopsided times the other.
constexpr double kCornerFraction = 0.56568;
constexpr double kDefaultHandle = 0.4;
constexpr double kShortSideHandle = 0.12;
constexpr double kLopsided = 8.0;

/// The segment turned counter-clockwise by the angle between its chord and the x axis, which lays a
/// falling chord level and turns a rising one further up.
GxBezier turnedByChordAngle(GxBezier const& segment) {
  GxVector<double> const chord = segment[3] - segment[0];
  double const length = chord.length();
  if (IS_ZERO(length, kNoLength)) return segment;
  // Deliberate: the angle comes from x alone, whatever the sign of y.
  Gx2DRotate const rotation(std::acos(chord.xval() / length));
  return GxBezier(rotation.image(segment[0]), rotation.image(segment[1]),
                  rotation.image(segment[2]), rotation.image(segment[3]));
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
void addCut(Pieces& pieces, GxBezier const& segment) {
  pieces.push_back(segment);
  if (segment.isALine(kStraight)) return;
  GxBezier const turned = turnedByChordAngle(segment);
  if (!(std::fabs(leastCosine(turned)) < kSharpHandleCosine)) return;
  crv::internal::HeightExtremes const extremes = crv::internal::heightExtremes(turned);
  double cuts[2] = {extremes.lowest, extremes.highest};
  if (cuts[0] < cuts[1]) std::swap(cuts[0], cuts[1]);
  std::size_t const first = pieces.size() - 1;
  for (int j = 0; j < 2; ++j) {
    double const t = cuts[j];
    if (!(kFirstCut < t && t < kLastCut)) continue;
    GxBezier right;
    pieces[first].split(right, t);
    pieces.insert(pieces.begin() + static_cast<std::ptrdiff_t>(first + 1), right);
    if (j == 0) cuts[1] /= t;
  }
}

/// The displacement to the left of a direction by a distance.
GxVector<double> shift(GxVector<double> const& direction, double distance) {
  return direction.ortho(1).normalize() * distance;
}

/// One coordinate of the two inner control points.
struct InnerPair {
  double first;
  double second;
};

/// Solves for the cubic from p0 to p3 that has the value q at the first sample and r at the second.
/// With s = 0.3: s^3 = 0.027, 3s^2 = 0.27, 3s = 0.9 and 1 / (3s(1 - s)) = 1.587..., so that
/// u = 0.7 P1 + 0.3 P2. With s = 0.8: s^3 = 0.512, 3s^2 = 1.92, 3s = 2.4 and 1 / (3s(1 - s)) =
/// 2.083..., so that v = 0.2 P1 + 0.8 P2. Exact form: these constants, in this order.
InnerPair innerThrough(double p0, double q, double r, double p3) {
  double const u = (q + 0.027 * (p0 - p3) - 0.27 * p0 + 0.9 * p0 - p0) * 1.5873015873015872;
  double const v = (r + 0.512 * (p0 - p3) - 1.92 * p0 + 2.4 * p0 - p0) * 2.0833333333333335;
  double const first = 2.0 * (0.8 * u - 0.3 * v);
  return {first, (u - 0.7 * first) * 3.3333333333333335};
}

GxVector<double> startTangent(GxBezier const& s) {
  return (isEqual(s[0], s[1], kShortHandle) ? s.bValue(kNearStart) : s[1]) - s[0];
}

GxVector<double> endTangent(GxBezier const& s) {
  return s[3] - (isEqual(s[2], s[3], kShortHandle) ? s.bValue(kNearEnd) : s[2]);
}

/// The parallel of one segment.
GxBezier parallelOf(GxBezier const& s, double distance) {
  GxCoord<double> const start = s[0] + shift(startTangent(s), distance);
  GxCoord<double> const end = s[3] + shift(endTangent(s), distance);
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
  computeFilletHandles(b[0] - a[3], t1, t2, kCornerFraction, limit, h1, h2);
  return GxBezier(a[3], a[3] + t1 * h1, b[0] + t2 * h2, b[0]);
}

/// Whether two parallels belong to straight segments with a corner between them, which is to be
/// rounded.
bool isCorner(GxBezier const& a, GxBezier const& b, GxBezier const& oldA, GxBezier const& oldB) {
  if (!oldA.isALine(kStraight) || !oldB.isALine(kStraight)) return false;
  if (isEqual(a[0], a[3], kNoHandle) || isEqual(b[0], b[3], kNoHandle)) return false;
  GxVector<double> const u = (oldA[3] - oldA[0]).normalize();
  GxVector<double> const v = (oldB[3] - oldB[0]).normalize();
  return std::fabs(u * v) < kParallel;
}

/// A segment that bridges the gap behind a parallel.
struct Bridge {
  std::size_t parallel;
  GxBezier segment;
};

/// Closes the gaps between the parallels of segments, from the last one to the first: snaps their
/// ends together, or adds a segment to bridge.
void closeGaps(Pieces& parallels, Pieces const& old, double distance,
               std::vector<Bridge>& bridges) {
  double const twice = 2.0 * std::fabs(distance);
  std::size_t const n = parallels.size();
  for (std::size_t k = n; k-- > 0;) {
    std::size_t const next = (k + 1) % n;
    GxBezier& a = parallels[k];
    GxBezier& b = parallels[next];
    double const gap = (b[0] - a[3]).length();
    if (isEqual(a[3], b[0], kSnap)) {
      pointsAverage(b[0], a[3]);
    } else if (isCorner(a, b, old[k], old[next])) {
      // Deliberate: the ends of an open curve are joined, too; only there a corner has the lesser
      // limit.
      bridges.push_back({k, cornerBetween(a, b, next == 0 ? min(twice, gap) : max(twice, gap))});
    } else {
      bridges.push_back({k, straightSegment(a[3], b[0])});
    }
  }
}

/// Appends the parallels of segments, and the segments that join them.
void addParallels(GxList<GxBezier>& out, Pieces const& segments, double distance) {
  Pieces parallels;
  parallels.reserve(segments.size());
  for (GxBezier const& s : segments) parallels.push_back(parallelOf(s, distance));
  std::vector<Bridge> bridges;
  if (segments.size() > 1) closeGaps(parallels, segments, distance, bridges);
  for (std::size_t k = 0; k < segments.size(); ++k) {
    out.add(parallels[k]);
    if (bridges.empty() || bridges.back().parallel != k) continue;
    out.add(bridges.back().segment);
    bridges.pop_back();
  }
}

/// The curve in a frame whose y axis is the direction, a unit vector.
GxBezierCurve turnedUpright(GxBezierCurve const& curve, GxVector<double> const& direction) {
  GxBezierCurve turned(curve);
  for (GxBezier& segment : turned.getSegments()) {
    for (int i = 0; i < 4; ++i) {
      GxVector<double> const p(segment[i].xval(), segment[i].yval());
      segment[i] = GxCoord<double>(p.cross(direction), p * direction);
    }
  }
  return turned;
}

/// The component along a direction by which a parallel at distance 1 moves the place at t of
/// segment k; at a joint, the component of the side that moves farther.
double shiftAlong(GxBezierCurve const& curve, int k, double t, GxVector<double> const& direction) {
  int const n = static_cast<int>(curve.length());
  bool const isClosed = curve.strictIsClosed() != 0;
  GxBezier const& s = curve[k];
  double here = 0.0;
  double beyond = 0.0;
  if (t == 0.0) {
    here = shift(startTangent(s), 1.0) * direction;
    if (k > 0 || isClosed) beyond = shift(endTangent(curve[(k + n - 1) % n]), 1.0) * direction;
  } else if (t == 1.0) {
    here = shift(endTangent(s), 1.0) * direction;
    if (k + 1 < n || isClosed) beyond = shift(startTangent(curve[(k + 1) % n]), 1.0) * direction;
  } else {
    here = shift(s.dValue(t), 1.0) * direction;
  }
  return std::fabs(beyond) > std::fabs(here) ? beyond : here;
}

}  // namespace

void GxBezierCurve::offset(double distance, int side, int mode) {
  bool const cuts = mode == kCutAndOffset || mode == kCutOnly;
  bool const shifts = mode < kCutOnly;
  if (!cuts && !shifts) return;
  if (shifts && IS_ZERO(distance, kSmallDistance)) return;
  Pieces pieces;
  pieces.reserve((cuts ? kMaxPieces : 1) * std::size_t{segments_.length()});
  for (GxBezier const& segment : segments_) {
    if (cuts) {
      addCut(pieces, segment);
    } else {
      pieces.push_back(segment);
    }
  }
  GxList<GxBezier> result;
  if (shifts) {
    addParallels(result, pieces, side == 0 ? -distance : distance);
  } else {
    for (GxBezier const& piece : pieces) result.add(piece);
  }
  segments_.empty();
  segments_.join(result);
}

int GxBezierCurve::calculateOffsetValue(double& value, GxVector<double> direction, double distance,
                                        int outwards) const {
  if (segments_.length() == 0 || IS_ZERO(direction.length(), kNoLength)) return -1;
  GxVector<double> const along = direction.normalize();
  double t = 0.0;
  int k = 0;
  turnedUpright(*this, along).getCurveMaxY(t, k);
  double const unit = shiftAlong(*this, k, t, along);
  if (!(std::fabs(unit) > kAcross)) return -1;
  value = (outwards ? distance : -distance) / unit;
  return 0;
}
