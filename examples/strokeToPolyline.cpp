// Fits a digitised stroke with cubic segments, turns the chain into polylines and draws all three:
//
//   strokeToPolyline [POINTS.txt] [--error E] [--step S] [--out FILE.svg]
//
// POINTS.txt holds x y a line; lines may be blank, and # starts a comment. E is the squared
// distance that the fit may leave between a point and the chain, S the length of the polyline's
// chords, both in the stroke's own units; they default to what suits its size.

#include "crv/crv.h"
#include "examples/svg.h"

#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <limits>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

constexpr char const* kUsage = "usage: ./demo [POINTS.txt] [--error E] [--step S] [--out FILE.svg]";
constexpr char const* kDefaultStroke = CRV_SOURCE_DIR "/examples/data/iceland.txt";

// Curve units: the farthest a point may lie from the origin. The library's fixed tolerances, 0.1
// and 0.5, mean nothing in a plane that is larger still.
constexpr double kFarthest = 1e9;

// Curve units: a stroke this small is told of those tolerances.
constexpr double kSmall = 20;

// Points that a polyline may have.
constexpr double kMostPoints = 1e6;

// The defaults for a stroke whose longer side is 1: the fit's tolerance and the chord.
constexpr double kDefaultTolerance = 1.0 / 450;
constexpr double kDefaultStep = 1.0 / 50;

// Halving may add this share of the fit's tolerance, and is no finer than this for a size of 1.
constexpr double kHalvingShare = 0.25;
constexpr double kFinestHalving = 1e-5;

/// Something the user can put right, in one sentence.
struct Complaint : std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// The user asked how to call it.
struct Usage {};

/// A number as people read it.
std::string readable(double value, int digits = 6) {
  char text[32];
  std::snprintf(text, sizeof text, "%.*g", digits, value);
  return text;
}

// ---- Input ------------------------------------------------------------------------------------

/// A plain decimal number, the whole word. (A program starts in the "C" locale; this one stays
/// there, so the point is a point everywhere.)
bool isFiniteNumber(std::string const& word, double& value) {
  if (word.empty() || word.find_first_not_of("0123456789+-.eE") != std::string::npos) return false;
  char* end = nullptr;
  value = std::strtod(word.c_str(), &end);
  return *end == '\0' && std::isfinite(value);
}

struct Options {
  std::string stroke = kDefaultStroke;
  double error = 0;  // 0: by the stroke's size
  double step = 0;
  std::string out = "strokeToPolyline.svg";
};

double positive(std::string const& option, std::string const& word) {
  double value = 0;
  if (!isFiniteNumber(word, value) || value <= 0) {
    throw Complaint(option + " needs a positive number, not \"" + word + "\".");
  }
  return value;
}

Options optionsOf(std::vector<std::string> const& words) {
  Options options;
  bool named = false;
  for (std::size_t i = 0; i < words.size(); ++i) {
    std::string const& word = words[i];
    if (word == "--help") throw Usage();
    if (word == "--error" || word == "--step" || word == "--out") {
      if (++i == words.size() || words[i].empty()) {
        throw Complaint(word + " needs a value after it; " + kUsage);
      }
      if (word == "--error") options.error = positive(word, words[i]);
      if (word == "--step") options.step = positive(word, words[i]);
      if (word == "--out") options.out = words[i];
    } else if (word.empty() || word[0] == '-') {
      throw Complaint("unknown option \"" + word + "\"; " + kUsage);
    } else if (named) {
      throw Complaint("one file of points is enough, \"" + word + "\" is a second; " + kUsage);
    } else {
      options.stroke = word;
      named = true;
    }
  }
  std::error_code error;
  if (std::filesystem::equivalent(options.stroke, options.out, error)) {
    throw Complaint("--out names the file of points itself, " + options.out + ".");
  }
  return options;
}

/// The start of a line, fit to be shown.
std::string quoted(std::string const& line) {
  std::string text;
  for (char const c : line.substr(0, 40)) text += c < ' ' ? '?' : c;
  return '"' + text + (line.size() > 40 ? "...\"" : "\"");
}

