// Sorting stars: unsorted ones, and ones that are sorted already, as in a file that was rewritten.
#include "Benchmarks.h"
#include "stars/StarOrder.h"
#include "support/FreshCopy.h"
#include "support/Growth.h"
#include "support/Register.h"
#include "support/StarSamples.h"

namespace starsift::bench {

namespace {

using benchmark::State;

StarSample sampleOf(Index stars) {
  return StarSample(growthVariables, stars, NumberKind::integers);
}

template <class T>
void sort(State& state, Index starCount, bool sorted) {
  auto stars = sampleOf(starCount).stars<T>();
  if (sorted) sortStars(stars);
  onFreshCopies(state, stars, [](Array<Star<T>>& copy) { sortStars(copy); });
  count(state, static_cast<std::size_t>(starCount));
}

void sortPeer(State& state, Index starCount, bool sorted) {
  auto stars = sampleOf(starCount).peerStars();
  if (sorted) peer::sortStars(stars);
  onFreshCopies(state, stars, [](std::vector<peer::Star>& copy) { peer::sortStars(copy); });
  count(state, stars.size());
}

void addCount(Index stars, const std::string& operation, bool sorted) {
  const std::string input = starsName(stars);
  add(operation, input, "QQ", [=](State& state) { sort<QQ>(state, stars, sorted); });
  add(operation, input, "long_double", [=](State& state) { sort<dbl_t>(state, stars, sorted); });
  add(operation, input, "peer_mpq", [=](State& state) { sortPeer(state, stars, sorted); });
}

}  // namespace

void registerSortStars() {
  for (const Index stars : starCounts) addCount(stars, "sort_stars", false);
  for (const Index stars : starCounts) addCount(stars, "sort_sorted_stars", true);
}

}  // namespace starsift::bench
