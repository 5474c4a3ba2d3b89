// One cubic segment and every computation on it.
//
// The class declaration is the index: each heading names the file that defines the methods below
// it. The parameter t runs over [0, 1] from the start point to the end point. Tolerances and
// distances are absolute, in curve units, unless a comment says squared. Results are appended to
// the caller's lists, which are never cleared. Non-finite input yields unspecified results, but
// every call returns.
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

/// A cubic Bezier segment in the plane: the start point P0, the inner control points P1 and P2, and
/// the end point P3. It is a value type and holds nothing else.
class CRV_API GxBezier {
  // ---- GxBezier.cpp: construction, comparison, access, edits in place ------------------------
 public:
  /// Places all four points at the origin.
  GxBezier() = default;
  /// The start point, the inner control points and the end point.
  GxBezier(GxCoord<double> const& p0, GxCoord<double> const& p1, GxCoord<double> const& p2,
           GxCoord<double> const& p3);

  /// Copies points[0..3].
  GxBezier(GxCoord<double> const* points);
  /// A copy.
  GxBezier(GxBezier const& other) = default;
  /// Copies the control points.
  GxBezier& operator=(GxBezier const& other) = default;

  /// Returns 1 when the control points are pairwise equal, exactly.
  int operator==(GxBezier const& other) const;
  /// The opposite of ==.
  int operator!=(GxBezier const& other) const;

  /// Control point i. Precondition: 0 <= i <= 3.
  GxCoord<double>& operator()(int i) {
    assert(0 <= i && i <= 3);
    return points_[i];
  }
  /// Control point i of a const segment.
  GxCoord<double> const& operator()(int i) const { return (*this)[i]; }
  /// Control point i, as by operator(), modifiable also in a const segment.
  GxCoord<double>& operator[](int i) const {
    assert(0 <= i && i <= 3);
    return points_[i];
  }

  /// Swaps the end points and the inner control points: the shape stays, and t becomes 1 - t.
  void reverse();

  /// Multiplies all x by sx and all y by sy, about the origin.
  void scale(double sx, double sy);

  /// Mirrors the segment in the x axis.
  void flip();

  /// Orders indices into a vector of values by descending value; the order of equal values is
  /// unspecified. The vector must outlive the functor and contain every index that is compared.
  class CRV_API Comperator {
   public:
    /// Refers to the values.
    Comperator(std::vector<double>& values);
    /// True when value i is greater than value j.
    bool operator()(int i, int j) const;

   private:
    std::vector<double>* values_;
  };

 protected:
  /// Compares two doubles for qsort, in descending order: -1, 0 or 1; 1 if either is NaN.
  static int compFunc(void const* a, void const* b);

  // ---- GxBezier_evaluate.cpp: point and derivatives at t --------------------------------------
 public:
  /// The point at t. At exactly 0 and 1 it is the end point itself; outside [0, 1] the cubic is
  /// extrapolated.
  GxCoord<double> bValue(double t) const;

  /// The first derivative with respect to t, at any t.
  GxVector<double> dValue(double t) const;

  /// Stores the points at t[0..count-1] and, unless derivatives is null, the first derivatives
  /// there, bit for bit as bValue and dValue return them, in less time than a call for each. Each
  /// array has room for count elements and overlaps neither the others nor this segment; a count
  /// below 1 stores nothing.
  void bValues(double const* t, int count, GxCoord<double>* points,
               GxVector<double>* derivatives = nullptr) const;

  /// The second derivative with respect to t, at any t.
  GxVector<double> ddValue(double t) const;

  /// Returns two numbers packed into a point: (x'y'' - y'x'')/x'^2, which is the derivative of the
  /// slope dy/dx with respect to t, and x'. Their quotient is the second derivative of y with
  /// respect to x. Where the tangent is vertical (|x'| below 1e-9) both are 0.
  GxCoord<double> curvatureValue(double t) const;

 protected:
  /// The point at t of the polynomial with control points points[0..degree], by de Casteljau's
  /// algorithm. The degree is at most 3; a higher one gives the origin.
  GxCoord<double> value(GxCoord<double> const* points, double t, unsigned short degree) const;

