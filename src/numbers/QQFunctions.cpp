#include "numbers/QQFunctions.h"

#include <algorithm>
#include <cstdlib>

#include "numbers/QQDecimal.h"
#include "numbers/QQStorage.h"
#include "numbers/Transcendental.h"
#include "system/Failure.h"

namespace starsift {

namespace {

constexpr const char* complexRootText = "QQ: complex roots are not implemented";
constexpr const char* outOfRangeText = "QQ: exponent out of range";

/// Results with more bits than this, in numerator or denominator, are rejected.
constexpr unsigned long resultBits = 1UL << 31;

/// A power is rejected if the magnitude of its natural logarithm is at least this.
constexpr long logarithmBound = 1L << 30;

bool isOdd(const ZZ& value) {
  return mpz_odd_p(value.get()) != 0;
}

bool isNearOne(const QQ& value) {
  return value > QQ(1, 2) && value < QQ(2);
}

/// The natural logarithm of a finite value > 0 with a relative error of few units in
/// the last place. Rounding an argument near 1 would lose the logarithm, so its
/// difference to 1 is computed exactly and rounded.
QQ naturalLogarithm(const QQ& value) {
  return roundedLog(isNearOne(value) ? QQ(1) + roundToFloat(value - QQ(1)) : roundToFloat(value));
}

/// base ^ exponent within 10^-30 relative; base > 0, both finite. 10^-30 are 100 binary
/// digits of 192. The logarithm loses at most 30 before its point; the rest covers
/// the rounding of each step.
QQ approximatePower(const QQ& base, const QQ& exponent) {
  const QQ logarithm = roundToFloat(naturalLogarithm(base) * exponent);
  if (abs(logarithm) >= QQ(logarithmBound)) fail(outOfRangeText);
  return roundedExp(logarithm);
}

/// Stores base ^ exponent and returns true if the base is 10 and the exponent small, or
/// the base is +-1 or 0: these cases need no limit of the exponent.
bool easyPower(const QQ& base, const ZZ& exponent, QQ& result) {
  std::int64_t small = 0;
  if (!base.toInt64(small)) return false;
  if (small == 10 && exponent < ZZ(static_cast<long>(powersOfTen.size()))) {
    result = QQ(powersOfTen[mpz_get_ui(exponent.get())]);
    return true;
  }
  if (small < -1 || small > 1) return false;
  result = small == -1 && !isOdd(exponent) ? QQ(1) : base;
  return true;
}

/// base ^ exponent, base finite, exponent > 0.
QQ integerPower(const QQ& base, const ZZ& exponent) {
  QQ result;
  if (easyPower(base, exponent, result)) return result;
  const QQView view(base);
  const unsigned long size =
      std::max(mpz_sizeinbase(view.numerator(), 2), mpz_sizeinbase(view.denominator(), 2));
  if (exponent > ZZ(resultBits / size)) fail(outOfRangeText);
  const unsigned long power = mpz_get_ui(exponent.get());
  auto* const work = QQStorage::workplace(result);
  mpz_pow_ui(mpq_numref(work), view.numerator(), power);
  mpz_pow_ui(mpq_denref(work), view.denominator(), power);
  QQStorage::finish(result, work);
  return result;
}

/// Stores the n-th root and returns true if it is an integer; value >= 0, n > 0.
bool perfectRoot(ZZ& result, mpz_srcptr value, const ZZ& n) {
  if (mpz_cmp_ui(value, 1) <= 0) {
    mpz_set(result.get(), value);
    return true;
  }
  // A root of at least 2 needs more than n bits.
  if (n >= ZZ(mpz_sizeinbase(value, 2))) return false;
  return mpz_root(result.get(), value, mpz_get_ui(n.get())) != 0;
}

/// The real value of base ^ (p / q); base finite, p > 0, q > 0, p / q in lowest terms.
QQ fractionalPower(const QQ& base, const ZZ& p, const ZZ& q) {
  if (!base.sign() && !isOdd(q)) fail(complexRootText);
  const QQ size = abs(base);
  const QQView view(size);
  ZZ numerator;
  ZZ denominator;
  QQ result;
  if (perfectRoot(numerator, view.numerator(), q) &&
      perfectRoot(denominator, view.denominator(), q))
    result = integerPower(QQ(numerator, denominator), p);
  else
    result = approximatePower(size, QQ(p, q));
  if (!base.sign() && isOdd(p)) result.negate();
  return result;
}

/// base ^ (p / q) for an infinite base, p > 0, q > 0.
QQ infinitePower(const QQ& base, const ZZ& p, const ZZ& q) {
  if (!base.sign() && !isOdd(q)) fail(complexRootText);
  QQ result;
  result.setInf(base.sign() || !isOdd(p));
  return result;
}

/// base ^ +infinity: the limit for a base >= 0.
QQ powerToInfinity(const QQ& base) {
  if (!base.sign()) fail(complexRootText);
  if (base == QQ(1)) return base;
  return base < QQ(1) ? QQ() : QQ::infinity();
}

/// Rejects arguments outside the domain of log2() and log(); false for +infinity.
bool checkLogarithm(const QQ& value, const char* ofMinusInfinity) {
  if (value.isInf() && !value.sign()) fail(ofMinusInfinity);
  if (value <= QQ()) fail("log2(x), x <= 0 is not implemented / defined");
  return !value.isInf();
}

}  // namespace

QQ pow(const QQ& base, const QQ& exponent) {
  if (exponent.isZero()) return QQ(1);
  if (!exponent.sign()) return QQ(1) / pow(base, -exponent);
  if (exponent.isInf()) return powerToInfinity(base);
  const ZZ p = exponent.numerator();
  if (base.isInf()) return infinitePower(base, p, exponent.nenner());
  if (exponent.isInteger()) return integerPower(base, p);
  return fractionalPower(base, p, exponent.nenner());
}

QQ root(const QQ& value, const ZZ& n) {
  if (n.isZero()) fail("QQ: zero-th roots are not defined");
  if (!n.sign()) {
    if (value.isZero()) fail("QQ: division by zero");
    return QQ(1) / root(value, -n);
  }
  return value.isInf() ? infinitePower(value, ZZ::one(), n) : fractionalPower(value, ZZ::one(), n);
}

QQ log2(const QQ& value) {
  if (!checkLogarithm(value, "log2(-inf) is not implemented / defined")) return value;
  if (!isNearOne(value)) return roundedLog2(roundToFloat(value));
  return roundToFloat(naturalLogarithm(value) / roundedLog(QQ(2)));
}

QQ log(const QQ& value) {
  if (!checkLogarithm(value, "log(-inf) is not implemented / defined")) return value;
  return naturalLogarithm(value);
}

}  // namespace starsift
