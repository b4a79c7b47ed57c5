#include "models/record/NumberList.h"

#include <optional>

#include "numbers/QQDecimal.h"

namespace starsift {

namespace {

constexpr std::int64_t placesRange = 32;
/// Instead of decimal places.
constexpr std::int64_t isOther = placesRange - 1;
constexpr std::int64_t digitsEnd = (std::int64_t{1} << 62) / placesRange;

}  // namespace

QQ NumberList::operator[](std::size_t index) const {
  const std::int64_t places = words_[index] & (placesRange - 1);
  const std::int64_t digits = (words_[index] - places) / placesRange;
  if (places == 0) return {digits};
  if (places == isOther) return others_[static_cast<std::size_t>(digits)];
  return decimal(digits, static_cast<int>(places));
}

std::int64_t NumberList::wordOf(const QQ& value) {
  const std::optional<ShortDecimal> number = shortDecimal(value);
  if (number && number->digits > -digitsEnd && number->digits < digitsEnd)
    return number->digits * placesRange + number->places;
  others_.push_back(value);
  return static_cast<std::int64_t>(others_.size() - 1) * placesRange + isOther;
}

}  // namespace starsift
