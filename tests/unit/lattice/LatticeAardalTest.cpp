// Equations out of the lattice by reduction, and the vector that solves them.
#include <gtest/gtest.h>

#include "certificates/Kernel.h"
#include "lattice/YLattice.h"
#include "support/fixtures/LatticeOfProblem.h"
#include "support/fixtures/RowsText.h"

namespace starsift {
namespace {

using test::messageOf;
using test::rowsText;
using test::textOf;

constexpr const char* small =
    "[ ] [ ] [ [ 3 5 7 ] ] [ 31 ] [ ] [ ] [ ] [ ] [ 0 0 0 ] [ 0 0 0 ] [ 9 9 9 ]";
// The last vector that solves it has coordinates of some hundreds: the first weight is too
// small.
constexpr const char* steep =
    "[ ] [ ] [ [ 12223 12224 36674 61119 85569 ] ] [ 89643481 ] [ ] [ ] [ ] [ ] [ 0 0 0 0 0 ] "
    "[ 0 0 0 0 0 ] [ 9999 9999 9999 9999 9999 ]";
constexpr const char* mixed =
    "[ ] [ ] [ [ 3 5 7 2 ] [ 1 1 0 1 ] [ 2 -1 1 0 ] ] [ 31 2 1 ] [ 0 4 0 ] [ ] [ ] [ ] "
    "[ 0 0 0 0 ] [ 0 0 0 0 ] [ 9 9 9 9 ]";
// More equations than vectors that solve them.
constexpr const char* tight =
    "[ ] [ ] [ [ 1 1 1 ] [ 1 2 4 ] [ 1 3 9 ] ] [ 6 17 34 ] [ ] [ ] [ ] [ ] [ 0 0 0 ] [ 0 0 0 ] "
    "[ 9 9 9 ]";

template <class T>
class LatticeAardalOver : public test::LatticeOfProblem<T> {
 protected:
  void generate(const char* problem) {
    this->normalise(problem);
    this->live.generateLattice(LatticeKind::equations);
  }

  /// Reduces; the first rows must be a basis of what solves the equations, and what the
  /// result says they are.
  Array<Matrix<T>> reduceAndCheck() {
    auto& lattice = this->live;
    const Matrix<T> generated(lattice.basis.B_save);
    const Index equations = lattice.Ag.rowCount();
    const Array<Matrix<T>> transformations = lattice.aardalReduce();
    Lattice<T, long double> whole(&generated);
    Matrix<T> rows(generated);
    lattice.applyTransformations(rows);
    EXPECT_EQ(rowsText(rows), rowsText(lattice.basis.B()));
    Matrix<T> kernel(lattice.basis.n - equations, lattice.basis.n);
    for (Index i = 1; i <= kernel.rowCount(); ++i) {
      EXPECT_TRUE(whole.coordinatesOf(lattice.basis.B()[i], kernel[i], Over::saved));
      EXPECT_FALSE(missesEquations(lattice.basis.B()[i])) << i;
    }
    for (Index i = kernel.rowCount() + 1; i <= lattice.basis.n; ++i)
      EXPECT_TRUE(missesEquations(lattice.basis.B()[i])) << i;
    EXPECT_TRUE(isKernelBasis(kernel, equationColumns(generated, equations)));
    return transformations;
  }

  bool missesEquations(const Vector<T>& row) const {
    for (Index j = 1; j <= this->live.Ag.rowCount(); ++j)
      if (!(row[j] == T())) return true;
    return false;
  }

  /// The equations over the vectors of the basis.
  static Matrix<T> equationColumns(const Matrix<T>& basis, Index equations) {
    Matrix<T> result(equations, basis.rowCount());
    for (Index i = 1; i <= equations; ++i)
      for (Index j = 1; j <= basis.rowCount(); ++j) result[i][j] = basis[j][i];
    return result;
  }

