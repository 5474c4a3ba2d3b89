// Fits a digitised stroke with cubic segments, turns the chain into polylines and draws them:
//
//   strokeToPolyline [POINTS.txt] [--error E] [--step S] [--out FILE.svg]
//
// POINTS.txt holds x y a line; # starts a comment. E is the squared distance that the fit may
// leave, S the length of the polyline's chords, in the stroke's units; the defaults suit its size.

#include "crv/crv.h"
#include "examples/svg.h"

#include <chrono>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iomanip>
#include <limits>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

namespace {

using Point = GxCoord<double>;

constexpr double kLargestCoordinate = 1e9;
constexpr double kMostPoints = 1e6;

struct Options {
  std::string stroke = CRV_SOURCE_DIR "/examples/data/iceland.txt";
  std::string out = "strokeToPolyline.svg";
  double error = 0.0;  // 0: by the stroke's size
  double step = 0.0;
};

GxList<Point> readStroke(std::string const& file) {
  GxList<Point> stroke;
  std::ifstream in(file);
  std::string line;
  for (int number = 1; std::getline(in, line); ++number) {
    std::istringstream words(line.substr(0, line.find('#')));
    if ((words >> std::ws).eof()) continue;
    double x = 0.0, y = 0.0;
    bool const isPoint = words >> x >> y && (words >> std::ws).eof();
    if (!isPoint || std::fabs(x) > kLargestCoordinate || std::fabs(y) > kLargestCoordinate) {
      throw std::runtime_error(file + ":" + std::to_string(number) +
                               ": expected x and y, up to 1e9, but found \"" + line.substr(0, 40) +
                               "\"");
    }
    stroke.add({x, y});
  }
  if (stroke.length() < 2) throw std::runtime_error(file + ": a stroke needs two points or more");
  return stroke;
}

/// The sample that lies farthest from the chain, and the point of the chain nearest to it.
struct Farthest {
  double distance;
  Point sample;
  Point nearest;
};

double distanceToBox(GxBezier const& segment, Point const& p) {
  double minX, minY, maxX, maxY;
  segment.getConvexHull(minX, minY, maxX, maxY);
  return std::hypot(max(0.0, max(minX - p.xval(), p.xval() - maxX)),
                    max(0.0, max(minY - p.yval(), p.yval() - maxY)));
}

/// Asks every segment whose box is near enough, starting at the one that was nearest to the sample
/// before.
Farthest farthestSample(svg::Points const& samples, GxBezierCurve const& curve) {
  std::vector<GxBezier> segments = svg::segmentsOf(curve);
  Farthest farthest{-1.0, {}, {}};
  std::size_t served = 0;
  for (Point const& p : samples) {
    Farthest here{std::numeric_limits<double>::infinity(), p, p};
    std::size_t const first = served;
    for (std::size_t k = 0; k < segments.size() && here.distance > farthest.distance; ++k) {
      std::size_t const i = (first + k) % segments.size();
      if (distanceToBox(segments[i], p) >= here.distance) continue;
      Point q;
      segments[i].findNearestPoint(p, q);
      if (p.distance(q) >= here.distance) continue;
      here = {p.distance(q), p, q};
      served = i;
    }
    if (here.distance > farthest.distance) farthest = here;
  }
  return farthest;
}

/// Adds up the milliseconds of the stages, each named when it ends.
class Stopwatch {
 public:
  void lap(char const* stage) {
    Clock::time_point const now = Clock::now();
    double const passed = std::chrono::duration<double, std::milli>(now - last_).count();
    last_ = now;
    total += passed;
    std::ostringstream words;
    words << (stages.empty() ? "" : ", ") << stage << std::fixed << std::setprecision(1) << ' '
          << passed;
    stages += words.str();
  }
  double total = 0.0;
  std::string stages;