GxCoord<double> pointOf(std::string const& line) {
  std::istringstream in(line);
  std::string first, second, more;
  in >> first >> second >> more;
  double x = 0, y = 0;
  if (!more.empty() || !isFiniteNumber(first, x) || !isFiniteNumber(second, y)) {
    throw Complaint("expected two finite numbers, x and y, but found " + quoted(line) + ".");
  }
  if (std::fabs(x) > kFarthest || std::fabs(y) > kFarthest) {
    throw Complaint("coordinates may go up to " + readable(kFarthest) + ", but here is " +
                    quoted(line) + ".");
  }
  return {x, y};
}

GxList<GxCoord<double>> readStroke(std::string const& file) {
  std::ifstream in(file);
  if (!in || std::filesystem::is_directory(file)) throw Complaint("cannot read " + file + ".");
  GxList<GxCoord<double>> stroke;
  std::string line;
  for (long number = 1; std::getline(in, line); ++number) {
    std::string const content = line.substr(0, line.find('#'));
    if (content.find_first_not_of(" \t\r\v\f") == std::string::npos) continue;
    try {
      stroke.add(pointOf(content));
    } catch (Complaint const& complaint) {
      throw Complaint(file + ":" + std::to_string(number) + ": " + complaint.what());
    }
  }
  if (in.bad()) throw Complaint("cannot read " + file + " to its end.");
  if (stroke.length() < 2) {
    throw Complaint(file + ": a stroke needs two points or more, this file has " +
                    std::to_string(stroke.length()) + ".");
  }
  return stroke;
}

// ---- How far the fit went astray ----------------------------------------------------------------

/// The sample that lies farthest from the chain, and the point of the chain nearest to it.
struct Farthest {
  double squaredDistance = -1;
  GxCoord<double> sample;
  GxCoord<double> nearest;
};

double squaredDistanceToBox(svg::Box const& box, GxCoord<double> const& p) {
  double const dx = max(0.0, max(box.minX - p.xval(), p.xval() - box.maxX));
  double const dy = max(0.0, max(box.minY - p.yval(), p.yval() - box.maxY));
  return dx * dx + dy * dy;
}

/// Asks every segment for its nearest point to every sample, except where that cannot change the
/// answer: a segment whose box is farther off than another segment, a sample that is nearer than
/// the farthest so far. The segment that served the sample before is asked first.
Farthest farthestSample(svg::Points const& samples, GxBezierCurve const& curve) {
  std::vector<GxBezier> segments;
  std::vector<svg::Box> boxes;
  for (int i = 0; i < static_cast<int>(curve.length()); ++i) {
    segments.push_back(curve[i]);
    svg::Box b = svg::boxOf({curve[i][0], curve[i][1], curve[i][2], curve[i][3]});
    // Computed points may lie outside the box by their rounding.
    double const rounding = 1e-12 * max(max(-b.minX, b.maxX), max(-b.minY, b.maxY));
    boxes.push_back({b.minX - rounding, b.minY - rounding, b.maxX + rounding, b.maxY + rounding});
  }

  Farthest farthest;
  std::size_t served = 0;
  for (GxCoord<double> const& p : samples) {
    Farthest here{std::numeric_limits<double>::infinity(), p, p};
    std::size_t const first = served;
    for (std::size_t k = 0; k < segments.size(); ++k) {
      std::size_t const i = (first + k) % segments.size();
      if (squaredDistanceToBox(boxes[i], p) >= here.squaredDistance) continue;
      double t = 0;
      segments[i].findNearestPointTValue(p, t);
      GxCoord<double> const q = segments[i].bValue(t);
      if (p.squaredDistance(q) < here.squaredDistance) {
        here.squaredDistance = p.squaredDistance(q);
        here.nearest = q;
        served = i;
      }
      if (here.squaredDistance <= farthest.squaredDistance) break;
    }
    if (here.squaredDistance > farthest.squaredDistance) farthest = here;
  }
  return farthest;
}

