#include "app/SiftStatus.h"

#include <gtest/gtest.h>

namespace starsift {
namespace {

TEST(SiftStatus, TellsShareAndCounts) {
  EXPECT_EQ(siftStatus({.done = 340, .all = 1000, .kept = 12, .dropped = 3}),
            "34 % of the file, stars: 12 kept, 3 dropped");
}

TEST(SiftStatus, SharesStayBetweenZeroAndHundred) {
  EXPECT_EQ(siftStatus({}), "0 % of the file, stars: 0 kept, 0 dropped");
  EXPECT_EQ(siftStatus({.done = 199, .all = 199, .kept = 1, .dropped = 0}),
            "100 % of the file, stars: 1 kept, 0 dropped");
}

}  // namespace
}  // namespace starsift
