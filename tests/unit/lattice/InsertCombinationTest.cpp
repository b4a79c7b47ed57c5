#include "lattice/reduce/InsertCombination.h"

#include <gtest/gtest.h>

#include "certificates/LatticeEquality.h"
#include "numbers/VectorQQ.h"
#include "system/Exceptions.h"

namespace starsift {
namespace {

template <class T>
class InsertCombinationOver : public testing::Test {
 protected:
  InsertCombinationOver() { basis.reset(&rows, T(1)); }

  /// Row k is this vector or its negative.
  bool isRow(Index k, const Vector<T>& vector) const {
    const Vector<T>& row = basis.B()[k];
    return identical(row, vector) || identical(row, Vector<T>(vector.dimension()) - vector);
  }

  const Matrix<T> rows{{7, 1, 0}, {0, 5, 2}, {1, 0, 9}};
  Basis<T, long double> basis;
};

using Numbers = testing::Types<long double, QQ>;
TYPED_TEST_SUITE(InsertCombinationOver, Numbers);

TYPED_TEST(InsertCombinationOver, SumOfTheMultiplesIsTheFirstRow) {
  insertCombination(this->basis, 1, {5.0L, -3.0L, 2.0L});
  EXPECT_TRUE(this->isRow(1, {37, -10, 12}));
  EXPECT_TRUE(sameLattice(this->basis.B(), this->rows));
}

TYPED_TEST(InsertCombinationOver, RowsBeforeTheFirstStay) {
  insertCombination(this->basis, 2, {2.0L, 3.0L});
  EXPECT_TRUE(identical(this->basis.B()[1], this->rows[1]));
  EXPECT_TRUE(this->isRow(2, {3, 10, 31}));
  EXPECT_TRUE(sameLattice(this->basis.B(), this->rows));
}

TYPED_TEST(InsertCombinationOver, CommonDivisorIsLeftOut) {
  insertCombination(this->basis, 1, {4.0L, 0.0L, 6.0L});
  EXPECT_TRUE(this->isRow(1, {17, 2, 27}));
  EXPECT_TRUE(sameLattice(this->basis.B(), this->rows));
}

TYPED_TEST(InsertCombinationOver, TransformationFollows) {
  this->basis.tracksMoves = true;
  insertCombination(this->basis, 1, {5.0L, -3.0L, 2.0L});
  EXPECT_TRUE(identical(this->basis.TT[1] * this->basis.B_save, this->basis.B()));
}

TEST(InsertCombination, LongDoublesThatMayRoundAreRefused) {
  const Matrix<long double> rows{{9e17L, 0}, {1, 9e17L}};
  Basis<long double, long double> basis;
  basis.reset(&rows, 1);
  EXPECT_THROW(insertCombination(basis, 1, {3.0L, 1.0L}), PrecisionException);
  EXPECT_TRUE(sameLattice(basis.B(), rows));
}

}  // namespace
}  // namespace starsift
