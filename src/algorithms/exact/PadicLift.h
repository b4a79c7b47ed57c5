// Linear systems over the integers, solved exactly by lifting a solution modulo a
// prime: J. D. Dixon, Numer. Math. 40 (1982).
//
// All coefficients have one denominator, and their size determines how many digits
// are needed: short coefficients cost few steps, the longest possible ones as
// many as Cramer's rule and Hadamard's bound require.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

#include "algorithms/exact/ModularElimination.h"

namespace starsift {

/// Independent rows and their pivot block A, k rows times k pivot columns, prepared
/// for any number of systems c * A == b.
class PivotBlock {
 public:
  /// Keeps references to `rows`. `split` is the result of splitRows() for them over `field`.
  PivotBlock(std::span<const IntegerRow> rows, const ModularSplit& split, const PrimeField& field);

  const PrimeField& field() const { return field_; }
  std::size_t order() const { return kept_.size(); }
  /// Kept row i, 0-based.
  const IntegerRow& row(std::size_t i) const { return *kept_[i]; }

  /// The entries of a row in the pivot columns.
  std::vector<ZZ> pivotEntries(const IntegerRow& row) const;

  /// Number of digits that always determines the coefficients of `row`.
  std::size_t sufficientDigits(const IntegerRow& row) const;

  /// b * A^-1 modulo the prime.
  std::vector<std::uint32_t> solveModulo(std::span<const ZZ> b) const;

  /// b := (b - c * A) / prime, which the prime must divide.
  void divideOut(std::vector<ZZ>& b, std::span<const std::uint32_t> c) const;

 private:
  void keepBlock();

  PrimeField field_;
  std::vector<const IntegerRow*> kept_;
  std::vector<std::size_t> pivots_;
  ModularMatrix inverse_;
  /// The entries of the small rows column by column; zeros for big rows.
  std::vector<std::vector<std::int64_t>> smallColumns_;
  /// Big rows among the kept rows, and their entries in the pivot columns.
  std::vector<std::size_t> bigRows_;
  std::vector<std::vector<ZZ>> bigEntries_;
  /// |det A| <= 2^determinantBits_.
  std::size_t determinantBits_ = 0;
};

/// Rationals over one denominator, which is positive.
struct Coefficients {
  std::vector<ZZ> numerators;
  ZZ denominator;
};

/// The coefficients of one row over the kept rows, digit by digit.
class PadicLift {
 public:
  /// Keeps a reference to `block`.
  PadicLift(const PivotBlock& block, const IntegerRow& row);

  /// Computes further digits until there are `digits` of them.
  void liftTo(std::size_t digits);

  /// The common denominator of the rationals with these digits whose numerators and
  /// denominators are much shorter than random ones would be, if there are any. From
  /// sufficientDigits() on it is the denominator of the solution; before that it is a guess.
  std::optional<ZZ> denominator() const;

  /// The numerators over `denominator`, which is positive, with these digits, if all are
  /// much shorter than random ones would be. A guess as long as the true numerators might be
  /// longer than that. Half the digits are enough if the denominator is known.
  std::optional<Coefficients> over(const ZZ& denominator) const;

 private:
  /// Coefficient i modulo modulus().
  ZZ value(std::size_t i) const;
  /// The prime to the power of the number of digits.
  ZZ modulus() const;

  const PivotBlock* block_;
  /// The remaining right-hand side.
  std::vector<ZZ> residual_;
  /// Digits, lowest first; each element holds one digit of every coefficient.
  std::vector<std::vector<std::uint32_t>> digits_;
};

}  // namespace starsift
