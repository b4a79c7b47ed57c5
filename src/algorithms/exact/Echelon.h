// The row echelon form that the coordinate solver uses.
#pragma once

#include "numbers/VectorQQ.h"

namespace starsift {

/// Brings M to row echelon form by row operations and collects them: transform * old M ==
/// new M, `transform` square of order M.rowCount(), set here. With `reduced` pivots become 1 and
/// the entries above them 0.
///
/// As eliminate(), but of the rows that start in the leftmost column the one with the
/// greatest entry there, the first one if several are equal, is swapped once with the row
/// of the step. Returns the rank, negative if the number of row swaps was odd. Throws as
/// eliminate() does.
template <class T>
Index echelonForm(Matrix<T>& M, Matrix<T>& transform, bool reduced);

extern template Index echelonForm(Matrix<long double>&, Matrix<long double>&, bool);
extern template Index echelonForm(Matrix<QQ>&, Matrix<QQ>&, bool);

}  // namespace starsift
