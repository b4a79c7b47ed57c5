#include "search/decide/FormRange.h"

namespace starsift {

namespace {

/// Extends `end`, one end of the values of a sum, by coefficient * bound.
void extend(std::optional<ZZ>& end, const ZZ& coefficient, const std::optional<ZZ>& bound) {
  if (!end) return;
  if (bound)
    mpz_addmul(end->get(), coefficient.get(), bound->get());
  else
    end.reset();
}

}  // namespace

IntegerRange valuesOver(const std::vector<IntegerRange>& box, const IntegerForm& form) {
  IntegerRange values{ZZ(), ZZ()};
  for (std::size_t k = 0; k < box.size(); ++k) {
    const ZZ& a = form.coefficients[k];
    if (a.isZero()) continue;
    extend(values.lower, a, a.sign() ? box[k].lower : box[k].upper);
    extend(values.upper, a, a.sign() ? box[k].upper : box[k].lower);
  }
  return values;
}

IntegerRange common(IntegerRange a, const IntegerRange& b) {
  if (b.lower && (!a.lower || *a.lower < *b.lower)) a.lower = b.lower;
  if (b.upper && (!a.upper || *a.upper > *b.upper)) a.upper = b.upper;
  return a;
}

bool isWithin(const IntegerRange& inner, const IntegerRange& outer) {
  return (!outer.lower || (inner.lower && *inner.lower >= *outer.lower)) &&
         (!outer.upper || (inner.upper && *inner.upper <= *outer.upper));
}

}  // namespace starsift
