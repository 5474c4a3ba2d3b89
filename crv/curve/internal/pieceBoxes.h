// Boxes around the pieces of a segment, for a quick proof that the segment is not near a point.
#pragma once

#include "crv/bezier/internal/cubic.h"
#include "crv/curve/internal/fitError.h"
#include "crv/foundation/GxCoord.h"
#include "crv/foundation/tolerance.h"

#include <cmath>

namespace crv::internal {

/// The boxes contain every point that the segment comes near to: within reach in x and in y.
class PieceBoxes {
 public:
  /// points is the number of points to be tested; the segment is divided into as many pieces, up to
  /// a limit.
  PieceBoxes(GxBezier const& segment, unsigned points, double reach)
      : count_(points < kMaxPieces ? points : kMaxPieces) {
    Cubic const s = cubic(segment);
    double const step = 1.0 / count_;
    double const rounding = magnitude(s) * kRounding;
    double const reachX =
        reach + rounding + chordDeviation(s.p[0].x, s.p[1].x, s.p[2].x, s.p[3].x, step);
    double const reachY =
        reach + rounding + chordDeviation(s.p[0].y, s.p[1].y, s.p[2].y, s.p[3].y, step);
    Point from = s.start();
    for (unsigned i = 0; i < count_; ++i) {
      Point const to = s.point(i + 1 == count_ ? 1.0 : (i + 1) * step);
      centre_[i] = from * 0.5 + to * 0.5;
      half_[i] = {std::fabs(to.x - from.x) * 0.5 + reachX, std::fabs(to.y - from.y) * 0.5 + reachY};
      from = to;
    }
  }

  bool exclude(GxCoord<double> const& p) const {
    for (unsigned i = 0; i < count_; ++i) {
      bool const isOutside = std::fabs(p.xval() - centre_[i].x) > half_[i].x ||
                             std::fabs(p.yval() - centre_[i].y) > half_[i].y;
      if (!isOutside) return false;
    }
    return true;
  }

 private:
  // More pieces take longer to make than they save.
  static constexpr unsigned kMaxPieces = 24;
  // Relative: about a hundred times the rounding errors of the segment's points.
  static constexpr double kRounding = 1e-13;

  /// The most that a piece of length step deviates from its chord in one coordinate: an eighth of
  /// the maximum of the second derivative, times the square of the step.
  static double chordDeviation(double k0, double k1, double k2, double k3, double step) {
    double const start = std::fabs(k0 - 2.0 * k1 + k2);
    double const end = std::fabs(k1 - 2.0 * k2 + k3);
    return 6.0 * max(start, end) * step * step / 8.0;
  }

  unsigned const count_;
  Point centre_[kMaxPieces];
  Point half_[kMaxPieces];
};

}  // namespace crv::internal