  // ---- GxBezier_split.cpp: subdivision at t ---------------------------------------------------
 public:
  /// Keeps the part over [0, t] in this segment, stores the part over [t, 1] in right and returns
  /// this segment. Outside [0, 1] the parts extend beyond the segment. If right is this very
  /// segment, it becomes the part over [t, 1]. The two parts share their joint bit for bit.
  /// Method: de Casteljau (Farin, Curves and Surfaces for CAGD).
  GxBezier& split(GxBezier& right, double t);

  /// Does the same with both parts as outputs; this segment stays as it is unless it is one of
  /// them.
  void split(GxBezier& left, GxBezier& right, double t) const;

 protected:
  /// Splits a control polygon of any degree at t and returns the point at t. left and right
  /// receive degree + 1 points each; either may be null. Computed coordinates below 1e-9 become
  /// exactly 0. A negative degree writes nothing and returns the origin.
  GxCoord<double> genericSplit(GxCoord<double> const* points, int degree, double t,
                               GxCoord<double>* left, GxCoord<double>* right) const;

  // ---- GxBezier_flatness.cpp: is it a line, is it a point -------------------------------------
 public:
  /// Returns 1 when each inner control point lies within tol of the chord or of the end point next
  /// to it. Inner control points on the line of the chord but beyond its ends give 0.
  int isALine(double tol) const;

  /// Returns 1 when P0 and P1, P2 and P3, and P0 and P3 coincide within tol.
  int isAPoint(double tol) const;

 protected:
  /// Returns 1 when the chord of a control polygon crosses the x axis where the polygon does, to
  /// 2^-65. Method: after P. J. Schneider (see findNearestPoint), but without distinguishing the
  /// two sides of the chord.
  int isFlatEnough(GxCoord<double> const* points, int degree) const;

  // ---- GxBezier_nearest.cpp: the nearest point -----------------------------------------------
 public:
  /// Stores the point of the segment nearest to p.
  ///   1  the nearest point is an end point (its parameter lies within 1e-9 of 0 or 1)
  ///   0  the nearest point is an inner point
  /// A segment with P0 on P1 and P2 on P3, within 1e-7, is treated as its chord.
  /// Method: P. J. Schneider, "Solving the nearest-point-on-curve problem", Graphics Gems (1990).
  int findNearestPoint(GxCoord<double> const& p, GxCoord<double>& nearest) const;

  /// Stores the parameter, in [0, 1], of the point nearest to p. Among equally near points P0
  /// comes first, then inner points by ascending t, then P3.
  void findNearestPointTValue(GxCoord<double> const& p, double& t) const;

 protected:
  /// Fills w[0..5] with the control polygon whose y is (B(t) - p) . B'(t).
  void generate5DBezier(GxCoord<double>* const w, GxCoord<double> const& p) const;

  /// Writes the roots of the y of a control polygon to t, in ascending order, and returns their
  /// number; t has room for 64. depth is the number of halvings made so far; at most 4,096 more
  /// are made. A degree outside 1..5 gives 0 roots.
  int findRoots(GxCoord<double> const* w, int degree, int depth, double* t) const;

  /// The number of sign changes of y along a control polygon; 0 counts as a sign of its own.
  int crossingCount(GxCoord<double> const* w, int degree) const;

  // ---- GxBezier_parameter.cpp: the parameter of a point ---------------------------------------
 public:
  /// The parameter, in [0, 1], at which both coordinates of the segment differ from those of p by
  /// less than tol. Returns -1.0 when 15 Newton steps from t = 0.5 find none. The second argument
  /// is ignored.
  double findParameter(GxCoord<double> const& p, double ignored, double tol) const;

 protected:
  /// Makes one Newton step from u towards the parameter of the point nearest to p. Returns u where
  /// the step's denominator vanishes (below 1e-9).
  double parameter(GxCoord<double> const& p, double u) const;

