// A chain of cubic segments, addressed by positions.
//
// The declaration is the index: each section is headed by the file that holds its methods.
// Tolerances and distances are absolute, in curve units, unless a comment says squared. Lists of
// results are appended to and never cleared, unless a comment says so. Input that is not finite
// gives results that mean nothing, but always an answer.
#pragma once

#include "crv/bezier/GxBezier.h"
#include "crv/curve/GxBezierCurvePosition.h"
#include "crv/export.h"
#include "crv/foundation/GxCoord.h"
#include "crv/foundation/GxList.h"
#include "crv/foundation/GxVector.h"

#include <list>
#include <vector>

class GxBezierPolylineCondition;

/// An ordered sequence of segments, each meant to start where the one before ends, and a flag that
/// says whether the curve is to be treated as closed. Segment k at t is the position (k, t); the
/// curve runs from (0, 0.0) to (n, 0.0), n being its number of segments. A value type.
class CRV_API GxBezierCurve {
 public:
  // ---- GxBezierCurve.cpp: construction, comparison, segments, positions, moving -----------------

  /// An empty, open curve.
  GxBezierCurve();

  /// An open curve fitted to two or more points with a squared tolerance, see makeBezierPolyFit;
  /// empty for fewer or for null.
  GxBezierCurve(GxList<GxCoord<double>> const* points, double error);
  GxBezierCurve(GxBezierCurve const& other);
  ~GxBezierCurve();
  GxBezierCurve& operator=(GxBezierCurve const& other);

  /// 1 when the segments are equal pairwise, exactly; the closed flag is not compared.
  int operator==(GxBezierCurve const& other);
  int operator==(GxBezierCurve const& other) const;
  int operator!=(GxBezierCurve const& other);
  int operator!=(GxBezierCurve const& other) const;

  /// Always 0: curves have no order; the operators let standard containers hold them.
  int operator<(GxBezierCurve const& other) const;
  int operator>(GxBezierCurve const& other) const;

  /// The list of segments itself; it may be changed.
  GxList<GxBezier>& getSegments();

  /// Replaces the segments by copies; the closed flag stays.
  void setSegments(GxList<GxBezier> const& segments);

  /// The number of segments.
  unsigned long length() const;

  /// Segment i modulo the number of segments. Precondition: the curve is not empty.
  GxBezier& operator()(int i);
  GxBezier& operator[](int i) const;

  /// (0, 0.0), also for an empty curve.
  GxBezierCurvePosition firstPos() const;

  /// (n, 0.0), n being the number of segments.
  GxBezierCurvePosition lastPos() const;

  /// The closed flag, as it was set; whether the ends meet is isClose's question.
  int strictIsClosed() const;
  void setStrictIsClosed(int closed);

  /// The sense from a to b: 1 forward, 2 backward, 0 when they coincide (same segment, t within
  /// 1e-9).
  int getSense(GxBezierCurvePosition const& a, GxBezierCurvePosition const& b) const;

  /// The point at a position. (n, any t) is the end of the curve; a segment below 0 or beyond n, or
  /// an empty curve, gives the origin.
  GxCoord<double> locateCurvePosition(GxBezierCurvePosition const& pos) const;

  /// Moves every control point by v.
  void moveCurve(GxVector<double> const& v);

  /// Multiplies all x by sx and all y by sy, about the origin.
  void resize(double sx, double sy);

  /// Mirrors the curve in the x axis.
  void flip();

  /// 1 when the ends lie within 0.5 of each other; both are then moved onto their midpoint. 0 for
  /// ends farther apart or an empty curve, which stay as they are. The closed flag plays no part.
  int isClose();

  // ---- GxBezierCurve_measure.cpp: length, boxes, highest and lowest place -----------------------

  /// The sum of the arc lengths of the segments, each measured within 0.1; 0.0 for an empty curve.
  double curveLength();

  /// The box of all control points; four zeros for an empty curve.
  void getBoundingBox(double& minX, double& minY, double& maxX, double& maxY);

  /// The tight box of the curve itself; four zeros for an empty curve.
  void getLocalBoundingBox(double& minX, double& minY, double& maxX, double& maxY);

  /// The tight box as two points; returns 0, or -1, the points untouched, for an empty curve.
  int getMinMax(GxCoord<double>& min, GxCoord<double>& max) const;

  /// Where the curve is highest, the first segment winning ties; returns 0, or -1, the outputs
  /// untouched, for an empty curve.
  int getCurveMaxY(double& t, int& segment) const;

