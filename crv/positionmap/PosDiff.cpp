#include "crv/positionmap/PosDiff.h"

#include "crv/foundation/tolerance.h"
#include "crv/positionmap/internal/positionAt.h"

using crv::internal::clampedSegment;

namespace {

// Fraction of a segment: distances that differ by less are equal, and a shorter one counts as zero.
constexpr double kEqualFraction = 1e-9;

double inSegments(PosDiff const& d) { return d.first + d.second; }

}  // namespace

PosDiff::PosDiff(int wholeSegments, double fraction)
    : std::pair<int, double>(wholeSegments, fraction) {}

int PosDiff::operator==(PosDiff const& other) const {
  return first == other.first && IS_EQUAL(second, other.second, kEqualFraction);
}

int PosDiff::operator<(PosDiff const& other) const {
  if (*this == other) return 0;
  return first != other.first ? first < other.first : second < other.second;
}

PosDiff diff(GxBezierCurvePosition const& a, GxBezierCurvePosition const& b, int forward, int n) {
  GxBezierCurvePosition const& start = forward ? a : b;
  GxBezierCurvePosition const& end = forward ? b : a;
  long long segments = clampedSegment(end) - clampedSegment(start);
  double fraction = end.getTValue() - start.getTValue();
  if (fraction < 0.0) {
    fraction += 1.0;
    --segments;
  }
  if (segments < 0) segments += n;
  return PosDiff(crv::internal::clampedInt(segments), fraction);
}

double crv::ratio(PosDiff const& part, PosDiff const& whole) {
  double const s = inSegments(whole);
  return IS_ZERO(s, kEqualFraction) ? 0.0 : inSegments(part) / s;
}
