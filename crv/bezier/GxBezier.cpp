#include "crv/bezier/GxBezier.h"

#include <utility>

GxBezier::GxBezier(GxCoord<double> const& p0, GxCoord<double> const& p1, GxCoord<double> const& p2,
                   GxCoord<double> const& p3)
    : points_{p0, p1, p2, p3} {}

GxBezier::GxBezier(GxCoord<double> const* points)
    : points_{points[0], points[1], points[2], points[3]} {}

int GxBezier::operator==(GxBezier const& other) const {
  for (int i = 0; i < 4; ++i) {
    if (points_[i] != other.points_[i]) return 0;
  }
  return 1;
}

int GxBezier::operator!=(GxBezier const& other) const { return !(*this == other); }

void GxBezier::reverse() {
  std::swap(points_[0], points_[3]);
  std::swap(points_[1], points_[2]);
}

void GxBezier::scale(double sx, double sy) {
  for (GxCoord<double>& p : points_) p.scale(sx, sy);
}

void GxBezier::flip() {
  for (GxCoord<double>& p : points_) p.yval() *= -1.0;
}

GxBezier::Comperator::Comperator(std::vector<double>& values) : values_(&values) {}

bool GxBezier::Comperator::operator()(int i, int j) const {
  std::vector<double> const& values = *values_;
  return values[static_cast<std::size_t>(j)] < values[static_cast<std::size_t>(i)];
}

int GxBezier::compFunc(void const* a, void const* b) {
  double const x = *static_cast<double const*>(a);
  double const y = *static_cast<double const*>(b);
  if (x > y) return -1;
  return x == y ? 0 : 1;
}

template class GxList<GxBezier>;
