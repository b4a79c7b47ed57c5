// From the normal form of a problem to the basis that is reduced.
#include <gtest/gtest.h>

#include "certificates/Kernel.h"
#include "certificates/LatticeEquality.h"
#include "support/fixtures/ExpectFails.h"
#include "support/fixtures/LatticeOfProblem.h"
#include "support/fixtures/RowsText.h"

namespace starsift {
namespace {

using test::messageOf;
using test::q;
using test::rowsText;
using test::textOf;

// x + 2 y largest, x from 0 to 1, y from 0 to 6.
constexpr const char* box = "[ inf ] [ [ 1 2 ] ] [ ] [ ] [ ] [ ] [ ] [ ] [ 0 0 ] [ 0 0 ] [ 1 6 ]";
// The same with values from 5 on, and with the largest one only.
constexpr const char* goal =
    "[ inf ] = [ 5 ] [ [ 1 2 ] ] [ ] [ ] [ ] [ ] [ ] [ ] [ 0 0 ] [ 0 0 ] [ 1 6 ]";
constexpr const char* summit =
    "[ inf ] = [ 13 ] [ [ 1 2 ] ] [ ] [ ] [ ] [ ] [ ] [ ] [ 0 0 ] [ 0 0 ] [ 1 6 ]";
// 2 <= x + y <= 5, both from 0 to 4.
constexpr const char* band = "[ ] [ ] [ ] [ ] [ ] [ [ 1 1 ] ] [ 2 ] [ 5 ] [ 0 0 ] [ 0 0 ] [ 4 4 ]";
// x free, y from 0 on, z up to 3.
constexpr const char* open =
    "[ inf ] [ [ 0 0 1 ] ] [ ] [ ] [ ] [ ] [ ] [ ] [ 0 0 0 ] [ -inf 0 0 ] [ inf inf 3 ]";
// 3 x + 5 y + 7 z = 31 and x + y = 2 modulo 4.
constexpr const char* mixed =
    "[ ] [ ] [ [ 3 5 7 ] [ 1 1 0 ] ] [ 31 2 ] [ 0 4 ] [ ] [ ] [ ] [ 0 0 0 ] [ 0 0 0 ] [ 9 9 9 ]";
// The same without the modulus, with a band of its own and a goal of which 4 may miss.
constexpr const char* three =
    "[ 4 inf ] [ [ 1 0 -1 ] [ 1 1 1 ] ] [ [ 3 5 7 ] ] [ 31 ] [ ] [ [ 1 2 0 ] ] [ 1 ] [ 9 ] "
    "[ 0 0 0 ] [ 0 0 0 ] [ 9 9 9 ]";
// x - y = 0 and x + y + 2 z = 1.
constexpr const char* odd =
    "[ ] [ ] [ [ 1 -1 0 ] [ 1 1 2 ] ] [ 0 1 ] [ ] [ ] [ ] [ ] [ 0 0 0 ] [ -9 -9 -9 ] [ 9 9 9 ]";

template <class T>
class LatticeGenerateOver : public test::LatticeOfProblem<T> {
 protected:
  void generate(const char* problem, bool aardal) {
    this->normalise(problem);
    this->live.generateLattice(aardal ? LatticeKind::equations : LatticeKind::full);
  }

