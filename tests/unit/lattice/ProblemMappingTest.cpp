// From points of a problem to raw vectors and back, over check vectors by hand.
#include <gtest/gtest.h>

#include <functional>

#include "lattice/Lattice.h"
#include "support/fixtures/CheckVectors.h"
#include "support/fixtures/ExpectFails.h"
#include "support/fixtures/Problem.h"
#include "support/fixtures/TextOf.h"
#include "system/Console.h"

namespace starsift {
namespace {

using test::LatticeStage;
using test::problemFrom;
using test::q;
using test::textOf;

// The example of docs/reduction.md, see LatticeNormaliseTest.cpp: in normal form x from 1,
// y negated in tenths, z, a slack in tenths, two deviations; the last variable is 3.
constexpr const char* mixed =
    "[ 4 inf ] [ [ 0 0 1 0 ] [ 1 0 0 0 ] ] [ [ 1 1 1 1 ] ] [ 10 ] [ ] "
    "[ [ 2.5 1 0 0 ] [ 2 -3 0 0 ] ] [ 3 0 ] [ inf 100 ] "
    "[ 0 1 0 0 ] [ 1 -inf 0 3 ] [ 4.9 2 9 3 ]";
// x + y = 1 modulo 3, x + 2 y at least 2, both from 0 to 5.
constexpr const char* congruence =
    "[ inf ] = [ 2 ] [ [ 1 2 ] ] [ [ 1 1 ] ] [ 1 ] [ 3 ] [ ] [ ] [ ] [ 0 0 ] [ 0 0 ] [ 5 5 ]";
// A plain equation between two congruences, over three free variables.
constexpr const char* threeRows =
    "[ ] [ ] [ [ 1 0 0 ] [ 1 1 0 ] [ 0 0 1 ] ] [ 1 2 0 ] [ 4 0 5 ] [ ] [ ] [ ] [ 0 0 0 ] "
    "[ -inf -inf -inf ] [ inf inf inf ]";

template <class T>
class ProblemMappingOver : public testing::Test {
 protected:
  ProblemMappingOver() { consoleState() = {}; }
  ~ProblemMappingOver() override { consoleState() = {}; }

  void prepare(const char* problem, LatticeStage stage) {
    lattice.setProblem(problemFrom<T>(problem));
    testing::internal::CaptureStdout();
    lattice.normalise(TargetRange::find, From::lifted);
    testing::internal::GetCapturedStdout();
    generateByHand(lattice, stage);
  }

  Vector<T> toLattice(const Vector<T>& x, const std::optional<T>& hom = std::nullopt) const {
    Vector<T> vector;
    lattice.opt2lat(x, vector, Space::raw, hom);
    return vector;
  }
  Vector<T> toProblem(const Vector<T>& vector, bool insert = true, bool withSlack = false) const {
    Vector<T> x;
    EXPECT_EQ(lattice.lat2opt(vector, x, insert ? Constants::insert : Constants::omit,
                              withSlack ? Slacks::append : Slacks::omit, Orientation::given),
              T(1));
    return x;
  }

  /// A vector and its factor.
  struct Back {
    Vector<T> x;
    T h;
  };
  Back back(const Vector<T>& vector, bool normalise) const {
    Back result;
    result.h = lattice.lat2opt(vector, result.x, Constants::insert, Slacks::omit,
                               normalise ? Orientation::either : Orientation::given);
    return result;
  }

  static Vector<T> negative(Vector<T> vector) {
    for (T& entry : vector) entry = T() - entry;
    return vector;
  }

