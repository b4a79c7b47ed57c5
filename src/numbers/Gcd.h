// Common divisors and multiples of rationals.
#pragma once

#include "numbers/QQ.h"

namespace starsift {

/// The greatest number that a and b are integer multiples of; that of a and 0 is
/// |a|. Signs don't count. What Euclid's scheme gives over the rationals:
/// gcd(1/2, 1/3) is 1/6. Both must be finite; an infinity is fatal, "INF - INF is
/// not defined".
QQ gcdQQ(const QQ& a, const QQ& b);
/// The same in long double. Exact: the steps of the scheme are remainders, which
/// don't round. A nan where an argument is infinite or nan.
long double gcdQQ(long double a, long double b);

/// a * b / gcdQQ(a, b). Two zeros are fatal over QQ, "0 / 0 is not defined", and a
/// nan in long double, where the product may round.
QQ lcmQQ(const QQ& a, const QQ& b);
long double lcmQQ(long double a, long double b);

}  // namespace starsift
