// Searches and checks in several threads of one process.
#include <gtest/gtest.h>
#include <starsift/starsift.h>

#include <array>
#include <future>
#include <vector>

#include "LibraryProblems.h"

namespace starsift {
namespace {

Problem dearestCoins(int sum) {
  Problem problem = test::coins(sum);
  problem.maximise({1, 2, 4});
  return problem;
}

TEST(LibraryThreads, SearchAtTheSameTime) {
  constexpr std::array sums{400, 411, 423};
  std::vector<std::future<Search::Result>> runs;
  for (const int sum : sums)
    runs.push_back(std::async(std::launch::async, [sum] {
      return Search(dearestCoins(sum)).set("sol", 0).set("threads", 2).run();
    }));
  for (std::size_t i = 0; i < sums.size(); ++i) {
    const Search::Result result = runs[i].get();
    EXPECT_EQ(result.proof, Search::Proof::allFound);
    EXPECT_EQ(result.solutions.size(), test::coinsCount(sums[i]));
  }
}

TEST(LibraryThreads, ShareOneSearch) {
  Search search(dearestCoins(400));
  search.set("sol", 0);
  auto other = std::async(std::launch::async, [&search] { return search.run(); });
  EXPECT_EQ(search.run().solutions.size(), other.get().solutions.size());
}

TEST(LibraryThreads, ReduceLatticesAtTheSameTime) {
  const auto search = [](unsigned seed) {
    return Search(test::marketSplit(2, 16, seed))
        .set("sol", 5)
        .set("iters", 20)
        .set("prove", 0)
        .run();
  };
  auto other = std::async(std::launch::async, search, 1U);
  EXPECT_FALSE(search(2).solutions.empty());
  EXPECT_FALSE(other.get().solutions.empty());
}

TEST(LibraryThreads, RefuseBadInputEachByItself) {
  const auto refused = [] {
    int count = 0;
    for (int i = 0; i < 100; ++i) {
      try {
        static_cast<void>(Problem::fromOpt("[ ] [ ] [ [ 1 ] ] [ 1 2 ]"));
      } catch (const Error&) {
        ++count;
      }
    }
    return count;
  };
  auto other = std::async(std::launch::async, refused);
  EXPECT_EQ(refused(), 100);
  EXPECT_EQ(other.get(), 100);
}

}  // namespace
}  // namespace starsift
