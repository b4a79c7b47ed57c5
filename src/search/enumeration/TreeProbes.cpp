#include "search/enumeration/TreeProbes.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace starsift {

namespace {

/// Every child can be drawn, however small its subtree seems.
constexpr double leastWeight = 1e-3;

/// Children of a node that are looked at.
constexpr int mostProbedChildren = 1000;

/// Coefficients relative to the current one.
struct Interval {
  double least;
  double most;
};

/// The coefficients with which a node stays inside its radius.
Interval insideRadius(const LevelChoices& choices) {
  const double half = 1 / std::sqrt(choices.curvature);
  return {std::max(choices.least, std::ceil(-choices.position - half)),
          std::min(choices.most, std::floor(half - choices.position))};
}

}  // namespace

template <class Real>
TreeEstimate TreeProbes<Real>::run(const ProbeSettings& settings) {
  TreeEstimate estimate;
  if (settings.count == 0 || top_ == 0 || nodes_.isRootCut()) return estimate;
  double sum = 0;
  double largest = 0;
  std::uint32_t made = 0;
  for (; made < settings.count && (!settings.mayGoOn || settings.mayGoOn()); ++made) {
    const double nodes = probe();
    sum += nodes;
    largest = std::max(largest, nodes);
  }
  estimate.sampledNodes = made > 0 ? sum / made : 0;
  estimate.largestShare = sum > 0 ? largest / sum : 1;
  return estimate;
}

template <class Real>
double TreeProbes<Real>::probe() {
  double sum = 0;
  double width = 1;
  for (std::size_t k = top_; k-- > 0;) {
    nodes_.enter(k);
    if (k == 0) {
      const Real leaves = nodes_.most(0) - nodes_.least(0) + 1;
      return sum + width * static_cast<double>(std::max(Real(0), leaves));
    }
    width *= collectChildren(k);
    sum += width * static_cast<double>(children_.size());
    if (children_.empty()) return sum;
    const std::size_t choice = draw();
    width *= std::accumulate(weights_.begin(), weights_.end(), 0.0) / weights_[choice];
    nodes_.choose(k, children_[choice]);
    nodes_.descend(k);
  }
  return sum;
}

template <class Real>
double TreeProbes<Real>::collectChildren(std::size_t k) {
  children_.clear();
  weights_.clear();
  if (nodes_.least(k) > nodes_.most(k)) return 1;
  const auto add = [this, k] {
    children_.push_back(nodes_.chosen(k));
    weights_.push_back(std::max(subtreeWeight(nodes_.choicesAt(k), 0), leastWeight));
  };
  nodes_.choose(k, nodes_.least(k));
  const Interval inside = insideRadius(nodes_.choicesAt(k));
  const double stride = (inside.most - inside.least + 1) / mostProbedChildren;
  if (stride <= 1) {
    while (nodes_.advance(k)) add();
    return 1;
  }
  const Real first = nodes_.least(k);
  for (int i = 0; i < mostProbedChildren; ++i) {
    nodes_.choose(k, first + static_cast<Real>(std::floor(inside.least + (i + 0.5) * stride)));
    add();
  }
  return stride;
}

template <class Real>
std::size_t TreeProbes<Real>::draw() {
  constexpr double unit = 0x1p-53;
  const double random = static_cast<double>(random_() >> 11U) * unit;
  double rest = random * std::accumulate(weights_.begin(), weights_.end(), 0.0);
  std::size_t i = 0;
  while (i + 1 < weights_.size() && rest >= weights_[i]) rest -= weights_[i++];
  return i;
}

template class TreeProbes<double>;
template class TreeProbes<long double>;

}  // namespace starsift
