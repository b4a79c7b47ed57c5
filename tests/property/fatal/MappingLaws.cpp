// The way from points of a problem to lattice vectors and back, over all stages of the
// lattice: against the basis that is made from the normal form, and against the verdict
// on the point.
#include <gtest/gtest.h>

#include <array>

#include "LatticePoints.h"
#include "problem/ProblemPoint.h"
#include "support/fixtures/CheckVectors.h"

namespace starsift {
namespace {

using oracle::PlainRecord;
using oracle::Point;
using test::isWithinBounds;
using test::LatticeStage;
using test::pointOf;
using test::SmallProblem;
using test::solutionsOf;
using test::someOf;
using test::Tally;
using test::vectorOf;

constexpr std::array<LatticeStage, 4> allStages = {
    LatticeStage::equations, LatticeStage::equationsGone, LatticeStage::fullWithModuli,
    LatticeStage::full};

/// The exact values, for comparisons that show them.
template <class T>
std::string textOf(const Vector<T>& vector) {
  return oracle::pointText(pointOf(vector));
}

/// The inhomogeneous row of the basis and z times the others.
template <class T>
Point combination(const Lattice<T, long double>& lattice, const Point& z) {
  Point sum = pointOf(lattice.basis.B_save[1]);
  for (std::size_t v = 0; v < z.size(); ++v) {
    const Point row = pointOf(lattice.basis.B_save[static_cast<Index>(v) + 2]);
    for (std::size_t j = 0; j < sum.size(); ++j) sum[j] += z[v] * row[j];
  }
  return sum;
}

template <class T>
void checkWayBack(const Lattice<T, long double>& lattice, const Vector<T>& vector, const Point& x) {
  Vector<T> back;
  RC_ASSERT(lattice.lat2opt(vector, back, Constants::insert, Slacks::omit, Orientation::given) ==
            T(1));
  RC_ASSERT(textOf(back) == oracle::pointText(x));
  Vector<T> negative(vector);
  for (T& entry : negative) entry = T() - entry;
  RC_ASSERT(lattice.lat2opt(negative, back, Constants::insert, Slacks::omit, Orientation::either) ==
            T(1));
  RC_ASSERT(textOf(back) == oracle::pointText(x));
  RC_ASSERT(lattice.lat2opt(negative, back, Constants::insert, Slacks::omit, Orientation::given) ==
            T(-1));
}

template <class T>
void checkSolution(const Lattice<T, long double>& lattice, const PlainRecord& normal,
                   const Point& x) {
  Vector<T> vector;
  lattice.opt2lat(vectorOf<T>(x), vector, Space::raw);
  RC_ASSERT(textOf(vector) ==
            oracle::pointText(combination(lattice, oracle::image(normal, x).value())));
  RC_ASSERT(isWithinBounds(lattice, vector));
  checkWayBack(lattice, vector, x);
}

/// The law, a function of lattice, problem and normal form, over the problems that have
/// one.
template <class T, class Law>
Tally checkOverLattices(const Law& law) {
  Tally tally;
  test::checkOverProblems([&](const SmallProblem& small) {
    try {
      Lattice<T, long double> lattice;
      lattice.file.editProblem().convertFrom(small.record());
      const test::Outcome outcome = test::normalised(lattice, true, false);
      if (!outcome.normal) return;
      law(lattice, small.problem, *outcome.normal);
      ++tally.carried;
    } catch (const PrecisionException&) {
      ++tally.refused;
    }
  });
  return tally;
}

template <class T>
Tally checkSolutions() {
  return checkOverLattices<T>([](Lattice<T, long double>& lattice, const oracle::Problem& problem,
                                 const PlainRecord& normal) {
    const std::vector<Point> solutions = someOf(solutionsOf(problem), 5);
    for (const LatticeStage stage : allStages) {
      generateByHand(lattice, stage);
      for (const Point& x : solutions) checkSolution(lattice, normal, x);
    }
  });
}

TEST(Mapping, FindsTheVectorOfASolutionAndItsWayBack) {
  const Tally tally = checkSolutions<QQ>();
  EXPECT_GE(tally.carried, test::problemCount / 2);
  EXPECT_EQ(tally.refused, 0);
}

TEST(Mapping, FindsTheSameInLongDouble) {
  const Tally tally = checkSolutions<long double>();
  EXPECT_GE(tally.carried, test::problemCount / 4);
  EXPECT_GE(tally.refused, 1);
}

/// The vector of the point at this stage lies within the bounds, and it comes back as
/// the point: a constant that has another value is lost on the way.
bool isAccepted(Lattice<QQ, long double>& lattice, LatticeStage stage, const Vector<QQ>& x) {
  generateByHand(lattice, stage);
  Vector<QQ> vector;
  try {
    lattice.opt2lat(x, vector, Space::raw, QQ(1));
  } catch (const ModuloException&) {
    return false;
  }
  Vector<QQ> back;
  lattice.lat2opt(vector, back, Constants::insert, Slacks::omit, Orientation::given);
  return isWithinBounds(lattice, vector) && identical(back, x);
}

TEST(Mapping, KeepsExactlyTheSolutionsWithinTheBounds) {
  int kept = 0;
  checkOverLattices<QQ>([&](Lattice<QQ, long double>& lattice, const oracle::Problem& problem,
                            const PlainRecord& /*normal*/) {
    for (const Point& point : someOf(test::pointsAround(problem), 12)) {
      const Vector<QQ> x = vectorOf<QQ>(point);
      const bool accepted = isAccepted(lattice, LatticeStage::equations, x) &&
                            isAccepted(lattice, LatticeStage::full, x);
      kept += accepted ? 1 : 0;
      if (accepted != oracle::solves(problem, point))
        RC_FAIL("another verdict on " + oracle::pointText(point));
    }
  });
  EXPECT_GE(kept, test::problemCount / 4);
}

/// Coefficients of the first variables, anywhere.
Point arbitraryCoefficients(const PlainRecord& normal) {
  Point z;
  for (std::size_t j = 0; j < normal.originals(); ++j) z.emplace_back(*rc::gen::inRange(-9, 10));
  return z;
}

TEST(Mapping, UndoesTheWayBackOfAnyFactor) {
  checkOverLattices<QQ>([](Lattice<QQ, long double>& lattice, const oracle::Problem& /*problem*/,
                           const PlainRecord& normal) {
    generateByHand(lattice, LatticeStage::fullWithModuli);
    const QQ h(*rc::gen::inRange(-3, 4));
    Vector<QQ> z = vectorOf<QQ>(arbitraryCoefficients(normal));
    appendSlacks<QQ>(lattice, z, h);
    Vector<QQ> residuals = equationResiduals<QQ>(lattice, z, h);
    appendModulusFactors<QQ>(lattice, z, residuals);
    z.insertComponent(1, h);
    const Vector<QQ> vector = z * lattice.basis.B_save;
    Vector<QQ> x;
    RC_ASSERT(lattice.lat2opt(vector, x, Constants::insert, Slacks::omit, Orientation::given) == h);
    Vector<QQ> again;
    lattice.opt2lat(x, again, Space::raw, h);
    RC_ASSERT(identical(again, vector));
  });
}

}  // namespace
}  // namespace starsift
