#include "algorithms/exact/CoordinateSolver.h"

#include <algorithm>
#include <memory>

#include "algorithms/exact/Echelon.h"
#include "algorithms/exact/ExactProduct.h"
#include "core/Elimination.inl"
#include "numbers/ExactArithmetic.h"
#include "system/Exceptions.h"

namespace starsift {

namespace {

template <class T>
Matrix<T> transposed(const Matrix<T>& matrix) {
  Matrix<T> result(matrix.columnCount(), matrix.rowCount());
  for (Index i = 1; i <= matrix.rowCount(); ++i)
    for (Index j = 1; j <= matrix.columnCount(); ++j) result[j][i] = matrix[i][j];
  return result;
}

/// Back substitution from the last pivot upwards; equations without a pivot are not
/// checked.
template <class T>
Vector<T> substitute(const CoordinateFactors<T>& factors, const Vector<T>& vector) {
  const Index n = factors.echelon.columnCount();
  Vector<T> coordinates(n);
  for (Index k = std::min(factors.echelon.rowCount(), n); k >= 1; --k) {
    const Vector<T>& row = factors.echelon[k];
    const Index pivot = elimination::leadingColumn(row);
    if (pivot > n) continue;
    T value = factors.transform[k] * vector;
    for (Index j = pivot + 1; j <= n; ++j)
      NumberTraits<T>::subtractProduct(value, row[j], coordinates[j]);
    value /= row[pivot];
    coordinates[pivot] = std::move(value);
  }
  return coordinates;
}

/// integers * basis == vector, without any rounding.
template <class T>
bool isProduct(const Vector<T>& vector, const Vector<T>& integers, const Matrix<T>& basis) {
  Vector<T> rest(vector);
  for (Index i = 1; i <= integers.dimension(); ++i) {
    if (integers[i] == T()) continue;
    for (Index j = 1; j <= rest.dimension(); ++j)
      ExactArithmetic<T>::subtractProduct(rest[j], integers[i], basis[i][j]);
  }
  return std::all_of(rest.begin(), rest.end(), &NumberTraits<T>::isZero);
}

}  // namespace

template <class T>
CoordinateFactors<T> factorBasis(const Matrix<T>& basis) {
  CoordinateFactors<T> factors;
  factors.echelon = transposed(basis);
  echelonForm(factors.echelon, factors.transform, false);
  return factors;
}

template <class T>
bool solveCoordinates(const CoordinateFactors<T>& factors, const Matrix<T>& basis,
                      const Vector<T>& vector, bool rounded, Vector<T>& coordinates) {
  Vector<T> found = substitute(factors, vector);
  if (rounded)
    std::transform(found.begin(), found.end(), found.begin(), &ExactArithmetic<T>::rounded);
  const bool matches = rounded ? isProduct(vector, found, basis) : found * basis == vector;
  if (matches) coordinates = std::move(found);
  return matches;
}

/// The integer coordinates of a vector over a basis that is triangular; nullopt if it isn't, or if
/// T can't hold a partial sum. Without value if there are no such coordinates.
template <class T>
std::optional<std::optional<Vector<T>>> substituted(CoordinateFactors<T>& factors,
                                                    const Matrix<T>& basis,
                                                    const Vector<T>& vector) {
  if (!factors.triangle)
    factors.triangle =
        std::make_shared<const std::optional<TriangularBasis>>(TriangularBasis::of(basis));
  if (!*factors.triangle) return std::nullopt;
  try {
    return (*factors.triangle)->integerCoordinates(basis, vector);
  } catch (const PrecisionException&) {
    // The solver computes with residues.
    return std::nullopt;
  }
}

template <class T>
bool coordinatesOver(CoordinateFactors<T>& factors, const Matrix<T>& basis, const Vector<T>& vector,
                     bool rounded, Vector<T>& out) {
  // A product check: coordinates computed for another basis are never returned.
  const auto accept = [&](std::optional<Vector<T>> found) {
    if (!found || !identical(exactProduct(*found, basis), vector)) return false;
    out = std::move(*found);
    return true;
  };
  if (rounded) {
    if (auto found = substituted(factors, basis, vector)) return accept(std::move(*found));
    if (!factors.solver) factors.solver = std::make_shared<const BasisSolver>(basis);
    if (factors.solver->isIndependent()) return accept(factors.solver->integerCoordinates(vector));
  }
  if (!factors.transform.isSet()) {
    CoordinateFactors<T> made = factorBasis(basis);
    made.triangle = std::move(factors.triangle);
    made.solver = std::move(factors.solver);
    factors = std::move(made);
  }
  return solveCoordinates(factors, basis, vector, rounded, out);
}

template <class T>
std::optional<Matrix<T>> coordinatesOverAll(CoordinateFactors<T>& factors, const Matrix<T>& basis,
                                            const Matrix<T>& rows, bool rounded) {
  std::optional<Matrix<T>> result(std::in_place, rows.rowCount(), basis.rowCount());
  for (Index i = 1; i <= rows.rowCount(); ++i)
    if (!coordinatesOver(factors, basis, rows[i], rounded, (*result)[i])) return std::nullopt;
  return result;
}

template CoordinateFactors<long double> factorBasis(const Matrix<long double>&);
template CoordinateFactors<QQ> factorBasis(const Matrix<QQ>&);
template bool solveCoordinates(const CoordinateFactors<long double>&, const Matrix<long double>&,
                               const Vector<long double>&, bool, Vector<long double>&);
template bool solveCoordinates(const CoordinateFactors<QQ>&, const Matrix<QQ>&, const Vector<QQ>&,
                               bool, Vector<QQ>&);
template bool coordinatesOver(CoordinateFactors<long double>&, const Matrix<long double>&,
                              const Vector<long double>&, bool, Vector<long double>&);
template bool coordinatesOver(CoordinateFactors<QQ>&, const Matrix<QQ>&, const Vector<QQ>&, bool,
                              Vector<QQ>&);
template std::optional<Matrix<long double>> coordinatesOverAll(CoordinateFactors<long double>&,
                                                               const Matrix<long double>&,
                                                               const Matrix<long double>&, bool);
template std::optional<Matrix<QQ>> coordinatesOverAll(CoordinateFactors<QQ>&, const Matrix<QQ>&,
                                                      const Matrix<QQ>&, bool);

}  // namespace starsift
