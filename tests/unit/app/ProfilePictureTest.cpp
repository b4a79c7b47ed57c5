#include "app/ProfilePicture.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace starsift {
namespace {

using testing::EndsWith;
using testing::HasSubstr;

TEST(ProfileScript, HasThePointsOfEachCurve) {
  const std::string script = profileScript({{"before", {2.5, -1}}, {"LLL", {1, 0.5}}});
  EXPECT_THAT(script, HasSubstr("$curve0 << END\n1 2.5\n2 -1\nEND\n"));
  EXPECT_THAT(script, HasSubstr("$curve1 << END\n1 1\n2 0.5\nEND\n"));
}

TEST(ProfileScript, DrawsAllCurvesAndThenTheReducedOnes) {
  const std::string with = " with linespoints pointsize 0.4 linecolor ";
  EXPECT_THAT(profileScript({{"before", {1}}, {"LLL", {1}}, {"blocks of 20", {1}}}),
              EndsWith("plot $curve0" + with + "1 title 'before', $curve1" + with +
                       "2 title 'LLL', $curve2" + with + "3 title 'blocks of 20'\nplot $curve1" +
                       with + "2 title 'LLL', $curve2" + with + "3 title 'blocks of 20'\n"));
}

}  // namespace
}  // namespace starsift
