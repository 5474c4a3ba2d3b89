// Runs the selected benchmarks and prints two tables. The first one compares the cost of operations
// with a floor and with other libraries that do the same work in the same run; the second one shows
// how costs grow with the size of the input.
//
// A benchmark's name is work/data/who. Who is "CRV", "accurate" for the operation with a stated
// accuracy, "floor" for the barest code that takes the required steps, or another library. A name
// that begins with "growth" ends with a size. All times are multiples of y, the time of 16 points
// of a cubic in a plain loop over doubles, which is measured in every run.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "support.h"

namespace {

void yardstick(benchmark::State& state) {
  std::vector<double> k;
  for (bench::Row const& row : bench::rows("font")) {
    for (int i = 0; i < 4; ++i) {
      k.push_back(row.segment[i].xval());
      k.push_back(row.segment[i].yval());
    }
  }
  for (auto _ : state) {
    for (std::size_t c = 0; c < k.size(); c += 8) {
      double sum = 0.0;
      for (int i = 0; i < 16; ++i) {
        double const t = i / 15.0;
        double const s = 1.0 - t;
        double const b0 = s * s * s;
        double const b1 = 3.0 * t * s * s;
        double const b2 = 3.0 * t * t * s;
        double const b3 = t * t * t;
        sum += k[c] * b0 + k[c + 2] * b1 + k[c + 4] * b2 + k[c + 6] * b3;
        sum += k[c + 1] * b0 + k[c + 3] * b1 + k[c + 5] * b2 + k[c + 7] * b3;
      }
      benchmark::DoNotOptimize(sum);
    }
  }
  bench::perIteration(state, k.size() / 8);
}

/// The results of one library in all repetitions of a benchmark.
struct Figures {
  std::vector<double> ns;
  std::map<std::string, double> notes;  // the counters besides the number of operations
  std::string label;

  double median() {
    std::sort(ns.begin(), ns.end());
    return ns[ns.size() / 2];
  }
  /// Half the distance of the quartiles, as a percentage of the median.
  double spread() {
    double const m = median();
    return 50.0 * (ns[ns.size() * 3 / 4] - ns[ns.size() / 4]) / m;
  }
};

std::string text(char const* format, double value) {
  char buffer[64];
  std::snprintf(buffer, sizeof buffer, format, value);
  return buffer;
}

class Tables : public benchmark::BenchmarkReporter {
 public:
  bool ReportContext(Context const&) override { return true; }

  void ReportRuns(std::vector<Run> const& runs) override {
    for (Run const& run : runs) {
      if (run.run_type != Run::RT_Iteration) continue;
      if (run.error_occurred) {
        std::fprintf(stderr, "%s: %s\n", run.benchmark_name().c_str(), run.error_message.c_str());
        continue;
      }
      Figures& figures = found_[keyOf(run.run_name.function_name)];
      figures.label = run.report_label;
      for (auto const& [name, counter] : run.counters) figures.notes[name] = counter.value;
      figures.ns.push_back(run.cpu_accumulated_time * 1e9 / static_cast<double>(run.iterations) /
                           figures.notes.at("operations"));
    }
  }

  void Finalize() override {
    y_ = found_[{"yardstick", "CRV"}].median();
    std::printf("y = %.1f ns\n\n", y_);
    std::vector<std::string> peers;
    for (auto const& [key, figures] : found_) {
      std::string const& who = key.second;
      bool const isPeer =
          who != "CRV" && who != "accurate" && who != "floor" && key.first.rfind("growth", 0) != 0;
      if (isPeer && std::find(peers.begin(), peers.end(), who) == peers.end()) peers.push_back(who);
    }
    printCosts(peers);
    printGrowth();
  }

 private:
  using Key = std::pair<std::string, std::string>;  // work/data, who

  static Key keyOf(std::string const& name) {
    bool const hasWho = std::count(name.begin(), name.end(), '/') == 2;
    std::size_t const slash = name.rfind('/');
    return hasWho ? Key(name.substr(0, slash), name.substr(slash + 1)) : Key(name, "CRV");
  }

  /// The works of this library that were measured, in the order of entry.
  std::vector<std::string> works(bool growth) const {
    std::vector<std::string> all;
    for (std::string const& name : bench::entered()) {
      Key const key = keyOf(name);
      bool const isGrowth = name.rfind("growth", 0) == 0;
      bool const isOurs = key.second == "CRV" || key.second == "accurate";
      bool const isNew = std::find(all.begin(), all.end(), key.first) == all.end();
      if (isOurs && isNew && isGrowth == growth && name != "yardstick" && found_.count(key)) {
        all.push_back(key.first);
      }
    }
    return all;
  }

  Figures* figuresOf(std::string const& work, std::string const& who) {
    auto const at = found_.find({work, who});
    return at == found_.end() ? nullptr : &at->second;
  }

