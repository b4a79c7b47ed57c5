#include "search/decide/ObjectiveBounds.h"

#include <algorithm>
#include <utility>

namespace starsift {

namespace {

/// Deviations that have a bound for every choice of their signs.
constexpr std::size_t deviationsTogether = 3;

void addMultiple(IntegerForm& sum, const IntegerForm& form, const ZZ& factor) {
  for (std::size_t k = 0; k < sum.coefficients.size(); ++k)
    mpz_addmul(sum.coefficients[k].get(), factor.get(), form.coefficients[k].get());
  mpz_addmul(sum.constant.get(), factor.get(), form.constant.get());
}

ObjectiveBound boundOf(IntegerForm form, std::optional<ZZ> mirrored) {
  ObjectiveBound bound;
  for (const ZZ& entry : form.coefficients) bound.factor = gcd(bound.factor, abs(entry));
  if (bound.factor.isZero()) bound.factor = ZZ::one();
  for (ZZ& entry : form.coefficients) entry = exactQuotient(entry, bound.factor);
  bound.constant = std::exchange(form.constant, ZZ());
  bound.form = std::move(form);
  bound.mirrored = std::move(mirrored);
  return bound;
}

/// Appends the bounds by deviations first ... last - 1.
void addGroup(const IntegerObjective& objective, std::size_t first, std::size_t last,
              std::vector<ObjectiveBound>& bounds) {
  const std::size_t count = last - first;
  const bool isMirrored = count > 0 && objective.linear.isConstant();
  const std::size_t choices = (std::size_t{1} << count) >> (isMirrored ? 1 : 0);
  for (std::size_t choice = 0; choice < choices; ++choice) {
    IntegerForm form = objective.linear;
    for (std::size_t k = 0; k < count; ++k)
      addMultiple(form, objective.deviations[first + k], ZZ(((choice >> k) & 1U) != 0 ? -1 : 1));
    std::optional<ZZ> mirrored;
    if (isMirrored)
      mirrored = objective.linear.constant + objective.linear.constant - form.constant;
    bounds.push_back(boundOf(std::move(form), std::move(mirrored)));
  }
}

void raiseTo(std::optional<ZZ>& least, ZZ value) {
  if (!least || *least < value) least = std::move(value);
}

}  // namespace

IntegerRange ObjectiveBound::rangeBelow(const ZZ& most) const {
  IntegerRange range;
  ZZ end;
  mpz_fdiv_q(end.get(), ZZ(most - constant).get(), factor.get());
  range.upper = end;
  if (!mirrored) return range;
  mpz_cdiv_q(end.get(), ZZ(*mirrored - most).get(), factor.get());
  range.lower = end;
  return range;
}

IntegerRange ObjectiveBound::rangeFrom(const ZZ& least) const {
  IntegerRange range;
  ZZ end;
  mpz_cdiv_q(end.get(), ZZ(least - constant).get(), factor.get());
  range.lower = end;
  return range;
}

std::optional<ZZ> ObjectiveBound::leastOver(const IntegerRange& range) const {
  std::optional<ZZ> least;
  if (range.lower) raiseTo(least, factor * *range.lower + constant);
  if (!mirrored) return least;
  if (range.upper) raiseTo(least, *mirrored - factor * *range.upper);
  // The larger one of the two is at least half of their sum.
  ZZ half;
  mpz_cdiv_q_2exp(half.get(), ZZ(constant + *mirrored).get(), 1);
  raiseTo(least, std::move(half));
  return least;
}

std::vector<ObjectiveBound> objectiveBounds(const IntegerObjective& objective) {
  std::vector<ObjectiveBound> bounds;
  const std::size_t deviations = objective.deviations.size();
  if (deviations == 0) addGroup(objective, 0, 0, bounds);
  for (std::size_t first = 0; first < deviations; first += deviationsTogether)
    addGroup(objective, first, std::min(first + deviationsTogether, deviations), bounds);
  return bounds;
}

}  // namespace starsift
