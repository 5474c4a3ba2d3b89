#include "crv/accurate/internal/outlines.h"

#include "crv/accurate/internal/blossom.h"
#include "crv/accurate/internal/scale.h"

namespace crv::internal {

Outlines::Outlines(std::vector<Curve> const& a, std::vector<Curve> const* b) {
  std::vector<Curve> const* const lists[] = {&a, b};
  Magnitude magnitude;
  std::size_t size = 0;
  for (std::vector<Curve> const* const list : lists) {
    if (list == nullptr) continue;
    for (Curve const& curve : *list) {
      for (Segment const& s : curve) magnitude.add(cubic(s));
      size += curve.length();
    }
  }
  magnitude_ = magnitude.value();
  if (!isUsable(magnitude_)) return;
  segments.reserve(size);
  origins.reserve(size);
  for (std::size_t list = 0; list < 2 && lists[list] != nullptr; ++list) {
    for (std::size_t i = 0; i < lists[list]->size(); ++i) add((*lists[list])[i], list, i);
  }
}

void Outlines::add(Curve const& curve, std::size_t list, std::size_t number) {
  if (curve.length() == 0) return;
  double const resolution = kDefaultResolution * magnitude_;
  std::size_t const first = segments.size();
  auto const addSegment = [&](Cubic const& c, Origin const& origin) {
    segments.push_back({c, segments.size() + 1, static_cast<int>(list)});
    origins.push_back(origin);
  };
  std::size_t i = 0;
  for (auto segment = curve.begin(); segment != curve.end(); ++i) {
    Cubic const c = cubic(*segment);
    addSegment(c, {list, number, i});
    ++segment;
    Point const next = plain((*(segment != curve.end() ? segment : curve.begin()))[0]);
    bool const isGap = distance(c.end(), next) > resolution;
    if (isGap) addSegment(straight(c.end(), next), {kNone, number, i});
  }
  segments.back().next = first;
}

}  // namespace crv::internal
