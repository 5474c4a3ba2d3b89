// Reconstructs the cubic from which neighbouring segments were cut.
#pragma once

#include "crv/bezier/internal/cubic.h"

#include <cstddef>
#include <optional>
#include <utility>
#include <vector>

namespace crv::internal {

/// A cubic and the parameters at which it was cut, from 0 to 1.
struct Rejoined {
  Cubic c;
  std::vector<double> ends;
};

/// The cubic from which consecutive segments were cut, provided that they were: at each joint the
/// lengths of the handles on both sides are then proportional to the widths of the parts. Nothing
/// if a handle has no length or the widths differ by more than a factor of a million. The caller
/// has to check the result.
inline std::optional<Rejoined> rejoined(Cubic const* segments, std::size_t count) {
  constexpr double kWidest = 0x1p20;  // in widths of the first part
  std::vector<double> ends = {0.0, 1.0};
  double width = 1.0;
  for (std::size_t i = 1; i < count; ++i) {
    Cubic const &before = segments[i - 1], &behind = segments[i];
    width *= distance(behind.p[0], behind.p[1]) / distance(before.p[2], before.p[3]);
    ends.push_back(ends.back() + width);
  }
  double const total = ends.back();
  if (!(width > 0.0 && total < kWidest)) return std::nullopt;
  for (double& end : ends) end /= total;
  Cubic const &a = segments[0], &b = segments[count - 1];
  Point const out = (a.p[1] - a.p[0]) * total, in = (b.p[3] - b.p[2]) * (total / width);
  return Rejoined{{{a.p[0], a.p[0] + out, b.p[3] - in, b.p[3]}}, std::move(ends)};
}

}  // namespace crv::internal