  // ---- GxBezier_extremes.cpp: lowest and highest points, boxes -------------------------------
 public:
  /// Stores the parameter of the lowest point in entry 0 and of the highest point in entry 1 of an
  /// empty list, and returns 2. Among equally high points the end points come first. With flat
  /// handles at both ends (y of P0 and P1, and of P2 and P3, equal within 1e-9) only the end points
  /// are considered.
  ///
  /// In a list that is not empty, two entries are appended, and entries 0 and 1 can be swapped or
  /// overwritten; the result is then its length, or 2 with flat handles.
  int getYMinMaxTValues(GxList<double>& list) const;

  /// The parameter and the height of the highest point. Among equals P0 comes first, then P3, then
  /// inner points.
  void getMaxYTValue(double& t, double& y) const;

  /// The parameter and the height of the lowest point. Among equals P0 comes first, then P3, then
  /// inner points.
  void getMinYTValue(double& t, double& y) const;

  /// The tight bounding box of the curve.
  void localMinMax(double& minX, double& minY, double& maxX, double& maxY) const;

  /// The bounding box of the four control points, which contains the curve.
  void getConvexHull(double& minX, double& minY, double& maxX, double& maxY) const;

  // ---- GxBezier_roots.cpp: parameters at a height, of a point, of the inflection --------------
 public:
  /// Appends, in ascending order, every parameter in [lowerT, upperT] at which the segment has
  /// height y, and returns the list's length. Both bounds are included, and parameters near 0 or 1
  /// are not snapped to them. A segment that lies level at this height gives none.
  int findRoots(GxList<double>& list, double y, double lowerT, double upperT) const;

  /// Appends the points at these parameters and returns the list's length.
  int findRoots(GxList<GxCoord<double>>& points, double y, double lowerT, double upperT) const;

  /// Finds the parameter of a point that lies on the segment. End points are tried first, by their
  /// distance from p; then one coordinate must be met exactly and the other one within tol.
  ///   1  found; the parameter is in t, not snapped to 0 or 1
  ///   0  not found; t is undefined
  /// A point more than 0.1 outside the box of the control points is not found, whatever tol,
  /// unless it lies within tol of an end point.
  [[nodiscard]] int findTValue(GxCoord<double> const& p, double& t, double tol) const;

  /// Finds the first parameter strictly inside (0, 1) at which the curvature changes its sign.
  ///   1  found; the parameter is in t
  ///   0  none, or the control polygon turns one way or hardly at all; t is untouched
  [[nodiscard]] int findInflectionPoint(double& t) const;

  // ---- GxBezier_length.cpp: arc length, fixed distances ---------------------------------------
 public:
  /// The arc length from startT to the end, measured by chords. Their number is doubled, from 10
  /// to at most 327,680, until two measurements agree within 0.1.
  ///
  /// Agreement does not bound the error. A measurement falls short of the arc by about a third of
  /// its last change where the curve is smooth, but by more where it turns back sharply: the level
  /// segments with x = 0, -56, 83, 24 and x = 0, 939, -794, -320 give 80.30 and 1045.3, and their
  /// arcs are 81.00 and 1055.1 long.
  double length(double startT) const;

  /// Finds, by bisection, a parameter in [lo, hi] whose point lies at a straight-line distance,
  /// within 0.1, from the point at anchorT. The bracket lies after the anchor; lo and hi are
  /// narrowed in place. Bisections are counted from steps, which is usually 0, and the first one
  /// counted above 15 returns its midpoint: after 17 midpoints the distance may be missed by more
  /// than 0.1 where the bracket covers more than 13,000 units.
  ///
  /// Returns hi where the point there is near enough; 1.0 where hi is 1.0 and the segment ends
  /// before the distance is reached; lo at once when hi <= lo; and the last midpoint when the
  /// distance is not met.
  double splitAtFixedLengthAfter(double distance, int steps, double& lo, double& hi,
                                 double anchorT) const;

  /// Does the same in a bracket before the anchor, with lo and hi exchanged: 0.0 where lo is 0.0
  /// and the segment starts before the distance is reached; hi at once when hi <= lo.
  double splitAtFixedLengthBefore(double distance, int steps, double& lo, double& hi,
                                  double anchorT) const;