 private:
  using Clock = std::chrono::steady_clock;
  Clock::time_point last_ = Clock::now();
};

/// The whole stroke, and beside it the place where the fit is worst.
svg::Page pictureOf(svg::Points const& samples, GxBezierCurve const& curve,
                    svg::Points const& chords, Farthest const& worst, double size) {
  svg::Page page(900, 520);
  std::string const chain = "stroke:#1864ab;stroke-width:1.5";
  page.view(svg::boxOf(samples), {0, 0, 600, 520});
  page.dots(samples, 2.5, "stroke:#ced4da");
  page.polyline(chords, "stroke:#f76707;stroke-width:1.2");
  page.chain(curve, chain);
  page.dots({worst.sample}, 4, "stroke:#e03131");

  svg::Box const glass{610, 20, 880, 290};
  GxVector<double> const corner(size / 80, size / 80);
  svg::Box const seen = svg::boxOf({worst.sample + -corner, worst.sample + corner});
  page.view(seen, glass, 0);
  page.dots(samples, 4, "stroke:#ced4da");
  page.polyline({worst.sample, worst.nearest}, "stroke:#e03131;stroke-width:2.5");
  page.polyline(chords, "stroke:#f76707;stroke-width:1.2");
  page.handles(curve, 1.8, "stroke:#2f9e44;stroke-width:1");
  page.chain(curve, chain);
  page.dots(svg::jointsOf(curve), 3, "stroke:#1864ab");
  page.frame(glass, "stroke:#495057;stroke-width:1");
  page.legend(610, 325,
              {{"stroke:#ced4da;stroke-width:8", std::to_string(samples.size()) + " samples", 0},
               {chain, std::to_string(curve.length()) + " fitted segments"},
               {"stroke:#1864ab;stroke-width:6", "joints of segments", 0},
               {"stroke:#2f9e44;stroke-width:1", "handles"},
               {"stroke:#f76707;stroke-width:1.2", std::to_string(chords.size()) + " chord ends"},
               {"stroke:#e03131;stroke-width:8", "the farthest sample, enlarged above", 0}});
  return page;
}

void run(Options options) {
  Stopwatch watch;
  GxList<Point> const stroke = readStroke(options.stroke);
  svg::Points const samples = svg::toPoints(stroke);
  svg::Box const box = svg::boxOf(samples);
  double const longer = max(box.width(), box.height());
  double const size = longer > 0.0 ? longer : 1.0;
  if (options.error == 0.0) options.error = std::pow(size / 450, 2);
  if (options.step == 0.0) options.step = size / 50;
  watch.lap("read");

  GxBezierCurve curve(&stroke, options.error);
  bool const isJoined = curve.isClose() != 0;
  watch.lap("fit");

  Farthest const farthest = farthestSample(samples, curve);
  double const length = curve.curveLength();
  watch.lap("measure");
  if (length / options.step > kMostPoints) {
    throw std::runtime_error("--step: too short, it would make more than a million points");
  }

  GxList<Point> chordList;
  curve.makeCurve(options.step, chordList, 0);
  svg::Points const chords = svg::toPoints(chordList);
  watch.lap("chords");

  double const tolerance = max(std::sqrt(options.error) / 4, size * 1e-5);
  svg::Points halved;
  curve.getPolyline(tolerance, halved);
  watch.lap("halving");

  pictureOf(samples, curve, chords, farthest, size).save(options.out);
  watch.lap("draw");

  std::printf("points in          %8zu   %s\n", samples.size(), options.stroke.c_str());
  std::printf("segments           %8lu   fitted with a squared error of %.6g, ends %s\n",
              curve.length(), options.error, isJoined ? "joined" : "apart");
  std::printf("farthest sample    %8.3f   from the chain, at (%.6g, %.6g)\n", farthest.distance,
              farthest.sample.xval(), farthest.sample.yval());
  std::printf("curve length       %8.1f\n", length);
  std::printf("points out         %8zu   by equal chords of %.6g\n", chords.size(), options.step);
  std::printf("                   %8zu   by halving, within %.6g\n", halved.size(), tolerance);
  std::printf("milliseconds       %8.1f   %s\n", watch.total, watch.stages.c_str());
  std::printf("picture                       %s\n", options.out.c_str());
  if (size < 20) {
    std::printf(
        "\nThe library joins ends within 0.5 and measures chords within 0.1: scale the\n"
        "points of a stroke as small as this one up.\n");
  }
}

}  // namespace

int main(int argc, char** argv) {
  Options options;
  CLI::App app("Fits a digitised stroke and turns it into polylines.", "./demo");
  CLI::Validator const positive(
      [](std::string const& word) {
        double value = 0.0;
        bool const isNumber = CLI::detail::lexical_cast(word, value);
        bool const isPositive = isNumber && value > 0.0 && std::isfinite(value);
        return isPositive ? "" : "needs a positive number, not \"" + word + "\"";
      },
      "POSITIVE");
  app.add_option("points", options.stroke, "a file of points, x y a line")
      ->check(CLI::ExistingFile);
  app.add_option("--error", options.error, "squared distance the fit may leave")->check(positive);
  app.add_option("--step", options.step, "length of the polyline's chords")->check(positive);
  app.add_option("--out", options.out, "the picture to write");
  try {
    app.parse(argc, argv);
    if (std::error_code e; std::filesystem::equivalent(options.stroke, options.out, e)) {
      throw std::runtime_error("--out names the file of points itself");
    }
    run(options);
    return 0;
  } catch (CLI::CallForHelp const& e) {
    return app.exit(e);
  } catch (std::exception const& e) {
    std::fprintf(stderr, "%s\n", e.what());
    return 1;
  }
}
