#include "system/Signals.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <string>

#include "system/Semaphore.h"

namespace starsift {
namespace {

/// A name of this test process, which a forked child can take too.
std::string nameOf(const std::string& label) {
  return "/" + std::to_string(getpid()) + "_" + label;
}

bool exists(const std::string& name) {
  sem_t* const handle = sem_open(name.c_str(), 0);
  if (handle == SEM_FAILED) return false;
  sem_close(handle);
  return true;
}

/// In a child: gets a signal while it has a semaphore.
void raiseWithSemaphore(const std::string& name, int number) {
  unlinkSemaphoresOnSignals();
  const NamedSemaphore semaphore([&name] { return name; });
  std::raise(number);
}

class EachEndingSignal : public testing::TestWithParam<int> {};

TEST_P(EachEndingSignal, TakesTheSemaphoresAlongAndEndsTheProcess) {
  const std::string name = nameOf("signal");
  EXPECT_EXIT(raiseWithSemaphore(name, GetParam()), testing::KilledBySignal(GetParam()), "");
  EXPECT_FALSE(exists(name));
}

INSTANTIATE_TEST_SUITE_P(EndingSignals, EachEndingSignal,
                         testing::Values(SIGHUP, SIGINT, SIGQUIT, SIGPIPE, SIGALRM, SIGTERM,
                                         SIGUSR1, SIGUSR2, SIGVTALRM, SIGPROF, SIGXCPU, SIGXFSZ));

TEST(EndingSignals, IgnoredSignalStaysIgnored) {
  const auto raiseIgnored = [] {
    std::signal(SIGINT, SIG_IGN);
    raiseWithSemaphore(nameOf("ignored"), SIGINT);
    _exit(0);
  };
  EXPECT_EXIT(raiseIgnored(), testing::ExitedWithCode(0), "");
}

extern "C" void endWithThree(int /*number*/) {
  _exit(3);
}

TEST(EndingSignals, HandlerOfSomebodyElseStays) {
  const auto raiseHandled = [] {
    std::signal(SIGTERM, endWithThree);
    unlinkSemaphoresOnSignals();
    std::raise(SIGTERM);
  };
  EXPECT_EXIT(raiseHandled(), testing::ExitedWithCode(3), "");
}

TEST(SignalsHeld, SignalTakesEffectBehindTheBlock) {
  const auto raiseInBlock = [] {
    {
      const SignalsHeld held(endingSignals());
      std::raise(SIGHUP);
      if (write(STDERR_FILENO, "in", 2) != 2) _exit(2);
    }
    if (write(STDERR_FILENO, " behind", 7) != 7) _exit(2);
  };
  EXPECT_EXIT(raiseInBlock(), testing::KilledBySignal(SIGHUP), "^in$");
}

TEST(SignalsHeld, SignalThatWasHeldBeforeStaysHeld) {
  sigset_t before;
  sigemptyset(&before);
  sigaddset(&before, SIGUSR1);
  const SignalsHeld outer(before);
  { const SignalsHeld inner(endingSignals()); }
  sigset_t now;
  pthread_sigmask(SIG_BLOCK, nullptr, &now);
  EXPECT_EQ(sigismember(&now, SIGUSR1), 1);
  EXPECT_EQ(sigismember(&now, SIGHUP), 0);
}

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

}  // namespace
}  // namespace starsift
