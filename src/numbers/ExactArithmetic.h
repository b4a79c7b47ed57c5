// Arithmetic without rounding over either number type: a result is exact or the
// operation throws.
#pragma once

#include "numbers/Conversion.h"
#include "system/Exceptions.h"

namespace starsift {

/// Specialisations define these static functions; operands are finite except `sum`:
///
///   T product(a, b)                  a * b
///   T quotient(a, b)                 a / b, b not 0
///   void addProduct(sum, a, b)       sum += a * b; an infinite sum is unchanged
///   void subtractProduct(sum, a, b)  sum -= a * b; an infinite sum is unchanged
///   T roundedUp(a), roundedDown(a)   the least integer >= a, the greatest <= a
///   T rounded(a)                     the nearest integer, halves away from 0
///   T denominator(a)                 the least integer q > 0 such that q * a is one
///   T powerOfTen(exponent)           exponent a non-negative integer
///
/// Over long double a number means the decimal that fromDbl() returns: 0.1 is a tenth,
/// and 10 times 0.1 is 1. Integers are computed in long double if the result is below
/// 2^62, all else in QQ; a result that isn't exact in long double throws a
/// PrecisionException. Over QQ nothing throws; an exponent above 100000 is fatal, "QQ:
/// exponent out of range".
template <class T>
struct ExactArithmetic;

template <>
struct ExactArithmetic<QQ> {
  static QQ product(const QQ& a, const QQ& b) { return a * b; }
  static QQ quotient(const QQ& a, const QQ& b) { return a / b; }
  static void addProduct(QQ& sum, const QQ& a, const QQ& b) { starsift::addProduct(sum, a, b); }
  static void subtractProduct(QQ& sum, const QQ& a, const QQ& b) {
    starsift::subtractProduct(sum, a, b);
  }
  static QQ roundedUp(const QQ& a) { return ceil(a); }
  static QQ roundedDown(const QQ& a) { return floor(a); }
  static QQ rounded(const QQ& a);
  static QQ denominator(const QQ& a) { return a.isInteger() ? QQ::one() : a.denominator(); }
  static QQ powerOfTen(const QQ& exponent);
};

template <>
struct ExactArithmetic<dbl_t> {
  static dbl_t product(dbl_t a, dbl_t b);
  static dbl_t quotient(dbl_t a, dbl_t b);
  static void addProduct(dbl_t& sum, dbl_t a, dbl_t b) { subtractProduct(sum, -a, b); }
  static void subtractProduct(dbl_t& sum, dbl_t a, dbl_t b);
  static dbl_t roundedUp(dbl_t a);
  static dbl_t roundedDown(dbl_t a);
  static dbl_t rounded(dbl_t a);
  /// Rounded to nearest: a denominator that isn't exact is above 10^18 and fails any
  /// overflow check.
  static dbl_t denominator(dbl_t a);
  static dbl_t powerOfTen(dbl_t exponent);
};

/// True for 0, 1, 2, ...
template <class T>
bool isNonNegativeInteger(const T& value) {
  return !NumberTraits<T>::isInfinite(value) && value >= T() &&
         ExactArithmetic<T>::denominator(value) == T(1);
}

/// Returns `value` if it is in the safe range of T. Otherwise throws a
/// PrecisionException with `text`, or FatalPrecisionException (see NumberTraits).
template <class T>
const T& checkedRange(const T& value, const char* text) {
  if (NumberTraits<T>::overflowCheck(value)) throw PrecisionException(text);
  return value;
}

}  // namespace starsift
