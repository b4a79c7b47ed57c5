#include "problem/SearchedPoints.h"

#include "problem/DecimalSteps.h"
#include "problem/Exactness.h"
#include "problem/ProblemPoint.h"

namespace starsift {

SearchedPoints::SearchedPoints(const Vanu<QQ>& problem)
    : problem_(problem),
      stepsPerUnit_(stepsPerUnit(problem.dx)),
      equationsAreExact_(equationsHoldExactly(problem)) {}

bool SearchedPoints::contain(const Vector<QQ>& x) const {
  if (!stepsPerUnit_) return true;
  if (!isOnSteps(x)) return false;
  if (equationsAreExact_) return true;
  for (Index i = 1; i <= problem_.bg.dimension(); ++i)
    if (!satisfiesEquation(x, i)) return false;
  return true;
}

bool SearchedPoints::isOnSteps(const Vector<QQ>& x) const {
  for (Index j = 1; j <= x.dimension(); ++j) {
    const QQ& unit = (*stepsPerUnit_)[static_cast<std::size_t>(j - 1)];
    if (!x[j].isInteger() && problem_.lx[j] != problem_.rx[j] && !(x[j] * unit).isInteger())
      return false;
  }
  return true;
}

bool SearchedPoints::satisfiesEquation(const Vector<QQ>& x, Index i) const {
  const QQ residual = rowValue(problem_.Ag[i], x) - problem_.bg[i];
  const bool isCongruence = problem_.qg.isSet() && !problem_.qg[i].isZero();
  return isCongruence ? (residual / problem_.qg[i]).isInteger() : residual.isZero();
}

}  // namespace starsift
