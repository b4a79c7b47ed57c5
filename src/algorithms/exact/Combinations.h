// Integer rows as rational combinations of others, exactly.
#pragma once

#include <cstddef>
#include <optional>

#include "algorithms/exact/PadicLift.h"

namespace starsift {

/// Proofs that rows are combinations of the kept ones of a block: coefficients are
/// guessed by lifting, more digits at a time, and multiplied out over all columns.
class Combinations {
 public:
  /// Keeps a reference to `block`, whose rows have `columns` entries.
  Combinations(const PivotBlock& block, std::size_t columns) : block_(block), columns_(columns) {}

  /// The coefficients of the row over all kept ones; nothing where it is no combination.
  std::optional<Coefficients> find(const IntegerRow& row);

  /// The same over the first `above` of the kept rows. Coefficients are unique, so there
  /// are none where another kept row takes part; those of the others are zeros.
  std::optional<Coefficients> findAbove(std::size_t above, const IntegerRow& row);

 private:
  std::optional<Coefficients> proven(std::optional<Coefficients> guess,
                                     const IntegerRow& row) const;

  const PivotBlock& block_;
  std::size_t columns_;
  /// Of all coefficients so far. It divides the determinant of the block, and long
  /// denominators are mostly that, so the next row may well need no other one.
  ZZ denominator_ = ZZ::one();
};

}  // namespace starsift
