// One cubic segment and every computation on it.
//
// The declaration is the index: each section is headed by the file that holds its methods. The
// parameter t runs over [0, 1] from the start point to the end point; tolerances and distances are
// absolute, in curve units, unless a comment says squared. Lists of results are appended to and
// never cleared. Input that is not finite gives results that mean nothing, but always an answer.
#pragma once

#include "crv/export.h"
#include "crv/foundation/GxCoord.h"
#include "crv/foundation/GxList.h"
#include "crv/foundation/GxVector.h"

#include <cassert>
#include <list>
#include <utility>
#include <vector>

class GxBezierPolylineCondition;

/// A cubic Bezier segment in the plane: the start point P0, the inner control points P1 and P2, the
/// end point P3, and nothing else. A value type.
class CRV_API GxBezier {
 public:
  // ---- GxBezier.cpp: construction, comparison, access, edits in place ------------------------

  /// Four points at the origin.
  GxBezier() = default;
  GxBezier(GxCoord<double> const& p0, GxCoord<double> const& p1, GxCoord<double> const& p2,
           GxCoord<double> const& p3);

  /// Copies points[0..3].
  GxBezier(GxCoord<double> const* points);
  GxBezier(GxBezier const& other) = default;
  GxBezier& operator=(GxBezier const& other) = default;

  /// 1 when the control points are equal pairwise, exactly.
  int operator==(GxBezier const& other) const;
  int operator!=(GxBezier const& other) const;

  /// Control point i, modifiable also in a const segment. Precondition: 0 <= i <= 3.
  GxCoord<double>& operator()(int i) {
    assert(0 <= i && i <= 3);
    return points_[i];
  }
  GxCoord<double>& operator[](int i) const {
    assert(0 <= i && i <= 3);
    return points_[i];
  }

  /// Swaps the ends and the inner control points: the same shape with t replaced by 1 - t.
  void reverse();

  /// Multiplies all x by sx and all y by sy, about the origin.
  void scale(double sx, double sy);

  /// Mirrors the segment in the x axis.
  void flip();

  /// Orders indices into a vector of values by descending value; equal values are not ordered. The
  /// vector must outlive the functor and hold every index asked about.
  class CRV_API Comperator {
   public:
    Comperator(std::vector<double>& values);
    bool operator()(int i, int j) const;

   private:
    std::vector<double>* values_;
  };

  // ---- GxBezier_evaluate.cpp: point and derivatives at t --------------------------------------

  /// The point at t; outside [0, 1] the cubic is extrapolated. At exactly 0 and 1 the end points.
  GxCoord<double> bValue(double t) const;

  /// The first derivative with respect to t, at any t.
  GxVector<double> dValue(double t) const;

  /// The second derivative with respect to t, at any t.
  GxVector<double> ddValue(double t) const;

  /// Packs two numbers into a point: first (x'y'' - y'x'')/x'^2, the change of the slope dy/dx with
  /// t, second x'; their quotient is the second derivative of y by x. A vertical tangent (|x'|
  /// below 1e-9) gives (0, 0).
  GxCoord<double> curvatureValue(double t) const;

  // ---- GxBezier_split.cpp: subdivision at t ---------------------------------------------------

  /// Keeps the part over [0, t] in this segment, stores the part over [t, 1] in right and returns
  /// this segment. Any t; outside [0, 1] the parts run beyond the segment. If right is this very
  /// segment, it ends as the part over [t, 1]. The parts share their joint bit for bit.
  /// Method: de Casteljau (Farin, Curves and Surfaces for CAGD).
  GxBezier& split(GxBezier& right, double t);

  /// The same, leaving this segment as it is (unless left or right is this very segment).
  void split(GxBezier& left, GxBezier& right, double t) const;

  // ---- GxBezier_flatness.cpp: is it a line, is it a point -------------------------------------

  /// 1 when both inner control points lie on the chord, or on the end next to them, within tol.
  /// Inner points on the line of the chord but beyond its ends make no line.
  int isALine(double tol) const;

