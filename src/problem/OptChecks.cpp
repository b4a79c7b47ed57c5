#include "problem/OptChecks.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "system/Failure.h"

namespace starsift::optchecks {

namespace {

/// Joins texts and numbers into one message.
template <class... Pieces>
std::string joined(const Pieces&... pieces) {
  std::string text;
  const auto add = [&text](const auto& piece) {
    if constexpr (std::is_convertible_v<decltype(piece), Index>)
      text += std::to_string(piece);
    else
      text += piece;
  };
  (add(pieces), ...);
  return text;
}

bool hasInfinity(const Vector<QQ>& vector) {
  return std::any_of(vector.begin(), vector.end(), [](const QQ& v) { return v.isInf(); });
}

bool hasInfinity(const Matrix<QQ>& matrix) {
  return std::any_of(matrix.begin(), matrix.end(),
                     [](const Vector<QQ>& row) { return hasInfinity(row); });
}

void columnCount(std::string_view name, const Matrix<QQ>& matrix, Index n) {
  if (matrix.columnCount() > 0 && matrix.columnCount() != n)
    fail(joined("The column count of ", name, " (", matrix.columnCount(), ") is not right ( != ", n,
                " )"));
}

}  // namespace

void thresholds(const Vanu<QQ>& problem) {
  if (problem.kt.dimension() != problem.dt.dimension())
    fail(joined("The dimensions of the target properties (kt, dt) differ (", problem.kt.dimension(),
                ", ", problem.dt.dimension(), ")"));
}

void targetRows(const Vanu<QQ>& problem) {
  if (problem.At.rowCount() != problem.dt.dimension())
    fail(joined("The row count of At (", problem.At.rowCount(),
                ") differs with the dimension of dt (", problem.dt.dimension(), ")"));
}

void equationRows(const Vanu<QQ>& problem) {
  if (problem.Ag.rowCount() != problem.bg.dimension())
    fail(joined("The row count of Ag (", problem.Ag.rowCount(),
                ") differs with the dimension of bg (", problem.bg.dimension(), ")"));
}

void moduli(const Vanu<QQ>& problem) {
  if (problem.qg.isSet() && problem.qg.dimension() != problem.bg.dimension())
    fail(joined("The dimensions of the equation result properties (bg, qg) differ (",
                problem.bg.dimension(), ", ", problem.qg.dimension(), ")"));
  if (hasInfinity(problem.qg)) fail("+-inf not allowed in qg");
}

Index columns(const Vanu<QQ>& problem) {
  Index n = problem.Ag.columnCount();
  if (problem.Au.rowCount() > 0) n = problem.Au.columnCount();
  if (problem.At.rowCount() > 0) n = problem.At.columnCount();
  if (n == 0) fail("Dimension error -- n == 0");
  columnCount("At", problem.At, n);
  columnCount("Ag", problem.Ag, n);
  columnCount("Au", problem.Au, n);
  return n;
}

void finiteEntries(const Vanu<QQ>& problem) {
  if (hasInfinity(problem.At)) fail("+-inf not allowed in At");
  for (Index i = 1; i <= problem.Ag.rowCount(); ++i) {
    if (problem.bg[i].isInf()) fail("+-inf not allowed in bg");
    if (hasInfinity(problem.Ag[i])) fail("+-inf not allowed in Ag");
  }
  if (hasInfinity(problem.Au)) fail("+-inf not allowed in Au");
}

void inequationRows(const Vanu<QQ>& problem) {
  if (problem.Au.rowCount() != problem.lu.dimension())
    fail(joined("The row count of Au ( ", problem.Au.rowCount(),
                ") differs with the dimension of lu / ru ( ", problem.lu.dimension(), ")"));
}

void inequationBounds(const Vanu<QQ>& problem) {
  if (problem.lu.dimension() != problem.ru.dimension())
    fail(joined("The dimensions of lu (", problem.lu.dimension(), ") and ru (",
                problem.ru.dimension(), ") differ"));
  for (Index i = 1; i <= problem.lu.dimension(); ++i) {
    if (problem.lu[i] > problem.ru[i]) fail("ru has to be >= lu in each of its components");
    if (problem.lu[i] == -QQ::infinity() && problem.ru[i] == QQ::infinity())
      fail("Useless inequation -inf <= ... <= inf found");
  }
}

void variables(const Vanu<QQ>& problem, Index n) {
  const Index upper = problem.rx.dimension();
  const Index lower = problem.lx.dimension();
  const Index decimals = problem.dx.dimension();
  if (upper == 0 || upper != n) fail(joined("The dimension of rx is zero or != ", n));
  if (lower != n || lower != decimals)
    fail(joined("The dimensions of the solution properties (lx, rx, dx) differ (", lower, ", ",
                upper, ", ", decimals, ")"));
  for (Index j = 1; j <= n; ++j)
    if (problem.rx[j] < problem.lx[j]) fail("rx has to be >= lx in each of its components");
}

}  // namespace starsift::optchecks
