#include "search/jump/JumpThreads.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <stdexcept>
#include <string_view>
#include <thread>
#include <vector>

#include "support/fixtures/Problem.h"

namespace starsift {
namespace {

using test::problemFrom;
using test::q;

/// Values and weights of twelve pieces; the best choice is worth 95.
constexpr std::string_view knapsack =
    "[ inf ] [ [ 9 11 13 15 8 10 12 7 6 14 5 16 ] ] [ ] [ ] [ ]"
    "[ [ 5 7 8 9 4 6 7 4 3 9 3 10 ] ] [ -inf ] [ 55 ]"
    "[ 0 0 0 0 0 0 0 0 0 0 0 0 ] [ 0 0 0 0 0 0 0 0 0 0 0 0 ] [ 1 1 1 1 1 1 1 1 1 1 1 1 ]";
constexpr std::string_view anyPoint =
    "[ ] [ ] [ ] [ ] [ ] [ [ 3 -5 7 ] ] [ 11 ] [ 12 ] [ 0 0 0 ] [ 0 0 0 ] [ 9 9 9 ]";

class Listener : public JumpListener {
 public:
  explicit Listener(int turns) : turns_(turns) {}

  Step found(const Star<QQ>& star) override {
    EXPECT_EQ(std::this_thread::get_id(), caller_);
    if (throwsAt == static_cast<int>(norms.size())) throw std::runtime_error("enough");
    norms.push_back(star.targetNorm);
    return norms.size() == most ? Step::stop : Step::goOn;
  }
  Step progress() override {
    EXPECT_EQ(std::this_thread::get_id(), caller_);
    return turns_-- > 0 ? Step::goOn : Step::stop;
  }

  std::vector<QQ> norms;
  std::size_t most = 0;
  int throwsAt = -1;

 private:
  int turns_;
  std::thread::id caller_ = std::this_thread::get_id();
};

/// Searches the best choice of pieces.
void searchKnapsack(unsigned threads, Listener& listener) {
  const Vanu<QQ> problem = problemFrom(knapsack);
  JumpThreads search(problem, 1, threads);
  search.run(listener);
}

TEST(JumpThreads, SolutionsBecomeBetterWhateverTheNumberOfThreads) {
  for (const unsigned threads : {1U, 2U, 5U}) {
    Listener listener(20);
    searchKnapsack(threads, listener);
    ASSERT_FALSE(listener.norms.empty());
    for (std::size_t i = 1; i < listener.norms.size(); ++i)
      EXPECT_LT(listener.norms[i], listener.norms[i - 1]);
  }
}

// The walk holds a solution back while better ones follow at once, and tells it at its end.
TEST(JumpThreads, SolutionIsToldAlsoWhereTheTimeEndsAtOnce) {
  const Vanu<QQ> problem = problemFrom(knapsack);
  for (const unsigned threads : {1U, 3U}) {
    JumpThreads search(problem, 1, threads);
    QQ best = q("0");
    for (int slice = 0; slice < 20; ++slice) {
      Listener listener(1);
      search.run(listener);
      for (const QQ& norm : listener.norms) best = norm < best ? norm : best;
    }
    EXPECT_LE(best, q("-90"));
  }
}

TEST(JumpThreads, NothingWorseThanWhatIsKnownIsTold) {
  const Vanu<QQ> problem = problemFrom(knapsack);
  JumpThreads search(problem, 1, 3);
  search.setKnown(q("-80"));
  Listener listener(20);
  search.run(listener);
  ASSERT_FALSE(listener.norms.empty());
  EXPECT_LT(listener.norms.front(), q("-80"));
}

TEST(JumpThreads, OneSolutionIsEnoughWithoutTargets) {
  const Vanu<QQ> problem = problemFrom(anyPoint);
  for (const unsigned threads : {1U, 4U}) {
    JumpThreads search(problem, 1, threads);
    Listener listener(1000);
    search.run(listener);
    EXPECT_EQ(listener.norms.size(), 1U);
  }
}

TEST(JumpThreads, ListenerEndsAllWalks) {
  Listener listener(1000);
  listener.most = 1;
  searchKnapsack(4, listener);
  EXPECT_EQ(listener.norms.size(), 1U);
}

TEST(JumpThreads, ExceptionOfTheListenerEndsAllWalks) {
  Listener listener(1000);
  listener.throwsAt = 0;
  EXPECT_THROW(searchKnapsack(4, listener), std::runtime_error);
}

TEST(JumpThreads, NumbersTooLongForWalksAreRefused) {
  const Vanu<QQ> problem = problemFrom(
      "[ ] [ ] [ [ 123456789012345678901 1 ] ] [ 7 ] [ ] [ ] [ ] [ ] [ 0 0 ] [ 0 0 ] [ 9 9 ]");
  EXPECT_FALSE(JumpThreads(problem, 1, 3).isReady());
}

}  // namespace
}  // namespace starsift
