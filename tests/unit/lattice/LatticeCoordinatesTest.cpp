// Coordinates of raw vectors over the two bases of a lattice.
#include <gtest/gtest.h>

#include <algorithm>

#include "lattice/YLattice.h"
#include "support/fixtures/Problem.h"
#include "support/fixtures/RowsText.h"
#include "support/fixtures/TextOf.h"
#include "system/Exceptions.h"

namespace starsift {
namespace {

using test::q;
using test::rowsText;
using test::textOf;

/// A lattice of two vectors whose working basis is another one of it, scaled and translated.
template <class T>
class CoordinatesOver : public testing::Test {
 protected:
  CoordinatesOver() {
    lattice.reactionsOff = true;
    lattice.params.translate = true;
    lattice.basis.scale = {T(2), T(3), T(4)};
    lattice.basis.translation = {T(10), T(20), T(0)};
    lattice.basis.homScaled = T(4);
    lattice.basis.replace(lattice.forwardMapAll(Matrix<T>{{T(4), T(5), T(1)}, {T(1), T(2), T(0)}}));
  }

  std::string coordinates(const Vector<T>& vector, bool useSaved, bool round = true) {
    Vector<T> out{T(7)};
    if (lattice.coordinatesOf(vector, out, useSaved ? Over::saved : Over::working,
                              round ? Coordinates::integer : Coordinates::rational))
      return textOf(out);
    EXPECT_EQ(textOf(out), "[ 7 ]");
    return "none";
  }

  const Matrix<T> raw{{T(1), T(2), T(0)}, {T(3), T(3), T(1)}};
  Lattice<T, long double> lattice{&raw};
};
using LatticeNumbers = testing::Types<long double, QQ>;
TYPED_TEST_SUITE(CoordinatesOver, LatticeNumbers);

TYPED_TEST(CoordinatesOver, AreThoseOverTheGeneratedBasis) {
  EXPECT_EQ(this->coordinates({9, 12, 2}, true), "[ 3 2 ]");
}

TYPED_TEST(CoordinatesOver, AreThoseOverTheUntransformedWorkingBasis) {
  EXPECT_EQ(this->coordinates({9, 12, 2}, false), "[ 2 1 ]");
}

TYPED_TEST(CoordinatesOver, AreRefusedOffTheLattice) {
  EXPECT_EQ(this->coordinates({9, 12, 3}, true), "none");
  EXPECT_EQ(this->coordinates({9, 12, 3}, false), "none");
}

TYPED_TEST(CoordinatesOver, AreRoundedUnlessToldOtherwise) {
  const Vector<TypeParam> half{TypeParam(7) / TypeParam(2), 4, 1};
  EXPECT_EQ(this->coordinates(half, true), "none");
  EXPECT_EQ(this->coordinates(half, true, false),
            textOf(Vector<TypeParam>{TypeParam(1) / TypeParam(2), 1}));
}

TYPED_TEST(CoordinatesOver, KeepTheFactorsOfTheirBasis) {
  this->coordinates({9, 12, 2}, true);
  EXPECT_TRUE(this->lattice.basis.savedFactors.triangle);
  EXPECT_FALSE(this->lattice.basis.savedFactors.transform.isSet());
  EXPECT_FALSE(this->lattice.basis.workingFactors.triangle);
  this->coordinates({9, 12, 2}, true, false);
  EXPECT_TRUE(this->lattice.basis.savedFactors.transform.isSet());
  // A basis that changed without a word is not noticed: the product then tells.
  this->lattice.basis.B_save[1] = Vector<TypeParam>{0, 0, 0};
  EXPECT_EQ(this->coordinates({9, 12, 2}, true), "none");
  this->lattice.basis.savedFactors.clear();
  EXPECT_EQ(this->coordinates({6, 6, 2}, true), "[ 0 2 ]");
}

TYPED_TEST(CoordinatesOver, AreFoundOverDependentRowsToo) {
  this->lattice.basis.B_save[2] = Vector<TypeParam>{2, 4, 0};
  EXPECT_EQ(this->coordinates({3, 6, 0}, true), "[ 3 0 ]");
  EXPECT_EQ(this->coordinates({3, 7, 0}, true), "none");
}

TYPED_TEST(CoordinatesOver, AreFoundForEveryRow) {
  const Matrix<TypeParam> rows{{9, 12, 2}, {0, 0, 0}, {1, 2, 0}};
  EXPECT_EQ(rowsText(this->lattice.coordinatesOfAll(rows, Over::saved)), "[ 3 2 ] [ 0 0 ] [ 1 0 ]");
  EXPECT_EQ(rowsText(this->lattice.coordinatesOfAll(rows, Over::working)),
            "[ 2 1 ] [ 0 0 ] [ 0 1 ]");
}

TYPED_TEST(CoordinatesOver, AreMissedByOneRowOnly) {
  const Matrix<TypeParam> rows{{9, 12, 2}, {9, 12, 3}};
  try {
    this->lattice.coordinatesOfAll(rows, Over::saved);
    FAIL();
  } catch (const PrecisionException& exception) {
    EXPECT_EQ(exception.message(), "transformation coord error");
  }
}

TEST(Coordinates, AreExactAfterAConversion) {
  const Matrix<long double> basis{{3, 0}, {0, 7}};
  Lattice<long double, long double> standard(&basis);
  Vector<long double> rounded;
  ASSERT_TRUE(standard.coordinatesOf({1, 1}, rounded, Over::saved, Coordinates::rational));
  Lattice<QQ, long double> exact;
  exact.assignFrom(standard, Settings::copy);
  Vector<QQ> out;
  ASSERT_TRUE(exact.coordinatesOf({QQ(1), QQ(1)}, out, Over::saved, Coordinates::rational));
  EXPECT_EQ(out[1], q("1/3"));
  EXPECT_EQ(out[2], q("1/7"));
}

TEST(Coordinates, DoNotKeepALatticeFromLongDouble) {
  const Matrix<QQ> basis{{QQ(3), QQ(1)}, {QQ(1), QQ(7)}};
  Lattice<QQ, long double> exact(&basis);
  Vector<QQ> out;
  ASSERT_TRUE(exact.coordinatesOf({QQ(4), QQ(8)}, out, Over::saved, Coordinates::rational));
  ASSERT_TRUE(std::any_of(exact.basis.savedFactors.transform.begin(),
                          exact.basis.savedFactors.transform.end(),
                          [](const Vector<QQ>& row) { return !isExact(row[1]); }));
  Lattice<long double, long double> standard;
  EXPECT_NO_THROW(standard.assignFrom(exact, Settings::copy));
}

}  // namespace
}  // namespace starsift