 protected:
  /// The length of count chords at equal parameter steps from startT to the end; one chord for a
  /// count below 2.
  double length(int count, double startT) const;

  // ---- GxBezier_spacing.cpp: polylines by steps and by chords ---------------------------------
 public:
  /// Appends count + 1 points at equal parameter steps, both ends included; for count 0 both ends.
  void makeSegment(unsigned short count, std::list<GxCoord<double>>& out) const;

  /// Appends the point at startT, then points that lie one chord apart (within 0.1, see
  /// splitAtFixedLengthAfter), and the end point, whose last chord may be shorter. Appends only the
  /// point at startT where no length is left, where the length is not finite, or where chord is
  /// NaN.
  ///
  /// Chords that cannot be met still terminate, but slowly: a chord below -0.1, or squared
  /// distances that overflow (coordinates above 1e154), can take up to five million points.
  void makeSegment(double chord, GxList<GxCoord<double>>& out, double startT) const;

  /// Does the same with long chords where the curve stays within gap of them, and with short chords
  /// elsewhere. When longChord <= shortChord all chords are long.
  void makeSegmentEx(double longChord, double shortChord, double gap, GxList<GxCoord<double>>& out,
                     double startT) const;

 protected:
  /// The parameter that makeSegmentEx takes after t: one long chord on if the gap allows it, else
  /// one short chord on. longStep and shortStep are the parameter increments used where the search
  /// makes no headway.
  double getNextTValue(double longChord, double shortChord, double longStep, double shortStep,
                       double gap, double t) const;

  /// Returns 1 when the chord from ta to tb may replace the curve: the highest point of the curve,
  /// rotated so that the chord is level, lies no farther than gap from it. Points below the chord
  /// are not measured. The piece examined reaches to ta + tb (1 - ta), not to tb.
  int checkChordGapDist(double ta, double tb, double gap) const;

  // ---- GxBezier_polyline.cpp: polylines by halving --------------------------------------------
 public:
  /// Appends P0 and the end points of pieces, made by halving, that are lines within tol. Pieces
  /// that are points within tol add nothing, so the polyline ends before P3 where the last piece is
  /// a point. A negative or NaN tolerance gives the chord. At most 2^26 pieces are made. Only
  /// tolerances below the resolution of the coordinates, and coordinates above 1e154, whose squares
  /// overflow, need so many.
  void getPolyline(double tol, std::list<GxCoord<double>>& out) const;
  /// Appends to a vector.
  void getPolyline(double tol, std::vector<GxCoord<double>>& out) const;

  /// Does the same with the caller's condition, which alone judges the tolerance, and appends the
  /// parameter of every point.
  void getPolyline(double tol, std::list<GxCoord<double>>& out, std::list<double>& tValues,
                   GxBezierPolylineCondition const& condition) const;

 protected:
  /// Appends the points of getPolyline without P0. In the last form this segment is a piece that
  /// starts at startT and covers 1/n of the whole segment.
  void makePolyline(double tol, std::list<GxCoord<double>>& out) const;
  /// Appends to a vector.
  void makePolyline(double tol, std::vector<GxCoord<double>>& out) const;
  /// Applies the condition, and also appends the parameters.
  void makePolyline(double tol, double startT, int n, std::list<GxCoord<double>>& out,
                    std::list<double>& tValues, GxBezierPolylineCondition const& condition) const;

  // ---- GxBezier_step.cpp: the next parameter at a distance ------------------------------------
 public:
  /// Finds the next parameter whose point lies at a straight-line distance from the point at
  /// startT. The distance is given as its square and met within 0.01 of the square. The search runs
  /// from startT towards farT, or towards the end of the segment without farT: forwards, to 1, for
  /// a non-zero direction, else backwards, to 0.
  ///    0  found; the parameter is in t
  ///   -1  startT and farT coincide (within 1e-9), or the segment has no length left or less than
  ///       the distance: t is untouched
  ///   -1  64 trials failed, or one of them touched the end of the segment: t is the last trial
  /// The length left is measured to the end of the segment, not to farT. If farT lies against the
  /// direction, the parameter found may lie on the wrong side of startT.
  /// Trap: the distance is squared here, but not in GxBezierCurve::findNextPos.
  [[nodiscard]] int findNextPos(double& t, double startT, double squaredDistance,
                                int forward) const;
  /// Searches as far as farT.
  [[nodiscard]] int findNextPos(double& t, double startT, double farT, double squaredDistance,
                                int forward) const;