  /// A lattice of two coordinates with these last ones.
  void useLast(std::initializer_list<int> last) {
    const auto n = static_cast<Index>(last.size());
    Matrix<T> basis(n, n + 1);
    Index i = 0;
    for (const int value : last) {
      ++i;
      basis[i][i] = T(2);
      basis[i][n + 1] = T(value);
    }
    this->live.reset(&basis, LatPath::keep);
    this->live.frame.latticeKind = LatticeKind::equations;
    this->live.rx = Vector<T>(n);
    this->live.lx = Vector<T>(n);
    this->live.shift = Vector<T>(n);
    this->live.slackUnit = Vector<T>(n);
    this->live.dx = Vector<T>(n);
    this->live.fd.resize(n, false);
    for (FreedomDegree& kind : this->live.fd) kind = FreedomDegree::bounded;
    for (T& unit : this->live.slackUnit) unit = T(1);
    for (Index j = 1; j <= n; ++j) this->live.frame.c[j] = T(1);
    this->live.frame.l[n + 1] = this->live.frame.r[n + 1] = T(1);
  }
};
TYPED_TEST_SUITE(LatticeAardalOver, test::LatticeNumbers);

TYPED_TEST(LatticeAardalOver, FirstVectorsAreABasisOfTheSolutions) {
  for (const char* problem : {small, mixed, tight}) {
    SCOPED_TRACE(problem);
    this->generate(problem);
    this->reduceAndCheck();
  }
}

TYPED_TEST(LatticeAardalOver, ResultIsTheStackOfTransformations) {
  this->generate(small);
  const Array<Matrix<TypeParam>> result = this->reduceAndCheck();
  ASSERT_EQ(result.dimension(), this->live.basis.TT.dimension());
  for (Index i = 1; i <= result.dimension(); ++i)
    EXPECT_TRUE(identical(result[i], this->live.basis.TT[i]));
}

TYPED_TEST(LatticeAardalOver, ScaleAndParametersStay) {
  this->generate(small);
  auto& lattice = this->live;
  lattice.params.eenum = false;
  lattice.setScale(2, TypeParam(3));
  lattice.aardalReduce();
  EXPECT_EQ(textOf(lattice.basis.scale), "[ 1 3 1 1 1 ]");
  EXPECT_FALSE(lattice.params.consistency);
  EXPECT_FALSE(lattice.params.eenum);
  EXPECT_FALSE(lattice.reactionsOff);
}

// The heavier weight of a further round must not meet vectors that are done.
TEST(LatticeAardal, FurtherRoundsGoOnWithTheRestOfTheVectors) {
  for (const bool deep : {false, true}) {
    SCOPED_TRACE(deep);
    YLattice<long double> lattice;
    lattice.standard().setProblem(test::problemFrom<long double>(steep));
    lattice.normalise(TargetRange::find, From::lifted);
    lattice.standard().params.deep = deep;
    EXPECT_GE(lattice.runStep([](auto& live) {
      live.generateLattice(LatticeKind::equations);
      return live.aardalReduce().dimension();
    }),
              2);
  }
}

using ExactLatticeAardal = LatticeAardalOver<QQ>;

TEST_F(ExactLatticeAardal, FurtherRoundsKeepWhatIsDone) {
  this->generate(steep);
  this->reduceAndCheck();
}

TEST_F(ExactLatticeAardal, DeepInsertionKeepsToTheVectorsOfTheRound) {
  this->generate(steep);
  this->live.params.deep = true;
  this->reduceAndCheck();
}

TYPED_TEST(LatticeAardalOver, ForcedTrackingLastsToTheEnd) {
  this->generate(small);
  auto& lattice = this->live;
  this->setSilently(lattice.params.consistency, true);
  lattice.run.consistencyForced = true;
  this->reduceAndCheck();
  EXPECT_FALSE(lattice.run.consistencyForced);
}

/// Ends a reduction at its third step.
class ThirdStep : public ReductionObserver {
 public:
  void onStep(const PassCounts& /*counts*/) override {
    if (++steps_ == 3) throw PrecisionException("third step");
  }

