// Complete enumerations: market splits, whose trees have no wide interval, and knapsacks, which
// linear programs decide. An item is a node. Preparation is apart: the reduction of the basis, and
// the error bounds.
#include "search/enumeration/Enumeration.h"

#include <functional>
#include <random>

#include "Benchmarks.h"
#include "search/enumeration/CosetReduction.h"
#include "support/Register.h"
#include "support/fixtures/EquationCoset.h"

namespace starsift::bench {

namespace {

using benchmark::State;

class CountingVisitor : public EnumerationVisitor {
 public:
  Step found(const std::vector<ZZ>& point) override {
    benchmark::DoNotOptimize(&point);
    return Step::goOn;
  }
  Step progress(double, std::uint64_t) override { return Step::goOn; }
};

/// m rows of 10 (m - 1) weights below 100, right sides half of the sums (G. Cornuejols, M. Dawande,
/// A class of hard small 0-1 programs, INFORMS J. Comput. 11 (1999)).
BoxCoset marketSplit(std::size_t m) {
  std::mt19937_64 random(1);
  const std::size_t n = 10 * (m - 1);
  std::vector<std::vector<ZZ>> rows(m);
  std::vector<ZZ> sides;
  for (std::vector<ZZ>& row : rows) {
    long sum = 0;
    for (std::size_t j = 0; j < n; ++j) {
      const auto weight = static_cast<long>(random() % 100);
      row.emplace_back(weight);
      sum += weight;
    }
    sides.emplace_back(sum / 2);
  }
  return *test::cosetOfEquations(rows, sides, std::vector<ZZ>(n), std::vector<ZZ>(n, ZZ(1)));
}

/// A sum of 5 weights one below the least that all greater sums reach.
BoxCoset frobenius() {
  const std::vector<ZZ> weights{ZZ(12223), ZZ(12224), ZZ(36674), ZZ(61119), ZZ(85569)};
  const std::vector<ZZ> upper{ZZ(7333), ZZ(7333), ZZ(2444), ZZ(1466), ZZ(1047)};
  return *test::cosetOfEquations({weights}, {ZZ(89643481)}, std::vector<ZZ>(5), upper);
}

void reduceToEnd(BoxCoset& coset) {
  reduceCoset(coset, [] { return true; });
}

void addEnumeration(const std::string& name, const std::function<BoxCoset()>& make) {
  add("reduce_coset", name, "enumeration", [make](State& state) {
    const BoxCoset coset = make();
    for (auto _ : state) {
      BoxCoset copy(coset);
      reduceToEnd(copy);
    }
    state.SetItemsProcessed(state.iterations());
  })->Unit(benchmark::kMillisecond);
  add("prepare_tree", name, "enumeration", [make](State& state) {
    BoxCoset coset = make();
    reduceToEnd(coset);
    for (auto _ : state) benchmark::DoNotOptimize(Enumeration(coset).nodes());
    state.SetItemsProcessed(state.iterations());
  })->Unit(benchmark::kMillisecond);
  add("enumerate", name, "enumeration", [make](State& state) {
    BoxCoset coset = make();
    reduceToEnd(coset);
    Enumeration enumeration(coset);
    CountingVisitor visitor;
    for (auto _ : state) enumeration.run(visitor, {});
    state.SetItemsProcessed(static_cast<std::int64_t>(enumeration.nodes()));
  })->Unit(benchmark::kMillisecond);
}

}  // namespace

void registerEnumerate() {
  for (const std::size_t m : {4, 5, 6})
    addEnumeration("market_split_" + std::to_string(m), [m] { return marketSplit(m); });
  addEnumeration("frobenius", frobenius);
}

}  // namespace starsift::bench
