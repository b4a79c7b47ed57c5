#include "system/Semaphore.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/time.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <memory>

#include "support/fixtures/ExpectFails.h"
#include "support/fixtures/SizeLimit.h"
#include "system/Failure.h"

namespace starsift {
namespace {

/// True when the system knows the name, whoever may open it.
bool exists(const std::string& name) {
  sem_t* const handle = sem_open(name.c_str(), 0);
  if (handle == SEM_FAILED) return errno != ENOENT;
  sem_close(handle);
  return true;
}

int valueOf(NamedSemaphore& semaphore) {
  int value = -1;
  sem_getvalue(semaphore.nativeHandle(), &value);
  return value;
}

/// A name of this test process that nobody else uses.
std::string ownName(const std::string& label) {
  return "/" + std::to_string(getpid()) + "_" + label;
}

std::unique_ptr<NamedSemaphore> makeNamed(const std::string& name) {
  return std::make_unique<NamedSemaphore>([&name] { return name; });
}

TEST(SemaphoreNames, CountTheNamesOfOneSecondFromOne) {
  SemaphoreNames names(42);
  EXPECT_EQ(names.next(1000), "/42_1000_1");
  EXPECT_EQ(names.next(1000), "/42_1000_2");
  EXPECT_EQ(names.next(1001), "/42_1001_1");
}

TEST(NamedSemaphore, CarriesTheProcessInItsName) {
  const NamedSemaphore semaphore;
  EXPECT_THAT(semaphore.name(), testing::StartsWith("/" + std::to_string(getpid()) + "_"));
  EXPECT_TRUE(exists(semaphore.name()));
}

TEST(NamedSemaphore, IsFreeAtFirstAndTakenByOneWait) {
  NamedSemaphore semaphore;
  EXPECT_EQ(valueOf(semaphore), 1);
  semaphore.wait();
  EXPECT_EQ(valueOf(semaphore), 0);
  semaphore.post();
  EXPECT_EQ(valueOf(semaphore), 1);
}

TEST(NamedSemaphore, IsHeldForTheLengthOfABlock) {
  NamedSemaphore semaphore;
  {
    const SemaphoreHold hold(semaphore);
    EXPECT_EQ(valueOf(semaphore), 0);
  }
  EXPECT_EQ(valueOf(semaphore), 1);
}

sem_t* interruptedHandle = nullptr;
volatile std::sig_atomic_t interruptions = 0;

void postAtTheThirdInterruption(int /*signal*/) {
  interruptions = interruptions + 1;
  if (interruptions == 3) sem_post(interruptedHandle);
}

/// Waits for a semaphore that only the third of three signals frees.
void waitThroughSignals() {
  NamedSemaphore semaphore;
  semaphore.wait();
  interruptedHandle = semaphore.nativeHandle();
  struct sigaction action = {};
  action.sa_handler = postAtTheThirdInterruption;
  sigaction(SIGALRM, &action, nullptr);
  const itimerval everyMillisecond = {{0, 1000}, {0, 1000}};
  setitimer(ITIMER_REAL, &everyMillisecond, nullptr);
  semaphore.wait();
  setitimer(ITIMER_REAL, nullptr, nullptr);
  std::exit(interruptions >= 3 ? 0 : 2);
}

TEST(NamedSemaphore, WaitsOnAfterASignal) {
  EXPECT_EXIT(waitThroughSignals(), testing::ExitedWithCode(0), "");
}

TEST(NamedSemaphore, IsOfTheModeOfTheSystemForItsOwnerAlone) {
  const mode_t mask = umask(0);
  const NamedSemaphore semaphore;
  EXPECT_EQ(umask(mask), 0U);
  struct stat file {};
  ASSERT_EQ(stat(("/dev/shm/sem." + semaphore.name().substr(1)).c_str(), &file), 0);
  // 600 in decimal has bits of all three classes: the group could write.
  EXPECT_EQ(file.st_mode & 0777U, 600U & 0700U);
}

TEST(NamedSemaphore, LeavesNoNameBehind) {
  std::string name;
  {
    const NamedSemaphore semaphore;
    name = semaphore.name();
  }
  EXPECT_FALSE(exists(name));
}

TEST(NamedSemaphore, AsksForAnotherNameWhileTheNameIsTaken) {
  const auto first = makeNamed(ownName("taken"));
  int asked = 0;
  const NamedSemaphore second(
      [&asked] { return ++asked < 4 ? ownName("taken") : ownName("free"); });
  EXPECT_EQ(asked, 4);
  EXPECT_EQ(second.name(), ownName("free"));
}

TEST(NamedSemaphore, FailsWhenTheSystemRefusesTheName) {
  EXPECT_FAILS_WITH_REASON(makeNamed("/no/such/folder"), "Invalid argument",
                           "SEM could not be opened");
}

/// The report of a process that makes a semaphore where files can't grow beyond so
/// many bytes. It goes through a pipe: the limit cuts the usual file too.
std::string reportWithin(rlim_t bytes) {
  int ends[2] = {-1, -1};
  if (pipe(ends) != 0) return "no pipe";
  const auto makeSemaphore = [&ends, bytes] {
    dup2(ends[1], STDERR_FILENO);
    test::limitFileSize(bytes);
    const NamedSemaphore semaphore;
  };
  EXPECT_EXIT(makeSemaphore(), testing::ExitedWithCode(1), "");
  close(ends[1]);
  std::string report(1000, ' ');
  report.resize(static_cast<std::size_t>(std::max<ssize_t>(read(ends[0], report.data(), 1000), 0)));
  close(ends[0]);
  return report;
}

TEST(NamedSemaphore, FailsWithAReasonWhereNoByteFitsIntoAFile) {
  EXPECT_EQ(reportWithin(0), test::failureText("File too large", "SEM could not be opened"));
}

TEST(NamedSemaphore, FailsWithAReasonWhereOnlyHalfOfItFitsIntoAFile) {
  EXPECT_EQ(reportWithin(sizeof(sem_t) / 2),
            test::failureText("File too large", "SEM could not be opened"));
}

TEST(NamedSemaphore, FailsWhenItWasUnlinkedBehindItsBack) {
  EXPECT_FAILS_WITH_REASON(
      {
        const NamedSemaphore semaphore;
        sem_unlink(semaphore.name().c_str());
      },
      "No such file or directory", "SEM could not be unlinked");
}

TEST(NamedSemaphore, FailsWhenItWasClosedBehindItsBack) {
  const std::string name = ownName("closed");
  EXPECT_FAILS_WITH_REASON(
      {
        const auto semaphore = makeNamed(name);
        sem_close(semaphore->nativeHandle());
      },
      "Invalid argument", "SEM could not be closed");
  EXPECT_FALSE(exists(name));
}

TEST(NamedSemaphore, CanNotBeWaitedForOnceReleased) {
  EXPECT_FAILS_WITH(
      {
        NamedSemaphore semaphore;
        semaphore.release();
        semaphore.wait();
      },
      "No semaphore available for lock!");
}

TEST(NamedSemaphore, IsReleasedOnce) {
  NamedSemaphore semaphore;
  semaphore.release();
  semaphore.release();
  EXPECT_FALSE(exists(semaphore.name()));
}

TEST(UnlinkAllSemaphores, TakesAllNamesOffTheSystem) {
  const NamedSemaphore first;
  const NamedSemaphore second;
  unlinkAllSemaphores();
  EXPECT_FALSE(exists(first.name()));
  EXPECT_FALSE(exists(second.name()));
}

TEST(UnlinkAllSemaphores, LeavesTheSemaphoresUsable) {
  NamedSemaphore semaphore;
  unlinkAllSemaphores();
  semaphore.wait();
  semaphore.post();
  EXPECT_EQ(valueOf(semaphore), 1);
}

TEST(UnlinkAllSemaphores, FindsThoseLeftWhenOthersWereReleasedBetween) {
  const NamedSemaphore oldest;
  auto older = std::make_unique<NamedSemaphore>();
  const NamedSemaphore newer;
  auto newest = std::make_unique<NamedSemaphore>();
  older.reset();
  newest.reset();
  unlinkAllSemaphores();
  EXPECT_FALSE(exists(oldest.name()));
  EXPECT_FALSE(exists(newer.name()));
}

TEST(UnlinkAllSemaphores, RunsBehindAFailure) {
  const std::string name = ownName("failed");
  EXPECT_FAILS_WITH(
      {
        const auto semaphore = makeNamed(name);
        fail("x");
      },
      "x");
  EXPECT_FALSE(exists(name));
}

TEST(UnlinkAllSemaphores, LeavesThoseOfTheParentProcessAlone) {
  const NamedSemaphore semaphore;
  EXPECT_EXIT(std::exit(0), testing::ExitedWithCode(0), "");
  EXPECT_TRUE(exists(semaphore.name()));
}

TEST(UnlinkAllSemaphores, StillServesTheOwnOnesInAForkedProcess) {
  const NamedSemaphore semaphore;
  const std::string name = ownName("child");
  EXPECT_EXIT(
      {
        const auto own = makeNamed(name);
        std::exit(exists(name) ? 0 : 2);
      },
      testing::ExitedWithCode(0), "");
  EXPECT_FALSE(exists(name));
  EXPECT_TRUE(exists(semaphore.name()));
}

TEST(NamedSemaphore, OfTheParentProcessIsOnlyClosedByTheChild) {
  NamedSemaphore semaphore;
  EXPECT_EXIT(
      {
        semaphore.release();
        std::exit(0);
      },
      testing::ExitedWithCode(0), "");
  EXPECT_TRUE(exists(semaphore.name()));
}

}  // namespace
}  // namespace starsift
