// A chain of cubic segments, addressed by positions.
//
// The class declaration is the index: each heading names the file that defines the methods below
// it. Tolerances and distances are absolute, in curve units, unless a comment says squared. Results
// are appended to the caller's lists, which are never cleared, unless a comment says so. Non-finite
// input yields unspecified results, but every call returns.
#pragma once

#include "crv/bezier/GxBezier.h"
#include "crv/curve/GxBezierCurvePosition.h"
#include "crv/export.h"
#include "crv/foundation/GxCoord.h"
#include "crv/foundation/GxList.h"
#include "crv/foundation/GxVector.h"

#include <initializer_list>
#include <list>
#include <utility>
#include <vector>

class GxBezierPolylineCondition;

/// An ordered sequence of segments, each meant to start where the one before ends, and a flag that
/// says whether the curve is to be treated as closed. Segment k at t is the position (k, t); a
/// curve of n segments runs from (0, 0.0) to (n, 0.0). Nothing enforces that segments meet. A value
/// type.
class CRV_API GxBezierCurve {
  // ---- GxBezierCurve.cpp: construction, comparison, segments, positions, moving -----------------
 public:
  /// Makes an empty, open curve.
  GxBezierCurve();

  /// Fits an open curve to two or more points with a squared tolerance, see makeBezierPolyFit. For
  /// fewer points, or null, the curve is empty.
  /// Trap: the tolerance is the square of a distance: 4.0 allows 2.0.
  GxBezierCurve(GxList<GxCoord<double>> const* points, double error);
  /// The same from a vector.
  GxBezierCurve(std::vector<GxCoord<double>> const& points, double error);
  /// Makes an open curve of segments.
  GxBezierCurve(std::initializer_list<GxBezier> segments) : segments_(segments), closed_(0) {}
  /// Makes an open curve of segments.
  explicit GxBezierCurve(std::vector<GxBezier> const& segments) : segments_(segments), closed_(0) {}
  /// Copies the segments and the closed flag.
  GxBezierCurve(GxBezierCurve const& other);
  /// Takes the segments over, and the closed flag; the other curve ends up empty and open.
  GxBezierCurve(GxBezierCurve&& other) noexcept
      : segments_(std::move(other.segments_)), closed_(std::exchange(other.closed_, 0)) {}
  /// Destroys the segments.
  ~GxBezierCurve();
  /// Copies the segments and the closed flag.
  GxBezierCurve& operator=(GxBezierCurve const& other);
  /// Takes the segments over, and the closed flag; the other curve ends up empty and open.
  GxBezierCurve& operator=(GxBezierCurve&& other) noexcept {
    GxBezierCurve(std::move(other)).swap(*this);
    return *this;
  }
  /// Exchanges the segments and the closed flags of two curves, without copying.
  void swap(GxBezierCurve& other) noexcept {
    segments_.swap(other.segments_);
    std::swap(closed_, other.closed_);
  }
  /// Exchanges the segments and the closed flags of two curves, without copying.
  friend void swap(GxBezierCurve& a, GxBezierCurve& b) noexcept { a.swap(b); }

  /// Returns 1 when the segments are equal pairwise, exactly; the closed flag is not compared. The
  /// inline overloads keep every mix of operands unambiguous from C++20 on.
  int operator==(GxBezierCurve const& other);
  /// 1 when the segments are equal, exactly; the closed flag is not compared.
  int operator==(GxBezierCurve const& other) const;
  /// 1 when the segments are equal, exactly; the closed flag is not compared.
  int operator==(GxBezierCurve& other) const { return segments_ == other.segments_; }
  /// 1 when the segments are equal, exactly; the closed flag is not compared.
  int operator==(GxBezierCurve& other) { return segments_ == other.segments_; }
  /// 1 when the segments are equal, exactly; the closed flag is not compared.
  int operator==(GxBezierCurve&& other) const { return segments_ == other.segments_; }
  /// 1 when the segments are equal, exactly; the closed flag is not compared.
  int operator==(GxBezierCurve&& other) { return segments_ == other.segments_; }
  /// The opposite of ==.
  int operator!=(GxBezierCurve const& other);
  /// The opposite of ==.
  int operator!=(GxBezierCurve const& other) const;
  /// The opposite of ==.
  int operator!=(GxBezierCurve& other) const { return segments_ != other.segments_; }
  /// The opposite of ==.
  int operator!=(GxBezierCurve& other) { return segments_ != other.segments_; }
  /// The opposite of ==.
  int operator!=(GxBezierCurve&& other) const { return segments_ != other.segments_; }
  /// The opposite of ==.
  int operator!=(GxBezierCurve&& other) { return segments_ != other.segments_; }