 private:
  int steps_ = 0;
};

TYPED_TEST(LatticeAardalOver, LatticeIsAsItWasAfterAnException) {
  this->generate(small);
  auto& lattice = this->live;
  ThirdStep observer;
  lattice.run.observer = &observer;
  const std::string rows = rowsText(lattice.basis.B());
  EXPECT_EQ(messageOf<PrecisionException>([&] { lattice.aardalReduce(); }), "third step");
  EXPECT_EQ(rowsText(lattice.basis.B()), rows);
  EXPECT_EQ(rowsText(lattice.basis.B_save), rows);
  EXPECT_EQ(textOf(lattice.basis.scale), "[ 1 1 1 1 1 ]");
  EXPECT_EQ(lattice.basis.TT.dimension(), 1);
  EXPECT_FALSE(lattice.params.consistency);
}

TYPED_TEST(LatticeAardalOver, CopyIsReducedToTheSame) {
  this->generate(small);
  auto& lattice = this->live;
  const std::string copied = [&] {
    const Array<Matrix<TypeParam>> transformations = lattice.aardalReduce();
    return rowsText(transformations[1]) + rowsText(lattice.basis.B());
  }();
  this->generate(small);
  lattice.reduceEquations();
  EXPECT_EQ(rowsText(lattice.basis.TT[1]) + rowsText(lattice.basis.B()), copied);
}

TYPED_TEST(LatticeAardalOver, SettingsAreAsTheyWereAfterAnExceptionInPlace) {
  this->generate(small);
  auto& lattice = this->live;
  lattice.params.deep = true;
  lattice.params.verb.setTextSilently("1");
  ThirdStep observer;
  lattice.run.observer = &observer;
  EXPECT_EQ(messageOf<PrecisionException>([&] { lattice.reduceEquations(); }), "third step");
  EXPECT_FALSE(lattice.params.consistency);
  EXPECT_TRUE(lattice.params.deep);
  EXPECT_EQ(lattice.params.verb, 1);
}

TYPED_TEST(LatticeAardalOver, WeightsAreReported) {
  this->generate(small);
  auto& lattice = this->live;
  lattice.params.verb = 2;
  const std::string text = this->consoleOf([&] { lattice.aardalReduce(); });
  const std::size_t start = text.find(" Aardal reducing ... [ NN = 30");
  ASSERT_NE(start, std::string::npos) << text;
  EXPECT_EQ(start, text.find(" Aardal")) << text;
  EXPECT_NE(text.find(" ]"), std::string::npos) << text;
  EXPECT_EQ(consoleDepth(), 0);
  EXPECT_NE(lastOutputTime(), 0);
}

TEST_F(ExactLatticeAardal, EachRoundAppendsItsWeight) {
  this->generate(steep);
  live.params.verb = 2;
  const std::string text = this->consoleOf([&] { live.aardalReduce(); });
  EXPECT_NE(text.find("[ NN = 50 2500"), std::string::npos) << text;
}

TYPED_TEST(LatticeAardalOver, VectorWithHomValueIsExtracted) {
  this->useLast({6, 10, 15});
  const Matrix<TypeParam> basis(this->live.basis.B());
  const Vector<TypeParam> found = this->live.extractInhomogeneous();
  ASSERT_TRUE(found.isSet());
  EXPECT_EQ(NumberTraits<TypeParam>::absolute(found[4]), TypeParam(1));
  Vector<TypeParam> coordinates;
  EXPECT_TRUE(this->live.coordinatesOf(found, coordinates, Over::working));
  EXPECT_TRUE(identical(this->live.basis.B(), basis));
}

TYPED_TEST(LatticeAardalOver, LastCoordinatesMayBeNegative) {
  for (const auto last : {std::initializer_list<int>{-6, 10, -15}, {6, -10, 15}, {-7, -4, 0}}) {
    this->useLast(last);
    EXPECT_TRUE(this->live.extractInhomogeneous().isSet());
  }
}

TYPED_TEST(LatticeAardalOver, NegativeOfHomValueWillDo) {
  this->useLast({0, -1});
  EXPECT_EQ(textOf(this->live.extractInhomogeneous()), "[ 0 2 -1 ]");
}

// A combination of both would end at another one.
TYPED_TEST(LatticeAardalOver, FirstRowThatFitsIsTaken) {
  this->useLast({0, 7, -1, 1});
  EXPECT_EQ(textOf(this->live.extractInhomogeneous()), "[ 0 0 2 0 -1 ]");
  this->useLast({5, 3});
  this->live.homValue = TypeParam(5);
  this->live.basis.homScaled = TypeParam(5);
  EXPECT_EQ(textOf(this->live.extractInhomogeneous()), "[ 2 0 5 ]");
}

TYPED_TEST(LatticeAardalOver, HomValueIsTheUnit) {
  this->useLast({10, 15});
  this->live.homValue = TypeParam(5);
  this->live.basis.homScaled = TypeParam(5);
  EXPECT_TRUE(this->live.extractInhomogeneous().isSet());
}

TYPED_TEST(LatticeAardalOver, CommonDivisorOfTheLastCoordinatesLeavesNothing) {
  this->useLast({4, 6});
  EXPECT_FALSE(this->live.extractInhomogeneous().isSet());
  this->useLast({2});
  EXPECT_FALSE(this->live.extractInhomogeneous().isSet());
}

TYPED_TEST(LatticeAardalOver, HomogeneousVectorsHaveNone) {
  this->useLast({0, 0});
  EXPECT_FALSE(this->live.extractInhomogeneous().isSet());
  this->live.reset(nullptr, LatPath::keep);
  EXPECT_FALSE(this->live.extractInhomogeneous().isSet());
}

TYPED_TEST(LatticeAardalOver, ExtractedVectorBecomesTheBestOne) {
  this->useLast({2, 3});
  const Vector<TypeParam> found = this->live.extractInhomogeneous();
  ASSERT_TRUE(this->live.found.bestVector.isSet());
  EXPECT_EQ(this->live.found.bestVector[3], TypeParam(1));
  EXPECT_EQ(NumberTraits<TypeParam>::absolute(found[3]), TypeParam(1));
}

TYPED_TEST(LatticeAardalOver, ExtractionIsReported) {
  this->useLast({2, 3});
  this->live.params.verb = 2;
  EXPECT_NE(this->consoleOf([&] { this->live.extractInhomogeneous(); })
                .find(" Extracting current inhomogenous vector ..."),
            std::string::npos);
  EXPECT_EQ(consoleDepth(), 0);
  this->live.params.verb = 1;
  EXPECT_EQ(this->consoleOf([&] { this->live.extractInhomogeneous(); }), "");
}

TYPED_TEST(LatticeAardalOver, EquationsGoAlsoWhereTheSearchIsOver) {
  this->normalise("[ ] [ ] [ [ 2 3 5 ] ] [ 11 ] [ ] [ ] [ ] [ ] [ 0 0 0 ] [ 0 0 0 ] [ 9 9 9 ]");
  this->live.run.runVariables[MainMutexVariable::runState].set("stopped");
  this->live.prepareLattice();
  EXPECT_EQ(this->live.basis.n, 3);
  EXPECT_TRUE(this->live.frame.equationsRemoved);
}

}  // namespace
}  // namespace starsift
