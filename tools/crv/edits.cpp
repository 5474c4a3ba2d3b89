// The commands that make curves of curves: offset, cut, weld.
#include "tools/crv/commands.h"
#include "tools/crv/progress.h"

#include <cmath>
#include <map>
#include <optional>

namespace tool {

namespace {

// A share of the size of the drawing, where no tolerance is given.
constexpr double kTolerance = 1e-4;

}  // namespace

// ---- offset -------------------------------------------------------------------------------------

namespace {

struct OffsetCommand {
  Files files;
  double distance = 0.0;
  double width = 0.0;
  bool plain = false;
  crv::Cap cap = crv::Cap::round;
  crv::OffsetOptions options{0.0, crv::Join::round, 4.0};

  void appendParallels(Curve const& curve, std::vector<Curve>& out) const {
    if (plain) {
      Curve parallel = curve;
      parallel.offset(distance, 1, crv::OffsetMode::plain);
      out.push_back(parallel);
      return;
    }
    if (width > 0.0) {
      for (Curve& outline : crv::strokeOutline(curve, width, cap, options)) {
        out.push_back(std::move(outline));
      }
      return;
    }
    for (crv::Piece& parallel : crv::offset(curve, distance, options).parallels) {
      out.push_back(std::move(parallel.curve));
    }
  }

  void run() {
    Drawing const drawing = readDrawings(files.in);
    double const reach = crv::max(std::fabs(distance), width);  // more than the size of a dot
    options.tolerance = lengthOr(options.tolerance, kTolerance, crv::max(sizeOf(drawing), reach));
    Result result;
    Progress progress(drawing.size());
    for (Shape const& shape : drawing) {
      appendParallels(shape.curve, result.curves);
      progress.step();
    }
    result.look.fill = width > 0.0;
    result.background = curvesOf(drawing);
    write(result, files.out);
  }
};

}  // namespace

void addOffset(CLI::App& app) {
  auto const offset = std::make_shared<OffsetCommand>();
  CLI::App* const c = addCommand(
      app, "offset", "Make parallels of curves, or outlines of strokes.",
      "crv offset letter.svg --distance -5 --join miter --out inside.svg", offset->files);
  auto* const distance =
      c->add_option("-d,--distance", offset->distance,
                    "positive: left of the direction of travel, y running up (with y down: right)");
  auto* const stroke =
      c->add_option("--stroke", offset->width, "the outline of a stroke of this width instead")
          ->check(positive())
          ->excludes(distance);
  addChoice(c, "--join", offset->options.join,
            {{"round", crv::Join::round}, {"miter", crv::Join::miter}, {"bevel", crv::Join::bevel}},
            "the corners: round, miter or bevel");
  c->add_option("--miter-limit", offset->options.miterLimit,
                "the farthest tip of a miter, as a multiple of the distance (4)")
      ->check(positive());
  addChoice(c, "--cap", offset->cap,
            {{"butt", crv::Cap::butt}, {"round", crv::Cap::round}, {"square", crv::Cap::square}},
            "the ends of a stroke: butt, round or square")
      ->needs(stroke);
  c->add_option("-t,--tolerance", offset->options.tolerance,
                "how far the distance may be off (a ten-thousandth of the size)")
      ->check(positive());
  c->add_flag("--plain", offset->plain, "use GxBezierCurve::offset, which trims nothing")
      ->excludes(stroke);
  c->callback([offset, distance, stroke] {
    if (distance->empty() && stroke->empty()) throw Refusal("offset needs --distance or --stroke");
    if (!std::isfinite(offset->distance)) throw Refusal("--distance: expected a finite number");
    offset->run();
  });
}

// ---- cut ----------------------------------------------------------------------------------------

namespace {

struct CutCommand {
  Files files;
  std::vector<double> at;
  std::vector<std::string> near;
  std::size_t pieces = 0;
  std::vector<std::string> with;
  bool crossings = false;

  /// The cuts that are the same on every curve, and those where a curve meets itself or others.
  std::vector<crv::Position> cutsOf(Curve const& curve, Drawing const& knives) const {
    std::vector<crv::Position> cuts;
    for (double const place : at) {
      double const whole = std::floor(place);
      cuts.emplace_back(static_cast<int>(whole), place - whole);
    }
    if (pieces > 0) {
      for (crv::Position const& p : crv::evenPositions(curve, pieces, 0.0)) cuts.push_back(p);
    }
    if (crossings) {
      for (crv::CurveContact const& c : crv::selfContacts(curve).points) {
        cuts.insert(cuts.end(), {c.first, c.second});
      }
    }
    for (Shape const& knife : knives) {
      for (crv::CurveContact const& c : crv::contacts(curve, knife.curve).points) {
        cuts.push_back(c.first);
      }
    }
    return cuts;
  }

