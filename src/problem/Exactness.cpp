#include "problem/Exactness.h"

#include <algorithm>
#include <vector>

#include "core/NumberTraits.h"
#include "numbers/Conversion.h"
#include "numbers/VectorQQ.h"
#include "problem/DecimalSteps.h"
#include "problem/Rows.h"

namespace starsift {

namespace {

/// The least common multiple f of denominators.
class CommonDenominator {
 public:
  void include(const QQ& value) { factor_ = lcm(factor_, value.nenner()); }
  /// True if a multiple of 1/f other than 0 may lie within the tolerance.
  bool isTooLarge() const { return NumberTraits<QQ>::isZero(QQ(ZZ::one(), factor_)); }

 private:
  ZZ factor_ = ZZ::one();
};

bool isConstant(const Vanu<QQ>& problem, Index j) {
  return problem.lx[j] == problem.rx[j] && !problem.lx[j].isInf();
}

bool holdsExactly(const Vanu<QQ>& problem, Index i, const std::vector<QQ>& steps) {
  CommonDenominator denominator;
  QQ value = problem.bg[i];
  for (Index j = 1; j <= problem.rx.dimension(); ++j) {
    const QQ& entry = problem.Ag[i][j];
    if (entry.isZero()) continue;
    if (isConstant(problem, j)) {
      subtractProduct(value, entry, problem.lx[j]);
      continue;
    }
    denominator.include(entry / steps[static_cast<std::size_t>(j - 1)]);
    if (denominator.isTooLarge()) return false;
  }
  denominator.include(value);
  if (problem.qg.isSet()) denominator.include(problem.qg[i]);
  return !denominator.isTooLarge();
}

}  // namespace

bool equationsHoldExactly(const Vanu<QQ>& problem) {
  const auto steps = stepsPerUnit(problem.dx);
  if (!steps) return false;
  const std::vector<Index> rows = indicesTo(problem.Ag.rowCount());
  return std::all_of(rows.begin(), rows.end(),
                     [&](Index i) { return holdsExactly(problem, i, *steps); });
}

bool fitsLongDouble(const Vanu<QQ>& problem) {
  const auto fits = [](const Vector<QQ>& numbers) {
    return std::all_of(numbers.begin(), numbers.end(), isExact);
  };
  const auto fitsAll = [&](const Matrix<QQ>& rows) {
    return std::all_of(rows.begin(), rows.end(), fits);
  };
  return fits(problem.dt) && fits(problem.kt) && fitsAll(problem.At) && fitsAll(problem.Ag) &&
         fits(problem.bg) && fits(problem.qg) && fitsAll(problem.Au) && fits(problem.lu) &&
         fits(problem.ru) && fits(problem.dx) && fits(problem.lx) && fits(problem.rx);
}

}  // namespace starsift
