#include "stars/ScaledRow.h"

#include <algorithm>
#include <utility>

#include "numbers/Conversion.h"
#include "numbers/WideInt.h"
#include "stars/CommonScale.h"
#include "stars/ProductLimit.h"

namespace starsift {

namespace {

bool fitsMachine(const ZZ& value) {
  return mpz_fits_slong_p(value.get()) != 0;
}

void addWords(ZZ& sum, Int128 words) {
  mpz_add(sum.get(), sum.get(), WideView(words).get());
}

/// The denominator of a sum grows with its length, so adding one term after another
/// would cost the square of the time of adding by halves. Leaves partial sums in `terms`.
QQ sumByHalves(std::vector<QQ>& terms) {
  for (std::size_t distance = 1; distance < terms.size(); distance *= 2)
    for (std::size_t k = 0; k + distance < terms.size(); k += 2 * distance)
      terms[k] += terms[k + distance];
  return terms.empty() ? QQ() : terms.front();
}

}  // namespace

template <class T>
ScaledRow::ScaledRow(const Vector<T>& row, ZZ multiple) : scale_(std::move(multiple)) {
  std::vector<QQ> values;
  for (Index j = 1; j <= row.dimension(); ++j) {
    if (row[j] == T()) continue;
    columns_.push_back(static_cast<std::size_t>(j - 1));
    values.push_back(NumberConversion<QQ, T>::convert(row[j]));
  }
  if (std::optional<ZZ> scale = commonScale(values, scale_)) {
    scale_.swap(*scale);
    keepIntegers(values);
  } else {
    for (QQ& value : values) value *= QQ(scale_);
    rationals_ = std::move(values);
  }
}

template ScaledRow::ScaledRow(const Vector<long double>&, ZZ);
template ScaledRow::ScaledRow(const Vector<QQ>&, ZZ);

void ScaledRow::keepIntegers(const std::vector<QQ>& values) {
  entries_.reserve(values.size());
  for (const QQ& value : values) {
    ZZ& entry = entries_.emplace_back(value.numerator());
    if (value.isInteger())
      entry *= scale_;
    else
      entry *= exactQuotient(scale_, value.nenner());
  }
  keepSmall();
}

void ScaledRow::keepSmall() {
  if (fitsMachine(scale_)) smallScale_ = mpz_get_si(scale_.get());
  ZZ norm;
  for (const ZZ& entry : entries_) norm += abs(entry);
  if (!fitsMachine(norm)) return;
  for (const ZZ& entry : entries_) smallEntries_.push_back(mpz_get_si(entry.get()));
  largestPoint_ = (productLimit - 1) / std::max(mpz_get_si(norm.get()), 1L);
}

QQ ScaledRow::product(const ExactPoint& point) const {
  if (point.isSmall()) {
    const std::optional<std::int64_t> product = times(point.small());
    if (product) return unscaled(*product);
  }
  if (!isInteger() || !point.isScalable()) return rationalTimes(point) / QQ(scale_);
  ZZ& product = point.product();
  times(point.scaled(), product);
  return QQ(product, scale_ * point.scaled().denominator);
}

QQ ScaledRow::unscaled(std::int64_t product) const {
  if (smallScale_ == 1) return QQ(product);
  return smallScale_ != 0 ? QQ(product, smallScale_) : QQ(ZZ(product), scale_);
}

void ScaledRow::times(const ScaledPoint& point, ZZ& product) const {
  mpz_set_ui(product.get(), 0);
  Int128 words = 0;
  for (std::size_t k = 0; k < columns_.size(); ++k) {
    const mpz_srcptr entry = entries_[k].get();
    const mpz_srcptr numerator = point.numerators[columns_[k]].get();
    std::int64_t a = 0;
    std::int64_t b = 0;
    if (!toWord(entry, a) || !toWord(numerator, b)) {
      mpz_addmul(product.get(), entry, numerator);
      continue;
    }
    // Below 2^126; the sum is moved to the product before it could overflow.
    const Int128 term = static_cast<Int128>(a) * b;
    if (__builtin_add_overflow(words, term, &words)) {
      words = static_cast<Int128>(static_cast<UInt128>(words) - static_cast<UInt128>(term));
      addWords(product, std::exchange(words, term));
    }
  }
  addWords(product, words);
}

QQ ScaledRow::rationalTimes(const ExactPoint& point) const {
  std::vector<QQ> terms;
  terms.reserve(columns_.size());
  for (std::size_t k = 0; k < columns_.size(); ++k)
    terms.push_back(point.component(columns_[k]) * (isInteger() ? QQ(entries_[k]) : rationals_[k]));
  return sumByHalves(terms);
}

}  // namespace starsift
