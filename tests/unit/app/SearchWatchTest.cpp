#include "app/SearchWatch.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <limits>
#include <sstream>

#include "app/Interrupt.h"

namespace starsift {
namespace {

using std::chrono::hours;
using testing::HasSubstr;

class SearchWatchTest : public testing::Test {
 protected:
  StatusLine::Clock::time_point now_ = StatusLine::Clock::now();
  YLattice<long double> lattice_;
  std::stringbuf terminal_;
};

TEST_F(SearchWatchTest, CountsTheExchangesOfAllPasses) {
  StatusLine line(nullptr, now_);
  SearchWatch watch(lattice_, line, now_);
  watch.onStep({10, 0, 3});
  watch.onStep({20, 1, 5});
  watch.onStep({0, 0, 0});
  watch.onStep({30, 2, 4});
  EXPECT_EQ(watch.exchanges(), 9);
}

TEST_F(SearchWatchTest, CountsTheLastExchangeOfAPassAtItsEnd) {
  StatusLine line(nullptr, now_);
  SearchWatch watch(lattice_, line, now_);
  watch.beginPass();
  watch.onStep({10, 0, 3});
  watch.endPass({11, 0, 4});
  watch.beginPass();
  watch.onStep({12, 0, 4});
  EXPECT_EQ(watch.exchanges(), 8);
  EXPECT_EQ(watch.passes(), 2);
}

TEST_F(SearchWatchTest, EndsTheSearchWhenItsTimeIsOver) {
  StatusLine line(nullptr, now_);
  SearchWatch watch(lattice_, line, now_ - hours(1));
  watch.setTimeLimit(3600);
  try {
    watch.look();
    FAIL() << "no end";
  } catch (const SearchEnded& ended) {
    EXPECT_EQ(ended.reason(), SearchEnd::time);
  }
}

TEST_F(SearchWatchTest, LooksAtTheClockEverySixteenSteps) {
  StatusLine line(nullptr, now_);
  SearchWatch watch(lattice_, line, now_ - hours(1));
  watch.setTimeLimit(3600);
  for (int step = 1; step < 16; ++step) watch.onStep({step, 0});
  EXPECT_THROW(watch.onStep({16, 0}), SearchEnded);
}

TEST_F(SearchWatchTest, LooksAtTheClockInEachStepOfTheExactLattice) {
  lattice_.useExtendedPrecision();
  StatusLine line(nullptr, now_);
  SearchWatch watch(lattice_, line, now_ - hours(1));
  watch.setTimeLimit(3600);
  EXPECT_THROW(watch.onStep({1, 0}), SearchEnded);
}

TEST_F(SearchWatchTest, LetsASearchWithoutTimeLimitGoOn) {
  StatusLine line(nullptr, now_);
  SearchWatch watch(lattice_, line, now_ - hours(1000));
  EXPECT_NO_THROW(watch.look());
}

TEST_F(SearchWatchTest, HasNoTimeLimitThatIsTooLongForTheClock) {
  StatusLine line(nullptr, now_);
  SearchWatch watch(lattice_, line, now_ - hours(1));
  watch.setTimeLimit(std::numeric_limits<long>::max());
  EXPECT_NO_THROW(watch.look());
}

TEST_F(SearchWatchTest, EndsTheSearchAtTheStepBehindASignal) {
  StatusLine line(nullptr, now_);
  SearchWatch watch(lattice_, line, now_);
  EXPECT_EXIT(
      {
        rememberInterrupts();
        std::raise(SIGINT);
        try {
          watch.onStep({1, 0});
        } catch (const SearchEnded& ended) {
          std::_Exit(ended.reason() == SearchEnd::interrupt ? 0 : 1);
        }
        std::_Exit(2);
      },
      testing::ExitedWithCode(0), "");
}

TEST_F(SearchWatchTest, DrawsTheStatusWhenItIsDue) {
  StatusLine line(&terminal_, now_ - hours(1));
  SearchWatch watch(lattice_, line, now_ - hours(1));
  watch.beginPass();
  watch.endPass({20, 1, 7});
  watch.look();
  EXPECT_THAT(terminal_.str(), HasSubstr("pass 1, 7 exchanges, 0 solutions, 3600 s"));
}

}  // namespace
}  // namespace starsift