  /// 1 when P0 and P1, P2 and P3, and P0 and P3 coincide within tol.
  int isAPoint(double tol) const;

  // ---- GxBezier_nearest.cpp: the nearest point -----------------------------------------------

  /// Stores the point of the segment nearest to p.
  ///   1  it is an end point (its parameter within 1e-9 of 0 or 1)
  ///   0  it is an inner point
  /// A segment with P0 on P1 and P2 on P3, within 1e-7, is taken as its chord.
  /// Method: P. J. Schneider, "Solving the nearest-point-on-curve problem", Graphics Gems (1990).
  int findNearestPoint(GxCoord<double> const& p, GxCoord<double>& nearest);

  /// The parameter, in [0, 1], of the point nearest to p. Of equally near points P0 is taken before
  /// inner ones, those in order of t, and P3 last.
  void findNearestPointTValue(GxCoord<double> const& p, double& t) const;

  // ---- GxBezier_parameter.cpp: the parameter of a point ---------------------------------------

  /// The parameter, in [0, 1], at which the segment passes p within tol in both coordinates, or
  /// -1.0 when 15 Newton steps from t = 0.5 do not find one. The second argument is ignored.
  double findParameter(GxCoord<double> const& p, double ignored, double tol);

  // ---- GxBezier_extremes.cpp: lowest and highest points, boxes -------------------------------

  /// Puts the parameter of the lowest point into entry 0 and of the highest into entry 1 of a list
  /// that should be empty on entry; returns the list's length, then 2. Ties keep end points before
  /// inner ones. With flat handles at both ends (y of P0 and P1, and of P2 and P3, within 1e-9)
  /// only the end points are looked at.
  int getYMinMaxTValues(GxList<double>& list);

  /// The parameter and the height of the highest point; of equal ones P0 before P3 before inner.
  void getMaxYTValue(double& t, double& y) const;

  /// The parameter and the height of the lowest point; of equal ones P0 before P3 before inner.
  void getMinYTValue(double& t, double& y) const;

  /// The tight box of the curve itself.
  void localMinMax(double& minX, double& minY, double& maxX, double& maxY) const;

  /// The box of the four control points, which contains the curve.
  void getConvexHull(double& minX, double& minY, double& maxX, double& maxY) const;

  // ---- GxBezier_roots.cpp: parameters at a height, of a point, of the inflection --------------

  /// Appends every parameter in [lowerT, upperT], both included, at which the segment has height y,
  /// ascending; returns the list's length. A segment that lies at the height has none.
  int findRoots(GxList<double>& list, double y, double lowerT, double upperT) const;

  /// The same, appending the points.
  int findRoots(GxList<GxCoord<double>>& points, double y, double lowerT, double upperT) const;

  /// 1 and the parameter of p when the segment passes it within tol; else 0, with t undefined. An
  /// end point within tol is found first. A point more than 0.1 outside the box of the control
  /// points is not looked for, whatever tol.
  int findTValue(GxCoord<double> const& p, double& t, double tol);

  /// 1 and the first parameter strictly inside (0, 1) at which the segment changes its sense of
  /// turning; 0, t untouched, where the control polygon turns one way or lies straight.
  int findInflectionPoint(double& t);

  // ---- GxBezier_length.cpp: arc length, fixed distances ---------------------------------------

  /// The arc length from startT to the end, measured by chords whose number is doubled until two
  /// measurements agree within 0.1, at most 327,680 chords.
  double length(double startT) const;

  /// The parameter in [lo, hi], after the anchor, whose point lies at a straight-line distance from
  /// the anchor's point, within 0.1, by bisection. lo and hi are narrowed in place; steps is where
  /// the count of bisections starts (0), which ends beyond 15. 1.0 where the segment ends closer
  /// than that; lo at once when hi <= lo; the last midpoint when the distance is not met.
  double splitAtFixedLengthAfter(double distance, int steps, double& lo, double& hi,
                                 double anchorT) const;

  /// The mirror image, in a bracket before the anchor: 0.0 where the segment starts closer than
  /// that; hi at once when hi <= lo.
  double splitAtFixedLengthBefore(double distance, int steps, double& lo, double& hi,
                                  double anchorT) const;

