#include "stars/ExactPoint.h"

#include <algorithm>

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

}  // namespace

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