  /// The curve nearest to each point is cut there.
  void addNear(Drawing const& drawing, std::vector<std::vector<crv::Position>>& cuts) const {
    for (std::string const& text : near) {
      Point const p = readPoint(text);
      std::size_t best = 0;
      std::optional<crv::NearestOnCurve> nearest;
      for (std::size_t i = 0; i < drawing.size(); ++i) {
        auto const here = crv::nearest(drawing[i].curve, p);
        if (here && (!nearest || here->distance < nearest->distance)) nearest = here, best = i;
      }
      if (nearest) cuts[best].push_back(nearest->position);
    }
  }

  void run() const {
    Drawing const drawing = readDrawings(files.in);
    Drawing const knives = readDrawings(with);
    std::vector<std::vector<crv::Position>> cuts(drawing.size());
    addNear(drawing, cuts);
    Result result;
    Progress progress(drawing.size());
    for (std::size_t i = 0; i < drawing.size(); ++i) {
      Curve const& curve = drawing[i].curve;
      for (crv::Position const& p : cutsOf(curve, knives)) cuts[i].push_back(p);
      if (cuts[i].empty()) {
        result.curves.push_back(curve);
      } else {
        for (crv::Piece& piece : crv::cut(curve, cuts[i])) {
          result.curves.push_back(std::move(piece.curve));
        }
      }
      progress.step();
    }
    write(result, files.out);
  }
};

}  // namespace

void addCut(CLI::App& app) {
  auto const cut = std::make_shared<CutCommand>();
  CLI::App* const c = addCommand(app, "cut", "Cut curves into pieces.",
                                 "crv cut letter.svg --with line.svg --out pieces.svg", cut->files);
  auto* const places = c->add_option_group("places", "where to cut");
  places
      ->add_option("--at", cut->at,
                   "on every curve: segment + parameter, 2.5 is in the middle of segment 2")
      ->check(CLI::Range(0.0, 1e9))
      ->expected(1)
      ->take_all();
  places->add_option("--near", cut->near, "on the nearest curve: the place nearest to x,y")
      ->expected(1)
      ->take_all();
  places->add_option("--pieces", cut->pieces, "on every curve: pieces of equal length")
      ->check(CLI::Range(1, 1000000));
  places->add_option("--with", cut->with, "where the curves of another file meet them")
      ->expected(1)
      ->take_all();
  places->add_flag("--crossings", cut->crossings, "where a curve meets itself");
  places->require_option(1, 0);
  c->callback([cut] { cut->run(); });
}

// ---- weld ---------------------------------------------------------------------------------------

namespace {

struct WeldCommand {
  using Operation = crv::Region (*)(std::vector<Curve> const&, std::vector<Curve> const&,
                                    crv::FillRule);
  Files files;
  Operation operation = crv::unite;
  crv::FillRule rule = crv::FillRule::nonZero;

  void run() const {
    if (operation != crv::unite && files.in.size() < 2) {
      throw Refusal("weld needs two files or more to intersect, subtract or exclude");
    }
    std::vector<Curve> const first = curvesOf(readDrawing(files.in[0]));
    std::vector<Curve> const others =
        curvesOf(readDrawings(std::vector<std::string>(files.in.begin() + 1, files.in.end())));
    Result result;
    result.curves = operation(first, others, rule).curves;
    result.look.fill = true;
    write(result, files.out);
  }
};

}  // namespace

void addWeld(CLI::App& app) {
  auto const weld = std::make_shared<WeldCommand>();
  CLI::App* const c =
      addCommand(app, "weld", "Unite areas, or intersect or subtract them.",
                 "crv weld plate.svg holes.svg --op subtract --out part.svg", weld->files);
  addChoice(c, "--op", weld->operation,
            {{"unite", crv::unite},
             {"intersect", crv::intersect},
             {"subtract", crv::subtract},
             {"exclude", crv::exclude}},
            "unite, intersect, subtract or exclude");
  addChoice(c, "--rule", weld->rule,
            {{"nonzero", crv::FillRule::nonZero}, {"evenodd", crv::FillRule::evenOdd}},
            "what is inside: nonzero or evenodd");
  c->callback([weld] { weld->run(); });
}

}  // namespace tool
