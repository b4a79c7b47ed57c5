#include "problem/Inequations.h"

#include <ostream>

#include "numbers/VectorQQ.h"
#include "problem/Rows.h"
#include "system/Console.h"
#include "system/Failure.h"

namespace starsift {

namespace {

template <class T>
bool isUseless(const Vanu<T>& problem, Index i) {
  const T infinity = NumberTraits<T>::infinity();
  return problem.lu[i] == -infinity && problem.ru[i] == infinity;
}

template <class T>
void selectInequations(Vanu<T>& problem, const std::vector<Index>& selected) {
  selectElements(problem.Au, selected);
  selectElements(problem.lu, selected);
  selectElements(problem.ru, selected);
}

/// The inequations with one finite bound in the order of their removal, when the last
/// inequation replaces each removed one; `left` lists the inequations with two, in the
/// resulting order.
template <class T>
std::vector<Index> oneSided(const Vanu<T>& problem, std::vector<Index>& left) {
  std::vector<Index> lifted;
  left = indicesTo(problem.lu.dimension());
  for (std::size_t k = 0; k < left.size();) {
    const Index i = left[k];
    if (!NumberTraits<T>::isInfinite(problem.lu[i]) &&
        !NumberTraits<T>::isInfinite(problem.ru[i])) {
      ++k;
      continue;
    }
    lifted.push_back(i);
    left[k] = left.back();
    left.pop_back();
  }
  return lifted;
}

template <class T>
void negate(Vector<T>& row) {
  for (T& entry : row) entry = negated(entry);
}

}  // namespace

template <class T>
void dropUselessInequations(Vanu<T>& problem) {
  std::vector<Index> kept;
  for (Index i = 1; i <= problem.lu.dimension(); ++i) {
    if (isUseless(problem, i))
      report(reportStream(), "Useless inequation (-inf <= ... <= inf) detected");
    else
      kept.push_back(i);
  }
  selectInequations(problem, kept);
}

template <class T>
Index transferFakeInequations(Vanu<T>& problem, bool verbose) {
  std::vector<Index> kept;
  PlainEquations<T> equalities;
  for (Index i = 1; i <= problem.lu.dimension(); ++i) {
    if (!(problem.lu[i] == problem.ru[i])) {
      kept.push_back(i);
      continue;
    }
    if (NumberTraits<T>::isInfinite(problem.lu[i]))
      fail("Unfulfillable infinite inequation detected --> NO SOLUTIONS!");
    equalities.add(std::move(problem.Au[i]), problem.lu[i]);
    if (verbose) report(reportStream(), "Fake inequation detected and transfered");
  }
  const Index moved = equalities.count();
  selectInequations(problem, kept);
  insertEquations(problem, problem.Ag.rowCount() - problem.liftedRowCount() + 1,
                  std::move(equalities));
  return moved;
}

template <class T>
void liftOneSidedInequations(Vanu<T>& problem) {
  const T infinity = NumberTraits<T>::infinity();
  std::vector<Index> left;
  PlainEquations<T> equations;
  for (const Index i : oneSided(problem, left)) {
    const bool upper = problem.lu[i] == -infinity;
    if (upper) negate(problem.Au[i]);
    equations.add(std::move(problem.Au[i]), upper ? negated(problem.ru[i]) : problem.lu[i]);
    problem.addVariable(T(), infinity, T());
  }
  problem.slackCount = equations.count();
  selectInequations(problem, left);
  const Index before = problem.Ag.rowCount();
  insertEquations(problem, before + 1, std::move(equations));
  fitColumns(problem);
  const Index firstSlack = problem.originalCount() + 1;
  for (Index k = 0; k < problem.slackCount; ++k) problem.Ag[before + 1 + k][firstSlack + k] = T(-1);
}

template void dropUselessInequations(Vanu<long double>&);
template void dropUselessInequations(Vanu<QQ>&);
template Index transferFakeInequations(Vanu<long double>&, bool);
template Index transferFakeInequations(Vanu<QQ>&, bool);
template void liftOneSidedInequations(Vanu<long double>&);
template void liftOneSidedInequations(Vanu<QQ>&);

}  // namespace starsift
