#include "search/enumeration/FloatingWalk.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "search/enumeration/DyadicRow.h"
#include "search/enumeration/TreeProbes.h"

namespace starsift {

namespace {

/// Nodes between two reports of progress.
constexpr std::uint64_t nodesPerReport = 8192;

/// The same in linear programs, which take up to a millisecond in a hundred dimensions.
constexpr std::size_t programsPerReport = 64;

}  // namespace

template <class Real>
FloatingWalk<Real>::FloatingWalk(BoxCoset coset, TreeGeometry<Real> geometry)
    : EnumerationWalk(std::move(coset)),
      geometry_(std::move(geometry)),
      nodes_(geometry_),
      point_(geometry_.coordinates) {
  for (std::size_t j = 0; j < geometry_.coordinates; ++j)
    doubledMiddle_.push_back(this->coset().lower[j] + this->coset().upper[j]);
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
EnumerationEnd FloatingWalk<Real>::run(EnumerationVisitor& visitor,
                                       const EnumerationSettings& settings) {
  nodes_.setPruning(settings.pruning);
  before_ = nodes();
  const std::uint64_t limit =
      settings.nodeLimit.value_or(std::numeric_limits<std::uint64_t>::max());
  end_ = limit < std::numeric_limits<std::uint64_t>::max() - before_
             ? before_ + limit
             : std::numeric_limits<std::uint64_t>::max();
  due_ = std::min(before_ + nodesPerReport, end_);
  dueProgram_ = nodes_.programs() + programsPerReport;
  isNarrowed_ = false;
  Outcome outcome = Outcome::done;
  if (!nodes_.isRootCut())
    outcome = geometry_.dimension == 0 ? report(visitor, 0, 0) : walk(visitor);
  if (outcome == Outcome::stop) return EnumerationEnd::stopped;
  if (outcome == Outcome::limit) return EnumerationEnd::limit;
  return nodes_.hasPruned() ? EnumerationEnd::pruned : EnumerationEnd::complete;
}

template <class Real>
typename FloatingWalk<Real>::Outcome FloatingWalk<Real>::walk(EnumerationVisitor& visitor) {
  const std::size_t d = geometry_.dimension;
  level_ = d - 1;
  nodes_.enter(level_);
  while (true) {
    if (level_ == 0) {
      const Outcome outcome = reportLeaves(visitor);
      if (outcome != Outcome::goOn) return outcome;
      level_ = 1;
    } else if (nodes_.advance(level_)) {
      nodes_.descend(level_);
      nodes_.enter(--level_);
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
  const std::size_t d = geometry_.dimension;
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
    Real relative = geometry_.dimension == 0 ? geometry_.start.at(0, j) : nodes_.coordinate(k, j);
    if (geometry_.dimension > 0) relative += c * geometry_.rows.at(k, j);
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
  if (nodes() >= end_) return Outcome::limit;
  due_ = std::min(nodes() + nodesPerReport, end_);
  dueProgram_ = nodes_.programs() + programsPerReport;
  return visitor.progress(share(), nodes() - before_) == Step::stop ? Outcome::stop : Outcome::goOn;
}

template <class Real>
double FloatingWalk<Real>::share() const {
  std::vector<LevelChoices> path;
  for (std::size_t k = geometry_.dimension; k-- > level_ + 1;) path.push_back(nodes_.choicesAt(k));
  return shareDone(path);
}

template <class Real>
TreeEstimate FloatingWalk<Real>::probe(const ProbeSettings& settings) const {
  TreeNodes<Real> nodes(geometry_);
  for (std::size_t j = 0; j < geometry_.coordinates; ++j)
    if (nodes_.lower(j) > nodes.lower(j) || nodes_.upper(j) < nodes.upper(j))
      nodes.setBounds(j, nodes_.lower(j), nodes_.upper(j));
  return TreeProbes<Real>(nodes, settings.seed).run(settings);
}

template class FloatingWalk<double>;
template class FloatingWalk<long double>;

}  // namespace starsift
