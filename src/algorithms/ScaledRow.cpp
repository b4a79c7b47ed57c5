#include "algorithms/ScaledRow.h"

#include <algorithm>
#include <utility>

namespace starsift {

namespace {

/// Partial sums stay below this magnitude.
constexpr std::int64_t sumLimit = std::int64_t{1} << 62;

bool fitsMachine(const ZZ& value) {
  return mpz_fits_slong_p(value.get()) != 0;
}

}  // namespace

ScaledRow::ScaledRow(const Vector<QQ>& row, ZZ multiple) : scale_(std::move(multiple)) {
  for (const QQ& entry : row)
    if (!entry.isInteger()) scale_ = lcm(scale_, entry.nenner());
  for (Index j = 1; j <= row.dimension(); ++j) {
    if (row[j].isZero()) continue;
    columns_.push_back(static_cast<std::size_t>(j - 1));
    ZZ& entry = entries_.emplace_back(row[j].numerator());
    if (row[j].isInteger())
      entry *= scale_;
    else
      entry *= exactQuotient(scale_, row[j].nenner());
  }
  keepSmall();
}

void ScaledRow::keepSmall() {
  ZZ norm;
  for (const ZZ& entry : entries_) norm += abs(entry);
  if (!fitsMachine(norm)) return;
  for (const ZZ& entry : entries_) smallEntries_.push_back(mpz_get_si(entry.get()));
  largestPoint_ = (sumLimit - 1) / std::max(mpz_get_si(norm.get()), 1L);
}

void ScaledRow::times(const ScaledPoint& point, ZZ& product) const {
  mpz_set_ui(product.get(), 0);
  for (std::size_t k = 0; k < columns_.size(); ++k)
    mpz_addmul(product.get(), entries_[k].get(), point.numerators[columns_[k]].get());
}

}  // namespace starsift
