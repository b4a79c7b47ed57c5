#include "search/enumeration/TreeEstimate.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <numeric>
#include <optional>
#include <random>
#include <vector>

#include "search/enumeration/TreeNodes.h"

namespace starsift {

namespace {

/// Sum over the levels of the volume of a ball, in the space of the levels chosen, over the volume
/// of a cell of the projected lattice. The squared radius is that of the box, less the part of the
/// point that no row changes.
double gaussianNodes(const BoxCoset& coset, const CosetDirections& data) {
  double radius = 0;
  BigFloat number(64);
  for (std::size_t j = 0; j < coset.point.size(); ++j) {
    number = coset.upper[j] - coset.lower[j];
    const double side = number.toDouble() * data.scale[j] / 2;
    const double rest = data.rest[j].toDouble() / data.scale[j];
    radius += side * side - rest * rest;
  }
  if (!(radius > 0)) return 0;
  constexpr double log2Pi = 1.6514961294723187;
  double sum = 0;
  double cells = 0;
  for (std::size_t m = 1; m <= data.squaredLengths.size(); ++m) {
    const auto dimension = static_cast<double>(m);
    cells += data.squaredLengths[data.squaredLengths.size() - m].log2() / 2;
    const double ball = dimension / 2 * (log2Pi + std::log2(radius)) -
                        std::lgamma(dimension / 2 + 1) / std::log(2.0);
    sum += std::exp2(ball - cells);
  }
  return sum;
}

/// Every child can be drawn, however small its subtree seems.
constexpr double leastWeight = 1e-3;

/// Random paths from the root.
template <class Real>
class Probes {
 public:
  Probes(const TreeGeometry<Real>& geometry, std::uint64_t seed)
      : nodes_(geometry), top_(geometry.dimension), random_(seed) {}

  void run(std::uint32_t count, TreeEstimate& estimate) {
    if (count == 0 || top_ == 0 || nodes_.isRootCut()) return;
    const auto begin = std::chrono::steady_clock::now();
    double sum = 0;
    double largest = 0;
    for (std::uint32_t i = 0; i < count; ++i) {
      const double nodes = probe();
      sum += nodes;
      largest = std::max(largest, nodes);
    }
    const std::chrono::duration<double> time = std::chrono::steady_clock::now() - begin;
    estimate.sampledNodes = sum / count;
    estimate.largestShare = sum > 0 ? largest / sum : 1;
    if (time.count() > 0)
      estimate.nodesPerSecond = static_cast<double>(nodes_.nodes()) / time.count();
  }

 private:
  /// The nodes of a tree in which each node of a level has the children of the one on a random
  /// path, children chosen with probabilities close to their shares of the subtree.
  double probe() {
    double sum = 0;
    double width = 1;
    for (std::size_t k = top_; k-- > 0;) {
      nodes_.enter(k);
      if (k == 0) {
        const Real leaves = nodes_.most(0) - nodes_.least(0) + 1;
        return sum + width * static_cast<double>(std::max(Real(0), leaves));
      }
      const std::uint64_t before = nodes_.nodes();
      children_.clear();
      weights_.clear();
      while (nodes_.advance(k)) {
        children_.push_back(nodes_.chosen(k));
        weights_.push_back(std::max(nodes_.weight(k, children_.back()), leastWeight));
      }
      sum += width * static_cast<double>(nodes_.nodes() - before);
      if (children_.empty()) return sum;
      const std::size_t choice = draw();
      width *= std::accumulate(weights_.begin(), weights_.end(), 0.0) / weights_[choice];
      nodes_.choose(k, children_[choice]);
      nodes_.descend(k);
    }
    return sum;
  }

  /// An index with a probability proportional to its weight.
  std::size_t draw() {
    constexpr double unit = 0x1p-53;
    const double random = static_cast<double>(random_() >> 11U) * unit;
    double rest = random * std::accumulate(weights_.begin(), weights_.end(), 0.0);
    std::size_t i = 0;
    while (i + 1 < weights_.size() && rest >= weights_[i]) rest -= weights_[i++];
    return i;
  }

  TreeNodes<Real> nodes_;
  std::size_t top_;
  std::mt19937_64 random_;
  /// Children of the current node that aren't cut, and their weights.
  std::vector<Real> children_;
  std::vector<double> weights_;
};

template <class Real>
bool runProbes(const BoxCoset& coset, const CosetDirections& data, std::uint32_t probes,
               std::uint64_t seed, TreeEstimate& estimate) {
  const std::optional<TreeGeometry<Real>> geometry = treeGeometry<Real>(coset, data);
  if (!geometry) return false;
  Probes<Real>(*geometry, seed).run(probes, estimate);
  return true;
}

}  // namespace

TreeEstimate estimateTree(const BoxCoset& coset, std::uint32_t probes, std::uint64_t seed) {
  TreeEstimate estimate{0, 0, 0, 0};
  if (isEmptyBox(coset)) return estimate;
  const CosetDirections data = cosetDirections(coset);
  estimate.gaussianNodes = gaussianNodes(coset, data);
  if (!runProbes<double>(coset, data, probes, seed, estimate))
    runProbes<long double>(coset, data, probes, seed, estimate);
  return estimate;
}

}  // namespace starsift
