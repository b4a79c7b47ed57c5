#include "problem/RowBounds.h"

#include <algorithm>
#include <ostream>

#include "numbers/ExactArithmetic.h"
#include "numbers/VectorQQ.h"
#include "system/Console.h"
#include "system/Failure.h"

namespace starsift {

namespace {

template <class T>
struct Interval {
  T lower = T();
  T upper = T();
};

/// end += a * bound. An infinite end is not changed: the processor takes a hundred times
/// as long for sums with it.
template <class T>
void extend(T& end, const T& a, const T& bound) {
  if (NumberTraits<T>::isInfinite(end)) return;
  NumberTraits<T>::addProduct(end, a, bound);
  checkedRange(end, "llu overflow");
}

template <class T>
Interval<T> valuesOf(const Vector<T>& row, const Vanu<T>& problem) {
  const T infinity = NumberTraits<T>::infinity();
  const Index n = problem.rx.dimension();
  Interval<T> values;
  for (Index j = 1; j <= row.dimension(); ++j) {
    const T& a = row[j];
    if (a == T()) continue;
    if (j > n) return {-infinity, infinity};
    const bool upwards = a > T();
    extend(values.lower, a, upwards ? problem.lx[j] : problem.rx[j]);
    extend(values.upper, a, upwards ? problem.rx[j] : problem.lx[j]);
  }
  return values;
}

template <class T>
void tightenInequation(Vanu<T>& problem, Index i) {
  const Interval<T> values = valuesOf(problem.Au[i], problem);
  const T lower = std::max(problem.lu[i], values.lower);
  const T upper = std::min(problem.ru[i], values.upper);
  if (upper < lower) {
    remarkStream() << problem.optFile << ": Inequality #" << i << ", this->lu = " << lower
                   << ", this->ru = " << upper << '\n';
    fail("Unfulfillable inequality detected --> NO SOLUTIONS!");
  }
  problem.lu[i] = lower;
  problem.ru[i] = upper;
}

template <class T>
void checkEquation(const Vanu<T>& problem, Index i) {
  const Interval<T> values = valuesOf(problem.Ag[i], problem);
  const T& value = problem.bg[i];
  if (values.lower <= value && value <= values.upper) return;
  remarkStream() << problem.optFile << ": Equality #" << i << ", lg = " << values.lower
                 << ", this->bg = " << value << ", rg = " << values.upper << '\n';
  fail("Unfulfillable equality detected --> NO SOLUTIONS!");
}

}  // namespace

template <class T>
void checkRows(Vanu<T>& problem, RowKind kind) {
  if (kind == RowKind::inequations) {
    for (Index i = 1; i <= problem.lu.dimension(); ++i) tightenInequation(problem, i);
  } else {
    for (Index i = 1; i <= problem.bg.dimension(); ++i) checkEquation(problem, i);
  }
}

template void checkRows(Vanu<long double>&, RowKind);
template void checkRows(Vanu<QQ>&, RowKind);

}  // namespace starsift
