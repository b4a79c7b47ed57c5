#include "search/enumeration/FloatingWalk.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "numbers/Conversion.h"
#include "search/enumeration/DyadicRow.h"
#include "search/enumeration/TreeProbes.h"

namespace starsift {

namespace {

/// Nodes that count as much as a linear program between two reports of progress: one takes up to
/// a millisecond in a hundred dimensions.
constexpr std::uint64_t nodesPerProgram = 128;

/// A coefficient of a walk over the same geometry.
template <class Real>
Real real(const QQ& integer) {
  Real result = 0;
  exactlyAs(integer.numerator(), result);
  return result;
}

template <class Real>
std::vector<Real> reals(const std::vector<QQ>& integers) {
  std::vector<Real> result;
  result.reserve(integers.size());
  for (const QQ& integer : integers) result.push_back(real<Real>(integer));
  return result;
}

}  // namespace

template <class Real>
FloatingWalk<Real>::FloatingWalk(BoxCoset coset, TreeGeometry<Real> geometry)
    : EnumerationWalk(std::move(coset)),
      geometry_(std::make_shared<const TreeGeometry<Real>>(std::move(geometry))),
      nodes_(*geometry_),
      point_(geometry_->coordinates) {
  for (std::size_t j = 0; j < geometry_->coordinates; ++j)
    doubledMiddle_.push_back(this->coset().lower[j] + this->coset().upper[j]);
}

template <class Real>
FloatingWalk<Real>::FloatingWalk(const FloatingWalk& other)
    : EnumerationWalk(other),
      geometry_(other.geometry_),
      nodes_(*geometry_),
      doubledMiddle_(other.doubledMiddle_),
      point_(geometry_->coordinates) {
  nodes_.narrowTo(other.nodes_);
}

template <class Real>
std::unique_ptr<EnumerationWalk> FloatingWalk<Real>::twin() const {
  return std::unique_ptr<EnumerationWalk>(new FloatingWalk(*this));
}

template <class Real>
void FloatingWalk<Real>::onNarrowed(std::size_t j) {
  isNarrowed_ = true;
  const ZZ& l = coset().lower[j];
  const ZZ& r = coset().upper[j];
  Real lower = 1;
  Real upper = -1;
  // An empty interval may lie outside of the former box, and any other one says as much.
  if (l <= r) {
    exactlyAs(l + l - doubledMiddle_[j], lower);
    exactlyAs(r + r - doubledMiddle_[j], upper);
  }
  nodes_.setBounds(j, lower / 2, upper / 2);
}

template <class Real>
EnumerationEnd FloatingWalk<Real>::runSubtree(EnumerationVisitor& visitor,
                                              const EnumerationSettings& settings,
                                              const Subtree& subtree) {
  nodes_.setPruning(settings.pruning);
  before_ = ownNodes();
  const std::uint64_t limit =
      settings.nodeLimit.value_or(std::numeric_limits<std::uint64_t>::max());
  end_ = limit < std::numeric_limits<std::uint64_t>::max() - before_
             ? before_ + limit
             : std::numeric_limits<std::uint64_t>::max();
  nodesPerReport_ = settings.nodesPerReport;
  setDue();
  isNarrowed_ = false;
  Outcome outcome = Outcome::done;
  if (!nodes_.isRootCut())
    outcome = geometry_->dimension == 0 ? report(visitor, 0, 0) : walk(visitor, subtree);
  if (outcome == Outcome::stop) return EnumerationEnd::stopped;
  if (outcome == Outcome::limit) return EnumerationEnd::limit;
  return nodes_.hasPruned() ? EnumerationEnd::pruned : EnumerationEnd::complete;
}

template <class Real>
bool FloatingWalk<Real>::start(const Subtree& subtree) {
  level_ = geometry_->dimension - 1 - subtree.path.size();
  if (subtree.isWhole()) {
    nodes_.enter(level_);
    return true;
  }
  nodes_.startBelow(reals<Real>(subtree.path));
  if (!subtree.hasAllChoices()) {
    nodes_.enterBetween(level_, real<Real>(subtree.least), real<Real>(subtree.most));
    return returnToOpenLevel();
  }
  const std::size_t below = level_;
  if (!returnToOpenLevel() || level_ > below) return false;
  nodes_.enter(level_);
  return true;
}

template <class Real>
std::vector<QQ> FloatingWalk<Real>::choicesBelow(const std::vector<QQ>& path, std::size_t most) {
  std::vector<QQ> choices;
  nodes_.setPruning(std::nullopt);
  if (nodes_.isRootCut()) return choices;
  nodes_.startBelow(reals<Real>(path));
  const std::size_t k = geometry_->dimension - 1 - path.size();
  nodes_.enter(k);
  while (choices.size() <= most && nodes_.advance(k))
    choices.push_back(exactInteger(nodes_.chosen(k)));
  return choices;
}

template <class Real>
std::optional<Subtree> FloatingWalk<Real>::splitOff() {
  const std::optional<OpenChoices> open = largestOpenChoices(choices());
  if (!open) return std::nullopt;
  const std::size_t k = geometry_->dimension - 1 - open->depth;
  const auto rational = [](Real integer) { return exactInteger(integer); };
  Subtree result;
  for (std::size_t i = geometry_->dimension; --i > k;)
    result.path.push_back(rational(nodes_.chosen(i)));
  const auto [least, most] = nodes_.handOver(k, open->isUp, open->first);
  result.least = rational(least);
  result.most = rational(most);
  result.share = open->share;
  return result;
}

template <class Real>
typename FloatingWalk<Real>::Outcome FloatingWalk<Real>::walk(EnumerationVisitor& visitor,
                                                              const Subtree& subtree) {
  const std::size_t d = geometry_->dimension;
  if (!start(subtree)) return Outcome::done;
  while (true) {
    if (level_ == 0) {
      const Outcome outcome = reportLeaves(visitor);
      if (outcome != Outcome::goOn) return outcome;
      level_ = 1;
    } else if (nodes_.advance(level_)) {
      nodes_.enterChild(level_--);
    } else {
      ++level_;
    }
    if (isDue()) {
      const Outcome outcome = pace(visitor);
      if (outcome != Outcome::goOn) return outcome;
    }
    if (isNarrowed_ && !returnToOpenLevel()) return Outcome::done;
    if (level_ == d) return Outcome::done;
  }
}

template <class Real>
bool FloatingWalk<Real>::returnToOpenLevel() {
  isNarrowed_ = false;
  const std::size_t d = geometry_->dimension;
  if (level_ == d) return true;
  level_ = std::max(level_, nodes_.recheck(level_ + 1));
  return level_ < d;
}

template <class Real>
typename FloatingWalk<Real>::Outcome FloatingWalk<Real>::reportLeaves(EnumerationVisitor& visitor) {
  const Real least = nodes_.least(0);
  const auto steps = static_cast<std::int64_t>(nodes_.most(0) - least);
  for (std::int64_t step = 0; step <= steps; ++step) {
    ++leaves_;
    const Outcome outcome = report(visitor, 0, least + static_cast<Real>(step));
    if (outcome != Outcome::goOn) return outcome;
    if (isDue()) {
      const Outcome paced = pace(visitor);
      if (paced != Outcome::goOn) return paced;
    }
  }
  return Outcome::goOn;
}

template <class Real>
typename FloatingWalk<Real>::Outcome FloatingWalk<Real>::report(EnumerationVisitor& visitor,
                                                                std::size_t k, Real c) {
  for (std::size_t j = 0; j < point_.size(); ++j) {
    // All terms and sums are exact, and their doubles fit a word.
    Real relative = geometry_->dimension == 0 ? geometry_->start.at(0, j) : nodes_.coordinate(k, j);
    if (geometry_->dimension > 0) relative += c * geometry_->rows.at(k, j);
    const auto doubled = static_cast<long>(relative * 2);
    mpz_ptr x = point_[j].get();
    if (doubled >= 0)
      mpz_add_ui(x, doubledMiddle_[j].get(), static_cast<unsigned long>(doubled));
    else
      mpz_sub_ui(x, doubledMiddle_[j].get(), static_cast<unsigned long>(-doubled));
    mpz_divexact_ui(x, x, 2);
  }
  if (!isInBox(coset(), point_)) return Outcome::goOn;
  return visitor.found(point_) == Step::stop ? Outcome::stop : Outcome::goOn;
}

template <class Real>
typename FloatingWalk<Real>::Outcome FloatingWalk<Real>::pace(EnumerationVisitor& visitor) {
  if (ownNodes() >= end_) return Outcome::limit;
  setDue();
  return visitor.progress(shareDone(choices()), ownNodes() - before_) == Step::stop ? Outcome::stop
                                                                                    : Outcome::goOn;
}

template <class Real>
void FloatingWalk<Real>::setDue() {
  due_ = nodesPerReport_ < end_ - ownNodes() ? ownNodes() + nodesPerReport_ : end_;
  dueProgram_ =
      nodes_.programs() +
      std::max<std::size_t>(static_cast<std::size_t>(nodesPerReport_ / nodesPerProgram), 1);
}

template <class Real>
std::vector<LevelChoices> FloatingWalk<Real>::choices() const {
  std::vector<LevelChoices> path;
  for (std::size_t k = geometry_->dimension; k-- > level_ + 1;) path.push_back(nodes_.choicesAt(k));
  return path;
}

template <class Real>
TreeEstimate FloatingWalk<Real>::probe(const ProbeSettings& settings) const {
  TreeNodes<Real> nodes(*geometry_);
  nodes.narrowTo(nodes_);
  return TreeProbes<Real>(nodes, settings.seed).run(settings);
}

template class FloatingWalk<double>;
template class FloatingWalk<long double>;

}  // namespace starsift
