// Coordinates of vectors over the rows of a basis.
#pragma once

#include <optional>

#include "algorithms/exact/CoordinateFactors.h"
#include "numbers/VectorQQ.h"

namespace starsift {

/// The factors that solveCoordinates() needs. Throws as echelonForm(). O(m^2 (n + m)) for n
/// rows of m entries.
template <class T>
CoordinateFactors<T> factorBasis(const Matrix<T>& basis);

/// Searches for `coordinates` with coordinates * basis == vector.
///
/// basis        n x m, its rows may be dependent
/// factors      factorBasis(basis)
/// vector       m entries
/// rounded      only integer coordinates: each one is rounded before the test
/// coordinates  n entries, 0 for a row that depends on the rows before it; set only if
///              the result is true
///
/// False for a vector outside the span of the rows and, with `rounded`, outside their
/// lattice. The product decides, and with `rounded` it is exact: long double may miss
/// coordinates of a bad basis, but never returns wrong ones. Throws PrecisionException if
/// T can't hold the product. O(m (n + m)).
template <class T>
bool solveCoordinates(const CoordinateFactors<T>& factors, const Matrix<T>& basis,
                      const Vector<T>& vector, bool rounded, Vector<T>& coordinates);

/// The n coordinates of a vector of m entries over the rows of `basis`; only integers with
/// `rounded`. False, `out` unchanged, if there are none. What is computed from the basis is
/// stored in `factors`, which must be empty or computed from the same basis: for integers over
/// independent rows a TriangularBasis or a BasisSolver, else factorBasis(). Throws as these.
template <class T>
bool coordinatesOver(CoordinateFactors<T>& factors, const Matrix<T>& basis, const Vector<T>& vector,
                     bool rounded, Vector<T>& out);

/// The coordinates of every row; empty if some row has none.
template <class T>
std::optional<Matrix<T>> coordinatesOverAll(CoordinateFactors<T>& factors, const Matrix<T>& basis,
                                            const Matrix<T>& rows, bool rounded);

extern template CoordinateFactors<long double> factorBasis(const Matrix<long double>&);
extern template CoordinateFactors<QQ> factorBasis(const Matrix<QQ>&);
extern template bool solveCoordinates(const CoordinateFactors<long double>&,
                                      const Matrix<long double>&, const Vector<long double>&, bool,
                                      Vector<long double>&);
extern template bool solveCoordinates(const CoordinateFactors<QQ>&, const Matrix<QQ>&,
                                      const Vector<QQ>&, bool, Vector<QQ>&);
extern template bool coordinatesOver(CoordinateFactors<long double>&, const Matrix<long double>&,
                                     const Vector<long double>&, bool, Vector<long double>&);
extern template bool coordinatesOver(CoordinateFactors<QQ>&, const Matrix<QQ>&, const Vector<QQ>&,
                                     bool, Vector<QQ>&);
extern template std::optional<Matrix<long double>> coordinatesOverAll(
    CoordinateFactors<long double>&, const Matrix<long double>&, const Matrix<long double>&, bool);
extern template std::optional<Matrix<QQ>> coordinatesOverAll(CoordinateFactors<QQ>&,
                                                             const Matrix<QQ>&, const Matrix<QQ>&,
                                                             bool);

}  // namespace starsift