  /// Where the curve is lowest, the first segment winning ties; returns 0, or -1, the outputs
  /// untouched, for an empty curve.
  int getCurveMinY(double& t, int& segment) const;

  // ---- GxBezierCurve_fit.cpp: fitting segments to digitised points ------------------------------

  /// Appends a chain of segments from the first point to the last that stays near every point in
  /// between: the squared distance at the point's own parameter is below error. The closed flag is
  /// cleared. Fewer than two points, or null, append nothing. A good fit whose worst point is the
  /// neighbour of an end is split there all the same. Points that are not finite are fitted as they
  /// come.
  /// Method: P. J. Schneider, "An algorithm for automatically fitting digitized curves", Graphics
  /// Gems (1990), with other rules for the singular matrix, for short handles and for splitting.
  void makeBezierPolyFit(GxList<GxCoord<double>> const* points, double error);

  // ---- GxBezierCurve_polyline.cpp: polylines of a whole curve -----------------------------------

  /// Appends points step apart (straight, within 0.1). Mode 1 spaces each segment on its own,
  /// evenly if that fits better, and leaves out the curve's end; any other mode carries what is
  /// left of a step across the joins.
  void makeCurve(double step, GxList<GxCoord<double>>& out, int mode);

  /// As makeCurve in a mode other than 1, with chords of length step where the curve stays within
  /// gap of them and of shortStep elsewhere.
  void makeCurveEx(double step, double shortStep, double gap, GxList<GxCoord<double>>& out);

  /// Appends, for every segment, count + 1 points at equal parameter steps, joins once. A list that
  /// is not empty first loses its last point.
  void makeSegments(unsigned short count, std::list<GxCoord<double>>& out);

  /// Replaces out by the polyline made by halving, every piece of which is a line within tolerance.
  void getPolyline(double tolerance, std::list<GxCoord<double>>& out);
  void getPolyline(double tolerance, std::vector<GxCoord<double>>& out);

  /// The same under the caller's idea of a line and a point; positions is replaced, too: point k of
  /// out lies at position k.
  void getPolyline(double tolerance, std::list<GxCoord<double>>& out,
                   std::list<GxBezierCurvePosition>& positions,
                   GxBezierPolylineCondition const& condition);

  // ---- GxBezierCurve_nearest.cpp: which segment holds a point, the nearest point ----------------

  /// The number of the segment that passes p within tolerance, and the parameter there; -1 when
  /// there is none. The curve's end is (n, 0.0) and, like its start, is looked at first. t is
  /// undefined where -1 is returned.
  int whichSegment(GxCoord<double> const& p, double& t, double tolerance);

  /// The point of the curve nearest to p. The first segment is tried, the last, then the others in
  /// order; the search ends at the first that comes within a squared distance of 0.5.
  ///   -1  an empty curve; nearest is untouched
  ///    0  the first or the last segment answered (or the curve has one)
  ///    1  the other segments were looked at, too
  int findNearestPoint(GxCoord<double> const& p, GxCoord<double>& nearest);

  /// The same search, giving the position; the end of segment i is (i + 1, 0.0).
  int findNearestPointPos(GxCoord<double> const& p, GxBezierCurvePosition& pos);

  // ---- GxBezierCurve_intersect.cpp: two curves --------------------------------------------------

  /// Appends the crossings of every segment of other with every segment of this curve; returns 1
  /// when the list is not empty afterwards, else 0.
  int findIntersections(GxBezierCurve const& other, GxList<GxCoord<double>>& points);

  /// An estimate of the least squared distance: from samples of this curve, eleven a segment, to
  /// other; 0.0 when either curve is empty.
  double getMinSqDistance(GxBezierCurve& other) const;

  // ---- GxBezierCurve_intersectLine.cpp: the first crossing with a line --------------------------

  /// Finds the first crossing with the line through p along v, walking from a position forwards or
  /// backwards, as towards lies; the walk goes on to the end of the curve, beyond towards if need
  /// be, and not across the seam. Parameters outside a segment by less than tolerance count as its
  /// ends. A crossing at from counts.
  ///    0  found; the position is in result
  ///   -1  none, an empty curve, or from on no segment; result is untouched
  int findFirstGeometricLineIntersection(GxCoord<double> const& p, GxVector<double> const& v,
                                         GxBezierCurvePosition const& from,
                                         GxBezierCurvePosition const& towards,
                                         GxBezierCurvePosition& result, double tolerance) const;

