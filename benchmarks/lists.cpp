// The list, beside that of the standard library: for one element of a thousand.
#include <list>

#include "support.h"

namespace bench {

namespace {

constexpr unsigned kLength = 1000;

GxList<double> ascending() {
  GxList<double> list;
  for (unsigned i = 0; i < kLength; ++i) list.add(i);
  return list;
}

void append(benchmark::State& state) {
  for (auto _ : state) benchmark::DoNotOptimize(ascending().length());
  perIteration(state, kLength);
}

void appendStandard(benchmark::State& state) {
  for (auto _ : state) {
    std::list<double> list;
    for (unsigned i = 0; i < kLength; ++i) list.push_back(i);
    benchmark::DoNotOptimize(list.size());
  }
  perIteration(state, kLength);
}

/// The memory of each node, taken and given back.
void appendFloor(benchmark::State& state) {
  constexpr std::size_t kNode = 3 * sizeof(double);
  std::vector<void*> nodes(kLength);
  for (auto _ : state) {
    for (void*& node : nodes) node = ::operator new(kNode);
    benchmark::DoNotOptimize(nodes.data());
    for (void* const node : nodes) ::operator delete(node);
  }
  perIteration(state, kLength);
}

template <class Sum>
void sums(benchmark::State& state, Sum sum) {
  for (auto _ : state) benchmark::DoNotOptimize(sum());
  perIteration(state, kLength);
}

void byIndex(benchmark::State& state, unsigned stride) {
  GxList<double> const list = ascending();
  sums(state, [&] {
    double sum = 0.0;
    for (unsigned i = 0; i < kLength; ++i) sum += list[i * stride % kLength];
    return sum;
  });
}

void byRange(benchmark::State& state) {
  GxList<double> const list = ascending();
  sums(state, [&] {
    double sum = 0.0;
    for (double const x : list) sum += x;
    return sum;
  });
}

void standardLoop(benchmark::State& state) {
  std::list<double> const list(kLength, 1.5);
  sums(state, [&] {
    double sum = 0.0;
    for (double const x : list) sum += x;
    return sum;
  });
}

}  // namespace

void enterLists() {
  enter("append to a list/1000/CRV", append);
  enter("append to a list/1000/std", appendStandard);
  enter("append to a list/1000/floor", appendFloor);
  enter("loop over a list by index/1000/CRV", [](benchmark::State& s) { byIndex(s, 1); });
  enter("loop over a list by index/1000/std", standardLoop);
  enter("loop over a list by range/1000/CRV", byRange);
  enter("loop over a list by range/1000/std", standardLoop);
  enter("list element at random/1000/CRV", [](benchmark::State& s) { byIndex(s, 7919); });
}

}  // namespace bench
