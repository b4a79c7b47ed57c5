// The linear relaxation of a coset: its coefficients may be any rationals.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <vector>

#include "algorithms/programs/ExactSimplex.h"
#include "search/decide/IntegerProblem.h"
#include "search/enumeration/BoxCoset.h"

namespace starsift {

/// start + sum over i of c_i * steps[i], which has to lie in a range.
struct Coordinate {
  std::vector<ZZ> steps;
  ZZ start;
  IntegerRange range;
};

/// The coordinates of a coset with its box.
std::vector<Coordinate> coordinatesOf(const BoxCoset& coset);

/// Exact answers about all rational points within the ranges of the coordinates.
class Relaxation {
 public:
  /// `rank` is the number of coefficients. mayGoOn() is called before each step.
  Relaxation(std::size_t rank, const std::vector<Coordinate>& coordinates,
             ExactSimplex::MayGoOn mayGoOn);

  /// To be called first: reached, infeasible or stopped.
  SimplexEnd makeFeasible() { return simplex_.makeFeasible(); }

  struct End {
    SimplexEnd end;
    /// If reached: the coordinate has no value beyond.
    ZZ value;
  };
  /// The least integer of coordinate j that isn't excluded, or the greatest one.
  End least(std::size_t j);
  End greatest(std::size_t j);
  /// After unbounded: a direction in all coordinates, as integers without a common factor.
  std::vector<ZZ> direction() const;

 private:
  End extreme(std::size_t j, int sign);

  std::vector<ZZ> starts_;
  ExactSimplex simplex_;
};

enum class Closing {
  /// All ranges are finite.
  closed,
  /// There is no point.
  infeasible,
  /// A range has no end.
  open,
  stopped
};

/// Gives the coordinates without finite range the ends that the others imply.
Closing closeRanges(std::size_t rank, std::vector<Coordinate>& coordinates,
                    const ExactSimplex::MayGoOn& mayGoOn);

}  // namespace starsift
