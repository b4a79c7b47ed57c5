#include "system/HelperThreads.h"

#include <gtest/gtest.h>

#include <array>
#include <csignal>
#include <new>
#include <thread>

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

TEST(RunBoth, DoesBoth) {
  bool isWorkDone = false;
  bool isHereDone = false;
  const std::thread::id caller = std::this_thread::get_id();
  std::thread::id here;
  runBoth([&] { isWorkDone = true; },
          [&] {
            isHereDone = true;
            here = std::this_thread::get_id();
          });
  EXPECT_TRUE(isWorkDone);
  EXPECT_TRUE(isHereDone);
  EXPECT_EQ(here, caller);
}

TEST(RunBoth, ThrowsWhatEitherThrows) {
  const auto nothing = [] {};
  const auto outOfMemory = [] { throw std::bad_alloc(); };
  EXPECT_THROW(runBoth(outOfMemory, nothing), std::bad_alloc);
  EXPECT_THROW(runBoth(nothing, outOfMemory), std::bad_alloc);
}

}  // namespace
}  // namespace starsift
