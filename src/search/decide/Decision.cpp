#include "search/decide/Decision.h"

#include <algorithm>
#include <chrono>
#include <utility>
#include <variant>

#include "numbers/VectorQQ.h"
#include "problem/TightenBounds.h"
#include "search/decide/IntegerProblem.h"
#include "search/decide/ProblemCoset.h"
#include "search/decide/RelaxedProblem.h"
#include "search/enumeration/CosetReduction.h"
#include "search/enumeration/TreeReduction.h"
#include "stars/StarCheck.h"
#include "system/Failure.h"

namespace starsift {

namespace {

/// Of all linear relaxations of a problem.
constexpr std::chrono::seconds relaxationTime{2};

/// The bounds of the box become those of objectives of at most `most`.
void narrowBox(BoxCoset& coset, const ObjectiveCoordinate& objective, const ZZ& most) {
  const IntegerRange range = objective.bound.rangeBelow(most);
  const std::size_t j = objective.coordinate;
  coset.upper[j] = std::min(coset.upper[j], *range.upper);
  if (range.lower) coset.lower[j] = std::max(coset.lower[j], *range.lower);
}

void appendInequation(Vanu<QQ>& problem, Vector<QQ> row, const QQ& lower, const QQ& upper) {
  const Index i = problem.lu.dimension() + 1;
  problem.Au.resize(i, problem.rx.dimension(), false);
  problem.Au[i] = std::move(row);
  problem.lu.resize(i, false);
  problem.ru.resize(i, false);
  problem.lu[i] = lower;
  problem.ru[i] = upper;
}

/// Narrows the bounds to what follows if the target norm is at most `most`. False if nothing is
/// left.
bool implyBounds(Vanu<QQ>& problem, const QQ& most) {
  Vanu<QQ> limited(problem);
  Vector<QQ> linear(problem.rx.dimension());
  bool isLinear = false;
  for (Index i = 1; i <= problem.dt.dimension(); ++i) {
    if (!problem.dt[i].isInf()) continue;
    isLinear = true;
    for (Index j = 1; j <= linear.dimension(); ++j)
      subtractProduct(linear[j], problem.targetSign(i), problem.At[i][j]);
  }
  if (isLinear) {
    appendInequation(limited, std::move(linear), -QQ::infinity(), most);
  } else {
    for (Index i = 1; i <= problem.dt.dimension(); ++i)
      appendInequation(limited, problem.At[i], problem.dt[i] - most, problem.dt[i] + most);
  }
  if (implyBounds(limited) == BoundsImplied::contradiction) return false;
  problem.lx = limited.lx;
  problem.rx = limited.rx;
  return true;
}

}  // namespace

class Decision::Tree {
 public:
  explicit Tree(const Vanu<QQ>& problem) : problem_(problem), checker_(problem_) {}

  Preparation prepare(Aim aim, const std::optional<QQ>& known, const MayGoOn& mayGoOn,
                      StageLimit limit);
  Preparation relax(Aim aim, const std::optional<QQ>& known, const MayGoOn& mayGoOn);
  std::optional<BoxCoset> unreducedCoset(Aim aim, const MayGoOn& mayGoOn);
  /// The whole tree, or subtrees of it.
  EnumerationEnd run(DecisionListener& listener, const EnumerationSettings& settings,
                     std::optional<std::vector<Subtree>> subtrees);
  std::optional<std::vector<Subtree>> cut(std::size_t wanted, const MayGoOn& mayGoOn) const;
  void narrowBelow(const QQ& norm);
  const BoxCoset& coset() const { return coset_.coset; }

  bool raiseBound(const MayGoOn& mayProgram, const MayGoOn& mayGoOn);

  const Vanu<QQ>& problem() const { return problem_; }
  Index unbounded() const { return unbounded_; }
  const Vector<QQ>& falling() const { return falling_; }
  std::optional<QQ> leastNorm() const;
  const std::optional<Star<QQ>>& metSolution() const { return met_; }
  TreeEstimate estimate(const ProbeSettings& probes) const;
  std::uint64_t nodes() const { return nodesBefore_ + (enumeration_ ? enumeration_->nodes() : 0); }

 private:
  class Visitor;