// ---- The stages ---------------------------------------------------------------------------------

/// Milliseconds since it was last asked.
class Stopwatch {
 public:
  double lap() {
    Clock::time_point const now = Clock::now();
    double const passed = std::chrono::duration<double, std::milli>(now - last_).count();
    last_ = now;
    return passed;
  }

 private:
  using Clock = std::chrono::steady_clock;
  Clock::time_point last_ = Clock::now();
};

struct Result {
  svg::Points samples;
  double size;
  double error;
  double step;
  double halvingTolerance;
  GxBezierCurve curve;
  bool joined;
  Farthest farthest;
  double length;
  svg::Points chords;
  svg::Points halved;
  struct {
    double fit, measure, chords, halving;
  } ms;
};

Result process(GxList<GxCoord<double>> const& stroke, Options const& options) {
  Result r{};
  r.samples = svg::toPoints(stroke);
  svg::Box const box = svg::boxOf(r.samples);
  double const longer = max(box.width(), box.height());
  r.size = longer > 0 ? longer : 1;
  double const tolerance = r.size * kDefaultTolerance;
  r.error = options.error > 0 ? options.error : tolerance * tolerance;
  r.step = options.step > 0 ? options.step : r.size * kDefaultStep;
  r.halvingTolerance = max(std::sqrt(r.error) * kHalvingShare, r.size * kFinestHalving);

  Stopwatch watch;
  r.curve = GxBezierCurve(&stroke, r.error);
  r.joined = r.curve.isClose() != 0;
  r.ms.fit = watch.lap();

  r.farthest = farthestSample(r.samples, r.curve);
  r.length = r.curve.curveLength();
  r.ms.measure = watch.lap();
  if (!(r.length / r.step <= kMostPoints)) {
    throw Complaint("a step of " + readable(r.step) + " would make a polyline of " +
                    readable(r.length / r.step) + " points; up to " + readable(kMostPoints) +
                    " are made, with a step of " + readable(r.length / kMostPoints) + " or more.");
  }

  GxList<GxCoord<double>> chords;
  r.curve.makeCurve(r.step, chords, 0);
  r.ms.chords = watch.lap();
  r.chords = svg::toPoints(chords);

  watch.lap();
  r.curve.getPolyline(r.halvingTolerance, r.halved);
  r.ms.halving = watch.lap();
  return r;
}

// ---- The picture --------------------------------------------------------------------------------

constexpr char const* kSampleLook = "stroke:#ced4da";
constexpr char const* kChainLook = "stroke:#1864ab;stroke-width:1.5";
constexpr char const* kJoinLook = "stroke:#1864ab";
constexpr char const* kInsideOfJoin = "stroke:#fff";
constexpr char const* kHandleLook = "stroke:#2f9e44;stroke-width:1";
constexpr char const* kChordLook = "stroke:#f76707;stroke-width:1.2";
constexpr char const* kFarthestLook = "stroke:#e03131;stroke-width:2.5";
constexpr char const* kNoteLook = "font-size:11px;fill:#868e96";
constexpr char const* kFrameLook = "stroke:#495057;stroke-width:1";

// Pixels: the picture, its margin, the squares in which a place for the magnifying glass is sought,
// and the rows of the legend.
constexpr double kWidth = 800;
constexpr double kLeastHeight = 240;
constexpr double kMostHeight = 640;
constexpr double kMargin = 16;
constexpr int kSquare = 10;
constexpr double kLegendHeight = 64;

// The radii of dots under the glass, in pixels.
constexpr double kSampleDot = 4;
constexpr double kVertexDot = 2.8;
constexpr double kHandleDot = 1.8;
constexpr double kJoinDot = 3.2;
constexpr double kInsideDot = 1.8;

constexpr double kMagnified = 8;

