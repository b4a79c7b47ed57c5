#include "system/SystemCall.h"

#include <gtest/gtest.h>

namespace starsift {
namespace {

/// Fails with `error` so many times, then gives 7.
int failingCall(int& failures, int error) {
  if (failures == 0) return 7;
  --failures;
  errno = error;
  return -1;
}

TEST(Uninterrupted, CallIsRepeatedUntilNoSignalInterruptsIt) {
  int failures = 3;
  EXPECT_EQ(uninterrupted([&failures] { return failingCall(failures, EINTR); }), 7);
  EXPECT_EQ(failures, 0);
}

TEST(Uninterrupted, OtherErrorIsTheResult) {
  int failures = 3;
  EXPECT_EQ(uninterrupted([&failures] { return failingCall(failures, EIO); }), -1);
  EXPECT_EQ(failures, 2);
}

}  // namespace
}  // namespace starsift
