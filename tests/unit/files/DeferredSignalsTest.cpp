#include "files/DeferredSignals.h"

#include <gtest/gtest.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>

#include "files/ResultFile.h"
#include "files/SolWriter.h"
#include "numbers/QQ.h"
#include "support/fixtures/ScratchDir.h"
#include "system/Semaphore.h"

namespace starsift {
namespace {

volatile std::sig_atomic_t interrupts = 0;
volatile std::sig_atomic_t terminations = 0;

extern "C" void countSignal(int number) {
  if (number == SIGINT)
    interrupts = interrupts + 1;
  else
    terminations = terminations + 1;
}

/// Counts SIGINT and SIGTERM as long as it lives.
class CountedSignals : public testing::Test {
 protected:
  CountedSignals()
      : previousInterrupt_(std::signal(SIGINT, countSignal)),
        previousTerminate_(std::signal(SIGTERM, countSignal)) {
    interrupts = 0;
    terminations = 0;
  }
  ~CountedSignals() override {
    std::signal(SIGINT, previousInterrupt_);
    std::signal(SIGTERM, previousTerminate_);
  }

 private:
  void (*previousInterrupt_)(int);
  void (*previousTerminate_)(int);
};

TEST_F(CountedSignals, InterruptTakesEffectAsTerminationBehindTheBlock) {
  {
    const DeferredSignals deferred;
    std::raise(SIGINT);
    EXPECT_EQ(interrupts, 0);
    EXPECT_EQ(terminations, 0);
  }
  EXPECT_EQ(interrupts, 0);
  EXPECT_EQ(terminations, 1);
}

TEST_F(CountedSignals, TerminationTakesEffectBehindTheBlock) {
  {
    const DeferredSignals deferred;
    std::raise(SIGTERM);
    EXPECT_EQ(terminations, 0);
  }
  EXPECT_EQ(terminations, 1);
}

TEST_F(CountedSignals, SeveralSignalsTakeEffectOnce) {
  {
    const DeferredSignals deferred;
    std::raise(SIGTERM);
    std::raise(SIGINT);
    std::raise(SIGTERM);
  }
  EXPECT_EQ(terminations, 1);
}

TEST_F(CountedSignals, FormerHandlersAreBackBehindTheBlock) {
  { const DeferredSignals deferred; }
  std::raise(SIGINT);
  std::raise(SIGTERM);
  EXPECT_EQ(interrupts, 1);
  EXPECT_EQ(terminations, 1);
}

TEST_F(CountedSignals, SignalOfOneBlockIsForgottenInTheNext) {
  {
    const DeferredSignals deferred;
    std::raise(SIGTERM);
  }
  { const DeferredSignals deferred; }
  EXPECT_EQ(terminations, 1);
}

void interruptedWrite(const std::string& path, int signal) {
  const DeferredSignals deferred;
  ResultFile file(path);
  file.write("first half, ");
  std::raise(signal);
  file.write("second half\n");
  file.commit();
}

TEST(DeferredSignals, InterruptLeavesTheFileCompleteAndEndsTheProcess) {
  const test::ScratchDir scratch;
  const std::string path = scratch.write("p.sol", "old\n");
  EXPECT_EXIT(interruptedWrite(path, SIGINT), testing::KilledBySignal(SIGTERM), "");
  EXPECT_EQ(scratch.read("p.sol"), "first half, second half\n");
  EXPECT_EQ(scratch.names(), std::vector<std::string>{"p.sol"});
}

TEST(DeferredSignals, TerminationLeavesTheFileCompleteAndEndsTheProcess) {
  const test::ScratchDir scratch;
  const std::string path = scratch.write("p.sol", "old\n");
  EXPECT_EXIT(interruptedWrite(path, SIGTERM), testing::KilledBySignal(SIGTERM), "");
  EXPECT_EQ(scratch.read("p.sol"), "first half, second half\n");
}

TEST(DeferredSignals, AnotherEndingSignalWaitsForTheCompleteFileToo) {
  const test::ScratchDir scratch;
  const std::string path = scratch.write("p.sol", "old\n");
  EXPECT_EXIT(interruptedWrite(path, SIGHUP), testing::KilledBySignal(SIGHUP), "");
  EXPECT_EQ(scratch.read("p.sol"), "first half, second half\n");
  EXPECT_EQ(scratch.names(), std::vector<std::string>{"p.sol"});
}

TEST(DeferredSignals, IgnoredInterruptStaysIgnored) {
  const test::ScratchDir scratch;
  const auto writeIgnoring = [&scratch] {
    std::signal(SIGINT, SIG_IGN);
    interruptedWrite(scratch.file("p.sol"), SIGINT);
    std::exit(0);
  };
  EXPECT_EXIT(writeIgnoring(), testing::ExitedWithCode(0), "");
  EXPECT_EQ(scratch.read("p.sol"), "first half, second half\n");
}

TEST(DeferredSignals, TerminationTakesTheSemaphoresAlong) {
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

TEST(DeferredSignals, TerminationAtAnyMomentLeavesOneOfTheTwoTexts) {
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