/// The rectangle of this size, nearest to the middle of the page, that hides nothing of the stroke;
/// one of no size if there is none.
svg::Box freePlace(svg::Page const& page, Result const& r, double height, int wide, int high) {
  int const columns = static_cast<int>(kWidth) / kSquare;
  int const rows = static_cast<int>(height) / kSquare;
  std::vector<char> taken(static_cast<std::size_t>(columns) * static_cast<std::size_t>(rows));
  auto const at = [&](int column, int row) -> char& {
    return taken[static_cast<std::size_t>(row * columns + column)];
  };
  for (svg::Points const* points : {&r.samples, &r.halved, &r.chords}) {
    for (GxCoord<double> const& p : *points) {
      GxCoord<double> const q = page.onPage(p);
      double const column = max(0.0, min(q.xval() / kSquare, columns - 1.0));
      double const row = max(0.0, min(q.yval() / kSquare, rows - 1.0));
      at(static_cast<int>(column), static_cast<int>(row)) = 1;
    }
  }

  svg::Box best{0, 0, 0, 0};
  GxCoord<double> const middle(kWidth / 2, height / 2);
  double nearest = std::numeric_limits<double>::infinity();
  int const w = wide / kSquare + 2;  // a square around it stays free, too
  int const h = high / kSquare + 2;
  for (int top = 0; top + h <= rows; ++top) {
    for (int left = 0; left + w <= columns; ++left) {
      svg::Box const box{(left + 1.0) * kSquare, (top + 1.0) * kSquare,
                         (left + 1.0) * kSquare + wide, (top + 1.0) * kSquare + high};
      double const d = middle.squaredDistance(box.middle());
      if (d >= nearest) continue;
      bool free = true;
      for (int i = 0; i < w * h && free; ++i) free = !at(left + i % w, top + i / w);
      if (!free) continue;
      nearest = d;
      best = box;
    }
  }
  return best;
}

/// The whole stroke.
void drawStroke(svg::Page& page, Result const& r) {
  page.dots(r.samples, 2.5, kSampleLook);
  page.polyline(r.chords, kChordLook);
  page.chain(r.curve, kChainLook);
}

/// The farthest sample under a magnifying glass in this rectangle.
void drawGlass(svg::Page& page, Result const& r, svg::Box const& glass) {
  GxCoord<double> const middle = r.farthest.sample;
  GxVector<double> const corner(glass.width() / 2 / (page.scale() * kMagnified),
                                glass.height() / 2 / (page.scale() * kMagnified));
  GxCoord<double> const low = middle + -corner;
  GxCoord<double> const high = middle + corner;
  svg::Box const seen{low.xval(), low.yval(), high.xval(), high.yval()};
  page.polyline({low, {seen.maxX, seen.minY}, high, {seen.minX, seen.maxY}, low}, kFrameLook);

  page.frame(glass, "fill:#fff");
  page.view(seen, glass, 0);
  page.dots(r.samples, kSampleDot, kSampleLook);
  page.polyline({r.farthest.sample, r.farthest.nearest}, kFarthestLook);
  page.polyline(r.chords, kChordLook);
  page.dots(r.chords, kVertexDot, kChordLook);
  page.handles(r.curve, kHandleDot, kHandleLook);
  page.chain(r.curve, kChainLook);
  page.dots(svg::joinsOf(r.curve), kJoinDot, kJoinLook);
  page.dots(svg::joinsOf(r.curve), kInsideDot, kInsideOfJoin);
  page.frame(glass, kFrameLook);
  page.text(glass.minX, glass.maxY + 13, readable(kMagnified) + " times as large", kNoteLook);
}

