// Ranges with a small common multiple.
#pragma once

#include "numbers/QQ.h"

namespace starsift {

/// The lower end of a range up to `hi`, equal to `lo` or below it by an integer, for which the
/// least common multiple of `multiple` and the range is smallest.
///
/// multiple  positive
/// lo        below hi, or within the tolerance of hi: then the result is `lo`
///
/// The search goes downwards and stops at the first range that divides `multiple` or is a
/// multiple of it; after 100000 steps it stops with the best result so far.
template <class T>
T lcmAdjust(const T& multiple, const T& hi, const T& lo);

extern template long double lcmAdjust(const long double&, const long double&, const long double&);
extern template QQ lcmAdjust(const QQ&, const QQ&, const QQ&);

}  // namespace starsift
