// The floor of an operation is minimal inline code for the steps that it must take. The floors of
// polylines and of lines return the results of the library, bit for bit and in the same containers,
// which is checked; the others leave out guards, checks and lists of results.
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

/// Fails unless floor(i) equals the result of the library for every row.
template <class Floor, class Library>
void expectSame(benchmark::State& state, char const* set, Floor floor, Library library) {
  for (std::size_t i = 0; i < rows(set).size(); ++i) {
    if (floor(i) != library(i)) state.SkipWithError("the floor gives other results");
  }
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

constexpr double kSquaredTolerance = 0.1 * 0.1;

double square(double x) { return x * x; }

/// Whether inner point i lies within the tolerance of the chord (dx, dy).
bool isNearChord(Cubic const& c, int i, double dx, double dy) {
  double const x = c.x[i] - c.x[0], y = c.y[i] - c.y[0];
  double const length = dx * dx + dy * dy, along = dx * x + dy * y;
  if (along <= 0.0) return x * x + y * y <= kSquaredTolerance;
  if (along >= length) return square(x - dx) + square(y - dy) <= kSquaredTolerance;
  return square(dx * y - dy * x) <= kSquaredTolerance * length;
}

/// Halves until the inner points lie within 0.1 of the chord; appends the ends of all pieces that
/// are not points.
void halve(Cubic const& c, std::vector<Point>& out) {
  double const dx = c.x[3] - c.x[0], dy = c.y[3] - c.y[0];
  if (isNearChord(c, 1, dx, dy) && isNearChord(c, 2, dx, dy)) {
    bool const isPoint = dx * dx + dy * dy <= kSquaredTolerance &&
                         square(c.x[1] - c.x[0]) + square(c.y[1] - c.y[0]) <= kSquaredTolerance &&
                         square(c.x[2] - c.x[3]) + square(c.y[2] - c.y[3]) <= kSquaredTolerance;
    if (!isPoint) out.emplace_back(c.x[3], c.y[3]);
    return;
  }
  Cubic left, right;
  splitAt(c.x, 0.5, left.x, right.x);
  splitAt(c.y, 0.5, left.y, right.y);
  halve(left, out);
  halve(right, out);
}

void polyline(benchmark::State& state, char const* set) {
  auto const polylineOf = [&all = cubics(set)](std::size_t i) {
    std::vector<Point> out(1, Point(all[i].x[0], all[i].y[0]));
    halve(all[i], out);
    return out;
  };
  overIndices(state, set, [=](std::size_t i) { return polylineOf(i).size(); });
  expectSame(state, set, polylineOf, [=](std::size_t i) {
    std::vector<Point> out;
    rows(set)[i].segment.getPolyline(0.1, out);
    return out;
  });
}

/// A polyline with as many vertices as crv::flatten gives, at parameters that are known: containers
/// and points alone.
void fewChords(benchmark::State& state, char const* set) {
  std::vector<std::vector<double>> parameters;
  for (Row const& row : rows(set)) {
    std::vector<double>& t = parameters.emplace_back();
    for (auto const& position : crv::flatten(GxBezierCurve{row.segment}, 0.1).positions) {
      t.push_back(position.getTValue());
    }
    t.back() = 1.0;
  }
  overIndices(state, set, [&, &all = cubics(set)](std::size_t i) {
    crv::Polyline line = {std::vector<Point>(parameters[i].size()), {}, 0.1};
    line.positions.reserve(parameters[i].size());
    Cubic const& c = all[i];
    for (std::size_t k = 0; k < parameters[i].size(); ++k) {
      double const t = parameters[i][k];
      double const s = 1.0 - t;
      double const b0 = s * s * s, b1 = 3.0 * t * s * s, b2 = 3.0 * t * t * s, b3 = t * t * t;
      line.points[k] = Point(c.x[0] * b0 + c.x[1] * b1 + c.x[2] * b2 + c.x[3] * b3,
                             c.y[0] * b0 + c.y[1] * b1 + c.y[2] * b2 + c.y[3] * b3);
      line.positions.emplace_back(0, t);
    }
    return line.points.size();
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

/// a b - c d, both products exact (Dekker).
double differenceOfProducts(double a, double b, double c, double d) {
  auto const high = [](double x) {
    double const t = 134217729.0 * x;
    return t - (t - x);
  };
  auto const error = [high](double x, double y) {
    double const xHigh = high(x), xLow = x - xHigh, yHigh = high(y), yLow = y - yHigh;
    return xLow * yLow - (((x * y - xHigh * yHigh) - xLow * yHigh) - xHigh * yLow);
  };
  return (a * b - c * d) + (error(a, b) - error(c, d));
}

/// A cubic polynomial, and Newton's method with bisection for the root between lo and hi.
struct Polynomial {
  double a, b, c, d;

  double value(double t) const { return ((a * t + b) * t + c) * t + d; }

  double root(double lo, double hi, double x) const {
    bool const rises = value(hi) > 0.0;
    if (!(lo < x && x < hi)) x = lo + 0.5 * (hi - lo);
    for (double lastStep = hi - lo;;) {
      double const v = value(x), slope = (3.0 * a * x + 2.0 * b) * x + c;
      double next = x - v / slope;
      if (v == 0.0 || next == x) return x;
      ((v > 0.0) == rises ? hi : lo) = x;
      double const step = std::fabs(next - x);
      double const curvature = std::fabs(6.0 * a * x + 2.0 * b) + step * std::fabs(6.0 * a);
      if (std::fabs(2.0 * v) > std::fabs(lastStep * slope) || !(lo < next && next < hi)) {
        next = lo + 0.5 * (hi - lo);
        if (next == lo || next == hi) return x;
      } else if (step * step * curvature < 0x1p-55 * std::fabs(next * slope)) {
        return next;
      }
      lastStep = std::fabs(next - x);
      x = next;
    }
  }
};

/// The real roots of b t^2 + c t + d, ascending; false if there are no two.
bool quadraticRoots(double b, double c, double d, double& first, double& second) {
  double const discriminant = differenceOfProducts(c, c, 4.0 * b, d);
  if (discriminant <= 0.0) return false;
  double const q = -0.5 * (c + std::copysign(std::sqrt(discriminant), c));
  first = std::min(q / b, d / q);
  second = std::max(q / b, d / q);
  return true;
}

/// Calls visit(t) with the roots in [0, 1], found as those between the stationary points.
template <class Visit>
void forRoots(Polynomial const& f, Visit visit) {
  double s0 = 0.0, s1 = 0.0;
  if (f.a == 0.0) {
    if (!quadraticRoots(f.b, f.c, f.d, s0, s1)) return;
    for (double const t : {s0, s1}) {
      if (0.0 <= t && t <= 1.0) visit(t);
    }
    return;
  }
  double const bound =
      1.0 + std::max(std::max(std::fabs(f.b), std::fabs(f.c)), std::fabs(f.d)) / std::fabs(f.a);
  double const inflection = -f.b / (3.0 * f.a);
  auto const visitBetween = [&](double lo, double hi, double start) {
    bool const crosses = (f.value(std::max(lo, 0.0)) < 0.0) != (f.value(std::min(hi, 1.0)) < 0.0);
    if (lo < 1.0 && hi > 0.0 && crosses) visit(f.root(lo, hi, start));
  };
  if (!quadraticRoots(3.0 * f.a, 2.0 * f.b, f.c, s0, s1)) {
    return visitBetween(-bound, bound, inflection);
  }
  double const r = 0.5 * (s1 - s0);
  double const k = f.value(inflection) / (2.0 * f.a * r * r * r);
  double const w = std::sqrt(std::max(0.0, 1.0 - std::fabs(k)));
  double const p = 0.18311158 + w * (0.08469496 + w * (-0.02068827 + w * 0.08519288));
  double const middle = std::copysign((1.0 - w) * (1.0 + w * p), k);
  double const side = std::sqrt(12.0 - 3.0 * middle * middle);
  visitBetween(-bound, s0, inflection + 0.5 * (-middle - side) * r);
  visitBetween(s0, s1, inflection + middle * r);
  visitBetween(s1, bound, inflection + 0.5 * (-middle + side) * r);
}

Polynomial powerForm(double const (&p)[4]) {
  return {-p[0] + 3.0 * p[1] - 3.0 * p[2] + p[3], 3.0 * p[0] - 6.0 * p[1] + 3.0 * p[2],
          3.0 * p[1] - 3.0 * p[0], p[0]};
}

struct Crossings {
  GxList<double> segment, line;
  bool operator!=(Crossings const& other) const {
    return segment != other.segment || line != other.line;
  }
};

void crossLine(Cubic const& c, Row const& row, Crossings& out) {
  Point const& start = row.lineStart;
  GxVector<double> const v = row.lineEnd - start;
  Polynomial const x = powerForm(c.x), y = powerForm(c.y);
  auto const height = [&v](double px, double py) { return -v.yval() * px + v.xval() * py; };
  Polynomial const f = {height(x.a, y.a), height(x.b, y.b), height(x.c, y.c),
                        height(x.d - start.xval(), y.d - start.yval())};
  forRoots(f, [&](double t) {
    double const position = (row.segment.bValue(t) - start) * v / v.squaredLength();
    if (!(0.0 <= position && position <= 1.0)) return;
    out.segment.add(t);
    out.line.add(position);
  });
}

void crossingsWithALine(benchmark::State& state, char const* set) {
  auto const cross = [&all = cubics(set), &inputs = rows(set)](std::size_t i) {
    Crossings found;
    crossLine(all[i], inputs[i], found);
    return found;
  };
  overIndices(state, set, [&all = cubics(set), &inputs = rows(set)](std::size_t i) {
    Crossings found;
    crossLine(all[i], inputs[i], found);
    return found.line.length();
  });
  expectSame(state, set, cross, [=](std::size_t i) {
    Row const& row = rows(set)[i];
    Crossings found;
    row.segment.findYCStrongIntersection(row.lineStart, row.lineEnd, found.segment, found.line);
    return found;
  });
}

}  // namespace

void enterFloors() {
  enterSets("nearest parameter", "floor", nearest);
  enterSets("polyline by halving, 0.1", "floor", polyline);
  enterSets("few chords, 0.1", "floor", fewChords);
  enterSets("arc length, 0.1", "floor", arcLength);
  enterSets("16 points and derivatives", "floor", pointsAndDerivatives);
  enterSets("crossings with a line", "floor", crossingsWithALine);
  enterSets("split", "floor", split);
}

}  // namespace bench
