// From a problem to its prepared lattice, against all points around the box of the problem
// in exact arithmetic of another make.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <string>

#include "PreparedProblems.h"
#include "algorithms/reduction/SizeReduce.h"
#include "certificates/Kernel.h"
#include "certificates/LatticeEquality.h"
#include "certificates/LllViolations.h"

namespace starsift {
namespace {

using oracle::Point;
using test::checkOverPrepared;
using test::LatticeOfBoth;
using test::LatticeOver;
using test::pointOf;
using test::problemCount;
using test::Silence;
using test::SmallProblem;
using test::Tally;
using test::vectorOf;

template <class Way>
class GenerationBy : public testing::Test {};
using Ways = testing::Types<LatticeOver<long double>, LatticeOver<QQ>, LatticeOfBoth>;
TYPED_TEST_SUITE(GenerationBy, Ways);

/// The problems that long double alone carries too.
template <class Way>
void expectCarried(const Tally& tally) {
  const bool mayRefuse = std::is_same_v<Way, LatticeOver<long double>>;
  EXPECT_GE(tally.carried, mayRefuse ? problemCount / 4 : problemCount / 2);
  EXPECT_EQ(tally.refused > 0, mayRefuse);
}

template <class T>
Matrix<T> withRow(Matrix<T> matrix, const Vector<T>& row) {
  matrix.resize(matrix.rowCount() + 1, true);
  matrix[matrix.rowCount()] = row;
  return matrix;
}

/// A solution is an integer combination of the rows of the basis, lies in its box, and comes
/// back.
template <class T>
void checkSolution(const Lattice<T, long double>& lattice, const Matrix<T>& basis, const Point& x) {
  Vector<T> vector;
  lattice.opt2lat(vectorOf<T>(x), vector, Space::raw);
  RC_ASSERT(sameLattice(withRow(basis, vector), basis));
  RC_ASSERT(test::isWithinBounds(lattice, vector));
  Vector<T> back;
  RC_ASSERT(lattice.lat2opt(vector, back, Constants::insert, Slacks::omit, Orientation::given) ==
            T(1));
  RC_ASSERT(oracle::pointText(pointOf(back)) == oracle::pointText(x));
}

TYPED_TEST(GenerationBy, TakesEverySolutionIntoTheLattice) {
  const Tally tally = checkOverPrepared<TypeParam>(
      []<class T>(Lattice<T, long double>& lattice, const SmallProblem& small) {
        const Matrix<T> basis = lattice.backMapAll(lattice.basis.B());
        for (const Point& x : test::someOf(test::solutionsOf(small.problem), 5))
          checkSolution(lattice, basis, x);
      });
  expectCarried<TypeParam>(tally);
}

constexpr std::array<const char*, 5> proofs = {
    "Unfulfillable infinite inequation detected --> NO SOLUTIONS!", "sol bounds error",
    "Unfulfillable inequality detected --> NO SOLUTIONS!",
    "Unfulfillable equality detected --> NO SOLUTIONS!",
    "The equation system has no integer solution :("};

TYPED_TEST(GenerationBy, RefusesOnlyProblemsWithoutSolutions) {
  int unsolvableEquations = 0;
  test::checkOverProblems([&](const SmallProblem& small) {
    try {
      const std::string report = TypeParam::carry(small, [](auto&, const SmallProblem&) {});
      if (report.empty()) return;
      RC_ASSERT(std::find(proofs.begin(), proofs.end(), report) != proofs.end());
      if (report == proofs.back()) ++unsolvableEquations;
      RC_ASSERT(test::solutionsOf(small.problem).empty());
    } catch (const PrecisionException&) {
      if (!std::is_same_v<TypeParam, LatticeOver<long double>>) throw;
    }
  });
  EXPECT_GE(unsolvableEquations, problemCount / 400);
}

/// The integers h, z and factors of moduli that a raw vector of the prepared lattice stands
/// for.
template <class T>
Vector<QQ> solutionOf(const Lattice<T, long double>& lattice, const Vector<T>& raw) {
  using Exact = NumberConversion<QQ, T>;
  const Index variables = lattice.rx.dimension();
  const QQ h = Exact::convert(raw[lattice.basis.m]) / Exact::convert(lattice.homValue);
  Vector<QQ> result{h};
  for (Index i = 1; i <= variables; ++i) {
    const Index j = lattice.basis.m - 1 - variables + i;
    result.insertComponent(
        i + 1, (Exact::convert(raw[j]) + Exact::convert(lattice.frame.rangeMultiple) * h) /
                   (QQ(2) * Exact::convert(lattice.frame.c[j])));
  }
  Index column = variables;
  for (Index i = 1; i <= lattice.qg.dimension(); ++i) {
    if (lattice.qg[i] == T()) continue;
    QQ residual = QQ() - Exact::convert(lattice.bg[i]) * h;
    for (Index v = 1; v <= variables; ++v)
      residual += Exact::convert(lattice.Ag[i][v]) * result[v + 1];
    result.insertComponent(result.dimension() + 1,
                           QQ() - residual / Exact::convert(lattice.Ag[i][++column]));
  }
  return result;
}

/// The equations in h, z and the factors of moduli.
template <class T>
Matrix<QQ> homogeneousEquations(const Lattice<T, long double>& lattice) {
  using Exact = NumberConversion<QQ, T>;
  Matrix<QQ> equations;
  equations.resize(lattice.Ag.rowCount(), lattice.rx.dimension() + lattice.modulusCount() + 1,
                   false);
  for (Index i = 1; i <= equations.rowCount(); ++i) {
    equations[i][1] = QQ() - Exact::convert(lattice.bg[i]);
    for (Index j = 2; j <= equations.columnCount(); ++j)
      equations[i][j] = Exact::convert(lattice.Ag[i][j - 1]);
  }
  return equations;
}

template <class T>
void checkKernel(const Lattice<T, long double>& lattice) {
  const Matrix<QQ> equations = homogeneousEquations(lattice);
  Matrix<QQ> rows;
  rows.resize(lattice.basis.n, equations.columnCount(), false);
  for (Index i = 1; i <= lattice.basis.n; ++i)
    rows[i] = solutionOf(lattice, lattice.basis.B_save[i]);
  RC_ASSERT(isKernelBasis(rows, equations));
  RC_ASSERT(identical(lattice.basis.B_save, lattice.backMapAll(lattice.basis.B())));
}

TYPED_TEST(GenerationBy, HasExactlyTheSolutionsOfTheHomogeneousEquations) {
  const Tally tally = checkOverPrepared<TypeParam>(
      [](const auto& lattice, const SmallProblem& /*small*/) { checkKernel(lattice); });
  expectCarried<TypeParam>(tally);
}

// A reduction of some vectors leaves those behind alone, which are solutions already.
TYPED_TEST(GenerationBy, HasExactlyThoseSolutionsWithDeepInsertions) {
  const Tally tally =
      checkOverPrepared<TypeParam>([](auto& lattice, const SmallProblem& /*small*/) {
        const Silence silence;
        lattice.params.deep = true;
        lattice.prepareLattice();
        checkKernel(lattice);
      });
  expectCarried<TypeParam>(tally);
}

/// Coefficients of rows longer than long double tells apart aren't known to be reduced.
template <class T>
void checkReduced(const Matrix<T>& basis) {
  std::vector<LllViolation> violations =
      lllViolations(basis, test::toQQ("99/100"), test::toQQ("501/1000"));
  const T limit = NumberConversion<T, QQ>::convert(QQ(1000000000));
  std::erase_if(violations, [&](const LllViolation& violation) {
    return violation.kind == LllViolation::Kind::size && supNorm(basis[violation.k]) > limit;
  });
  RC_ASSERT(violations.empty());
}

TYPED_TEST(GenerationBy, LeadsToAReducedBasisOfTheSameLattice) {
  const Tally tally = checkOverPrepared<TypeParam>(
      []<class T>(Lattice<T, long double>& lattice, const SmallProblem& /*small*/) {
        const Silence silence;
        const Matrix<T> before = lattice.basis.B_save;
        RC_ASSERT(lattice.reduce(0));
        checkReduced(lattice.basis.B());
        RC_ASSERT(sameLattice(lattice.backMapAll(lattice.basis.B()), before));
        RC_ASSERT(identical(lattice.basis.B_save, before));
        RC_ASSERT(lattice.verifyTransformation(LatticeKind::full, Announce::silent));
        RC_ASSERT(sameLattice(lattice.basis.B_save, before));
        RC_ASSERT(identical(lattice.backMapAll(lattice.basis.B()), lattice.basis.B_save));
      });
  expectCarried<TypeParam>(tally);
}

template <class T>
Matrix<QQ> exactBasis(const Lattice<T, long double>& lattice) {
  Matrix<QQ> rows;
  rows.convertFrom(lattice.backMapAll(lattice.basis.B()), false);
  return rows;
}

/// The lattice of two precisions comes to the same end as the exact one.
void checkBothWays(const SmallProblem& small) {
  YLattice<long double> both;
  LatticeOfBoth::read(both, small);
  const std::string report = LatticeOfBoth::prepare(both);
  const Silence silence;
  const std::string exactReport =
      LatticeOver<QQ>::carry(small, [&](Lattice<QQ, long double>& exact, const SmallProblem&) {
        if (!report.empty()) return;
        const auto basis = [](const auto& live) { return exactBasis(live); };
        RC_ASSERT(sameLattice(both.withLive(basis), exact.basis.B_save));
        both.runStep([](auto& live) { return live.reduce(0); });
        exact.reduce(0);
        RC_ASSERT(sameLattice(both.withLive(basis), exactBasis(exact)));
      });
  RC_ASSERT(report == exactReport);
}

/// Long double holds the problem, but not all the way to its lattice.
bool failsOver(const SmallProblem& small) {
  Vanu<long double> read;
  try {
    read.convertFrom(small.record());
  } catch (const PrecisionException&) {
    return false;
  }
  try {
    LatticeOver<long double>::carry(small, [](auto&, const SmallProblem&) {});
  } catch (const PrecisionException&) {
    return true;
  }
  return false;
}

TEST(GenerationByBoth, ComesToTheLatticeOfExactNumbers) {
  int failedOver = 0;
  test::checkOverProblems([&](const SmallProblem& small) {
    checkBothWays(small);
    if (failsOver(small)) ++failedOver;
  });
  EXPECT_GE(failedOver, problemCount / 400);
}

oracle::Bound finite(const mpq_class& value) {
  return {0, value};
}

/// Coefficients far above the range in which long double is safe to multiply.
SmallProblem largeProblem(const mpz_class& size) {
  oracle::Problem problem;
  const mpz_class a = size + 7;
  const mpz_class b = 3 * size - 11;
  problem.equations = {{{a, b, -size}, 4 * a + 5 * b - 6 * size, 0}};
  problem.inequations = {{{b, 1, a}, finite(0), finite(20 * a * b)}};
  problem.lower = {finite(-9), finite(0), finite(0)};
  problem.upper = {finite(9), finite(9), finite(17)};
  return {problem, false};
}

class GenerationOfLargeNumbers : public testing::TestWithParam<const char*> {};

TEST_P(GenerationOfLargeNumbers, ComesToTheLatticeOfExactNumbers) {
  const SmallProblem small = largeProblem(mpz_class(GetParam()));
  EXPECT_TRUE(rc::check([&] { checkBothWays(small); }));
}

INSTANTIATE_TEST_SUITE_P(Sizes, GenerationOfLargeNumbers,
                         testing::Values("1000000007", "999999999989", "1000000000000000003",
                                         "100000000000000000000000000000000000133"),
                         [](const auto& size) {
                           return "Digits" + std::to_string(std::string_view(size.param).size());
                         });

}  // namespace
}  // namespace starsift
