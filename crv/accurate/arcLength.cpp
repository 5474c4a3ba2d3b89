#include "crv/accurate/arcLength.h"

#include "crv/accurate/internal/chain.h"
#include "crv/accurate/internal/cubicLength.h"
#include "crv/accurate/internal/sum.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace crv {

using internal::CubicLength;

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

// Laps: larger numbers of laps are not exact as doubles.
constexpr double kMostTurns = 0x1p52;

/// The magnitude lies between a fourteenth of the sum of the first point and the bound, and the
/// sum.
bool isUsable(internal::Cubic const& cubic, CubicLength const& measured) {
  internal::Point const& p = cubic.start();
  double const sum = std::fabs(p.x) + std::fabs(p.y) + measured.bound();
  bool const isOrdinary =
      sum >= 16.0 * internal::kSmallestMagnitude && sum <= 0.5 * internal::kLargestMagnitude;
  if (isOrdinary) return true;
  internal::Magnitude magnitude;
  magnitude.add(cubic);
  return internal::isUsable(magnitude.value());
}

/// The length for t0 <= t1, in [0, 1].
double lengthBetween(Segment const& segment, double t0, double t1, double accuracy) {
  internal::Cubic const cubic = internal::cubic(segment);
  CubicLength const measured(cubic);
  bool const isNumber = t0 == t0 && t1 == t1 && accuracy == accuracy;
  if (!isNumber || !isUsable(cubic, measured)) return kNaN;
  double const tolerance = CubicLength::tolerance(accuracy, measured.bound());
  return measured.between(t0, t1, tolerance);
}

/// length modulo total, in [0, total).
double withoutTurns(double length, double total) {
  double const turns = length / total;
  if (!(std::fabs(turns) < kMostTurns)) return 0.0;
  double rest = length - static_cast<double>(static_cast<long long>(turns)) * total;
  if (rest < 0.0) rest += total;
  return rest < total ? max(rest, 0.0) : 0.0;
}

}  // namespace

double arcLength(Segment const& segment, double t0, double t1, double accuracy) {
  if (t0 <= 0.0 && t1 >= 1.0) {
    double const length = CubicLength::ofOrdinary(segment, accuracy);
    if (length >= 0.0) return length;
  }
  if (t1 < t0) return -arcLength(segment, t1, t0, accuracy);
  return lengthBetween(segment, std::clamp(t0, 0.0, 1.0), std::clamp(t1, 0.0, 1.0), accuracy);
}

double parameterAtLength(Segment const& segment, double t0, double length, double accuracy) {
  internal::Cubic const cubic = internal::cubic(segment);
  CubicLength const measured(cubic);
  bool const isNumber = t0 == t0 && length == length && accuracy == accuracy;
  if (!isNumber || !isUsable(cubic, measured)) return 0.0;
  return measured.parameterAt(std::clamp(t0, 0.0, 1.0), length,
                              CubicLength::tolerance(accuracy, measured.bound()));
}

struct CurveLengths::Table {
  Table(Curve const& curve, double accuracy) : chain(curve) {
    if (!(accuracy == accuracy) || !internal::isUsable(chain.magnitude())) {
      total = kNaN;
      return;
    }
    double bound = 0.0;
    for (internal::Cubic const& cubic : chain.segments) bound += CubicLength(cubic).bound();
    auto const n = static_cast<double>(max(1, static_cast<int>(chain.size())));
    tolerance = CubicLength::tolerance(accuracy, bound) / n;
    internal::Sum sum;
    starts.reserve(chain.size() + 1);
    starts.push_back(0.0);
    for (internal::Cubic const& cubic : chain.segments) {
      sum.add(CubicLength(cubic).between(0.0, 1.0, tolerance));
      starts.push_back(max(starts.back(), sum.value()));
    }
    total = starts.back();
  }

  internal::Chain chain;
  std::vector<double> starts;  // the lengths at the starts of the segments, and the total
  double tolerance = 0.0;      // for one segment
  double total = 0.0;
};

CurveLengths::CurveLengths(Curve const& curve, double accuracy)
    : table_(std::make_shared<Table const>(curve, accuracy)) {}

double CurveLengths::total() const { return table_->total; }

double CurveLengths::lengthAt(Position const& position) const {
  auto const place = table_->chain.placeOf(position);
  if (!place || !(table_->total >= 0.0)) return kNaN;
  std::size_t const k = place->segment;
  if (place->t == 0.0) return table_->starts[k];
  if (place->t == 1.0) return table_->starts[k + 1];
  double const inside =
      CubicLength(table_->chain.segments[k]).between(0.0, place->t, table_->tolerance);
  return min(table_->starts[k] + inside, table_->starts[k + 1]);
}

Position CurveLengths::positionAt(double length) const {
  internal::Chain const& chain = table_->chain;
  std::vector<double> const& starts = table_->starts;
  bool const isFinite = length - length == 0.0;
  if (chain.size() == 0 || !isFinite || !(table_->total >= 0.0)) return {};
  if (chain.closed) length = table_->total > 0.0 ? withoutTurns(length, table_->total) : 0.0;
  if (length <= 0.0) return chain.positionOf(0, 0.0);
  if (length >= table_->total) return chain.positionOf(chain.size(), 0.0);
  auto const behind = std::lower_bound(starts.begin(), starts.end(), length);
  auto const k = static_cast<std::size_t>(behind - starts.begin()) - 1;
  if (*behind == length) return chain.positionOf(k, 1.0);
  double const rest = length - starts[k];
  return chain.positionOf(k,
                          CubicLength(chain.segments[k]).parameterAt(0.0, rest, table_->tolerance));
}

double arcLength(Curve const& curve, double accuracy) {
  return CurveLengths(curve, accuracy).total();
}

std::vector<Position> evenPositions(Curve const& curve, std::size_t count, double accuracy) {
  std::vector<Position> positions;
  CurveLengths const lengths(curve, accuracy);
  auto const n = static_cast<int>(curve.length());
  if (n == 0 || count == 0 || !(lengths.total() >= 0.0)) return positions;
  positions.emplace_back(0, 0.0);
  for (std::size_t i = 1; i < count; ++i) {
    double const share = static_cast<double>(i) / static_cast<double>(count);
    Position const next = lengths.positionAt(lengths.total() * share);
    // Parts shorter than the accuracy may be computed in any order, so positions are not allowed to
    // run back.
    positions.push_back(next < positions.back() ? Position(positions.back()) : next);
  }
  if (curve.strictIsClosed() == 0) positions.emplace_back(n, 0.0);
  return positions;
}

}  // namespace crv
