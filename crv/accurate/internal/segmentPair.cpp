// Newton's methods on two segments.
#include "crv/accurate/internal/segmentPair.h"

#include "crv/accurate/internal/motion.h"
#include "crv/foundation/tolerance.h"

#include <cmath>

namespace crv::internal {

namespace {

// Newton steps. From a start that is 10 % off, quadratic convergence takes five; near a singular
// point the iteration may use all of them and then fails.
constexpr int kMaxSteps = 14;

// Steps to the nearest point. Next to a cusp each step is about half the one before.
constexpr int kMaxFootSteps = 40;

// Parameter: after a longer step to the nearest point, the new distance is compared with the old
// one.
constexpr double kLongStep = 0x1p-20;

// Parameter: the iteration has converged when a step is shorter than this.
constexpr double kConverged = 0x1p-44;

// Parameter: after a step shorter than this, the next step usually converges.
constexpr double kNearlyConverged = 0x1p-22;

// Parameter: steps below this that no longer shrink are rounding errors, magnified by a small
// crossing angle.
constexpr double kSettled = 0x1p-16;

// Parameter: how far beyond [0, 1] an iterate may lie.
constexpr double kSlack = 0.25;

/// Detects that the steps of an iteration no longer become shorter.
class Convergence {
 public:
  bool isReached(double step) {
    bool const isStill = step <= kConverged || (step < kSettled && step >= last_);
    last_ = step;
    return isStill;
  }

 private:
  double last_ = 1.0;
};

bool isNear(double t) { return t >= -kSlack && t <= 1.0 + kSlack; }

}  // namespace

double footOn(Cubic const& c, Point const& p, double u) {
  double nearest = u, least = 0.0, step = 0.0;
  for (int i = 0; i < kMaxFootSteps; ++i) {
    Point const away = pointAt(c, u) - p, d = derivativeAt(c, u);
    double const squared = dot(away, away);
    if (step > kLongStep && squared > 2.0 * least) {
      // Next to a cusp a step may increase the distance; then half of it is taken back.
      step *= 0.5;
      u = 0.5 * (u + nearest);
      continue;
    }
    nearest = u;
    least = squared;
    double const slope = dot(away, d), squaredSpeed = dot(d, d);
    double const curvature = squaredSpeed + dot(away, secondDerivativeAt(c, u));
    // Where the distance is not convex, the Gauss-Newton step still decreases it.
    double const second = curvature > 0.5 * squaredSpeed ? curvature : squaredSpeed;
    if (!(second > 0.0)) return u;
    double const next = min(1.0, max(0.0, u - slope / second));
    step = std::fabs(next - u);
    u = next;
    if (step <= kConverged) return u;
  }
  return nearest;
}

bool SegmentPair::findCrossing(double& t, double& u) const {
  // Far from the crossing the power form is exact enough, and takes half the time.
  Motion const motionA(a.p[1] - a.p[0], a.p[2] - a.p[0], a.p[3] - a.p[0]);
  Motion const motionB(b.p[1] - b.p[0], b.p[2] - b.p[0], b.p[3] - b.p[0]);
  Point const start = a.p[0] - b.p[0];
  int left = kMaxSteps;
  for (double step = 1.0; left > 0 && step > kNearlyConverged; --left) {
    Point const gap = start + motionA.place(t) - motionB.place(u);
    Point const da = motionA.velocity(t), db = motionB.velocity(u);
    double const det = cross(da, db);
    if (det == 0.0) break;
    double const dt = -cross(gap, db) / det, du = -cross(gap, da) / det;
    t += dt;
    u += du;
    if (!(isNear(t) && isNear(u))) return false;
    step = std::fabs(dt) + std::fabs(du);
  }
  Convergence convergence;
  for (; left > 0; --left) {
    Point const gap = pointAt(a, t) - pointAt(b, u);
    Point const da = derivativeAt(a, t), db = derivativeAt(b, u);
    double const det = cross(da, db);
    if (det == 0.0) return gap.x == 0.0 && gap.y == 0.0;
    double const dt = -cross(gap, db) / det, du = -cross(gap, da) / det;
    t += dt;
    u += du;
    if (!(isNear(t) && isNear(u))) return false;
    if (convergence.isReached(std::fabs(dt) + std::fabs(du))) return true;
  }
  return false;
}

bool SegmentPair::findTangency(double& t, double& u) const {
  Convergence convergence;
  for (int i = 0; i < kMaxSteps; ++i) {
    Point const gap = pointAt(a, t) - pointAt(b, u);
    Point const da = derivativeAt(a, t), db = derivativeAt(b, u);
    Point const dda = secondDerivativeAt(a, t), ddb = secondDerivativeAt(b, u);
    // At a tangency the directions are parallel, and the gap is perpendicular to them.
    double const f = cross(da, db), ft = cross(dda, db), fu = cross(da, ddb);
    double const g = dot(gap, da), gt = dot(da, da) + dot(gap, dda), gu = -dot(db, da);
    double const det = ft * gu - fu * gt;
    if (det == 0.0) return false;
    double const dt = (fu * g - f * gu) / det, du = (f * gt - ft * g) / det;
    t += dt;
    u += du;
    if (!(isNear(t) && isNear(u))) return false;
    if (convergence.isReached(std::fabs(dt) + std::fabs(du))) return true;
  }
  return false;
}

FootPair SegmentPair::footOnB(double t, double u) const {
  double const foot = footOn(b, pointAt(a, t), u);
  return {t, foot, distanceAt(t, foot)};
}

FootPair SegmentPair::footOnA(double t, double u) const {
  double const foot = footOn(a, pointAt(b, u), t);
  return {foot, u, distanceAt(foot, u)};
}

}  // namespace crv::internal
