// Removing duplicates: each x occurs twice, with other parameters.
#include "Benchmarks.h"
#include "stars/StarOrder.h"
#include "support/FreshCopy.h"
#include "support/Growth.h"
#include "support/Register.h"
#include "support/StarSamples.h"

namespace starsift::bench {

namespace {

using benchmark::State;

constexpr Index copies = 2;

StarSample sampleOf(Index stars) {
  return StarSample(growthVariables, stars / copies, NumberKind::integers);
}

template <class T>
void remove(State& state, Index stars, bool compareParams) {
  onFreshCopies(state, sampleOf(stars).stars<T>(copies),
                [compareParams](Array<Star<T>>& copy) { removeDuplicates(copy, compareParams); });
  count(state, static_cast<std::size_t>(stars));
}

void removePeer(State& state, Index stars, bool compareParams) {
  onFreshCopies(state, sampleOf(stars).peerStars(copies),
                [compareParams](std::vector<peer::Star>& copy) {
                  peer::removeDuplicates(copy, compareParams);
                });
  count(state, static_cast<std::size_t>(stars));
}

void addCount(Index stars, const std::string& operation, bool compareParams) {
  const std::string input = starsName(stars);
  add(operation, input, "QQ", [=](State& state) { remove<QQ>(state, stars, compareParams); });
  add(operation, input, "long_double",
      [=](State& state) { remove<dbl_t>(state, stars, compareParams); });
  add(operation, input, "peer_mpq", [=](State& state) { removePeer(state, stars, compareParams); });
}

}  // namespace

void registerRemoveDuplicates() {
  for (const Index stars : starCounts) addCount(stars, "remove_duplicates", false);
  for (const Index stars : starCounts) addCount(stars, "compare_params_too", true);
}

}  // namespace starsift::bench