  /// The same, the segments being carried into the frame of the line first.
  int findFirstGeometricLineIntersectionEx(GxCoord<double> const& p, GxVector<double> const& v,
                                           GxBezierCurvePosition const& from,
                                           GxBezierCurvePosition const& towards,
                                           GxBezierCurvePosition& result, double tolerance) const;

  /// The first search with a tolerance of 1e-8; where it finds nothing, the curve's far end, if
  /// that lies within 0.001 of the line.
  int findFirstGeometricLineIntersectionWithEndpointCheck(GxCoord<double> const& p,
                                                          GxVector<double> const& v,
                                                          GxBezierCurvePosition const& from,
                                                          GxBezierCurvePosition const& towards,
                                                          GxBezierCurvePosition& result) const;

  // ---- GxBezierCurve_orient.cpp: clockwise or not, reversing ------------------------------------

  /// 1 when the outline runs clockwise, read at its highest point, else 0; valid becomes 0 when no
  /// orientation could be found (an empty curve, no turn at the top), else 1. A curve that is one
  /// straight line gives 0 with valid 1.
  int isClockwise(int& valid) const;

  /// Reverses the curve if it does not run as wanted (non-zero: clockwise); returns 0, or -1,
  /// nothing changed, when its orientation cannot be decided.
  int changeOrientation(int clockwise);

  /// Reverses the direction of travel; the closed flag stays.
  void reverse();

  // ---- GxBezierCurve_close.cpp: closing ---------------------------------------------------------

  /// Sets the closed flag and bridges ends farther apart than 0.1 with a straight segment.
  ///   1  closed, or the flag was set before and nothing was changed
  ///   0  an empty curve (nothing changed), or a single segment that is a point or a line within
  ///      0.05, which is closed all the same but encloses nothing
  int makeClosedCurve();

  /// The same, trimming or straightening end segments that overlap or nearly meet, so that the
  /// closure has no loop or spike.
  int makeNiceClosedCurve();

  // ---- GxBezierCurve_tangent.cpp: directions on both sides of a position ------------------------

  /// The point at pos and the control points that are its handles, or would be if the segment were
  /// cut there. Returns 0, or -1 for a position outside the curve (point is then the origin or the
  /// curve's end, the handles are untouched). At the start of an open curve before is untouched.
  int getTriple(GxBezierCurvePosition const& pos, GxCoord<double>& point, GxCoord<double>& before,
                GxCoord<double>& after) const;

  /// The first derivatives on both sides of pos; in points backwards along the curve. Where a
  /// handle lies on its end point, the chord to the next control point. Returns 0, or -1, the
  /// vectors untouched, for a position outside the curve.
  int getVelocityVectors(GxBezierCurvePosition const& pos, GxVector<double>& in,
                         GxVector<double>& out) const;

  /// The first derivatives on both sides of pos, both in the direction of travel, chords taking the
  /// place of derivatives that vanish (squared length below 1e-9). Returns 0, or -1, both vectors
  /// zero, for a position outside the curve.
  int findVelocityVectors(GxBezierCurvePosition const& pos, GxVector<double>& in,
                          GxVector<double>& out) const;

  /// The second derivatives on both sides of pos; in is negated. Zero where both handles of a
  /// segment lie on its ends. Returns 0, or -1, the vectors untouched, for a position outside the
  /// curve.
  int getAccelerationVectors(GxBezierCurvePosition const& pos, GxVector<double>& in,
                             GxVector<double>& out) const;

  // ---- GxBezierCurve_offset.cpp: the parallel curve ---------------------------------------------

  /// Replaces every segment by an approximation of its parallel at a distance and joins what comes
  /// apart; the last end is always joined to the first, closed flag or not. Positive distances lie
  /// to the left of the direction of travel; side 0 negates the distance. Distances below 0.5 are
  /// ignored.
  ///   mode 0 or below  offset
  ///   mode 1           strongly bent segments are cut at their extremes first
  ///   mode 2           only that cutting, at any distance
  ///   mode 3 or above  nothing
  void offset(double distance, int side, int mode);

  // ---- GxBezierCurve_xRange.cpp: the curve against an interval of x -----------------------------

  /// Prolongs the start tangent to the vertical line through x and stores the point there.
  ///    0  x lies before a start that runs towards larger x
  ///    1  it does not
  ///   -1  an empty curve or a first segment without direction; out is untouched
  /// A tangent whose unit x component is below tol counts as running left, level.
  int extendLine(GxCoord<double>& out, double x, double tol) const;

