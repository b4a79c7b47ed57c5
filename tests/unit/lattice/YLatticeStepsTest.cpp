// Steps of the lattice through the wrapper, over a basis or a problem.
#include <gtest/gtest.h>

#include <algorithm>

#include "lattice/YLattice.h"
#include "support/fixtures/FreshConsole.h"
#include "support/fixtures/Problem.h"
#include "support/fixtures/ReducedBasis.h"
#include "support/fixtures/RowsText.h"
#include "support/fixtures/ScratchDir.h"

namespace starsift {
namespace {

/// The wrapper over a basis or a problem.
class StepsOfYLattice : public test::FreshConsole {
 protected:
  void use(const Matrix<long double>& basis) {
    lattice.standard().reset(&basis, LatPath::keep);
    test::allowChecks(lattice.standard());
  }
  void prepare(std::string_view problem) {
    lattice.standard().setProblem(test::problemFrom<long double>(problem));
    lattice.normalise(TargetRange::find, From::lifted);
    lattice.prepareLattice();
  }

  YLattice<long double> lattice;
  test::ScratchDir scratch;
};

TEST_F(StepsOfYLattice, BasisIsSorted) {
  use({{0, 3, 0}, {2, 0, 0}, {0, 0, 1}});
  lattice.sortBasis(2);
  EXPECT_EQ(test::rowsText(lattice.standard().basis.B()), "[ 2 0 0 ] [ 0 3 0 ] [ 0 0 1 ]");
  lattice.sortBasis(0);
  EXPECT_EQ(test::rowsText(lattice.standard().basis.B()), "[ 0 0 1 ] [ 2 0 0 ] [ 0 3 0 ]");
}

TEST_F(StepsOfYLattice, CountsAreThoseOfThePass) {
  use({{3, 0, 0}, {0, 2, 0}, {0, 0, 1}});
  const PassCounts counts = lattice.lllPass(1, 0, 0);
  EXPECT_EQ(counts.swaps, 3);
  EXPECT_EQ(counts.tests, lattice.standard().run.lastPass.tests);
  EXPECT_EQ(counts.skipped, 0);
}

// The third vector has numbers that the standard lattice doesn't check.
TEST_F(StepsOfYLattice, CountsOfARepeatedPassAreThoseOfTheExactOne) {
  const Matrix<long double> rows{{3, 0, 0, 0}, {0, 2, 0, 0}, {0, 0, 2000000001, 0}, {0, 0, 5, 1}};
  use(rows);
  YLattice<long double>::Exact expected;
  expected.assignFrom(lattice.standard(), Settings::copy);
  expected.lllPass(1, 0, 0);
  const PassCounts counts = lattice.lllPass(1, 0, 0);
  EXPECT_EQ(counts.tests, expected.run.lastPass.tests);
  EXPECT_EQ(counts.swaps, expected.run.lastPass.swaps);
  EXPECT_EQ(counts.skipped, expected.run.lastPass.skipped);
  EXPECT_GT(counts.swaps, 1);
  lattice.useExtendedPrecision();
  EXPECT_TRUE(identical(lattice.exact().basis.B(), expected.basis.B()));
}

// x + 2 y between 2 and 9, both from 0 to 5.
constexpr std::string_view band =
    "[ ] [ ] [ ] [ ] [ ] [ [ 1 2 ] ] [ 2 ] [ 9 ] [ 0 0 ] [ 0 0 ] [ 5 5 ]";

TEST_F(StepsOfYLattice, LatticeIsSavedWhateverTheOutputSwitchSays) {
  prepare(band);
  lattice.standard().latFile = scratch.file("p.lat");
  for (const bool output : {false, true}) {
    lattice.standard().run.outputSwitch = output;
    lattice.saveLattice();
    EXPECT_EQ(lattice.standard().run.outputSwitch, output);
    EXPECT_NE(scratch.read("p.lat"), "<no file>");
  }
}

TEST_F(StepsOfYLattice, UnfinishedLatticeIsNotSaved) {
  prepare(band);
  lattice.standard().latFile = scratch.file("p.lat");
  lattice.standard().frame.latticeKind = LatticeKind::equations;
  lattice.saveLattice();
  EXPECT_TRUE(scratch.names().empty());
}

TEST_F(StepsOfYLattice, SolutionsAreStarsWhicheverLatticeIsLive) {
  prepare(band);
  const auto file = [](auto& live) {
    using T = std::remove_reference_t<decltype(live.frame.l[1])>;
    live.resize(live.basis.n, 0, Vectors::discard);
    live.prepareLattice();
    live.params.sol = 0;
    Vector<T> vector;
    live.opt2lat({T(1), T(4)}, vector, Space::raw, T(1));
    live.checkSolution(vector, Space::raw, 7, Announce::silent);
  };
  file(lattice.standard());
  const auto expectStar = [this] {
    const Array<Star<QQ>> stars = lattice.starsFiledAfter(0);
    ASSERT_EQ(stars.dimension(), lattice.solutionCount());
    const bool isThere = std::any_of(stars.begin(), stars.end(), [](const Star<QQ>& star) {
      return test::textOf(star.x()) == "[ 1 4 ]" && star.time == 7;
    });
    EXPECT_TRUE(isThere);
  };
  expectStar();
  EXPECT_FALSE(lattice.usesExact());
  lattice.useExtendedPrecision();
  expectStar();
  EXPECT_TRUE(lattice.usesExact());
}

}  // namespace
}  // namespace starsift
