#include "files/PlainText.h"

namespace starsift {

std::string plainText(const QQ& value) {
  if (value.isInf()) return value.sign() ? "inf" : "-inf";
  const std::string numerator = value.numerator().toString();
  return value.isInteger() ? numerator : numerator + '/' + value.nenner().toString();
}

}  // namespace starsift
