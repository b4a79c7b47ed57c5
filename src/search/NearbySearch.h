// Vectors that a pass has not met, but come next to those that it has.
#pragma once

#include <optional>

#include "lattice/Lattice.h"

namespace starsift {

/// Looks for solutions beside the vectors of a basis. Goals to reach and a box far from 0 keep
/// a reduced basis away from solutions that are a step from it.
///
/// Walks lead over single vectors of the basis and, while these are few, over sums and
/// differences of two of them. Each vector on the way is one of the lattice, so it counts as if
/// a pass had met it; the basis stays as it is. Vectors are raw here.
template <class T, class R>
class NearbySearch {
 public:
  explicit NearbySearch(Lattice<T, R>& lattice) : lattice_(lattice) {}

  /// After a pass over the full lattice of a problem with variables; nothing for any other.
  void run();

 private:
  /// Checks the points within the bounds of the variables next to the best vector and to those
  /// of the basis.
  void checkNearMisses();
  /// Walks into the box while there is no solution, and from there to better ones; without
  /// targets to further ones where several are asked for.
  void walk();
  /// A vector with its variables moved inside their bounds, if that is one of the lattice and
  /// lies in the box.
  std::optional<Vector<T>> movedInside(const Vector<T>& vector) const;
  /// The vectors of the basis, all but the start homogeneous.
  void collectSteps();
  /// Steps and sums and differences of any two.
  void appendPairs();
  bool hasSolution() const;
  /// The parameters ask for more than one solution, by a number or by a limit to their search.
  bool wantsSeveral() const;
  /// The first of the steps that isn't homogeneous, with the last coordinate of a solution.
  Vector<T> start() const;
  /// From an inhomogeneous vector nearer and nearer to the box, as far as that goes; what gets
  /// there is checked.
  Vector<T> walkIntoBox(const Vector<T>& from);
  /// From a vector in the box on to better and better targets.
  void climb(const Vector<T>& from);
  /// From the last solution to further ones.
  void walkOn();
  /// From a vector near to the start, another one after each restart, into the box and on to
  /// better solutions than where it got there.
  void walkFromAnywhere();
  /// checkSolution() of a vector in the box, unless its targets are no better than the best or
  /// the search is over.
  void checkArrival(const Vector<T>& vector);
  /// How far a step may lead: once, or further in each round.
  enum class Stride { single, growing };
  /// Tries the steps that are homogeneous forth and back, one after the other. `move` decides
  /// about the vector ahead. Ends when a round led nowhere, and returns where.
  template <class Move>
  Vector<T> follow(Vector<T> at, Stride stride, Move move);
  /// Takes a step, then one twice as long, and so on, `most` of them, as long as `move` agrees.
  /// True when that led anywhere.
  template <class Move>
  bool advance(Vector<T>& at, Vector<T> step, Index most, Move move);
  /// Tells the observer of a step; false once the search has ended.
  bool notifyStep();
  /// What all targets together try to make large, up to a constant, at an inhomogeneous vector.
  R commonTarget(const Vector<T>& vector) const;
  /// The sum of the amounts by which coordinates leave the check vectors.
  R distanceFromBox(const Vector<T>& vector) const;
  /// A consistent vector without what both deviations of a pair have in common.
  Vector<T> withLeastDeviations(Vector<T> vector) const;

  Lattice<T, R>& lattice_;
  Matrix<T> steps_;
  /// Row of steps_, 0 where all are homogeneous.
  Index start_ = 0;
};

extern template class NearbySearch<long double, long double>;
extern template class NearbySearch<QQ, long double>;

}  // namespace starsift
