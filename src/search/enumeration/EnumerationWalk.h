// A walk over an enumeration tree in some arithmetic.
#pragma once

#include <algorithm>
#include <utility>

#include "search/enumeration/Enumeration.h"
#include "search/enumeration/Subtree.h"

namespace starsift {

/// What Enumeration leaves to a walk. The box as narrowed is kept here, exact.
class EnumerationWalk {
 public:
  explicit EnumerationWalk(BoxCoset coset) : coset_(std::move(coset)) {}
  virtual ~EnumerationWalk() = default;
  EnumerationWalk& operator=(const EnumerationWalk&) = delete;

  /// A walk over the same tree in the box as narrowed, for another thread. Nodes count from 0.
  virtual std::unique_ptr<EnumerationWalk> twin() const = 0;
  /// As Enumeration::run().
  EnumerationEnd run(EnumerationVisitor& visitor, const EnumerationSettings& settings);
  /// Walks a subtree in this thread; the number of threads is ignored.
  virtual EnumerationEnd runSubtree(EnumerationVisitor& visitor,
                                    const EnumerationSettings& settings,
                                    const Subtree& subtree) = 0;
  /// As Enumeration::run().
  EnumerationEnd run(EnumerationVisitor& visitor, const EnumerationSettings& settings,
                     std::vector<Subtree> subtrees);
  /// The next coefficients that no test cuts below a path, nearest to the centre first; more than
  /// `most` of them if there are more. The path was made of such choices and leaves at least two
  /// rows.
  virtual std::vector<QQ> choicesBelow(const std::vector<QQ>& path, std::size_t most) = 0;
  /// Hands over the part of what is left of this run that seems the largest: this run won't walk
  /// it. Its share is that of the subtree of this run. None if nothing but the subtree of the
  /// current node is left. To be called from progress().
  virtual std::optional<Subtree> splitOff() = 0;
  /// As Enumeration::narrow().
  void narrow(std::size_t j, const ZZ& lower, const ZZ& upper) {
    if (lower <= coset_.lower[j] && upper >= coset_.upper[j]) return;
    coset_.lower[j] = std::max(coset_.lower[j], lower);
    coset_.upper[j] = std::min(coset_.upper[j], upper);
    ++narrowings_;
    onNarrowed(j);
  }
  /// Grows whenever the box becomes smaller.
  std::uint64_t narrowings() const { return narrowings_; }
  /// The coset in the box as narrowed.
  const BoxCoset& coset() const { return coset_; }
  /// Nodes of all runs, in all threads.
  std::uint64_t nodes() const { return ownNodes() + otherNodes_; }
  /// The same without those of other threads.
  virtual std::uint64_t ownNodes() const = 0;
  /// The sampled part of Enumeration::estimate().
  virtual TreeEstimate probe(const ProbeSettings& settings) const = 0;

 protected:
  /// As twin().
  EnumerationWalk(const EnumerationWalk& other) : coset_(other.coset_) {}
  /// The bounds of coordinate j have changed.
  virtual void onNarrowed(std::size_t j) = 0;

 private:
  BoxCoset coset_;
  std::uint64_t narrowings_ = 0;
  std::uint64_t otherNodes_ = 0;
};

}  // namespace starsift
