// Searches and checks in several threads of one process.
#include <gtest/gtest.h>
#include <starsift/starsift.h>

#include <array>
#include <future>
#include <vector>

namespace starsift {
namespace {

/// 7 x + 11 y + 13 z = sum with all from 0 to 60.
Problem problemOf(int sum) {
  Problem problem;
  for (int i = 0; i < 3; ++i) problem.addVariable(0, 60);
  problem.addEquation({7, 11, 13}, sum);
  problem.maximise({1, 2, 4});
  return problem;
}

std::size_t countOf(int sum) {
  std::size_t count = 0;
  for (int x = 0; x <= 60; ++x)
    for (int y = 0; y <= 60; ++y) {
      const int rest = sum - 7 * x - 11 * y;
      if (rest >= 0 && rest % 13 == 0 && rest / 13 <= 60) ++count;
    }
  return count;
}

TEST(LibraryThreads, SearchAtTheSameTime) {
  constexpr std::array sums{400, 411, 423};
  std::vector<std::future<Search::Result>> runs;
  for (const int sum : sums)
    runs.push_back(std::async(std::launch::async, [sum] {
      return Search(problemOf(sum)).set("sol", 0).set("threads", 2).run();
    }));
  for (std::size_t i = 0; i < sums.size(); ++i) {
    const Search::Result result = runs[i].get();
    EXPECT_EQ(result.proof, Search::Proof::allFound);
    EXPECT_EQ(result.solutions.size(), countOf(sums[i]));
  }
}

TEST(LibraryThreads, ShareOneSearch) {
  Search search(problemOf(400));
  search.set("sol", 0);
  auto other = std::async(std::launch::async, [&search] { return search.run(); });
  EXPECT_EQ(search.run().solutions.size(), other.get().solutions.size());
}

/// A market split of two rows and 16 variables, by another start of its random weights.
Problem splitOf(std::uint32_t state) {
  Problem problem;
  constexpr int columns = 16;
  for (int i = 0; i < columns; ++i) problem.addVariable(0, 1);
  for (int row = 0; row < 2; ++row) {
    std::vector<int> weights;
    int sum = 0;
    for (int i = 0; i < columns; ++i) {
      state = state * 1664525U + 1013904223U;
      weights.push_back(static_cast<int>(state >> 25U));
      if (i % 2 == 0) sum += weights.back();
    }
    problem.addEquation(weights, sum);
  }
  return problem;
}

TEST(LibraryThreads, ReduceLatticesAtTheSameTime) {
  const auto search = [](std::uint32_t seed) {
    return Search(splitOf(seed)).set("sol", 5).set("iters", 20).set("prove", 0).run();
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
