#include "problem/SearchedPoints.h"

#include <algorithm>

#include "numbers/VectorQQ.h"
#include "problem/DecimalSteps.h"
#include "problem/Exactness.h"
#include "problem/Rows.h"

namespace starsift {

SearchedPoints::SearchedPoints(const Vanu<QQ>& problem)
    : problem_(problem),
      stepsPerUnit_(stepsPerUnit(problem.dx)),
      equationsAreExact_(equationsHoldExactly(problem)) {}

bool SearchedPoints::contain(const Vector<QQ>& x) const {
  if (!stepsPerUnit_) return true;
  if (!isOnSteps(x)) return false;
  if (equationsAreExact_) return true;
  const std::vector<Index> rows = indicesTo(problem_.bg.dimension());
  return std::all_of(rows.begin(), rows.end(), [&](Index i) { return satisfiesEquation(x, i); });
}

bool SearchedPoints::isOnSteps(const Vector<QQ>& x) const {
  const std::vector<Index> variables = indicesTo(x.dimension());
  return std::all_of(variables.begin(), variables.end(), [&](Index j) {
    const QQ& unit = (*stepsPerUnit_)[static_cast<std::size_t>(j - 1)];
    return problem_.lx[j] == problem_.rx[j] || (x[j] * unit).isInteger();
  });
}

bool SearchedPoints::satisfiesEquation(const Vector<QQ>& x, Index i) const {
  QQ residual = -problem_.bg[i];
  for (Index j = 1; j <= x.dimension(); ++j) addProduct(residual, problem_.Ag[i][j], x[j]);
  const bool isCongruence = problem_.qg.isSet() && !problem_.qg[i].isZero();
  return isCongruence ? (residual / problem_.qg[i]).isInteger() : residual.isZero();
}

}  // namespace starsift
