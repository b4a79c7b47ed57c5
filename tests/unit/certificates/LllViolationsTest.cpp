#include "certificates/LllViolations.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "numbers/VectorQQ.h"
#include "support/fixtures/ExpectFails.h"

namespace starsift {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Kind = LllViolation::Kind;
using M = Matrix<long double>;

const QQ half(1, 2);
const QQ threeQuarters(3, 4);

std::vector<LllViolation> violations(const Matrix<QQ>& basis) {
  return lllViolations(basis, threeQuarters, half);
}

TEST(LllViolations, OfAReducedBasisAreNone) {
  EXPECT_THAT(violations({{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}), IsEmpty());
  EXPECT_THAT(violations({{0, 1, 0}, {1, 0, 1}, {-1, 0, 2}}), IsEmpty());
  EXPECT_THAT(violations({}), IsEmpty());
  EXPECT_EQ(firstLllViolation(Matrix<QQ>{{2, 1}, {-1, 2}}, threeQuarters, half), std::nullopt);
}

TEST(LllViolations, LeaveACoefficientOfExactlyEtaAlone) {
  EXPECT_THAT(violations({{2, 0}, {1, 3}}), IsEmpty());
  EXPECT_THAT(violations({{2, 0}, {-1, 3}}), IsEmpty());
}

TEST(LllViolations, NameTheCoefficientThatIsTooLarge) {
  EXPECT_THAT(violations({{200, 0}, {101, 300}}), ElementsAre(LllViolation{Kind::size, 2, 1}));
  EXPECT_THAT(violations({{200, 0}, {-101, 300}}), ElementsAre(LllViolation{Kind::size, 2, 1}));
  EXPECT_THAT(violations({{1, 0, 0}, {0, 1, 0}, {0, 1, 1}}),
              ElementsAre(LllViolation{Kind::size, 3, 2}));
}

TEST(LllViolations, NameTheRowsToExchange) {
  EXPECT_THAT(violations({{2, 0}, {0, 1}}), ElementsAre(LllViolation{Kind::exchange, 2, 1}));
  EXPECT_THAT(violations({{1, 0, 0}, {0, 2, 0}, {0, 0, 1}}),
              ElementsAre(LllViolation{Kind::exchange, 3, 2}));
}

TEST(LllViolations, LetRowsStayWhereTheExchangeConditionIsAnEquality) {
  // 3 + 0 against delta * 4
  EXPECT_THAT(lllViolations(Matrix<QQ>{{2, 0, 0, 0}, {0, 1, 1, 1}}, threeQuarters, half),
              IsEmpty());
  EXPECT_THAT(lllViolations(Matrix<QQ>{{2, 0, 0, 0}, {0, 1, 1, 1}}, QQ(750001, 1000000), half),
              ElementsAre(LllViolation{Kind::exchange, 2, 1}));
}

TEST(LllViolations, NameDependentRows) {
  EXPECT_THAT(
      violations({{1, 0}, {2, 0}, {0, 0}, {0, 1}}),
      ElementsAre(LllViolation{Kind::dependent, 2, 0}, LllViolation{Kind::dependent, 3, 0}));
  EXPECT_THAT(violations({{0, 0}}), ElementsAre(LllViolation{Kind::dependent, 1, 0}));
}

TEST(LllViolations, JudgeRowsBelowADependentOneWithoutIt) {
  EXPECT_THAT(violations({{1, 0}, {3, 0}, {1, 2}}),
              ElementsAre(LllViolation{Kind::dependent, 2, 0}, LllViolation{Kind::size, 3, 1}));
  EXPECT_THAT(violations({{9, 0}, {9, 0}, {0, 1}}),
              ElementsAre(LllViolation{Kind::dependent, 2, 0}, LllViolation{Kind::exchange, 3, 1}));
}

TEST(LllViolations, ComeRowByRow) {
  const Matrix<QQ> basis{{4, 0, 0}, {3, 1, 0}, {3, 7, 1}};
  EXPECT_THAT(violations(basis),
              ElementsAre(LllViolation{Kind::size, 2, 1}, LllViolation{Kind::exchange, 2, 1},
                          LllViolation{Kind::size, 3, 1}, LllViolation{Kind::size, 3, 2}));
  EXPECT_EQ(firstLllViolation(basis, threeQuarters, half), (LllViolation{Kind::size, 2, 1}));
}

TEST(LllViolations, DoNotDependOnACommonScale) {
  EXPECT_THAT(violations({{QQ(1, 3), 0}, {QQ(1, 6), QQ(1, 2)}}), IsEmpty());
  EXPECT_THAT(violations({{QQ(1, 3), 0}, {QQ(1, 5), QQ(1, 2)}}),
              ElementsAre(LllViolation{Kind::size, 2, 1}));
}

TEST(LllViolations, TellTheLastDigitOfALongNumberApart) {
  const QQ big(pow(ZZ(10), ZZ(60)));
  EXPECT_THAT(violations({{big + big, 0}, {big, big + big}}), IsEmpty());
  EXPECT_THAT(violations({{big + big, 0}, {big + QQ(1), big + big}}),
              ElementsAre(LllViolation{Kind::size, 2, 1}));
}

TEST(LllViolations, TakeLongDoublesForTheDecimalsThatTheyStandFor) {
  EXPECT_THAT(lllViolations(M{{0.2L, 0}, {0.1L, 0.3L}}, threeQuarters, half), IsEmpty());
  EXPECT_EQ(firstLllViolation(M{{0.2L, 0}, {0.3L, 0.3L}}, threeQuarters, half),
            (LllViolation{Kind::size, 2, 1}));
}

TEST(LllViolations, RefuseAnInfiniteEntry) {
  EXPECT_FAILS_WITH(violations({{QQ::infinity()}}), "exact matrix: infinite entry");
}

/// Ascending diagonal of a hundred digits, below it numbers of up to 98 digits.
Matrix<QQ> longBasis(Index rows) {
  const ZZ big = pow(ZZ(10), ZZ(99));
  const ZZ other = pow(ZZ(7), ZZ(115));
  Matrix<QQ> basis(rows, rows);
  for (Index i = 1; i <= rows; ++i) {
    basis[i][i] = QQ(big * ZZ(50 + i));
    for (Index j = 1; j < i; ++j) basis[i][j] = QQ(other * ZZ((i * j) % 11 - 5));
  }
  return basis;
}

TEST(LllViolations, OfSixtyRowsOfAHundredDigitsAreExact) {
  Matrix<QQ> basis = longBasis(60);
  EXPECT_EQ(firstLllViolation(basis, threeQuarters, half), std::nullopt);
  basis[60][59] += basis[59][59];
  EXPECT_EQ(firstLllViolation(basis, threeQuarters, half), (LllViolation{Kind::size, 60, 59}));
}

}  // namespace
}  // namespace starsift
