// Lattice: is a vector a solution? Every vector that a reduction touches is asked, so
// nearly all of them are turned away by one look at the last coordinate.
#pragma once

#include <algorithm>
#include <memory>
#include <optional>
#include <utility>

#include "lattice/Lattice.h"
#include "numbers/Conversion.h"
#include "problem/Rows.h"

namespace starsift {

namespace latticecheck {

/// The verdict that a judged star had. PrecisionException if T can't hold it.
template <class T>
StarVerdict<T> verdictOf(const JudgedStar& judged) {
  using Number = NumberConversion<T, QQ>;
  StarVerdict<T> verdict;
  verdict.isSolution = true;
  verdict.targetValues.convertFrom(judged.star.targetValues, false);
  verdict.norms = {Number::convert(judged.star.targetNorm), Number::convert(judged.star.slackNorm)};
  return verdict;
}

/// `judged`, which may be empty, is about this point in the problem with this number.
template <class T>
bool isAbout(const std::shared_ptr<const JudgedStar>& judged, const Star<T>& star,
             std::uint64_t problem) {
  if (!judged || judged->problem != problem) return false;
  Vector<QQ> x;
  x.convertFrom(star.x(), false);
  return identical(x, judged->star.x());
}

/// A star as it was judged.
template <class T>
std::shared_ptr<const JudgedStar> judgedStar(Star<T> star, const StarVerdict<T>& verdict,
                                             std::uint64_t problem, Index number) {
  star.targetValues = verdict.targetValues;
  star.targetNorm = verdict.norms.target;
  star.slackNorm = verdict.norms.slack;
  auto judged = std::make_shared<JudgedStar>();
  judged->star.convertFrom(star, false);
  judged->problem = problem;
  judged->number = number;
  return judged;
}

/// What a lattice keeps of a vector, but for what was judged.
template <class T>
FiledSolution<T> filedVector(const Vector<T>& vector, const StarVerdict<T>& verdict) {
  FiledSolution<T> solution;
  static_cast<Vector<T>&>(solution) = vector;
  solution.targetValues = verdict.targetValues;
  solution.targetNorm = verdict.norms.target;
  solution.slackNorm = verdict.norms.slack;
  return solution;
}

}  // namespace latticecheck

/// A point of the problem, constants included, in units of its factor h, and the raw vector
/// that it is mapped to.
template <class T, class R>
struct Lattice<T, R>::PointImage {
  Star<T> point;
  T h = T();
  Vector<T> image;
};

template <class T, class R>
unsigned Lattice<T, R>::checkSolution(const Vector<T>& vector, bool transformed, std::int64_t time,
                                      bool silent) {
  const unsigned bits = checkVector(vector, transformed, time, nullptr);
  if (silent) return bits;
  if ((bits & CHECK_SOLUTION) != 0) writeSolFile(false);
  if ((bits & CHECK_LIMIT) != 0) restartHandling(true);
  return bits;
}

template <class T, class R>
unsigned Lattice<T, R>::checkVector(const Vector<T>& vector, bool transformed, std::int64_t time,
                                    const Judgement& known) {
  if (latticeKind == LatticeKind::none) fail("checkSolution: You should set the check vectors!");
  if (vector.dimension() == 0) return 0;
  Vector<T> raw = oriented(vector, transformed);
  std::optional<PointImage> mapped = imageOfPoint(raw);
  if (!mapped || !isImage(raw, mapped->image, false)) return 0;
  if (this->deviationCount > 0 && hasLastInBox(raw[m])) raw = std::move(mapped->image);
  collect(raw, time);
  if (!liesInBox(raw)) {
    offerBest(raw, time);
    return 0;
  }
  if (latticeKind == LatticeKind::equations) {
    // Nothing is filed yet; as best vector it comes along to the full lattice.
    offerBest(raw, time);
    return 0;
  }
  return mapped->h == T(1) ? fileSolution(raw, mapped->point, time, known) : 0;
}

template <class T, class R>
Index Lattice<T, R>::firstChecked() const {
  return latticeKind == LatticeKind::full && this->atuValid ? 2 : 1;
}

template <class T, class R>
bool Lattice<T, R>::hasLastInBox(const T& last) const {
  return l[m] <= last && last <= r[m];
}

template <class T, class R>
void Lattice<T, R>::checkBasisVector(Index k) {
  // What a vector didn't gain when it came it doesn't gain later.
  if (checkedRows.mark(k)) return;
  if (latticeKind != LatticeKind::none && isHopeless(B[k])) {
    if (!isCollectable(B[k])) return;
    const Vector<R>& image = rowImages.of(B, k)[k];
    if (hasUnitScale() && collectsNone(image * image)) return;
  }
  checkSolution(B[k], true, 0, false);
}

template <class T, class R>
bool Lattice<T, R>::isHopeless(const Vector<T>& vector) const {
  // The translation leaves the last coordinate alone.
  const T size = NumberTraits<T>::absolute(vector.element(m));
  const T last = homScaled > T() ? size : negated(size);
  const bool fits = l[m] * scale[m] <= last && last <= r[m] * scale[m];
  return !fits && isInSafeRange(vector);
}

template <class T, class R>
bool Lattice<T, R>::isInSafeRange(const Vector<T>& vector) const {
  if constexpr (NumberTraits<T>::exact) return true;
  if (params.translate) return false;
  for (Index i = 1; i <= m; ++i)
    if (!(NumberTraits<T>::absolute(vector[i]) <= T(safeBound)) || scale[i] < T(1)) return false;
  return true;
}

template <class T, class R>
bool Lattice<T, R>::hasUnitScale() const {
  return !params.translate &&
         std::all_of(scale.begin(), scale.end(), [](const T& factor) { return factor == T(1); });
}

template <class T, class R>
bool Lattice<T, R>::collectsNone(const R& squaredLength) const {
  const auto limit = static_cast<Index>(params.collectLimit);
  if (collected.limit() != limit || collected.count() < limit) return false;
  const VectorScore<R>& worst = collected.first()->score;
  return worst.status == ScoreStatus::inhomogeneous ||
         worst.squaredNorm + NumberTraits<R>::tolerance() < squaredLength;
}

template <class T, class R>
Vector<T> Lattice<T, R>::oriented(const Vector<T>& vector, bool transformed) const {
  const T& hom = transformed ? homScaled : this->homValue;
  const T& last = vector.element(m);
  const bool turns = hom > T() ? last <= T() : last >= T();
  Vector<T> result(vector);
  if (turns)
    for (T& entry : result) entry = negated(entry);
  return transformed ? forwardMap(result, true) : result;
}

template <class T, class R>
bool Lattice<T, R>::liesInBox(const Vector<T>& vector) const {
  if (!hasLastInBox(vector[m])) return false;
  const Index variables = this->fd.dimension();
  const Index before = m - 1 - variables - (modsInLattice ? this->modulusCount() : 0);
  for (Index i = 1; i <= variables; ++i) {
    const FreedomDegree kind = this->fd[i];
    const T& entry = vector[before + i];
    if (kind == FreedomDegree::free) continue;
    if (entry < l[before + i] && kind != FreedomDegree::leftFree) return false;
    if (entry > r[before + i] && kind != FreedomDegree::rightFree) return false;
  }
  for (Index j = before; j >= firstChecked(); --j)
    if (vector[j] < l[j] || vector[j] > r[j]) return false;
  return true;
}

template <class T, class R>
bool Lattice<T, R>::isConsistent(const Vector<T>& vector, bool exact) const {
  const std::optional<PointImage> mapped = imageOfPoint(vector);
  return mapped && isImage(vector, mapped->image, exact);
}

template <class T, class R>
auto Lattice<T, R>::imageOfPoint(const Vector<T>& vector) const -> std::optional<PointImage> {
  std::optional<PointImage> mapped(std::in_place);
  try {
    mapped->h = lat2opt(vector, mapped->point, true, false, false);
    opt2lat(mapped->point, mapped->image, false, mapped->h);
  } catch (const ModuloException&) {
    mapped.reset();
  }
  return mapped;
}

template <class T, class R>
bool Lattice<T, R>::isImage(const Vector<T>& vector, const Vector<T>& image, bool exact) const {
  const Vector<T> rest = image - vector;
  const auto isZero = [exact](const T& entry) {
    return exact ? entry == T() : NumberTraits<T>::isZero(entry);
  };
  const Index moduli = this->modulusCount();
  Index first = 1;
  if (latticeKind == LatticeKind::equations && !equationsRemoved) {
    Index column = this->rx.dimension();
    for (; first <= this->bg.dimension(); ++first) {
      const bool isCongruence = this->qg.dimension() > 0 && !(this->qg[first] == T());
      if (!isZero(isCongruence ? NumberTraits<T>::remainder(rest[first], this->Ag[first][++column])
                               : rest[first]))
        return false;
    }
  }
  const Index last = m - (modsInLattice ? moduli : 0) - 1;
  const Index deviations = last - this->deviationCount;
  for (Index i = first; i <= deviations; ++i)
    if (!isZero(rest[i])) return false;
  for (Index i = deviations + 1; i < last; i += 2)
    if (!isZero(rest[i + 1] - rest[i])) return false;
  return isZero(rest[m]);
}

template <class T, class R>
Index Lattice<T, R>::columnsBeforeVariables() const {
  return m - 1 - this->rx.dimension() - (modsInLattice ? this->modulusCount() : 0);
}

template <class T, class R>
bool Lattice<T, R>::isCollectable(const Vector<T>& vector) const {
  if ((!params.pair && !params.sieve) || params.collectLimit == 0) return false;
  if (latticeKind != LatticeKind::equations || equationsRemoved) return true;
  // Any other vector is left behind with the coordinates of the equations.
  return std::all_of(vector.begin(), vector.begin() + this->Ag.rowCount(),
                     [](const T& entry) { return entry == T(); });
}

template <class T, class R>
void Lattice<T, R>::collect(const Vector<T>& vector, std::int64_t time) {
  if (!isCollectable(vector)) return;
  collected.setLimit(static_cast<Index>(params.collectLimit));
  collected.insert(scored(vector, time));
}

template <class T, class R>
HeuristicVector<T, R> Lattice<T, R>::scored(const Vector<T>& vector, std::int64_t time) const {
  HeuristicVector<T, R> result;
  static_cast<Vector<T>&>(result) = vector;
  result.time = discoveryTime(time);
  score(result.score, vector, false);
  return result;
}

template <class T, class R>
unsigned Lattice<T, R>::fileSolution(const Vector<T>& vector, const Star<T>& star,
                                     std::int64_t time, const Judgement& known) {
  Judgement judged = latticecheck::isAbout(known, star, file.problemNumber()) ? known : nullptr;
  const StarVerdict<T> verdict = judged ? latticecheck::verdictOf<T>(*judged) : file.judge(star);
  if (!verdict.isSolution) return 0;
  const bool hasTargets = this->At.rowCount() > 0;
  if (hasTargets && !competesForTarget(vector, verdict.norms.target))
    return CHECK_SOLUTION | limitBits(verdict.norms, bestTarget == vector);
  const bool isBest =
      hasTargets && (!bestTarget.isSet() || verdict.norms.target < bestTarget.targetNorm);
  const bool isNew = !solutionIndex.contains(solutions, vector);
  if (isBest || isNew) {
    if (!judged)
      judged = latticecheck::judgedStar(star, verdict, file.problemNumber(), ++lastFiled);
    FiledSolution<T> solution = latticecheck::filedVector(vector, verdict);
    solution.time = discoveryTime(time);
    solution.judged = std::move(judged);
    if (isBest) bestTarget = solution;
    if (isNew) append(solutions, std::move(solution));
  }
  return CHECK_SOLUTION | (isNew ? CHECK_STORED : 0U) | limitBits(verdict.norms, true);
}

template <class T, class R>
std::optional<Star<T>> Lattice<T, R>::starOf(const Vector<T>& raw) const {
  std::optional<Star<T>> star(std::in_place);
  if (!(lat2opt(raw, *star, true, false, true) == T(1))) star.reset();
  return star;
}

template <class T, class R>
bool Lattice<T, R>::competesForTarget(const Vector<T>& vector, const T& targetNorm) const {
  if (!bestTarget.isSet()) return true;
  // Stored vectors were good enough when they came.
  return !(bestTarget == vector) && (restoring || !(targetNorm > bestTarget.targetNorm));
}

template <class T, class R>
unsigned Lattice<T, R>::limitBits(const Norms<T>& norms, bool isFiled) const {
  return hasEnough() || (isFiled && meetsGoal(norms.target, norms.slack)) ? CHECK_LIMIT : 0;
}

template <class T, class R>
bool Lattice<T, R>::hasEnough() const {
  return params.sol > 0 && solutions.dimension() >= params.sol;
}

template <class T, class R>
bool Lattice<T, R>::meetsGoal(const T& targetNorm, const T& slackNorm) const {
  return this->At.rowCount() > 0 && (targetNorm <= params.tnorm || slackNorm <= params.snorm);
}

template <class T, class R>
bool Lattice<T, R>::isSatisfied() const {
  return hasEnough() ||
         std::any_of(solutions.begin(), solutions.end(), [this](const FiledSolution<T>& solution) {
           return meetsGoal(solution.targetNorm, solution.slackNorm);
         });
}

}  // namespace starsift
