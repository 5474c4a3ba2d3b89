// The roots of a cubic with coefficients of very different magnitudes: they are scaled for the
// roots of one magnitude at a time. The Newton polygon gives the magnitudes (Bini 1996).
#include "crv/foundation/internal/solvers.h"
#include "crv/foundation/tolerance.h"

#include <climits>
#include <cmath>

namespace crv::internal {

namespace {

// In powers of two: roots that differ by more are found apart, roots that differ by less together.
constexpr double kSeparateRoots = 64.0;

/// Solves a polynomial whose coefficients differ too much in magnitude for one scale. Coefficients
/// are given with the constant term first, and magnitudes are binary logarithms.
class WideRangeSolver {
 public:
  explicit WideRangeSolver(Coefficients const& coefficients) : k_(coefficients) {}

  int solve(double* roots) {
    unsigned from = 0;
    while (k_[from] == 0.0) ++from;
    if (from > 0) roots[count_++] = 0.0;
    double low = -HUGE_VAL;
    for (Edge edge = edgeFrom(from); edge.end != from;) {
      double const first = edge.magnitude;
      double last = first;
      do {
        last = edge.magnitude;
        from = edge.end;
        edge = edgeFrom(from);
      } while (edge.magnitude - last <= kSeparateRoots);
      double const high = 0.5 * (last + edge.magnitude);
      addRootsBetween(low, high, static_cast<int>(std::floor(0.5 * (first + last))), roots);
      low = high;
    }
    return count_;
  }

 private:
  /// An edge of the upper Newton polygon: the coefficient at which it ends, and the magnitude of
  /// the roots that belong to it.
  struct Edge {
    unsigned end;
    double magnitude;
  };

  /// The edge that starts at the coefficient from. At the last coefficient it is empty and has an
  /// infinite magnitude.
  Edge edgeFrom(unsigned from) const {
    Edge edge{from, HUGE_VAL};
    for (unsigned to = from + 1; to <= 3; ++to) {
      if (k_[to] == 0.0) continue;
      double const magnitude = static_cast<double>(exponent(from) - exponent(to)) / (to - from);
      if (magnitude <= edge.magnitude) edge = {to, magnitude};
    }
    return edge;
  }

  /// Adds the roots t with low <= log2 |t| < high; the equation is solved for t / 2^scale. Roots
  /// beyond the range of doubles are left out.
  void addRootsBetween(double low, double high, int scale, double* roots) {
    int largest = INT_MIN;
    int shift = 0;
    for (unsigned i = 0; i <= 3; ++i, shift += scale) {
      if (k_[i] != 0.0) largest = max(largest, exponent(i) + shift);
    }
    Coefficients k;
    shift = -largest;
    for (unsigned i = 0; i <= 3; ++i, shift += scale) {
      k[i] = std::scalbn(k_[i], shift);
      if (std::fabs(k[i]) < kSmallestCoefficient) k[i] = 0.0;
    }
    double scaled[3];
    int const n = rootsOfSimilarTerms(k[3], k[2], k[1], k[0], scaled);
    for (int i = 0; i < n; ++i) {
      if (scaled[i] == 0.0) continue;
      int const magnitude = std::ilogb(scaled[i]) + scale;
      double const root = std::scalbn(scaled[i], scale) + 0.0;
      bool const isWanted = low <= magnitude && magnitude < high && std::isfinite(root);
      if (isWanted) count_ = insertRoot(roots, count_, root);
    }
  }

  int exponent(unsigned i) const { return std::ilogb(k_[i]); }

  Coefficients k_;
  int count_ = 0;
};

}  // namespace

int wideRangeRoots(Coefficients const& coefficients, double* roots) {
  return WideRangeSolver(coefficients).solve(roots);
}

}  // namespace crv::internal
