#include <starsift/starsift.h>

#include "files/PlainText.h"
#include "library/Hosted.h"
#include "library/Inside.h"
#include "models/text/ModelNumber.h"
#include "numbers/Conversion.h"
#include "text/IntegerText.h"

namespace starsift {
inline namespace v1 {

namespace {

QQ parsed(std::string_view text) {
  bool isPositive = false;
  if (isInfinityWord(text, isPositive)) return isPositive ? QQ::infinity() : -QQ::infinity();
  return NumberReader().read(text, 0);
}

}  // namespace

Error::Error(const std::string& message) : std::runtime_error(message) {}
Error::~Error() = default;

Number::Number(std::string_view text)
    : Number(hosted([text] { return Inside::number(parsed(text)); })) {}

Number Number::infinity() {
  Number result;
  result.text_ = "inf";
  return result;
}

Number Number::operator-() const {
  return Inside::number(-Inside::exact(*this));
}

std::string Number::text() const {
  return text_.empty() ? std::to_string(small_) : text_;
}

bool Number::isInteger() const noexcept {
  return !isInfinite() && text_.find('/') == std::string::npos;
}

bool Number::isInfinite() const noexcept {
  return text_.ends_with("inf");
}

std::optional<std::int64_t> Number::toInt64() const noexcept {
  return text_.empty() ? std::optional(small_) : std::nullopt;
}

double Number::toDouble() const {
  return static_cast<double>(toDbl(Inside::exact(*this), false));
}

std::strong_ordering Number::order(const Number& other) const {
  return Inside::exact(*this) <=> Inside::exact(other);
}

QQ Inside::exact(const Number& number) {
  if (const auto small = number.toInt64()) return QQ(static_cast<long>(*small));
  return parsed(number.text_);
}

Number Inside::number(const QQ& value) {
  Number result;
  if (value.toInt64(result.small_)) return result;
  result.text_ = plainText(value);
  const std::optional<std::int64_t> small = parseInteger<std::int64_t>(result.text_);
  if (!small) return result;
  result.small_ = *small;
  result.text_.clear();
  return result;
}

std::vector<Number> Inside::numbers(const Vector<QQ>& values) {
  std::vector<Number> result;
  result.reserve(static_cast<std::size_t>(values.dimension()));
  for (const QQ& value : values) result.push_back(number(value));
  return result;
}

}  // namespace v1
}  // namespace starsift