  /// Always returns 0: curves have no order; the operators let standard containers hold them.
  int operator<(GxBezierCurve const& other) const;
  /// Always returns 0.
  int operator>(GxBezierCurve const& other) const;

  /// Returns the list of segments itself, which the caller may change.
  GxList<GxBezier>& getSegments();
  /// Returns the list of segments itself.
  GxList<GxBezier> const& getSegments() const { return segments_; }

  /// The segments in order, for range-for.
  GxList<GxBezier>::iterator begin() { return segments_.begin(); }
  /// The place after the last segment.
  GxList<GxBezier>::iterator end() { return segments_.end(); }
  /// The segments in order, for range-for.
  GxList<GxBezier>::const_iterator begin() const { return segments_.begin(); }
  /// The place after the last segment.
  GxList<GxBezier>::const_iterator end() const { return segments_.end(); }

  /// Replaces the segments by copies; the closed flag stays. Passing the curve's own list empties
  /// the curve, because a list assigned to itself ends up empty.
  void setSegments(GxList<GxBezier> const& segments);

  /// Returns the number of segments.
  unsigned long length() const;

  /// Returns segment i modulo the number of segments.
  /// Precondition: the curve is not empty.
  GxBezier& operator()(int i);
  /// Segment i of a const curve.
  GxBezier const& operator()(int i) const { return segments_(static_cast<unsigned>(i)); }
  /// Segment i, as by operator(), modifiable also in a const curve.
  GxBezier& operator[](int i) const;

  /// Returns (0, 0.0), also for an empty curve.
  GxBezierCurvePosition firstPos() const;

  /// Returns (n, 0.0) for a curve of n segments.
  GxBezierCurvePosition lastPos() const;

  /// Returns the closed flag as it was set; isClose tells whether the ends meet.
  int strictIsClosed() const;
  /// Sets the closed flag.
  void setStrictIsClosed(int closed);

  /// Returns the sense from a to b: 1 forward, 2 backward, 0 when they coincide (same segment, t
  /// within 1e-9).
  int getSense(GxBezierCurvePosition const& a, GxBezierCurvePosition const& b) const;

  /// Returns the point at a position. (n, any t) is the end of the curve. A segment number below 0
  /// or above n, or an empty curve, gives the origin.
  GxCoord<double> locateCurvePosition(GxBezierCurvePosition const& pos) const;

  /// Moves every control point by v.
  void moveCurve(GxVector<double> const& v);

  /// Multiplies all x by sx and all y by sy, about the origin.
  void resize(double sx, double sy);

  /// Mirrors the curve in the x axis.
  void flip();

  /// Returns 1 when the ends lie within 0.5 of each other, after moving both onto their midpoint.
  /// Returns 0 for ends farther apart or an empty curve, and changes nothing. The closed flag plays
  /// no part.
  /// Trap: this query moves the ends of the curve.
  int isClose();

  // ---- GxBezierCurve_measure.cpp: length, boxes, highest and lowest places ----------------------
 public:
  /// Returns the sum of the lengths of the segments, as GxBezier::length measures them; 0.0 for an
  /// empty curve.
  /// Trap: two measurements of each segment agree within 0.1, which does not bound the error;
  /// crv::arcLength has a bound.
  double curveLength() const;

  /// Stores the box of all control points; four zeros for an empty curve.
  void getBoundingBox(double& minX, double& minY, double& maxX, double& maxY) const;

  /// Stores the tight box of the curve itself; four zeros for an empty curve.
  void getLocalBoundingBox(double& minX, double& minY, double& maxX, double& maxY) const;

