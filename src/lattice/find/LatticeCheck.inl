// Lattice: the test whether a vector is a solution. Every vector that a reduction touches is
// checked; nearly all are rejected by one comparison of the last coordinate.
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

using Judgement = std::shared_ptr<const JudgedStar>;

/// All entries of a vector of working space are in the range in which T is safe, and then its
/// entries in raw space are as well.
template <class T, class R>
bool isInSafeRange(const Basis<T, R>& basis, const Vector<T>& vector) {
  if constexpr (NumberTraits<T>::exact) return true;
  // A homogeneous vector is the same with a translation.
  if (basis.isTranslated && !(vector[basis.m] == T())) return false;
  for (Index i = 1; i <= basis.m; ++i)
    if (!(NumberTraits<T>::absolute(vector[i]) <= T(safeBound)) || basis.scale[i] < T(1))
      return false;
  return true;
}

/// A point of the problem, constants included, its homogenising factor h, and the raw vector
/// that both are mapped to.
template <class T>
struct PointImage {
  Star<T> point;
  T h = T();
  Vector<T> image;
};

/// The point that a raw vector stands for, and its image; nullopt if the point violates a
/// congruence. In the image one deviation of each pair is 0. The same amount added to both
/// deviations keeps a vector consistent, but a negative amount leads out of the box, and a
/// positive one to another vector for the same point.
template <class T, class R>
std::optional<PointImage<T>> imageOfPoint(const Lattice<T, R>& lattice, const Vector<T>& vector) {
  std::optional<PointImage<T>> mapped(std::in_place);
  try {
    mapped->h =
        lattice.lat2opt(vector, mapped->point, Constants::insert, Slacks::omit, Orientation::given);
    lattice.opt2lat(mapped->point, mapped->image, Space::raw, mapped->h);
  } catch (const ModuloException&) {
    mapped.reset();
  }
  return mapped;
}

/// isConsistent() for a raw vector whose point has this image.
template <class T, class R>
bool isImage(const Lattice<T, R>& lattice, const Vector<T>& vector, const Vector<T>& image,
             Match match) {
  const Vector<T> rest = image - vector;
  const auto isZero = [match](const T& entry) {
    return match == Match::exact ? entry == T() : NumberTraits<T>::isZero(entry);
  };
  const CoordinateBlocks blocks = lattice.blocks();
  Index modulus = lattice.rx.dimension();
  for (const Index i : blocks.equations) {
    const bool isCongruence = lattice.qg.dimension() > 0 && !(lattice.qg[i] == T());
    if (!isZero(isCongruence ? NumberTraits<T>::remainder(rest[i], lattice.Ag[i][++modulus])
                             : rest[i]))
      return false;
  }
  for (Index i = blocks.target.first; i < blocks.deviations.first; ++i)
    if (!isZero(rest[i])) return false;
  for (Index i = blocks.deviations.first; i < blocks.deviations.last(); i += 2)
    if (!isZero(rest[i + 1] - rest[i])) return false;
  return isZero(rest[lattice.basis.m]);
}

template <class T, class R>
bool hasEnough(const Lattice<T, R>& lattice) {
  if (lattice.run.seeksBest && lattice.At.rowCount() > 0) return false;
  return lattice.params.sol > 0 && lattice.found.solutions.dimension() >= lattice.params.sol;
}

/// A solution with these norms ends the search; always false in a problem without targets.
template <class T, class R>
bool meetsGoal(const Lattice<T, R>& lattice, const T& targetNorm, const T& slackNorm) {
  return lattice.At.rowCount() > 0 &&
         (targetNorm <= lattice.params.tnorm || slackNorm <= lattice.params.snorm);
}

/// CHECK_LIMIT or 0, after a solution with these norms was found.
template <class T, class R>
unsigned limitBits(const Lattice<T, R>& lattice, const Norms<T>& norms, bool isFiled) {
  const bool ends =
      hasEnough(lattice) || (isFiled && meetsGoal(lattice, norms.target, norms.slack));
  return ends ? CHECK_LIMIT : 0;
}

