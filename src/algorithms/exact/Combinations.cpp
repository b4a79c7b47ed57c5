#include "algorithms/exact/Combinations.h"

#include <algorithm>

namespace starsift {

namespace {

/// Columns that are checked together: those of one cache line in a row.
constexpr std::size_t columnsAtOnce = 8;

/// coefficients * kept rows == row in the columns from `first` to before `last`.
bool combinesIn(const PivotBlock& block, const Coefficients& coefficients, const IntegerRow& row,
                std::size_t first, std::size_t last) {
  const ZZ minusDenominator = -coefficients.denominator;
  std::vector<ZZ> sums(last - first);
  for (std::size_t j = first; j < last; ++j) row.addProduct(sums[j - first], minusDenominator, j);
  for (std::size_t i = 0; i < block.order(); ++i) {
    const ZZ& factor = coefficients.numerators[i];
    if (factor.isZero()) continue;
    for (std::size_t j = first; j < last; ++j) block.row(i).addProduct(sums[j - first], factor, j);
  }
  return std::all_of(sums.begin(), sums.end(), [](const ZZ& sum) { return sum.isZero(); });
}

bool combines(const PivotBlock& block, const Coefficients& coefficients, const IntegerRow& row,
              std::size_t columns) {
  for (std::size_t first = 0; first < columns; first += columnsAtOnce)
    if (!combinesIn(block, coefficients, row, first, std::min(first + columnsAtOnce, columns)))
      return false;
  return true;
}

}  // namespace

std::optional<Coefficients> Combinations::findAbove(std::size_t above, const IntegerRow& row) {
  std::optional<Coefficients> coefficients = find(row);
  if (!coefficients) return std::nullopt;
  const auto below = coefficients->numerators.begin() + static_cast<std::ptrdiff_t>(above);
  if (!std::all_of(below, coefficients->numerators.end(),
                   [](const ZZ& numerator) { return numerator.isZero(); }))
    return std::nullopt;
  return coefficients;
}

std::optional<Coefficients> Combinations::find(const IntegerRow& row) {
  PadicLift lift(block_, row);
  const std::size_t maxDigits = block_.sufficientDigits(row);
  // A guess that fails costs far less than an eighth of the digits.
  for (std::size_t digits = 1;; digits = std::min(digits + digits / 8 + 1, maxDigits)) {
    lift.liftTo(digits);
    std::optional<Coefficients> coefficients = proven(lift.over(denominator_), row);
    if (coefficients) return coefficients;
    if (const std::optional<ZZ> denominator = lift.denominator())
      coefficients = proven(lift.over(*denominator), row);
    if (coefficients) {
      denominator_ = lcm(denominator_, coefficients->denominator);
      return coefficients;
    }
    if (digits == maxDigits) return std::nullopt;
  }
}

std::optional<Coefficients> Combinations::proven(std::optional<Coefficients> guess,
                                                 const IntegerRow& row) const {
  if (guess && !combines(block_, *guess, row, columns_)) guess.reset();
  return guess;
}

}  // namespace starsift
