#include "system/HelperThreads.h"

#include <gtest/gtest.h>

#include <array>
#include <csignal>

#include "system/HostedCall.h"

namespace starsift {
namespace {

TEST(HelperThreads, HaveDoneTheWorkOfEachWhenTheyAreJoined) {
  std::array<unsigned, 5> done{};
  HelperThreads helpers;
  helpers.start(4, [&done](unsigned i) { done.at(i) = i; });
  helpers.join();
  EXPECT_EQ(done, (std::array<unsigned, 5>{0, 1, 2, 3, 4}));
}

bool isHostedInAHelper() {
  bool isHosted = false;
  HelperThreads helpers;
  helpers.start(1, [&isHosted](unsigned) { isHosted = HostedCall::isUnderWay(); });
  helpers.join();
  return isHosted;
}

TEST(HelperThreads, WorkForTheHostOfTheirCaller) {
  EXPECT_FALSE(isHostedInAHelper());
  const HostedCall call;
  EXPECT_TRUE(isHostedInAHelper());
}

bool blocksInterrupts() {
  sigset_t blocked;
  pthread_sigmask(SIG_SETMASK, nullptr, &blocked);
  return sigismember(&blocked, SIGINT) == 1;
}

TEST(HelperThreads, LeaveSignalsToTheirCaller) {
  bool isBlocked = false;
  HelperThreads helpers;
  helpers.start(1, [&isBlocked](unsigned) { isBlocked = blocksInterrupts(); });
  helpers.join();
  EXPECT_TRUE(isBlocked);
  EXPECT_FALSE(blocksInterrupts());
}

}  // namespace
}  // namespace starsift
