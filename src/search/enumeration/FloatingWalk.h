// A complete enumeration in floating point, with proven bounds of its errors.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
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

  std::unique_ptr<EnumerationWalk> twin() const override;
  EnumerationEnd runSubtree(EnumerationVisitor& visitor, const EnumerationSettings& settings,
                            const Subtree& subtree) override;
  std::optional<Subtree> splitOff() override;
  std::vector<QQ> choicesBelow(const std::vector<QQ>& path, std::size_t most) override;
  std::uint64_t ownNodes() const override { return leaves_ + nodes_.nodes(); }
  TreeEstimate probe(const ProbeSettings& settings) const override;

 private:
  enum class Outcome { goOn, done, stop, limit };

  /// As twin().
  FloatingWalk(const FloatingWalk& other);

  void onNarrowed(std::size_t j) override;
  /// Goes to the first node of a subtree; false if it is cut.
  bool start(const Subtree& subtree);
  /// Walks until the subtree is done.
  Outcome walk(EnumerationVisitor& visitor, const Subtree& subtree);
  /// Reports the point with coefficient c at level `k` below the current node if it lies in the
  /// box; with k = d the start.
  Outcome report(EnumerationVisitor& visitor, std::size_t k, Real c);
  /// Reports the solutions of the node above level 0.
  Outcome reportLeaves(EnumerationVisitor& visitor);
  /// Progress is due, or the limit is reached.
  bool isDue() const { return ownNodes() >= due_ || nodes_.programs() >= dueProgram_; }
  /// Sets when progress is due next.
  void setDue();
  /// Reports progress and tests the limit.
  Outcome pace(EnumerationVisitor& visitor);
  /// Continues after a change of bounds; false if the tree is done.
  bool returnToOpenLevel();
  /// The choices of the levels above the current one, from the root down.
  std::vector<LevelChoices> choices() const;

  /// Shared by twins, which don't change it.
  std::shared_ptr<const TreeGeometry<Real>> geometry_;
  TreeNodes<Real> nodes_;
  /// l_j + r_j of the box at construction, twice its middle.
  std::vector<ZZ> doubledMiddle_;
  std::vector<ZZ> point_;
  std::uint64_t leaves_ = 0;
  /// nodes() at which the run started, at which progress is due, and at which the run must end.
  std::uint64_t before_ = 0;
  std::uint64_t due_ = 0;
  std::uint64_t end_ = 0;
  /// Of the current run.
  std::uint64_t nodesPerReport_ = 1;
  /// nodes_.programs() at which progress is due.
  std::size_t dueProgram_ = 0;
  std::size_t level_ = 0;
  bool isNarrowed_ = false;
};

}  // namespace starsift
