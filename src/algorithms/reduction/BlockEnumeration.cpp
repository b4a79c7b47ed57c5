#include "algorithms/reduction/BlockEnumeration.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace starsift {

namespace {

constexpr std::uint64_t nodesPerCall = 1000;

/// Depth-first walk over the coefficients, the last one first. Of each pair of a vector and its
/// negative one is met.
class BlockWalk {
 public:
  BlockWalk(const ProjectedBlock& block, const BlockSearch& search)
      : d_(block.dimension()),
        search_(search),
        lengths_(block.lengths),
        columns_(d_ * d_),
        sums_(d_ * (d_ + 1)),
        stale_(d_ + 1),
        parts_(d_ + 1),
        centres_(d_),
        coefficients_(d_),
        steps_(d_),
        share_(pruningBounds(search.pruning, d_)) {
    for (std::size_t i = 0; i < d_; ++i)
      for (std::size_t k = 0; k < i; ++k) columns_[k * d_ + i] = block.mu[i][k];
    for (std::size_t k = 0; k <= d_; ++k) stale_[k] = k;
    bounds_.resize(d_);
    setBound(search.bound);
  }

  BlockResult run() {
    // All coefficients 0 is where the walk begins, with the first one 1.
    coefficients_[0] = 1;
    std::size_t k = 0;
    while (true) {
      ++result_.nodes;
      if (result_.nodes % nodesPerCall == 0 && search_.mayGoOn && !search_.mayGoOn()) break;
      const double offset = coefficients_[k] - centres_[k];
      const double length = parts_[k + 1] + offset * offset * lengths_[k];
      if (length < bounds_[k]) {
        if (k > 0) {
          parts_[k] = length;
          enter(--k);
          continue;
        }
        keep(length);
      } else if (++k == d_) {
        break;
      } else {
        stale_[k - 1] = k;
      }
      advance(k);
    }
    return std::move(result_);
  }

 private:
  /// Bounds of the nodes for vectors shorter than `bound`.
  void setBound(double bound) {
    for (std::size_t k = 0; k < d_; ++k) bounds_[k] = share_[d_ - 1 - k] * bound;
  }

  /// Begins level k at the integer nearest to its centre. Of the sums over the coefficients above,
  /// those are made anew whose coefficients have changed.
  void enter(std::size_t k) {
    std::size_t& highest = stale_[k];
    if (k > 0) stale_[k - 1] = std::max(stale_[k - 1], highest);
    double* const sums = &sums_[k * (d_ + 1)];
    const double* const column = &columns_[k * d_];
    for (std::size_t i = highest; i > k; --i) sums[i] = sums[i + 1] + coefficients_[i] * column[i];
    highest = k;
    centres_[k] = -sums[k + 1];
    coefficients_[k] = std::round(centres_[k]);
    steps_[k] = coefficients_[k] < centres_[k] ? 1 : -1;
  }

  /// The next coefficient of level k: further and further from the centre, on both sides in turn.
  /// Above the last coefficient that isn't 0 one side suffices.
  void advance(std::size_t k) {
    if (k >= last_) {
      last_ = k;
      ++coefficients_[k];
      return;
    }
    coefficients_[k] += steps_[k];
    steps_[k] = steps_[k] > 0 ? -steps_[k] - 1 : 1 - steps_[k];
  }

  void keep(double length) {
    result_.shortest = BlockVector{coefficients_, length};
    setBound(length);
  }

  std::size_t d_;
  const BlockSearch& search_;
  std::vector<double> lengths_;
  /// Entry k d + i is mu[i][k].
  std::vector<double> columns_;
  /// Entry k (d + 1) + i is the sum over j >= i of coefficient j times mu[j][k].
  std::vector<double> sums_;
  /// The sums of level k are valid above this index.
  std::vector<std::size_t> stale_;
  /// Squared length of what the levels from k on have chosen.
  std::vector<double> parts_;
  std::vector<double> centres_;
  std::vector<double> coefficients_;
  /// What is added to a coefficient next.
  std::vector<double> steps_;
  /// The last coefficient that was ever other than 0.
  std::size_t last_ = 0;
  std::vector<double> share_;
  std::vector<double> bounds_;
  BlockResult result_;
};

/// Rows by which the choices made are ahead of a bound in proportion to them.
double lead(BlockPruning pruning) {
  switch (pruning) {
    case BlockPruning::complete:
      return std::numeric_limits<double>::infinity();
    case BlockPruning::linear:
      return 6;
    case BlockPruning::strong:
      return 4;
    case BlockPruning::extreme:
      return 2;
  }
  return 0;
}

}  // namespace

std::vector<double> pruningBounds(BlockPruning pruning, std::size_t d) {
  std::vector<double> bounds(d);
  for (std::size_t k = 0; k < d; ++k)
    bounds[k] =
        std::min(1.0, (static_cast<double>(k + 1) + lead(pruning)) / static_cast<double>(d));
  return bounds;
}

BlockResult enumerateBlock(const ProjectedBlock& block, const BlockSearch& search) {
  return BlockWalk(block, search).run();
}

}  // namespace starsift
