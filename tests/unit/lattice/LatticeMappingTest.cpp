#include "lattice/Lattice.h"
#include "support/fixtures/BasisRows.h"
#include "support/fixtures/ExpectFails.h"
#include "support/fixtures/Problem.h"

namespace starsift {
namespace {

/// A lattice of three coordinates, scaled by 2, 3 and 4 and translated by 10, 20
/// and 0 while that is on.
template <class T>
class MappingOver : public testing::Test {
 protected:
  MappingOver() {
    lattice.reactionsOff = true;
    lattice.params.translate = true;
    lattice.reactionsOff = false;
    lattice.basis.scale = Vector<T>{T(2), T(3), T(4)};
    lattice.basis.translation = Vector<T>{T(10), T(20), T(0)};
    lattice.homValue = T(5);
    lattice.basis.homScaled = T(20);
    lattice.basis.replace(lattice.forwardMapAll(raw));
    lattice.basis.vecStatus[1] = 3;
    lattice.basis.savedFactors.echelon = raw;
    lattice.basis.workingFactors.echelon = raw;
    lattice.basis.TT.resize(2, false);
  }

  static void expectSame(const Matrix<T>& a, const Matrix<T>& b) {
    ASSERT_EQ(a.rowCount(), b.rowCount());
    for (Index i = 1; i <= a.rowCount(); ++i) EXPECT_TRUE(identical(a[i], b[i]));
  }

  void expectForgotten() const {
    EXPECT_EQ(lattice.basis.vecStatus[1], 0);
    EXPECT_FALSE(lattice.basis.workingFactors.echelon.isSet());
    EXPECT_TRUE(lattice.basis.savedFactors.echelon.isSet());
    expectSame(lattice.basis.B_save, raw);
  }

  void expectUntouched() const {
    EXPECT_EQ(lattice.basis.vecStatus[1], 3);
    EXPECT_TRUE(lattice.basis.workingFactors.echelon.isSet());
    EXPECT_TRUE(lattice.basis.savedFactors.echelon.isSet());
    EXPECT_EQ(lattice.basis.TT.dimension(), 2);
    expectSame(lattice.basis.B(), lattice.forwardMapAll(raw));
  }

