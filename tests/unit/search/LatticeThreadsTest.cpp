#include "search/LatticeThreads.h"

#include <gtest/gtest.h>

#include <string_view>
#include <thread>

#include "numbers/VectorQQ.h"
#include "support/fixtures/ExpectFails.h"
#include "support/fixtures/Problem.h"
#include "system/Failure.h"

namespace starsift {
namespace {

using test::problemFrom;

/// 3 x - 5 y + 7 z between 11 and 12.
constexpr std::string_view anyPoint =
    "[ ] [ ] [ ] [ ] [ ] [ [ 3 -5 7 ] ] [ 11 ] [ 12 ] [ 0 0 0 ] [ 0 0 0 ] [ 9 9 9 ]";
/// The same, x + y + z to be maximised.
constexpr std::string_view greatestSum =
    "[ inf ] [ [ 1 1 1 ] ] [ ] [ ] [ ] [ [ 3 -5 7 ] ] [ 11 ] [ 12 ] [ 0 0 0 ] [ 0 0 0 ] [ 9 9 9 ]";
/// An even number is odd; no row shows it.
constexpr std::string_view noPoint =
    "[ ] [ ] [ [ 2 4 ] ] [ 7 ] [ 0 ] [ ] [ ] [ ] [ 0 0 ] [ 0 0 ] [ 9 9 ]";

LatticeSource sourceOf(const Vanu<QQ>& problem) {
  LatticeSource source{problem, ExtendedParams<QQ>(), 1, true};
  source.params.iters = -1;
  source.params.sol = 1;
  return source;
}

void sleepShortly() {
  std::this_thread::sleep_for(std::chrono::milliseconds(1));
}

void waitForLattices(const LatticeThreads& threads, std::uint64_t count) {
  while (threads.latticeCount() < count) sleepShortly();
}

TEST(LatticeThreads, FindASolution) {
  const Vanu<QQ> problem = problemFrom(anyPoint);
  LatticeThreads threads(sourceOf(problem));
  EXPECT_TRUE(threads.takeNews().empty());
  threads.start(2, {});
  std::vector<Star<QQ>> news;
  while (news.empty()) {
    news = threads.takeNews();
    sleepShortly();
  }
  ASSERT_EQ(news.size(), 1U);
  const Star<QQ>& star = news.front();
  const QQ value = QQ(3) * star[1] - QQ(5) * star[2] + QQ(7) * star[3];
  EXPECT_TRUE(value == QQ(11) || value == QQ(12));
}

TEST(LatticeThreads, GoOnToBetterSolutionsUntilTheyAreEnded) {
  const Vanu<QQ> problem = problemFrom(greatestSum);
  LatticeThreads threads(sourceOf(problem));
  threads.start(3, {});
  waitForLattices(threads, 30);
  threads.end();
  const auto news = threads.takeNews();
  ASSERT_FALSE(news.empty());
  for (std::size_t i = 1; i < news.size(); ++i)
    EXPECT_LT(news[i].targetNorm, news[i - 1].targetNorm);
  // The greatest sum is 21.
  EXPECT_EQ(news.back().targetNorm, QQ(-21));
  const std::uint64_t count = threads.latticeCount();
  sleepShortly();
  EXPECT_EQ(threads.latticeCount(), count);
}

TEST(LatticeThreads, MakeNoLatticesDuringAPause) {
  const Vanu<QQ> problem = problemFrom(greatestSum);
  LatticeThreads threads(sourceOf(problem));
  threads.pause();
  threads.start(2, {});
  sleepShortly();
  EXPECT_EQ(threads.latticeCount(), 0U);
  threads.resume();
  waitForLattices(threads, 3);
}

TEST(LatticeThreads, EndDuringAPause) {
  const Vanu<QQ> problem = problemFrom(greatestSum);
  LatticeThreads threads(sourceOf(problem));
  threads.start(2, {});
  threads.pause();
  threads.end();
  threads.takeNews();
}

TEST(LatticeThreads, EndWithoutAWordWhereNothingIsToBeFound) {
  const Vanu<QQ> problem = problemFrom(noPoint);
  LatticeThreads threads(sourceOf(problem));
  testing::internal::CaptureStdout();
  threads.start(2, {});
  threads.end();
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
  EXPECT_TRUE(threads.takeNews().empty());
}

void failBesideLattices() {
  const Vanu<QQ> problem = problemFrom(greatestSum);
  LatticeThreads threads(sourceOf(problem));
  threads.start(2, {});
  waitForLattices(threads, 2);
  fail("No space left");
}

TEST(LatticeThreads, EndBeforeAProcessThatFails) {
  EXPECT_FAILS_WITH(failBesideLattices(), "No space left");
}

}  // namespace
}  // namespace starsift
