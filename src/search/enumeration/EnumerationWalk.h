// A walk over an enumeration tree in some arithmetic.
#pragma once

#include <algorithm>
#include <utility>

#include "search/enumeration/Enumeration.h"

namespace starsift {

/// What Enumeration leaves to a walk. The box as narrowed is kept here, exact.
class EnumerationWalk {
 public:
  explicit EnumerationWalk(BoxCoset coset) : coset_(std::move(coset)) {}
  virtual ~EnumerationWalk() = default;
  EnumerationWalk(const EnumerationWalk&) = delete;
  EnumerationWalk& operator=(const EnumerationWalk&) = delete;

  virtual EnumerationEnd run(EnumerationVisitor& visitor, const EnumerationSettings& settings) = 0;
  /// As Enumeration::narrow().
  void narrow(std::size_t j, const ZZ& lower, const ZZ& upper) {
    if (lower <= coset_.lower[j] && upper >= coset_.upper[j]) return;
    coset_.lower[j] = std::max(coset_.lower[j], lower);
    coset_.upper[j] = std::min(coset_.upper[j], upper);
    onNarrowed(j);
  }
  virtual std::uint64_t nodes() const = 0;
  /// The sampled part of Enumeration::estimate().
  virtual TreeEstimate probe(const ProbeSettings& settings) const = 0;

 protected:
  /// The bounds of coordinate j have changed.
  virtual void onNarrowed(std::size_t j) = 0;
  const BoxCoset& coset() const { return coset_; }

 private:
  BoxCoset coset_;
};

}  // namespace starsift
