#include "algorithms/exact/IntegerRow.h"

#include <algorithm>

#include "numbers/Conversion.h"

namespace starsift {

namespace {

/// The numbers times the least common multiple of their denominators.
std::vector<ZZ> integers(const std::vector<QQ>& numbers) {
  ZZ scale = ZZ::one();
  for (const QQ& number : numbers)
    if (!number.isInteger()) scale = lcm(scale, number.nenner());
  std::vector<ZZ> result;
  result.reserve(numbers.size());
  for (const QQ& number : numbers) {
    ZZ& entry = result.emplace_back(number.numerator());
    if (scale != ZZ::one()) entry *= exactQuotient(scale, number.nenner());
  }
  return result;
}

/// The greatest common divisor with the sign of the first entry that isn't 0; 0
/// if all entries are.
ZZ signedContent(const std::vector<ZZ>& entries) {
  ZZ content;
  bool isPositive = true;
  for (const ZZ& entry : entries) {
    if (entry.isZero()) continue;
    if (content.isZero()) isPositive = entry.sign();
    content = gcd(content, abs(entry));
    if (content == ZZ::one()) break;
  }
  return isPositive ? content : -content;
}

bool fitsMachine(const ZZ& value) {
  return mpz_fits_slong_p(value.get()) != 0;
}

}  // namespace

template <class T>
IntegerRow::IntegerRow(const Vector<T>& row) {
  std::vector<QQ> numbers;
  numbers.reserve(static_cast<std::size_t>(row.dimension()));
  for (const T& entry : row) numbers.push_back(NumberConversion<QQ, T>::convert(entry));
  big_ = integers(numbers);
  const ZZ content = signedContent(big_);
  if (content != ZZ::one() && !content.isZero())
    for (ZZ& entry : big_) entry = exactQuotient(entry, content);
  if (!std::all_of(big_.begin(), big_.end(), fitsMachine)) return;
  small_.reserve(big_.size());
  for (const ZZ& entry : big_) small_.push_back(mpz_get_si(entry.get()));
  big_ = {};
}

template IntegerRow::IntegerRow(const Vector<long double>&);
template IntegerRow::IntegerRow(const Vector<QQ>&);

QQ factorOf(const Vector<QQ>& row, const IntegerRow& line) {
  Index j = 1;
  while (row[j].isZero()) ++j;
  return row[j] / QQ(line.entry(static_cast<std::size_t>(j - 1)));
}

bool IntegerRow::isZero() const {
  // A big entry isn't 0.
  return isSmall() &&
         std::all_of(small_.begin(), small_.end(), [](std::int64_t entry) { return entry == 0; });
}

void IntegerRow::addProduct(ZZ& sum, const ZZ& factor, std::size_t column) const {
  if (!isSmall()) {
    mpz_addmul(sum.get(), factor.get(), big_[column].get());
  } else if (small_[column] >= 0) {
    mpz_addmul_ui(sum.get(), factor.get(), static_cast<unsigned long>(small_[column]));
  } else {
    // The negation of the least machine integer overflows; as unsigned it is its magnitude.
    mpz_submul_ui(sum.get(), factor.get(), 0UL - static_cast<unsigned long>(small_[column]));
  }
}

}  // namespace starsift