  /// Does the same and adds the arc length from startT to t to consumed; it is negative where t
  /// lies against the direction. A search that fails adds all the length left, with two exceptions:
  /// nothing where startT and farT coincide, and the length up to t where the search touched the
  /// end before it met the distance at t.
  [[nodiscard]] int findNextPos(double& t, double startT, double squaredDistance, int forward,
                                double& consumed) const;
  /// Searches as far as farT.
  [[nodiscard]] int findNextPos(double& t, double startT, double farT, double squaredDistance,
                                int forward, double& consumed) const;

  /// Does the same as the first two with the distance measured from p. No length is measured, so
  /// only coinciding startT and farT leave t untouched.
  [[nodiscard]] int findNextPosFromPoint(double& t, double startT, GxCoord<double> const& p,
                                         double squaredDistance, int forward) const;
  /// Searches as far as farT.
  [[nodiscard]] int findNextPosFromPoint(double& t, double startT, double farT,
                                         GxCoord<double> const& p, double squaredDistance,
                                         int forward) const;

  // ---- GxBezier_intersect.cpp: all crossings of two segments ----------------------------------
 public:
  /// Returns 1 when the boxes of the control points overlap or touch.
  int isIntersect(GxBezier const& other) const;

  /// Appends the parameters of all crossings to both lists, as pairs, and sorts the pairs by
  /// descending parameter of this segment. Returns 1 when the first list then holds any entry, else
  /// 0.
  ///
  /// The two points of a pair lie at most 2^-13 apart, except where coordinates from about 1e11 on
  /// are too coarse for that. Smaller features, such as tangential contact, may be missed. A
  /// crossing on a boundary of the subdivision can be reported up to four times. Where the segments
  /// overlap, the subdivision boundaries inside the overlap are reported.
  ///
  /// Pairs that the lists held before are sorted with the new ones if the lists have equal length.
  /// If the second list is longer, other entries are removed from it than are put back: (0.25) and
  /// (1, 2, 3), with one crossing at (0.5, 0.5), become (0.5, 0.25) and (1, 0.5, 2, 1). One list
  /// given twice ends with every entry twice.
  ///
  /// Method: subdivision to a depth computed from second differences (Wang 1984; Lane, Riesenfeld
  /// 1980), then intersection of chords.
  int findIntersections(GxBezier const& other, GxList<double>& thisParams,
                        GxList<double>& otherParams) const;

  /// Appends the crossing points, computed on this segment, in the same order. Returns 1, or 0 with
  /// points untouched when there are none.
  int findIntersections(GxBezier const& other, GxList<GxCoord<double>>& points) const;

 protected:
  /// Appends the crossings of two pieces: a is the part [a0, a1] of a segment and is to be halved
  /// aDepth times more; b likewise.
  void recursivelyIntersect(GxBezier const& a, double a0, double a1, int aDepth, GxBezier const& b,
                            double b0, double b1, int bDepth, GxList<double>& aParams,
                            GxList<double>& bParams) const;

  /// Does what findIntersections does with two lists.
  int findCIntersectionParameters(GxBezier const& other, GxList<double>& thisParams,
                                  GxList<double>& otherParams) const;

  // ---- GxBezier_intersectFirst.cpp: the first crossing by polylines ---------------------------
 public:
  /// Finds, approximately, the first crossing along this segment: both segments are flattened
  /// within tol into at most 2^22 pieces each, and the chords are crossed in order.
  ///   1  found; result holds the parameters on this segment and on other
  ///   0  none; result is untouched
  /// Two segments that meet end to end do not cross there. The fixed tolerances can report
  /// segments that pass close to an end: a crossing point of chords counts up to 0.5 from a
  /// chord's line, and within 0.708 of a segment's end point even beyond the end.
  [[nodiscard]] int findFirstIntersection(GxBezier const& other, std::pair<double, double>& result,
                                          double tol) const;

