// The score of a lattice vector, by which candidates are compared.
#pragma once

#include <cstdint>

#include "core/Array.h"
#include "core/NumberTraits.h"
#include "core/Pair.h"
#include "stars/TimeVector.h"

namespace starsift {

/// Whether a score record is filled, and of which kind of vector.
enum class ScoreStatus : std::uint8_t {
  empty = 0,
  /// The last coordinate is not that of a solution.
  homogeneous = 1,
  /// The last coordinate is that of a solution.
  inhomogeneous = 2,
};

/// The score record of a vector; R is the type of all amounts.
template <class R>
struct VectorScore {
  /// Every coordinate lies within its range.
  bool isSolution = false;
  ScoreStatus status = ScoreStatus::empty;
  /// Target norm of the point that a solution stands for; smaller is better.
  R targetValue = R();
  /// Coordinates outside their range with the amount, largest amount first.
  Array<RightOrderPair<Index, R>> deviations;
  /// Amount and coordinate of the first deviation; 0 and 0 without one.
  R firstDeviation = R();
  Index deviationIndex = 0;
  R deviationSum = R();
  R squaredNorm = R();
};

/// True if `a` is the better of the two; amounts within the tolerance of each other count as
/// equal. Records of different status of which one is empty are fatal, "Heuristic deviation is
/// not initialized!".
template <class R>
bool better(const VectorScore<R>& a, const VectorScore<R>& b);

/// True if neither record is better; fatal as better().
template <class R>
bool sameScore(const VectorScore<R>& a, const VectorScore<R>& b);

/// A vector of the heuristic collections, which are ordered by score.
template <class T, class R>
class HeuristicVector : public TimeVector<T> {
 public:
  using TimeVector<T>::TimeVector;

  VectorScore<R> score;
  /// Links of the collection that the vector belongs to; a copy belongs to none.
  HeuristicVector* next = nullptr;
  HeuristicVector* previous = nullptr;
};

template <class T, class R>
bool better(const HeuristicVector<T, R>& a, const HeuristicVector<T, R>& b) {
  return better(a.score, b.score);
}

extern template bool better(const VectorScore<long double>&, const VectorScore<long double>&);
extern template bool sameScore(const VectorScore<long double>&, const VectorScore<long double>&);

}  // namespace starsift
