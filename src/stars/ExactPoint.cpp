#include "stars/ExactPoint.h"

#include <algorithm>
#include <numeric>

#include "numbers/Conversion.h"
#include "stars/CommonScale.h"

namespace starsift {

namespace {

/// The components as rationals; over QQ they are returned as they are.
const Vector<QQ>& rationals(const Vector<QQ>& x, Vector<QQ>& /*storage*/) {
  return x;
}

template <class T>
const Vector<QQ>& rationals(const Vector<T>& x, Vector<QQ>& storage) {
  storage.convertFrom(x, false);
  return storage;
}

constexpr std::uint64_t denominatorLimit = std::uint64_t{1} << 62U;

/// The least common denominator; 0 if it reaches the limit.
std::uint64_t commonDenominator(std::span<const MixedNumber> x) {
  std::uint64_t common = 1;
  for (const MixedNumber& number : x) {
    if (common % number.denominator == 0) continue;
    const UInt128 next =
        static_cast<UInt128>(common) * (number.denominator / std::gcd(common, number.denominator));
    if (next >= denominatorLimit) return 0;
    common = static_cast<std::uint64_t>(next);
  }
  return common;
}

/// The number times `scale`, a multiple of its denominator.
void setScaled(mpz_ptr result, const MixedNumber& number, std::uint64_t scale) {
  const std::uint64_t fraction = number.numerator * (scale / number.denominator);
  mpz_set(result, WideView(number.whole).get());
  if (scale != 1) mpz_mul_ui(result, result, scale);
  if (fraction != 0) mpz_add_ui(result, result, fraction);
  if (number.isNegative) mpz_neg(result, result);
}

}  // namespace

bool ExactPoint::assign(std::span<const MixedNumber> x) {
  becomeSmall();
  isSmall_ = false;
  const std::uint64_t common = commonDenominator(x);
  if (common == 0) return false;
  scaled_.numerators.resize(x.size());
  mpz_set_ui(scaled_.denominator.get(), common);
  for (std::size_t j = 0; j < x.size(); ++j) setScaled(scaled_.numerators[j].get(), x[j], common);
  scaledIsValid_ = true;
  return true;
}

SmallPoint& ExactPoint::becomeSmall() {
  scaledIsValid_ = false;
  rationals_.resize(0, false);
  isSmall_ = true;
  return small_;
}

template <class T>
bool ExactPoint::assign(const Vector<T>& x) {
  becomeSmall();
  isSmall_ = assignSmall(x);
  if (isSmall_) return true;
  for (const T& component : x)
    if (!(NumberTraits<T>::absolute(component) < NumberTraits<T>::infinity())) return false;
  Vector<QQ> storage;
  const Vector<QQ>& components = rationals(x, storage);
  if (!scale(components)) rationals_ = components;
  return true;
}

template <class T>
bool ExactPoint::assignSmall(const Vector<T>& x) {
  small_.components.resize(static_cast<std::size_t>(x.dimension()));
  std::int64_t lowest = 0;
  std::int64_t highest = 0;
  std::int64_t* component = small_.components.data();
  for (const T& value : x) {
    if (!NumberTraits<T>::toInteger(value, *component)) return false;
    lowest = std::min(lowest, *component);
    highest = std::max(highest, *component);
    ++component;
  }
  small_.magnitude = std::max(highest, -lowest);
  return true;
}

bool ExactPoint::scale(const Vector<QQ>& x) {
  std::optional<ZZ> common = commonScale({x.begin(), x.end()}, ZZ::one());
  if (!common) return false;
  scaled_.numerators.resize(static_cast<std::size_t>(x.dimension()));
  ZZ& denominator = scaled_.denominator;
  denominator.swap(*common);
  auto numerator = scaled_.numerators.begin();
  for (const QQ& component : x) {
    *numerator = component.numerator();
    if (component.isInteger())
      *numerator *= denominator;
    else
      *numerator *= exactQuotient(denominator, component.nenner());
    ++numerator;
  }
  scaledIsValid_ = true;
  return true;
}

const ScaledPoint& ExactPoint::scaled() const {
  if (scaledIsValid_) return scaled_;
  scaled_.numerators.resize(small_.components.size());
  std::transform(small_.components.begin(), small_.components.end(), scaled_.numerators.begin(),
                 [](std::int64_t component) { return ZZ(component); });
  mpz_set_ui(scaled_.denominator.get(), 1);
  scaledIsValid_ = true;
  return scaled_;
}

QQ ExactPoint::component(std::size_t index) const {
  if (isSmall_) return {small_.components[index]};
  if (!isScalable()) return rationals_[static_cast<Index>(index) + 1];
  return {scaled_.numerators[index], scaled_.denominator};
}

template bool ExactPoint::assign(const Vector<long double>&);
template bool ExactPoint::assign(const Vector<QQ>&);

}  // namespace starsift
