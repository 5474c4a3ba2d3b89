#include "crv/accurate/internal/outlines.h"

#include "crv/accurate/internal/blossom.h"
#include "crv/accurate/internal/chain.h"
#include "crv/accurate/internal/scale.h"

namespace crv::internal {

Outlines::Outlines(std::vector<Curve> const& a, std::vector<Curve> const* b) {
  std::vector<Chain> chains;
  chains.reserve(a.size() + (b == nullptr ? 0 : b->size()));
  for (Curve const& curve : a) chains.emplace_back(curve);
  if (b != nullptr) {
    for (Curve const& curve : *b) chains.emplace_back(curve);
  }
  Magnitude magnitude;
  std::size_t size = 0;
  for (Chain const& chain : chains) {
    magnitude.add(chain.magnitude());
    size += chain.size();
  }
  magnitude_ = magnitude.value();
  if (!isUsable(magnitude_)) return;
  segments.reserve(size);
  origins.reserve(size);
  for (std::size_t i = 0; i < chains.size(); ++i) {
    bool const isFirst = i < a.size();
    add(chains[i].segments, isFirst ? 0 : 1, isFirst ? i : i - a.size());
  }
}

void Outlines::add(std::vector<Cubic> const& curve, std::size_t list, std::size_t number) {
  double const resolution = kDefaultResolution * magnitude_;
  std::size_t const first = segments.size();
  auto const addSegment = [&](Cubic const& c, Origin const& origin) {
    segments.push_back({c, segments.size() + 1, static_cast<int>(list)});
    origins.push_back(origin);
  };
  for (std::size_t i = 0; i < curve.size(); ++i) {
    Point const end = curve[i].end(), start = curve[i + 1 == curve.size() ? 0 : i + 1].start();
    addSegment(curve[i], {list, number, i});
    bool const isGap = distance(end, start) > resolution;
    if (isGap) addSegment(straight(end, start), {kNone, number, i});
  }
  if (!curve.empty()) segments.back().next = first;
}

}  // namespace crv::internal
