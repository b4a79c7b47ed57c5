#include "certificates/HermiteForm.h"

#include <gtest/gtest.h>

#include <random>

#include "certificates/ModularHermite.h"
#include "numbers/VectorQQ.h"
#include "support/fixtures/ExpectFails.h"
#include "support/fixtures/IntegerRows.h"

namespace starsift {
namespace {

using test::integerMatrix;

::testing::AssertionResult same(const Matrix<QQ>& a, const Matrix<QQ>& b) {
  if (a.rowCount() != b.rowCount() || a.columnCount() != b.columnCount())
    return ::testing::AssertionFailure() << "shapes differ";
  for (Index i = 1; i <= a.rowCount(); ++i)
    if (!identical(a[i], b[i])) return ::testing::AssertionFailure() << "row " << i << " differs";
  return ::testing::AssertionSuccess();
}

TEST(HermiteModulo, OfNoRowsIsTheModulus) {
  EXPECT_EQ(hermiteModulo({}, 2, ZZ(6)), integerMatrix({{6, 0}, {0, 6}}));
  EXPECT_EQ(hermiteModulo({}, 0, ZZ(6)), IntegerMatrix());
}

TEST(HermiteModulo, CombinesRowsAndModulus) {
  EXPECT_EQ(hermiteModulo(integerMatrix({{4, 1}}), 2, ZZ(6)), integerMatrix({{2, 2}, {0, 3}}));
  EXPECT_EQ(hermiteModulo(integerMatrix({{2, 1}, {1, 2}}), 2, ZZ(3)),
            integerMatrix({{1, 2}, {0, 3}}));
}

TEST(HermiteModulo, TakesEveryMultipleOfTheDeterminant) {
  const IntegerMatrix rows = integerMatrix({{3, 1, -2}, {-1, 4, 5}, {7, 0, 2}});
  const IntegerMatrix expected = hermiteModulo(rows, 3, ZZ(117));
  EXPECT_EQ(hermiteModulo(rows, 3, ZZ(234)), expected);
  EXPECT_EQ(hermiteModulo(rows, 3, ZZ(117L * 1'000'000'007)), expected);
}

TEST(HermiteModulo, KeepsEntriesAboveAPivotBelowIt) {
  EXPECT_EQ(hermiteModulo(integerMatrix({{1, -1, 8}, {0, 2, -3}, {0, 0, 5}}), 3, ZZ(10)),
            integerMatrix({{1, 1, 0}, {0, 2, 2}, {0, 0, 5}}));
}

TEST(HermiteForm, IsUpperTriangularForABasisOfFullRank) {
  EXPECT_TRUE(same(hermiteForm(Matrix<QQ>{{2, 1}, {1, 2}}), {{1, 2}, {0, 3}}));
  EXPECT_TRUE(same(hermiteForm(Matrix<QQ>{{0, -3}, {-1, 5}}), {{1, 1}, {0, 3}}));
}

TEST(HermiteForm, OfLongDoublesIsThatOfTheirDecimals) {
  EXPECT_TRUE(same(hermiteForm(Matrix<long double>{{0.2L, 0.1L}, {0.1L, 0.2L}}),
                   {{QQ(1, 10), QQ(1, 5)}, {0, QQ(3, 10)}}));
}

TEST(HermiteForm, LeavesOutWhatDepends) {
  EXPECT_TRUE(same(hermiteForm(Matrix<QQ>{{2, 4}, {0, 0}, {3, 6}}), {{1, 2}}));
  EXPECT_TRUE(same(hermiteForm(Matrix<QQ>{{4, 0}, {6, 0}, {0, 9}, {0, 6}}), {{2, 0}, {0, 3}}));
}

TEST(HermiteForm, OfZerosIsEmpty) {
  EXPECT_TRUE(same(hermiteForm(Matrix<QQ>(3, 2)), Matrix<QQ>(0, 2)));
  EXPECT_TRUE(same(hermiteForm(Matrix<QQ>(0, 2)), Matrix<QQ>(0, 2)));
  EXPECT_TRUE(same(hermiteForm(Matrix<QQ>(2, 0)), Matrix<QQ>(0, 0)));
}

TEST(HermiteForm, HasPivotsInTheFirstColumnsThatAreIndependent) {
  EXPECT_TRUE(
      same(hermiteForm(Matrix<QQ>{{0, 2, 4, 1}, {0, 3, 6, 5}}), {{0, 1, 2, 4}, {0, 0, 0, 7}}));
  EXPECT_TRUE(same(hermiteForm(Matrix<QQ>{{0, 2, -4, 0}}), {{0, 2, -4, 0}}));
  EXPECT_TRUE(same(hermiteForm(Matrix<QQ>{{0, -2, 4, 0}}), {{0, 2, -4, 0}}));
}

TEST(HermiteForm, OfFractionsKeepsTheirScale) {
  EXPECT_TRUE(same(hermiteForm(Matrix<QQ>{{QQ(1, 2), 0}, {QQ(1, 3), 0}}), {{QQ(1, 6), 0}}));
  EXPECT_TRUE(same(hermiteForm(Matrix<QQ>{{QQ(1, 2), QQ(1, 3)}, {QQ(-5, 2), 7}}),
                   {{QQ(1, 2), QQ(1, 3)}, {0, QQ(26, 3)}}));
}

TEST(HermiteForm, FindsPivotsThatAPrimeHides) {
  // The second column is twice the first one modulo the first prime tried.
  EXPECT_TRUE(same(hermiteForm(Matrix<QQ>{{1, 2, 0}, {1, 1'000'000'009, 0}}),
                   {{1, 2, 0}, {0, 1'000'000'007, 0}}));
  EXPECT_TRUE(same(hermiteForm(Matrix<QQ>{{1, 2, 1}, {1, 1'000'000'009, 0}}),
                   {{1, 2, 1}, {0, 1'000'000'007, -1}}));
}

TEST(HermiteForm, RefusesAnInfiniteEntry) {
  EXPECT_FAILS_WITH(hermiteForm(Matrix<QQ>{{QQ::infinity()}}), "exact matrix: infinite entry");
}

std::size_t longestEntry(const Matrix<QQ>& matrix) {
  std::size_t longest = 0;
  for (const Vector<QQ>& row : matrix)
    for (const QQ& entry : row)
      longest = std::max(longest, mpz_sizeinbase(entry.numerator().get(), 2));
  return longest;
}

TEST(HermiteForm, OfEightyRowsHasNoEntryBeyondTheDeterminant) {
  // Elimination without a modulus makes numbers of many times this length.
  std::mt19937_64 random(1);
  Matrix<QQ> rows(80, 80);
  for (Vector<QQ>& row : rows)
    for (QQ& entry : row) entry = QQ(static_cast<long>(random() % 201) - 100);
  const Matrix<QQ> form = hermiteForm(rows);
  QQ product = QQ::one();
  for (Index i = 1; i <= 80; ++i) product *= form[i][i];
  EXPECT_LE(longestEntry(form), mpz_sizeinbase(product.numerator().get(), 2));
  EXPECT_TRUE(same(hermiteForm(form), form));
}

}  // namespace
}  // namespace starsift
