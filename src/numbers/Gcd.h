// Common divisors and multiples of rationals.
#pragma once

#include "numbers/QQ.h"

namespace starsift {

/// Returns the greatest number of which a and b are integer multiples, |a| if b is 0.
/// Signs are ignored. This is the result of Euclid's algorithm over the rationals:
/// gcd(1/2, 1/3) is 1/6. An infinite argument is fatal, "INF - INF is not defined".
QQ gcdQQ(const QQ& a, const QQ& b);
/// The same in long double, exactly: the algorithm computes remainders only, which
/// aren't rounded. Returns a nan if an argument is infinite or a nan.
long double gcdQQ(long double a, long double b);

/// Returns a * b / gcdQQ(a, b). Two zeros are fatal over QQ, "0 / 0 is not defined". In
/// long double they give a nan, and the product may be rounded.
QQ lcmQQ(const QQ& a, const QQ& b);
long double lcmQQ(long double a, long double b);

}  // namespace starsift
