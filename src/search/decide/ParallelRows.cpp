#include "search/decide/ParallelRows.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "core/HashedIndices.h"
#include "search/decide/FormRange.h"

namespace starsift {

namespace {

/// Of the form with a positive first coefficient that isn't 0.
struct Orientation {
  bool isOpposite = false;
  std::size_t hash = 0;
};

Orientation orientationOf(const IntegerForm& form) {
  constexpr std::size_t multiplier = 0x9E3779B97F4A7C15U;
  Orientation result;
  bool isZero = true;
  for (const ZZ& entry : form.coefficients) {
    if (isZero && !entry.isZero()) {
      result.isOpposite = !entry.sign();
      isZero = false;
    }
    // The magnitude, as its sign depends on the orientation.
    result.hash = (result.hash ^ mpz_get_ui(entry.get())) * multiplier;
    result.hash ^= result.hash >> 32U;
  }
  return result;
}

IntegerRange negated(const IntegerRange& range) {
  IntegerRange result;
  if (range.upper) result.lower = -*range.upper;
  if (range.lower) result.upper = -*range.lower;
  return result;
}

bool areParallel(const IntegerForm& a, const IntegerForm& b, bool areOpposite) {
  return std::equal(a.coefficients.begin(), a.coefficients.end(), b.coefficients.begin(),
                    b.coefficients.end(), [areOpposite](const ZZ& left, const ZZ& right) {
                      return areOpposite ? left == -right : left == right;
                    });
}

}  // namespace

void mergeParallelRows(std::vector<RangedForm>& rows) {
  HashedIndices table;
  std::vector<RangedForm> merged;
  std::vector<bool> isOpposite;
  for (RangedForm& row : rows) {
    const Orientation own = orientationOf(row.form);
    const auto next = static_cast<Index>(merged.size()) + 1;
    const Index first = table.findOrEnter(own.hash, next, [&](Index i) {
      const auto k = static_cast<std::size_t>(i - 1);
      return areParallel(merged[k].form, row.form, isOpposite[k] != own.isOpposite);
    });
    if (first == next) {
      merged.push_back(std::move(row));
      isOpposite.push_back(own.isOpposite);
      continue;
    }
    const auto k = static_cast<std::size_t>(first - 1);
    IntegerRange& range = merged[k].range;
    range =
        common(std::move(range), isOpposite[k] != own.isOpposite ? negated(row.range) : row.range);
  }
  rows = std::move(merged);
}

}  // namespace starsift
