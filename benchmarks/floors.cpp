// The floor of an operation: the barest inline code for the steps that it must take, with none of
// its guards, checks or lists of results.
#include <algorithm>
#include <cmath>

#include "support.h"

namespace bench {

namespace {

struct Cubic {
  double x[4], y[4];
};

std::vector<Cubic> const& cubics(std::string const& set) {
  static std::vector<Cubic> all[2];
  std::vector<Cubic>& found = all[set == "font" ? 0 : 1];
  if (found.empty()) {
    for (Row const& row : rows(set)) {
      Cubic c;
      for (int i = 0; i < 4; ++i) {
        c.x[i] = row.segment[i].xval();
        c.y[i] = row.segment[i].yval();
      }
      found.push_back(c);
    }
  }
  return found;
}

void splitAt(double const (&p)[4], double t, double (&left)[4], double (&right)[4]) {
  double const a = p[0] + (p[1] - p[0]) * t, m = p[1] + (p[2] - p[1]) * t;
  double const c = p[2] + (p[3] - p[2]) * t;
  double const b = a + (m - a) * t, d = m + (c - m) * t;
  double const e = b + (d - b) * t;
  left[0] = p[0], left[1] = a, left[2] = b, left[3] = e;
  right[0] = e, right[1] = d, right[2] = c, right[3] = p[3];
}

void split(benchmark::State& state, char const* set) {
  overIndices(state, set, [&all = cubics(set), &inputs = rows(set)](std::size_t i) {
    Cubic left, right;
    splitAt(all[i].x, inputs[i].t, left.x, right.x);
    splitAt(all[i].y, inputs[i].t, left.y, right.y);
    benchmark::DoNotOptimize(left);
    benchmark::DoNotOptimize(right);
    return 0;
  });
}

void pointsAndDerivatives(benchmark::State& state, char const* set) {
  overAll(state, cubics(set), [](Cubic const& c) {
    double sum = 0.0;
    for (int i = 0; i < 16; ++i) {
      double const t = i / 15.0, s = 1.0 - t;
      double const b0 = s * s * s, b1 = 3.0 * t * s * s, b2 = 3.0 * t * t * s, b3 = t * t * t;
      double const d0 = 3.0 * s * s, d1 = 6.0 * s * t, d2 = 3.0 * t * t;
      double const x = c.x[0] * b0 + c.x[1] * b1 + c.x[2] * b2 + c.x[3] * b3;
      double const y = c.y[0] * b0 + c.y[1] * b1 + c.y[2] * b2 + c.y[3] * b3;
      double const dx = (c.x[1] - c.x[0]) * d0 + (c.x[2] - c.x[1]) * d1 + (c.x[3] - c.x[2]) * d2;
      double const dy = (c.y[1] - c.y[0]) * d0 + (c.y[2] - c.y[1]) * d1 + (c.y[3] - c.y[2]) * d2;
      sum += (x + y) + (dx + dy);
    }
    return sum;
  });
}

/// Chords between count + 1 points that are evaluated in power form.
double chords(Cubic const& c, int count) {
  double const ax = c.x[3] - c.x[0] + 3.0 * (c.x[1] - c.x[2]), cx = 3.0 * (c.x[1] - c.x[0]);
  double const ay = c.y[3] - c.y[0] + 3.0 * (c.y[1] - c.y[2]), cy = 3.0 * (c.y[1] - c.y[0]);
  double const bx = c.x[3] - c.x[0] - ax - cx, by = c.y[3] - c.y[0] - ay - cy;
  double sum = 0.0, x = c.x[0], y = c.y[0];
  for (int i = 1; i <= count; ++i) {
    double const t = i * (1.0 / count);
    double const nextX = c.x[0] + t * (cx + t * (bx + t * ax));
    double const nextY = c.y[0] + t * (cy + t * (by + t * ay));
    sum += std::sqrt((nextX - x) * (nextX - x) + (nextY - y) * (nextY - y));
    x = nextX, y = nextY;
  }
  return sum;
}

/// Chords are doubled from ten on until two measurements agree within 0.1.
void arcLength(benchmark::State& state, char const* set) {
  overAll(state, cubics(set), [](Cubic const& c) {
    double before = chords(c, 10), length = chords(c, 20);
    for (int n = 40; std::fabs(length - before) > 0.1; n *= 2) {
      before = length;
      length = chords(c, n);
    }
    return length;
  });
}

/// Halves until the inner points lie within 0.1 of the chord; appends the ends of the pieces.
void halve(Cubic const& c, std::vector<Point>& out) {
  double const dx = c.x[3] - c.x[0], dy = c.y[3] - c.y[0];
  double const d1 = (c.x[1] - c.x[0]) * dy - (c.y[1] - c.y[0]) * dx;
  double const d2 = (c.x[2] - c.x[0]) * dy - (c.y[2] - c.y[0]) * dx;
  if (std::max(d1 * d1, d2 * d2) <= 0.01 * (dx * dx + dy * dy)) {
    out.emplace_back(c.x[3], c.y[3]);
    return;
  }
  Cubic left, right;
  splitAt(c.x, 0.5, left.x, right.x);
  splitAt(c.y, 0.5, left.y, right.y);
  halve(left, out);
  halve(right, out);
}

void polyline(benchmark::State& state, char const* set) {
  std::vector<Point> out;
  overAll(state, cubics(set), [&out](Cubic const& c) {
    out.assign(1, Point(c.x[0], c.y[0]));
    halve(c, out);
    return out.size();
  });
}

/// The quintic (B - p) . B' at 17 parameters, and five Newton steps for each that is followed by a
/// change of sign from below.
void nearest(benchmark::State& state, char const* set) {
  overIndices(state, set, [&all = cubics(set), &inputs = rows(set)](std::size_t i) {
    Cubic const& c = all[i];
    Point const& p = inputs[i].query;
    double const ax = c.x[3] - c.x[0] + 3.0 * (c.x[1] - c.x[2]), cx = 3.0 * (c.x[1] - c.x[0]);
    double const ay = c.y[3] - c.y[0] + 3.0 * (c.y[1] - c.y[2]), cy = 3.0 * (c.y[1] - c.y[0]);
    double const bx = c.x[3] - c.x[0] - ax - cx, by = c.y[3] - c.y[0] - ay - cy;
    double const px = c.x[0] - p.xval(), py = c.y[0] - p.yval();
    double const q[6] = {px * cx + py * cy,
                         cx * cx + cy * cy + 2.0 * (px * bx + py * by),
                         3.0 * (bx * cx + by * cy + px * ax + py * ay),
                         4.0 * (ax * cx + ay * cy) + 2.0 * (bx * bx + by * by),
                         5.0 * (ax * bx + ay * by),
                         3.0 * (ax * ax + ay * ay)};
    auto const quintic = [&q](double t) {
      return q[0] + t * (q[1] + t * (q[2] + t * (q[3] + t * (q[4] + t * q[5]))));
    };
    auto const squaredDistance = [&](double t) {
      double const x = px + t * (cx + t * (bx + t * ax)), y = py + t * (cy + t * (by + t * ay));
      return x * x + y * y;
    };
    double best = squaredDistance(0.0) < squaredDistance(1.0) ? 0.0 : 1.0;
    for (int k = 0; k < 16; ++k) {
      double t = k / 16.0;
      if (!(quintic(t) < 0.0 && quintic(t + 1.0 / 16.0) >= 0.0)) continue;
      for (int step = 0; step < 5; ++step) {
        double const slope =
            q[1] + t * (2.0 * q[2] + t * (3.0 * q[3] + t * (4.0 * q[4] + t * 5.0 * q[5])));
        t -= quintic(t) / slope;
      }
      if (squaredDistance(t) < squaredDistance(best)) best = t;
    }
    return best;
  });
}

}  // namespace

void enterFloors() {
  enterSets("nearest parameter", "floor", nearest);
  enterSets("polyline by halving, 0.1", "floor", polyline);
  enterSets("arc length, 0.1", "floor", arcLength);
  enterSets("16 points and derivatives", "floor", pointsAndDerivatives);
  enterSets("split", "floor", split);
}

}  // namespace bench
