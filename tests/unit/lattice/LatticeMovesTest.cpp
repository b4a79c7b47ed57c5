#include <gtest/gtest.h>

#include "lattice/Lattice.h"
#include "numbers/Conversion.h"
#include "numbers/VectorQQ.h"
#include "support/fixtures/ExpectFails.h"
#include "support/fixtures/RowsText.h"

namespace starsift {
namespace {

using test::rowsText;

template <class T>
class MovesOver : public testing::Test {
 protected:
  MovesOver() {
    subject.reset(&basis, LatPath::keep);
    for (Index k = 1; k <= subject.basis.n; ++k) {
      subject.basis.vectorAmounts[k] = static_cast<long double>(k);
      subject.basis.vectorMarks[k] = 10 * k;
      subject.basis.vecStatus[k] = ST_MU | ST_SIZE_REDUCED;
    }
  }

  Matrix<T> basis{{T(3), T(0)}, {T(1), T(1)}, {T(0), T(5)}, {T(2), T(2)}};
  Lattice<T, long double> subject;
};
using NumberTypes = testing::Types<long double, QQ>;
TYPED_TEST_SUITE(MovesOver, NumberTypes);

TYPED_TEST(MovesOver, ExchangeTakesAlongWhatBelongsToAVector) {
  auto& lattice = this->subject;
  lattice.swapBasisVectors(2, 4, RowStatus::forget);
  EXPECT_EQ(rowsText(lattice.basis.B()), "[ 3 0 ] [ 2 2 ] [ 0 5 ] [ 1 1 ]");
  EXPECT_EQ(lattice.basis.vectorAmounts[2], 4.0L);
  EXPECT_EQ(lattice.basis.vectorAmounts[4], 2.0L);
  EXPECT_EQ(lattice.basis.vectorMarks[2], 40);
  EXPECT_EQ(lattice.basis.vectorMarks[4], 20);
  EXPECT_EQ(rowsText(lattice.basis.B_save), rowsText(this->basis));
}

TYPED_TEST(MovesOver, ExchangeForgetsTheVectorsFromTheFirstOn) {
  auto& lattice = this->subject;
  lattice.basis.workingFactors.echelon = this->basis;
  lattice.swapBasisVectors(4, 2, RowStatus::forget);
  EXPECT_EQ(lattice.basis.vecStatus[1], ST_MU | ST_SIZE_REDUCED);
  for (const Index k : {2, 3, 4}) EXPECT_EQ(lattice.basis.vecStatus[k], 0);
  EXPECT_EQ(lattice.basis.workingFactors.echelon.rowCount(), 0);
}

TYPED_TEST(MovesOver, ExchangeMayKeepTheStatus) {
  auto& lattice = this->subject;
  lattice.basis.workingFactors.echelon = this->basis;
  lattice.basis.vecStatus[2] = ST_DEPENDENT;
  lattice.swapBasisVectors(2, 3, RowStatus::keep);
  EXPECT_EQ(lattice.basis.vecStatus[2], ST_MU | ST_SIZE_REDUCED);
  EXPECT_EQ(lattice.basis.vecStatus[3], ST_DEPENDENT);
  EXPECT_EQ(lattice.basis.workingFactors.echelon.rowCount(), 4);
}

TYPED_TEST(MovesOver, DependentVectorsMayKeepTheirStatusFromTheSecondOn) {
  auto& lattice = this->subject;
  lattice.basis.vecStatus[4] = ST_DEPENDENT;
  lattice.basis.keepDependent = true;
  lattice.swapBasisVectors(2, 3, RowStatus::forget);
  EXPECT_EQ(lattice.basis.vecStatus[3], 0);
  EXPECT_EQ(lattice.basis.vecStatus[4], ST_DEPENDENT);
  lattice.swapBasisVectors(1, 2, RowStatus::forget);
  EXPECT_EQ(lattice.basis.vecStatus[4], 0);
}

TYPED_TEST(MovesOver, DependentVectorsAreForgottenOtherwise) {
  auto& lattice = this->subject;
  lattice.basis.vecStatus[4] = ST_DEPENDENT;
  lattice.swapBasisVectors(2, 3, RowStatus::forget);
  EXPECT_EQ(lattice.basis.vecStatus[4], 0);
}

TYPED_TEST(MovesOver, ExchangeWithItselfDoesNothing) {
  this->subject.swapBasisVectors(3, 3, RowStatus::forget);
  EXPECT_EQ(this->subject.basis.vecStatus[3], ST_MU | ST_SIZE_REDUCED);
}

TYPED_TEST(MovesOver, SlotZeroTakesPart) {
  auto& lattice = this->subject;
  lattice.swapBasisVectors(0, 3, RowStatus::forget);
  EXPECT_EQ(lattice.basis.vecStatus[2], ST_MU | ST_SIZE_REDUCED);
  EXPECT_EQ(lattice.basis.vecStatus[3], 0);
  lattice.swapBasisVectors(0, 3, RowStatus::forget);
  EXPECT_EQ(rowsText(lattice.basis.B()), rowsText(this->basis));
}

TYPED_TEST(MovesOver, ExchangeIsTrackedWhereAskedFor) {
  auto& lattice = this->subject;
  lattice.swapBasisVectors(1, 2, RowStatus::forget);
  EXPECT_EQ(rowsText(lattice.basis.TT[1]), "[ 1 0 0 0 ] [ 0 1 0 0 ] [ 0 0 1 0 ] [ 0 0 0 1 ]");
  lattice.params.consistency = true;
  lattice.swapBasisVectors(1, 2, RowStatus::forget);
  EXPECT_EQ(rowsText(lattice.basis.TT[1]), "[ 0 1 0 0 ] [ 1 0 0 0 ] [ 0 0 1 0 ] [ 0 0 0 1 ]");
}

TYPED_TEST(MovesOver, ExchangeOfNoVectorFails) {
  EXPECT_FAILS_WITH(this->subject.swapBasisVectors(1, 5, RowStatus::forget),
                    "Matrix: row swap index out of range");
}

TYPED_TEST(MovesOver, OrthogonalisationSeesTheExchange) {
  auto& lattice = this->subject;
  lattice.resize(2, 0, Vectors::discard);
  std::fill(lattice.basis.vecStatus.begin(), lattice.basis.vecStatus.end(), StatusWord());
  EXPECT_TRUE(lattice.classicOrthogonalise(1, 0));
  EXPECT_EQ(lattice.gramSchmidt.cLen[1], 9.0L);
  lattice.swapBasisVectors(1, 2, RowStatus::forget);
  EXPECT_TRUE(lattice.classicOrthogonalise(1, 0));
  EXPECT_EQ(lattice.gramSchmidt.cLen[1], 2.0L);
  EXPECT_EQ(lattice.gramSchmidt.mu[2][1], 1.5L);
}

TYPED_TEST(MovesOver, SortsByLength) {
  this->subject.sortBasis(0);
  EXPECT_EQ(rowsText(this->subject.basis.B()), "[ 1 1 ] [ 2 2 ] [ 3 0 ] [ 0 5 ]");
  EXPECT_EQ(this->subject.basis.vectorMarks[1], 20);
  EXPECT_EQ(this->subject.basis.vectorMarks[4], 30);
}

TYPED_TEST(MovesOver, SortsTheFirstVectorsOnly) {
  this->subject.sortBasis(2);
  EXPECT_EQ(rowsText(this->subject.basis.B()), "[ 1 1 ] [ 3 0 ] [ 0 5 ] [ 2 2 ]");
}

TYPED_TEST(MovesOver, SortingNothingChangesNothing) {
  Lattice<TypeParam, long double> empty;
  empty.sortBasis(0);
  EXPECT_EQ(empty.basis.n, 0);
}

TYPED_TEST(MovesOver, SortsManyVectors) {
  Matrix<TypeParam> rows(97, 1);
  for (Index k = 1; k <= 97; ++k) rows[k][1] = TypeParam(static_cast<int>(k * 31 % 97));
  this->subject.reset(&rows, LatPath::keep);
  this->subject.sortBasis(0);
  for (Index k = 1; k <= 97; ++k)
    EXPECT_EQ(this->subject.basis.B()[k][1], TypeParam(static_cast<int>(k - 1)));
}

}  // namespace
}  // namespace starsift