  std::string cell(Figures* figures) const {
    if (!figures) return "-";
    return text("%.3g", figures->median() / y_) + text(" %.0f%%", figures->spread());
  }

  void printCosts(std::vector<std::string> const& peers) {
    std::printf("| %-50s | %8s | %-10s | %-10s |", "work", "ns", "CRV", "floor");
    std::printf(" %-10s |", "accurate");
    for (std::string const& peer : peers) std::printf(" %-10s |", peer.c_str());
    std::printf(" %-9s | accuracy |\n|---|---|---|---|---|", "best peer");
    for (std::size_t i = 0; i < peers.size(); ++i) std::printf("---|");
    std::printf("---|---|\n");
    for (std::string const& work : works(false)) {
      Figures* const plain = figuresOf(work, "CRV");
      Figures* const accurate = figuresOf(work, "accurate");
      Figures* const ours = plain ? plain : accurate;
      std::printf("| %-50s | %8.4g | %-10s | %-10s |", work.c_str(), ours->median(),
                  cell(plain).c_str(), cell(figuresOf(work, "floor")).c_str());
      std::printf(" %-10s |", cell(accurate).c_str());
      double best = 0.0;
      std::string accuracy = plain ? notesOf("", plain) : "";
      if (accurate) accuracy += notesOf(plain ? "; accurate " : "", accurate);
      for (std::string const& peer : peers) {
        Figures* const figures = figuresOf(work, peer);
        std::printf(" %-10s |", cell(figures).c_str());
        if (!figures) continue;
        if (best == 0.0 || figures->median() < best) best = figures->median();
        accuracy += notesOf((accuracy.empty() ? "" : "; ") + peer + " ", figures);
      }
      std::string const ratio = best > 0.0 ? text("%.2f", ours->median() / best) : "-";
      std::printf(" %-9s | %s |\n", ratio.c_str(), accuracy.c_str());
    }
  }

  static std::string notesOf(std::string const& who, Figures* figures) {
    std::string notes;
    for (auto const& [name, value] : figures->notes) {
      if (name != "operations") notes += (notes.empty() ? who : ", ") + name + text(" %.3g", value);
    }
    return notes;
  }

  /// The times at all sizes, and the slope of their logarithms from the middle size to the last.
  void printGrowth() {
    std::map<std::string, std::vector<std::pair<double, Figures*>>> rows;
    std::vector<std::string> names;
    for (std::string const& work : works(true)) {
      std::size_t const slash = work.rfind('/');
      std::string const name = work.substr(7, slash - 7);
      if (rows.find(name) == rows.end()) names.push_back(name);
      rows[name].emplace_back(std::stod(work.substr(slash + 1)), figuresOf(work, "CRV"));
    }
    if (names.empty()) return;
    std::printf("\n| growth | microseconds at each n | slope | demanded |\n|---|---|---|---|\n");
    for (std::string const& name : names) {
      auto const& sizes = rows[name];
      std::string times;
      for (auto const& [n, figures] : sizes) {
        times += (times.empty() ? "" : ", ") + text("%.0f: ", n) +
                 text("%.3g", figures->median() / 1000);
      }
      auto const& [n0, first] = sizes[(sizes.size() - 1) / 2];
      auto const& [n1, last] = sizes.back();
      double const slope = std::log(last->median() / first->median()) / std::log(n1 / n0);
      std::printf("| %s | %s | %.2f | %s |\n", name.c_str(), times.c_str(), slope,
                  last->label.c_str());
    }
  }

  double y_ = 0.0;
  std::map<Key, Figures> found_;
};

}  // namespace

int main(int argc, char** argv) {
  // The repetitions of all benchmarks are run in random order, so that a busy minute does not
  // affect a single row only.
  std::vector<std::string> words{argv[0], "--benchmark_repetitions=7", "--benchmark_min_time=0.02",
                                 "--benchmark_enable_random_interleaving=true"};
  words.insert(words.end(), argv + 1, argv + argc);
  std::vector<char*> arguments;
  for (std::string& word : words) arguments.push_back(word.data());
  bench::enter("yardstick", yardstick);
  bench::enterSegments();
  bench::enterCurves();
  bench::enterEdits();
  bench::enterLists();
  bench::enterGrowths();
  bench::enterFloors();
  bench::enterAccurate();
  bench::enterAccurateCurves();
#ifdef CRV_HAS_2GEOM
  bench::enterLib2geom();
#endif
#ifdef CRV_HAS_AGG
  bench::enterAgg();
#endif
  int count = static_cast<int>(arguments.size());
  benchmark::Initialize(&count, arguments.data());
  if (benchmark::ReportUnrecognizedArguments(count, arguments.data())) return 1;
  std::string const asked = benchmark::GetBenchmarkFilter();
  Tables tables;
  benchmark::RunSpecifiedBenchmarks(&tables, asked.empty() ? "." : "^yardstick$|" + asked);
  return 0;
}
