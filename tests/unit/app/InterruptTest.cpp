#include "app/Interrupt.h"

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <thread>

namespace starsift {
namespace {

TEST(Interrupt, IsNoneAtFirst) {
  EXPECT_EQ(interrupted(), 0);
  endByInterrupt();
}

TEST(Interrupt, IsRememberedTheFirstTime) {
  EXPECT_EXIT(
      {
        rememberInterrupts();
        std::raise(SIGTERM);
        std::_Exit(interrupted() == SIGTERM ? 0 : 1);
      },
      testing::ExitedWithCode(0), "");
}

TEST(Interrupt, IsATerminalThatIsClosedToo) {
  EXPECT_EXIT(
      {
        rememberInterrupts();
        std::raise(SIGHUP);
        std::_Exit(interrupted() == SIGHUP ? 0 : 1);
      },
      testing::ExitedWithCode(0), "");
}

TEST(Interrupt, IsMeantOnceWhenItComesTwiceAtOnce) {
  EXPECT_EXIT(
      {
        rememberInterrupts();
        std::raise(SIGINT);
        std::raise(SIGINT);
        std::raise(SIGTERM);
        std::_Exit(interrupted() == SIGINT ? 0 : 1);
      },
      testing::ExitedWithCode(0), "");
}

TEST(Interrupt, EndsTheProcessWhenItComesAgainLater) {
  EXPECT_EXIT(
      {
        rememberInterrupts();
        std::raise(SIGTERM);
        std::this_thread::sleep_for(std::chrono::milliseconds(600));
        std::raise(SIGINT);
        std::_Exit(1);
      },
      testing::KilledBySignal(SIGINT), "");
}

TEST(Interrupt, EndsTheProcessInTheEndByTheFirstSignal) {
  EXPECT_EXIT(
      {
        rememberInterrupts();
        std::raise(SIGINT);
        endByInterrupt();
        std::_Exit(1);
      },
      testing::KilledBySignal(SIGINT), "");
}

TEST(Interrupt, LeavesAnIgnoredSignalIgnored) {
  EXPECT_EXIT(
      {
        std::signal(SIGINT, SIG_IGN);
        rememberInterrupts();
        std::raise(SIGINT);
        std::_Exit(interrupted() == 0 ? 0 : 1);
      },
      testing::ExitedWithCode(0), "");
}

}  // namespace
}  // namespace starsift
