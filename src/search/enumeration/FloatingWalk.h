// A complete enumeration in floating point, with proven bounds of its errors.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "search/enumeration/EnumerationWalk.h"
#include "search/enumeration/TreeNodes.h"

namespace starsift {

/// Depth-first over TreeNodes. Real is double or long double.
template <class Real>
class FloatingWalk : public EnumerationWalk {
 public:
  /// The geometry is that of the coset, whose box isn't empty.
  FloatingWalk(BoxCoset coset, TreeGeometry<Real> geometry);

  EnumerationEnd run(EnumerationVisitor& visitor, const EnumerationSettings& settings) override;
  std::uint64_t nodes() const override { return leaves_ + nodes_.nodes(); }
  TreeEstimate probe(const ProbeSettings& settings) const override;

 private:
  enum class Outcome { goOn, done, stop, limit };

  void onNarrowed(std::size_t j) override;
  /// Walks until the tree is done.
  Outcome walk(EnumerationVisitor& visitor);
  /// Reports the point with coefficient c at level `k` below the current node if it lies in the
  /// box; with k = d the start.
  Outcome report(EnumerationVisitor& visitor, std::size_t k, Real c);
  /// Reports the solutions of the node above level 0.
  Outcome reportLeaves(EnumerationVisitor& visitor);
  /// Progress is due, or the limit is reached.
  bool isDue() const { return nodes() >= due_ || nodes_.programs() >= dueProgram_; }
  /// Reports progress and tests the limit.
  Outcome pace(EnumerationVisitor& visitor);
  /// Continues after a change of bounds; false if the tree is done.
  bool returnToOpenLevel();
  /// Estimated share of the tree that is done.
  double share() const;

  TreeGeometry<Real> geometry_;
  TreeNodes<Real> nodes_;
  /// l_j + r_j of the box at construction, twice its middle.
  std::vector<ZZ> doubledMiddle_;
  std::vector<ZZ> point_;
  std::uint64_t leaves_ = 0;
  /// nodes() at which the run started, at which progress is due, and at which the run must end.
  std::uint64_t before_ = 0;
  std::uint64_t due_ = 0;
  std::uint64_t end_ = 0;
  /// nodes_.programs() at which progress is due.
  std::size_t dueProgram_ = 0;
  std::size_t level_ = 0;
  bool isNarrowed_ = false;
};

}  // namespace starsift