  /// How the x range of a curve that runs from left to right with segments that never run back
  /// (GxBezier::isWellDefined) lies against the interval from lo to hi.
  ///   0  an empty curve, or a segment runs back
  ///   1  it covers the interval
  ///   2  it starts inside and covers the rest
  ///   4  it ends inside and covers the rest
  ///   7  it lies inside
  /// A curve that runs from right to left is checked reversed, with 2 and 4 exchanged. A check of a
  /// reversed curve that gives 0 also exchanges 2 and 4 in the next call, on any curve, through a
  /// process-wide flag: this operation may not be called from two threads at once.
  int wellDefinedDetection(double lo, double hi) const;

  // ---- GxBezierCurve_step.cpp: walking along the curve ------------------------------------------

  /// Finds the next position, forwards (non-zero direction) or backwards, at a straight-line
  /// distance d, up to a limit: the far end of the curve where none is given. On a strictly closed
  /// curve a limit that lies behind is reached across the seam. Mode 0 takes one chord; any other
  /// mode walks the length d in short chords.
  /// A step over joins takes from d the distance of each join from its start, so it lands near d
  /// only where segments are not much shorter than d. A walk back from the end of an open curve
  /// starts at (n - 1, t) with t just below 1: at (n, 0.0) the first segment is taken for the next.
  /// Short chords end after about 2^26 points to measure lengths and find steps, a third of a
  /// second; one chord, beyond two turns, after as many or nine million segments.
  ///    0  found
  ///   -1  an empty curve, the limit came first or is never met, or the walk was ended; to is
  ///       untouched, or holds the last position reached by short chords
  int findNextPos(GxBezierCurvePosition const& from, GxBezierCurvePosition& to, double d,
                  int forward, int mode) const;
  int findNextPos(GxBezierCurvePosition const& from, GxBezierCurvePosition const& limit,
                  GxBezierCurvePosition& to, double d, int forward) const;

  /// The same with the arc length walked: set, in the form without a limit, or added to consumed.
  int findNextPos(GxBezierCurvePosition const& from, GxBezierCurvePosition& to, double d,
                  int forward, double& consumed, int mode) const;
  int findNextPos(GxBezierCurvePosition const& from, GxBezierCurvePosition const& limit,
                  GxBezierCurvePosition& to, double d, double& consumed, int forward) const;

  /// The same with the distance measured from the point p.
  int findNextPosFromPoint(GxCoord<double> const& p, GxBezierCurvePosition const& from,
                           GxBezierCurvePosition& to, double d, int forward) const;
  int findNextPosFromPoint(GxCoord<double> const& p, GxBezierCurvePosition const& from,
                           GxBezierCurvePosition const& limit, GxBezierCurvePosition& to, double d,
                           int forward) const;

 protected:
  // ---- GxBezierCurve_measure.cpp ----------------------------------------------------------------

  /// 1 when every segment is a line within 1e-9 and exactly parallel to the first.
  int isALine() const;

  // ---- GxBezierCurve_fit.cpp --------------------------------------------------------------------

  /// Fits the points first..last, with unit tangents at both ends that point into the range, and
  /// appends the segments; clears the closed flag. Nothing happens unless first < last < length.
  void bezierPolyFit(GxList<GxCoord<double>> const* points, unsigned long first, unsigned long last,
                     GxVector<double> const& tHat1, GxVector<double> const& tHat2, double error);

  /// The least-squares segment for the points first..last at the parameters u[0..last - first].
  void findSegment(GxList<GxCoord<double>> const* points, double const* u, unsigned long first,
                   unsigned long last, GxVector<double> const& tHat1, GxVector<double> const& tHat2,
                   GxBezier& result);

  /// The largest squared distance between an inner point and the segment at its parameter, and the
  /// index of that point, the last one of equals; -1 without inner points that compare.
  double leastSquareErr(GxList<GxCoord<double>> const* points, unsigned long first,
                        unsigned long last, double const* u, GxBezier const& segment,
                        int& splitPoint);

  /// The unit tangent at point i: forwards at the first point, backwards at all others; zero where
  /// the neighbours coincide.
  GxVector<double> findTangent(GxList<GxCoord<double>> const* points, unsigned long i);

  /// 1 when two directions, or their opposites, differ by less than an angle in degrees; 0 when
  /// either has no length.
  int isCollinear(GxVector<double> const& a, GxVector<double> const& b, float angleDegrees);

 private:
  GxList<GxBezier> segments_;
  int closed_;
};

extern template class CRV_API GxList<GxBezierCurve>;
