#include "numbers/ExactArithmetic.h"

#include <cmath>

#include "numbers/QQFunctions.h"
#include "system/Exceptions.h"
#include "system/Failure.h"

namespace starsift {

namespace {

/// Sums and products of integers are exact if operands and results are below this
/// magnitude.
constexpr dbl_t integerLimit = static_cast<dbl_t>(std::int64_t{1} << 62);

bool isInteger(dbl_t a) {
  std::int64_t integer = 0;
  return NumberTraits<dbl_t>::toInteger(a, integer);
}

/// Both are integers, and b divides a.
bool isMultiple(dbl_t a, dbl_t b) {
  std::int64_t dividend = 0;
  std::int64_t divisor = 0;
  return NumberTraits<dbl_t>::toInteger(a, dividend) &&
         NumberTraits<dbl_t>::toInteger(b, divisor) && divisor > 0 && dividend % divisor == 0;
}

dbl_t strictly(const QQ& value) {
  return NumberConversion<dbl_t, QQ>::convert(value);
}

}  // namespace

QQ ExactArithmetic<QQ>::rounded(const QQ& a) {
  if (a.isInteger()) return a;
  static const QQ half(1, 2);
  return a < QQ() ? -floor(half - a) : floor(half + a);
}

QQ ExactArithmetic<QQ>::powerOfTen(const QQ& exponent) {
  static const QQ largest(100'000);
  if (exponent > largest) fail("QQ: exponent out of range");
  return pow(QQ::ten(), exponent);
}

dbl_t ExactArithmetic<dbl_t>::product(dbl_t a, dbl_t b) {
  if (isInteger(a) && isInteger(b)) {
    const dbl_t result = a * b;
    if (std::fabs(result) < integerLimit) return result;
  }
  return strictly(fromDbl(a) * fromDbl(b));
}

dbl_t ExactArithmetic<dbl_t>::quotient(dbl_t a, dbl_t b) {
  if (isMultiple(a, std::fabs(b))) return a / b;
  return strictly(fromDbl(a) / fromDbl(b));
}

void ExactArithmetic<dbl_t>::subtractProduct(dbl_t& sum, dbl_t a, dbl_t b) {
  if (std::isinf(sum)) return;
  if (isInteger(sum) && isInteger(a) && isInteger(b)) {
    const dbl_t product = a * b;
    const dbl_t result = sum - product;
    if (std::fabs(product) < integerLimit && std::fabs(result) < integerLimit) {
      sum = result;
      return;
    }
  }
  sum = strictly(fromDbl(sum) - fromDbl(a) * fromDbl(b));
}

dbl_t ExactArithmetic<dbl_t>::roundedUp(dbl_t a) {
  // std::ceil() returns -0 between -1 and 0.
  return std::ceil(a) + 0.0L;
}

dbl_t ExactArithmetic<dbl_t>::roundedDown(dbl_t a) {
  return std::floor(a);
}

dbl_t ExactArithmetic<dbl_t>::rounded(dbl_t a) {
  // std::round() returns -0 between -1/2 and 0.
  return std::round(a) + 0.0L;
}

dbl_t ExactArithmetic<dbl_t>::denominator(dbl_t a) {
  return isInteger(a) ? 1 : toDbl(fromDbl(a).denominator(), false);
}

dbl_t ExactArithmetic<dbl_t>::powerOfTen(dbl_t exponent) {
  return strictly(ExactArithmetic<QQ>::powerOfTen(fromDbl(exponent)));
}

}  // namespace starsift