  /// Stores the tight box as two points. Returns 0, or -1 for an empty curve, with the points
  /// untouched.
  int getMinMax(GxCoord<double>& min, GxCoord<double>& max) const;

  /// Finds where the curve is highest; of equally high segments the first wins. Returns 0, or -1
  /// for an empty curve, with the outputs untouched.
  int getCurveMaxY(double& t, int& segment) const;

  /// Finds where the curve is lowest; of equally low segments the first wins. Returns 0, or -1 for
  /// an empty curve, with the outputs untouched.
  int getCurveMinY(double& t, int& segment) const;

 protected:
  /// Returns 1 when every segment is a line within 1e-9 and exactly parallel to the first.
  int isALine() const;

  // ---- GxBezierCurve_fit.cpp: fitting segments to digitised points ------------------------------
 public:
  /// Appends a chain of segments from the first point to the last. At every point in between, the
  /// squared distance from the point to the curve at the parameter that the fit gave it is below
  /// error. The closed flag is cleared. Fewer than two points, or null, append nothing. A good fit
  /// whose worst point is the neighbour of an end is split there all the same, so three points
  /// always give two segments. Points that are not finite are not rejected.
  /// Method: P. J. Schneider, "An algorithm for automatically fitting digitized curves", Graphics
  /// Gems (1990), with other rules for the singular matrix, for short handles and for splitting.
  void makeBezierPolyFit(GxList<GxCoord<double>> const* points, double error);

 protected:
  /// Fits the points first..last and appends the segments. tHat1 and tHat2 are unit tangents at
  /// both ends that point into the range; error is a squared tolerance. A range of one point gives
  /// one segment that is a point. The closed flag is cleared. Nothing happens for null or unless
  /// first <= last < length.
  void bezierPolyFit(GxList<GxCoord<double>> const* points, unsigned long first, unsigned long last,
                     GxVector<double> const& tHat1, GxVector<double> const& tHat2, double error);

  /// Stores the least-squares segment for the points first..last at the parameters
  /// u[0..last - first].
  void findSegment(GxList<GxCoord<double>> const* points, double const* u, unsigned long first,
                   unsigned long last, GxVector<double> const& tHat1, GxVector<double> const& tHat2,
                   GxBezier& result);

  /// Returns the largest squared distance between an inner point and the segment at the point's
  /// parameter. splitPoint receives the index of that point, the last one of equals, or -1 when no
  /// inner point has a distance that can be compared.
  double leastSquareErr(GxList<GxCoord<double>> const* points, unsigned long first,
                        unsigned long last, double const* u, GxBezier const& segment,
                        int& splitPoint);

  /// Returns the unit tangent at point i: forwards at the first point, backwards at all others;
  /// zero where the neighbours coincide.
  GxVector<double> findTangent(GxList<GxCoord<double>> const* points, unsigned long i);

  /// Returns 1 when two directions, or their opposites, differ by less than an angle in degrees; 0
  /// when either has no length.
  int isCollinear(GxVector<double> const& a, GxVector<double> const& b, float angleDegrees);

  // ---- GxBezierCurve_polyline.cpp: polylines of a whole curve -----------------------------------
 public:
  /// Appends points at a straight-line distance of step from each other, within 0.1. Mode 1 spaces
  /// each segment on its own, evenly if that fits better, and leaves out the curve's end. Any other
  /// mode carries the rest of a step across the joints.
  /// Trap: only the distance of neighbouring points matters, so corners and tips between them are
  /// cut off.
  void makeCurve(double step, GxList<GxCoord<double>>& out, int mode) const;

  /// Does the same as makeCurve in a mode other than 1, with chords of length step where the curve
  /// stays within gap of them and of length shortStep elsewhere.
  void makeCurveEx(double step, double shortStep, double gap, GxList<GxCoord<double>>& out) const;

  /// Appends count + 1 points at equal parameter steps for every segment, and joints once. A list
  /// that is not empty first loses its last point.
  void makeSegments(unsigned short count, std::list<GxCoord<double>>& out) const;

  /// Replaces out by the polyline made by halving, every piece of which is a line within tolerance.
  void getPolyline(double tolerance, std::list<GxCoord<double>>& out) const;
  /// The same into a vector.
  void getPolyline(double tolerance, std::vector<GxCoord<double>>& out) const;

