#include "certificates/Mpreal.h"

#include <sstream>

#include "core/Elimination.inl"
#include "core/Matrix.inl"
#include "core/Vector.inl"

namespace starsift {

namespace {

bool isDecimalCharacter(int c) {
  return (c >= '0' && c <= '9') || c == '+' || c == '-' || c == '.' || c == 'e' || c == 'E';
}

}  // namespace

const mpfr::mpreal& NumberTraits<mpfr::mpreal>::tolerance() {
  constexpr mpfr_prec_t bits = 256;
  static const mpfr::mpreal value = mpfr::mpreal(1, bits) / mpfr::mpreal(1'000'000'000, bits);
  return value;
}

template <class Source>
bool NumberTraits<mpfr::mpreal>::read(Source& source, mpfr::mpreal& value) {
  std::string token;
  skipWhiteSpace(source);
  for (int c = source.peek(); isDecimalCharacter(c); c = source.peek()) {
    token += static_cast<char>(c);
    source.take();
  }
  mpfr::mpreal result;
  if (token.empty() || mpfr_set_str(result.mpfr_ptr(), token.c_str(), 10, MPFR_RNDN) != 0)
    return false;
  value = std::move(result);
  return true;
}

template bool NumberTraits<mpfr::mpreal>::read(TextCursor&, mpfr::mpreal&);
template bool NumberTraits<mpfr::mpreal>::read(StreamCursor&, mpfr::mpreal&);

void NumberTraits<mpfr::mpreal>::append(std::string& out, const mpfr::mpreal& value, int digits) {
  std::ostringstream stream;
  stream.precision(digits);
  stream << value;
  out += stream.str();
}

bool NumberTraits<mpfr::mpreal>::toInteger(const mpfr::mpreal& value, std::int64_t& integer) {
  constexpr mpfr_exp_t bits = 62;
  if (!mpfr::isint(value)) return false;
  if (!mpfr::iszero(value) && mpfr_get_exp(value.mpfr_srcptr()) > bits) return false;
  integer = mpfr_get_si(value.mpfr_srcptr(), MPFR_RNDN);
  return true;
}

STARSIFT_INSTANTIATE_VECTOR(mpfr::mpreal);
STARSIFT_INSTANTIATE_MATRIX(mpfr::mpreal);
template Index eliminate(Matrix<mpfr::mpreal>&, Matrix<mpfr::mpreal>&, bool);

}  // namespace starsift
