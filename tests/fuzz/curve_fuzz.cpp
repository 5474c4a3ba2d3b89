// Every operation of a curve.
#include "tests/support/open.h"

#include <list>

#include "input.h"

namespace {

using namespace fuzz;
using Point = GxCoord<double>;
using Position = GxBezierCurvePosition;
using support::OpenCurve;

bool isOn(GxBezierCurve const& c, Position const& p) {
  long const n = static_cast<long>(c.length());
  return 0 <= p.getSegmentNumber() && p.getSegmentNumber() <= n;
}

void positions(Input& in, GxBezierCurve const& c) {
  c.locateCurvePosition(in.position(c));
  c.getSense(in.position(c), in.position(c));
  in.position(c).isEqual(in.position(c), in.step());
  double const wild = in.raw();
  double const t =
      GxBezierCurvePositionConstructor().constructPosition(in.extremeInt(), wild).getTValue();
  require((0.0 <= t && t < 1.0) || !(std::fabs(wild) < 0x1p53), "normalised");
  int const sense = in.extremeInt();
  require(Position::isCompatibleSense(sense, Position::reverseSense(Position::reverseSense(sense))),
          "reversed twice");
}

void measure(Input& in, OpenCurve& c) {
  double box[4];
  c.getBoundingBox(box[0], box[1], box[2], box[3]);
  c.getLocalBoundingBox(box[0], box[1], box[2], box[3]);
  Point low, high;
  requireCode(c.getMinMax(low, high), -1, 0);
  double t = 0.0;
  int segment = 0;
  c.getCurveMaxY(t, segment), c.getCurveMinY(t, segment);
  c.isALine(), c.curveLength();
  positions(in, c);
  OpenCurve copy(c);
  copy.setSegments(GxBezierCurve(c).getSegments());
  copy.moveCurve(in.point() - in.point());
  copy.resize(in.coordinate(), in.raw());
  copy.flip(), copy.isClose();
  require(copy.length() == c.length(), "as many segments");
}

void fit(Input& in) {
  GxList<Point> points;
  unsigned const n = in.below(100);
  bool const repeat = in.flip();
  for (unsigned i = 0; i < n; ++i) {
    points.add(repeat && i != 0 && in.flip() ? points(i - 1) : in.point());
  }
  double const error = in.chance(3) ? in.step() : std::fabs(in.scale());
  OpenCurve c(&points, error);
  require(n >= 2 || c.length() == 0, "fewer than two points give nothing");
  require(n < 2 || (c.length() >= 1 && c.length() < n), "at most a segment for each two points");
  require(c.strictIsClosed() == 0, "open");
  if (c.length() != 0) {
    require(sameBits(c(0)[0], points(0)), "from the first point");
    require(sameBits(c(static_cast<int>(c.length()) - 1)[3], points(n - 1)), "to the last");
  }
  unsigned long const fitted = c.length();
  c.makeBezierPolyFit(&points, error);
  require(c.length() == 2 * fitted, "a second fit is appended");
  c.isCollinear(in.point() - in.point(), in.point() - in.point(), static_cast<float>(in.raw()));
}

void polylines(Input& in, OpenCurve& c) {
  std::list<Point> points;
  c.makeSegments(static_cast<unsigned short>(in.below(100)), points);
  if (!Input::isMeasurable(c)) return;
  GxList<Point> out;
  if (in.flip()) out.add(in.point());
  c.makeCurve(in.chord(c), out, static_cast<int>(in.below(3)));
  c.makeCurveEx(in.chord(c), in.chord(c), in.step(), out);
  std::list<Position> positions;
  c.getPolyline(in.halvingTolerance(c), points, positions, GxBezierPolylineCondition());
  require(points.size() == positions.size(), "a position for every point");
  for (Position const& p : positions) require(isOn(c, p), "on the curve");
}

void queries(Input& in, OpenCurve& c) {
  Point const p = in.flip() ? in.point() : c.locateCurvePosition(in.position(c));
  double t = 0.0;
  requireCode(c.whichSegment(p, t, in.step()), -1, static_cast<int>(c.length()));
  Point nearest;
  requireCode(c.findNearestPoint(p, nearest), -1, 1);
  Position pos;
  require(c.findNearestPointPos(p, pos) == -1 || isOn(c, pos), "on the curve");
  OpenCurve other(in.curve());
  c.getMinSqDistance(other);
  if (Input::magnitude(c) <= 1e4 && Input::magnitude(other) <= 1e4) {
    Appended<Point> points(in, Point(1, 2));
    c.findIntersections(other, points);
  }
  GxVector<double> const v = in.point() - in.point();
  Position found;
  c.findFirstGeometricLineIntersection(p, v, in.position(c), in.position(c), found, in.step());
  c.findFirstGeometricLineIntersectionEx(p, v, in.position(c), in.position(c), found, in.step());
  c.findFirstGeometricLineIntersectionWithEndpointCheck(p, v, in.position(c), in.position(c),
                                                        found);
}

void closing(Input& in, OpenCurve& given) {
  OpenCurve c(given);
  int valid = -1;
  requireCode(c.isClockwise(valid), 0, 1);
  requireCode(valid, 0, 1);
  requireCode(c.changeOrientation(in.byte()), -1, 0);
  unsigned long const n = c.length();
  c.reverse();
  require(c.length() == n, "as many segments");
  requireCode(in.flip() ? c.makeClosedCurve() : c.makeNiceClosedCurve(), 0, 1);
  require(n == 0 || c.strictIsClosed() != 0, "the flag is set");
  require(c.length() <= n + 1, "one segment more at most");
}

void tangents(Input& in, OpenCurve& c) {
  Position const pos = in.position(c);
  Point a, b, d;
  GxVector<double> v, w;
  requireCode(c.getTriple(pos, a, b, d), -1, 0);
  requireCode(c.getVelocityVectors(pos, v, w), -1, 0);
  requireCode(c.getAccelerationVectors(pos, v, w), -1, 0);
  if (c.findVelocityVectors(pos, v, w) != 0) {
    require(v.squaredLength() == 0.0 && w.squaredLength() == 0.0, "zero on failure");
  }
}

void offset(Input& in, OpenCurve& given) {
  OpenCurve c(given);
  unsigned long const n = c.length();
  c.offset(in.step(), in.flip(), static_cast<int>(in.below(5)) - 1);
  require(c.length() >= n && c.length() <= 6 * n, "cuts and joins only add segments");
  Point out;
  requireCode(c.extendLine(out, in.coordinate(), in.step()), -1, 1);
  int const range = c.wellDefinedDetection(in.coordinate(), in.coordinate());
  require(range == 0 || range == 1 || range == 2 || range == 4 || range == 7, "a code");
}

void walks(Input& in, OpenCurve& c) {
  Position const from = in.position(c), limit = in.position(c);
  Position to(5, 0.25);
  double const d = in.step();
  int const forward = in.flip();
  double consumed = 0.0;
  int code = 0;
  // One a run: on huge segments each may take seconds to find that it goes nowhere.
  switch (in.below(6)) {
    case 0: code = c.findNextPos(from, to, d, forward, static_cast<int>(in.below(2))); break;
    case 1: code = c.findNextPos(from, limit, to, d, forward); break;
    case 2:
      code = c.findNextPos(from, to, d, forward, consumed, static_cast<int>(in.below(2)));
      break;
    case 3: code = c.findNextPos(from, limit, to, d, consumed, forward); break;
    case 4: code = c.findNextPosFromPoint(in.point(), from, to, d, forward); break;
    default: code = c.findNextPosFromPoint(in.point(), from, limit, to, d, forward);
  }
  requireCode(code, -1, 0);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  Input in(data, size);
  void (*const topics[])(Input&, OpenCurve&) = {measure,  polylines, queries, closing,
                                                tangents, offset,    walks};
  unsigned const topic = in.below(8);
  if (topic == 0) return fit(in), 0;
  OpenCurve c(in.curve()), copy(c);
  topics[topic - 1](in, c);
  require(sameBits(c, copy), "the caller's curve stays");
  return 0;
}
