// Integer rows as rational combinations of others, exactly.
#pragma once

#include <cstddef>
#include <optional>

#include "algorithms/exact/PadicLift.h"

namespace starsift {

/// Proofs that rows are combinations of the kept rows of a block: coefficients are
/// guessed by lifting, with more digits at a time, and verified over all columns.
class Combinations {
 public:
  /// Keeps a reference to `block`, whose rows have `columns` entries.
  Combinations(const PivotBlock& block, std::size_t columns) : block_(block), columns_(columns) {}

  /// The coefficients of the row over all kept rows; empty if it isn't a combination of them.
  std::optional<Coefficients> find(const IntegerRow& row);

  /// The same over the first `above` of the kept rows. Coefficients are unique, so the
  /// result is empty if another kept row has a coefficient other than 0; the coefficients
  /// of the rows from `above` on are zeros.
  std::optional<Coefficients> findAbove(std::size_t above, const IntegerRow& row);

 private:
  std::optional<Coefficients> proven(std::optional<Coefficients> guess,
                                     const IntegerRow& row) const;

  const PivotBlock& block_;
  std::size_t columns_;
  /// Common denominator of all coefficients so far. It divides the determinant of the block,
  /// and long denominators are mostly that determinant, so the next row may well need no other.
  ZZ denominator_ = ZZ::one();
};

}  // namespace starsift
