#include "lattice/reduce/BlockReduction.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>
#include <vector>

#include "algorithms/reduction/LogGamma.h"
#include "lattice/reduce/InsertCombination.h"
#include "numbers/QQ.h"

namespace starsift {

namespace {

/// Tours that may follow each other without a better slope.
constexpr int maxFruitlessTours = 3;

/// A slope is better if it is less steep by this part of itself.
constexpr double leastGain = 0.002;

/// Lovász tests, per row, after which Gram-Schmidt data are computed anew: those of one row are
/// made from kept data of others, and the errors grow from row to row.
constexpr Index maxTestsPerRow = 20;

/// From this dimension on the shortest vector of a block is expected to be close to the Gaussian
/// heuristic, and longer ones than this multiple of it, squared, aren't looked for.
constexpr std::size_t gaussianDimension = 30;
constexpr double gaussianFactor = 1.1;

/// A ratio of two squared lengths, cut off where a row can't be part of a short vector anyway.
constexpr double greatestRatio = 1e200;

/// Squared radius of a ball with the volume of a cell of the block.
double gaussianBound(const ProjectedBlock& block) {
  const auto d = static_cast<double>(block.dimension());
  double logVolume = 0;
  for (const double length : block.lengths) logVolume += std::log(length) / 2;
  return std::exp(2 * (logVolume - logBallVolume(d)) / d);
}

}  // namespace

template <class T, class R>
BlockEnd BlockReduction<T, R>::run(Index count, Index size) {
  double best = -std::numeric_limits<double>::infinity();
  for (int fruitless = 0; fruitless < maxFruitlessTours;) {
    if (const std::optional<BlockEnd> end = tour(count, size)) return *end;
    if (!hasChanged_) return BlockEnd::reduced;
    const double now = slope(count);
    if (now > best + leastGain * std::fabs(now)) {
      best = now;
      fruitless = 0;
    } else {
      ++fruitless;
    }
  }
  return BlockEnd::reduced;
}

template <class T, class R>
std::optional<BlockEnd> BlockReduction<T, R>::tour(Index count, Index size) {
  hasChanged_ = false;
  for (Index first = 1; first < count; ++first) {
    const Index last = std::min(first + size - 1, count);
    if (!reduceRows(last)) return BlockEnd::stopped;
    improve(first, last);
    if (isStopped_) return BlockEnd::stopped;
    if (isTimeOver()) break;
  }
  if (!reduceRows(count)) return BlockEnd::stopped;
  if (isTimeOver()) return BlockEnd::time;
  return std::nullopt;
}

template <class T, class R>
bool BlockReduction<T, R>::reduceRows(Index to) {
  PassStatus status{1, to, to, std::numeric_limits<Index>::max()};
  if (testsSinceRenewal_ > maxTestsPerRow * basis_.n) {
    basis_.forgetFrom(1);
    basis_.forgetAllProducts();
    testsSinceRenewal_ = 0;
  }
  lll_.pass(status);
  testsSinceRenewal_ += status.counts.tests;
  return lll_.allTested(to);
}

template <class T, class R>
void BlockReduction<T, R>::improve(Index first, Index last) {
  const ProjectedBlock block = blockOf(first, last);
  const Clock::time_point start = Clock::now();
  BlockResult result = enumerateBlock(block, searchIn(block));
  spent_ += Clock::now() - start;
  nodes_ += result.nodes;
  if (isStopped_ || !result.shortest) return;
  const std::vector<double>& found = result.shortest->coefficients;
  insertCombination(basis_, first, std::vector<long double>(found.begin(), found.end()));
  if (settings_.deep) {
    lll_.sizeReduce(first, false);
    lll_.deepInsertStep(first);
  }
  hasChanged_ = true;
  ++insertions_;
}

template <class T, class R>
ProjectedBlock BlockReduction<T, R>::blockOf(Index first, Index last) const {
  const auto d = static_cast<std::size_t>(last - first + 1);
  ProjectedBlock block{std::vector<std::vector<double>>(d), std::vector<double>(d)};
  for (Index i = first; i <= last; ++i) {
    const auto row = static_cast<std::size_t>(i - first);
    for (Index k = first; k < i; ++k) block.mu[row].push_back(static_cast<double>(data_.mu[i][k]));
    const R ratio = data_.cLen[i] / data_.cLen[first];
    block.lengths[row] = static_cast<double>(std::min(ratio, static_cast<R>(greatestRatio)));
  }
  return block;
}

/// Lengths of the block are relative to its first one.
template <class T, class R>
BlockSearch BlockReduction<T, R>::searchIn(const ProjectedBlock& block) {
  BlockSearch search;
  search.bound = settings_.delta;
  search.pruning = settings_.pruning;
  if (block.dimension() >= gaussianDimension)
    search.bound = std::min(search.bound, gaussianFactor * gaussianBound(block));
  search.mayGoOn = [this, start = Clock::now()] { return mayEnumerate(start); };
  return search;
}

template <class T, class R>
bool BlockReduction<T, R>::mayEnumerate(Clock::time_point start) {
  isStopped_ = isStopped_ || !visitor_.mayStep({1, 0, 0, 0});
  if (isStopped_) return false;
  const BlockSettings::Seconds time = Clock::now() - start;
  return !(settings_.blockTime && time >= *settings_.blockTime) &&
         !(settings_.totalTime && spent_ + time >= *settings_.totalTime);
}

template <class T, class R>
bool BlockReduction<T, R>::isTimeOver() const {
  return settings_.totalTime && spent_ >= *settings_.totalTime;
}

template <class T, class R>
double BlockReduction<T, R>::slope(Index count) const {
  const double middle = static_cast<double>(count + 1) / 2;
  double sum = 0;
  double squares = 0;
  for (Index k = 1; k <= count; ++k) {
    const double x = static_cast<double>(k) - middle;
    sum += x * static_cast<double>(std::log(data_.cLen[k]));
    squares += x * x;
  }
  return sum / squares;
}

template class BlockReduction<long double, long double>;
template class BlockReduction<QQ, long double>;

}  // namespace starsift
