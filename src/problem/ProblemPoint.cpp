#include "problem/ProblemPoint.h"

#include <algorithm>
#include <cassert>

#include "numbers/ExactArithmetic.h"
#include "numbers/VectorQQ.h"
#include "problem/Rows.h"
#include "system/Failure.h"

namespace starsift {

namespace {

/// row * z - hom * value
template <class T>
T residual(const Vector<T>& row, const Vector<T>& z, const T& value, const T& hom) {
  T result = rowValue(row, z);
  ExactArithmetic<T>::subtractProduct(result, hom, value);
  return result;
}

/// Calls f(i, a) for each congruence, equation i with the modulus a, in order.
template <class T, class Function>
void forEachCongruence(const Vanu<T>& problem, const Function& f) {
  Index column = problem.rx.dimension();
  for (Index i = 1; i <= problem.qg.dimension(); ++i)
    if (!(problem.qg[i] == T())) f(i, problem.Ag[i][++column]);
}

/// Multiplies the variables by 10^dx or divides them by it, as `operation` does.
template <class T, class Operation>
void scaleBySteps(const Vanu<T>& problem, Vector<T>& x, const Operation& operation) {
  for (Index j = 1; j <= x.dimension(); ++j)
    if (problem.dx[j] > T()) x[j] = operation(x[j], ExactArithmetic<T>::powerOfTen(problem.dx[j]));
}

template <class T>
void negateSwapped(const Vanu<T>& problem, Vector<T>& x) {
  for (const Index j : problem.swappedVars) x[j] = negated(x[j]);
}

}  // namespace

template <class T>
T rowValue(const Vector<T>& row, const Vector<T>& z) {
  T missing = T();
  for (Index j = 1; j <= std::min(row.dimension(), z.dimension()); ++j)
    if (!(row[j] == T()) && !(z[j] == T()))
      ExactArithmetic<T>::subtractProduct(missing, row[j], z[j]);
  return negated(missing);
}

template <class T>
Vector<T> originalVariables(const Vanu<T>& problem, const Vector<T>& x) {
  Vector<T> z(x);
  for (Index k = problem.fixedVars.dimension(); k >= 1; --k)
    z.removeComponent(problem.fixedVars[k].left);
  assert(z.dimension() == problem.originalCount());
  scaleBySteps(problem, z, &ExactArithmetic<T>::product);
  negateSwapped(problem, z);
  for (Index j = 1; j <= z.dimension(); ++j)
    ExactArithmetic<T>::subtractProduct(z[j], T(1), problem.shift[j]);
  return z;
}

template <class T>
void appendSlacks(const Vanu<T>& problem, Vector<T>& z, const std::optional<T>& hom) {
  const T factor = hom.value_or(T(1));
  Index column = z.dimension();
  Index row = problem.Ag.rowCount() - problem.liftedRowCount();
  const Index lastSlackRow = row + problem.slackCount;
  z.resize(problem.rx.dimension(), false);
  while (row < problem.Ag.rowCount()) {
    ++row;
    T s = residual(problem.Ag[row], z, problem.bg[row], factor);
    const bool isNegative = s < T();
    if (row > lastSlackRow) {
      column += 2;
      z[isNegative ? column - 1 : column] = isNegative ? negated(s) : s;
    } else {
      if (isNegative && !hom) fail("slack variable inconsistency, s should be >= 0");
      z[++column] = std::move(s);
    }
  }
}

template <class T>
Vector<T> equationResiduals(const Vanu<T>& problem, const Vector<T>& z, const T& hom) {
  Vector<T> residuals(problem.bg.dimension());
  for (Index i = 1; i <= residuals.dimension(); ++i)
    residuals[i] = residual(problem.Ag[i], z, problem.bg[i], hom);
  return residuals;
}

template <class T>
void appendModulusFactors(const Vanu<T>& problem, Vector<T>& z, Vector<T>& residuals) {
  Index column = z.dimension();
  z.resize(column + problem.modulusCount(), false);
  forEachCongruence(problem, [&](Index i, const T& modulus) {
    T& w = residuals[i];
    const T t = NumberTraits<T>::remainder(w, modulus);
    const T q = ExactArithmetic<T>::quotient(T(w - t), modulus);
    ExactArithmetic<T>::subtractProduct(w, q, modulus);
    z[++column] = negated(q);
  });
}

template <class T>
void checkCongruences(const Vanu<T>& problem, const Vector<T>& residuals) {
  forEachCongruence(problem, [&](Index i, const T& modulus) {
    // Computed from the residual to the nearest multiples, because remainders don't round.
    const T size = NumberTraits<T>::absolute(modulus);
    const T above = NumberTraits<T>::absolute(NumberTraits<T>::remainder(residuals[i], modulus));
    const T distance = std::min(above, T(size - above));
    if (distance > NumberTraits<T>::tolerance() * size)
      throw ModuloException("modulo equation inconsistency");
  });
}

template <class T>
Vector<T> pointAsRead(const Vanu<T>& problem, Vector<T> z, bool insert) {
  for (Index j = 1; j <= z.dimension(); ++j) {
    ExactArithmetic<T>::addProduct(z[j], T(1), problem.shift[j]);
    checkedRange(z[j], "opt_vec overflow1");
  }
  negateSwapped(problem, z);
  scaleBySteps(problem, z, &ExactArithmetic<T>::quotient);
  for (Index j = problem.originalCount() + 1; j <= z.dimension(); ++j)
    z[j] = ExactArithmetic<T>::quotient(z[j], problem.slackUnit[j]);
  if (insert)
    for (const Pair<Index, T>& constant : problem.fixedVars)
      z.insertComponent(constant.left, constant.right);
  return z;
}

#define STARSIFT_INSTANTIATE_PROBLEM_POINT(T)                                       \
  template T rowValue(const Vector<T>&, const Vector<T>&);                          \
  template Vector<T> originalVariables(const Vanu<T>&, const Vector<T>&);           \
  template void appendSlacks(const Vanu<T>&, Vector<T>&, const std::optional<T>&);  \
  template Vector<T> equationResiduals(const Vanu<T>&, const Vector<T>&, const T&); \
  template void appendModulusFactors(const Vanu<T>&, Vector<T>&, Vector<T>&);       \
  template void checkCongruences(const Vanu<T>&, const Vector<T>&);                 \
  template Vector<T> pointAsRead(const Vanu<T>&, Vector<T>, bool)

STARSIFT_INSTANTIATE_PROBLEM_POINT(long double);
STARSIFT_INSTANTIATE_PROBLEM_POINT(QQ);

}  // namespace starsift