  // ---- GxBezier_intersectLine.cpp: crossings with a straight line -----------------------------
 public:
  /// Appends the crossings with the line segment from a to b: the parameters on this segment to
  /// segmentParams, the positions along a-b, from 0 to 1, to lineParams. Returns the length of
  /// lineParams, with entries from before; for a segment that is itself a line within 1e-9, the
  /// result of linearProcessing; and 0 when a and b coincide (|b - a|^2 below 1e-9).
  int findYCStrongIntersection(GxCoord<double> a, GxCoord<double> b, GxList<double>& segmentParams,
                               GxList<double>& lineParams) const;

  /// Does the same for a segment that is a line within 1e-9.
  ///   1  a crossing was appended, or the two ends of an overlap
  ///   0  no crossing, or the segment is a point or no line, or a and b coincide
  int linearProcessing(GxCoord<double> a, GxCoord<double> b, GxList<double>& segmentParams,
                       GxList<double>& lineParams) const;

  // ---- GxBezier_selfIntersect.cpp: loops ------------------------------------------------------
 public:
  /// Returns 1 when the segment crosses itself, at the parameters t1 and t2, in no particular
  /// order; else 0, and t1 and t2 may have been overwritten. A segment with a handle no longer than
  /// 0.1 has no loop; one whose ends lie no farther apart than 0.1, with longer handles, has its
  /// loop at 0 and 1.
  int isSelfIntersect(double& t1, double& t2) const;

  /// Appends the segment, cut once in the middle of its loop if it has one.
  void cleanSelfIntersection(GxList<GxBezier>& list) const;

  // ---- GxBezier_closestPoints.cpp: the closest samples of two segments ------------------------
 public:
  /// Returns the least squared distance between samples of the two segments, at parameters 0, 0.1,
  /// ..., 1, and stores the parameters of the two samples. A segment that is a point within 0.5 is
  /// sampled at 0 only. Returns 2147483647.0, with t1 and t2 untouched, when no squared distance is
  /// less than that.
  double findClosestPoints(GxBezier const& other, double& t1, double& t2) const;

  // ---- GxBezier_wellDefined.cpp: does x run one way, and how much of the direction lies in x ----
 public:
  /// Returns 1 when the segment, taken from left to right, never runs back in x, so that every
  /// vertical line meets it at most once. A point or a vertical line gives 0.
  int isWellDefined() const;

  /// The x component of the unit tangent of the segment, taken from left to right: in mode 1 its
  /// minimum, in mode 2 its maximum over both ends and the extreme of the x speed; in any other
  /// mode an average. The first argument is ignored.
  ///   -1  the segment is a point within 1e-9 or has no direction; ratio is untouched
  ///    0  any mode but 1
  ///    1  mode 1, the minimum is at the start
  ///    2  mode 1, the minimum is at the end
  ///    3  mode 1, the minimum is in the interior
  int findRatio(double ignored, int mode, double& ratio) const;

 private:
  mutable GxCoord<double> points_[4];
};

// ---- GxBezier_intersectLine.cpp -----------------------------------------------------------------

/// Stores the parameters at which the cubic with these control points meets the x axis: count of
/// them, in ascending order, in r1, r2 and r3. Outputs beyond count are untouched. Only roots
/// outside [0, 1] by less than tol are snapped, to 0 or 1. A cubic that lies on the axis
/// (coefficients within 1e-9 of 0) gives 0 and 1.
CRV_API void intersectBezierWithXAxis(GxCoord<double> const& p0, GxCoord<double> const& p1,
                                      GxCoord<double> const& p2, GxCoord<double> const& p3,
                                      int& count, double& r1, double& r2, double& r3, double tol);

CRV_EXTERN_TEMPLATE(GxList<GxBezier>);
