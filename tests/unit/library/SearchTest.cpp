#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <starsift/starsift.h>

#include <set>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "LibraryErrors.h"
#include "LibraryProblems.h"

namespace starsift {
namespace {

using test::coins;
using test::coinsCount;
using test::marketSplit;
using testing::ElementsAre;
using testing::HasSubstr;
using Proof = Search::Proof;
using End = Search::End;

/// 3 x + 5 y = 31, both from 0 to 5: only (2, 5).
Problem one() {
  Problem problem;
  problem.addVariable(0, 5);
  problem.addVariable(0, 5);
  problem.addEquation({3, 5}, 31);
  return problem;
}

/// A file of one solution.
std::vector<Solution> record(std::vector<Number> x) {
  std::vector<Solution> solutions(1);
  solutions.front().x = std::move(x);
  return solutions;
}

constexpr int sum = 400;

/// There is no solution, which takes long to see.
Problem hard() {
  return marketSplit(7, 60, 12345, 1);
}

TEST(LibrarySearch, FindsTheOnlySolution) {
  const Search::Result result = Search(one()).run();
  ASSERT_EQ(result.solutions.size(), 1U);
  EXPECT_THAT(result.solutions[0].x, ElementsAre(Number(2), Number(5)));
  EXPECT_EQ(result.best, std::nullopt);
}

TEST(LibrarySearch, FindsAllSolutionsAndProvesIt) {
  const Search::Result result = Search(coins(sum)).set("sol", 0).run();
  EXPECT_EQ(result.proof, Proof::allFound);
  EXPECT_EQ(result.end, End::decided);
  EXPECT_EQ(result.count, coinsCount(sum));
  std::set<std::vector<Number>> points;
  for (const Solution& solution : result.solutions) {
    EXPECT_TRUE(check(coins(sum), solution.x).isRight());
    points.insert(solution.x);
  }
  EXPECT_EQ(points.size(), coinsCount(sum));
  EXPECT_EQ(result.solutions.size(), coinsCount(sum));
  EXPECT_THAT(result.verdict, HasSubstr("All " + std::to_string(coinsCount(sum)) + " solutions"));
}

TEST(LibrarySearch, CountsWithoutKeeping) {
  const Search::Result result = Search(coins(sum)).set("count", true).run();
  EXPECT_EQ(result.count, coinsCount(sum));
  EXPECT_TRUE(result.solutions.empty());
}

TEST(LibrarySearch, ProvesTheOptimum) {
  Problem problem = coins(sum);
  problem.maximise({2, 3, 5});
  const Search::Result result = Search(problem).run();
  EXPECT_EQ(result.proof, Proof::optimum);
  ASSERT_FALSE(result.solutions.empty());
  EXPECT_EQ(result.best, result.solutions.front().targetNorm);
  EXPECT_EQ(result.bound, result.best);
}

TEST(LibrarySearch, ProvesThatThereIsNone) {
  Problem problem = one();
  problem.addEquation({1, 1}, 8);
  const Search::Result result = Search(problem).run();
  EXPECT_EQ(result.proof, Proof::infeasible);
  EXPECT_TRUE(result.solutions.empty());
}

TEST(LibrarySearch, SaysThatThereIsNoBest) {
  Problem problem;
  for (int i = 0; i < 2; ++i) problem.addVariable(0, "inf");
  problem.addEquation({1, -1}, 3);
  problem.maximise({1, 1});
  const Search::Result result = Search(problem).run();
  EXPECT_TRUE(result.isUnbounded);
  EXPECT_EQ(result.proof, Proof::none);
  EXPECT_FALSE(result.solutions.empty());
}

TEST(LibrarySearch, TakesAReportThatProvesItForAnAnswer) {
  Problem problem;
  for (int i = 0; i < 2; ++i) problem.addVariable(0, 5);
  problem.addEquation({2, 4}, 7);
  const Search::Result result = Search(problem).run();
  EXPECT_EQ(result.proof, Proof::infeasible);
  EXPECT_EQ(result.end, End::decided);
  EXPECT_FALSE(result.isExactOnly);
  EXPECT_THAT(result.verdict, HasSubstr("This proves that the problem has no solution."));
}

TEST(LibrarySearch, SaysThatOnlyExactSolutionsAreExcluded) {
  Problem problem;
  problem.addVariable(0, 5);
  problem.addEquation({"2.0000000001"}, 4);
  EXPECT_TRUE(check(problem, std::vector<Number>{2}).isSolution);
  const Search::Result result = Search(problem).run();
  EXPECT_EQ(result.proof, Proof::infeasible);
  EXPECT_TRUE(result.isExactOnly);
}

TEST(LibrarySearch, TellsOfEachSolutionOnce) {
  std::vector<std::vector<Number>> told;
  const Search::Result result =
      Search(coins(sum))
          .set("sol", 0)
          .onSolution([&told](const Solution& solution) { told.push_back(solution.x); })
          .run();
  EXPECT_EQ(told.size(), result.solutions.size());
  EXPECT_EQ((std::set<std::vector<Number>>(told.begin(), told.end()).size()), told.size());
}

TEST(LibrarySearch, EndsByAnExceptionOfACall) {
  const Search search = [] {
    Search made(coins(sum));
    made.set("sol", 0).onSolution([](const Solution&) { throw std::runtime_error("enough"); });
    return made;
  }();
  EXPECT_THROW(search.run(), std::runtime_error);
}

TEST(LibrarySearch, StopsWhenItIsAskedTo) {
  std::stop_source source;
  int calls = 0;
  Search search(hard());
  search.set("prove", false).set("threads", 1).onProgress([&](const Search::Progress& progress) {
    EXPECT_GE(progress.seconds, 0);
    if (++calls == 3) source.request_stop();
  });
  EXPECT_EQ(search.run(source.get_token()).end, End::stopped);
  EXPECT_EQ(calls, 3);
}

TEST(LibrarySearch, StopsInTheMiddleOfATree) {
  std::stop_source source;
  Search search(hard());
  search.set("prove", true).onProgress([&](const Search::Progress& progress) {
    if (progress.treeShare) source.request_stop();
  });
  const Search::Result result = search.run(source.get_token());
  EXPECT_EQ(result.end, End::stopped);
  EXPECT_EQ(result.proof, Proof::none);
}

TEST(LibrarySearch, EndsAfterItsPasses) {
  Search search(hard());
  search.set("prove", false).set("eenum", false).set("iters", 1);
  EXPECT_EQ(search.run().end, End::passes);
}

TEST(LibrarySearch, EndsAfterItsTime) {
  const Search::Result result = Search(hard()).set("prove", false).set("rtime", 1).run();
  EXPECT_EQ(result.end, End::time);
  EXPECT_GE(result.seconds, 1);
}

TEST(LibrarySearch, MayBeRunAgainWithTheSameResult) {
  Search search(one());
  search.set("seed", 7);
  const Search::Result first = search.run();
  EXPECT_EQ(first.seed, 7U);
  EXPECT_EQ(first.solutions.front().x, search.run().solutions.front().x);
}

TEST(LibrarySearch, PrintsNothing) {
  testing::internal::CaptureStdout();
  testing::internal::CaptureStderr();
  static_cast<void>(Search(coins(sum)).set("sol", 3).run());
  Problem none = one();
  none.addEquation({3, 5}, 32);
  static_cast<void>(Search(none).run());
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST(LibrarySearch, RefusesOtherOptions) {
  Search search(one());
  EXPECT_ERROR(search.set("beat", 20), "Malformed parameter: beat=20");
  EXPECT_ERROR(search.set("beta", "many"), "Malformed parameter: beta=many");
  EXPECT_ERROR(search.set("prove", 2), "Malformed parameter: prove=2");
  EXPECT_ERROR(search.set("threads", 0), "Malformed parameter: threads=0");
  for (const std::string name :
       {"help", "version", "json", "verb", "bench", "part", "join", "profile"})
    EXPECT_ERROR(search.set(name, 1), "not an option of a search: " + name);
  EXPECT_ERROR(search.set("sol", std::string_view("5\0x", 3)), "Malformed parameter: sol");
  EXPECT_EQ(search.run().solutions.size(), 1U);
}

TEST(LibrarySearch, EndsWhereANumberIsTooLarge) {
  Problem problem;
  problem.addVariable("-inf", "inf");
  problem.addEquation({1}, Number("1" + std::string(6000, '0')));
  const Search::Result result = Search(problem).set("rtime", 5).run();
  EXPECT_EQ(result.end, End::overflow);
  EXPECT_EQ(result.proof, Proof::none);
  EXPECT_EQ(result.verdict, "numbers too large for the reduction");
}

TEST(LibrarySearch, KeepsWhatIsKnownWhereANumberIsTooLarge) {
  const Number large("1" + std::string(6000, '0'));
  Problem problem;
  problem.addVariable("-inf", "inf");
  problem.addEquation({1}, large);
  problem.minimise({2});
  const Search::Result result = Search(problem).set("rtime", 5).know(record({large})).run();
  EXPECT_EQ(result.end, End::overflow);
  ASSERT_EQ(result.solutions.size(), 1U);
  EXPECT_EQ(result.count, 1U);
  EXPECT_EQ(result.best, result.solutions.front().targetNorm);
}

TEST(LibrarySearch, KeepsWhatHoldsWithinTheToleranceBesideAProof) {
  Problem problem;
  problem.addVariable(0, 5);
  problem.addEquation({"2.0000000001"}, 4);
  problem.maximise({1});
  const Search::Result result = Search(problem).know(record({2})).run();
  EXPECT_EQ(result.proof, Proof::infeasible);
  EXPECT_TRUE(result.isExactOnly);
  EXPECT_EQ(result.count, 1U);
  EXPECT_EQ(result.best, Number(-2));
}

TEST(LibrarySearch, RefusesAProblemWithoutRows) {
  Problem problem;
  EXPECT_ERROR(Search(problem).run(), "the problem has no variables");
  problem.addVariable(0, 1);
  EXPECT_ERROR(Search(problem).run(), "the problem has neither rows nor targets");
}

}  // namespace
}  // namespace starsift
