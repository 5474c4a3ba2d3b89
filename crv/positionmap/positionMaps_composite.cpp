#include "crv/positionmap/positionMaps.h"

#include <new>
#include <vector>

namespace {

using Position = GxBezierCurvePosition;
using MapHandle = GxHandle<GxBezierCurvePositionMapBase>;

/// The maps are looked up once, when the composite is made: mapping takes no lock.
class GxCompositePositionMap : public GxBezierCurvePositionMapBase {
 public:
  explicit GxCompositePositionMap(std::list<MapHandle> const& maps) : owned_(maps) {
    maps_.reserve(owned_.size());
    for (MapHandle const& map : owned_) maps_.push_back(*map);
  }

  int mapPosition(Position& out, Position const& in) const override {
    return walk(maps_.begin(), maps_.end(), &GxBezierCurvePositionMapBase::mapPosition, out, in);
  }

  int inverseMapPosition(Position& out, Position const& in) const override {
    return walk(maps_.rbegin(), maps_.rend(), &GxBezierCurvePositionMapBase::inverseMapPosition,
                out, in);
  }

 private:
  using Direction = int (GxBezierCurvePositionMapBase::*)(Position&, Position const&) const;

  template <class Iterator>
  static int walk(Iterator map, Iterator end, Direction direction, Position& out,
                  Position const& in) {
    Position current = in;
    for (; map != end; ++map) {
      if (*map == nullptr) return -1;
      int const code = ((*map)->*direction)(out, current);
      if (code != 0) return code;
      current = out;
    }
    return 0;
  }

  std::list<MapHandle> owned_;
  std::vector<GxBezierCurvePositionMapBase const*> maps_;
};

}  // namespace

MapHandle constructCompositePositionMap(MapHandle const& first, MapHandle const& second) {
  return constructCompositePositionMap(std::list<MapHandle>{first, second});
}

MapHandle constructCompositePositionMap(std::list<MapHandle> const& maps) {
  return MapHandle(new (std::nothrow) GxCompositePositionMap(maps));
}
