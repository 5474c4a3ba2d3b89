// The commands that tell of shapes: contacts, nearest, info, draw.
#include "tools/crv/commands.h"
#include "tools/crv/progress.h"

namespace tool {

namespace {

long number(std::size_t i) { return static_cast<long>(i); }

}  // namespace

// ---- contacts -----------------------------------------------------------------------------------

namespace {

char const* nameOf(crv::ContactKind kind) {
  switch (kind) {
    case crv::ContactKind::crossing: return "crossing";
    case crv::ContactKind::touching: return "touching";
    case crv::ContactKind::end: return "end";
  }
  return "";
}

struct ContactsCommand {
  Files files;
  double resolution = 0.0;

  static void addRows(crv::CurveContacts const& found, std::size_t i, std::size_t j,
                      Result& result) {
    auto& rows = result.table->rows;
    auto const row = [&](char const* kind, Point const& p, crv::Position const& a,
                         crv::Position const& b) {
      rows.push_back({kind, p.xval(), p.yval(), number(i), a.getSegmentNumber(), a.getTValue(),
                      number(j), b.getSegmentNumber(), b.getTValue()});
      result.marks.push_back(p);
    };
    for (crv::CurveContact const& c : found.points) {
      row(nameOf(c.kind), c.point, c.first, c.second);
    }
    Curve const& curve = result.background[i];
    for (crv::CurveOverlap const& o : found.overlaps) {
      row("overlap-start", curve.locateCurvePosition(o.from), o.from, o.otherFrom);
      row("overlap-end", curve.locateCurvePosition(o.to), o.to, o.otherTo);
    }
  }

  void run() const {
    std::vector<Curve> const first = curvesOf(readDrawing(files.in[0]));
    bool const isAlone = files.in.size() == 1;
    std::vector<Curve> const second = isAlone ? first
                                              : curvesOf(readDrawings(std::vector<std::string>(
                                                    files.in.begin() + 1, files.in.end())));
    Result result;
    result.background = first;
    if (!isAlone) result.background.insert(result.background.end(), second.begin(), second.end());
    result.table =
        Table{"contacts",
              {"kind", "x", "y", "curve", "segment", "t", "otherCurve", "otherSegment", "otherT"},
              {}};
    Progress progress(first.size() * second.size());
    for (std::size_t i = 0; i < first.size(); ++i) {
      for (std::size_t j = 0; j < second.size(); ++j) {
        if (!isAlone || i < j)
          addRows(crv::contacts(first[i], second[j], resolution), i, j, result);
        if (isAlone && i == j) addRows(crv::selfContacts(first[i], resolution), i, i, result);
        progress.step();
      }
    }
    write(result, files.out);
  }
};

}  // namespace

void addContacts(CLI::App& app) {
  auto const contacts = std::make_shared<ContactsCommand>();
  CLI::App* const c = addCommand(
      app, "contacts",
      "Tell where curves cross, touch and overlap: those of one file among each other, or those "
      "of the first with those of the others.",
      "crv contacts letter.svg line.svg --to json", contacts->files);
  c->add_option("-r,--resolution", contacts->resolution,
                "places nearer than this are one (2^-40 of the largest coordinate)")
      ->check(positive());
  c->callback([contacts] { contacts->run(); });
}

// ---- nearest ------------------------------------------------------------------------------------

namespace {

struct NearestCommand {
  Files files;
  std::vector<std::string> points;
  std::string pointsFile;

  void run() const {
    Result result;
    result.background = curvesOf(readDrawings(files.in));
    std::vector<crv::CurveSearch> const searches(result.background.begin(),
                                                 result.background.end());
    Points queries;
    for (std::string const& text : points) queries.push_back(readPoint(text));
    if (!pointsFile.empty()) {
      for (Point const& p : readPoints(pointsFile)) queries.push_back(p);
    }
    result.table =
        Table{"nearest", {"x", "y", "distance", "curve", "segment", "t", "ofX", "ofY"}, {}};
    Progress progress(queries.size());
    for (Point const& p : queries) {
      addNearest(p, searches, result);
      progress.step();
    }
    write(result, files.out);
  }

