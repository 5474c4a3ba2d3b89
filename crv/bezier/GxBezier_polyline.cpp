// Polylines by halving: a piece is split in the middle until it is a point, which adds nothing, or
// a line, which adds its end (after Lane and Riesenfeld, 1980).
#include "crv/bezier/GxBezier.h"

#include "crv/bezier/GxBezierPolylineCondition.h"
#include "crv/bezier/internal/polyline.h"

#include <cmath>

namespace {

// Guards: halvings of one piece, and pieces looked at in one polyline. 1,100 halvings leave the
// range of exponents of a segment's size, 2,200 that of any parameter that a caller's condition may
// follow. More pieces are only made for tolerances below the resolution of the coordinates.
constexpr int kMaxDepth = 1100;
constexpr int kMaxDepthOfCaller = 2200;
constexpr long kMaxPieces = 1L << 26;

bool isFinite(GxBezier const& s) {
  for (int i = 0; i < 4; ++i) {
    if (!std::isfinite(s[i].xval()) || !std::isfinite(s[i].yval())) return false;
  }
  return true;
}

/// The condition of the forms without a caller's one. No piece is a line within a tolerance that is
/// negative or NaN: there, every piece counts as one.
struct OwnCondition {
  static constexpr int kDepth = kMaxDepth;
  static bool canHold(double tol) { return tol >= 0.0; }
  int isALine(GxBezier const& s, double tol) const { return s.isALine(tol); }
  int isAPoint(GxBezier const& s, double tol) const { return s.isAPoint(tol); }
};

/// A caller's condition, which alone judges its tolerance.
struct CallersCondition {
  static constexpr int kDepth = kMaxDepthOfCaller;
  static bool canHold(double) { return true; }
  int isALine(GxBezier const& s, double tol) const { return caller.isALine(s, tol); }
  int isAPoint(GxBezier const& s, double tol) const { return caller.isAPoint(s, tol); }

  GxBezierPolylineCondition const& caller;
};

/// Halves pieces and hands the end of each line, with its parameter, to emit.
template <class Condition, class Emit>
class Halving {
 public:
  Halving(Condition const& condition, double tol, long maxPieces, Emit emit)
      : condition_(condition),
        tol_(tol),
        canEnd_(Condition::canHold(tol)),
        maxPieces_(maxPieces),
        emit_(emit) {}

  /// The piece starts at t and covers 1/n of the whole segment; it is used up.
  void run(GxBezier& piece, double t, double n, int depth) {
    for (;; ++depth) {
      ++pieces_;
      // The point is asked for first: what is both a point and a line adds nothing.
      if (condition_.isAPoint(piece, tol_)) return;
      if (condition_.isALine(piece, tol_) || mustEnd(piece, depth)) {
        emit_(piece[3], t + 1.0 / n);
        return;
      }
      GxBezier right;
      piece.split(right, 0.5);
      n *= 2.0;
      run(piece, t, n, depth + 1);
      piece = right;
      t += 1.0 / n;
    }
  }

 private:
  bool mustEnd(GxBezier const& piece, int depth) const {
    return !canEnd_ || depth >= Condition::kDepth || pieces_ >= maxPieces_ || !isFinite(piece);
  }

  Condition const& condition_;
  double tol_;
  bool canEnd_;
  long maxPieces_;
  Emit emit_;
  long pieces_ = 0;
};

template <class Condition, class Emit>
void halve(GxBezier piece, double tol, double t, double n, Condition const& condition,
           long maxPieces, Emit emit) {
  Halving<Condition, Emit>(condition, tol, maxPieces, emit).run(piece, t, n, 0);
}

template <class Points>
void halveInto(Points& out, GxBezier const& segment, double tol, long maxPieces = kMaxPieces) {
  halve(segment, tol, 0.0, 1.0, OwnCondition(), maxPieces,
        [&out](GxCoord<double> const& p, double) { out.push_back(p); });
}

}  // namespace

namespace crv::internal {

void appendPolyline(GxBezier const& segment, double tol, long maxPieces,
                    std::vector<GxCoord<double>>& out) {
  out.push_back(segment[0]);
  halveInto(out, segment, tol, maxPieces);
}

}  // namespace crv::internal

void GxBezier::getPolyline(double tol, std::list<GxCoord<double>>& out) const {
  out.push_back(points_[0]);
  makePolyline(tol, out);
}

void GxBezier::getPolyline(double tol, std::vector<GxCoord<double>>& out) const {
  out.push_back(points_[0]);
  makePolyline(tol, out);
}

void GxBezier::getPolyline(double tol, std::list<GxCoord<double>>& out, std::list<double>& tValues,
                           GxBezierPolylineCondition const& condition) const {
  out.push_back(points_[0]);
  tValues.push_back(0.0);
  makePolyline(tol, 0.0, 1, out, tValues, condition);
}

void GxBezier::makePolyline(double tol, std::list<GxCoord<double>>& out) const {
  halveInto(out, *this, tol);
}

void GxBezier::makePolyline(double tol, std::vector<GxCoord<double>>& out) const {
  halveInto(out, *this, tol);
}

void GxBezier::makePolyline(double tol, double startT, int n, std::list<GxCoord<double>>& out,
                            std::list<double>& tValues,
                            GxBezierPolylineCondition const& condition) const {
  halve(*this, tol, startT, n, CallersCondition{condition}, kMaxPieces,
        [&](GxCoord<double> const& p, double t) {
          out.push_back(p);
          tValues.push_back(t);
        });
}
