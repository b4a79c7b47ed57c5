#include "system/Console.h"

#include <cstdint>
#include <ctime>
#include <sstream>

#include "support/fixtures/ExpectFails.h"

namespace starsift {
namespace {

class Console : public testing::Test {
 protected:
  void SetUp() override { consoleState() = {}; }
  void TearDown() override { consoleState() = {}; }
};

TEST_F(Console, FirstStampStandsAtTheMarginWithoutALineFeed) {
  EXPECT_EQ(openStamp(false), "|->");
}

TEST_F(Console, PlainStampHasNoArrow) {
  EXPECT_EQ(openStamp(true), "|");
}

TEST_F(Console, NestedStampBeginsANewLineOneBarFurtherIn) {
  openStamp(false);
  EXPECT_EQ(openStamp(false), "\n|    |->");
  EXPECT_EQ(openStamp(true), "\n|    |    |");
}

TEST_F(Console, StampBehindAnEndedLineNeedsNoLineFeed) {
  openStamp(false);
  endLine();
  EXPECT_EQ(openStamp(false), "|    |->");
}

TEST_F(Console, ClosingALevelUnderWayEndsItsLine) {
  openStamp(false);
  EXPECT_EQ(closeStamp(false), "\n");
  EXPECT_EQ(consoleDepth(), 0);
}

TEST_F(Console, ClosingALevelWhoseLineWasEndedAddsNothing) {
  openStamp(false);
  endLine();
  EXPECT_EQ(closeStamp(false), "");
}

TEST_F(Console, ClosingALevelThatHeldABlockAddsNothing) {
  openStamp(false);
  openStamp(false);
  EXPECT_EQ(closeStamp(false), "\n");
  EXPECT_EQ(closeStamp(false), "");
}

// The line of level 1 was ended once; a stamp of the same level is under way again.
TEST_F(Console, KeepSwallowsTheLineFeedOfALevelThatEndedALineBefore) {
  openStamp(false);
  endLine();
  consoleState().lineStarted[1] = true;
  EXPECT_EQ(closeStamp(true), "");
}

TEST_F(Console, WithoutKeepTheLineFeedOfSuchALevelStands) {
  openStamp(false);
  endLine();
  consoleState().lineStarted[1] = true;
  EXPECT_EQ(closeStamp(false), "\n");
}

TEST_F(Console, ClosingForgetsThatALineWasEnded) {
  openStamp(false);
  endLine();
  closeStamp(false);
  openStamp(false);
  EXPECT_EQ(closeStamp(true), "\n");
}

TEST_F(Console, ClosingTheOutermostLevelStaysThere) {
  EXPECT_EQ(closeStamp(false), "");
  EXPECT_EQ(consoleDepth(), 0);
}

TEST_F(Console, EndLineIsOneLineFeed) {
  EXPECT_EQ(endLine(), "\n");
}

TEST_F(Console, ResetLeavesAllLevels) {
  openStamp(false);
  openStamp(false);
  endLine();
  EXPECT_EQ(resetConsole(), "\n");
  EXPECT_EQ(consoleDepth(), 0);
  EXPECT_EQ(openStamp(false), "|->");
  EXPECT_EQ(openStamp(false), "\n|    |->");
  EXPECT_EQ(closeStamp(true), "\n");
}

TEST_F(Console, RememberedDepthComesBackWithoutMarksOfTheLevelsAbove) {
  openStamp(false);
  openStamp(false);
  openStamp(false);
  endLine();
  setConsoleDepth(1);
  EXPECT_EQ(consoleDepth(), 1);
  openStamp(false);
  EXPECT_EQ(openStamp(false), "\n|    |    |->");
  EXPECT_EQ(closeStamp(true), "\n");
}

TEST_F(Console, HasRoomFor127Levels) {
  for (std::int64_t level = 1; level < consoleLevels; ++level) openStamp(false);
  EXPECT_EQ(consoleDepth(), 127);
}

TEST_F(Console, FailsBeyondTheLastLevel) {
  EXPECT_FAILS_WITH(
      {
        for (std::int64_t level = 1; level <= consoleLevels; ++level) openStamp(false);
      },
      "Maximum thread depth reached");
}

TEST_F(Console, ReportIsOneLineAndStampsTheOutputTime) {
  std::ostringstream out;
  const std::time_t before = std::time(nullptr);
  report(out, "Using standard lattice precision");
  EXPECT_EQ(out.str(), "|-> Using standard lattice precision\n");
  EXPECT_EQ(consoleDepth(), 0);
  EXPECT_GE(lastOutputTime(), before);
}

TEST_F(Console, ReportInsideABlockBeginsItsOwnLine) {
  std::ostringstream out;
  out << openStamp(false) << " Reducing ...";
  report(out, "Pass 1");
  EXPECT_EQ(out.str(), "|-> Reducing ...\n|    |-> Pass 1\n");
}

TEST_F(Console, KeepsOutputAndFailureTimesApart) {
  EXPECT_EQ(lastOutputTime(), 0);
  EXPECT_EQ(lastFailureTime(), 0);
  stampFailureTime();
  EXPECT_EQ(lastOutputTime(), 0);
  EXPECT_GT(lastFailureTime(), 0);
}

TEST_F(Console, ExtendedOutputIsOffUntilItIsTurnedOn) {
  EXPECT_FALSE(extendedOutput());
  setExtendedOutput(true);
  EXPECT_TRUE(extendedOutput());
}

}  // namespace
}  // namespace starsift
