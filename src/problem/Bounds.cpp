#include "problem/Bounds.h"

#include <ostream>

#include "numbers/ExactArithmetic.h"
#include "numbers/VectorQQ.h"
#include "problem/Rows.h"
#include "system/Console.h"
#include "system/Failure.h"

namespace starsift {

namespace {

/// 10^dx of variable j, its steps per unit.
template <class T>
T stepsPerUnit(const Vanu<T>& problem, Index j) {
  return checkedRange(ExactArithmetic<T>::powerOfTen(problem.dx[j]), "data overflow");
}

/// Rounds the bounds of variable j, which differ, inwards to its steps.
template <class T>
void roundToSteps(Vanu<T>& problem, Index j) {
  using Exact = ExactArithmetic<T>;
  T& lower = problem.lx[j];
  T& upper = problem.rx[j];
  const T steps = stepsPerUnit(problem, j);
  if (!NumberTraits<T>::isInfinite(lower))
    lower = Exact::quotient(Exact::roundedUp(Exact::product(lower, steps)), steps);
  if (!NumberTraits<T>::isInfinite(upper))
    upper = Exact::quotient(Exact::roundedDown(Exact::product(upper, steps)), steps);
}

/// Subtracts the contribution of the fixed variables to a row from `value`: `sign` times
/// the value of the variable times its coefficient.
template <class T>
void subtractFixed(const Vanu<T>& problem, T& value, const Vector<T>& row, const T& sign,
                   const char* overflowText) {
  for (const Pair<Index, T>& variable : problem.fixedVars) {
    if (row[variable.left] == T()) continue;
    ExactArithmetic<T>::subtractProduct(value, T(sign * variable.right), row[variable.left]);
    checkedRange(value, overflowText);
  }
}

template <class T>
void substituteFixed(Vanu<T>& problem) {
  const T one(1);
  for (Index i = 1; i <= problem.bg.dimension(); ++i)
    subtractFixed(problem, problem.bg[i], problem.Ag[i], one, "bg overflow");
  for (Index i = 1; i <= problem.lu.dimension(); ++i) {
    subtractFixed(problem, problem.lu[i], problem.Au[i], one, "lu overflow");
    subtractFixed(problem, problem.ru[i], problem.Au[i], one, "ru overflow");
  }
  for (Index i = 1; i <= problem.dt.dimension(); ++i) {
    const T sign = problem.targetSign(i);
    subtractFixed(problem, problem.ltu, problem.At[i], sign, "ltu overflow");
    subtractFixed(problem, problem.rtu, problem.At[i], sign, "rtu overflow");
  }
}

/// Sets fixedVars and returns the indices of the other variables.
template <class T>
std::vector<Index> findFixed(Vanu<T>& problem) {
  std::vector<Index> kept;
  problem.fixedVars.clear();
  for (Index j = 1; j <= problem.rx.dimension(); ++j) {
    if (problem.lx[j] == problem.rx[j] && problem.fd[j] == FreedomDegree::bounded) {
      problem.fixedVars.resize(problem.fixedVars.dimension() + 1, true);
      problem.fixedVars[problem.fixedVars.dimension()] = Pair<Index, T>(j, problem.lx[j]);
    } else {
      kept.push_back(j);
    }
  }
  return kept;
}

/// Divides the entries of a row by the steps per unit of their variables.
template <class T>
void divideBySteps(Matrix<T>& rows, const std::vector<Pair<Index, T>>& decimals) {
  for (Vector<T>& row : rows) {
    for (const auto& [column, steps] : decimals) {
      T& entry = row[column];
      if (entry == T()) continue;
      entry = ExactArithmetic<T>::quotient(entry, steps);
      checkedRange(entry, "data overflow");
    }
  }
}

/// Subtracts the value of a row at the integer point `s` from `value`, which may be infinite.
template <class T>
void subtractRowValue(T& value, const Vector<T>& row, const Vector<T>& s,
                      const char* overflowText) {
  for (Index j = 1; j <= row.dimension(); ++j) {
    if (s[j] == T() || row[j] == T()) continue;
    ExactArithmetic<T>::subtractProduct(value, row[j], s[j]);
    checkedRange(value, overflowText);
  }
}

/// Moves the variables to start at 0 and returns the shift.
template <class T>
Vector<T> shiftVariables(Vanu<T>& problem) {
  Vector<T> shift(std::max(problem.rx.dimension(), problem.Ag.columnCount()));
  for (Index j = 1; j <= problem.rx.dimension(); ++j) {
    if (NumberTraits<T>::isInfinite(problem.lx[j])) continue;
    shift[j] = problem.lx[j];
    if (!NumberTraits<T>::isInfinite(problem.rx[j])) problem.rx[j] -= shift[j];
    problem.lx[j] = T();
  }
  return shift;
}

}  // namespace

template <class T>
void roundBounds(Vanu<T>& problem) {
  const T infinity = NumberTraits<T>::infinity();
  if (!std::all_of(problem.dx.begin(), problem.dx.end(), &isNonNegativeInteger<T>))
    fail("dx has to be a non-negative integer in each of its components");
  for (Index j = 1; j <= problem.rx.dimension(); ++j) {
    if (problem.lx[j] == infinity || problem.rx[j] == -infinity) fail("sol bounds error");
    if (problem.lx[j] == problem.rx[j]) continue;
    roundToSteps(problem, j);
    if (problem.lx[j] > problem.rx[j]) fail("sol bounds error");
  }
}

template <class T>
void removeFixedVariables(Vanu<T>& problem) {
  const std::vector<Index> kept = findFixed(problem);
  if (!problem.fixedVars.isSet()) return;
  substituteFixed(problem);
  for (Matrix<T>* matrix : {&problem.At, &problem.Ag, &problem.Au}) selectColumns(*matrix, kept);
  if (problem.atu.isSet()) selectElements(problem.atu, kept);
  for (Vector<T>* vector : {&problem.dx, &problem.lx, &problem.rx}) selectElements(*vector, kept);
  selectElements(problem.fd, kept);
}

template <class T>
void scaleDecimalVariables(Vanu<T>& problem) {
  using Exact = ExactArithmetic<T>;
  std::vector<Pair<Index, T>> decimals;
  for (Index j = 1; j <= problem.rx.dimension(); ++j) {
    const T steps = stepsPerUnit(problem, j);
    if (problem.dx[j] > T()) decimals.emplace_back(j, steps);
    T& lower = problem.lx[j];
    T& upper = problem.rx[j];
    if (!NumberTraits<T>::isInfinite(upper))
      upper = checkedRange<T>(Exact::roundedDown(Exact::product(upper, steps)), "rx overflow");
    if (!NumberTraits<T>::isInfinite(lower))
      lower = checkedRange<T>(Exact::roundedUp(Exact::product(lower, steps)), "lx overflow");
  }
  for (Matrix<T>* matrix : {&problem.At, &problem.Ag, &problem.Au})
    divideBySteps(*matrix, decimals);
}

template <class T>
void swapHalfFreeVariables(Vanu<T>& problem, bool verbose) {
  problem.swappedVars.clear();
  for (Index j = 1; j <= problem.rx.dimension(); ++j) {
    if (freedomDegree(problem.lx[j], problem.rx[j]) != FreedomDegree::leftFree) continue;
    for (Matrix<T>* matrix : {&problem.At, &problem.Ag, &problem.Au})
      for (Vector<T>& row : *matrix) row[j] = negated(row[j]);
    problem.lx[j] = negated(problem.rx[j]);
    problem.rx[j] = NumberTraits<T>::infinity();
    problem.fd[j] = FreedomDegree::rightFree;
    problem.swappedVars.resize(problem.swappedVars.dimension() + 1, true);
    problem.swappedVars[problem.swappedVars.dimension()] = j;
    if (verbose) report(reportStream(), "Swapped half-free variable detected");
  }
}

template <class T>
void shiftLowerBounds(Vanu<T>& problem) {
  problem.shift = shiftVariables(problem);
  if (problem.atuValid) {
    subtractRowValue(problem.ltu, problem.atu, problem.shift, "ltu overflow");
    subtractRowValue(problem.rtu, problem.atu, problem.shift, "rtu overflow");
  }
  for (Index i = 1; i <= problem.bg.dimension(); ++i)
    subtractRowValue(problem.bg[i], problem.Ag[i], problem.shift, "bg overflow");
  for (Index i = 1; i <= problem.lu.dimension(); ++i) {
    subtractRowValue(problem.lu[i], problem.Au[i], problem.shift, "lu overflow");
    subtractRowValue(problem.ru[i], problem.Au[i], problem.shift, "ru overflow");
  }
}

#define STARSIFT_INSTANTIATE_BOUNDS(T)                 \
  template void roundBounds(Vanu<T>&);                 \
  template void removeFixedVariables(Vanu<T>&);        \
  template void scaleDecimalVariables(Vanu<T>&);       \
  template void swapHalfFreeVariables(Vanu<T>&, bool); \
  template void shiftLowerBounds(Vanu<T>&)

STARSIFT_INSTANTIATE_BOUNDS(long double);
STARSIFT_INSTANTIATE_BOUNDS(QQ);

}  // namespace starsift
