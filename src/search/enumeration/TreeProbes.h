// Random paths through an enumeration tree, which estimate its size.
#pragma once

#include <cstdint>
#include <random>
#include <vector>

#include "search/enumeration/TreeEstimate.h"
#include "search/enumeration/TreeNodes.h"

namespace starsift {

/// A path chooses children with probabilities close to their shares of the subtree, so that the
/// nodes beside it, over their probabilities, sum to the nodes of the tree on average.
///
/// D. E. Knuth, Estimating the efficiency of backtrack programs, Math. Comp. 29 (1975).
template <class Real>
class TreeProbes {
 public:
  /// `nodes` are at the root, and somewhere afterwards.
  TreeProbes(TreeNodes<Real>& nodes, std::uint64_t seed)
      : nodes_(nodes), top_(nodes.geometry().dimension), random_(seed) {}

  /// The sampled part of an estimate.
  TreeEstimate run(const ProbeSettings& settings);

 private:
  /// The nodes of a tree in which each node of a level has the children of the one on a random
  /// path.
  double probe();
  /// Sets children_ and weights_ of the node at level k + 1 and returns how many children each one
  /// stands for: 1, or more if there are thousands. Of these some at even distances are taken,
  /// whether they are cut or not.
  double collectChildren(std::size_t k);
  /// An index of weights_ with a probability proportional to its weight.
  std::size_t draw();

  TreeNodes<Real>& nodes_;
  std::size_t top_;
  std::mt19937_64 random_;
  /// Children of the current node, and their weights.
  std::vector<Real> children_;
  std::vector<double> weights_;
};

extern template class TreeProbes<double>;
extern template class TreeProbes<long double>;

}  // namespace starsift