  // ---- GxBezier_spacing.cpp: polylines by steps and by chords ---------------------------------

  /// Appends count + 1 points at equal parameter steps, the ends included; 2 points for count 0.
  void makeSegment(unsigned short count, std::list<GxCoord<double>>& out) const;

  /// Appends the point at startT and from there points one chord apart (within 0.1), and the end,
  /// after a last chord that may be shorter. The point at startT alone where nothing is left of the
  /// segment, its points are not finite, or chord is NaN. What cannot be met ends all the same, but
  /// creeps up to the end: a chord below -0.1, or points beyond 1e154, whose squared distances
  /// overflow, take up to five million points.
  void makeSegment(double chord, GxList<GxCoord<double>>& out, double startT) const;

  /// The same with long chords where the curve stays within gap of them and short ones elsewhere;
  /// plain long chords when longChord <= shortChord.
  void makeSegmentEx(double longChord, double shortChord, double gap, GxList<GxCoord<double>>& out,
                     double startT) const;

  // ---- GxBezier_polyline.cpp: polylines by halving --------------------------------------------

  /// Appends P0 and the ends of pieces, made by halving, each of which is a line within tol; pieces
  /// that are points within tol add nothing. A tolerance that is negative or NaN gives the chord.
  void getPolyline(double tol, std::list<GxCoord<double>>& out) const;
  void getPolyline(double tol, std::vector<GxCoord<double>>& out) const;

  /// The same under the caller's idea of a line and a point, with the parameter of every point.
  void getPolyline(double tol, std::list<GxCoord<double>>& out, std::list<double>& tValues,
                   GxBezierPolylineCondition const& condition) const;

  // ---- GxBezier_step.cpp: the next parameter at a distance ------------------------------------

  /// Finds the next parameter, from startT towards farT (forwards, non-zero direction: towards 1;
  /// backwards: towards 0), whose point lies at a straight-line distance from the point at startT,
  /// given as its square, within 0.01 of the square. Without farT, the segment's end.
  ///    0  found; the parameter is in t
  ///   -1  no range, no length, too little length left, no headway in 64 trials, or the segment's
  ///       end was touched on the way; t holds the last trial, or is untouched if there was none
  int findNextPos(double& t, double startT, double squaredDistance, int forward) const;
  int findNextPos(double& t, double startT, double farT, double squaredDistance, int forward) const;

  /// The same; consumed grows by the arc length from startT to t, or, when the search failed after
  /// the check of the range, by all that was left.
  int findNextPos(double& t, double startT, double squaredDistance, int forward,
                  double& consumed) const;
  int findNextPos(double& t, double startT, double farT, double squaredDistance, int forward,
                  double& consumed) const;

  /// The same with the distance measured from p; no length is looked at.
  int findNextPosFromPoint(double& t, double startT, GxCoord<double> const& p,
                           double squaredDistance, int forward) const;
  int findNextPosFromPoint(double& t, double startT, double farT, GxCoord<double> const& p,
                           double squaredDistance, int forward) const;

  // ---- GxBezier_intersect.cpp: all crossings of two segments ----------------------------------

  /// 1 when the boxes of the control points overlap or touch.
  int isIntersect(GxBezier const& other);

  /// Appends the parameters of all crossings, pairwise, to both lists and sorts both by descending
  /// parameter of this segment, entries from before included. Returns 1 when the first list then
  /// holds any, else 0. The points of a pair lie no farther apart than 2^-13; what is smaller than
  /// that may be seen or not, such as segments that only touch. A crossing on a boundary of the
  /// subdivision can come up to four times; of stretches that overlap, such boundaries are found.
  /// Method: subdivision to a depth known from second differences (Wang 1984; Lane, Riesenfeld
  /// 1980), then chords.
  int findIntersections(GxBezier const& other, GxList<double>& thisParams,
                        GxList<double>& otherParams);

  /// The same, appending the points of this segment; 0, points untouched, when there are none.
  int findIntersections(GxBezier const& other, GxList<GxCoord<double>>& points);

