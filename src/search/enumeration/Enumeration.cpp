#include "search/enumeration/Enumeration.h"

#include <utility>

#include "search/enumeration/ExactWalk.h"
#include "search/enumeration/FloatingWalk.h"

namespace starsift {

namespace {

template <class Real>
std::unique_ptr<EnumerationWalk> floatingWalk(const BoxCoset& coset, const CosetDirections& data) {
  std::optional<TreeGeometry<Real>> geometry = treeGeometry<Real>(coset, data);
  if (!geometry) return nullptr;
  return std::make_unique<FloatingWalk<Real>>(coset, *std::move(geometry));
}

/// The fastest walk that proves what it says.
std::unique_ptr<EnumerationWalk> walkOver(const BoxCoset& coset, const CosetDirections& data) {
  if (auto walk = floatingWalk<double>(coset, data)) return walk;
  if (auto walk = floatingWalk<long double>(coset, data)) return walk;
  return std::make_unique<ExactWalk>(coset);
}

}  // namespace

Enumeration::Enumeration(const BoxCoset& coset, const CosetDirections& data)
    : walk_(walkOver(coset, data)), gaussianNodes_(gaussianNodes(coset, data)) {}

Enumeration::Enumeration(const BoxCoset& coset) {
  if (isEmptyBox(coset))
    walk_ = std::make_unique<ExactWalk>(coset);
  else
    *this = Enumeration(coset, cosetDirections(coset));
}

Enumeration::~Enumeration() = default;
Enumeration::Enumeration(Enumeration&&) noexcept = default;
Enumeration& Enumeration::operator=(Enumeration&&) noexcept = default;

EnumerationEnd Enumeration::run(EnumerationVisitor& visitor, const EnumerationSettings& settings) {
  return walk_->run(visitor, settings);
}

TreeEstimate Enumeration::estimate(const ProbeSettings& probes) const {
  TreeEstimate estimate = walk_->probe(probes);
  estimate.gaussianNodes = gaussianNodes_;
  return estimate;
}

void Enumeration::narrow(std::size_t coordinate, const ZZ& lower, const ZZ& upper) {
  walk_->narrow(coordinate, lower, upper);
}

std::uint64_t Enumeration::nodes() const {
  return walk_->nodes();
}

}  // namespace starsift
