// Complete enumeration of the points of a coset that lie in its box.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "search/enumeration/BoxCoset.h"
#include "search/enumeration/CosetDirections.h"
#include "search/enumeration/Subtree.h"
#include "search/enumeration/TreeEstimate.h"

namespace starsift {

class EnumerationWalk;

enum class Step { goOn, stop };

/// Is called by an enumeration, in the thread that has called run().
class EnumerationVisitor {
 public:
  virtual ~EnumerationVisitor() = default;

  /// Called once for each point of the coset inside the box; `point` is exact.
  virtual Step found(const std::vector<ZZ>& point) = 0;
  /// Called every EnumerationSettings::nodesPerReport nodes with the share of the tree that was
  /// walked, in [0, 1], and the nodes of this run.
  virtual Step progress(double share, std::uint64_t nodes) = 0;
  /// Called once for each subtree of a list that was walked to its end, after its points.
  virtual void finished(const FinishedPiece& /*piece*/) {}

 protected:
  EnumerationVisitor() = default;
  EnumerationVisitor(const EnumerationVisitor&) = default;
  EnumerationVisitor& operator=(const EnumerationVisitor&) = default;
};

struct EnumerationSettings {
  /// F of a pruned try, 0 < F < 1: the squared radius at a node is multiplied by
  /// min(1, s + 2 F s (1 - s) + F / 10), s the share of the levels done. None walks the complete
  /// tree.
  std::optional<double> pruning;
  /// Nodes after which the run ends; with several threads each may make nodesPerReport more.
  std::optional<std::uint64_t> nodeLimit;
  /// Threads that walk the tree, at least 1; the calling one is among them. The others begin with
  /// the first report of progress: a small tree is walked by one.
  unsigned threads = 1;
  /// Nodes between two reports of progress, fewer if they take long; at least 1. This is also how
  /// often threads exchange subtrees and narrower bounds.
  std::uint64_t nodesPerReport = 8192;
};

enum class EnumerationEnd {
  /// Every point of the coset in the box, as narrowed during the run, was found.
  complete,
  /// The pruned tree was walked to its end; nothing is proved.
  pruned,
  /// The visitor ended the run.
  stopped,
  /// The node limit ended the run.
  limit
};

/// A walk over the tree of the coefficients of a coset, the last one first. A run that ends as
/// complete proves that there are no other points: no rounding error can cut one off.
class Enumeration {
 public:
  /// The basis should be reduced by reduceCoset(). O(d^2 n) operations on long numbers.
  explicit Enumeration(const BoxCoset& coset);
  /// Over a coset with its data, whose box isn't empty. `mayGoOn` is called before every row;
  /// false ends the preparation, and nothing is returned then.
  static std::optional<Enumeration> prepared(const BoxCoset& coset, const CosetDirections& data,
                                             const std::function<bool()>& mayGoOn);
  ~Enumeration();
  Enumeration(Enumeration&&) noexcept;
  Enumeration& operator=(Enumeration&&) noexcept;

  /// Walks the tree from its root. The box is as narrowed before. With several threads an
  /// exception of any of them ends the run and is thrown here. The points are the same whatever
  /// the number of threads, in another order.
  EnumerationEnd run(EnumerationVisitor& visitor, const EnumerationSettings& settings);
  /// The same for a part of the tree, subtrees that cut() has made of it: complete is what is below
  /// them. Progress is reported after each subtree too.
  EnumerationEnd run(EnumerationVisitor& visitor, const EnumerationSettings& settings,
                     std::vector<Subtree> subtrees);
  /// Cuts the tree into subtrees that share no node and hold all points: about `wanted` of them,
  /// fewer if the tree has so few nodes or no node whose children can be listed. They don't depend
  /// on what was walked before. Empty if mayGoOn(), called before each step, ended it.
  std::optional<std::vector<Subtree>> cut(std::size_t wanted,
                                          const std::function<bool()>& mayGoOn) const;
  /// Estimates the nodes of a complete run in the box as it is; O(probes d n w), w the number of
  /// children of a node, and linear programs as in a run. No solution is reported.
  TreeEstimate estimate(const ProbeSettings& probes) const;
  /// Intersects the bounds of a coordinate with [lower, upper]; 0 <= coordinate < n. May be called
  /// from found() and progress(), and before a run.
  void narrow(std::size_t coordinate, const ZZ& lower, const ZZ& upper);
  /// Nodes of all runs: a node is a choice of the coefficients of the last k >= 1 rows that no test
  /// has cut.
  std::uint64_t nodes() const;

 private:
  Enumeration(std::unique_ptr<EnumerationWalk> walk, double gaussianNodes);

  std::unique_ptr<EnumerationWalk> walk_;
  /// Of the box at construction.
  double gaussianNodes_ = 0;
};

}  // namespace starsift