/// The stored verdict on a judged star. PrecisionException if T can't hold it.
template <class T>
StarVerdict<T> verdictOf(const JudgedStar& judged) {
  using Number = NumberConversion<T, QQ>;
  StarVerdict<T> verdict;
  verdict.isSolution = true;
  verdict.targetValues.convertFrom(judged.star.targetValues, false);
  verdict.norms = {Number::convert(judged.star.targetNorm), Number::convert(judged.star.slackNorm)};
  return verdict;
}

/// `judged` is set and is the verdict on this point in the problem with this number.
template <class T>
bool isAbout(const std::shared_ptr<const JudgedStar>& judged, const Star<T>& star,
             std::uint64_t problem) {
  if (!judged || judged->problem != problem) return false;
  Vector<QQ> x;
  x.convertFrom(star.x(), false);
  return identical(x, judged->star.x());
}

/// The record of a verdict on a star.
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

/// The stored form of a vector, without the member `judged`.
template <class T>
FiledSolution<T> filedVector(const Vector<T>& vector, const StarVerdict<T>& verdict) {
  FiledSolution<T> solution;
  static_cast<Vector<T>&>(solution) = vector;
  solution.targetValues = verdict.targetValues;
  solution.targetNorm = verdict.norms.target;
  solution.slackNorm = verdict.norms.slack;
  return solution;
}

/// There is no best target yet, or this is another vector whose target norm is not worse.
template <class T, class R>
bool competesForTarget(const Lattice<T, R>& lattice, const Vector<T>& vector, const T& targetNorm) {
  const FiledSolution<T>& best = lattice.found.bestTarget;
  if (!best.isSet()) return true;
  // Vectors from a backup were good enough when they were stored.
  return !(best == vector) && (lattice.run.restoring || !(targetNorm > best.targetNorm));
}

/// checkVector() for a vector in the box, which stands for the point `star`.
template <class T, class R>
unsigned fileSolution(Lattice<T, R>& lattice, const Vector<T>& vector, const Star<T>& star,
                      std::int64_t time, const Judgement& known) {
  const SolutionFile<T>& file = lattice.file;
  FoundVectors<T, R>& found = lattice.found;
  Judgement judged = isAbout(known, star, file.problemNumber()) ? known : nullptr;
  const StarVerdict<T> verdict = judged ? verdictOf<T>(*judged) : file.judge(star);
  if (!verdict.isSolution) return 0;
  const bool hasTargets = lattice.At.rowCount() > 0;
  if (hasTargets && !competesForTarget(lattice, vector, verdict.norms.target))
    return CHECK_SOLUTION | limitBits(lattice, verdict.norms, found.bestTarget == vector);
  const bool isBest = hasTargets && (!found.bestTarget.isSet() ||
                                     verdict.norms.target < found.bestTarget.targetNorm);
  const bool isNew = !found.solutionIndex.contains(found.solutions, vector);
  if (isBest || isNew) {
    if (!judged) judged = judgedStar(star, verdict, file.problemNumber(), ++found.lastFiled);
    FiledSolution<T> solution = filedVector(vector, verdict);
    solution.time = lattice.discoveryTime(time);
    solution.judged = std::move(judged);
    if (isBest) found.bestTarget = solution;
    if (isNew) append(found.solutions, std::move(solution));
  }
  return CHECK_SOLUTION | (isNew ? CHECK_STORED : 0U) | limitBits(lattice, verdict.norms, true);
}

