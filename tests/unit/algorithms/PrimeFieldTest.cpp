#include "algorithms/exact/PrimeField.h"

#include <gtest/gtest.h>

#include <limits>

#include "numbers/VectorQQ.h"

namespace starsift {
namespace {

/// The greatest one below the limit.
constexpr std::uint32_t largest = PrimeField::limit - 35;

TEST(PrimeField, ReducesEveryWord) {
  constexpr std::uint64_t most = std::numeric_limits<std::uint64_t>::max();
  for (const std::uint32_t prime : {2U, 3U, 7U, 65537U, 1'000'000'007U, largest})
    for (const std::uint64_t value :
         {std::uint64_t{0}, std::uint64_t{prime} - 1, std::uint64_t{prime},
          std::uint64_t{prime} * prime - 1, most / prime * prime, most / prime * prime - 1,
          most - 1, most})
      EXPECT_EQ(PrimeField(prime).reduce(value), value % prime) << value << " modulo " << prime;
}

TEST(PrimeField, InverseTimesTheNumberIsOne) {
  for (const std::uint32_t prime : {2U, 3U, 7U, largest}) {
    const PrimeField field(prime);
    for (const std::uint32_t a : {1U, prime / 2, prime - 1})
      EXPECT_EQ(field.multiply(a, field.inverse(a)), 1U) << a << " modulo " << prime;
  }
}

TEST(PrimeField, NegationOfZeroIsZero) {
  EXPECT_EQ(PrimeField(7).negate(0), 0U);
  EXPECT_EQ(PrimeField(7).negate(3), 4U);
}

TEST(PrimeField, ResiduesOfNegativeNumbersAreNotNegative) {
  const PrimeField field(7);
  const IntegerRow small(Vector<QQ>{QQ(1), QQ(-3), QQ(std::numeric_limits<long>::min())});
  EXPECT_EQ(field.residue(small, 1), 4U);
  // 2^63 = 8^21
  EXPECT_EQ(field.residue(small, 2), 6U);
  const IntegerRow big(Vector<QQ>{QQ(1), QQ(-pow(ZZ(8), ZZ(40)))});
  EXPECT_EQ(field.residue(big, 1), 6U);
  EXPECT_EQ(field.residue(ZZ(-15)), 6U);
}

TEST(PrimeField, DigitLengthensANumberByItsRoundedLogarithm) {
  EXPECT_EQ(PrimeField(2).digitBits(), 1U);
  EXPECT_EQ(PrimeField(7).digitBits(), 2U);
  EXPECT_EQ(PrimeField(largest).digitBits(), 29U);
}

TEST(NextPrime, IsTheLeastPrimeAbove) {
  EXPECT_EQ(nextPrime(0), 2U);
  EXPECT_EQ(nextPrime(2), 3U);
  EXPECT_EQ(nextPrime(7), 11U);
  EXPECT_EQ(nextPrime(23), 29U);
  EXPECT_EQ(nextPrime(1'000'000'000), 1'000'000'007U);
  EXPECT_EQ(nextPrime(largest - 1), largest);
}

TEST(LazySum, OfManyLargestProductsDoesNotOverflow) {
  const PrimeField field(largest);
  LazySum sum(field, 3);
  sum.assign(IntegerRow(Vector<QQ>{QQ(1), QQ(-1), QQ(-1)}));
  const std::vector<std::uint32_t> row{largest - 1, largest - 1};
  for (int k = 0; k < 100; ++k) sum.addMultiple(largest - 1, row, 1);
  // Each product is 1.
  EXPECT_EQ(sum[0], 1U);
  EXPECT_EQ(sum[1], 99U);
  EXPECT_EQ(sum[2], 99U);
}

TEST(LazySum, StartsFromResidues) {
  LazySum sum(PrimeField(7), 2);
  sum.addMultiple(3, std::vector<std::uint32_t>{4, 5}, 0);
  sum.assign(std::vector<std::uint32_t>{6, 0});
  EXPECT_EQ(sum[0], 6U);
  EXPECT_EQ(sum[1], 0U);
}

TEST(LazySum, StartsAfreshWithAnotherRow) {
  LazySum sum(PrimeField(7), 2);
  EXPECT_EQ(sum[1], 0U);
  sum.addMultiple(3, std::vector<std::uint32_t>{4, 5}, 0);
  EXPECT_EQ(sum[1], 1U);
  sum.assign(IntegerRow(Vector<QQ>{QQ(1), QQ(9)}));
  EXPECT_EQ(sum[0], 1U);
  EXPECT_EQ(sum[1], 2U);
}

}  // namespace
}  // namespace starsift
