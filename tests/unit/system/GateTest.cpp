#include "system/Gate.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

namespace starsift {
namespace {

TEST(Gate, LetsPassUntilItIsShut) {
  Gate gate;
  EXPECT_TRUE(gate.pass());
  gate.close();
  gate.open();
  EXPECT_TRUE(gate.pass());
  gate.shut();
  EXPECT_FALSE(gate.pass());
  gate.open();
  EXPECT_FALSE(gate.pass());
}

/// What a thread is told that waits at a closed gate, which is then changed.
bool passesAfter(void (Gate::*change)()) {
  Gate gate;
  gate.close();
  std::atomic<bool> isThrough = false;
  bool result = false;
  std::thread waiting([&] {
    result = gate.pass();
    isThrough = true;
  });
  EXPECT_FALSE(isThrough);
  (gate.*change)();
  waiting.join();
  return result;
}

TEST(Gate, HoldsUpThreadsWhileItIsClosed) {
  EXPECT_TRUE(passesAfter(&Gate::open));
  EXPECT_FALSE(passesAfter(&Gate::shut));
}

}  // namespace
}  // namespace starsift
