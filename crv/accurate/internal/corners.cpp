#include "crv/accurate/internal/corners.h"

#include <cmath>

namespace crv::internal {

namespace {

/// The points of a stroke, with the length of the path to each. On a closed stroke indices may run
/// beyond both ends.
class Path {
 public:
  Path(std::vector<Point> const& places, bool closed)
      : places_(places), count_(static_cast<long>(places.size())), closed_(closed) {
    lengths_.reserve(places.size() + 1);
    lengths_.push_back(0.0);
    for (std::size_t i = 1; i < places.size(); ++i) {
      lengths_.push_back(lengths_.back() + distance(places[i - 1], places[i]));
    }
    total_ = lengths_.back() + distance(places.back(), places.front());
  }

  /// The smallest and the largest valid index.
  long firstIndex() const { return closed_ ? -count_ + 1 : 0; }
  long lastIndex() const { return closed_ ? 2 * count_ - 2 : count_ - 1; }

  Point const& place(long i) const { return places_[static_cast<std::size_t>(wrapped(i))]; }

  double length(long i) const {
    double const laps = i < 0 ? -1.0 : (i < count_ ? 0.0 : 1.0);
    return lengths_[static_cast<std::size_t>(wrapped(i))] + laps * total_;
  }

 private:
  long wrapped(long i) const { return i < 0 ? i + count_ : (i < count_ ? i : i - count_); }

  std::vector<Point> const& places_;
  long count_;
  bool closed_;
  std::vector<double> lengths_;
  double total_;
};

/// The cosine of the turn from p over q to r.
double turnCosine(Point const& p, Point const& q, Point const& r) {
  Point const in = q - p;
  Point const out = r - q;
  double const lengths = std::sqrt(dot(in, in)) * std::sqrt(dot(out, out));
  return lengths > 0.0 ? dot(in, out) / lengths : 1.0;
}

}  // namespace

std::vector<std::size_t> cornersOf(std::vector<Point> const& places, bool closed, double reach,
                                   double cosine) {
  std::vector<std::size_t> corners;
  auto const count = static_cast<long>(places.size());
  if (count < 3) return corners;
  Path const path(places, closed);
  long before = path.firstIndex();
  long after = 1;
  double sharpest = 1.0, first = 1.0;  // cosines of the turns at the last corner and at the first
  for (long i = closed ? 0 : 1; i < (closed ? count : count - 1); ++i) {
    while (before + 1 < i && path.length(i) - path.length(before + 1) >= reach) ++before;
    if (after <= i) after = i + 1;
    while (after < path.lastIndex() && path.length(after) - path.length(i) < reach) ++after;
    double const turn = turnCosine(path.place(before), path.place(i), path.place(after));
    if (!(turn <= cosine)) continue;
    bool const isNearLast =
        !corners.empty() && path.length(i) - path.length(static_cast<long>(corners.back())) < reach;
    if (!isNearLast) {
      corners.push_back(static_cast<std::size_t>(i));
      sharpest = turn;
    } else if (turn < sharpest) {
      corners.back() = static_cast<std::size_t>(i);
      sharpest = turn;
    }
    if (corners.size() == 1) first = sharpest;
  }
  if (closed && corners.size() > 1) {
    auto const front = static_cast<long>(corners.front()), back = static_cast<long>(corners.back());
    bool const areNear = path.length(front + count) - path.length(back) < reach;
    if (areNear) corners.erase(sharpest < first ? corners.begin() : corners.end() - 1);
  }
  return corners;
}

}  // namespace crv::internal