  /// The problem in integers, with what its linear relaxation proves.
  Preparation makeIntegers(const std::optional<QQ>& known, const MayGoOn& mayGoOn);
  Preparation makeCoset(const std::optional<QQ>& known, const MayGoOn& mayGoOn);
  /// leastNorm_ as an objective.
  std::optional<ZZ> leastObjective() const;
  /// Learns from the linear relaxation; false if it has no point.
  bool relax(const std::optional<QQ>& known, const MayGoOn& mayGoOn);
  void reset(Aim aim);
  /// Nothing is within the bounds: no solution, or none better than the known one.
  Preparation nothingLeft(const std::optional<QQ>& known);
  Preparation openBox(const NoFiniteBox& open);
  /// Reduces the coset and prepares its enumeration, unless the tree is closed; false if it was
  /// ended before.
  bool makeTree(const MayGoOn& mayGoOn);
  /// Raises the lower sides of the objective's coordinates to leastNorm_ or, where that says
  /// nothing of them, to those of linear programs in rationals. False if mayProgram() ended these.
  bool raiseLowerSides(const MayGoOn& mayProgram);
  void dropEnumeration();
  /// No objective is small enough to count: proven without a tree. A fixed objective has no
  /// coordinate whose box could become empty.
  bool isClosed() const;
  /// The solution at a point of the coset.
  Star<QQ> starAt(const std::vector<ZZ>& variables);
  /// From now on only objectives of at most `most` count.
  void narrow(const ZZ& most);

  Vanu<QQ> problem_;
  StarChecker<QQ> checker_;
  Aim aim_ = Aim::all;
  StageLimit limit_ = StageLimit::time;
  IntegerProblem integers_;
  ProblemCoset coset_;
  /// Greatest objective that still counts, with Aim::best once a solution is known.
  std::optional<ZZ> most_;
  /// Proven: no solution has less target norm.
  std::optional<QQ> leastNorm_;
  std::chrono::steady_clock::duration relaxationTimeLeft_ = relaxationTime;
  std::optional<Star<QQ>> met_;
  std::optional<Enumeration> enumeration_;
  std::uint64_t nodesBefore_ = 0;
  /// There is no better solution than the known one.
  bool isClosed_ = false;
  Index unbounded_ = 0;
  Vector<QQ> falling_;
};

/// Turns points of the coset into solutions.
class Decision::Tree::Visitor : public EnumerationVisitor {
 public:
  Visitor(Tree& tree, DecisionListener& listener) : tree_(tree), listener_(listener) {}

  Step found(const std::vector<ZZ>& point) override {
    const std::vector<ZZ> variables = tree_.coset_.variablesAt(point);
    const bool isBest = tree_.aim_ == Aim::best;
    ZZ objective;
    if (isBest) {
      objective = tree_.integers_.objective->at(variables);
      if (tree_.most_ && objective > *tree_.most_) return Step::goOn;
    }
    const Step step = listener_.found(tree_.starAt(variables));
    if (!isBest) return step;
    tree_.narrow(objective - ZZ::one());
    return tree_.isClosed() ? Step::stop : step;
  }

  Step progress(double share, std::uint64_t nodes) override {
    return listener_.progress(share, nodes);
  }

  void finished(const FinishedPiece& piece) override { listener_.finished(piece); }

