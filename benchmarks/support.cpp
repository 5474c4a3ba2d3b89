#include "support.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>

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

GxCoord<double> readPoint(std::ifstream& in) {
  double x = 0.0;
  double y = 0.0;
  in >> x >> y;
  return GxCoord<double>(x, y);
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

std::vector<GxList<GxCoord<double>>> readCoasts() {
  std::ifstream in = open("coast.txt");
  std::vector<GxList<GxCoord<double>>> found;
  std::string mark;
  for (unsigned n = 0; in >> mark >> n;) {
    GxList<GxCoord<double>> points;
    for (unsigned i = 0; i < n; ++i) points.add(readPoint(in));
    found.push_back(points);
  }
  return found;
}

}  // namespace

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

std::vector<GxList<GxCoord<double>>> const& coasts() {
  static std::vector<GxList<GxCoord<double>>> const all = readCoasts();
  return all;
}

}  // namespace bench