  /// A homogeneous row and an inhomogeneous one.
  const Matrix<T> raw{{T(1), T(2), T(0)}, {T(3), T(4), T(10)}};
  Lattice<T, long double> lattice{&raw};
};

using LatticeNumbers = testing::Types<long double, QQ>;
TYPED_TEST_SUITE(MappingOver, LatticeNumbers);

TYPED_TEST(MappingOver, HomogeneousVectorIsScaled) {
  EXPECT_TRUE(identical(this->lattice.forwardMap(this->raw[1]), Vector<TypeParam>{2, 6, 0}));
}

TYPED_TEST(MappingOver, InhomogeneousVectorIsTranslatedInUnitsOfItsLastCoordinate) {
  EXPECT_TRUE(identical(this->lattice.forwardMap(this->raw[2]),
                        Vector<TypeParam>{6 - 2 * 10, 12 - 2 * 20, 40}));
}

TYPED_TEST(MappingOver, NothingIsTranslatedWhileThatIsOff) {
  this->lattice.reactionsOff = true;
  this->lattice.params.translate = false;
  EXPECT_TRUE(identical(this->lattice.forwardMap(this->raw[2]), Vector<TypeParam>{6, 12, 40}));
}

TYPED_TEST(MappingOver, WayBackUndoesIt) {
  this->expectSame(this->lattice.backMapAll(this->lattice.forwardMapAll(this->raw)), this->raw);
}

TYPED_TEST(MappingOver, WayBackTakesWorkingCoordinates) {
  const Vector<TypeParam> working{6 - 2 * 10, 12 - 2 * 20, 40};
  EXPECT_TRUE(identical(this->lattice.backMap(working), this->raw[2]));
}

TYPED_TEST(MappingOver, VectorOfAnotherLengthIsRefused) {
  EXPECT_FAILS_WITH(this->lattice.forwardMap(Vector<TypeParam>{1, 2, 3, 4}),
                    "Vector: dimension mismatch3");
}

TYPED_TEST(MappingOver, EmptyLatticeMapsTheEmptyVector) {
  const Lattice<TypeParam, long double> empty;
  EXPECT_EQ(empty.forwardMap(Vector<TypeParam>()).dimension(), 0);
  EXPECT_EQ(empty.backMap(Vector<TypeParam>()).dimension(), 0);
}

TYPED_TEST(MappingOver, ScaleReactionMapsTheBasisAnewWithUnitScale) {
  this->lattice.params.scale = true;
  EXPECT_TRUE(identical(this->lattice.basis.scale, Vector<TypeParam>{1, 1, 1}));
  EXPECT_EQ(this->lattice.basis.homScaled, TypeParam(5));
  this->expectSame(this->lattice.backMapAll(this->lattice.basis.B()), this->raw);
  EXPECT_TRUE(identical(this->lattice.basis.B()[2], Vector<TypeParam>{3 - 2 * 10, 4 - 2 * 20, 10}));
  this->expectForgotten();
}

TYPED_TEST(MappingOver, TranslateTurnedOffMapsTheBasisAnewWithoutTranslation) {
  this->lattice.params.translate = false;
  EXPECT_TRUE(identical(this->lattice.basis.translation, Vector<TypeParam>(3)));
  EXPECT_TRUE(identical(this->lattice.basis.B()[2], Vector<TypeParam>{6, 12, 40}));
  this->expectForgotten();
}

TYPED_TEST(MappingOver, TranslateTurnedOnStartsAtZero) {
  this->lattice.params.translate = false;
  this->lattice.params.translate = true;
  EXPECT_TRUE(identical(this->lattice.basis.translation, Vector<TypeParam>(3)));
  EXPECT_TRUE(identical(this->lattice.basis.B()[2], Vector<TypeParam>{6, 12, 40}));
}

TYPED_TEST(MappingOver, ConsistencyTurnedOnTracksFromTheBasisOfTheMoment) {
  test::exchangeRows(this->lattice, 1, 2);
  this->lattice.basis.vecStatus[1] = 3;
  this->lattice.basis.workingFactors.echelon = this->raw;
  this->lattice.params.consistency = true;
  EXPECT_TRUE(identical(this->lattice.basis.B_save[1], this->raw[2]));
  EXPECT_TRUE(identical(this->lattice.basis.B_save[2], this->raw[1]));
  ASSERT_EQ(this->lattice.basis.TT.dimension(), 1);
  this->expectSame(this->lattice.basis.TT[1], Matrix<TypeParam>::identity(2));
  EXPECT_FALSE(this->lattice.basis.savedFactors.echelon.isSet());
  EXPECT_TRUE(this->lattice.basis.workingFactors.echelon.isSet());
  EXPECT_EQ(this->lattice.basis.vecStatus[1], 3);
}

TYPED_TEST(MappingOver, ConsistencyTurnedOffDoesNothing) {
  this->lattice.params.consistency = true;
  this->lattice.basis.savedFactors.echelon = this->raw;
  this->lattice.basis.TT.resize(2, false);
  this->lattice.params.consistency = false;
  this->expectUntouched();
}

TYPED_TEST(MappingOver, ReactionsDoNothingWhileTheyAreOff) {
  this->lattice.reactionsOff = true;
  this->lattice.params.scale = true;
  this->lattice.params.consistency = true;
  this->expectUntouched();
  EXPECT_TRUE(identical(this->lattice.basis.scale, Vector<TypeParam>{2, 3, 4}));
}

TYPED_TEST(MappingOver, ParameterSetToWhatItIsDoesNothing) {
  this->lattice.params.translate = true;
  this->lattice.params.scale = false;
  this->expectUntouched();
}

TYPED_TEST(MappingOver, AssignmentOfParametersCausesNoReaction) {
  Lattice<TypeParam, long double> other;
  other.assignFrom(this->lattice, Settings::copy);
  this->lattice.params.convertFrom(Lattice<TypeParam, long double>().params);
  EXPECT_FALSE(this->lattice.params.translate);
  EXPECT_TRUE(identical(this->lattice.basis.translation, Vector<TypeParam>{10, 20, 0}));
  this->expectSame(this->lattice.basis.B(), other.basis.B());
}

}  // namespace
}  // namespace starsift
