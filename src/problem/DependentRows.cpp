#include "problem/DependentRows.h"

#include <ostream>
#include <string>

#include "algorithms/exact/IndependentRows.h"
#include "numbers/ExactArithmetic.h"
#include "numbers/VectorQQ.h"
#include "problem/Rows.h"
#include "system/Console.h"

namespace starsift {

namespace {

/// Writes a line for each row of 1..rows that isn't in `kept`.
void reportDependentRows(Index rows, const std::vector<Index>& kept) {
  auto next = kept.begin();
  for (Index i = 1; i <= rows; ++i) {
    if (next != kept.end() && *next == i)
      ++next;
    else
      report(reportStream(),
             "el_dep_rows: use_exact_arithmetic = 0, dep_row_idx = " + std::to_string(i));
  }
}

/// bg as the first column, then Ag.
template <class T>
Matrix<T> extendedEquations(const Vanu<T>& problem) {
  Matrix<T> extended(problem.Ag.rowCount(), problem.Ag.columnCount() + 1);
  for (Index i = 1; i <= extended.rowCount(); ++i) {
    extended[i][1] = problem.bg[i];
    std::copy(problem.Ag[i].begin(), problem.Ag[i].end(), extended[i].begin() + 1);
  }
  return extended;
}

}  // namespace

template <class T>
std::vector<Index> el_dep_rows(const Matrix<T>& rows, bool verbose) {
  for (const Vector<T>& row : rows)
    for (const T& entry : row) checkedRange(entry, "row overflow");
  std::vector<Index> kept = independentRows(rows);
  if (verbose) reportDependentRows(rows.rowCount(), kept);
  return kept;
}

template <class T>
void removeDependentEquations(Vanu<T>& problem, bool verbose) {
  const std::vector<Index> kept = el_dep_rows(extendedEquations(problem), verbose);
  if (static_cast<Index>(kept.size()) == problem.Ag.rowCount()) return;
  selectElements(problem.Ag, kept);
  selectElements(problem.bg, kept);
  if (problem.qg.isSet()) selectElements(problem.qg, kept);
  if (verbose) report(reportStream(), "Linear dependencies detected and removed");
}

#define STARSIFT_INSTANTIATE_DEPENDENT_ROWS(T)                     \
  template std::vector<Index> el_dep_rows(const Matrix<T>&, bool); \
  template void removeDependentEquations(Vanu<T>&, bool)

STARSIFT_INSTANTIATE_DEPENDENT_ROWS(long double);
STARSIFT_INSTANTIATE_DEPENDENT_ROWS(QQ);

}  // namespace starsift
