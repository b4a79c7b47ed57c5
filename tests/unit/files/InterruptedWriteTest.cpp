// What a signal in the middle of writing leaves of a file.
#include <gtest/gtest.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>

#include "files/ResultFile.h"
#include "files/SolWriter.h"
#include "numbers/QQ.h"
#include "support/fixtures/ScratchDir.h"
#include "system/Semaphore.h"
#include "system/Signals.h"

namespace starsift {
namespace {

void interruptedWrite(const std::string& path, int signal) {
  const DeferredSignals deferred;
  ResultFile file(path);
  file.write("first half, ");
  std::raise(signal);
  file.write("second half\n");
  file.commit();
}

TEST(InterruptedWrite, InterruptLeavesTheFileCompleteAndEndsTheProcess) {
  const test::ScratchDir scratch;
  const std::string path = scratch.write("p.sol", "old\n");
  EXPECT_EXIT(interruptedWrite(path, SIGINT), testing::KilledBySignal(SIGTERM), "");
  EXPECT_EQ(scratch.read("p.sol"), "first half, second half\n");
  EXPECT_EQ(scratch.names(), std::vector<std::string>{"p.sol"});
}

TEST(InterruptedWrite, TerminationLeavesTheFileCompleteAndEndsTheProcess) {
  const test::ScratchDir scratch;
  const std::string path = scratch.write("p.sol", "old\n");
  EXPECT_EXIT(interruptedWrite(path, SIGTERM), testing::KilledBySignal(SIGTERM), "");
  EXPECT_EQ(scratch.read("p.sol"), "first half, second half\n");
}

TEST(InterruptedWrite, AnotherEndingSignalWaitsForTheCompleteFileToo) {
  const test::ScratchDir scratch;
  const std::string path = scratch.write("p.sol", "old\n");
  EXPECT_EXIT(interruptedWrite(path, SIGHUP), testing::KilledBySignal(SIGHUP), "");
  EXPECT_EQ(scratch.read("p.sol"), "first half, second half\n");
  EXPECT_EQ(scratch.names(), std::vector<std::string>{"p.sol"});
}

TEST(InterruptedWrite, IgnoredInterruptStaysIgnored) {
  const test::ScratchDir scratch;
  const auto writeIgnoring = [&scratch] {
    std::signal(SIGINT, SIG_IGN);
    interruptedWrite(scratch.file("p.sol"), SIGINT);
    std::exit(0);
  };
  EXPECT_EXIT(writeIgnoring(), testing::ExitedWithCode(0), "");
  EXPECT_EQ(scratch.read("p.sol"), "first half, second half\n");
}

TEST(InterruptedWrite, TerminationTakesTheSemaphoresAlong) {
  const test::ScratchDir scratch;
  const auto interruptedWithSemaphore = [&scratch] {
    const NamedSemaphore semaphore;
    scratch.write("name", semaphore.name());
    interruptedWrite(scratch.file("p.sol"), SIGTERM);
  };
  EXPECT_EXIT(interruptedWithSemaphore(), testing::KilledBySignal(SIGTERM), "");
  EXPECT_EQ(sem_open(scratch.read("name").c_str(), 0), SEM_FAILED);
}

Array<Star<QQ>> manyStars(long component) {
  Array<Star<QQ>> stars(1000);
  for (Star<QQ>& star : stars) star = Star<QQ>{QQ(component), QQ(component)};
  return stars;
}

/// Writes the two texts in turn until the process or its parent ends.
[[noreturn]] void writeInTurn(const std::string& path) {
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  const Array<Star<QQ>> zeros = manyStars(0);
  const Array<Star<QQ>> ones = manyStars(1);
  while (true) {
    writeStars(path, zeros);
    writeStars(path, ones);
  }
}

std::string textOf(const Array<Star<QQ>>& stars) {
  std::string text;
  for (const Star<QQ>& star : stars) text += starText(star) + "\n";
  return text;
}

TEST(InterruptedWrite, TerminationAtAnyMomentLeavesOneOfTheTwoTexts) {
  const test::ScratchDir scratch;
  const std::string zeros = textOf(manyStars(0));
  const std::string ones = textOf(manyStars(1));
  const pid_t writer = fork();
  ASSERT_GE(writer, 0);
  if (writer == 0) writeInTurn(scratch.file("p.sol"));
  while (scratch.read("p.sol") != ones) {
  }
  kill(writer, SIGTERM);
  int status = 0;
  waitpid(writer, &status, 0);
  ASSERT_TRUE(WIFSIGNALED(status));
  EXPECT_EQ(WTERMSIG(status), SIGTERM);
  EXPECT_EQ(scratch.names(), std::vector<std::string>{"p.sol"});
  const std::string left = scratch.read("p.sol");
  EXPECT_TRUE(left == zeros || left == ones);
}

}  // namespace
}  // namespace starsift