  // ---- GxBezier_intersectFirst.cpp: the first crossing by polylines ---------------------------

  /// 1 and the parameters on this segment and on other of the crossing met first along this one,
  /// approximately, both being flattened within tol; 0, result untouched, when there is none. Where
  /// ends meet ends does not count.
  int findFirstIntersection(GxBezier& other, std::pair<double, double>& result, double tol);

  // ---- GxBezier_intersectLine.cpp: crossings with a straight line -----------------------------

  /// Appends the crossings with the line segment from a to b: the segment's parameter to the one
  /// list, the position along a-b, from 0 to 1, to the other. Returns the length of lineParams, or,
  /// for a segment that is itself a line within 1e-9, what linearProcessing returns; 0 when a and b
  /// coincide (|b - a|^2 below 1e-9).
  int findYCStrongIntersection(GxCoord<double> a, GxCoord<double> b, GxList<double>& segmentParams,
                               GxList<double>& lineParams) const;

  /// The same for a segment that is a line within 1e-9.
  ///   1  a crossing was appended, or, where they overlap on one line, the two ends of the overlap
  ///   0  none, or the segment is a point or not a line, or a and b coincide
  int linearProcessing(GxCoord<double> a, GxCoord<double> b, GxList<double>& segmentParams,
                       GxList<double>& lineParams) const;

  // ---- GxBezier_selfIntersect.cpp: loops ------------------------------------------------------

  /// 1 when the segment crosses itself at the parameters t1 and t2, in no particular order; else 0,
  /// and t1 and t2 may hold what was computed. A handle no longer than 0.1 rules a loop out; ends
  /// no farther apart than 0.1 (and longer handles) are a loop at 0 and 1.
  int isSelfIntersect(double& t1, double& t2);

  /// Appends the segment, cut once in the middle of its loop if it has one.
  void cleanSelfIntersection(GxList<GxBezier>& list);

  // ---- GxBezier_closestPoints.cpp: the closest samples of two segments ------------------------

  /// The least squared distance between samples, at parameters 0, 0.1, ..., 1, of the two segments,
  /// and their parameters. A segment that is a point within 0.5 is sampled at 0 only. Where none is
  /// less than 2147483647.0, that is returned and t1 and t2 are untouched.
  double findClosestPoints(GxBezier const& other, double& t1, double& t2);

  // ---- GxBezier_wellDefined.cpp: does x run one way, and how much of the direction lies in x ----

  /// 1 when the segment, run from left to right, never runs back in x: every vertical line meets it
  /// at most once. A point or a vertical line gives 0.
  int isWellDefined() const;

  /// The x component of the unit tangent of the segment run from left to right, as the minimum
  /// (mode 1) or maximum (mode 2) over the ends and the interior extreme, or, in any other mode, an
  /// average. The first argument is ignored.
  ///   -1  a point within 1e-9, or no direction; ratio is untouched
  ///    0  a mode other than 1
  ///    1  mode 1, the minimum is at the start
  ///    2  mode 1, at the end
  ///    3  mode 1, in the interior
  int findRatio(double ignored, int mode, double& ratio) const;

 protected:
  // ---- GxBezier.cpp ----------------------------------------------------------------------------

  /// A three-way comparison of two doubles for qsort, descending: -1, 0 or 1; 1 if unordered.
  static int compFunc(void const* a, void const* b);

  // ---- GxBezier_evaluate.cpp -------------------------------------------------------------------

  /// The point at t of the polynomial with control points points[0..degree], degree at most 3, by
  /// de Casteljau's triangle; a higher degree gives the origin.
  GxCoord<double> value(GxCoord<double> const* points, double t, unsigned short degree) const;

  // ---- GxBezier_split.cpp ----------------------------------------------------------------------

  /// Splits a control polygon of any degree at t; left and right receive degree + 1 points each and
  /// may be null. Computed coordinates below 1e-9 become exactly 0. Returns the point at t; a
  /// negative degree writes nothing and returns the origin.
  GxCoord<double> genericSplit(GxCoord<double> const* points, int degree, double t,
                               GxCoord<double>* left, GxCoord<double>* right) const;

