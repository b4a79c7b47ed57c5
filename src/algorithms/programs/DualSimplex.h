// Linear programs in floating point: fast, and a guide to proofs.
#pragma once

#include <cstddef>
#include <functional>
#include <vector>

namespace starsift {

/// The least cost * x with x between column bounds and each row * x between row bounds. Bounds may
/// be infinite.
struct LinearProgram {
  struct Entry {
    std::size_t column;
    double value;
  };
  struct Bounds {
    double lower;
    double upper;
  };

  /// One per column.
  std::vector<double> cost;
  std::vector<Bounds> columns;
  std::vector<std::vector<Entry>> rows;
  /// One per row.
  std::vector<Bounds> rowBounds;
};

struct ProgramEnd {
  enum class Kind {
    /// A least point, as far as rounding lets that be known.
    least,
    /// There is no point within the bounds, it seems.
    infeasible,
    /// mayGoOn() ended it, there were too many steps or too small a pivot, or the cost falls
    /// without end, it seems.
    stopped
  };

  Kind kind;
  /// The least point; of no meaning after another end.
  std::vector<double> point;
  /// One per row: cost - sum of multiplier * row is near 0, or pushes a column towards a bound. Any
  /// end gives multipliers by which a bound of the cost can be computed; after infeasible they
  /// belong to a cost of 0, whose bound is positive.
  std::vector<double> multipliers;
};

/// The dual simplex method for variables with two bounds on a full tableau in double, with rows and
/// columns scaled. A step along an edge passes bounds while the dual objective improves: R. Fourer,
/// Notes on the dual simplex method, Northwestern University (1994). Steps take
/// O(rows * columns), less if these are sparse. mayGoOn() is called before each step.
ProgramEnd solveProgram(const LinearProgram& program, const std::function<bool()>& mayGoOn);

}  // namespace starsift
