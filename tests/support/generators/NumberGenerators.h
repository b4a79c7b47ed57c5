// Random numbers of every shape and size, and the same numbers in GMP's own C++
// classes to check against.
#pragma once

#include <gmpxx.h>
#include <rapidcheck.h>

#include <string>

#include "numbers/QQText.h"

namespace starsift::test {

/// Integers as decimal text, which RapidCheck can show: near one of the sizes at
/// which a number changes its shape or a product its width, with either sign.
rc::Gen<std::string> boundaryInteger();

/// Of up to `digits` decimal digits.
rc::Gen<std::string> longInteger(int digits);

/// All of the above and small ones, up to 2000 digits.
rc::Gen<std::string> arbitraryInteger();

/// Two arbitrary integers as "n/d", d not 0. Not in lowest terms.
rc::Gen<std::string> arbitraryFraction();

/// The fraction in GMP's class and in our own.
mpq_class gmpRational(const std::string& fraction);
QQ toQQ(const std::string& fraction);
QQ toQQ(const mpq_class& value);
mpq_class gmpRational(const QQ& value);

/// True when the number is in lowest terms and held small exactly when it fits.
bool isCanonical(const QQ& value);

}  // namespace starsift::test

namespace starsift {

/// For the reports of failed properties.
inline void showValue(const QQ& value, std::ostream& stream) {
  stream << value;
}

}  // namespace starsift

namespace rc {

/// Finite.
template <>
struct Arbitrary<starsift::QQ> {
  static Gen<starsift::QQ> arbitrary() {
    return gen::map(starsift::test::arbitraryFraction(),
                    [](const std::string& fraction) { return starsift::test::toQQ(fraction); });
  }
};

}  // namespace rc
