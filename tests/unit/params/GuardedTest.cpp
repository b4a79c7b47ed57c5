#include "params/Guarded.h"

#include <sys/resource.h>

#include <cstdlib>
#include <sstream>
#include <utility>
#include <vector>

#include "support/fixtures/ExpectFails.h"

namespace starsift {
namespace {

using GuardedText = MutexType<std::string>;
using GuardedNumber = MutexType<long>;

TEST(MutexType, StartsEmpty) {
  EXPECT_EQ(GuardedNumber().get(), 0);
  EXPECT_EQ(GuardedText().get(), "");
}

TEST(MutexType, GivesWhatWasStored) {
  GuardedText text("a");
  EXPECT_EQ(text.get(), "a");
  text.set("b c");
  EXPECT_EQ(text.get(), "b c");
}

TEST(MutexType, MakesItsLockOnTheFirstAccessAndKeepsIt) {
  GuardedNumber number(7);
  EXPECT_EQ(number.lockName(), "");
  number.get();
  const std::string name = number.lockName();
  EXPECT_NE(name, "");
  number.set(8);
  EXPECT_EQ(number.lockName(), name);
}

TEST(MutexType, CopyHasTheValueAndALockOfItsOwn) {
  GuardedNumber number(7);
  number.set(8);
  GuardedNumber copy(number);
  copy.set(9);
  EXPECT_EQ(number.get(), 8);
  EXPECT_EQ(copy.get(), 9);
  EXPECT_NE(copy.lockName(), number.lockName());
}

TEST(MutexType, AssignmentKeepsTheLock) {
  GuardedText text("a");
  text.get();
  const std::string name = text.lockName();
  GuardedText other("b");
  other.get();
  text = other;
  EXPECT_EQ(text.get(), "b");
  EXPECT_EQ(text.lockName(), name);
}

TEST(MutexType, CopyingMakesNoLock) {
  const GuardedText text("a");
  GuardedText copy(text);
  GuardedText assigned;
  assigned = text;
  EXPECT_EQ(text.lockName(), "");
  EXPECT_EQ(copy.lockName(), "");
  EXPECT_EQ(assigned.lockName(), "");
  EXPECT_EQ(assigned.get(), "a");
  copy.set("b");
  EXPECT_EQ(text.copied(), "a");
}

TEST(MutexType, AssignmentToItselfChangesNothing) {
  GuardedText text("a");
  const GuardedText& same = text;
  text = same;
  EXPECT_EQ(text.get(), "a");
}

TEST(MutexType, MovedValueTakesItsLockAlong) {
  GuardedText text("a");
  text.get();
  const std::string name = text.lockName();
  const GuardedText moved(std::move(text));
  EXPECT_EQ(moved.get(), "a");
  EXPECT_EQ(moved.lockName(), name);
}

TEST(MutexType, ReadsBackWhatItWrote) {
  GuardedNumber number(-12);
  std::stringstream stream;
  stream << number;
  EXPECT_EQ(stream.str(), "-12");
  GuardedNumber back;
  stream >> back;
  EXPECT_EQ(back.get(), -12);
}

TEST(MutexType, ReadsOneWordIntoAText) {
  GuardedText text("a");
  std::istringstream stream(" b c");
  stream >> text;
  EXPECT_EQ(text.get(), "b");
}

TEST(MutexType, HasTheCommaAsItsDelimiter) {
  EXPECT_EQ(GuardedText().separators(), ", ");
}

void limitOpenFiles(rlim_t most) {
  rlimit limit = {};
  getrlimit(RLIMIT_NOFILE, &limit);
  limit.rlim_cur = most;
  setrlimit(RLIMIT_NOFILE, &limit);
}

void accessWithoutFreeFiles() {
  // Checks for leaks open files at the very end of the process.
  std::atexit([] { limitOpenFiles(64); });
  // Sanitizers open files too, when they meet a kind of object for the first time.
  GuardedNumber known;
  known.get();
  GuardedNumber number;
  limitOpenFiles(0);
  number.get();
}

TEST(MutexType, FailsWhenTheSystemHasNoSemaphoreForIt) {
  EXPECT_FAILS_WITH_REASON(accessWithoutFreeFiles(), "Too many open files",
                           "SEM could not be opened");
}

std::vector<int> keysOf(const MainMutexVars& variables) {
  std::vector<int> keys;
  for (const auto& entry : variables) keys.push_back(static_cast<int>(entry.left));
  return keys;
}

TEST(MainMutexVars, HasItsEightKeysInTheirOrder) {
  EXPECT_EQ(keysOf(MainMutexVars()), (std::vector<int>{0, 1, 3, 5, 6, 7, 4, 2}));
}

TEST(MainMutexVars, IsEmptyExceptForTheStartTime) {
  MainMutexVars variables;
  for (const auto& entry : variables)
    EXPECT_EQ(entry.right.get(), entry.left == MainMutexVariable::startTime ? "0" : "");
}

TEST(MainMutexVars, CopiesTextsAndNotLocks) {
  MainMutexVars variables;
  variables[MainMutexVariable::runState].set("stopped");
  MainMutexVars copy(variables);
  EXPECT_EQ(copy[MainMutexVariable::runState].get(), "stopped");
  copy[MainMutexVariable::runState].set("");
  EXPECT_EQ(variables[MainMutexVariable::runState].get(), "stopped");
}

TEST(MainMutexVars, AppendsAKeyThatIsNotThere) {
  MainMutexVars variables;
  variables[static_cast<MainMutexVariable>(8)].set("x");
  EXPECT_EQ(variables.dimension(), 9);
  EXPECT_EQ(variables[static_cast<MainMutexVariable>(8)].get(), "x");
}

}  // namespace
}  // namespace starsift
