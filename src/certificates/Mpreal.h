// Floats of arbitrary precision, mpfr::mpreal: the number traits that the containers need,
// and vectors and matrices over them. A default-constructed float has the current default
// precision of its library; sums of products, determinants and results of elimination have
// the precision of their entries, if that is greater.
#pragma once

#include <mpreal.h>

#include "core/Elimination.h"
#include "core/Matrix.h"
#include "core/VectorText.h"

namespace starsift {

/// As for long double, but without overflow: the exponent range is practically unlimited.
template <>
struct NumberTraits<mpfr::mpreal> {
  static mpfr::mpreal infinity() { return mpfr::const_infinity(); }
  static bool isInfinite(const mpfr::mpreal& v) { return mpfr::isinf(v); }
  static mpfr::mpreal absolute(const mpfr::mpreal& v) { return mpfr::abs(v); }
  static const mpfr::mpreal& tolerance();
  static bool isZero(const mpfr::mpreal& v) { return mpfr::abs(v) <= tolerance(); }
  static bool equal(const mpfr::mpreal& a, const mpfr::mpreal& b) {
    return a == b || mpfr::abs(a - b) <= tolerance();
  }
  static void addProduct(mpfr::mpreal& sum, const mpfr::mpreal& a, const mpfr::mpreal& b) {
    const mpfr::mpreal product = a * b;
    widen(sum, product);
    sum += product;
  }
  static void subtractProduct(mpfr::mpreal& sum, const mpfr::mpreal& a, const mpfr::mpreal& b) {
    const mpfr::mpreal product = a * b;
    widen(sum, product);
    sum -= product;
  }
  static void divide(mpfr::mpreal& value, const mpfr::mpreal& divisor) {
    widen(value, divisor);
    value /= divisor;
  }
  static mpfr::mpreal remainder(const mpfr::mpreal& a, const mpfr::mpreal& b) {
    return mpfr::fmod(a, b);
  }
  static bool overflowCheck(const mpfr::mpreal&) { return false; }
  /// Reads a decimal with optional sign, point and exponent, rounded to the default precision.
  template <class Source>
  static bool read(Source& source, mpfr::mpreal& value);
  static void append(std::string& out, const mpfr::mpreal& value, int digits);
  static bool toInteger(const mpfr::mpreal& value, std::int64_t& integer);
  static bool writtenAsInteger(const mpfr::mpreal&, int /*digits*/, std::int64_t&) { return false; }
  static constexpr bool exact = false;
  static constexpr int wholeDigits = 0;  // The precision may be lower than any number of digits.

 private:
  /// Raises the precision of `value` to at least that of `other`; its value is unchanged.
  static void widen(mpfr::mpreal& value, const mpfr::mpreal& other) {
    if (value.get_prec() < other.get_prec()) value.set_prec(other.get_prec());
  }
};

extern template class Vector<mpfr::mpreal>;
extern template class Matrix<mpfr::mpreal>;

extern template Index eliminate(Matrix<mpfr::mpreal>&, Matrix<mpfr::mpreal>&, bool);

}  // namespace starsift