void drawLegend(svg::Page& page, Result const& r, double top) {
  auto const dot = [](double radius, char const* look) {
    return std::string(look) + ";stroke-width:" + readable(2 * radius);
  };
  auto const count = [](std::size_t n, char const* what) { return std::to_string(n) + what; };
  double const x1 = 20, x2 = 230, x3 = 500;
  double const y = top + 18;
  page.legend(x1, y,
              {{dot(kSampleDot, kSampleLook), count(r.samples.size(), " samples"), 0},
               {dot(kJoinDot, kJoinLook), "joins of segments", 0}});
  page.legend(x1, y + svg::kLegendPitch, {{dot(kInsideDot, kInsideOfJoin), "", 0}});
  page.legend(
      x2, y, {{kChainLook, count(r.curve.length(), " fitted segments")}, {kHandleLook, "handles"}});
  page.legend(x3, y,
              {{kChordLook, count(r.chords.size(), " points in chords of ") + readable(r.step, 4)},
               {kFarthestLook, "farthest sample, " +
                                   readable(std::sqrt(r.farthest.squaredDistance), 3) + " off"}});
}

svg::Page pictureOf(Result const& r) {
  svg::Points drawn = r.samples;
  drawn.insert(drawn.end(), r.halved.begin(), r.halved.end());
  svg::Box const box = svg::boxOf(drawn);
  double const narrowest = max(box.width(), box.height() / kMostHeight);
  double const aspect = narrowest > 0 ? box.height() / narrowest : 0;
  double const inner = aspect * (kWidth - 2 * kMargin);
  double const height = min(max(inner + 2 * kMargin, kLeastHeight), kMostHeight);
  svg::Page page(kWidth);
  page.view(box, {0, 0, kWidth, height}, kMargin);
  drawStroke(page, r);

  double bottom = height;
  svg::Box glass = freePlace(page, r, height, 320, 240);
  if (glass.width() == 0) glass = freePlace(page, r, height, 240, 180);
  if (glass.width() == 0) {
    glass = {kMargin, height, kWidth - kMargin, height + 260};
    bottom = glass.maxY + kMargin;
  }
  drawGlass(page, r, glass);
  drawLegend(page, r, bottom);
  page.setHeight(bottom + kLegendHeight);
  return page;
}

// ---- The report ---------------------------------------------------------------------------------

void report(Options const& options, Result const& r, double readTime, double drawTime) {
  std::printf("points in          %8zu   %s\n", r.samples.size(), options.stroke.c_str());
  std::printf("segments           %8lu   fitted with a squared error of %.6g, ends %s\n",
              r.curve.length(), r.error, r.joined ? "joined" : "apart");
  std::printf("farthest sample    %8.3f   from the chain, at (%.6g, %.6g)\n",
              std::sqrt(r.farthest.squaredDistance), r.farthest.sample.xval(),
              r.farthest.sample.yval());
  std::printf("curve length       %8.1f\n", r.length);
  std::printf("points out         %8zu   by equal chords of %.6g\n", r.chords.size(), r.step);
  std::printf("                   %8zu   by halving, within %.6g\n", r.halved.size(),
              r.halvingTolerance);
  std::printf(
      "milliseconds       %8.1f   read %.1f, fit %.1f, measure %.1f, chords %.1f, "
      "halving %.1f, draw %.1f\n",
      readTime + r.ms.fit + r.ms.measure + r.ms.chords + r.ms.halving + drawTime, readTime,
      r.ms.fit, r.ms.measure, r.ms.chords, r.ms.halving, drawTime);
  std::printf("picture                       %s\n", options.out.c_str());
  if (r.size < kSmall) {
    std::printf(
        "\nThe library joins ends within 0.5 and measures chords within 0.1, in the stroke's own\n"
        "units: for a stroke as small as this one, scale its points up.\n");
  }
}

void run(Options const& options) {
  Stopwatch watch;
  GxList<GxCoord<double>> const stroke = readStroke(options.stroke);
  double const readTime = watch.lap();
  Result const result = process(stroke, options);
  watch.lap();
  if (!pictureOf(result).save(options.out)) throw Complaint("cannot write " + options.out + ".");
  report(options, result, readTime, watch.lap());
}

}  // namespace

int main(int argc, char** argv) {
  try {
    run(optionsOf({argv + 1, argv + argc}));
    return 0;
  } catch (Usage) {
    std::printf("%s\n", kUsage);
    return 0;
  } catch (std::exception const& e) {
    std::cerr << e.what() << "\n";
    return 1;
  }
}
