// Rows of floating-point numbers as integers over a power of two, for exact inner products.
#pragma once

#include <cstddef>
#include <vector>

#include "numbers/BigFloat.h"
#include "numbers/ZZ.h"

namespace starsift {

/// An integer times a power of two.
struct Dyadic {
  ZZ mantissa;
  int exponent;

  /// Rounded to Real with a relative error below 2^(1 - digits of Real).
  template <class Real>
  Real rounded() const;
  /// An upper bound of the magnitude, larger by at most a part in 500 and 2^-1000; infinite beyond
  /// the range of double.
  double magnitude() const;
};

/// Finite floating-point numbers, exactly.
class DyadicRow {
 public:
  template <class Real>
  explicit DyadicRow(const std::vector<Real>& row);

  /// The exact inner product with a row of integers.
  Dyadic inner(const std::vector<ZZ>& other) const;

 private:
  std::vector<ZZ> mantissas_;
  int exponent_ = 0;
};

/// The nearest number of Real, up to its last bit.
template <class Real>
Real rounded(const BigFloat& value);

/// The integer as Real; false if it is 2^(digits - 3) or more in magnitude, digits those of Real.
template <class Real>
bool exactlyAs(const ZZ& value, Real& result);

}  // namespace starsift
