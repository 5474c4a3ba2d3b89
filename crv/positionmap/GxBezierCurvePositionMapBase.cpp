#include "crv/positionmap/GxBezierCurvePositionMapBase.h"

GxBezierCurvePositionMapBase::GxBezierCurvePositionMapBase() = default;

GxBezierCurvePositionMapBase::~GxBezierCurvePositionMapBase() = default;

int GxBezierCurvePositionMapBase::transform(std::list<int>, std::list<GxBezierCurvePosition>& out,
                                            std::list<GxBezierCurvePosition> const& in) const {
  int codes = 0;
  std::list<GxBezierCurvePosition> mapped;
  for (GxBezierCurvePosition const& p : in) codes |= mapPosition(mapped.emplace_back(), p);
  out.splice(out.end(), mapped);
  return codes;
}

template class GxHandle<GxBezierCurvePositionMapBase>;
