// Lattice: is a vector a solution? Every vector that a reduction touches is checked, so nearly
// all of them are rejected by one look at the last coordinate.
#pragma once

#include <algorithm>
#include <optional>
#include <utility>

#include "lattice/Lattice.h"
#include "problem/Rows.h"
#include "stars/StarCheck.h"

namespace starsift {

namespace latticecheck {

/// All entries of a vector of working space are in the range in which T is safe, and so they
/// are in raw space.
template <class T, class R>
bool isInSafeRange(const Basis<T, R>& basis, const Vector<T>& vector) {
  if constexpr (NumberTraits<T>::exact) return true;
  if (basis.isTranslated) return false;
  for (Index i = 1; i <= basis.m; ++i)
    if (!(NumberTraits<T>::absolute(vector[i]) <= T(safeBound)) || basis.scale[i] < T(1))
      return false;
  return true;
}

/// The image of the point that a raw vector stands for; nothing if the point violates a
/// congruence. Of a consistent vector it is the one with one deviation of each pair at 0: any
/// amount added to both is as consistent, but out of the box where it is negative, and another
/// solution for the same point where it isn't.
template <class T, class R>
std::optional<Vector<T>> imageOfPoint(const Lattice<T, R>& lattice, const Vector<T>& vector) {
  Vector<T> x;
  Vector<T> image;
  try {
    const T h = lattice.lat2opt(vector, x, Constants::insert, Slacks::omit, Orientation::given);
    lattice.opt2lat(x, image, Space::raw, h);
  } catch (const ModuloException&) {
    return std::nullopt;
  }
  return image;
}

/// isConsistent() of a raw vector whose point has this image.
template <class T, class R>
bool isImage(const Lattice<T, R>& lattice, const Vector<T>& vector, const Vector<T>& image,
             bool exact) {
  const Vector<T> rest = image - vector;
  const auto isZero = [exact](const T& entry) {
    return exact ? entry == T() : NumberTraits<T>::isZero(entry);
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
  return lattice.params.sol > 0 && lattice.found.solutions.dimension() >= lattice.params.sol;
}

/// A solution with these norms ends the search; none does in a problem without targets.
template <class T, class R>
bool meetsGoal(const Lattice<T, R>& lattice, const T& targetNorm, const T& slackNorm) {
  return lattice.At.rowCount() > 0 &&
         (targetNorm <= lattice.params.tnorm || slackNorm <= lattice.params.snorm);
}

/// CHECK_LIMIT or 0, after a solution with these norms that is filed or not.
template <class T, class R>
unsigned limitBits(const Lattice<T, R>& lattice, const Norms<T>& norms, bool isFiled) {
  const bool ends =
      hasEnough(lattice) || (isFiled && meetsGoal(lattice, norms.target, norms.slack));
  return ends ? CHECK_LIMIT : 0;
}

/// Is the vector better than the best target, which it then becomes, or as good? Without a best
/// target it is.
template <class T, class R>
bool competesForTarget(Lattice<T, R>& lattice, const Vector<T>& vector,
                       const StarVerdict<T>& verdict, std::int64_t time) {
  TargetVector<T>& best = lattice.found.bestTarget;
  const bool isFirst = !best.isSet();
  if (!isFirst && best == vector) return false;
  // Stored vectors were good enough when they came.
  if (!isFirst && !lattice.run.restoring && verdict.norms.target > best.targetNorm) return false;
  if (isFirst || verdict.norms.target < best.targetNorm) {
    static_cast<Vector<T>&>(best) = vector;
    best.time = lattice.discoveryTime(time);
    best.targetValues = verdict.targetValues;
    best.targetNorm = verdict.norms.target;
    best.slackNorm = verdict.norms.slack;
  }
  return true;
}

/// checkSolution() of a vector in the box, whose point is judged by the problem as read.
template <class T, class R>
unsigned fileSolution(Lattice<T, R>& lattice, const Vector<T>& vector, std::int64_t time) {
  const std::optional<Star<T>> star = lattice.starOf(vector);
  if (!star) return 0;
  const StarVerdict<T> verdict = StarChecker<T>(lattice.problemAsRead()).judge(*star);
  if (!verdict.isSolution) return 0;
  FoundVectors<T, R>& found = lattice.found;
  if (lattice.At.rowCount() > 0 && !competesForTarget(lattice, vector, verdict, time))
    return CHECK_SOLUTION | limitBits(lattice, verdict.norms, found.bestTarget == vector);
  if (found.solutionIndex.contains(found.solutions, vector))
    return CHECK_SOLUTION | limitBits(lattice, verdict.norms, true);
  Star<T> solution;
  static_cast<Vector<T>&>(solution) = vector;
  solution.time = lattice.discoveryTime(time);
  solution.targetNorm = verdict.norms.target;
  solution.slackNorm = verdict.norms.slack;
  append(found.solutions, std::move(solution));
  return CHECK_SOLUTION | CHECK_STORED | limitBits(lattice, verdict.norms, true);
}

}  // namespace latticecheck

template <class T, class R>
unsigned Lattice<T, R>::checkSolution(const Vector<T>& vector, Space space, std::int64_t time,
                                      Announce announce) {
  if (frame.latticeKind == LatticeKind::none)
    fail("checkSolution: You should set the check vectors!");
  if (vector.dimension() == 0) return 0;
  Vector<T> raw = oriented(vector, space);
  std::optional<Vector<T>> image = latticecheck::imageOfPoint(*this, raw);
  if (!image || !latticecheck::isImage(*this, raw, *image, false)) return 0;
  if (this->deviationCount > 0 && frame.hasLastInBox(raw[basis.m])) raw = std::move(*image);
  // In the equation lattice nothing is filed yet; as best vector it comes along to the full one.
  if (!frame.liesInBox(*this, raw) || frame.latticeKind == LatticeKind::equations) {
    offerBest(raw, time);
    return 0;
  }
  const unsigned bits = latticecheck::fileSolution(*this, raw, time);
  if (announce == Announce::silent) return bits;
  if ((bits & CHECK_SOLUTION) != 0) writeSolFile(false);
  if ((bits & CHECK_LIMIT) != 0) restartHandling(true);
  return bits;
}

template <class T, class R>
void Lattice<T, R>::checkRow(Index k) {
  // What a vector didn't gain when it came it doesn't gain later.
  if (basis.markChecked(k)) return;
  if (frame.latticeKind != LatticeKind::none && isHopeless(basis.B()[k])) return;
  checkSolution(basis.B()[k], Space::working, 0, Announce::full);
}

template <class T, class R>
bool Lattice<T, R>::isHopeless(const Vector<T>& vector) const {
  // The translation leaves the last coordinate alone.
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
bool Lattice<T, R>::isConsistent(const Vector<T>& vector, bool exact) const {
  const std::optional<Vector<T>> image = latticecheck::imageOfPoint(*this, vector);
  return image && latticecheck::isImage(*this, vector, *image, exact);
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
         std::any_of(
             found.solutions.begin(), found.solutions.end(), [this](const Star<T>& solution) {
               return latticecheck::meetsGoal(*this, solution.targetNorm, solution.slackNorm);
             });
}

}  // namespace starsift