  Lattice<T, long double> lattice;
  /// A solution of `mixed`.
  const Vector<T> solution{T(2), T(1), T(4), T(3)};
};
using LatticeNumbers = testing::Types<long double, QQ>;
TYPED_TEST_SUITE(ProblemMappingOver, LatticeNumbers);

/// The message of what `step` throws.
template <class Exception>
std::string messageOf(const std::function<void()>& step) {
  try {
    step();
  } catch (const Exception& exception) {
    return exception.message();
  }
  return "nothing";
}

TYPED_TEST(ProblemMappingOver, SolutionIsAVectorOfTheFullLattice) {
  this->prepare(mixed, LatticeStage::full);
  // The range is 9000: 9 (2 * 50 - 40 - 1040), then 2 c z - 9000.
  EXPECT_EQ(textOf(this->toLattice(this->solution)),
            "[ -8820 -3000 -8980 -1000 -8940 -9000 -9000 1 ]");
}

TYPED_TEST(ProblemMappingOver, SolutionIsAVectorOfTheEquationLattice) {
  this->prepare(mixed, LatticeStage::equations);
  EXPECT_EQ(textOf(this->toLattice(this->solution)), "[ 0 0 0 -3 11 -1 51 -9 -9 1 ]");
  this->prepare(mixed, LatticeStage::equationsGone);
  EXPECT_EQ(textOf(this->toLattice(this->solution)), "[ -3 11 -1 51 -9 -9 1 ]");
}

TYPED_TEST(ProblemMappingOver, CoordinatesOfEquationsAreWhatTheyMiss) {
  this->prepare(mixed, LatticeStage::equations);
  // One x more misses 10 tenths; the slack grows by 25.
  EXPECT_EQ(textOf(this->toLattice({TypeParam(3), TypeParam(1), TypeParam(4), TypeParam(3)})),
            "[ 10 0 0 3 11 -1 101 -9 -9 1 ]");
}

TYPED_TEST(ProblemMappingOver, VectorFindsItsWayBack) {
  for (const LatticeStage stage :
       {LatticeStage::equations, LatticeStage::equationsGone, LatticeStage::full}) {
    this->prepare(mixed, stage);
    EXPECT_EQ(textOf(this->toProblem(this->toLattice(this->solution))), "[ 2 1 4 3 ]");
  }
}

TYPED_TEST(ProblemMappingOver, ConstantsAreInsertedOnlyOnDemand) {
  this->prepare(mixed, LatticeStage::full);
  EXPECT_EQ(textOf(this->toProblem(this->toLattice(this->solution), false)), "[ 2 1 4 ]");
}

TYPED_TEST(ProblemMappingOver, SlacksComeInTheUnitsOfTheProblem) {
  this->prepare(mixed, LatticeStage::full);
  const Vector<TypeParam> vector = this->toLattice(this->solution);
  EXPECT_EQ(textOf(this->toProblem(vector, true, true)), "[ 2 1 4 3 3 0 0 ]");
  EXPECT_EQ(textOf(this->toProblem(vector, false, true)), "[ 2 1 4 3 0 0 ]");
}

TYPED_TEST(ProblemMappingOver, DeviationsFollowTheGoal) {
  this->prepare(mixed, LatticeStage::full);
  const auto withGoal = [this](long z) {
    return this->toProblem(
        this->toLattice({TypeParam(2), TypeParam(1), TypeParam(z), TypeParam(3)}), true, true);
  };
  EXPECT_EQ(textOf(withGoal(1)), "[ 2 1 1 3 3 3 0 ]");
  EXPECT_EQ(textOf(withGoal(4)), "[ 2 1 4 3 3 0 0 ]");
  EXPECT_EQ(textOf(withGoal(6)), "[ 2 1 6 3 3 0 2 ]");
}

TYPED_TEST(ProblemMappingOver, FreeVariableIsNotMoved) {
  this->prepare(threeRows, LatticeStage::equationsGone);
  const Vector<TypeParam> x{TypeParam(-7), TypeParam(9), TypeParam(0)};
  // 2 x - 1 each, then the moduli: -7 - 1 = -2 * 4.
  EXPECT_EQ(textOf(this->toLattice(x)), "[ -15 17 -1 3 -1 1 ]");
  EXPECT_EQ(textOf(this->toProblem(this->toLattice(x))), "[ -7 9 0 ]");
}

TYPED_TEST(ProblemMappingOver, TargetIsCentredOnItsRange) {
  this->prepare(congruence, LatticeStage::fullWithModuli);
  // From 2 to 15, the range is 65: 5 (2 * 12 - 17).
  EXPECT_EQ(textOf(this->toLattice({TypeParam(2), TypeParam(5)})), "[ 35 -13 65 -325 1 ]");
  EXPECT_EQ(textOf(this->toProblem(this->toLattice({TypeParam(2), TypeParam(5)}))), "[ 2 5 ]");
}

TYPED_TEST(ProblemMappingOver, TargetWithoutARangeHasNoCoordinate) {
  this->prepare(congruence, LatticeStage::full);
  this->lattice.atuValid = false;
  generateByHand(this->lattice, LatticeStage::full);
  EXPECT_EQ(textOf(this->toLattice({TypeParam(2), TypeParam(5)})), "[ -1 5 1 ]");
}

TYPED_TEST(ProblemMappingOver, ModulusIsAFactorWhileItIsInTheLattice) {
  this->prepare(congruence, LatticeStage::equations);
  // 2 + 5 - 1 = 2 * 3
  EXPECT_EQ(textOf(this->toLattice({TypeParam(2), TypeParam(5)})), "[ 0 -1 5 -25 1 ]");
  this->prepare(congruence, LatticeStage::equationsGone);
  EXPECT_EQ(textOf(this->toLattice({TypeParam(2), TypeParam(5)})), "[ -1 5 -25 1 ]");
  EXPECT_EQ(textOf(this->toProblem(this->toLattice({TypeParam(2), TypeParam(5)}))), "[ 2 5 ]");
}

TYPED_TEST(ProblemMappingOver, BrokenCongruenceLeavesItsRemainderInTheLattice) {
  this->prepare(congruence, LatticeStage::equations);
  EXPECT_EQ(textOf(this->toLattice({TypeParam(2), TypeParam(4)})), "[ 2 -1 3 -15 1 ]");
  EXPECT_EQ(textOf(this->toLattice({TypeParam(0), TypeParam(0)})), "[ -1 -5 -5 -5 1 ]");
}

TYPED_TEST(ProblemMappingOver, BrokenCongruenceIsToldOnceItsModulusIsGone) {
  this->prepare(congruence, LatticeStage::full);
  EXPECT_EQ(textOf(this->toLattice({TypeParam(2), TypeParam(5)})), "[ 35 -13 65 1 ]");
  Vector<TypeParam> out{TypeParam(7)};
  EXPECT_EQ(messageOf<ModuloException>([&] {
              this->lattice.opt2lat({TypeParam(2), TypeParam(4)}, out, Space::raw);
            }),
            "modulo equation inconsistency");
  EXPECT_EQ(textOf(out), "[ 7 ]");
}

TYPED_TEST(ProblemMappingOver, ModulusBelongsToTheCongruenceOfItsRank) {
  this->prepare(threeRows, LatticeStage::equations);
  // 5 - 1 = 1 * 4, -3 + 5 = 2, -10 = -2 * 5
  EXPECT_EQ(textOf(this->toLattice({TypeParam(5), TypeParam(-3), TypeParam(-10)})),
            "[ 0 0 0 9 -7 -21 -3 3 1 ]");
  // 6 - 1 = 4 + 1, the plain equation misses 1 more, -8 = -5 - 3
  EXPECT_EQ(textOf(this->toLattice({TypeParam(6), TypeParam(-3), TypeParam(-8)})),
            "[ 1 1 -3 11 -7 -17 -3 1 1 ]");
}

TYPED_TEST(ProblemMappingOver, VectorOfAPointIsOneOfTheBasis) {
  this->prepare(congruence, LatticeStage::equations);
  Vector<TypeParam> coordinates;
  ASSERT_TRUE(this->lattice.coordinatesOf(this->toLattice({TypeParam(2), TypeParam(5)}),
                                          coordinates, Over::saved));
  EXPECT_EQ(textOf(coordinates), "[ 1 2 5 -2 ]");
}

TYPED_TEST(ProblemMappingOver, VectorInWorkingSpaceIsTransformed) {
  this->prepare(congruence, LatticeStage::equationsGone);
  this->lattice.reactionsOff = true;
  this->lattice.params.translate = true;
  this->lattice.basis.scale = {TypeParam(2), TypeParam(3), TypeParam(1), TypeParam(4)};
  this->lattice.basis.translation = {TypeParam(10), TypeParam(0), TypeParam(0), TypeParam(0)};
  Vector<TypeParam> out;
  this->lattice.opt2lat({TypeParam(2), TypeParam(5)}, out, Space::working);
  EXPECT_EQ(textOf(out), "[ -12 15 -25 4 ]");
}

TYPED_TEST(ProblemMappingOver, ResultMayTakeThePlaceOfTheArgument) {
  this->prepare(mixed, LatticeStage::full);
  Vector<TypeParam> vector = this->solution;
  this->lattice.opt2lat(vector, vector, Space::raw);
  EXPECT_EQ(vector.dimension(), this->lattice.basis.m);
  this->lattice.lat2opt(vector, vector, Constants::insert, Slacks::omit, Orientation::given);
  EXPECT_EQ(textOf(vector), "[ 2 1 4 3 ]");
}

TYPED_TEST(ProblemMappingOver, NegativeComesBackOnlyWhereItIsNormalised) {
  this->prepare(mixed, LatticeStage::full);
  const Vector<TypeParam> negative = this->negative(this->toLattice(this->solution));
  const auto turned = this->back(negative, true);
  EXPECT_EQ(turned.h, TypeParam(1));
  EXPECT_EQ(textOf(turned.x), "[ 2 1 4 3 ]");
  const auto plain = this->back(negative, false);
  EXPECT_EQ(plain.h, TypeParam(-1));
  EXPECT_NE(textOf(plain.x), "[ 2 1 4 3 ]");
}

TYPED_TEST(ProblemMappingOver, HomValueIsTheUnitOfTheFactor) {
  this->prepare(mixed, LatticeStage::full);
  this->lattice.homValue = TypeParam(50);
  generateByHand(this->lattice, LatticeStage::full);
  const Vector<TypeParam> vector = this->toLattice(this->solution);
  EXPECT_EQ(vector[this->lattice.basis.m], TypeParam(50));
  EXPECT_EQ(textOf(this->toProblem(vector)), "[ 2 1 4 3 ]");
  EXPECT_EQ(this->back(this->negative(vector), true).h, TypeParam(1));
  EXPECT_EQ(this->back(vector + vector, true).h, TypeParam(2));
}

TYPED_TEST(ProblemMappingOver, HomogeneousVectorComesBackWithItsFactor) {
  this->prepare(mixed, LatticeStage::full);
  const Vector<TypeParam> vector = this->toLattice(this->solution);
  for (const Vector<TypeParam>& multiple :
       {vector + vector, vector - vector, this->negative(vector)}) {
    const auto point = this->back(multiple, false);
    EXPECT_EQ(textOf(this->toLattice(point.x, point.h)), textOf(multiple));
  }
}

TYPED_TEST(ProblemMappingOver, NegativeSlackIsRefusedWithoutAFactor) {
  this->prepare(mixed, LatticeStage::full);
  const Vector<TypeParam> below{TypeParam(1), TypeParam(0), TypeParam(4), TypeParam(3)};
  EXPECT_FAILS_WITH(this->toLattice(below), "slack variable inconsistency, s should be >= 0");
  // 25 - 30 tenths
  EXPECT_EQ(this->toLattice(below, TypeParam(1))[5], TypeParam(-10 - 9000));
}

TYPED_TEST(ProblemMappingOver, NothingIsMappedBeforeGeneration) {
  Vector<TypeParam> out;
  EXPECT_FAILS_WITH(this->lattice.opt2lat(this->solution, out, Space::raw),
                    "opt2lat called with uninitialized check vectors!");
  EXPECT_FAILS_WITH(this->lattice.lat2opt(Vector<TypeParam>(), out, Constants::insert, Slacks::omit,
                                          Orientation::given),
                    "lat2opt called with uninitialized check vectors!");
}

TYPED_TEST(ProblemMappingOver, VectorOfAnotherLengthIsRefused) {
  this->prepare(mixed, LatticeStage::full);
  EXPECT_FAILS_WITH(this->back(Vector<TypeParam>(), false), "lat_vec == 0");
  EXPECT_FAILS_WITH(this->back(Vector<TypeParam>(7), false),
                    "lat_vec doesn't match lattice dimension");
}

TYPED_TEST(ProblemMappingOver, ConstantBehindTheEndIsRefused) {
  this->prepare(mixed, LatticeStage::full);
  const Vector<TypeParam> vector = this->toLattice(this->solution);
  this->lattice.fixedVars[1].left = 5;
  EXPECT_FAILS_WITH(this->back(vector, false), "insertComponent: invalid index");
}

class ProblemMapping : public ProblemMappingOver<long double> {};
class ExactProblemMapping : public ProblemMappingOver<QQ> {};

TEST_F(ProblemMapping, LargeEntryIsTold) {
  prepare(mixed, LatticeStage::full);
  Vector<long double> vector = toLattice(solution);
  Vector<long double> out{7};
  vector[2] = -2e9L;
  EXPECT_EQ(messageOf<PrecisionException>([&] {
              lattice.lat2opt(vector, out, Constants::insert, Slacks::omit, Orientation::given);
            }),
            "lat_vec overflow");
  vector[2] = 2e18L;
  EXPECT_THROW(lattice.lat2opt(vector, out, Constants::insert, Slacks::omit, Orientation::given),
               FatalPrecisionException);
  EXPECT_EQ(textOf(out), "[ 7 ]");
}

// x from 9 * 10^8 on.
constexpr const char* farOff =
    "[ inf ] [ [ 1 ] ] [ ] [ ] [ ] [ ] [ ] [ ] [ 0 ] [ 900000000 ] [ inf ]";

TEST_F(ProblemMapping, LargeResultIsTold) {
  prepare(farOff, LatticeStage::full);
  Vector<long double> out{7};
  EXPECT_EQ(
      messageOf<PrecisionException>([&] {
        lattice.lat2opt({999999999, 1}, out, Constants::insert, Slacks::omit, Orientation::given);
      }),
      "opt_vec overflow1");
  EXPECT_EQ(textOf(out), "[ 7 ]");
}

TEST_F(ExactProblemMapping, NothingIsTooLargeForRationals) {
  prepare(farOff, LatticeStage::full);
  EXPECT_EQ(toProblem({q("1999999999999999999999"), QQ(1)})[1], q("1000000000000900000000"));
}

TEST_F(ProblemMapping, VectorBetweenThoseOfTheLatticeAsksForExactArithmetic) {
  prepare(mixed, LatticeStage::full);
  Vector<long double> vector = toLattice(solution);
  vector[2] = -7000;
  EXPECT_THROW(toProblem(vector), PostCommaPrecisionException);
}

TEST_F(ExactProblemMapping, VectorBetweenThoseOfTheLatticeHasAFraction) {
  prepare(mixed, LatticeStage::full);
  Vector<QQ> vector = toLattice(solution);
  vector[2] = QQ(-7000);
  EXPECT_EQ(toProblem(vector)[1], QQ(4, 3));
}

}  // namespace
}  // namespace starsift
