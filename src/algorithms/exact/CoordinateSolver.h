// Coordinates of vectors over the rows of a basis.
#pragma once

#include <optional>

#include "algorithms/exact/CoordinateFactors.h"
#include "numbers/VectorQQ.h"

namespace starsift {

/// What solveCoordinates() needs of a basis. Throws as echelonForm(). O(m^2 (n + m)) for n
/// rows of m entries.
template <class T>
CoordinateFactors<T> factorBasis(const Matrix<T>& basis);

/// Looks for `coordinates` with coordinates * basis == vector.
///
/// basis        n x m, its rows may be dependent
/// factors      factorBasis(basis)
/// vector       m entries
/// rounded      only integers count: each coordinate is rounded before the test
/// coordinates  n entries, 0 for a row that depends on those before it; set only when
///              the result is true
///
/// False for a vector outside the span of the rows and, with `rounded`, off their
/// lattice. The product decides, and with `rounded` it is exact: long double may miss
/// coordinates of a bad basis, but never finds wrong ones. Throws PrecisionException where
/// T can't hold the product. O(m (n + m)).
template <class T>
bool solveCoordinates(const CoordinateFactors<T>& factors, const Matrix<T>& basis,
                      const Vector<T>& vector, bool rounded, Vector<T>& coordinates);

/// The n coordinates of a vector of m entries over the rows of `basis`; only integers count
/// with `rounded`. False, `out` unchanged, where there are none. What is made of the basis for
/// that stays in `factors`, which are empty or were made of the same basis: for integers over
/// independent rows a BasisSolver, else factorBasis(). Throws as these.
template <class T>
bool coordinatesOver(CoordinateFactors<T>& factors, const Matrix<T>& basis, const Vector<T>& vector,
                     bool rounded, Vector<T>& out);

/// The coordinates of every row; nothing where one has none.
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
