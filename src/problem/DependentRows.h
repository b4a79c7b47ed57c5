// Equations that say nothing new: rational combinations of others.
#pragma once

#include <vector>

#include "problem/Vanu.h"

namespace starsift {

/// The ascending indices of the rows that are no combination of those kept before them,
/// decided in exact arithmetic whatever T is. With `verbose` a console line names each
/// other row. PrecisionException "row overflow": an entry outside the safe range of T.
template <class T>
std::vector<Index> el_dep_rows(const Matrix<T>& rows, bool verbose);

/// Removes the equations that are combinations of those before them, coefficients,
/// modulus columns and right-hand side taken together; the others stay as and where they
/// are. With `verbose` a console line says so, "Linear dependencies detected and
/// removed". Throws what el_dep_rows() throws; the problem is unchanged then.
template <class T>
void removeDependentEquations(Vanu<T>& problem, bool verbose);

}  // namespace starsift
