#include "support.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>

namespace bench {

namespace {

std::ifstream open(std::string const& name) {
  std::ifstream in(std::string(CRV_SOURCE_DIR) + "/benchmarks/data/" + name);
  if (!in) {
    std::fprintf(stderr, "benchmarks/data/%s is missing\n", name.c_str());
    std::exit(1);
  }
  return in;
}

Point readPoint(std::istream& in) {
  double x = 0.0;
  double y = 0.0;
  in >> x >> y;
  return Point(x, y);
}

std::vector<Row> readRows(std::string const& set) {
  std::ifstream in = open(set + ".txt");
  std::vector<Row> found;
  while ((in >> std::ws).peek() != std::ifstream::traits_type::eof()) {
    Row row{};
    for (int i = 0; i < 4; ++i) row.segment(i) = readPoint(in);
    row.query = readPoint(in);
    in >> row.t >> row.arcLength;
    row.lineStart = readPoint(in);
    row.lineEnd = readPoint(in);
    found.push_back(row);
  }
  return found;
}

std::vector<Pair> readPairs(std::string const& set) {
  std::ifstream in = open("pairs_" + set + ".txt");
  std::vector<Pair> found;
  for (Pair pair{}; in >> pair.first >> pair.second;) found.push_back(pair);
  return found;
}

std::vector<GxList<Point>> readCoasts() {
  std::ifstream in = open("coast.txt");
  std::vector<GxList<Point>> found;
  std::string mark;
  for (unsigned n = 0; in >> mark >> n;) {
    GxList<Point> points;
    for (unsigned i = 0; i < n; ++i) points.add(readPoint(in));
    found.push_back(points);
  }
  return found;
}

/// The first outline of a letter: M x y, then L x y and C with six numbers, then Z.
GxBezierCurve readLetter(std::istream& in) {
  GxBezierCurve letter;
  Point start, at;
  for (std::string mark; in >> mark && mark != "Z";) {
    if (mark == "M") {
      start = at = readPoint(in);
      continue;
    }
    Point const first = readPoint(in);
    Point const p1 = mark == "C" ? first : at;
    Point const p2 = mark == "C" ? readPoint(in) : first;
    Point const p3 = mark == "C" ? readPoint(in) : first;
    letter.getSegments().add(GxBezier(at, p1, p2, p3));
    at = p3;
  }
  letter.setStrictIsClosed(1);
  return letter;
}

std::vector<GxBezierCurve> readLetters() {
  std::ifstream in = open("glyphs.txt");
  std::vector<GxBezierCurve> found;
  for (std::string line; std::getline(in, line);) {
    std::istringstream words(line.substr(line.find(' ')));
    found.push_back(readLetter(words));
  }
  return found;
}

std::vector<GxBezierCurve> const& lettersOfWord() {
  static std::vector<GxBezierCurve> const all = [] {
    std::vector<GxBezierCurve> found = letters();
    auto const isOther = [](GxBezierCurve const& letter) {
      return letter.length() < 22 || letter.length() > 28;
    };
    found.erase(std::remove_if(found.begin(), found.end(), isOther), found.end());
    return found;
  }();
  return all;
}

/// Moves a letter to the right of the one before it in a word, and back until both cross.
void weld(GxBezierCurve const& before, GxBezierCurve& letter) {
  constexpr double kStep = 20.0;
  double left = 0.0, right = 0.0, low = 0.0, high = 0.0, unused = 0.0;
  before.getBoundingBox(unused, low, right, high);
  letter.getBoundingBox(left, low, unused, high);
  letter.moveCurve(GxVector<double>(right - left, 0.0));
  do {
    letter.moveCurve(GxVector<double>(-kStep, 0.0));
  } while (crv::contacts(before, letter).points.size() < 2);
}

std::string& nameOfRunning() {
  static std::string name;
  return name;
}

std::vector<std::string>& names() {
  static std::vector<std::string> all;
  return all;
}

}  // namespace

void enter(std::string const& name, std::function<void(benchmark::State&)> const& run) {
  names().push_back(name);
  benchmark::RegisterBenchmark(name.c_str(), [=](benchmark::State& state) {
    nameOfRunning() = name;
    run(state);
  });
}

std::vector<std::string> const& entered() { return names(); }

std::string const& running() { return nameOfRunning(); }

std::vector<GxBezierCurve> const& letters() {
  static std::vector<GxBezierCurve> const all = readLetters();
  return all;
}

std::vector<Row> const& rows(std::string const& set) {
  static std::vector<Row> const font = readRows("font");
  static std::vector<Row> const random = readRows("random");
  return set == "font" ? font : random;
}

std::vector<Pair> const& pairs(std::string const& set) {
  static std::vector<Pair> const font = readPairs("font");
  static std::vector<Pair> const random = readPairs("random");
  return set == "font" ? font : random;
}

std::vector<GxList<Point>> const& coasts() {
  static std::vector<GxList<Point>> const all = readCoasts();
  return all;
}

std::vector<GxBezierCurve> rowOfLetters(std::size_t count) {
  std::vector<GxBezierCurve> row;
  for (std::size_t i = 0; i < count; ++i) {
    row.push_back(letters()[i % letters().size()]);
    row.back().moveCurve(GxVector<double>(250.0 * static_cast<double>(i), 0.0));
  }
  return row;
}

std::size_t mediumLetters() { return lettersOfWord().size(); }

std::vector<GxBezierCurve> word(std::size_t count) {
  std::vector<GxBezierCurve> word;
  for (std::size_t i = 0; i < count; ++i) {
    word.push_back(lettersOfWord()[i % mediumLetters()]);
    if (i > 0) weld(word[i - 1], word[i]);
  }
  return word;
}

}  // namespace bench
