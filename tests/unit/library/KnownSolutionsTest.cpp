#include <gtest/gtest.h>
#include <starsift/starsift.h>

#include <stop_token>
#include <utility>
#include <vector>

#include "LibraryErrors.h"
#include "LibraryProblems.h"

namespace starsift {
namespace {

/// As many coins as possible: 56.
Problem mostCoins() {
  Problem problem = test::coins(400);
  problem.maximise({1, 1, 1});
  return problem;
}

Solution at(std::vector<Number> x) {
  Solution solution;
  solution.x = std::move(x);
  return solution;
}

TEST(LibraryKnownSolutions, AreAmongTheSolutionsAndNobodyIsToldOfThem) {
  const Solution known = at({15, 2, 21});
  std::vector<Solution> told;
  Search search(mostCoins());
  search.know({&known, 1}).onSolution([&](const Solution& s) { told.push_back(s); });
  const Search::Result result = search.run();
  EXPECT_EQ(result.proof, Search::Proof::optimum);
  EXPECT_EQ(result.best, Number(-56));
  bool isThere = false;
  for (const Solution& solution : result.solutions) isThere |= solution.x == known.x;
  EXPECT_TRUE(isThere);
  for (const Solution& solution : told) EXPECT_NE(solution.x, known.x);
  EXPECT_EQ(result.solutions.size(), told.size() + 1);
}

TEST(LibraryKnownSolutions, AreJudgedAnew) {
  const std::vector<Solution> known{at({15, 2, 22}), at({15, 2, 21}), at({15, 2, 21})};
  const Search::Result result =
      Search(mostCoins()).set("iters", 1).set("prove", 0).know(known).run();
  std::size_t found = 0;
  for (const Solution& solution : result.solutions) {
    EXPECT_NE(solution.x, known[0].x);
    if (solution.x == known[1].x) ++found;
  }
  EXPECT_EQ(found, 1U);
}

TEST(LibraryKnownSolutions, OfTheOptimumLeaveNothingToFind) {
  const Search::Result first = Search(mostCoins()).run();
  ASSERT_FALSE(first.solutions.empty());
  int told = 0;
  Search search(mostCoins());
  search.know(first.solutions).onSolution([&](const Solution&) { ++told; });
  const Search::Result again = search.run();
  EXPECT_EQ(again.proof, Search::Proof::optimum);
  EXPECT_EQ(again.best, first.best);
  EXPECT_EQ(told, 0);
}

TEST(LibraryKnownSolutions, HaveAComponentForEachVariable) {
  Search search(mostCoins());
  const Solution shortOne = at({1, 2});
  EXPECT_ERROR(search.know({&shortOne, 1}), "a point has 2 components, the problem 3 variables");
  const Solution infinite = at({1, 2, Number("inf")});
  EXPECT_ERROR(search.know({&infinite, 1}), "a point has an infinite component");
}

TEST(LibraryProfile, HasTheBasesOfTheCompleteSearch) {
  const std::vector<Search::BasisProfile> bases = Search(mostCoins()).profile();
  ASSERT_EQ(bases.size(), 2U);
  EXPECT_EQ(bases[0].name, "before");
  EXPECT_EQ(bases[1].name, "LLL");
  for (const Search::BasisProfile& basis : bases) EXPECT_EQ(basis.lengths.size(), 2U);
  // The determinant of the lattice is that of each of its bases.
  EXPECT_NEAR(bases[0].lengths[0] + bases[0].lengths[1], bases[1].lengths[0] + bases[1].lengths[1],
              1e-9);
}

TEST(LibraryProfile, IsEmptyWithoutAFiniteBox) {
  Problem problem;
  problem.addVariable(0, Number("inf"));
  problem.addVariable(0, Number("inf"));
  problem.addEquation({3, -5}, 1);
  EXPECT_TRUE(Search(problem).profile().empty());
}

TEST(LibraryProfile, EndsWhenItIsStopped) {
  std::stop_source stop;
  stop.request_stop();
  EXPECT_LE(Search(mostCoins()).profile(stop.get_token()).size(), 1U);
}

}  // namespace
}  // namespace starsift
