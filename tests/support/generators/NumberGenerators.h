// Random numbers of every shape and size.
#pragma once

#include <rapidcheck.h>

#include <string>

#include "numbers/QQText.h"
#include "support/oracles/GmpRational.h"

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