 private:
  static void addNearest(Point const& p, std::vector<crv::CurveSearch> const& searches,
                         Result& result) {
    std::optional<crv::NearestOnCurve> best;
    std::size_t curve = 0;
    for (std::size_t i = 0; i < searches.size(); ++i) {
      auto const here = searches[i].nearest(p);
      if (here && (!best || here->distance < best->distance)) best = here, curve = i;
    }
    if (!best) return;
    result.table->rows.push_back({best->point.xval(), best->point.yval(), best->distance,
                                  number(curve), best->position.getSegmentNumber(),
                                  best->position.getTValue(), p.xval(), p.yval()});
    result.marks.push_back(best->point);
  }
};

}  // namespace

void addNearest(CLI::App& app) {
  auto const nearest = std::make_shared<NearestCommand>();
  CLI::App* const c = addCommand(app, "nearest", "Tell which place of the curves is nearest.",
                                 "crv nearest letter.svg --point 300,200", nearest->files);
  auto* const asked = c->add_option_group("points", "nearest to what");
  asked->add_option("-p,--point", nearest->points, "nearest to x,y")->expected(1)->take_all();
  asked->add_option("--points", nearest->pointsFile, "nearest to each point of a file");
  asked->require_option(1, 0);
  c->callback([nearest] { nearest->run(); });
}

// ---- info ---------------------------------------------------------------------------------------

namespace {

void runInfo(Files const& files) {
  Result result;
  result.background = curvesOf(readDrawings(files.in));
  result.table = Table{"curves",
                       {"curve", "segments", "closed", "length", "area", "minX", "minY", "maxX",
                        "maxY", "selfContacts"},
                       {}};
  Progress progress(result.background.size());
  for (std::size_t i = 0; i < result.background.size(); ++i) {
    Curve const& curve = result.background[i];
    Point lo, hi;
    (void)curve.getMinMax(lo, hi);  // curves that are read have segments
    crv::CurveContacts const self = crv::selfContacts(curve);
    result.table->rows.push_back({number(i), static_cast<long>(curve.length()),
                                  curve.strictIsClosed() ? 1L : 0L, crv::arcLength(curve, 0.0),
                                  crv::signedArea(curve), lo.xval(), lo.yval(), hi.xval(),
                                  hi.yval(), number(self.points.size() + self.overlaps.size())});
    progress.step();
  }
  write(result, files.out);
}

}  // namespace

void addInfo(CLI::App& app) {
  auto const files = std::make_shared<Files>();
  CLI::App* const c = addCommand(app, "info",
                                 "Tell of each curve how many segments it has, whether it is "
                                 "closed, its length, area, box and contacts with itself.",
                                 "crv info letter.svg", *files);
  c->callback([files] { runInfo(*files); });
}

// ---- draw ---------------------------------------------------------------------------------------

namespace {

void runDraw(Files files, Look const& look) {
  Result result;
  for (Shape& shape : readDrawings(files.in)) {
    if (shape.samples.empty()) {
      result.curves.push_back(std::move(shape.curve));
    } else {
      result.polylines.push_back(std::move(shape.samples));
    }
  }
  result.look = look;
  if (files.out.format.empty()) files.out.format = "svg";
  write(result, files.out);
}

}  // namespace

void addDraw(CLI::App& app) {
  auto const files = std::make_shared<Files>();
  auto const look = std::make_shared<Look>();
  CLI::App* const c =
      addCommand(app, "draw", "Draw curves and points as an SVG document.",
                 "crv fit stroke.txt | crv draw --handles --out stroke.svg", *files);
  c->add_flag("--handles", look->handles, "draw joints and handles, too");
  c->add_flag("--fill", look->fill, "fill the areas");
  c->add_option("--width", look->width, "of the lines (a four-hundredth of the size)")
      ->check(positive());
  c->callback([files, look] { runDraw(*files, *look); });
}

}  // namespace tool
