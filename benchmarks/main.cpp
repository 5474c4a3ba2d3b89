// Runs the yardstick, then the benchmarks asked for, and prints one table: nanoseconds for one
// operation, and the same as a multiple of the yardstick y measured in the same run.
#include <cstdio>

#include "support.h"

namespace {

/// y: 16 points of a cubic in a plain loop over doubles.
void yardstick(benchmark::State& state) {
  std::vector<double> k;
  std::string const set = "font";
  for (bench::Row const& row : bench::rows(set)) {
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
BENCHMARK(yardstick);

class Table : public benchmark::BenchmarkReporter {
 public:
  bool ReportContext(Context const&) override { return true; }

  void ReportRuns(std::vector<Run> const& runs) override {
    for (Run const& run : runs) {
      double const operations = run.counters.at("operations").value;
      double const ns =
          run.cpu_accumulated_time * 1e9 / static_cast<double>(run.iterations) / operations;
      if (y_ == 0.0) {
        y_ = ns;
        std::printf("%-52s %14s %12s\n", "operation", "ns", "y");
      }
      std::printf("%-52s %14.1f %12.2f\n", run.benchmark_name().c_str(), ns, ns / y_);
      std::fflush(stdout);
    }
  }

 private:
  double y_ = 0.0;
};

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  std::string const asked = benchmark::GetBenchmarkFilter();
  std::string const others = asked.empty() || asked == "." ? "-yardstick" : asked;
  Table table;
  benchmark::RunSpecifiedBenchmarks(&table, "yardstick");
  benchmark::RunSpecifiedBenchmarks(&table, others);
  return 0;
}
