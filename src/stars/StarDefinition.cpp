#include "stars/StarDefinition.h"

#include <algorithm>

#include "numbers/QQ.h"

namespace starsift {

namespace {

template <class T>
bool equationsHold(const Vanu<T>& problem, const Vector<T>& x) {
  if (problem.Ag.rowCount() == 0) return true;
  const Vector<T> y = problem.Ag * x;
  if (!problem.qg.isSet()) return y == problem.bg;
  for (Index i = 1; i <= y.dimension(); ++i) {
    T difference = y[i] - problem.bg[i];
    if (!NumberTraits<T>::isZero(problem.qg[i]))
      difference = NumberTraits<T>::remainder(difference, problem.qg[i]);
    if (!NumberTraits<T>::isZero(difference)) return false;
  }
  return true;
}

template <class T>
bool inequationsHold(const Vanu<T>& problem, const Vector<T>& x) {
  if (problem.Au.rowCount() == 0) return true;
  const Vector<T> y = problem.Au * x;
  return y >= problem.lu && y <= problem.ru;
}

template <class T>
bool isNan(const T& value) {
  return !(value == value);
}

}  // namespace

template <class T>
StarVerdict<T> judgeByDefinition(const Vanu<T>& problem, const Vector<T>& x) {
  if (!(x >= problem.lx && x <= problem.rx)) return {};
  if (!equationsHold(problem, x) || !inequationsHold(problem, x)) return {};
  StarVerdict<T> verdict;
  if (problem.At.rowCount() > 0) {
    verdict.targetValues = problem.At * x;
    verdict.norms = goalNorms(problem.dt, verdict.targetValues);
  }
  verdict.isSolution = !isNan(verdict.norms.target) && !isNan(verdict.norms.slack) &&
                       std::none_of(verdict.targetValues.begin(), verdict.targetValues.end(),
                                    [](const T& value) { return isNan(value); });
  return verdict;
}

template StarVerdict<long double> judgeByDefinition(const Vanu<long double>&,
                                                    const Vector<long double>&);
template StarVerdict<QQ> judgeByDefinition(const Vanu<QQ>&, const Vector<QQ>&);

}  // namespace starsift
