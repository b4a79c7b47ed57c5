// Vectors of the lattice close to the vectors that a pass has checked.
#pragma once

#include <optional>

#include "lattice/Lattice.h"

namespace starsift {

/// Looks for solutions next to the vectors of a basis. With finite goals, or a box far from 0, a
/// solution can be one step away from a reduced basis and still not be met by the reduction.
///
/// The steps of a walk are the vectors of the basis and, in small dimensions, sums and
/// differences of two of them. Each vector on the way belongs to the lattice and is checked like
/// a vector of a pass; the basis isn't changed. Vectors are raw here.
template <class T, class R>
class NearbySearch {
 public:
  explicit NearbySearch(Lattice<T, R>& lattice) : lattice_(lattice) {}

  /// The search after a pass over the full lattice of a problem with variables; does nothing for
  /// other lattices.
  void run();

 private:
  /// Moves the variables of the best vector and of the basis vectors inside their bounds and
  /// checks the points that result.
  void checkNearMisses();
  /// Walks into the box if there is no solution yet, and from a solution to better ones. Without
  /// targets walks on to further solutions if several were asked for.
  void walk();
  /// The vector with its variables moved inside their bounds, if it belongs to the lattice and
  /// lies in the box.
  std::optional<Vector<T>> movedInside(const Vector<T>& vector) const;
  /// Stores the basis as steps, all but the start made homogeneous.
  void collectSteps();
  /// Appends the sums and differences of any two steps.
  void appendPairs();
  bool hasSolution() const;
  /// The parameters ask for more than one solution: by a number, or without one by a limit to
  /// passes or time.
  bool wantsSeveral() const;
  /// The inhomogeneous step, oriented so that its last coordinate is that of a solution.
  Vector<T> start() const;
  /// Walks from an inhomogeneous vector towards the box while its distance decreases; a vector
  /// in the box is checked. Returns the end of the walk.
  Vector<T> walkIntoBox(const Vector<T>& from);
  /// Walks from a vector in the box to better and better target values.
  void climb(const Vector<T>& from);
  /// Walks from the last solution to further ones.
  void walkOn();
  /// Walks from a random vector near the start, another one after each restart, into the box,
  /// and from there to better target values.
  void walkFromAnywhere();
  /// checkSolution() of a vector in the box, unless its target value is no better than the best
  /// one or the search is over.
  void checkArrival(const Vector<T>& vector);
  /// How often a step is made in a row: once, or up to once more in each round.
  enum class Stride { single, growing };
  /// Tries all homogeneous steps, in both directions. `move` accepts or rejects the next vector.
  /// Ends after a round without a move; returns the last vector.
  template <class Move>
  Vector<T> follow(Vector<T> at, Stride stride, Move move);
  /// Makes a step, then one twice as long, and so on, at most `most` steps, while `move` accepts
  /// them. True if at least one was made.
  template <class Move>
  bool advance(Vector<T>& at, Vector<T> step, Index most, Move move);
  /// The sum of all targets, to be maximised, at an inhomogeneous vector, up to a constant.
  R commonTarget(const Vector<T>& vector) const;
  /// The sum of the amounts by which coordinates leave the check vectors.
  R distanceFromBox(const Vector<T>& vector) const;
  /// A consistent vector with the smaller deviation of each pair subtracted from both.
  Vector<T> withLeastDeviations(Vector<T> vector) const;

  Lattice<T, R>& lattice_;
  Matrix<T> steps_;
  /// Row of steps_; 0 if all are homogeneous.
  Index start_ = 0;
};

extern template class NearbySearch<long double, long double>;
extern template class NearbySearch<QQ, long double>;

}  // namespace starsift