  // ---- GxBezier_flatness.cpp -------------------------------------------------------------------

  /// 1 when the chord of a control polygon crosses the x axis where the polygon does, to 2^-65.
  /// Method: after P. J. Schneider (see findNearestPoint), with the sides of the chord not told
  /// apart.
  int isFlatEnough(GxCoord<double> const* points, int degree) const;

  // ---- GxBezier_nearest.cpp --------------------------------------------------------------------

  /// Fills w[0..5] with the control polygon whose y is (B(t) - p) . B'(t).
  void generate5DBezier(GxCoord<double>* const w, GxCoord<double> const& p) const;

  /// Writes the roots of a control polygon's y, degree at most 5, to t, which has room for 64, in
  /// ascending order, and returns their number; depth counts the halvings so far. At most 4,096
  /// halvings are made.
  int findRoots(GxCoord<double> const* w, int degree, int depth, double* t) const;

  /// The number of changes of sign of y along a control polygon; 0 is a sign of its own.
  int crossingCount(GxCoord<double> const* w, int degree) const;

  // ---- GxBezier_parameter.cpp ------------------------------------------------------------------

  /// One Newton step from u towards the parameter of the point nearest to p; u where the step has
  /// no denominator.
  double parameter(GxCoord<double> const& p, double u);

  // ---- GxBezier_length.cpp ---------------------------------------------------------------------

  /// The length of count chords at equal parameter steps from startT to the end; one chord for a
  /// count below 2.
  double length(int count, double startT) const;

  // ---- GxBezier_spacing.cpp --------------------------------------------------------------------

  /// The next parameter of makeSegmentEx after t: a long chord if the gap allows it, or a short
  /// one; longStep and shortStep are the parameter increments taken where the search makes no
  /// headway.
  double getNextTValue(double longChord, double shortChord, double longStep, double shortStep,
                       double gap, double t) const;

  /// 1 when the chord from ta to tb may stand for the curve: the highest point above it, the chord
  /// laid level, is no farther than gap.
  int checkChordGapDist(double ta, double tb, double gap) const;

  // ---- GxBezier_polyline.cpp -------------------------------------------------------------------

  /// What getPolyline appends after P0; n says that this piece, starting at startT, covers 1/n of
  /// the whole segment.
  void makePolyline(double tol, std::list<GxCoord<double>>& out) const;
  void makePolyline(double tol, std::vector<GxCoord<double>>& out) const;
  void makePolyline(double tol, double startT, int n, std::list<GxCoord<double>>& out,
                    std::list<double>& tValues, GxBezierPolylineCondition const& condition) const;

  // ---- GxBezier_intersect.cpp ------------------------------------------------------------------

  /// Appends the crossings of piece a, the part [a0, a1] of a segment still to be halved aDepth
  /// times, with piece b.
  void recursivelyIntersect(GxBezier const& a, double a0, double a1, int aDepth, GxBezier const& b,
                            double b0, double b1, int bDepth, GxList<double>& aParams,
                            GxList<double>& bParams);

  /// What findIntersections with two lists does.
  int findCIntersectionParameters(GxBezier const& other, GxList<double>& thisParams,
                                  GxList<double>& otherParams);

 private:
  mutable GxCoord<double> points_[4];
};

// ---- GxBezier_intersectLine.cpp -----------------------------------------------------------------

/// The parameters, ascending, at which the cubic with these control points meets the x axis: count
/// of them, up to three, in r1, r2, r3; outputs beyond count are not written. Roots outside [0, 1]
/// by less than tol count as 0 or 1. A cubic on the axis (coefficients within 1e-9 of 0) gives 0
/// and 1.
CRV_API void intersectBezierWithXAxis(GxCoord<double> const& p0, GxCoord<double> const& p1,
                                      GxCoord<double> const& p2, GxCoord<double> const& p3,
                                      int& count, double& r1, double& r2, double& r3, double tol);

extern template class CRV_API GxList<GxBezier>;