  /// Does the same with the caller's own tests for a line and a point. positions is replaced as
  /// well: point k of out lies at position k.
  void getPolyline(double tolerance, std::list<GxCoord<double>>& out,
                   std::list<GxBezierCurvePosition>& positions,
                   GxBezierPolylineCondition const& condition) const;

  // ---- GxBezierCurve_nearest.cpp: which segment holds a point, the nearest point ----------------
 public:
  /// Returns the number of the first segment that comes within tolerance of p, and stores the
  /// parameter there. The start of the curve is tried first, then its end, which is (n, 0.0), then
  /// the segments in order. Returns -1 when none comes that near; t is then unspecified.
  [[nodiscard]] int whichSegment(GxCoord<double> const& p, double& t, double tolerance) const;

  /// Finds the point of the curve nearest to p. The first segment is tried, then the last, then the
  /// others in order. The search ends after the last segment, or after any of the others, as soon
  /// as the best point so far lies at a squared distance below 0.5, even if a later segment is
  /// nearer.
  ///   -1  an empty curve; nearest is untouched
  ///    0  the search ended after the last segment, or the curve has one segment
  ///    1  the search went on, whichever segment holds the result; a curve of two segments gives 1
  ///       when neither lies that near
  /// Trap: the search accepts any point within 0.7, so the result is often wrong on small curves;
  /// see crv::nearest.
  int findNearestPoint(GxCoord<double> const& p, GxCoord<double>& nearest) const;

  /// Searches in the same way for the position; the end of segment i is (i + 1, 0.0).
  int findNearestPointPos(GxCoord<double> const& p, GxBezierCurvePosition& pos) const;

  /// Estimates the least squared distance between two curves from samples of this curve, eleven a
  /// segment, and the points that other.findNearestPoint returns for them. Returns 0.0 when either
  /// curve is empty.
  double getMinSqDistance(GxBezierCurve const& other) const;

  // ---- GxBezierCurve_intersect.cpp: the crossings of two curves ---------------------------------
 public:
  /// Appends the crossings of every segment of other with every segment of this curve. Returns 1
  /// when the list is not empty afterwards, even if only the caller put points there, else 0.
  /// Trap: a crossing at a joint may be appended once for each segment that ends there;
  /// crv::contacts reports it once.
  int findIntersections(GxBezierCurve const& other, GxList<GxCoord<double>>& points) const;

  // ---- GxBezierCurve_intersectLine.cpp: the first crossing with a line --------------------------
 public:
  /// Finds the first crossing with the line through p along v, walking from a position. The walk
  /// goes forwards if from < towards, else backwards; it goes on beyond towards to the end of the
  /// curve, but not across the seam. Parameters outside a segment by less than tolerance count as
  /// its ends. A crossing at from counts. A direction v shorter than 3.2e-5 counts as the x
  /// direction.
  ///    0  found; the position is in result
  ///   -1  none, an empty curve, or from on no segment; result is untouched
  [[nodiscard]] int findFirstGeometricLineIntersection(
      GxCoord<double> const& p, GxVector<double> const& v, GxBezierCurvePosition const& from,
      GxBezierCurvePosition const& towards, GxBezierCurvePosition& result, double tolerance) const;

  /// Does the same by carrying the segments into the frame of the line first, in which only a v
  /// whose squared length is 0 or overflows counts as the x direction.
  [[nodiscard]] int findFirstGeometricLineIntersectionEx(
      GxCoord<double> const& p, GxVector<double> const& v, GxBezierCurvePosition const& from,
      GxBezierCurvePosition const& towards, GxBezierCurvePosition& result, double tolerance) const;

  /// Searches as the first form does, with a tolerance of 1e-8. If that finds nothing, or if from
  /// is on no segment, the result is the curve's far end, provided that it lies within 0.001 of the
  /// line.
  [[nodiscard]] int findFirstGeometricLineIntersectionWithEndpointCheck(
      GxCoord<double> const& p, GxVector<double> const& v, GxBezierCurvePosition const& from,
      GxBezierCurvePosition const& towards, GxBezierCurvePosition& result) const;

