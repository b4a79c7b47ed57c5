// The check of stars against a prepared problem, by variables and kind of numbers.
#include "Benchmarks.h"
#include "stars/StarCheck.h"
#include "support/Register.h"
#include "support/StarSamples.h"

namespace starsift::bench {

namespace {

using benchmark::State;

constexpr Index starCount = 256;

template <class T>
void check(State& state, const StarSample& sample) {
  const Vanu<T> problem = sample.problem<T>();
  StarChecker<T> checker(problem);
  Array<Star<T>> stars = sample.stars<T>();
  for (auto _ : state)
    for (Star<T>& star : stars) benchmark::DoNotOptimize(checker.check(star));
  count(state, static_cast<std::size_t>(starCount));
}

void checkPeer(State& state, const StarSample& sample) {
  const peer::Problem problem(sample.problemText());
  std::vector<peer::Star> stars = sample.peerStars();
  for (auto _ : state)
    for (peer::Star& star : stars) benchmark::DoNotOptimize(problem.check(star));
  count(state, static_cast<std::size_t>(starCount));
}

void addVariables(Index variables, const std::string& name, NumberKind kind) {
  const auto input = std::to_string(variables) + "_variables_" + name;
  const auto sample = [variables, kind] { return StarSample(variables, starCount, kind); };
  add("check_star", input, "QQ", [sample](State& state) { check<QQ>(state, sample()); });
  add("check_star", input, "peer_mpq", [sample](State& state) { checkPeer(state, sample()); });
  if (kind != NumberKind::integers) return;
  add("check_star", input, "long_double",
      [sample](State& state) { check<dbl_t>(state, sample()); });
}

}  // namespace

void registerCheckStars() {
  for (const Index variables : {Index{50}, Index{400}}) {
    addVariables(variables, "integers", NumberKind::integers);
    addVariables(variables, "fractions", NumberKind::fractions);
  }
}

}  // namespace starsift::bench