  void fillColumns() {
    const Matrix<T> basis{{1, 2, 3, 4, 5}, {0, 0, 6, 7, 8}, {9, 1, 2, 3, 4}};
    this->live.reset(&basis, LatPath::keep);
    for (Vector<T>* vector :
         {&this->live.frame.l, &this->live.frame.r, &this->live.frame.lSave,
          &this->live.frame.rSave, &this->live.frame.c, &this->live.basis.translation})
      *vector = Vector<T>{11, 12, 13, 14, 15};
    this->live.frame.latticeKind = LatticeKind::equations;
    this->live.frame.equationsRemoved = false;
    this->live.frame.modsInLattice = true;
  }
};
TYPED_TEST_SUITE(LatticeGenerateOver, test::LatticeNumbers);

TYPED_TEST(LatticeGenerateOver, PointsOfTheBoundsAreTheEndsOfTheBox) {
  this->generate(box, false);
  const auto& lattice = this->live;
  EXPECT_EQ(lattice.frame.rangeMultiple, TypeParam(6));
  EXPECT_EQ(textOf(lattice.frame.c), "[ 6 1 0 ]");
  EXPECT_EQ(rowsText(lattice.basis.B_save), "[ -6 -6 1 ] [ 12 0 0 ] [ 0 2 0 ]");
  EXPECT_EQ(textOf(lattice.frame.l), "[ -6 -6 1 ]");
  EXPECT_EQ(textOf(lattice.frame.r), "[ 6 6 1 ]");
  EXPECT_EQ(textOf(this->image({TypeParam(0), TypeParam(6)})), "[ -6 6 1 ]");
  EXPECT_EQ(textOf(this->image({TypeParam(1), TypeParam(0)})), "[ 6 -6 1 ]");
}

TYPED_TEST(LatticeGenerateOver, StateFollowsTheBasis) {
  this->generate(box, false);
  const auto& lattice = this->live;
  EXPECT_EQ(rowsText(lattice.basis.B()), rowsText(lattice.basis.B_save));
  EXPECT_EQ(textOf(lattice.frame.lSave), textOf(lattice.frame.l));
  EXPECT_EQ(textOf(lattice.frame.rSave), textOf(lattice.frame.r));
  EXPECT_EQ(lattice.frame.supLimit, 3 * (36.0L + 36.0L + 1.0L));
  EXPECT_FALSE(lattice.frame.lEqualsR);
  EXPECT_EQ(lattice.frame.latticeKind, LatticeKind::full);
  EXPECT_TRUE(lattice.frame.equationsRemoved);
  EXPECT_FALSE(lattice.frame.modsInLattice);
  ASSERT_EQ(lattice.basis.TT.dimension(), 1);
  EXPECT_TRUE(this->isIdentity(lattice.basis.TT[1], 3));
}

TYPED_TEST(LatticeGenerateOver, EarlierScaleTranslationAndStatusAreUndone) {
  this->generate(box, false);
  auto& lattice = this->live;
  lattice.basis.scale[1] = lattice.basis.translation[1] = lattice.basis.homScaled = TypeParam(7);
  lattice.basis.vecStatus[1] = ST_MU;
  lattice.basis.TT.resize(2, false);
  lattice.basis.savedFactors.echelon = lattice.basis.B();
  lattice.basis.workingFactors.echelon = lattice.basis.B();
  lattice.generateLattice(LatticeKind::full);
  EXPECT_EQ(textOf(lattice.basis.scale), "[ 1 1 1 ]");
  EXPECT_EQ(textOf(lattice.basis.translation), "[ 0 0 0 ]");
  EXPECT_EQ(lattice.basis.homScaled, TypeParam(1));
  EXPECT_EQ(lattice.basis.vecStatus[1], 0);
  EXPECT_EQ(lattice.basis.TT.dimension(), 1);
  EXPECT_FALSE(lattice.basis.savedFactors.echelon.isSet());
  EXPECT_FALSE(lattice.basis.workingFactors.echelon.isSet());
}

TYPED_TEST(LatticeGenerateOver, StoredVectorsAreDiscardedAndStarsKept) {
  this->generate(box, false);
  auto& lattice = this->live;
  lattice.found.bestVector = TimeVector<TypeParam>{1, 2, 3};
  lattice.found.solutions.resize(1, false);
  lattice.file.stars.resize(1, false);
  HeuristicVector<TypeParam, long double> good;
  good.resize(9, false);
  lattice.found.collected.insert(good);
  lattice.found.chosen.insert(good);
  lattice.generateLattice(LatticeKind::full);
  EXPECT_EQ(lattice.found.collected.count(), 0);
  EXPECT_EQ(lattice.found.chosen.count(), 0);
  EXPECT_FALSE(lattice.found.bestVector.isSet());
  EXPECT_EQ(lattice.found.solutions.dimension(), 0);
  EXPECT_EQ(lattice.file.stars.dimension(), 1);
}

TYPED_TEST(LatticeGenerateOver, FreeVariablesHaveNoBox) {
  this->generate(open, false);
  const auto& lattice = this->live;
  EXPECT_EQ(textOf(lattice.frame.l), "[ -inf -3 -3 1 ]");
  EXPECT_EQ(textOf(lattice.frame.r), "[ inf inf 3 1 ]");
  EXPECT_EQ(textOf(lattice.frame.c), "[ 1 1 1 0 ]");
  EXPECT_EQ(rowsText(lattice.basis.B_save), "[ -3 -3 -3 1 ] [ 2 0 0 0 ] [ 0 2 0 0 ] [ 0 0 2 0 ]");
}

TYPED_TEST(LatticeGenerateOver, InfiniteBoundsHaveNoLimit) {
  this->generate(open, false);
  EXPECT_TRUE(NumberTraits<long double>::isInfinite(this->live.frame.supLimit));
  EXPECT_GT(this->live.frame.supLimit, 0.0L);
  EXPECT_FALSE(this->live.frame.lEqualsR);
}

TYPED_TEST(LatticeGenerateOver, ConstantsAreOnePointWithoutABox) {
  this->generate("[ inf ] [ [ 1 2 ] ] [ ] [ ] [ ] [ ] [ ] [ ] [ 0 0 ] [ 3 4 ] [ 3 4 ]", false);
  const auto& lattice = this->live;
  EXPECT_EQ(rowsText(lattice.basis.B_save), "[ 1 ]");
  EXPECT_EQ(textOf(lattice.frame.l), "[ 1 ]");
  EXPECT_EQ(textOf(lattice.frame.r), "[ 1 ]");
  EXPECT_TRUE(lattice.frame.lEqualsR);
  EXPECT_EQ(lattice.frame.supLimit, 3.0L);
}

TYPED_TEST(LatticeGenerateOver, InequationIsCentredOnItsRange) {
  this->generate(band, false);
  const auto& lattice = this->live;
  EXPECT_EQ(lattice.frame.rangeMultiple, TypeParam(12));
  EXPECT_EQ(textOf(lattice.frame.c), "[ 4 3 3 0 ]");
  EXPECT_EQ(rowsText(lattice.basis.B_save), "[ -28 -12 -12 1 ] [ 8 6 0 0 ] [ 8 0 6 0 ]");
  EXPECT_EQ(textOf(lattice.frame.l), "[ -12 -12 -12 1 ]");
  EXPECT_EQ(textOf(lattice.frame.r), "[ 12 12 12 1 ]");
}

TYPED_TEST(LatticeGenerateOver, TargetIsCentredOnItsRange) {
  this->generate(goal, false);
  const auto& lattice = this->live;
  // From 5 to 13 it is 8; 7, which is 12 with 6, comes behind 9, ..., 12.
  EXPECT_EQ(lattice.rtu - lattice.ltu, TypeParam(12));
  EXPECT_EQ(lattice.frame.rangeMultiple, TypeParam(12));
  EXPECT_EQ(textOf(lattice.frame.c), "[ 1 12 2 0 ]");
  EXPECT_EQ(rowsText(lattice.basis.B_save), "[ -14 -12 -12 1 ] [ 2 24 0 0 ] [ 4 0 4 0 ]");
  EXPECT_EQ(lattice.frame.l[1], TypeParam(0));
  EXPECT_EQ(lattice.frame.r[1], TypeParam(0));
}

TYPED_TEST(LatticeGenerateOver, TargetOfOneValueHasTheWidthOne) {
  this->generate(summit, false);
  const auto& lattice = this->live;
  EXPECT_EQ(textOf(lattice.frame.c), "[ 6 6 1 0 ]");
  EXPECT_EQ(rowsText(lattice.basis.B_save), "[ -156 -6 -6 1 ] [ 12 12 0 0 ] [ 24 0 2 0 ]");
}

TYPED_TEST(LatticeGenerateOver, EquationLatticeHasTheEquationsInFront) {
  this->generate(mixed, true);
  const auto& lattice = this->live;
  EXPECT_EQ(lattice.frame.latticeKind, LatticeKind::equations);
  EXPECT_FALSE(lattice.frame.equationsRemoved);
  EXPECT_TRUE(lattice.frame.modsInLattice);
  EXPECT_EQ(rowsText(lattice.basis.B_save),
            "[ -31 -2 -9 -9 -9 -9 1 ] [ 3 1 2 0 0 0 0 ] [ 5 1 0 2 0 0 0 ] [ 7 0 0 0 2 0 0 ] "
            "[ 0 4 0 0 0 18 0 ]");
  EXPECT_EQ(textOf(lattice.frame.l), "[ 0 0 -9 -9 -9 -inf 1 ]");
  EXPECT_EQ(textOf(lattice.frame.r), "[ 0 0 9 9 9 inf 1 ]");
  EXPECT_EQ(textOf(lattice.frame.c), "[ 0 0 1 1 1 9 0 ]");
}

TYPED_TEST(LatticeGenerateOver, DeviationsHaveTheFactorOfTheRange) {
  this->generate(three, true);
  const auto& lattice = this->live;
  EXPECT_EQ(textOf(lattice.frame.c), "[ 0 0 1 1 1 9 9 0 ]");
  EXPECT_EQ(textOf(lattice.frame.l), "[ 0 0 -9 -9 -9 -9 -9 1 ]");
  EXPECT_EQ(textOf(lattice.frame.r), "[ 0 0 9 9 9 inf inf 1 ]");
}

TYPED_TEST(LatticeGenerateOver, RangeOfRowsDoesNotCountInTheEquationLattice) {
  this->normalise(band);
  EXPECT_EQ(this->live.computeR(LatticeKind::equations), TypeParam(4));
  EXPECT_EQ(this->live.computeR(LatticeKind::full), TypeParam(12));
}

TYPED_TEST(LatticeGenerateOver, BoundsOfFreeVariablesAreWidened) {
  this->normalise(box);
  auto& lattice = this->live;
  for (const FreedomDegree kind : {FreedomDegree::rightFree, FreedomDegree::free}) {
    lattice.fd[2] = kind;
    lattice.rx = Vector<TypeParam>{6, 7};
    EXPECT_EQ(lattice.computeR(LatticeKind::equations), TypeParam(12));
    EXPECT_EQ(textOf(lattice.rx), "[ 6 12 ]");
  }
  lattice.rx = Vector<TypeParam>{6, 7};
  lattice.frame.rangeMultiple = TypeParam(6);
  lattice.extendBounds(false);
  EXPECT_EQ(textOf(lattice.rx), "[ 6 12 ]");
  EXPECT_EQ(lattice.frame.rangeMultiple, TypeParam(6));
}

TYPED_TEST(LatticeGenerateOver, EmptyRangesAreFatal) {
  this->normalise(band);
  auto& lattice = this->live;
  lattice.lu[1] = lattice.ru[1];
  EXPECT_FAILS_WITH(lattice.computeR(LatticeKind::full), "ineq bounds error1");
  this->normalise(box);
  this->live.rx[1] = TypeParam(0);
  EXPECT_FAILS_WITH(lattice.generateLattice(LatticeKind::equations), "sol bounds error");
}

// Two primes as ranges.
constexpr const char* primes =
    "[ inf ] [ [ 1 2 ] ] [ ] [ ] [ ] [ ] [ ] [ ] [ 0 0 ] [ 0 0 ] [ 999983 999979 ]";
constexpr const char* long1 =
    "[ inf ] [ [ 1 2 ] ] [ ] [ ] [ ] [ ] [ ] [ ] [ 0 0 ] [ 0 0 ] [ 1 1000000000 ]";

TEST(LatticeGenerate, LargeRangesAskForExactArithmetic) {
  Lattice<long double, long double> lattice;
  lattice.setProblem(test::problemFrom<long double>(primes));
  lattice.normalise(TargetRange::find, From::lifted);
  EXPECT_EQ(messageOf<PrecisionException>([&] { lattice.generateLattice(LatticeKind::full); }),
            "R overflow");
  Lattice<QQ, long double> exact;
  exact.setProblem(test::problemFrom(primes));
  exact.normalise(TargetRange::find, From::lifted);
  exact.generateLattice(LatticeKind::full);
  EXPECT_EQ(exact.frame.rangeMultiple, q("999962000357"));
}

TEST(LatticeGenerate, LargeEntriesAskForExactArithmetic) {
  Lattice<long double, long double> lattice;
  lattice.setProblem(test::problemFrom<long double>(long1));
  lattice.normalise(TargetRange::find, From::lifted);
  EXPECT_EQ(messageOf<PrecisionException>([&] { lattice.generateLattice(LatticeKind::full); }),
            "B_save overflow2");
  Lattice<QQ, long double> exact;
  exact.setProblem(test::problemFrom(long1));
  exact.normalise(TargetRange::find, From::lifted);
  exact.generateLattice(LatticeKind::full);
  EXPECT_EQ(exact.basis.B_save[2][1], q("2000000000"));
}

TYPED_TEST(LatticeGenerateOver, NoColumnIsRemovedFromNone) {
  this->fillColumns();
  const std::string before = rowsText(this->live.basis.B());
  this->live.basis.vecStatus[1] = ST_MU;
  this->live.removeColumns(ColumnsOf::equations, 0, 1);
  EXPECT_EQ(rowsText(this->live.basis.B()), before);
  EXPECT_EQ(this->live.basis.n, 3);
  EXPECT_FALSE(this->live.frame.equationsRemoved);
  EXPECT_EQ(this->live.basis.vecStatus[1], ST_MU);
}

TYPED_TEST(LatticeGenerateOver, EquationsGoWithAsManyLastVectors) {
  this->fillColumns();
  auto& lattice = this->live;
  lattice.basis.scale[4] = TypeParam(2);
  lattice.basis.vecStatus[1] = ST_MU;
  lattice.removeColumns(ColumnsOf::equations, 2, 1);
  EXPECT_EQ(lattice.basis.n, 1);
  EXPECT_EQ(lattice.basis.m, 3);
  EXPECT_EQ(rowsText(lattice.basis.B()), "[ 3 4 5 ]");
  EXPECT_EQ(rowsText(lattice.basis.B_save), "[ 3 2 5 ]");
  EXPECT_EQ(textOf(lattice.basis.scale), "[ 1 2 1 ]");
  for (const auto* vector : {&lattice.frame.l, &lattice.frame.r, &lattice.frame.lSave,
                             &lattice.frame.rSave, &lattice.frame.c, &lattice.basis.translation})
    EXPECT_EQ(textOf(*vector), "[ 13 14 15 ]");
  EXPECT_EQ(lattice.frame.supLimit, 3 * (169.0L + 196.0L + 225.0L));
  EXPECT_TRUE(lattice.frame.equationsRemoved);
  EXPECT_TRUE(lattice.frame.modsInLattice);
  EXPECT_EQ(lattice.basis.vecStatus[1], 0);
  ASSERT_EQ(lattice.basis.TT.dimension(), 1);
  EXPECT_TRUE(this->isIdentity(lattice.basis.TT[1], 1));
}

TYPED_TEST(LatticeGenerateOver, ModuliGoWithoutVectors) {
  this->fillColumns();
  auto& lattice = this->live;
  lattice.removeColumns(ColumnsOf::moduli, 1, 4);
  EXPECT_EQ(lattice.basis.n, 3);
  EXPECT_EQ(rowsText(lattice.basis.B()), "[ 1 2 3 5 ] [ 0 0 6 8 ] [ 9 1 2 4 ]");
  EXPECT_EQ(rowsText(lattice.basis.B_save), rowsText(lattice.basis.B()));
  EXPECT_EQ(textOf(lattice.frame.c), "[ 11 12 13 15 ]");
  EXPECT_FALSE(lattice.frame.equationsRemoved);
  EXPECT_FALSE(lattice.frame.modsInLattice);
}

TYPED_TEST(LatticeGenerateOver, LatticeWithoutEquationsIsTheGeneratedOne) {
  this->prepare(band);
  const std::string prepared = rowsText(this->live.basis.B());
  EXPECT_EQ(this->live.basis.TT.dimension(), 1);
  this->live.generateLattice(LatticeKind::full);
  EXPECT_EQ(prepared, rowsText(this->live.basis.B()));
}

TYPED_TEST(LatticeGenerateOver, PreparedRowsAreABasisOfTheSolutionsOfTheEquations) {
  this->prepare(three);
  auto& lattice = this->live;
  EXPECT_EQ(lattice.frame.latticeKind, LatticeKind::full);
  EXPECT_EQ(lattice.basis.n, 6 - 2);
  EXPECT_TRUE(identical(lattice.basis.B_save, lattice.basis.B()));
  ASSERT_EQ(lattice.basis.TT.dimension(), 1);
  EXPECT_TRUE(this->isIdentity(lattice.basis.TT[1], lattice.basis.n));
  Lattice<TypeParam, long double> whole;
  whole.assignFrom(lattice, Settings::copy);
  whole.generateLattice(LatticeKind::full);
  // The first coordinate is the factor of the constants.
  Matrix<TypeParam> equations(2, 6);
  for (const Index i : {1, 2}) {
    equations[i][1] = TypeParam(0) - whole.bg[i];
    for (Index j = 1; j <= 5; ++j) equations[i][1 + j] = whole.Ag[i][j];
  }
  EXPECT_TRUE(isKernelBasis(whole.coordinatesOfAll(lattice.basis.B(), Over::saved), equations));
}

TYPED_TEST(LatticeGenerateOver, PreparedLatticeHoldsAllPointsOfCongruences) {
  this->prepare(mixed);
  auto& lattice = this->live;
  EXPECT_FALSE(lattice.frame.modsInLattice);
  EXPECT_EQ(lattice.basis.n, 3);
  EXPECT_EQ(lattice.basis.m, 4);
  Index points = 0;
  for (int x = 0; x <= 9; ++x)
    for (int y = 0; y <= 9; ++y)
      for (int z = 0; z <= 9; ++z) {
        const bool isPoint = 3 * x + 5 * y + 7 * z == 31 && (x + y) % 4 == 2;
        // A point as it stands over the box, whatever the equations say.
        const Vector<TypeParam> vector{TypeParam(2 * x - 9), TypeParam(2 * y - 9),
                                       TypeParam(2 * z - 9), TypeParam(1)};
        Vector<TypeParam> coordinates;
        EXPECT_EQ(lattice.coordinatesOf(vector, coordinates, Over::working), isPoint)
            << x << y << z;
        points += isPoint ? 1 : 0;
      }
  EXPECT_GT(points, 0);
}

TYPED_TEST(LatticeGenerateOver, EquationsWithoutAnIntegerSolutionAreFatal) {
  this->normalise(odd);
  EXPECT_FAILS_WITH(this->live.prepareLattice(), "The equation system has no integer solution :(");
}

TYPED_TEST(LatticeGenerateOver, StarsSurviveAndProveThatTheEquationsAreSolvable) {
  this->normalise(three);
  auto& lattice = this->live;
  lattice.file.stars.resize(1, false);
  lattice.file.stars[1] = Star<TypeParam>{TypeParam(2), TypeParam(5), TypeParam(0)};
  lattice.params.verb = 2;
  const std::string text = this->consoleOf([&] { lattice.prepareLattice(); });
  EXPECT_EQ(text.find("Extracting"), std::string::npos) << text;
  ASSERT_EQ(lattice.file.stars.dimension(), 1);
  EXPECT_EQ(textOf(lattice.file.stars[1]), "[ 2 5 0 ]");
}

// The reduction of the equations meets an integer solution of them, in the box or not.
TYPED_TEST(LatticeGenerateOver, BestVectorAloneProvesThatTheEquationsAreSolvable) {
  this->normalise("[ ] [ ] [ [ 3 5 7 ] ] [ 100 ] [ ] [ ] [ ] [ ] [ 0 0 0 ] [ 0 0 0 ] [ 9 9 9 ]");
  auto& lattice = this->live;
  lattice.params.verb = 2;
  const std::string text = this->consoleOf([&] { lattice.prepareLattice(); });
  EXPECT_TRUE(lattice.found.bestVector.isSet() || lattice.found.solutions.isSet());
  EXPECT_EQ(text.find("Extracting"), std::string::npos) << text;
  EXPECT_EQ(lattice.file.stars.dimension(), 0);
}

TYPED_TEST(LatticeGenerateOver, PreparationTellsCountsAndSteps) {
  this->normalise(three);
  this->live.params.verb = 2;
  const std::string text = this->consoleOf([&] { this->live.prepareLattice(); });
  EXPECT_NE(text.find(" Optimization program: Targets = 2, Equations = 2, Inequations = 1, "
                      "Variables = 5\n"),
            std::string::npos)
      << text;
  EXPECT_NE(text.find(" Aardal reducing ... [ NN = 50"), std::string::npos) << text;
}

TYPED_TEST(LatticeGenerateOver, PreparationIsSilentOtherwise) {
  this->normalise(three);
  this->live.params.verb = 1;
  EXPECT_EQ(this->consoleOf([&] { this->live.prepareLattice(); }), "");
}

}  // namespace
}  // namespace starsift
