// The same numbers in GMP's own C++ classes and in ours, to compute with both.
#pragma once

#include <gmpxx.h>

#include <string>

#include "numbers/QQ.h"

namespace starsift::test {

/// The fraction, "n/d" with d not 0, in GMP's class and in our own.
mpq_class gmpRational(const std::string& fraction);
QQ toQQ(const std::string& fraction);
QQ toQQ(const mpq_class& value);
mpq_class gmpRational(const QQ& value);

}  // namespace starsift::test
