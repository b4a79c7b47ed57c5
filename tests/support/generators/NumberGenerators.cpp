#include "support/generators/NumberGenerators.h"

#include <array>

namespace starsift::test {

namespace {

const std::array<const char*, 13> boundaries = {"0",
                                                "4294967296",
                                                "2147483648",
                                                "65536",
                                                "1000000000",
                                                "1000000000000000000",
                                                "4611686018427387904",
                                                "9223372036854775808",
                                                "18446744073709551616",
                                                "19807040628566084398385987584",
                                                "85070591730234615865843651857942052864",
                                                "340282366920938463463374607431768211456",
                                                "1000000000000000000000000000000000000"};

std::string decimalText(int value) {
  return std::to_string(value);
}

}  // namespace

rc::Gen<std::string> boundaryInteger() {
  return rc::gen::apply(
      [](std::size_t which, int offset, bool negative) {
        mpz_class result = mpz_class(boundaries[which]) + offset;
        if (negative) result = -result;
        return result.get_str();
      },
      rc::gen::inRange<std::size_t>(0, boundaries.size()), rc::gen::inRange(-3, 4),
      rc::gen::arbitrary<bool>());
}

rc::Gen<std::string> longInteger(int digits) {
  return rc::gen::exec([digits] {
    const auto length = static_cast<std::size_t>(*rc::gen::inRange(1, digits + 1));
    const auto text = *rc::gen::container<std::string>(length, rc::gen::inRange('0', ':'));
    return *rc::gen::arbitrary<bool>() ? "-" + text : text;
  });
}

rc::Gen<std::string> arbitraryInteger() {
  return rc::gen::weightedOneOf<std::string>(
      {{6, rc::gen::map(rc::gen::inRange(-1000, 1001), decimalText)},
       {6, boundaryInteger()},
       {3, longInteger(40)},
       {1, longInteger(2000)}});
}

rc::Gen<std::string> arbitraryFraction() {
  const auto denominator = rc::gen::weightedOneOf<std::string>(
      {{3, rc::gen::just(std::string("1"))},
       {3, rc::gen::map(rc::gen::inRange(1, 1000), decimalText)},
       {4, rc::gen::suchThat(arbitraryInteger(),
                             [](const std::string& text) { return mpz_class(text, 10) != 0; })}});
  return rc::gen::apply([](const std::string& n, const std::string& d) { return n + '/' + d; },
                        arbitraryInteger(), denominator);
}

bool isCanonical(const QQ& value) {
  if (value.isInf()) return true;
  const ZZ numerator = value.numerator();
  const ZZ nenner = value.nenner();
  if (nenner <= ZZ(0) || gcd(numerator, nenner) != ZZ(1)) return false;
  std::int64_t smallNumerator = 0;
  std::uint32_t smallNenner = 0;
  const bool fits =
      mpz_sizeinbase(numerator.get(), 2) <= 62 && mpz_sizeinbase(nenner.get(), 2) <= 32;
  return value.toSmall(smallNumerator, smallNenner) == fits;
}

}  // namespace starsift::test
