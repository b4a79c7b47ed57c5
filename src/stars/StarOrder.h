// The order of stars and the removal of duplicates.
#pragma once

#include "stars/Star.h"

namespace starsift {

/// The order of a solution file, best star first: smaller target norm; smaller
/// slack norm; known time before unknown, then earlier; higher version; text of x
/// with fileDigits, byte-wise; text of the parameters, byte-wise.
///
/// The parameters are also compared for two stars whose versions compare in the
/// other direction, so in that rare case two stars can be less than each other.
template <class T>
bool starLess(const Star<T>& a, const Star<T>& b);

/// Heap sort by starLess; of two stars that are less than each other the one with
/// the higher version comes first, so that the result doesn't depend on the previous
/// order. O(k log k) comparisons of k stars; every star moves once.
template <class T>
void sortStars(Array<Star<T>>& stars);

/// Removes each star whose x equals that of an earlier one exactly and, with
/// `compareParams`, whose parameter text does too. The earlier star stays; it
/// stays fresh only if all its duplicates were. Stars of different lengths are
/// fatal, "Vector: dimension mismatch9". O(total length of the stars).
template <class T>
void removeDuplicates(Array<Star<T>>& stars, bool compareParams);

extern template bool starLess(const Star<long double>&, const Star<long double>&);
extern template void sortStars(Array<Star<long double>>&);
extern template void removeDuplicates(Array<Star<long double>>&, bool);

}  // namespace starsift