/// checkSolution() without files and reports. `known` is an earlier verdict on the vector, or
/// null.
template <class T, class R>
unsigned checkVector(Lattice<T, R>& lattice, const Vector<T>& vector, Space space,
                     std::int64_t time, const Judgement& known) {
  const CoordinateFrame<T>& frame = lattice.frame;
  if (frame.latticeKind == LatticeKind::none)
    fail("checkSolution: You should set the check vectors!");
  if (vector.dimension() == 0) return 0;
  Vector<T> raw = lattice.oriented(vector, space);
  std::optional<PointImage<T>> mapped = imageOfPoint(lattice, raw);
  if (!mapped || !isImage(lattice, raw, mapped->image, Match::tolerant)) return 0;
  if (lattice.deviationCount > 0 && frame.hasLastInBox(raw[lattice.basis.m]))
    raw = std::move(mapped->image);
  // In the equation lattice no solution is filed; as best vector it is kept for the full lattice.
  if (!frame.liesInBox(lattice, raw) || frame.latticeKind == LatticeKind::equations) {
    lattice.offerBest(raw, time);
    return 0;
  }
  return mapped->h == T(1) ? fileSolution(lattice, raw, mapped->point, time, known) : 0;
}

}  // namespace latticecheck

template <class T, class R>
unsigned Lattice<T, R>::checkSolution(const Vector<T>& vector, Space space, std::int64_t time,
                                      Announce announce) {
  const unsigned bits = latticecheck::checkVector(*this, vector, space, time, nullptr);
  if (announce == Announce::silent) return bits;
  if ((bits & CHECK_SOLUTION) != 0) writeSolFile(Stars::withSolutions);
  if ((bits & CHECK_LIMIT) != 0) restartHandling(Outcome::finished);
  return bits;
}

template <class T, class R>
void Lattice<T, R>::checkRow(Index k) {
  // A second check of an unchanged row can't gain anything.
  if (basis.markChecked(k)) return;
  if (found.shortVectors.mayTake(basis.B()[k])) found.shortVectors.offer(backMap(basis.B()[k]));
  if (frame.latticeKind != LatticeKind::none && isHopeless(basis.B()[k])) return;
  checkSolution(basis.B()[k], Space::working, 0, Announce::full);
}

template <class T, class R>
bool Lattice<T, R>::isHopeless(const Vector<T>& vector) const {
  // The translation doesn't change the last coordinate.
  const Index m = basis.m;
  const T size = NumberTraits<T>::absolute(vector.element(m));
  const T last = basis.homScaled > T() ? size : negated(size);
  const bool fits = frame.l[m] * basis.scale[m] <= last && last <= frame.r[m] * basis.scale[m];
  return !fits && latticecheck::isInSafeRange(basis, vector);
}

template <class T, class R>
Vector<T> Lattice<T, R>::oriented(const Vector<T>& vector, Space space) const {
  const T& hom = space == Space::working ? basis.homScaled : this->homValue;
  const T& last = vector.element(basis.m);
  const bool turns = hom > T() ? last <= T() : last >= T();
  Vector<T> result(vector);
  if (turns)
    for (T& entry : result) entry = negated(entry);
  return space == Space::working ? backMap(result) : result;
}

template <class T, class R>
bool Lattice<T, R>::isConsistent(const Vector<T>& vector, Match match) const {
  const auto mapped = latticecheck::imageOfPoint(*this, vector);
  return mapped && latticecheck::isImage(*this, vector, mapped->image, match);
}

template <class T, class R>
std::optional<Star<T>> Lattice<T, R>::starOf(const Vector<T>& raw) const {
  std::optional<Star<T>> star(std::in_place);
  const T h = lat2opt(raw, *star, Constants::insert, Slacks::omit, Orientation::either);
  if (!(h == T(1))) star.reset();
  return star;
}

template <class T, class R>
bool Lattice<T, R>::isSatisfied() const {
  return latticecheck::hasEnough(*this) ||
         std::any_of(found.solutions.begin(), found.solutions.end(),
                     [this](const FiledSolution<T>& solution) {
                       return latticecheck::meetsGoal(*this, solution.targetNorm,
                                                      solution.slackNorm);
                     });
}

template <class T, class R>
bool Lattice<T, R>::meetsNorms(const Star<QQ>& star) const {
  using Exact = NumberConversion<QQ, T>;
  return file.problem().dt.isSet() && (star.targetNorm <= Exact::convert(params.tnorm.get()) ||
                                       star.slackNorm <= Exact::convert(params.snorm.get()));
}

}  // namespace starsift