  // ---- GxBezierCurve_orient.cpp: clockwise or not, reversing ------------------------------------
 public:
  /// Returns 1 when the outline runs clockwise, as read at its highest point, else 0. valid becomes
  /// 0 when no orientation is found (an empty curve, no turn at the top), else 1. A curve that is
  /// one straight line gives 0 with valid 1.
  /// Trap: clockwise is meant with y up; where y runs down, the answer is the opposite.
  int isClockwise(int& valid) const;

  /// Reverses the curve if it does not run as wanted (non-zero: clockwise). Returns 0, or -1 with
  /// nothing changed when the orientation cannot be decided.
  [[nodiscard]] int changeOrientation(int clockwise);

  /// Reverses the direction of travel; the closed flag stays.
  void reverse();

  // ---- GxBezierCurve_close.cpp: closing ---------------------------------------------------------
 public:
  /// Sets the closed flag, and bridges ends farther apart than 0.1 with a straight segment.
  ///   1  closed, or the flag was set before and nothing was changed (also for an empty curve)
  ///   0  an empty curve whose flag is not set (nothing changed), or a single segment that is a
  ///      point or a line within 0.05, which is closed all the same but encloses nothing
  int makeClosedCurve();

  /// Does the same, but trims or straightens end segments that overlap or nearly meet, so that the
  /// closure has no loop or spike.
  int makeNiceClosedCurve();

  // ---- GxBezierCurve_tangent.cpp: directions on both sides of a position ------------------------
 public:
  /// Stores the point at pos and the control points that are its handles, or would be if the
  /// segment were cut there. Returns 0, or -1 for a position outside the curve; point is then the
  /// origin or the curve's end, and the handles are untouched. At the start of an open curve before
  /// is untouched.
  [[nodiscard]] int getTriple(GxBezierCurvePosition const& pos, GxCoord<double>& point,
                              GxCoord<double>& before, GxCoord<double>& after) const;

  /// Stores the first derivatives on both sides of pos; in points backwards along the curve. If a
  /// handle lies on its end point, the chord to the next control point is used instead. Returns 0,
  /// or -1 for a position outside the curve, with the vectors untouched.
  [[nodiscard]] int getVelocityVectors(GxBezierCurvePosition const& pos, GxVector<double>& in,
                                       GxVector<double>& out) const;

  /// Stores the first derivatives on both sides of pos, both in the direction of travel. Chords
  /// replace derivatives that vanish (squared length below 1e-9). Returns 0, or -1 for a position
  /// outside the curve, with both vectors zero.
  int findVelocityVectors(GxBezierCurvePosition const& pos, GxVector<double>& in,
                          GxVector<double>& out) const;

  /// Stores the second derivatives on both sides of pos; in is negated. They are zero where both
  /// handles of a segment lie on its ends. Returns 0, or -1 for a position outside the curve, with
  /// the vectors untouched.
  [[nodiscard]] int getAccelerationVectors(GxBezierCurvePosition const& pos, GxVector<double>& in,
                                           GxVector<double>& out) const;

  // ---- GxBezierCurve_offset.cpp: the parallel curve ---------------------------------------------
 public:
  /// Replaces every segment by an approximation of its parallel at a distance, and joins ends that
  /// come apart. The last end is always joined to the first, closed flag or not. Positive distances
  /// lie to the left of the direction of travel; side 0 negates the distance. Distances below 0.5
  /// are ignored.
  ///   mode 0 or below  offset
  ///   mode 1           strongly bent segments are cut at their extremes first
  ///   mode 2           only that cutting, at any distance
  ///   mode 3 or above  nothing
  /// Trap: nothing is trimmed, so the result crosses itself inside sharp corners and tight bends;
  /// see crv::offset.
  void offset(double distance, int side, int mode);

  /// Computes the signed distance to pass to offset (side 1) so that the point of the curve
  /// farthest in a direction moves by distance along the direction (outwards non-zero) or against
  /// it. At a joint the normal nearer to the direction counts. Where the normal is inclined to the
  /// direction, the result is greater than distance.
  ///    0  the result is in value
  ///   -1  an empty curve, a direction shorter than 1e-9, or no normal along the direction: value
  ///       is untouched
  [[nodiscard]] int calculateOffsetValue(double& value, GxVector<double> direction, double distance,
                                         int outwards) const;

