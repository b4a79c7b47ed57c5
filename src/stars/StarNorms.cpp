#include "stars/StarNorms.h"

#include <algorithm>

#include "numbers/Conversion.h"
#include "numbers/QQ.h"

namespace starsift {

namespace {

/// |row * x - value| over the first `columns` columns, exactly.
template <class T>
QQ residual(const Vector<T>& row, const Vector<T>& x, const T& value, Index columns) {
  using Exact = NumberConversion<QQ, T>;
  QQ sum = -Exact::convert(value);
  for (Index j = 1; j <= columns; ++j)
    NumberTraits<QQ>::addProduct(sum, Exact::convert(row[j]), Exact::convert(x[j]));
  return abs(sum);
}

/// The goals of a lifted problem come last, in the order of their equations,
/// which come last too.
template <class T>
QQ liftedSlack(const Vanu<T>& problem, const Vector<T>& x) {
  const Index goals = problem.deviationCount / 2;
  const Index firstRow = problem.Ag.rowCount() - goals;
  const Index columns =
      std::min(x.dimension(), problem.rx.dimension() - problem.slackCount - problem.deviationCount);
  QQ slack;
  for (Index k = 1; k <= goals; ++k)
    slack += residual(problem.Ag[firstRow + k], x, problem.bg[firstRow + k], columns);
  return slack;
}

}  // namespace

template <class T>
Norms<T> goalNorms(const Vector<T>& goals, const Vector<T>& values) {
  Norms<T> norms;
  for (Index i = 1; i <= goals.dimension(); ++i) {
    const T& value = values.element(i);
    if (goals[i] == NumberTraits<T>::infinity()) {
      norms.target -= value;
    } else if (NumberTraits<T>::isInfinite(goals[i])) {
      norms.target += value;
    } else {
      const T distance = NumberTraits<T>::absolute(value - goals[i]);
      norms.target += distance;
      norms.slack += distance;
    }
  }
  return norms;
}

template <class T>
Norms<T> computeNorms(const Vanu<T>& problem, const Vector<T>& targetValues, const Vector<T>& x) {
  if (problem.lifted &&
      !std::all_of(problem.dt.begin(), problem.dt.end(), NumberTraits<T>::isInfinite))
    fail("preparation inconsistency");
  Vector<QQ> goals;
  Vector<QQ> values;
  goals.convertFrom(problem.dt, false);
  values.convertFrom(targetValues, false);
  Norms<QQ> norms = goalNorms(goals, values);
  if (problem.lifted) norms.slack += liftedSlack(problem, x);
  using Number = NumberConversion<T, QQ>;
  try {
    return {Number::convert(norms.target), Number::convert(norms.slack)};
  } catch (const PrecisionException&) {
    throw PrecisionException(checkLossText);
  }
}

template Norms<long double> goalNorms(const Vector<long double>&, const Vector<long double>&);
template Norms<QQ> goalNorms(const Vector<QQ>&, const Vector<QQ>&);
template Norms<long double> computeNorms(const Vanu<long double>&, const Vector<long double>&,
                                         const Vector<long double>&);
template Norms<QQ> computeNorms(const Vanu<QQ>&, const Vector<QQ>&, const Vector<QQ>&);

}  // namespace starsift
