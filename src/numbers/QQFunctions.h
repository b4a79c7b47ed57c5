// Powers, roots and logarithms of QQ.
//
// A power or root that is rational is exact. Any other one is within 10^-30 relative,
// a logarithm within 10^-30 absolute; the steps to it are rounded to 192 bits as in
// Transcendental.h, so the same arguments give the same digits everywhere.
#pragma once

#include "numbers/QQ.h"

namespace starsift {

/// Returns base ^ exponent. A negative exponent gives 1 / base ^ -exponent, so 0 ^ -1 is
/// +infinity; 0 ^ 0 is 1. A fractional exponent p/q, in lowest terms, gives the q-th
/// root of the p-th power.
///
/// Fatal: a negative base with an even q or an infinite exponent ("QQ: complex roots
/// are not implemented"); a result of more than 2^31 bits ("QQ: exponent out of
/// range"). An infinite exponent gives the limit, which is 1 for the base 1.
QQ pow(const QQ& base, const QQ& exponent);

/// Returns the real n-th root; a negative n gives the reciprocal of the -n-th root.
///
/// Fatal, in this order: n = 0 ("QQ: zero-th roots are not defined"), value 0 with
/// a negative n ("QQ: division by zero"), an even root of a negative value ("QQ:
/// complex roots are not implemented").
QQ root(const QQ& value, const ZZ& n);

/// Return the logarithm to the base 2 or e, and +infinity for +infinity.
///
/// Fatal: -infinity ("log2(-inf) is not implemented / defined", for log() with
/// "log"), any other value <= 0 ("log2(x), x <= 0 is not implemented / defined").
QQ log2(const QQ& value);
QQ log(const QQ& value);

}  // namespace starsift
