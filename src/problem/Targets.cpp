#include "problem/Targets.h"

#include "numbers/ExactArithmetic.h"
#include "numbers/VectorQQ.h"
#include "problem/Rows.h"

namespace starsift {

namespace {

/// The targets in the order of normal form: first without a finite goal, then with one.
template <class T>
std::vector<Index> targetOrder(const Vanu<T>& problem) {
  std::vector<Index> order = indicesTo(problem.dt.dimension());
  std::stable_partition(order.begin(), order.end(),
                        [&problem](Index i) { return NumberTraits<T>::isInfinite(problem.dt[i]); });
  return order;
}

/// Turns target row i, which has a finite goal, into the equation of its pair of deviations;
/// the target is then the sum of the deviations.
template <class T>
void liftTarget(Vanu<T>& problem, Index i, Index equation, Index deviation) {
  Vector<T>& target = problem.At[i];
  problem.Ag[equation].exchange(target);
  problem.Ag[equation][deviation] = T(1);
  problem.Ag[equation][deviation + 1] = T(-1);
  target[deviation] = T(1);
  target[deviation + 1] = T(1);
  problem.bg[equation] = problem.dt[i];
  problem.dt[i] = -NumberTraits<T>::infinity();
  // The distance from the threshold to a goal that is infinite by now.
  if (!NumberTraits<T>::isInfinite(problem.kt[i])) problem.kt[i] = -NumberTraits<T>::infinity();
}

}  // namespace

template <class T>
void liftFiniteTargets(Vanu<T>& problem) {
  const std::vector<Index> order = targetOrder(problem);
  selectElements(problem.At, order);
  selectElements(problem.dt, order);
  selectElements(problem.kt, order);
  const Index targets = problem.dt.dimension();
  const auto pairs = static_cast<Index>(std::count_if(problem.dt.begin(), problem.dt.end(),
                                                      std::not_fn(&NumberTraits<T>::isInfinite)));
  problem.deviationCount = 2 * pairs;
  for (Index k = 1; k <= 2 * pairs; ++k) problem.addVariable(T(), NumberTraits<T>::infinity(), T());
  const Index equations = problem.Ag.rowCount();
  PlainEquations<T> added;
  for (Index k = 1; k <= pairs; ++k) added.add(Vector<T>(problem.Ag.columnCount()), T());
  insertEquations(problem, equations + 1, std::move(added));
  fitColumns(problem);
  const Index firstDeviation = problem.rx.dimension() - 2 * pairs + 1;
  for (Index k = 0; k < pairs; ++k)
    liftTarget(problem, targets - pairs + 1 + k, equations + 1 + k, firstDeviation + 2 * k);
}

template <class T>
void aggregateTargets(Vanu<T>& problem) {
  problem.atu = Vector<T>(problem.rx.dimension());
  for (Index i = 1; i <= problem.dt.dimension(); ++i) {
    const T sign = problem.targetSign(i);
    for (Index j = 1; j <= problem.atu.dimension(); ++j) {
      ExactArithmetic<T>::addProduct(problem.atu[j], sign, problem.At[i][j]);
      checkedRange(problem.atu[j], "atu overflow");
    }
  }
}

template <class T>
void addTargetThreshold(Vanu<T>& problem) {
  if (!problem.kt.isSet()) return;
  T least = T();
  for (Index i = 1; i <= problem.kt.dimension(); ++i) {
    if (NumberTraits<T>::isInfinite(problem.kt[i])) return;
    ExactArithmetic<T>::addProduct(least, problem.targetSign(i), problem.kt[i]);
  }
  setTargetRange(problem, least);
}

template <class T>
void setTargetRange(Vanu<T>& problem, const T& least) {
  T greatest = T();
  for (Index j = 1; j <= problem.atu.dimension(); ++j) {
    if (problem.atu[j] == T()) continue;
    const T& bound = problem.atu[j] > T() ? problem.rx[j] : problem.lx[j];
    if (NumberTraits<T>::isInfinite(bound)) return;
    ExactArithmetic<T>::addProduct(greatest, problem.atu[j], bound);
  }
  if (least > greatest) return;
  problem.ltu = least;
  problem.rtu = greatest;
  problem.atuValid = true;
}

#define STARSIFT_INSTANTIATE_TARGETS(T)       \
  template void liftFiniteTargets(Vanu<T>&);  \
  template void aggregateTargets(Vanu<T>&);   \
  template void addTargetThreshold(Vanu<T>&); \
  template void setTargetRange(Vanu<T>&, const T&)

STARSIFT_INSTANTIATE_TARGETS(long double);
STARSIFT_INSTANTIATE_TARGETS(QQ);

}  // namespace starsift
