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

TEST(SavePace, ForgetsTheWritingsBeforeTheLast) {
  SavePace pace;
  pace.saved(start, start + seconds(2));
  pace.saved(start + seconds(3), start + seconds(4));
  EXPECT_TRUE(pace.isDue(start + seconds(14)));
}

}  // namespace
}  // namespace starsift
