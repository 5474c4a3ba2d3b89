// Welds overlapping letters into one outline, as a cutter needs them, and carries marks that were
// set on the letters along with the sources of the result's segments. Writes weldAWord.svg.

#include "crv/crv.h"
#include "examples/outline.h"
#include "examples/svg.h"

#include <iostream>
#include <optional>
#include <string>
#include <vector>

namespace {

struct Letter {
  std::string file;
  double shift;
  std::string colour;
};

std::vector<Letter> const kWord = {{"roman-capital-s-thirds.txt", 0, "#1864ab"},
                                   {"sans-k-thirds.txt", 365, "#2b8a3e"},
                                   {"roman-g-outer.txt", 745, "#c2255c"},
                                   {"italic-f-thirds.txt", 1180, "#e8590c"}};

/// Where a place of curve k of the list lies on the boundary of the region; nothing where it lies
/// inside.
std::optional<GxCoord<double>> carried(crv::Region const& region, std::size_t k,
                                       crv::Position const& mark) {
  for (std::size_t i = 0; i < region.curves.size(); ++i) {
    for (std::size_t segment = 0; segment < region.sources[i].size(); ++segment) {
      crv::Source const& source = region.sources[i][segment];
      if (source.list != 0 || source.curve != k || mark < source.from || !(mark < source.to))
        continue;
      // Sources are linear in t within a segment.
      double const from = source.from.getTValue();
      double const length = source.to.getSegmentNumber() > source.from.getSegmentNumber()
                                ? 1 - from
                                : source.to.getTValue() - from;
      double const along = (mark.getTValue() - from) / length;
      crv::Position const on(static_cast<int>(segment), source.backwards ? 1 - along : along);
      return region.curves[i].locateCurvePosition(on);
    }
  }
  return std::nullopt;
}

/// Four marks on each segment.
std::vector<crv::Position> marksOn(GxBezierCurve const& letter) {
  std::vector<crv::Position> marks;
  for (int i = 0; i < static_cast<int>(letter.length()); ++i) {
    for (double const t : {0.125, 0.375, 0.625, 0.875}) marks.emplace_back(i, t);
  }
  return marks;
}

}  // namespace

int main() {
  std::vector<GxBezierCurve> letters;
  for (Letter const& letter : kWord) {
    letters.push_back(readOutline(letter.file));
    letters.back().moveCurve({letter.shift, 0});
  }
  crv::Region const word = crv::unite(letters, {}, crv::FillRule::nonZero);

  svg::Page page(900, 760);
  svg::Box const box{30, -230, 1660, 730};
  std::size_t all = 0, kept = 0, segments = 0, sourceSegments = 0;
  double worst = 0.0;
  std::vector<svg::Points> places(letters.size());
  page.view(box, {0, 20, 620, 390});
  for (std::size_t k = 0; k < letters.size(); ++k) {
    page.chain(letters[k], "stroke:" + kWord[k].colour + ";stroke-width:1.6");
    svg::Points marks;
    for (crv::Position const& mark : marksOn(letters[k])) {
      GxCoord<double> const before = letters[k].locateCurvePosition(mark);
      marks.push_back(before);
      std::optional<GxCoord<double>> const after = carried(word, k, mark);
      if (after) {
        places[k].push_back(*after);
        worst = max(worst, before.distance(*after));
      }
    }
    page.dots(marks, 2.4, "stroke:" + kWord[k].colour);
    all += marks.size();
    kept += places[k].size();
    sourceSegments += letters[k].length();
  }
  page.view(box, {0, 380, 620, 750});
  page.area(word.curves, "stroke:#212529;stroke-width:2", "#f1f3f5");
  for (GxBezierCurve const& curve : word.curves) segments += curve.length();
  for (std::size_t k = 0; k < letters.size(); ++k) {
    page.dots(places[k], 2.4, "stroke:" + kWord[k].colour);
  }
  page.text(640, 60, std::to_string(letters.size()) + " letters that overlap,");
  page.text(640, 80,
            std::to_string(sourceSegments) + " segments, " + std::to_string(all) + " marks");
  page.text(640, 420,
            "welded: " + std::to_string(word.curves.size()) + " curves, " +
                std::to_string(segments) + " segments;");
  page.text(640, 440, std::to_string(kept) + " marks lie on them, where they lay;");
  page.text(640, 460, "the others are inside the word");
  page.save("weldAWord.svg");
  std::cout << word.curves.size() << " curves of " << segments << " segments; " << kept << " of "
            << all << " marks lie on them, at most " << worst << " from where they lay\n";
  return worst < 1e-9 ? 0 : 1;
}
