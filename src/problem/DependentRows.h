// Redundant equations: rational combinations of other equations.
#pragma once

#include <vector>

#include "problem/Vanu.h"

namespace starsift {

/// The ascending indices of the rows that are not combinations of the kept rows before them,
/// decided in exact arithmetic whatever T is. With `verbose` a console line names each
/// other row. PrecisionException "row overflow": an entry outside the safe range of T.
template <class T>
std::vector<Index> el_dep_rows(const Matrix<T>& rows, bool verbose);

/// Removes the equations that are combinations of the equations before them, coefficients,
/// modulus columns and right-hand side taken together; the other equations and their order
/// stay. With `verbose` a console line reports it, "Linear dependencies detected and
/// removed". Throws what el_dep_rows() throws; the problem is unchanged then.
template <class T>
void removeDependentEquations(Vanu<T>& problem, bool verbose);

}  // namespace starsift
