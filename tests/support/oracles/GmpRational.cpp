#include "support/oracles/GmpRational.h"

namespace starsift::test {

mpq_class gmpRational(const std::string& fraction) {
  const std::size_t stroke = fraction.find('/');
  mpq_class result(mpz_class(fraction.substr(0, stroke), 10),
                   mpz_class(fraction.substr(stroke + 1), 10));
  result.canonicalize();
  return result;
}

QQ toQQ(const std::string& fraction) {
  const std::size_t stroke = fraction.find('/');
  return {ZZ(fraction.substr(0, stroke), 10), ZZ(fraction.substr(stroke + 1), 10)};
}

QQ toQQ(const mpq_class& value) {
  return toQQ(value.get_num().get_str() + '/' + value.get_den().get_str());
}

mpq_class gmpRational(const QQ& value) {
  return {mpz_class(value.numerator().get()), mpz_class(value.nenner().get())};
}

}  // namespace starsift::test
