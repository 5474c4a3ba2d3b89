#include "crv/accurate/internal/outlines.h"

#include "crv/accurate/internal/blossom.h"
#include "crv/accurate/internal/scale.h"

namespace crv::internal {

namespace {

Cubic segmentAt(Curve const& curve, unsigned i) { return cubic(curve[static_cast<int>(i)]); }

}  // namespace

Outlines::Outlines(std::vector<Curve> const& a, std::vector<Curve> const* b) {
  std::vector<Curve> const* const lists[] = {&a, b};
  Magnitude magnitude;
  std::size_t size = 0;
  for (std::vector<Curve> const* const list : lists) {
    if (list == nullptr) continue;
    for (Curve const& curve : *list) {
      for (unsigned i = 0; i < curve.length(); ++i) magnitude.add(segmentAt(curve, i));
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
  unsigned const n = static_cast<unsigned>(curve.length());
  Cubic c = segmentAt(curve, 0);
  Point const start = c.start();
  for (unsigned i = 0; i < n; ++i) {
    addSegment(c, {list, number, i});
    Point const end = c.end();
    if (i + 1 < n) c = segmentAt(curve, i + 1);
    Point const next = i + 1 < n ? c.start() : start;
    bool const isGap = distance(end, next) > resolution;
    if (isGap) addSegment(straight(end, next), {kNone, number, i});
  }
  segments.back().next = first;
}

}  // namespace crv::internal
