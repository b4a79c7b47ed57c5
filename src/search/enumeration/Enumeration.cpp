#include "search/enumeration/Enumeration.h"

#include <utility>

#include "search/enumeration/ExactWalk.h"
#include "search/enumeration/FloatingWalk.h"
#include "search/enumeration/TreeCut.h"

namespace starsift {

namespace {

using MayGoOn = std::function<bool()>;

template <class Real>
std::unique_ptr<EnumerationWalk> floatingWalk(const BoxCoset& coset, const CosetDirections& data,
                                              const MayGoOn& mayGoOn) {
  std::optional<TreeGeometry<Real>> geometry = treeGeometry<Real>(coset, data, mayGoOn);
  if (!geometry) return nullptr;
  return std::make_unique<FloatingWalk<Real>>(coset, *std::move(geometry));
}

/// The fastest walk that proves what it says; null if its preparation was ended.
std::unique_ptr<EnumerationWalk> walkOver(const BoxCoset& coset, const CosetDirections& data,
                                          const MayGoOn& mayGoOn) {
  if (auto walk = floatingWalk<double>(coset, data, mayGoOn)) return walk;
  if (!mayGoOn()) return nullptr;
  if (auto walk = floatingWalk<long double>(coset, data, mayGoOn)) return walk;
  if (!mayGoOn()) return nullptr;
  auto walk = std::make_unique<ExactWalk>(coset, mayGoOn);
  return walk->isPrepared() ? std::move(walk) : nullptr;
}

}  // namespace

Enumeration::Enumeration(std::unique_ptr<EnumerationWalk> walk, double gaussianNodes)
    : walk_(std::move(walk)), gaussianNodes_(gaussianNodes) {}

std::optional<Enumeration> Enumeration::prepared(const BoxCoset& coset, const CosetDirections& data,
                                                 const MayGoOn& mayGoOn) {
  std::unique_ptr<EnumerationWalk> walk = walkOver(coset, data, mayGoOn);
  if (!walk) return std::nullopt;
  return Enumeration(std::move(walk), gaussianNodes(coset, data));
}

Enumeration::Enumeration(const BoxCoset& coset) {
  if (isEmptyBox(coset))
    walk_ = std::make_unique<ExactWalk>(coset);
  else
    *this = *prepared(coset, cosetDirections(coset), [] { return true; });
}

Enumeration::~Enumeration() = default;
Enumeration::Enumeration(Enumeration&&) noexcept = default;
Enumeration& Enumeration::operator=(Enumeration&&) noexcept = default;

EnumerationEnd Enumeration::run(EnumerationVisitor& visitor, const EnumerationSettings& settings) {
  return walk_->run(visitor, settings);
}

EnumerationEnd Enumeration::run(EnumerationVisitor& visitor, const EnumerationSettings& settings,
                                std::vector<Subtree> subtrees) {
  return walk_->run(visitor, settings, std::move(subtrees));
}

std::optional<std::vector<Subtree>> Enumeration::cut(std::size_t wanted,
                                                     const std::function<bool()>& mayGoOn) const {
  const std::unique_ptr<EnumerationWalk> walk = walk_->twin();
  return cutTree(*walk, wanted, mayGoOn);
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
