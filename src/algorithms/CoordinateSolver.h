// Coordinates of vectors over the rows of a basis.
#pragma once

#include "algorithms/CoordinateFactors.h"
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

extern template CoordinateFactors<long double> factorBasis(const Matrix<long double>&);
extern template CoordinateFactors<QQ> factorBasis(const Matrix<QQ>&);
extern template bool solveCoordinates(const CoordinateFactors<long double>&,
                                      const Matrix<long double>&, const Vector<long double>&, bool,
                                      Vector<long double>&);
extern template bool solveCoordinates(const CoordinateFactors<QQ>&, const Matrix<QQ>&,
                                      const Vector<QQ>&, bool, Vector<QQ>&);

}  // namespace starsift
