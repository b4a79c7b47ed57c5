#include "app/SavePace.h"

#include <gtest/gtest.h>

namespace starsift {
namespace {

using std::chrono::nanoseconds;
using std::chrono::seconds;

const SavePace::Clock::time_point start{seconds(1000)};

TEST(SavePace, LetsTheFirstWritingBeginAtOnce) {
  EXPECT_TRUE(SavePace().isDue(start));
}

TEST(SavePace, PausesTenTimesAsLongAsTheLastWritingTook) {
  SavePace pace;
  pace.saved(start, start + seconds(2));
  EXPECT_FALSE(pace.isDue(start + seconds(22) - nanoseconds(1)));
  EXPECT_TRUE(pace.isDue(start + seconds(22)));
}

TEST(SavePace, PausesLongerForFewStarsOfALargeFile) {
  SavePace pace;
  pace.saved(start, start + seconds(2));
  EXPECT_FALSE(pace.isDue(start + seconds(202) - nanoseconds(1), 10'000, 29'999));
  EXPECT_TRUE(pace.isDue(start + seconds(202), 10'000, 29'999));
  EXPECT_FALSE(pace.isDue(start + seconds(22) - nanoseconds(1), 10'000, 30'000));
  EXPECT_TRUE(pace.isDue(start + seconds(22), 10'000, 30'000));
}

TEST(SavePace, PausesNoLongerForFewStarsOfASmallFile) {
  SavePace pace;
  pace.saved(start, start + seconds(2));
  EXPECT_FALSE(pace.isDue(start + seconds(22) - nanoseconds(1), 9'999, 1));
  EXPECT_TRUE(pace.isDue(start + seconds(22), 9'999, 1));
}

TEST(SavePace, WritesOfAGrowingFileCostNoMoreThanTheLast) {
  SavePace pace;
  // A star is found in 100 microseconds and written in two.
  constexpr std::int64_t all = 5'000'000;
  constexpr std::int64_t step = 1000;
  SavePace::Clock::time_point now = start;
  std::int64_t saved = 0;
  std::int64_t writtenBefore = 0;
  for (std::int64_t found = step; found <= all; found += step) {
    now += std::chrono::microseconds(100 * step);
    if (!pace.isDue(now, saved, found - saved)) continue;
    pace.saved(now, now + std::chrono::microseconds(2 * found));
    now += std::chrono::microseconds(2 * found);
    saved = found;
    writtenBefore += found;
  }
  EXPECT_LE(writtenBefore, all);
  EXPECT_GE(saved, all / 5);
}

TEST(SavePace, ExpectsALargeFileToTakeItsShareOfTheLastWriting) {
  SavePace pace;
  pace.saved(start, start + seconds(2));
  EXPECT_EQ(pace.expected(10'000, 30'000), seconds(8));
  EXPECT_EQ(pace.expected(9'999, 30'000), seconds(2));
}

TEST(SavePace, ForgetsTheWritingsBeforeTheLast) {
  SavePace pace;
  pace.saved(start, start + seconds(2));
  pace.saved(start + seconds(3), start + seconds(4));
  EXPECT_TRUE(pace.isDue(start + seconds(14)));
}

}  // namespace
}  // namespace starsift