 private:
  Tree& tree_;
  DecisionListener& listener_;
};

bool Decision::Tree::makeTree(const MayGoOn& mayGoOn) {
  if (isClosed()) return mayGoOn();
  BoxCoset& coset = coset_.coset;
  if (isEmptyBox(coset)) {
    enumeration_.emplace(coset);
    return mayGoOn();
  }
  const std::optional<CosetDirections> data = reduceForTree(coset, limit_, mayGoOn);
  if (!data) return false;
  enumeration_ = Enumeration::prepared(coset, *data, mayGoOn);
  return enumeration_.has_value();
}

bool Decision::Tree::raiseLowerSides(const MayGoOn& mayProgram) {
  const std::optional<ZZ> least = leastObjective();
  if (!least || !integers_.objective->deviations.empty()) return raiseObjective(coset_, mayProgram);
  for (const ObjectiveCoordinate& objective : coset_.objective) {
    ZZ& lower = coset_.coset.lower[objective.coordinate];
    lower = std::max(lower, *objective.bound.rangeFrom(*least).lower);
  }
  return true;
}

void Decision::Tree::dropEnumeration() {
  nodesBefore_ = nodes();
  enumeration_.reset();
}

Preparation Decision::Tree::makeIntegers(const std::optional<QQ>& known, const MayGoOn& mayGoOn) {
  Vanu<QQ> narrowed(problem_);
  switch (implyBounds(narrowed)) {
    case BoundsImplied::contradiction:
      return Preparation::noSolution;
    case BoundsImplied::unknownSteps:
      return Preparation::unknownSteps;
    case BoundsImplied::narrowed:
      break;
  }
  if (known && !implyBounds(narrowed, *known)) return nothingLeft(known);
  std::optional<IntegerProblem> integers = integerProblem(narrowed);
  if (!integers) return Preparation::unknownSteps;
  integers_ = std::move(*integers);
  if (known) most_ = integers_.objective->mostBelow(*known);
  // A tree that has to be the same on every run can't depend on the time of a linear program.
  if (limit_ == StageLimit::time && !relax(known, mayGoOn)) return nothingLeft(known);
  const std::optional<ZZ> least = leastObjective();
  isClosed_ = most_ && least && *least > *most_;
  return Preparation::ready;
}

std::optional<ZZ> Decision::Tree::leastObjective() const {
  if (!leastNorm_) return std::nullopt;
  return integers_.objective->leastFrom(*leastNorm_);
}

Preparation Decision::Tree::makeCoset(const std::optional<QQ>& known, const MayGoOn& mayGoOn) {
  const Preparation made = makeIntegers(known, mayGoOn);
  if (made != Preparation::ready || isClosed_) return made;
  const auto reduce = [&mayGoOn](BoxCoset& coset) {
    reduceCoset(coset, mayGoOn);
    return mayGoOn();
  };
  CosetResult result =
      problemCoset(integers_, {aim_ == Aim::best, most_, reduce, mayGoOn, leastObjective()});
  if (std::holds_alternative<NoSolution>(result))
    return nothingLeft(met_ ? met_->targetNorm : known);
  if (std::holds_alternative<CosetStopped>(result)) return Preparation::stopped;
  if (const auto* open = std::get_if<NoFiniteBox>(&result)) return openBox(*open);
  coset_ = std::move(std::get<ProblemCoset>(result));
  return Preparation::ready;
}

bool Decision::Tree::relax(const std::optional<QQ>& known, const MayGoOn& mayGoOn) {
  if (leastNorm_) return true;
  using Clock = std::chrono::steady_clock;
  const Clock::time_point start = Clock::now();
  const RelaxedProblem relaxed = relaxedProblem(integers_, [this, &mayGoOn, start] {
    return mayGoOn() && Clock::now() - start < relaxationTimeLeft_;
  });
  relaxationTimeLeft_ -= Clock::now() - start;
  if (aim_ != Aim::best || relaxed.isInfeasible) return !relaxed.isInfeasible;
  if (relaxed.leastObjective) {
    leastNorm_ = integers_.objective->normOf(*relaxed.leastObjective);
    // Solutions that are no better than the known one may lie outside of the bounds.
    if (known && *known < *leastNorm_) leastNorm_ = known;
  }
  if (!relaxed.solution) return true;
  const ZZ objective = integers_.objective->at(*relaxed.solution);
  if (most_ && objective > *most_) return true;
  met_ = starAt(*relaxed.solution);
  most_ = objective - ZZ::one();
  return true;
}

Preparation Decision::Tree::nothingLeft(const std::optional<QQ>& known) {
  isClosed_ = known.has_value();
  if (known) leastNorm_ = known;
  return isClosed_ ? Preparation::ready : Preparation::noSolution;
}

Preparation Decision::Tree::openBox(const NoFiniteBox& open) {
  unbounded_ = integers_.original[open.variable];
  falling_.clear();
  if (open.direction.empty() || !lowersForEver(integers_, open.direction))
    return Preparation::noFiniteBox;
  falling_ = integers_.directionAsRead(open.direction);
  return Preparation::noFiniteBox;
}

void Decision::Tree::reset(Aim aim) {
  dropEnumeration();
  aim_ = aim;
  most_.reset();
  met_.reset();
  isClosed_ = false;
  coset_ = {};
}

std::optional<BoxCoset> Decision::Tree::unreducedCoset(Aim aim, const MayGoOn& mayGoOn) {
  reset(aim);
  if (makeCoset(std::nullopt, mayGoOn) != Preparation::ready || isEmptyBox(coset_.coset))
    return std::nullopt;
  return coset_.coset;
}

Preparation Decision::Tree::relax(Aim aim, const std::optional<QQ>& known, const MayGoOn& mayGoOn) {
  reset(aim);
  limit_ = StageLimit::time;
  return makeIntegers(aim == Aim::best ? known : std::nullopt, mayGoOn);
}

Preparation Decision::Tree::prepare(Aim aim, const std::optional<QQ>& known, const MayGoOn& mayGoOn,
                                    StageLimit limit) {
  reset(aim);
  limit_ = limit;
  const Preparation made = makeCoset(aim == Aim::best ? known : std::nullopt, mayGoOn);
  if (made != Preparation::ready) return made;
  return makeTree(mayGoOn) ? Preparation::ready : Preparation::stopped;
}

bool Decision::Tree::raiseBound(const MayGoOn& mayProgram, const MayGoOn& mayGoOn) {
  if (isClosed() || !raiseLowerSides(mayProgram)) return mayGoOn();
  dropEnumeration();
  return makeTree(mayGoOn);
}

std::optional<QQ> Decision::Tree::leastNorm() const {
  if (!coset_.leastObjective) return leastNorm_;
  return integers_.objective->normOf(*coset_.leastObjective);
}

TreeEstimate Decision::Tree::estimate(const ProbeSettings& probes) const {
  return enumeration_ ? enumeration_->estimate(probes) : TreeEstimate{};
}

EnumerationEnd Decision::Tree::run(DecisionListener& listener, const EnumerationSettings& settings,
                                   std::optional<std::vector<Subtree>> subtrees) {
  if (isClosed()) return EnumerationEnd::complete;
  Visitor visitor(*this, listener);
  const EnumerationEnd end = subtrees ? enumeration_->run(visitor, settings, *std::move(subtrees))
                                      : enumeration_->run(visitor, settings);
  return isClosed() ? EnumerationEnd::complete : end;
}

std::optional<std::vector<Subtree>> Decision::Tree::cut(std::size_t wanted,
                                                        const MayGoOn& mayGoOn) const {
  if (isClosed()) return std::vector<Subtree>();
  return enumeration_->cut(wanted, mayGoOn);
}

void Decision::Tree::narrowBelow(const QQ& norm) {
  if (!isClosed()) narrow(integers_.objective->mostBelow(norm));
}

bool Decision::Tree::isClosed() const {
  return isClosed_ || (most_ && coset_.leastObjective && *coset_.leastObjective > *most_);
}

void Decision::Tree::narrow(const ZZ& most) {
  most_ = most;
  for (const ObjectiveCoordinate& objective : coset_.objective) {
    const std::size_t j = objective.coordinate;
    narrowBox(coset_.coset, objective, most);
    enumeration_->narrow(j, coset_.coset.lower[j], coset_.coset.upper[j]);
  }
}

Star<QQ> Decision::Tree::starAt(const std::vector<ZZ>& variables) {
  Star<QQ> star;
  static_cast<Vector<QQ>&>(star) = integers_.pointAsRead(variables);
  if (!checker_.check(star)) fail("Decision: a point of the coset is no solution");
  return star;
}

Decision::Decision(const Vanu<QQ>& problem) : tree_(std::make_unique<Tree>(problem)) {}

Decision::~Decision() = default;

const Vanu<QQ>& Decision::problem() const {
  return tree_->problem();
}

Preparation Decision::relax(Aim aim, const std::optional<QQ>& known, const MayGoOn& mayGoOn) {
  return tree_->relax(aim, known, mayGoOn);
}

Preparation Decision::prepare(Aim aim, const std::optional<QQ>& known, const MayGoOn& mayGoOn,
                              StageLimit limit) {
  return tree_->prepare(aim, known, mayGoOn, limit);
}

std::optional<BoxCoset> Decision::unreducedCoset(Aim aim, const MayGoOn& mayGoOn) {
  return tree_->unreducedCoset(aim, mayGoOn);
}

Index Decision::unboundedVariable() const {
  return tree_->unbounded();
}

const Vector<QQ>& Decision::fallingDirection() const {
  return tree_->falling();
}

bool Decision::raiseBound(const MayGoOn& mayProgram, const MayGoOn& mayGoOn) {
  return tree_->raiseBound(mayProgram, mayGoOn);
}

std::optional<QQ> Decision::leastNorm() const {
  return tree_->leastNorm();
}

const std::optional<Star<QQ>>& Decision::metSolution() const {
  return tree_->metSolution();
}

TreeEstimate Decision::estimate(const ProbeSettings& probes) const {
  return tree_->estimate(probes);
}

EnumerationEnd Decision::run(DecisionListener& listener, const EnumerationSettings& settings) {
  return tree_->run(listener, settings, std::nullopt);
}

EnumerationEnd Decision::run(DecisionListener& listener, const EnumerationSettings& settings,
                             std::vector<Subtree> subtrees) {
  return tree_->run(listener, settings, std::move(subtrees));
}

std::optional<std::vector<Subtree>> Decision::cut(std::size_t wanted,
                                                  const MayGoOn& mayGoOn) const {
  return tree_->cut(wanted, mayGoOn);
}

void Decision::narrowBelow(const QQ& norm) {
  tree_->narrowBelow(norm);
}

const BoxCoset& Decision::coset() const {
  return tree_->coset();
}

std::uint64_t Decision::nodes() const {
  return tree_->nodes();
}

}  // namespace starsift