  // ---- GxBezierCurve_xRange.cpp: the curve against an interval of x -----------------------------
 public:
  /// Prolongs the start tangent to the vertical line through x and stores the point there.
  ///    0  x lies before a start that runs towards larger x
  ///    1  it does not
  ///   -1  an empty curve or a first segment without direction; out is untouched
  /// A tangent whose unit x component is below tol counts as running left, level.
  [[nodiscard]] int extendLine(GxCoord<double>& out, double x, double tol) const;

  /// Tells how the x range of a curve lies against the interval from lo to hi. The curve has to run
  /// from left to right, with segments that never run back (GxBezier::isWellDefined).
  ///   0  an empty curve, or a segment runs back
  ///   1  it starts at or before lo and ends at or after hi
  ///   2  it starts after lo and ends at or after hi, even if it lies beyond hi altogether
  ///   4  it starts at or before lo and ends before hi, even if it lies before lo altogether
  ///   7  it starts after lo and ends before hi
  /// A curve that runs from right to left is checked reversed, with 2 and 4 exchanged. If that
  /// check gives 0, a process-wide flag stays set, and 2 and 4 are exchanged in later calls on any
  /// curve until one does not give 0: this operation may not be called from two threads at once.
  int wellDefinedDetection(double lo, double hi) const;

  // ---- GxBezierCurve_step.cpp: walking along the curve ------------------------------------------
 public:
  /// Finds the next position, forwards (forward non-zero) or backwards, at a straight-line distance
  /// d, up to a limit: the far end of the curve where none is given. Mode 0 takes one chord; any
  /// other mode walks the length d in short chords.
  ///    0  found; the position is in to
  ///   -1  an empty curve, no step before the limit, or a walk that was ended; to is untouched, or
  ///       holds the last position reached by short chords
  /// A limit that lies behind from, in the direction of the walk, is reached across the seam of a
  /// strictly closed curve; on an open curve the walk then ends at the end of the curve. A step
  /// across joints subtracts from d, at each joint, the distance of the joint from the start of the
  /// step, so it ends near d only where segments are not much shorter than d. To walk back from the
  /// end of an open curve, start at (n - 1, t) with t just below 1: a walk back from (n, 0.0)
  /// begins on the first segment. Work is bounded: short chords stop after about 2^28 evaluations,
  /// a second of processor time; a single chord stops at the same count, but not before it has gone
  /// around twice.
  [[nodiscard]] int findNextPos(GxBezierCurvePosition const& from, GxBezierCurvePosition& to,
                                double d, int forward, int mode) const;
  /// Takes one chord, up to the limit.
  [[nodiscard]] int findNextPos(GxBezierCurvePosition const& from,
                                GxBezierCurvePosition const& limit, GxBezierCurvePosition& to,
                                double d, int forward) const;

  /// Does the same and measures the arc length walked. The form without a limit sets consumed; the
  /// other adds to it, also where no step is found.
  [[nodiscard]] int findNextPos(GxBezierCurvePosition const& from, GxBezierCurvePosition& to,
                                double d, int forward, double& consumed, int mode) const;
  /// Takes one chord, up to the limit.
  [[nodiscard]] int findNextPos(GxBezierCurvePosition const& from,
                                GxBezierCurvePosition const& limit, GxBezierCurvePosition& to,
                                double d, double& consumed, int forward) const;

  /// Does the same with the distance measured from the point p.
  [[nodiscard]] int findNextPosFromPoint(GxCoord<double> const& p,
                                         GxBezierCurvePosition const& from,
                                         GxBezierCurvePosition& to, double d, int forward) const;
  /// Takes one chord.
  [[nodiscard]] int findNextPosFromPoint(GxCoord<double> const& p,
                                         GxBezierCurvePosition const& from,
                                         GxBezierCurvePosition const& limit,
                                         GxBezierCurvePosition& to, double d, int forward) const;

 private:
  GxList<GxBezier> segments_;
  int closed_;
};

CRV_EXTERN_TEMPLATE(GxList<GxBezierCurve>);
